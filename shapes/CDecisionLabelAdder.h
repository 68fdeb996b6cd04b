// Puts the small labels such as "Yes" and "No" beside a decision that the
// interactive run draws: the texts come from the settings or from a prompt,
// and the labels are grouped with the decision when the settings ask for it,
// so that they move together.
#pragma once

#include <cstdint>

#include "CConfig.h"
#include "CShapeFormatter.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::shapes {

class CDecisionLabelAdder {
 public:
  // Values of BranchLabelOption.
  static constexpr int16_t kStoredTexts = 0, kAskForTexts = 1, kNoLabels = 2;

  // Adds a label on each side of decision whose text isn't empty, by
  // config's BranchLabelOption: 0 the stored texts, 1 the texts the prompt
  // gives (a cancelled prompt adds none), 2 none. With GroupBranchLabels the
  // decision and its labels become one group. Answers the shape that takes
  // the decision's place in the run: the group when there is one, else
  // decision. A label that fails is logged and leaves the earlier ones, not
  // grouped.
  office::Shape AddBranchLabels(office::Worksheet& worksheet, office::Shape& decision, const rules::CConfig& config,
                              CShapeFormatter& formatter);

 private:
  // Moves label to side (1 top, 2 right, 3 bottom, 4 left) of shape by
  // config's BranchPosition.
  void SetBranchLabelPosition(const office::Shape& shape, office::Shape& label, const rules::CConfig& config,
                              int16_t side);
};

}  // namespace nivarel::shapes
