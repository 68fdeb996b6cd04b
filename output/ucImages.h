// The store of style pictures: each symbol style 1 to 84 on a process symbol,
// each flow line style 1 to 21 as an arrowed line between two small symbols
// and as a plain line, the grid's list (shape types 1 to 124, then styles 1
// to 84), the pickers' panels of seven pictures to a row, the flow line
// tools' sides: a sample symbol with an arrow out of or into one of its
// sides (0 top, 1 right, 2 bottom, 3 left), the branch tool's six
// layouts and the template generator's four page layouts. Pictures
// are PNG file paths from the extension's "pictures" folder, drawn by the
// shape engine at build time; empty when the file is missing (logged once).
#pragma once

#include <string>
#include <vector>

#include "ucShapes.h"

namespace nivarel::output {

class ucImages {
 public:
  static constexpr int kStyleWidth = 48, kStyleHeight = 36;  // pixels; "@2x" twice that
  static constexpr int kLineWidth = 64, kLineHeight = 32;
  static constexpr int kLastStyle = 84, kStyleFallback = 43;
  static constexpr int kLastLineStyle = 21, kLineFallback = 1;
  static constexpr int kSideSize = 48;  // pixels, square; "@2x" twice that
  static constexpr int kBranchWidth = 64, kBranchHeight = 48;
  static constexpr int kBranchLayouts = 6;  // standard, inverted, left, right, left hanging, right hanging
  static constexpr int kPageWidth = 96, kPageHeight = 124;
  static constexpr int kPageLayouts = 4;
  static constexpr int kConnectorWidth = 40, kConnectorHeight = 30;  // the flow line types' pictures  // plain grid, vertical lanes, horizontal lanes, annotated lanes

  explicit ucImages(std::string folder = "");

  // Shape types 1..124 at 1..124, then styles 1..84 at 125..208. An index
  // outside the list raises std::out_of_range.
  std::string GridImage(int index) const;
  std::vector<std::string> GridImageList() const;
  // Style 1..84; another index becomes 43, also in the caller's variable.
  std::string StyleImage(int& index) const;
  std::vector<std::string> StyleImageList() const;
  // Flow line style 1..21; another index becomes 1, also in the caller's variable.
  std::string FlowlineStyleImage(int& index) const;
  std::vector<std::string> FlowlineStyleImageList() const;
  // Line style 1..21 as a plain line; another index becomes 1, also in the caller's variable.
  std::string LineStyleImage(int& index) const;

  // The sample symbol with an arrow out of side 0 to 3 (into it when into
  // is true); another side is 0.
  std::string SideImage(bool into, int side) const;
  // The branch tool's layout 0..5 (in the order of kBranchLayouts): a base
  // symbol with its fan of three items. Another layout raises std::out_of_range.
  std::string BranchImage(int layout) const;
  // A flow line of connector type 1 (straight), 2 (elbow) or 3 (curved)
  // between two symbols. Another type raises std::out_of_range.
  std::string ConnectorTypeImage(int type) const;

  // A template's page with its title block and body, by the layout's key:
  // "grid", "xf_vertical", "xf_horizontal" or "annotated". Another key
  // raises std::out_of_range.
  std::string PageLayoutImage(const std::string& key) const;

  // The pickers' panels: styles 1 to 42, styles 43 to 84, flow line styles
  // and plain line styles, each of 7 columns.
  enum Panel { kThemedPanel, kSolidPanel, kFlowLinePanel, kLinePanel };
  std::string PanelImage(Panel panel) const;
  // The 1-based number of the picture under a point of a panel of rows
  // rows, the point given as fractions of the panel's width and height.
  static int PanelIndex(double x, double y, int rows);

  static std::string StyleFileName(int style, bool doubleSize = false);
  static std::string LineFileName(int style, bool doubleSize = false);
  static std::string PlainLineFileName(int style, bool doubleSize = false);
  static std::string PanelFileName(Panel panel);
  // Index 0 to 3: out of sides 0 to 3; 4 to 7: into them.
  static std::string SideFileName(int index, bool doubleSize = false);
  static std::string BranchFileName(int layout, bool doubleSize = false);
  static std::string ConnectorTypeFileName(int type, bool doubleSize = false);
  // Layout 0 to 3, in the order of kPageLayouts.
  static std::string PageLayoutFileName(int layout, bool doubleSize = false);

 private:
  PictureFolder pictures_;
  ucShapes shapes_;
};

}  // namespace nivarel::output
