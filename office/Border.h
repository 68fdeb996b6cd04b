// Where the office calls into this program: listeners, handlers, jobs and
// undo actions. Nothing thrown may return into the office's own code, so each
// such callback runs its work through AtBorder: whatever the work throws is
// reported to the border log, named by source and procedure, and dropped.
#pragma once

#include <functional>
#include <string>

namespace nivarel::office {

// What becomes of a failure at the border: called from inside the catch
// block (so the exception in flight can be read) with the callback's source
// and procedure names. The add-in sets its error log; with none set, failures
// are dropped. Whatever the log throws is dropped too.
void SetBorderLog(std::function<void(const std::string& source, const std::string& procedure)> log);

// Runs work; true when it returned, false when it threw.
bool AtBorder(const char* source, const char* procedure, const std::function<void()>& work) noexcept;

}  // namespace nivarel::office
