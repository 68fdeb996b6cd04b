#include "StorePictures.h"

#include <filesystem>
#include <algorithm>
#include <functional>

#include "CConfig.h"
#include "CFlowLineAdder.h"
#include "CFlowLineFormatter.h"
#include "CShapeFormatter.h"
#include "FillFormat.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "ConnectorFormat.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Characters.h"
#include "ucImages.h"
#include "ucShapes.h"
#include "CLoadPictureGDI.h"

#include <unistd.h>

namespace nivarel::output {
namespace {

using namespace office;

constexpr int16_t kProcessStyle = 2;  // the shipped style of a Process
constexpr double kInset = 4;          // points between a picture's edge and what it shows
constexpr int16_t kBranchLineStyle = 1;  // a thin black arrowed line
constexpr double kOrigin = 72;        // where pictures are drawn on the sheet, room for what reaches out

// Every picture is drawn where the contact sheet shows it, twelve to a row
// with its number under it, and written from its own shapes alone. Each row
// has a sheet of its own, so no sheet grows large; the contact sheet is made
// of the rows' pictures, one under the other.
class Painter {
 public:
  Painter(Application& app, Workbook book, std::string rowFolder)
      : app_(app), book_(book), rowFolder_(std::move(rowFolder)), sheet_(book.Sheet(1)), shapes_(sheet_.GetShapes()) {}

  // Draws one store's pictures, first to last, each in a frame of width by
  // height points, and writes them under folder by their file names.
  void Store(const std::string& folder, int first, int last, double width, double height, const std::string& prefix,
             const std::function<std::string(int, bool)>& fileName,
             const std::function<Shape(int, double, double, double, double)>& draw) {
    for (int i = first; i <= last; ++i) app_.InOneTurn([&] {
      int col = (i - first) % kPerRow;
      if (col == 0) NewRow();
      double left = kOrigin + col * (width + kGap), top = kOrigin;
      picture_.clear();
      Frame(left, top, width, height);
      Shape main = draw(i, left + kInset, top + kInset, width - 2 * kInset, height - 2 * kInset);
      Fit(main, left, top, width, height);
      ShapeRange range(sheet_.Ref(), picture_);
      std::filesystem::create_directories(std::filesystem::path(folder + "/" + fileName(i, false)).parent_path());
      range.ExportPicture(folder + "/" + fileName(i, false), 1);
      range.ExportPicture(folder + "/" + fileName(i, true), 2);
      written_ += 2;
      Label(left, top + height, width, prefix + std::to_string(i));
    });
    NewRow();
  }

  // The contact sheet: the rows' pictures one under the other, a gap
  // between stores, written at kSheetScale pixels a point.
  void ContactSheet(const std::string& path) {
    NewRow();
    Worksheet sheet = book_.AddSheet();
    Shapes shapes = sheet.GetShapes();
    double top = 0, maxWidth = 0;
    for (const auto& row : rows_) {
      if (row.empty()) {
        top += kGap;
        continue;
      }
      auto picture = CLoadPictureGDI().LoadPictureGDI(row);
      if (!picture) throw std::runtime_error("The row picture " + row + " cannot be read");
      double w = picture->PixelWidth() / kSheetScale, h = picture->PixelHeight() / kSheetScale;
      shapes.AddPicture(*picture, 0, top, w, h);
      top += h;
      maxWidth = std::max(maxWidth, w);
    }
    // On white, so that it reads the same on a dark page.
    Shape back = shapes.AddShape(msoShapeRectangle, -kGap, -kGap, maxWidth + 2 * kGap, top + 2 * kGap);
    back.Fill().Solid();
    back.Fill().ForeColor().SetRGB(0xFFFFFF);
    back.Line().SetVisible(false);
    back.ZOrder(msoSendToBack);
    sheet.ExportDrawingPicture(path, kSheetScale);
  }

  Shape Symbol(int type, double left, double top, double width, double height, int16_t style,
               const std::string& text = "") {
    Shape s = Add(shapes_.AddShape(type, left, top, width, height));
    shapes::CShapeFormatter formatter;
    if (!text.empty()) {
      s.GetTextFrame().GetCharacters().SetText(text);
      rules::CConfig centred;
      centred.HorizontalAlignment = xlCenter;
      centred.VerticalAlignment = xlCenter;
      formatter.SetTextAlignment(s, centred);
    }
    formatter.SetStyleOnly(s, style);
    return s;
  }

