#include "CTemplateGenerator.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "Application.h"
#include "Borders.h"
#include "Characters.h"
#include "ColorFormat.h"
#include "Font.h"
#include "LineFormat.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Window.h"

namespace nivarel::templates {

namespace {

constexpr char kSource[] = "CTemplateGenerator";
constexpr char kPrefix[] = "TEMPLATE_";
constexpr char kGroupPrefix[] = "TEMPLATE_GROUP_";
constexpr int kLastLineStyle = 21;
constexpr long kAutomatic = 0;  // the office's automatic border colour is black

const int kEdges[] = {office::Borders::kEdgeLeft, office::Borders::kEdgeTop, office::Borders::kEdgeBottom,
                      office::Borders::kEdgeRight};

// The colours of the seven line styles of each weight, red in the low byte.
const long kColors[] = {0, 12287562, 4737982, 5552536, 10510461, 12954182, 4231926};
// Shape line weights of the three groups of seven, in points, below version 12.
const double kLineWeights[] = {0.75, 2, 3};

int InRange(int lineStyle) { return lineStyle < 1 || lineStyle > kLastLineStyle ? 1 : lineStyle; }

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && Lower(text.substr(text.size() - end.size())) == end;
}

std::string AddressOf(const office::Worksheet& ws, int row, int column, int lastRow, int lastColumn) {
  return office::Range(ws.Ref(), row, column, lastRow, lastColumn).AddressLocal(false);
}

// Starts and spans of count sections over the cells from first, count cells in all.
void ShareOut(int first, int count, int total, std::vector<int>& start, std::vector<int>& span) {
  start.assign(std::max(count, 0), first);
  span.assign(std::max(count, 0), 0);
  for (int i = 0; i < count; ++i) {
    span[i] = CTemplateGenerator::GetSectionSpan(i, count, total);
    if (i > 0) start[i] = start[i - 1] + span[i - 1];
  }
}

}  // namespace

std::optional<office::Workbook> CTemplateGenerator::CreateTemplate(CTemplateProperties& properties) {
  office::Application& app = *host::ExcelApp;
  std::optional<office::Workbook> book;
  saved_ = false;
  try {
    app.SetScreenUpdating(false);
    // The office's new documents have as many sheets as its own setting
    // says: the template keeps the first only.
    book = app.GetWorkbooks().Add();
    while (book->SheetCount() > 1) book->Sheet(book->SheetCount()).Delete();
    office::Worksheet ws = book->Sheet(1);
    if (!host::IsGlobalRowHeightSet()) host::SetGlobalRowHeight();
    ws.Columns().SetColumnWidth(host::GlobalColumnWidth);
    office::PageSetup page = ws.GetPageSetup();
    page.SetPaperSize(properties.PaperSize());
    page.SetOrientation(properties.Orientation());
    if (auto window = app.ActiveWindow()) window->SetDisplayGridlines(false);

    // Content over more than one page each way, so that the office breaks the pages.
    ws.GetRange("A1").SetValue("1");
    ws.GetRange("FA1000").SetValue("1");
    ws.SetDisplayPageBreaks(true);
    int lastColumn = ws.VPageBreaks().Location(1).Column() - 1;
    int rowsPerPage = ws.HPageBreaks().Location(1).Row() - 1;
    // A heavy cell border would reach over the page's last row.
    if (!properties.UseShapesForSwimLanes()) {
      if ((host::ExcelVersion >= 12 && properties.TemplateLineStyle() > 7) ||
          (host::ExcelVersion < 12 && properties.TemplateLineStyle() > 14))
        --rowsPerPage;
    }
    int pageStep = rowsPerPage;
    ws.GetRange("A1").Clear();
    ws.GetRange("FA1000").Clear();

    int firstRow = 1, firstColumn = 1, bottomRow = pageStep;
    if (properties.UseShapesForSwimLanes()) {
      firstColumn = 2;
      --lastColumn;
      --bottomRow;
    }
    for (short pageNumber = 1; pageNumber <= properties.NumberOfPages(); ++pageNumber) {
      if (properties.AddHeader()) AddHeader(ws, properties, firstRow, firstColumn, lastColumn);
      if (properties.AddFooter())
        AddFooter(ws, properties, firstColumn, lastColumn, bottomRow - 2 * properties.FooterRowCount() + 1);
      AddBody(ws, properties, firstRow, firstColumn, lastColumn, bottomRow);
      firstRow += pageStep;
      bottomRow += pageStep;
      if (properties.UseShapesForSwimLanes()) GroupTemplateShapes(ws, pageNumber);
    }
    SetDocumentProperties(*book, properties);
    SaveTemplateFile(*book, properties);
  } catch (...) {
    host::ErrorHandler(kSource, "CreateTemplate", false);
  }
  try {
    app.SetScreenUpdating(true);
  } catch (...) {
  }
  return book;
}

