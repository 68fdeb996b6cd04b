// Everything that decides one template: page, file, type, font, lanes and
// title block. A plain carrier filled by its caller: every value starts at
// zero, false or empty, nothing is checked. The header and footer row counts
// read 0 while their switch is off, and the stored count again once it is on.
#pragma once

#include <string>

namespace nivarel::templates {

class CTemplateProperties {
 public:
  enum TemplateTypes { PlainGrid = 0, HorizontalSwimLanes = 1, VerticalSwimLanes = 2, Annotated = 3 };

  short MaxTitleBlockRows() const { return maxTitleBlockRows_; }
  void MaxTitleBlockRows(short value) { maxTitleBlockRows_ = value; }
  short MaxTitleBlockSections() const { return maxTitleBlockSections_; }
  void MaxTitleBlockSections(short value) { maxTitleBlockSections_ = value; }
  short MaxSwimLaneCount() const { return maxSwimLaneCount_; }
  void MaxSwimLaneCount(short value) { maxSwimLaneCount_ = value; }
  // XlPaperSize: 1 Letter, 17 11x17, 8 A3, 9 A4.
  short PaperSize() const { return paperSize_; }
  void PaperSize(short value) { paperSize_ = value; }
  // 1 portrait, 2 landscape.
  short Orientation() const { return orientation_; }
  void Orientation(short value) { orientation_ = value; }
  short NumberOfPages() const { return numberOfPages_; }
  void NumberOfPages(short value) { numberOfPages_ = value; }
  // True: title block and lanes are shapes and lines; false: formatted cells.
  bool UseShapesForSwimLanes() const { return useShapesForSwimLanes_; }
  void UseShapesForSwimLanes(bool value) { useShapesForSwimLanes_ = value; }
  // The file's name without folder, and the file's title.
  const std::string& TemplateName() const { return templateName_; }
  void TemplateName(const std::string& value) { templateName_ = value; }
  const std::string& TemplateFolder() const { return templateFolder_; }
  void TemplateFolder(const std::string& value) { templateFolder_ = value; }
  TemplateTypes TemplateType() const { return templateType_; }
  void TemplateType(TemplateTypes value) { templateType_ = value; }
  // Line style id, 1 to 21.
  short TemplateLineStyle() const { return templateLineStyle_; }
  void TemplateLineStyle(short value) { templateLineStyle_ = value; }
  const std::string& TemplateFontName() const { return templateFontName_; }
  void TemplateFontName(const std::string& value) { templateFontName_ = value; }
  bool TemplateFontBold() const { return templateFontBold_; }
  void TemplateFontBold(bool value) { templateFontBold_ = value; }
  bool TemplateFontItalic() const { return templateFontItalic_; }
  void TemplateFontItalic(bool value) { templateFontItalic_ = value; }
  float TemplateFontSize() const { return templateFontSize_; }
  void TemplateFontSize(float value) { templateFontSize_ = value; }
  short SwimLaneCount() const { return swimLaneCount_; }
  void SwimLaneCount(short value) { swimLaneCount_ = value; }
  // Lanes 1 to 10; another lane reads empty and is not written.
  std::string GetSwimLaneTitle(int lane) const;
  void SetSwimLaneTitle(int lane, const std::string& title);

  bool AddHeader() const { return addHeader_; }
  void AddHeader(bool value) { addHeader_ = value; }
  // 0 while AddHeader is false.
  short HeaderRowCount() const { return addHeader_ ? headerRowCount_ : 0; }
  void HeaderRowCount(short value) { headerRowCount_ = value; }
  // Rows 1 to 3 and sections 1 to 3; others read 0 or empty and are not written.
  short GetHeaderSectionCount(int row) const;
  void SetHeaderSectionCount(int row, short count);
  std::string GetHeaderRowLabel(int row, int section) const;
  void SetHeaderRowLabel(int row, int section, const std::string& label);

  bool AddFooter() const { return addFooter_; }
  void AddFooter(bool value) { addFooter_ = value; }
  // 0 while AddFooter is false.
  short FooterRowCount() const { return addFooter_ ? footerRowCount_ : 0; }
  void FooterRowCount(short value) { footerRowCount_ = value; }
  short GetFooterSectionCount(int row) const;
  void SetFooterSectionCount(int row, short count);
  std::string GetFooterRowLabel(int row, int section) const;
  void SetFooterRowLabel(int row, int section, const std::string& label);

 private:
  static constexpr int kLanes = 10, kRows = 3, kSections = 3;
  static bool IsRow(int row) { return row >= 1 && row <= kRows; }
  static bool IsCell(int row, int section) { return IsRow(row) && section >= 1 && section <= kSections; }

  short maxTitleBlockRows_ = 0, maxTitleBlockSections_ = 0, maxSwimLaneCount_ = 0;
  short paperSize_ = 0, orientation_ = 0, numberOfPages_ = 0;
  bool useShapesForSwimLanes_ = false;
  std::string templateName_, templateFolder_;
  TemplateTypes templateType_ = PlainGrid;
  short templateLineStyle_ = 0;
  std::string templateFontName_;
  bool templateFontBold_ = false, templateFontItalic_ = false;
  float templateFontSize_ = 0;
  short swimLaneCount_ = 0;
  std::string laneTitles_[kLanes];
  bool addHeader_ = false, addFooter_ = false;
  short headerRowCount_ = 0, footerRowCount_ = 0;
  short headerSections_[kRows] = {}, footerSections_[kRows] = {};
  std::string headerLabels_[kRows][kSections], footerLabels_[kRows][kSections];
};

}  // namespace nivarel::templates