  Shape Line(double left, double top, double width, double height, int16_t style) {
    double w = width / 4, h = height / 2;
    Shape a = Symbol(msoShapeFlowchartProcess, left, top + (height - h) / 2, w, h, kProcessStyle);
    Shape b = Symbol(msoShapeFlowchartProcess, left + width - w, top + (height - h) / 2, w, h, kProcessStyle);
    Shape line = Add(shapes_.AddConnector(msoConnectorStraight, 0, 0, 10, 10));
    line.GetConnectorFormat().BeginConnect(a, 4);
    line.GetConnectorFormat().EndConnect(b, 2);
    flowLines_.SetNewSolidFlowLineFormat(line, style);
    return line;
  }

  // A flow line of a connector type: from the right side of a symbol at
  // the top left to the top of one at the bottom right.
  Shape ConnectorType(int type, double left, double top, double width, double height) {
    double w = width * 3 / 8, h = height / 3;
    Shape a = Symbol(msoShapeFlowchartProcess, left, top, w, h, kProcessStyle);
    Shape b = Symbol(msoShapeFlowchartProcess, left + width - w, top + height - h, w, h, kProcessStyle);
    Shape line = Add(shapes_.AddConnector(type, 0, 0, 10, 10));
    line.GetConnectorFormat().BeginConnect(a, 4);
    line.GetConnectorFormat().EndConnect(b, 1);
    flowLines_.SetNewSolidFlowLineFormat(line, 1);
    return line;
  }

  // The flow line tools' sample: a process symbol in the middle of the
  // frame and a flow line arrow between the middle of one of its sides and
  // the frame's edge, pointing out or in.
  Shape Side(double left, double top, double width, double height, bool into, int side) {
    double w = width * 2 / 5, h = height * 3 / 8;
    double l = left + (width - w) / 2, t = top + (height - h) / 2;
    Shape symbol = Symbol(msoShapeFlowchartProcess, l, t, w, h, kProcessStyle);
    double mx = left + width / 2, my = top + height / 2;
    double sx = mx, sy = t, ex = mx, ey = top;  // the top
    if (side == 1) sx = l + w, sy = my, ex = left + width, ey = my;
    if (side == 2) sx = mx, sy = t + h, ex = mx, ey = top + height;
    if (side == 3) sx = l, sy = my, ex = left, ey = my;
    if (into) std::swap(sx, ex), std::swap(sy, ey);
    Shape line = Add(shapes_.AddLine(sx, sy, ex, ey));
    flowLines_.SetNewSolidFlowLineFormat(line, 1);
    line.Line().SetWeight(kArrowWeight);
    return symbol;
  }

  // The branch tool's layout (0 standard, 1 inverted, 2 left, 3 right, 4 left
  // hanging, 5 right hanging): a decision with three process items, each
  // joined by an arrowed elbow line from the side the tool joins from to the
  // side it joins to.
  Shape Branch(int layout, double left, double top, double width, double height) {
    struct Box {
      double x, y, w, h;
    };
    Box base{}, items[3]{};
    int fromSide = 2, toSide = 0;
    double bw = width * 2 / 7, bh = height / 4;  // the decision
    switch (layout) {
      case 0:
      case 1: {
        double iw = width / 4, ih = height * 9 / 40, gap = (width - 3 * iw) / 2;
        bool up = layout == 1;
        base = {left + (width - bw) / 2, up ? top + height - bh : top, bw, bh};
        for (int i = 0; i < 3; ++i) items[i] = {left + i * (iw + gap), up ? top : top + height - ih, iw, ih};
        fromSide = up ? 0 : 2;
        toSide = up ? 2 : 0;
        break;
      }
      case 2:
      case 3: {
        double iw = width * 2 / 7, ih = height / 5, gap = (height - 3 * ih) / 2;
        bool toLeft = layout == 2;
        base = {toLeft ? left + width - bw : left, top + (height - bh) / 2, bw, bh};
        for (int i = 0; i < 3; ++i) items[i] = {toLeft ? left : left + width - iw, top + i * (ih + gap), iw, ih};
        fromSide = toLeft ? 3 : 1;
        toSide = toLeft ? 1 : 3;
        break;
      }
      default: {
        double iw = width * 2 / 7, ih = height * 6 / 40, gap = height * 4 / 40;
        bool toLeft = layout == 4;
        base = {toLeft ? left + width - bw - width / 7 : left + width / 7, top, bw, bh};
        for (int i = 0; i < 3; ++i)
          items[i] = {toLeft ? left : left + width - iw, top + bh + gap + i * (ih + gap), iw, ih};
        fromSide = 2;
        toSide = toLeft ? 1 : 3;
        break;
      }
    }
    Shape from = Symbol(msoShapeFlowchartDecision, base.x, base.y, base.w, base.h, kProcessStyle);
    for (const Box& b : items) {
      Shape to = Symbol(msoShapeFlowchartProcess, b.x, b.y, b.w, b.h, kProcessStyle);
      Shape line = Add(shapes_.AddConnector(msoConnectorElbow, 0, 0, 10, 10));
      line.GetConnectorFormat().BeginConnect(from, shapes::CFlowLineAdder::GetConnectionPoint(from.AutoShapeType(), fromSide));
      line.GetConnectorFormat().EndConnect(to, shapes::CFlowLineAdder::GetConnectionPoint(to.AutoShapeType(), toSide));
      flowLines_.SetNewSolidFlowLineFormat(line, kBranchLineStyle);
    }
    return from;
  }

