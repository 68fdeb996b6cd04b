#include "ucImages.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>


namespace nivarel::output {

ucImages::ucImages(std::string folder) : pictures_(std::move(folder), "ucImages"), shapes_(pictures_.Folder()) {}

std::string ucImages::StyleFileName(int style, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "styles/%02d%s.png", style, doubleSize ? "@2x" : "");
  return name;
}

std::string ucImages::LineFileName(int style, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "lines/%02d%s.png", style, doubleSize ? "@2x" : "");
  return name;
}

std::string ucImages::PlainLineFileName(int style, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "plain/%02d%s.png", style, doubleSize ? "@2x" : "");
  return name;
}

std::string ucImages::SideFileName(int index, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "sides/%s-%d%s.png", index < 4 ? "out" : "in", index % 4, doubleSize ? "@2x" : "");
  return name;
}

std::string ucImages::PanelFileName(Panel panel) {
  switch (panel) {
    case kThemedPanel: return "panels/themed.png";
    case kSolidPanel: return "panels/solid.png";
    case kFlowLinePanel: return "panels/flowlines.png";
    default: return "panels/lines.png";
  }
}

std::string ucImages::BranchFileName(int layout, bool doubleSize) {
  static const char* const kNames[kBranchLayouts] = {"standard", "inverted", "left", "right", "left-hanging",
                                                     "right-hanging"};
  if (layout < 0 || layout >= kBranchLayouts)
    throw std::out_of_range("Invalid branch layout " + std::to_string(layout));
  return std::string("branches/") + kNames[layout] + (doubleSize ? "@2x" : "") + ".png";
}

namespace {
const char* const kPageLayoutKeys[ucImages::kPageLayouts] = {"grid", "xf_vertical", "xf_horizontal", "annotated"};
}  // namespace

std::string ucImages::PageLayoutFileName(int layout, bool doubleSize) {
  if (layout < 0 || layout >= kPageLayouts) throw std::out_of_range("Invalid page layout " + std::to_string(layout));
  return std::string("layouts/") + kPageLayoutKeys[layout] + (doubleSize ? "@2x" : "") + ".png";
}

std::string ucImages::PageLayoutImage(const std::string& key) const {
  for (int i = 0; i < kPageLayouts; ++i)
    if (key == kPageLayoutKeys[i]) return pictures_.Path(PageLayoutFileName(i));
  throw std::out_of_range("Invalid page layout '" + key + "'");
}

std::string ucImages::BranchImage(int layout) const { return pictures_.Path(BranchFileName(layout)); }

std::string ucImages::ConnectorTypeFileName(int type, bool doubleSize) {
  static const char* const kNames[3] = {"straight", "elbow", "curved"};
  if (type < 1 || type > 3) throw std::out_of_range("Invalid connector type " + std::to_string(type));
  return std::string("connectors/") + kNames[type - 1] + (doubleSize ? "@2x" : "") + ".png";
}

std::string ucImages::ConnectorTypeImage(int type) const { return pictures_.Path(ConnectorTypeFileName(type)); }

std::string ucImages::GridImage(int index) const {
  if (index >= ucShapes::kFirst && index <= ucShapes::kLast) return shapes_.ShapeImage(index);
  int style = index - ucShapes::kLast;
  if (style < 1 || style > kLastStyle) throw std::out_of_range("Invalid picture index " + std::to_string(index));
  return StyleImage(style);
}

std::vector<std::string> ucImages::GridImageList() const {
  std::vector<std::string> out = shapes_.ShapeImageList();
  for (const auto& p : StyleImageList()) out.push_back(p);
  return out;
}

std::string ucImages::StyleImage(int& index) const {
  if (index < 1 || index > kLastStyle) index = kStyleFallback;
  return pictures_.Path(StyleFileName(index));
}

std::vector<std::string> ucImages::StyleImageList() const {
  return pictures_.List(1, kLastStyle, StyleFileName);
}

std::string ucImages::FlowlineStyleImage(int& index) const {
  if (index < 1 || index > kLastLineStyle) index = kLineFallback;
  return pictures_.Path(LineFileName(index));
}

std::vector<std::string> ucImages::FlowlineStyleImageList() const {
  return pictures_.List(1, kLastLineStyle, LineFileName);
}

std::string ucImages::LineStyleImage(int& index) const {
  if (index < 1 || index > kLastLineStyle) index = kLineFallback;
  return pictures_.Path(PlainLineFileName(index));
}

int ucImages::PanelIndex(double x, double y, int rows) {
  constexpr int kColumns = 7;
  int column = std::clamp(static_cast<int>(x * kColumns), 0, kColumns - 1);
  int row = std::clamp(static_cast<int>(y * rows), 0, rows - 1);
  return row * kColumns + column + 1;
}

std::string ucImages::SideImage(bool into, int side) const {
  if (side < 0 || side > 3) side = 0;
  return pictures_.Path(SideFileName(side + (into ? 4 : 0)));
}

std::string ucImages::PanelImage(Panel panel) const { return pictures_.Path(PanelFileName(panel)); }

}  // namespace nivarel::output