void CTemplateGenerator::GroupTemplateShapes(office::Worksheet& worksheet, short page) {
  try {
    office::Shapes shapes = worksheet.GetShapes();
    std::vector<std::string> names;
    for (int i = 1, n = shapes.Count(); i <= n; ++i) {
      std::string name = shapes.Item(i).Name();
      std::string head = name.substr(0, 14);
      std::transform(head.begin(), head.end(), head.begin(), [](unsigned char c) { return std::toupper(c); });
      if (head != "TEMPLATE_GROUP") names.push_back(name);
    }
    if (names.empty()) return;
    office::Shape group = shapes.GetRange(names).Group();
    group.SetName(kGroupPrefix + std::to_string(page));
  } catch (...) {
    // A page with a single shape has nothing to group.
  }
}

std::string CTemplateGenerator::TemplateFilePath(const CTemplateProperties& properties) {
  std::string path = properties.TemplateFolder() + "/" + properties.TemplateName();
  const char* extension = host::ExcelVersion >= 12 ? ".xltx" : ".xlt";
  if (!EndsWith(path, extension)) path += extension;
  for (size_t at; (at = path.find("//")) != std::string::npos;) path.replace(at, 2, "/");
  return path;
}

int CTemplateGenerator::GetSectionSpan(int index, int count, int total) {
  if (count <= 0) return total;
  int base = total / count, remainder = total % count;
  return index + 1 <= remainder ? base + 1 : base;
}

int CTemplateGenerator::GetBorderWeight(int lineStyle) {
  if (lineStyle >= 8 && lineStyle <= 14) return office::Borders::kMedium;
  if (lineStyle >= 15 && lineStyle <= kLastLineStyle) return office::Borders::kThick;
  return office::Borders::kThin;
}

long CTemplateGenerator::GetBorderColor(int lineStyle) { return kColors[(InRange(lineStyle) - 1) % 7]; }

void CTemplateGenerator::AddHeader(office::Worksheet& ws, const CTemplateProperties& p, int topRow, int firstColumn,
                                   int lastColumn) {
  try {
    AddTitleBlockRows(ws, p, true, topRow, firstColumn, lastColumn);
  } catch (...) {
    host::ErrorHandler(kSource, "AddHeader", false);
  }
}

void CTemplateGenerator::AddFooter(office::Worksheet& ws, const CTemplateProperties& p, int firstColumn,
                                   int lastColumn, int topRow) {
  try {
    AddTitleBlockRows(ws, p, false, topRow, firstColumn, lastColumn);
  } catch (...) {
    host::ErrorHandler(kSource, "AddFooter", false);
  }
}

void CTemplateGenerator::AddTitleBlockRows(office::Worksheet& ws, const CTemplateProperties& p, bool header,
                                           int topRow, int firstColumn, int lastColumn) {
  int columns = lastColumn - firstColumn + 1;
  int rows = header ? p.HeaderRowCount() : p.FooterRowCount();
  for (int r = 1; r <= rows; ++r) {
    int n = header ? p.GetHeaderSectionCount(r) : p.GetFooterSectionCount(r);
    std::vector<int> start, span;
    ShareOut(firstColumn, n, columns, start, span);
    int sheetRow = topRow + (r - 1) * 2;
    for (int i = 0; i < n; ++i) {
      std::string address = AddressOf(ws, sheetRow, start[i], sheetRow + 1, start[i] + span[i] - 1);
      AddSection(ws, p, address, header ? p.GetHeaderRowLabel(r, i + 1) : p.GetFooterRowLabel(r, i + 1), false,
                 false);
    }
  }
}

void CTemplateGenerator::AddSection(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address,
                                    const std::string& label, bool rotate, bool centre) {
  if (p.UseShapesForSwimLanes())
    AddShapeSection(ws, p, address, label, rotate, centre);
  else
    AddCellSection(ws, p, address, label, rotate, centre);
}