  // A template's page (layout 0 plain grid, 1 vertical lanes, 2 horizontal
  // lanes, 3 horizontal lanes with a column of notes): a white sheet of
  // paper with a title block of three sections at its head and its foot and
  // the body between them.
  Shape PageLayout(int layout, double left, double top, double width, double height) {
    Shape page = Box(left, top, width, height, kWhite, kPaperEdge, 0.75);
    double m = width * 0.07, x0 = left + m, x1 = left + width - m, y0 = top + m, y1 = top + height - m;
    double block = (y1 - y0) * 0.09, gap = 2;
    for (double y : {y0, y1 - block}) {
      double w = x1 - x0;
      Box(x0, y, w / 2, block, kTitleFill, kInk, 0.5);
      Box(x0 + w / 2, y, w / 4, block, kTitleFill, kInk, 0.5);
      Box(x0 + w * 3 / 4, y, w / 4, block, kTitleFill, kInk, 0.5);
    }
    double bx0 = x0, bx1 = x1, by0 = y0 + block + gap, by1 = y1 - block - gap;
    double bw = bx1 - bx0, bh = by1 - by0;
    constexpr int kLanes = 3;
    switch (layout) {
      case 0:
        for (int i = 1; i < 8; ++i) Stroke(bx0 + bw * i / 8, by0, bx0 + bw * i / 8, by1, kGridLine, 0.5);
        for (int i = 1; i < 10; ++i) Stroke(bx0, by0 + bh * i / 10, bx1, by0 + bh * i / 10, kGridLine, 0.5);
        break;
      case 1:
        for (int i = 0; i < kLanes; ++i) {
          Box(bx0 + bw * i / kLanes, by0, bw / kLanes, bh * 0.08, kLaneTitle, kInk, 0.5);
          Box(bx0 + bw * i / kLanes, by0, bw / kLanes, bh, -1, kInk, 0.75);
        }
        break;
      default: {
        double lanes = layout == 3 ? bw * 0.7 : bw;
        for (int i = 0; i < kLanes; ++i) {
          Box(bx0, by0 + bh * i / kLanes, bw * 0.12, bh / kLanes, kLaneTitle, kInk, 0.5);
          Box(bx0, by0 + bh * i / kLanes, lanes, bh / kLanes, -1, kInk, 0.75);
        }
        if (layout == 3) {
          Box(bx0 + lanes, by0, bw - lanes, bh, -1, kInk, 0.75);
          // Notes: short lines of text in the column beside the lanes.
          for (int i = 0; i < kLanes; ++i)
            for (int k = 1; k <= 3; ++k) {
              double y = by0 + bh * i / kLanes + bh / kLanes * k / 5;
              Stroke(bx0 + lanes + 3, y, bx1 - 3 - (k == 3 ? 6 : 0), y, kGridLine, 1);
            }
        }
        break;
      }
    }
    return page;
  }

  // A plain line of a line style across the frame, no arrowhead.
  Shape PlainLine(double left, double top, double width, double height, int16_t style) {
    Shape line = Add(shapes_.AddLine(left, top + height / 2, left + width, top + height / 2));
    rules::CConfig config;
    config.FlowLineStyle = style;
    flowLines_.SetLineFormat(line, config);
    return line;
  }

