// The label work that the decision's label adder and the batch tools share:
// the labels drawn around a decision, one for each side with a text, and a
// label's place beside the decision. Sides are numbered 1 top, 2 right,
// 3 bottom, 4 left.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "CConfig.h"
#include "CShapeFormatter.h"
#include "Shape.h"
#include "Shapes.h"

namespace nivarel::shapes {

constexpr int16_t kBranchTop = 1, kBranchRight = 2, kBranchBottom = 3, kBranchLeft = 4;

// The four label texts, top, right, bottom and left.
using BranchTexts = std::array<std::string, 4>;

// Called with each new label and its side, to move it into place.
using BranchLabelPlacer = std::function<void(office::Shape& label, int16_t side)>;

// Draws a label for each side from 1 to 4 whose text isn't empty and hands
// it to place. Answers the decision's name followed by the labels' names.
// A host failure is raised to the caller; the labels made before it stay.
std::vector<std::string> AddBranchLabelBoxes(office::Shapes& shapes, const office::Shape& decision,
                                             const BranchTexts& texts, const rules::CConfig& config,
                                             CShapeFormatter& formatter, const BranchLabelPlacer& place);

// One label at the sheet's top left corner: a text box holding text in the
// branch font, white, without outline, fitted to its text, moving with the
// cells under it.
// A free label: a text box 100 by 25.5 points at left, top, in the branch
// font, without an outline, fitted to its text, in front, moving with its
// cells. The label the word LBL drops and the branch tool's labels.
office::Shape AddFreeLabel(office::Shapes& shapes, double left, double top, const std::string& text,
                           const rules::CConfig& config);
office::Shape AddBranchLabelBox(office::Shapes& shapes, const std::string& text, const rules::CConfig& config,
                              CShapeFormatter& formatter);

// Puts label on side of decision, one grid unit off it, by the label's size
// as it stands. With branchPosition 0 the labels at the top and bottom stand
// right of the centre line and those at the sides stand above it; any other
// value centres them on the line. A negative top or left becomes 0. A failure
// is logged under source and "SetBranchLabelPosition" and leaves the label
// where it was.
void PlaceBranchLabel(const office::Shape& decision, office::Shape& label, int16_t branchPosition, int16_t side,
                      const char* source);

}  // namespace nivarel::shapes