void CTemplateGenerator::AddCellSection(office::Worksheet& ws, const CTemplateProperties& p,
                                        const std::string& address, const std::string& label, bool rotate,
                                        bool centre) {
  try {
    office::Range range = ws.GetRange(address);
    range.SetMergeCells(true);
    range.Cells(1, 1).SetValue(label);
    range.SetHorizontalAlignment(office::xlCenter);
    range.SetVerticalAlignment(office::xlCenter);
    range.SetWrapText(true);
    range.SetOrientation(rotate ? 90 : 0);
    if (!centre) {
      range.SetHorizontalAlignment(office::xlLeft);
      range.SetVerticalAlignment(office::xlBottom);
    }
    office::Font font = range.GetFont();
    font.SetName(p.TemplateFontName());
    font.SetSize(p.TemplateFontSize());
    font.SetBold(p.TemplateFontBold());
    font.SetItalic(p.TemplateFontItalic());
    AddCellLane(ws, p, address);
  } catch (...) {
    host::ErrorHandler(kSource, "AddCellSection", false);
  }
}

void CTemplateGenerator::AddShapeSection(office::Worksheet& ws, const CTemplateProperties& p,
                                         const std::string& address, const std::string& label, bool rotate,
                                         bool centre) {
  std::optional<office::Shape> shape;
  bool noLabel = label.empty();
  try {
    office::Range range = ws.GetRange(address);
    float top = static_cast<float>(range.Top()), left = static_cast<float>(range.Left());
    float width = static_cast<float>(range.Width()), height = static_cast<float>(range.Height());
    shape = ws.GetShapes().AddShape(office::msoShapeFlowchartProcess, left, top, width, height);
    office::Characters text = shape->GetTextFrame().GetCharacters();
    text.SetText(noLabel ? "Label" : label);
    office::Font font = text.GetFont();
    font.SetName(p.TemplateFontName());
    font.SetSize(p.TemplateFontSize());
    font.SetBold(p.TemplateFontBold());
    font.SetItalic(p.TemplateFontItalic());
    shape->SetName(kPrefix + shape->Name());
    office::TextFrame frame = shape->GetTextFrame();
    if (centre) {
      frame.SetHorizontalAlignment(office::xlCenter);
      frame.SetVerticalAlignment(office::xlCenter);
    } else {
      frame.SetHorizontalAlignment(office::xlLeft);
      frame.SetVerticalAlignment(office::xlBottom);
      rotate = false;
    }
    if (rotate) frame.SetOrientation(office::msoTextOrientationUpward);
    SetLineStyle(*shape, p.TemplateLineStyle());
  } catch (...) {
    host::ErrorHandler(kSource, "AddShapeSection", false);
  }
  // Best effort from here on.
  if (!shape) return;
  try {
    if (host::ExcelVersion < 12) shape->GetTextFrame().SetReadingOrder(office::xlContext);
  } catch (...) {
  }
  try {
    if (noLabel) shape->GetTextFrame().GetCharacters().SetText("");
  } catch (...) {
  }
}

void CTemplateGenerator::AddBody(office::Worksheet& ws, const CTemplateProperties& p, int topRow, int firstColumn,
                                 int lastColumn, int bottomRow) {
  try {
    int bodyTop = topRow + 2 * p.HeaderRowCount();
    int bodyBottom = bottomRow - 2 * p.FooterRowCount();
    switch (p.TemplateType()) {
      case CTemplateProperties::PlainGrid:
        AddGrid(ws, AddressOf(ws, bodyTop, firstColumn, bodyBottom, lastColumn));
        break;
      case CTemplateProperties::HorizontalSwimLanes:
        AddHorizontalSwimLanes(ws, p, firstColumn, lastColumn, bodyTop, bodyBottom);
        break;
      case CTemplateProperties::VerticalSwimLanes:
        AddVerticalSwimLanes(ws, p, firstColumn, lastColumn, bodyTop, bodyBottom);
        break;
      default:
        break;  // annotated: the title block alone
    }
  } catch (...) {
    host::ErrorHandler(kSource, "AddBody", false);
  }
}

void CTemplateGenerator::AddGrid(office::Worksheet& ws, const std::string& address) {
  try {
    office::Borders borders = ws.GetRange(address).GetBorders();
    for (int edge : {office::Borders::kInsideVertical, office::Borders::kInsideHorizontal})
      borders.SetEdge(edge, office::Borders::kContinuous, office::Borders::kHairline, kAutomatic);
    for (int edge : kEdges) borders.SetEdge(edge, office::Borders::kContinuous, office::Borders::kThin, kAutomatic);
  } catch (...) {
    host::ErrorHandler(kSource, "AddGrid", false);
  }
}

