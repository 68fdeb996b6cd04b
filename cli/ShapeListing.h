// `nivarel shapes FILE`: the drawing objects of a saved sheet, one JSON
// object per line, so that a file can be checked without opening it by hand.
#pragma once

#include <ostream>
#include <string>

#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::cli {

// One shape as one line of JSON: name, type (MsoShapeType), autoshape (for
// auto shapes), left, top, width, height (points, two decimals), text;
// begin, end, begin_site, end_site for a connector (null and 0 at a loose
// end); members' names for a group.
std::string DescribeShape(const office::Shape& shape);

// Every shape of the sheet, in drawing order.
void ListShapes(const office::Worksheet& sheet, std::ostream& out);

// Opens path (.ods, .xlsx, ...) read-only in an office of its own and lists
// the shapes of the sheet named sheet (the first sheet when empty) on out.
// Returns the exit code: 0, or 1 with a message on err when the file is
// missing or cannot be read, or has no such sheet. The office is ended on
// every road.
int ListShapesInFile(const std::string& path, const std::string& sheet, std::ostream& out, std::ostream& err);

}  // namespace nivarel::cli
