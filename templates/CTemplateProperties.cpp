#include "CTemplateProperties.h"

namespace nivarel::templates {

std::string CTemplateProperties::GetSwimLaneTitle(int lane) const {
  return lane >= 1 && lane <= kLanes ? laneTitles_[lane - 1] : std::string();
}

void CTemplateProperties::SetSwimLaneTitle(int lane, const std::string& title) {
  if (lane >= 1 && lane <= kLanes) laneTitles_[lane - 1] = title;
}

short CTemplateProperties::GetHeaderSectionCount(int row) const { return IsRow(row) ? headerSections_[row - 1] : 0; }

void CTemplateProperties::SetHeaderSectionCount(int row, short count) {
  if (IsRow(row)) headerSections_[row - 1] = count;
}

std::string CTemplateProperties::GetHeaderRowLabel(int row, int section) const {
  return IsCell(row, section) ? headerLabels_[row - 1][section - 1] : std::string();
}

void CTemplateProperties::SetHeaderRowLabel(int row, int section, const std::string& label) {
  if (IsCell(row, section)) headerLabels_[row - 1][section - 1] = label;
}

short CTemplateProperties::GetFooterSectionCount(int row) const { return IsRow(row) ? footerSections_[row - 1] : 0; }

void CTemplateProperties::SetFooterSectionCount(int row, short count) {
  if (IsRow(row)) footerSections_[row - 1] = count;
}

std::string CTemplateProperties::GetFooterRowLabel(int row, int section) const {
  return IsCell(row, section) ? footerLabels_[row - 1][section - 1] : std::string();
}

void CTemplateProperties::SetFooterRowLabel(int row, int section, const std::string& label) {
  if (IsCell(row, section)) footerLabels_[row - 1][section - 1] = label;
}

}  // namespace nivarel::templates
