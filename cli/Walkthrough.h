// `nivarel walkthrough -o FILE`: the walkthrough workbook that the add-in
// ships and opens from Help > Open Walkthrough. Its first sheet teaches the
// first chart step by step (what to do, what to type, what appears), the
// sheet "Example" holds that chart drawn by the Flowchart Wizard's engine with
// the shipped settings, and the sheet "Try It" is left empty for the user.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

extern const char kWalkthroughUsage[];

// 0 when the file was written; a message on err and 2 for bad arguments, 1
// when the office failed. Never leaves an office running.
int Walkthrough(const std::vector<std::string>& arguments, const std::string& shipped, std::ostream& out,
                std::ostream& err);

}  // namespace nivarel::cli
