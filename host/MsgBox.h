// Message boxes of the add-in: the office's own message box over the
// spreadsheet window (the styles and answers are those of office/MessageBox.h).
#pragma once

#include <string>

#include "MessageBox.h"

namespace nivarel::host {

// The add-in's title, used when a message names none.
extern const char kAppTitle[];
// The office's own name, the title of messages that have none of their own.
extern const char kHostTitle[];

// Shows the message and waits for the user's answer. Without an office to
// show it in, answers vbCancel. Throws HostError when the office fails.
int MsgBox(const std::string& prompt, int style = office::vbOKOnly, const std::string& title = kAppTitle);

}  // namespace nivarel::host
