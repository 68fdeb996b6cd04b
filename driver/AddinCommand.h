// Sends one of the add-in's commands, with named arguments, to the window of
// a workbook and waits for the add-in's answer, as the command line does for
// work that runs inside the office (the wizard run): whether the command
// succeeded and the named values the add-in gave back with its answer.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Workbook.h"

namespace nivarel::driver {

class AddinCommand {
 public:
  using Value = std::variant<bool, int, std::string>;
  struct Answer {
    bool succeeded = false;
    // The values given back, numbers written as text ("12", "0.25").
    std::map<std::string, std::string> values;
  };

  // Throws HostError when no handler in the workbook's window takes the
  // command, when the handler gives no answer, or when none comes within
  // timeoutSeconds.
  static Answer Send(const office::Workbook& book, const std::string& url,
                     const std::vector<std::pair<std::string, Value>>& arguments, int timeoutSeconds = 300);
};

}  // namespace nivarel::driver