  // A picker's panel: the pictures in files laid out in rows of columns
  // cells of width by height points, first to last from the top left, on
  // white, written at twice a point's pixels.
  void Panel(const std::vector<std::string>& files, int columns, double width, double height,
             const std::string& path) {
    Worksheet sheet = book_.AddSheet();
    Shapes shapes = sheet.GetShapes();
    int rows = (static_cast<int>(files.size()) + columns - 1) / columns;
    Shape back = shapes.AddShape(msoShapeRectangle, 0, 0, columns * width, rows * height);
    back.Fill().Solid();
    back.Fill().ForeColor().SetRGB(0xFFFFFF);
    back.Line().SetVisible(false);
    for (size_t i = 0; i < files.size(); ++i) {
      auto picture = CLoadPictureGDI().LoadPictureGDI(files[i]);
      if (!picture) throw std::runtime_error("The picture " + files[i] + " cannot be read");
      shapes.AddPicture(*picture, (i % columns) * width, (i / columns) * height, width, height);
    }
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    sheet.ExportDrawingPicture(path, 2);
    ++written_;
  }

  int Written() const { return written_; }

 private:
  static constexpr int kPerRow = 12;
  static constexpr double kArrowWeight = 1.5;  // heavier than a flow line, to read at the dialogs' size
  static constexpr double kGap = 8, kLabelHeight = 12, kSheetScale = 1.5;
  // The page layouts' colours (red in the low byte).
  static constexpr long kWhite = 0xFFFFFF, kPaperEdge = 0x808080, kInk = 0x404040, kTitleFill = 0xF2F2F2,
                        kLaneTitle = 0xF2E6DC, kGridLine = 0xBEBEBE;

  // Ends the row being drawn, writing its picture, and starts a sheet for
  // the next one. A row with nothing drawn marks the gap between stores.
  void NewRow() {
    if (shapes_.Count() == 0) {
      if (!rows_.empty() && !rows_.back().empty()) rows_.push_back("");
      return;
    }
    std::string path = rowFolder_ + "/row" + std::to_string(rows_.size()) + ".png";
    sheet_.ExportDrawingPicture(path, kSheetScale);
    rows_.push_back(path);
    sheet_ = book_.AddSheet();
    shapes_ = sheet_.GetShapes();
  }

  Shape Add(Shape s) {
    picture_.push_back(s);
    return s;
  }

  // A rectangle of the picture with a fill (none for -1) and an outline.
  Shape Box(double left, double top, double width, double height, long fill, long line, double weight) {
    Shape b = Add(shapes_.AddShape(msoShapeRectangle, left, top, width, height));
    if (fill < 0) {
      b.Fill().SetVisible(false);
    } else {
      b.Fill().Solid();
      b.Fill().ForeColor().SetRGB(fill);
    }
    b.Line().ForeColor().SetRGB(line);
    b.Line().SetWeight(weight);
    return b;
  }

  void Stroke(double x1, double y1, double x2, double y2, long colour, double weight) {
    Shape l = Add(shapes_.AddLine(x1, y1, x2, y2));
    l.Line().ForeColor().SetRGB(colour);
    l.Line().SetWeight(weight);
  }

  // A rectangle that draws nothing and so sets the picture's area exactly.
  void Frame(double left, double top, double width, double height) {
    Shape f = Add(shapes_.AddShape(msoShapeRectangle, left, top, width, height));
    f.Fill().SetVisible(false);
    f.Line().SetVisible(false);
  }

  void Label(double left, double top, double width, const std::string& text) {
    Shape t = shapes_.AddTextbox(msoTextOrientationHorizontal, left, top, width, kLabelHeight);
    t.GetTextFrame().GetCharacters().SetText(text);
    t.Fill().SetVisible(false);
    t.Line().SetVisible(false);
  }

  // Shrinks and moves a symbol whose drawing reaches past its frame (a
  // callout's pointer, an arrow's sweep) until all of it lies inside.
  void Fit(Shape s, double left, double top, double width, double height) {
    ShapeRange alone(sheet_.Ref(), {s});
    for (int i = 0; i < 12; ++i) {
      Worksheet::PictureArea a = alone.Area();
      double right = a.left + a.width, bottom = a.top + a.height;
      constexpr double e = 0.01;
      if (a.left >= left - e && a.top >= top - e && right <= left + width + e && bottom <= top + height + e) return;
      double f = std::min(width / a.width, height / a.height);
      if (f < 0.999) {
        s.SetWidth(s.Width() * f * 0.98);
        s.SetHeight(s.Height() * f * 0.98);
        continue;
      }
      s.SetLeft(s.Left() + (a.left < left ? left - a.left : right > left + width ? left + width - right : 0));
      s.SetTop(s.Top() + (a.top < top ? top - a.top : bottom > top + height ? top + height - bottom : 0));
    }
  }

