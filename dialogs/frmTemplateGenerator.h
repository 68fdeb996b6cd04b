// The template generator's dialog (" Template Generator"), three pages of one
// template's choices: "Template Properties" (name, folder, paper, orientation,
// pages, shapes or cells, line style and title block font), "Body" (a plain
// grid or swim lanes, their number and titles) and "Header / Footer" (the
// title block's rows and their sections' labels). OK needs a template name;
// the dialog changes nothing itself. The results are read after Display.
#pragma once

#include <string>

#include "CConfig.h"
#include "CTemplateProperties.h"

namespace nivarel::dialogs {

class frmTemplateGenerator {
 public:
  static constexpr short kMaxTitleBlockRows = 3, kMaxTitleBlockSections = 3, kMaxSwimLanes = 10;

  // Shows the dialog, started from config (folder, paper, orientation and
  // font), until OK or Cancel.
  void Display(const rules::CConfig& config);

  short TemplateLineStyle() const { return lineStyle_; }
  const std::string& TemplateFontName() const { return fontName_; }
  bool TemplateFontBold() const { return fontBold_; }
  bool TemplateFontItalic() const { return fontItalic_; }
  float TemplateFontSize() const { return fontSize_; }
  short MaxTitleBlockRows() const { return kMaxTitleBlockRows; }
  short MaxTitleBlockSections() const { return kMaxTitleBlockSections; }
  short MaxSwimLanes() const { return kMaxSwimLanes; }
  // XlPaperSize: 1, 17, 8 or 9.
  short PaperSize() const { return paperSize_; }
  // 1 portrait, 2 landscape.
  short Orientation() const { return orientation_; }
  bool UseShapes() const { return useShapes_; }
  // Trimmed; the name without the characters a file name cannot hold.
  const std::string& TemplateName() const { return name_; }
  const std::string& TemplateFolder() const { return folder_; }
  templates::CTemplateProperties::TemplateTypes TemplateType() const { return type_; }
  short SwimLaneCount() const { return laneCount_; }
  // Lane 1 to 10; "" for another.
  std::string GetSwimLaneTitle(int lane) const;
  bool AddHeader() const { return header_.add; }
  // 0 while the header is off.
  short HeaderRowCount() const { return header_.add ? header_.rows : 0; }
  // Row 1 to 3: its number of sections; 0 for another row.
  short GetHeaderSectionCount(int row) const { return header_.Sections(row); }
  // Row and section 1 to 3: the label; "" for others.
  std::string GetHeaderRowLabel(int row, int section) const { return header_.Label(row, section); }
  bool AddFooter() const { return footer_.add; }
  short FooterRowCount() const { return footer_.add ? footer_.rows : 0; }
  short GetFooterSectionCount(int row) const { return footer_.Sections(row); }
  std::string GetFooterRowLabel(int row, int section) const { return footer_.Label(row, section); }
  short NumberOfPages() const { return pages_; }
  // True when closed with OK.
  bool OK() const { return ok_; }

  // The choices of one half of the title block, as the dialog closed.
  struct TitleBlock {
    bool add = false;
    short rows = 1;
    short sections[kMaxTitleBlockRows] = {1, 0, 0};
    std::string labels[kMaxTitleBlockRows][kMaxTitleBlockSections];
    short Sections(int row) const { return row >= 1 && row <= kMaxTitleBlockRows ? sections[row - 1] : 0; }
    std::string Label(int row, int section) const;
  };

 private:
  bool ok_ = false;
  short lineStyle_ = 1;
  std::string fontName_;
  bool fontBold_ = false, fontItalic_ = false;
  float fontSize_ = 0;
  short paperSize_ = 1, orientation_ = 1, pages_ = 1;
  bool useShapes_ = true;
  std::string name_, folder_;
  templates::CTemplateProperties::TemplateTypes type_ = templates::CTemplateProperties::PlainGrid;
  short laneCount_ = 2;
  std::string laneTitles_[kMaxSwimLanes];
  TitleBlock header_, footer_;
};

}  // namespace nivarel::dialogs