void CTemplateGenerator::AddVerticalSwimLanes(office::Worksheet& ws, const CTemplateProperties& p, int firstColumn,
                                              int lastColumn, int topRow, int bottomRow) {
  try {
    int n = p.SwimLaneCount();
    std::vector<int> start, span;
    ShareOut(firstColumn, n, lastColumn - firstColumn + 1, start, span);
    for (int i = 0; i < n; ++i)
      AddSection(ws, p, AddressOf(ws, topRow, start[i], topRow + 1, start[i] + span[i] - 1),
                 p.GetSwimLaneTitle(i + 1), false, true);
    for (int i = 0; i < n; ++i) {
      std::string address = AddressOf(ws, topRow + 2, start[i], bottomRow, start[i] + span[i] - 1);
      if (p.UseShapesForSwimLanes())
        AddVerticalShapeLane(ws, p, address, i);
      else
        AddCellLane(ws, p, address);
    }
    if (!p.AddFooter() && p.UseShapesForSwimLanes()) {
      office::Range foot(ws.Ref(), bottomRow, firstColumn, bottomRow, lastColumn);
      float left = static_cast<float>(foot.Left()), bottom = static_cast<float>(foot.Top() + foot.Height());
      AddFormattedLine(ws, p, left, bottom, left + static_cast<float>(foot.Width()), bottom);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "AddVerticalSwimLanes", false);
  }
}

void CTemplateGenerator::AddHorizontalSwimLanes(office::Worksheet& ws, const CTemplateProperties& p,
                                                int firstColumn, int lastColumn, int topRow, int bottomRow) {
  try {
    int n = p.SwimLaneCount();
    std::vector<int> start, span;
    ShareOut(topRow, n, bottomRow - topRow + 1, start, span);
    for (int i = 0; i < n; ++i)
      AddSection(ws, p, AddressOf(ws, start[i], firstColumn, start[i] + span[i] - 1, firstColumn + 1),
                 p.GetSwimLaneTitle(i + 1), true, true);
    for (int i = 0; i < n; ++i) {
      std::string address = AddressOf(ws, start[i], firstColumn + 2, start[i] + span[i] - 1, lastColumn);
      if (p.UseShapesForSwimLanes())
        AddHorizontalShapeLane(ws, p, address, i == n - 1);
      else
        AddCellLane(ws, p, address);
    }
    if (p.UseShapesForSwimLanes()) {
      office::Range edge(ws.Ref(), topRow, lastColumn + 1, bottomRow, lastColumn + 1);
      float left = static_cast<float>(edge.Left()), top = static_cast<float>(edge.Top());
      AddFormattedLine(ws, p, left, top, left, top + static_cast<float>(edge.Height()));
    }
  } catch (...) {
    host::ErrorHandler(kSource, "AddHorizontalSwimLanes", false);
  }
}

void CTemplateGenerator::AddCellLane(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address) {
  try {
    office::Borders borders = ws.GetRange(address).GetBorders();
    for (int edge : kEdges)
      borders.SetEdge(edge, office::Borders::kContinuous, GetBorderWeight(p.TemplateLineStyle()),
                      GetBorderColor(p.TemplateLineStyle()));
  } catch (...) {
    host::ErrorHandler(kSource, "AddCellLane", false);
  }
}

void CTemplateGenerator::AddVerticalShapeLane(office::Worksheet& ws, const CTemplateProperties& p,
                                              const std::string& address, int lane) {
  try {
    office::Range range = ws.GetRange(address);
    float left = static_cast<float>(range.Left()), top = static_cast<float>(range.Top());
    float right = left + static_cast<float>(range.Width()), bottom = top + static_cast<float>(range.Height());
    if (lane == 0) AddFormattedLine(ws, p, left, top, left, bottom);
    AddFormattedLine(ws, p, right, top, right, bottom);
  } catch (...) {
    host::ErrorHandler(kSource, "AddVerticalShapeLane", false);
  }
}