  Application& app_;
  Workbook book_;
  std::string rowFolder_;
  std::vector<std::string> rows_;  // the rows' pictures; "" for a gap
  Worksheet sheet_;
  Shapes shapes_;
  shapes::CFlowLineFormatter flowLines_;
  std::vector<Shape> picture_;  // the shapes of the picture being drawn
  int written_ = 0;
};

}  // namespace

int DrawStorePictures(Application& app, const std::string& folder, const std::string& sheetPath) {
  // The rows' pictures, for the contact sheet; gone when the drawing ends.
  struct RowFolder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("nivarel-rows-" + std::to_string(::getpid()));
    RowFolder() { std::filesystem::create_directories(path); }
    ~RowFolder() {
      std::error_code ignored;
      std::filesystem::remove_all(path, ignored);
    }
  } rowFolder;
  Workbook book = app.GetWorkbooks().Add();
  Painter p(app, book, rowFolder.path.string());
  p.Store(folder, ucShapes::kFirst, ucShapes::kLast, ucShapes::kWidth, ucShapes::kHeight, "", ucShapes::FileName,
          [&](int type, double l, double t, double w, double h) { return p.Symbol(type, l, t, w, h, kProcessStyle); });
  p.Store(folder, 1, ucImages::kLastStyle, ucImages::kStyleWidth, ucImages::kStyleHeight, "style ",
          ucImages::StyleFileName, [&](int style, double l, double t, double w, double h) {
            return p.Symbol(msoShapeFlowchartProcess, l, t, w, h, static_cast<int16_t>(style), "Aa");
          });
  p.Store(folder, 1, ucImages::kLastLineStyle, ucImages::kLineWidth, ucImages::kLineHeight, "line ",
          ucImages::LineFileName, [&](int style, double l, double t, double w, double h) {
            return p.Line(l, t, w, h, static_cast<int16_t>(style));
          });
  p.Store(folder, 1, ucImages::kLastLineStyle, ucImages::kLineWidth, ucImages::kLineHeight, "plain ",
          ucImages::PlainLineFileName, [&](int style, double l, double t, double w, double h) {
            return p.PlainLine(l, t, w, h, static_cast<int16_t>(style));
          });
  p.Store(folder, 0, 7, ucImages::kSideSize, ucImages::kSideSize, "side ", ucImages::SideFileName,
          [&](int i, double l, double t, double w, double h) { return p.Side(l, t, w, h, i >= 4, i % 4); });
  p.Store(folder, 0, ucImages::kBranchLayouts - 1, ucImages::kBranchWidth, ucImages::kBranchHeight, "branch ",
          ucImages::BranchFileName, [&](int layout, double l, double t, double w, double h) {
            return p.Branch(layout, l, t, w, h);
          });
  p.Store(folder, 1, 3, ucImages::kConnectorWidth, ucImages::kConnectorHeight, "type ",
          ucImages::ConnectorTypeFileName, [&](int type, double l, double t, double w, double h) {
            return p.ConnectorType(type, l, t, w, h);
          });
  p.Store(folder, 0, ucImages::kPageLayouts - 1, ucImages::kPageWidth, ucImages::kPageHeight, "page ",
          ucImages::PageLayoutFileName, [&](int layout, double l, double t, double w, double h) {
            return p.PageLayout(layout, l, t, w, h);
          });
  // The pickers' panels, seven to a row, made of the pictures just written.
  auto files = [&](int first, int last, const std::function<std::string(int, bool)>& name) {
    std::vector<std::string> out;
    for (int i = first; i <= last; ++i) out.push_back(folder + "/" + name(i, true));
    return out;
  };
  p.Panel(files(1, 42, ucImages::StyleFileName), 7, ucImages::kStyleWidth, ucImages::kStyleHeight,
          folder + "/" + ucImages::PanelFileName(ucImages::kThemedPanel));
  p.Panel(files(43, 84, ucImages::StyleFileName), 7, ucImages::kStyleWidth, ucImages::kStyleHeight,
          folder + "/" + ucImages::PanelFileName(ucImages::kSolidPanel));
  p.Panel(files(1, 21, ucImages::LineFileName), 7, ucImages::kLineWidth, ucImages::kLineHeight,
          folder + "/" + ucImages::PanelFileName(ucImages::kFlowLinePanel));
  p.Panel(files(1, 21, ucImages::PlainLineFileName), 7, ucImages::kLineWidth, ucImages::kLineHeight,
          folder + "/" + ucImages::PanelFileName(ucImages::kLinePanel));
  if (!sheetPath.empty()) p.ContactSheet(sheetPath);
  book.Close();
  return p.Written();
}

}  // namespace nivarel::output
