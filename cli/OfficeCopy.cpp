#include "OfficeCopy.h"

#include <ostream>

#include "HostError.h"
#include "Workbooks.h"

namespace nivarel::cli {

std::optional<OfficeCopy> OpenOfficeCopy(const std::string& extension, const std::string& input, std::ostream& err) {
  OfficeCopy copy;
  try {
    driver::OfficeProcess::Options options;
    options.extension = extension;
    copy.office = driver::OfficeProcess::Start(options);
  } catch (const office::HostError& e) {
    err << "nivarel: the office cannot start: " << e.Description() << "\n";
    return std::nullopt;
  }
  try {
    copy.book = input.empty() ? copy.office->App().GetWorkbooks().Add()
                              : copy.office->App().GetWorkbooks().OpenCopy(input);
  } catch (const office::HostError& e) {
    err << "nivarel: cannot open '" << input << "' as a spreadsheet: " << e.Description() << "\n";
    return std::nullopt;
  }
  return copy;
}

}  // namespace nivarel::cli
