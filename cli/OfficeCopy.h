// What the batch commands run the add-in on: an office of their own with the
// extension, and an untitled copy of a saved workbook open in it. The office
// ends when the object goes, on every road out, and the copy with it.
#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "OfficeProcess.h"
#include "Workbook.h"

namespace nivarel::cli {

struct OfficeCopy {
  std::unique_ptr<driver::OfficeProcess> office;
  std::optional<office::Workbook> book;
};

// Starts an office with the extension and opens input in it as an untitled
// copy, or a new workbook when input is empty. When either fails, says why
// on err and answers nothing.
std::optional<OfficeCopy> OpenOfficeCopy(const std::string& extension, const std::string& input, std::ostream& err);

}  // namespace nivarel::cli