void CTemplateGenerator::AddHorizontalShapeLane(office::Worksheet& ws, const CTemplateProperties& p,
                                                const std::string& address, bool isLast) {
  try {
    office::Range range = ws.GetRange(address);
    float left = static_cast<float>(range.Left()), top = static_cast<float>(range.Top());
    float right = left + static_cast<float>(range.Width()), bottom = top + static_cast<float>(range.Height());
    // Without a header every lane draws its top edge, so inner boundaries are drawn twice.
    if (!p.AddHeader()) AddFormattedLine(ws, p, left, top, right, top);
    if (!isLast || !p.AddFooter()) AddFormattedLine(ws, p, left, bottom, right, bottom);
  } catch (...) {
    host::ErrorHandler(kSource, "AddHorizontalShapeLane", false);
  }
}

void CTemplateGenerator::AddFormattedLine(office::Worksheet& ws, const CTemplateProperties& p, float x1, float y1,
                                          float x2, float y2) {
  try {
    office::Shape line = ws.GetShapes().AddLine(x1, y1, x2, y2);
    line.SetName(kPrefix + line.Name());
    SetLineStyle(line, p.TemplateLineStyle());
  } catch (...) {
    host::ErrorHandler(kSource, "AddFormattedLine", false);
  }
}

void CTemplateGenerator::SetLineStyle(office::Shape& shape, int lineStyle) {
  try {
    int id = InRange(lineStyle);
    if (host::ExcelVersion >= 12) {
      shape.SetShapeStyle(10000 + id);
    } else {
      office::LineFormat line = shape.Line();
      line.SetWeight(kLineWeights[(id - 1) / 7]);
      line.ForeColor().SetRGB(GetBorderColor(id));
    }
  } catch (...) {
    host::ErrorHandler(kSource, "SetLineStyle", false);
  }
}

void CTemplateGenerator::SetDocumentProperties(office::Workbook& book, const CTemplateProperties& p) {
  try {
    office::DocumentProperties properties = book.GetDocumentProperties();
    properties.SetTitle(p.TemplateName());
    // "SwimLanes" is no longer written, but a file that still has it loses it.
    if (properties.Count() > 0) {
      for (const char* name :
           {"PageSize", "Orientation", "SwimLanes", "NumberLanes", "LaneDirection", "StartLocation", "TemplateType"})
        if (!GetCustomPropertyValue(properties, name).empty()) properties.Delete(name);
    }
    properties.AddNumber("NumberLanes", p.SwimLaneCount());
    switch (p.PaperSize()) {
      case 1: properties.AddText("PageSize", "Letter"); break;
      case 3:
      case 17: properties.AddText("PageSize", "11x17"); break;
      case 8: properties.AddText("PageSize", "A3"); break;
      case 9: properties.AddText("PageSize", "A4"); break;
      default: break;
    }
    if (p.Orientation() == 1) properties.AddText("Orientation", "Portrait");
    if (p.Orientation() == 2) properties.AddText("Orientation", "Landscape");
    if (p.TemplateType() == CTemplateProperties::HorizontalSwimLanes) properties.AddText("LaneDirection", "Horizontal");
    if (p.TemplateType() == CTemplateProperties::VerticalSwimLanes) properties.AddText("LaneDirection", "Vertical");
    properties.AddText("StartLocation", "C4");
    properties.AddText("TemplateType", "Flowchart");
  } catch (...) {
    host::ErrorHandler(kSource, "SetDocumentProperties", false);
  }
}

std::string CTemplateGenerator::GetCustomPropertyValue(const office::DocumentProperties& properties,
                                                       const std::string& name) {
  try {
    for (int i = 1, n = properties.Count(); i <= n; ++i)
      if (properties.Name(i) == name) return properties.Value(i);
  } catch (...) {
    host::ErrorHandler(kSource, "GetCustomPropertyValue", false);
  }
  return {};
}

void CTemplateGenerator::SaveTemplateFile(office::Workbook& book, const CTemplateProperties& p) {
  try {
    std::string path = TemplateFilePath(p);
    office::Application& app = *host::ExcelApp;
    bool alerts = app.DisplayAlerts();
    app.SetDisplayAlerts(false);
    try {
      book.SaveAs(path);
      saved_ = true;
    } catch (...) {
      app.SetDisplayAlerts(alerts);
      throw;
    }
    app.SetDisplayAlerts(alerts);
  } catch (...) {
    host::ErrorHandler(kSource, "SaveTemplateFile", false);
  }
}

}  // namespace nivarel::templates
