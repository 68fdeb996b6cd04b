#include "CInteractiveFlowcharter.h"

#include <cctype>

#include "CDecisionLabelAdder.h"
#include "CFlowLineAdder.h"
#include "CFlowLineFormatter.h"
#include "CShapeAdder.h"
#include "CShapeAlignment.h"
#include "CShapeDimensions.h"
#include "CTextParser.h"
#include "Characters.h"
#include "Interior.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
#include "MsgBox.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "TextFrame2.h"
#include "AddedShapes.h"
#include "KeptShading.h"
#include "UndoList.h"
#include "Window.h"
#include "frmFlowLinePrompt.h"
#include "frmTerminator.h"
#include "Text.h"

namespace nivarel::flowcharting {

namespace {

const char* const kSource = "CInteractiveFlowcharter";
constexpr int16_t kDecision = 63;
constexpr int16_t kTerminator = 69;
constexpr int16_t kConnector = 73;
constexpr int16_t kOffPageConnector = 74;
constexpr int kGrey = 15;
// Every undo entry of the add-in's own is named so.
constexpr char kEntryPrefix[] = "Nivarel: ";
// An edit of more cells than this (a whole column cleared, say) keeps its
// own undo entry.
constexpr long kLargestEditTakenOver = 10000;

// Turns screen updates and events back on however the handler ends.
class Restore {
 public:
  ~Restore() {
    try {
      if (host::ExcelApp) {
        host::ExcelApp->SetEnableEvents(true);
        host::ExcelApp->SetScreenUpdating(true);
      }
    } catch (...) {
    }
  }
};

bool IsCallout(int type) { return type >= 105 && type <= 124; }

// Drawing runs unrecorded by the office: AddedShapes records the shapes it
// adds. The office's own records of a program's drawing would not survive
// being undone beside a cell's (see docs/platform.md), so cells are never
// changed inside it.
class Drawing {
 public:
  explicit Drawing(const office::Worksheet& sheet) : pause_(sheet.Parent()) {}

 private:
  office::UndoList::Pause pause_;
};

}  // namespace

CInteractiveFlowcharter::CInteractiveFlowcharter() {
  try {
    m_Direction = 2;
    m_ws = host::ExcelApp->ActiveSheet();
    rules::CIniSymbolDataAccess().InitializeRules(m_Symbols, m_Prefixes, m_Keywords);
    m_MaxWidth = m_Symbols.GetMaxWidth();
    m_ChangeCount = 0;
    if (m_ws) m_Listening = m_ws->OnChange([this](const office::Range& target) { m_ws_Change(target); });
  } catch (...) {
    host::ErrorHandler(kSource, "Class_Initialize", false);
  }
}

CInteractiveFlowcharter::~CInteractiveFlowcharter() {
  m_Listening.Reset();
  m_ws.reset();
  try {
    if (host::ExcelApp) host::ExcelApp->SetEnableEvents(true);
  } catch (...) {
  }
  m_Prefixes.clear();
  m_Keywords.clear();
}

void CInteractiveFlowcharter::UpdateSheetGuides() {
  try {
    auto window = host::ExcelApp->ActiveWindow();
    if (window) window->SetDisplayGridlines(!m_Config.HideGridlines);
    if (m_Config.ShowGuides && m_ws) {
      m_ws->Columns().GetInterior().SetColorIndex(office::xlNone);
      m_ws->Row(m_Row).GetInterior().SetColorIndex(kGrey);
      m_ws->Column(m_Column).GetInterior().SetColorIndex(kGrey);
    }
  } catch (...) {
    // The guides are a help only.
  }
}

void CInteractiveFlowcharter::RestartFlowcharting(const rules::CConfig& config) {
  m_Config = config;
  try {
    auto window = host::ExcelApp->ActiveWindow();
    if (window) window->SetDisplayGridlines(!m_Config.HideGridlines);
  } catch (...) {
  }
}

void CInteractiveFlowcharter::FitTerminator(office::Shape& shape, int16_t width) {
  double left = shape.Left(), top = shape.Top();
  if (host::ExcelVersion >= 12) {
    try {
      shape.GetTextFrame2().SetWordWrap(office::msoFalse);
      shape.GetTextFrame2().SetAutoSize(office::msoAutoSizeShapeToFitText);
    } catch (...) {
    }
  }
  // The rows the text wraps to at the symbol's width, and the shape set to
  // them; the office stops fitting the shape to its text first, or the size
  // would not hold, and the text wraps inside the shape again.
  shapes::CShapeDimensions().SetTerminatorDimensions(shape, width, m_Symbols.GetMinHeight(kTerminator), left, top,
                                                     m_Text);
  if (host::ExcelVersion >= 12) {
    try {
      shape.GetTextFrame2().SetWordWrap(office::msoTrue);
    } catch (...) {
    }
  }
}

bool CInteractiveFlowcharter::StartFlowcharting(const rules::CConfig& config) {
  bool result = true;
  m_Config = config;
  try {
    m_NextCell = m_ws->GetRange(m_Config.UseRestartLocation ? m_Config.RestartLocation : m_Config.StartLocation);
  } catch (...) {
    m_NextCell.reset();
  }
  if (!m_NextCell) {
    try {
      m_ws->GetRange("C3").Select();
    } catch (...) {
    }
    host::MsgBox(
        "An invalid cell location was entered for the Terminator.\r\n"
        "If you still wish to add a terminator,\r\n"
        "you may manually add one using the Autoshapes\r\n"
        "on the Drawing toolbar.",
        office::vbExclamation, "Invalid Entry");
    return false;
  }
  try {
    host::ExcelApp->SetScreenUpdating(false);
    m_NextCell->Select();
    m_Row = m_NextCell->Row();
    m_Column = m_NextCell->Column();
    m_Text = m_Config.StartTerminatorText;
    if (m_Config.StartTerminator) {
      m_ShapeType = kTerminator;
      UpdateSheetGuides();
      office::AddedShapes added(*m_ws);
      Drawing drawing(*m_ws);
      int16_t width = m_Symbols.GetWidth(kTerminator);
      office::Shape shape = m_ws->GetShapes().AddShape(kTerminator, m_NextCell->Left(), m_NextCell->Top(),
                                                     width * host::GlobalRowHeight,
                                                     m_Symbols.GetMinHeight(kTerminator) * host::GlobalRowHeight);
      shape.GetTextFrame().GetCharacters().SetText(m_Text);
      m_Formatter.SetAllFormatSettings(shape, m_Config, m_Symbols.GetStyle(kTerminator));
      FitTerminator(shape, width);
      m_Shape = shape;
      int next = shape.BottomRightCell().Row() + 2;
      if (m_ws->Cells(next, m_Column).Top() - shape.Top() + shape.Height() < 2 * host::GlobalRowHeight) ++next;
      if (host::ExcelVersion >= 12) ++next;
      host::ExcelApp->SetScreenUpdating(true);
      m_NextCell = m_ws->Cells(next, m_Column);
      m_NextCell->Select();
      m_LastShapeName = shape.Name();
      m_LastRow = m_Row;
      m_LastColumn = m_Column;
      NoteStep();
    } else {
      UpdateSheetGuides();
    }
  } catch (...) {
    host::ErrorHandler(kSource, "StartFlowcharting", false);
  }
  try {
    host::ExcelApp->SetScreenUpdating(true);
  } catch (...) {
  }
  return result;
}

std::string CInteractiveFlowcharter::GetLastShapeName() {
  if (m_LastShapeName.empty() || !m_ws) return std::string();
  try {
    m_ws->GetShapes().Item(m_LastShapeName);
    return m_LastShapeName;
  } catch (...) {
    return std::string();
  }
}

std::string CInteractiveFlowcharter::LastShapeName() { return GetLastShapeName(); }

void CInteractiveFlowcharter::m_ws_Change(const office::Range& target) {
  ++m_ChangeCount;
  if (!m_ws || ReplayedByUndo()) return;
  Restore restore;
  bool processed = false;
  // Everything one change draws is one entry of the undo list, opened at
  // the first step found, before anything is changed.
  std::optional<office::UndoList::Entry> entry;
  std::optional<office::AddedShapes> added;
  try {
    host::ExcelApp->SetScreenUpdating(false);
    host::ExcelApp->SetEnableEvents(false);
    CTextParser parser;
    for (int column = target.Column(); column <= target.LastColumn(); ++column) {
      bool first = true;
      for (int row = target.Row(); row <= target.LastRow(); ++row) {
        office::Range cell = m_ws->Cells(row, column);
        std::string value = cell.Value();
        if (rules::Trim(value).empty()) continue;
        processed = true;
        m_Text = value;
        if (m_Config.Capitalize) m_Text = rules::CapitalizeFirst(m_Text);
        if (!entry) {
          TakeOverTheEdit(target);
          entry.emplace(m_ws->Parent(), kEntryPrefix + m_Text);
          added.emplace(*m_ws);
          CatchUpWithUndo();
        }
        if (first || !m_NextCell) {
          m_Row = cell.Row();
          m_Column = cell.Column();
          m_Address = cell.Address(false);
        } else {
          m_Row = m_NextCell->Row();
          m_Column = m_NextCell->Column();
          m_Address = m_NextCell->Address(false);
        }
        first = m_Column != m_LastColumn;
        m_LastShapeName = GetLastShapeName();
        parser.ParseText(m_Text, m_Config, *m_ws, m_Prefixes, m_Keywords, m_Symbols, m_Address, m_LastShapeName);

        if (parser.IsReserved() || parser.IsPowerString()) {
          try {
            if (parser.LastShapeChanged()) {
              m_Shape = m_ws->GetShapes().Item(parser.LastShapeName());
              m_Row = m_Shape->BottomRightCell().Row() + 2;
              m_Column = m_Shape->TopLeftCell().Column();
              UpdateSheetGuides();
              SelectNextCell(2);
              m_LastShapeName = parser.LastShapeName();
              m_LastRow = m_Row;
              m_LastColumn = m_Column;
              NoteStep();
            }
          } catch (...) {
          }
          continue;
        }

        m_Text = parser.Text();
        m_ShapeType = parser.ShapeType();
        // The cell's work comes first, recorded by the office; the drawing
        // follows unrecorded (see Drawing).
        cell.ClearContents();
        UpdateSheetGuides();
        bool drawn = false;
        {
          Drawing drawing(*m_ws);
          drawn = DrawStep(first);
        }
        if (!drawn) {
          // The step stays in its cell, and the log says which.
          cell.SetValue(value);
          host::LogEvent(kSource, "m_ws_Change",
                         "No shape could be made for " + m_Address + ": \"" + m_Text + "\"");
          continue;
        }
        m_LastShapeName = m_Shape->Name();
        m_LastRow = m_Row;
        m_LastColumn = m_Column;
        NoteStep();
      }
    }
    if (processed) {
      Drawing drawing(*m_ws);
      shapes::CFlowLineFormatter().SetFlowLineOrder(*m_ws);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "m_ws_Change", false);
  }
}

bool CInteractiveFlowcharter::DrawStep(bool first) {
  std::optional<office::Worksheet> sheet = m_ws;
  auto shape = shapes::CShapeAdder().AddShape(sheet, m_Symbols, m_Config, m_Formatter, m_Text, m_Address,
                                              m_ShapeType, "");
  if (!shape) return false;
  m_Shape = shape;
  shapes::CShapeDimensions().SetShapeDimensions(*m_Shape, m_Config, m_Symbols, m_MaxWidth, first, m_Text);

  bool prompt = false;
  int16_t direction = 2;
  if (m_LastShapeName.empty()) {
    prompt = host::GetNonTemplateShapeCount(*m_ws, 2) >= 2;
    direction = m_Config.FlowDirection == 1 ? 1 : 2;
  } else {
    shapes::CShapeAlignment alignment;
    office::Shape previous = m_ws->GetShapes().Item(m_LastShapeName);
    prompt = !alignment.AlignShapes(*m_ws, previous, *m_Shape, m_Column, m_LastColumn, m_Row, m_LastRow);
    direction = alignment.FlowDirection();
  }
  int type = m_Shape->AutoShapeType();
  if (m_Config.AddFlowLine && !(first && (type == kConnector || type == kOffPageConnector)))
    AddFlowLineConnector(prompt);
  SelectNextCell(direction);
  // Bringing the screen back on can set the office recording again.
  office::UndoList(m_ws->Parent()).HoldPause();
  if (type == kDecision) shapes::CDecisionLabelAdder().AddBranchLabels(*m_ws, *m_Shape, m_Config, m_Formatter);
  return true;
}

bool CInteractiveFlowcharter::ReplayedByUndo() {
  try {
    office::UndoList undo(m_ws->Parent());
    if (!undo.RedoTitles().empty()) return true;
    auto titles = undo.Titles();
    return !titles.empty() && titles[0].rfind(kEntryPrefix, 0) == 0;
  } catch (...) {
    host::ErrorHandler(kSource, "ReplayedByUndo", false);
    return false;
  }
}

void CInteractiveFlowcharter::TakeOverTheEdit(const office::Range& target) {
  if (static_cast<long>(target.RowCount()) * target.ColumnCount() > kLargestEditTakenOver) return;
  try {
    office::UndoList undo(m_ws->Parent());
    if (undo.Titles().empty()) return;
    auto typed = target.Formulas();
    undo.Undo();
    if (target.Formulas() == typed) {
      // The entry on top was not this edit's: put it back as it was.
      undo.Redo();
      return;
    }
    office::UndoList::Pause unrecorded(m_ws->Parent());
    office::Range cells = target;
    cells.SetFormulas(typed);
  } catch (...) {
    host::ErrorHandler(kSource, "TakeOverTheEdit", false);
  }
}

void CInteractiveFlowcharter::NoteStep() {
  if (m_StepsShown < m_Steps.size()) m_Steps.resize(m_StepsShown);
  m_Steps.push_back({m_LastShapeName, m_LastRow, m_LastColumn});
  m_StepsShown = m_Steps.size();
}

void CInteractiveFlowcharter::CatchUpWithUndo() {
  try {
    office::Shapes shapes = m_ws->GetShapes();
    size_t shown = m_Steps.size();
    for (; shown > 0; --shown) {
      try {
        shapes.Item(m_Steps[shown - 1].name);
        break;
      } catch (...) {
        // Taken back with Ctrl+Z.
      }
    }
    m_StepsShown = shown;
    if (shown == 0 || m_Steps[shown - 1].name == m_LastShapeName) return;
    m_LastShapeName = m_Steps[shown - 1].name;
    m_LastRow = m_Steps[shown - 1].row;
    m_LastColumn = m_Steps[shown - 1].column;
  } catch (...) {
    host::ErrorHandler(kSource, "CatchUpWithUndo", false);
  }
}

void CInteractiveFlowcharter::AddFlowLineConnector(bool prompt) {
  try {
    if (!m_ws) m_ws = host::ExcelApp->ActiveSheet();
    if (host::GetNonTemplateShapeCount(*m_ws, 2) < 2 || !m_Shape) return;
    std::optional<office::Shape> previous;
    if (!m_LastShapeName.empty()) {
      try {
        previous = m_ws->GetShapes().Item(m_LastShapeName);
      } catch (...) {
        host::LogEvent(kSource, "AddFlowLineConnector", "Invalid name for last shape");
        prompt = true;
      }
      if (previous && (IsCallout(previous->AutoShapeType()) || IsCallout(m_Shape->AutoShapeType()))) return;
    } else {
      prompt = true;
    }
    if (prompt || !previous) {
      // The user picks what to join the new shape to.
      dialogs::frmFlowLinePrompt form;
      form.InitializeSettings(*m_ws, *m_Shape, m_Config);
      host::ExcelApp->SetScreenUpdating(true);
      form.Show();
      host::ExcelApp->SetScreenUpdating(false);
      // The dialog's closing can set the office recording again.
      office::UndoList(m_ws->Parent()).HoldPause();
      return;
    }
    shapes::CFlowLineAdder().AddDefaultFlowLine(*m_ws, *previous, *m_Shape, m_Config);
  } catch (...) {
    host::ErrorHandler(kSource, "AddFlowLineConnector", false);
  }
}

void CInteractiveFlowcharter::SelectNextCell(int16_t direction) {
  bool screen = true;
  try {
    if (!m_ws) m_ws = host::ExcelApp->ActiveSheet();
    screen = host::ExcelApp->ScreenUpdating();
    int16_t way = 2;
    if (m_Config.FlowDirection == 0) {
      way = 2;
    } else if (m_Config.FlowDirection == 1) {
      way = 1;
    } else if (!m_LastShapeName.empty() && m_Shape) {
      way = direction != m_Direction ? m_Direction : direction;
      m_Direction = direction;
    } else {
      way = 2;
      m_Direction = 2;
    }
    int row = m_Row, column = m_Column;
    switch (way) {
      case 1:
        row = m_Shape->TopLeftCell().Row();
        column = m_Shape->BottomRightCell().Column() + 2;
        break;
      case 3:
        row = m_Shape->TopLeftCell().Row();
        column = std::max(1, m_Shape->TopLeftCell().Column() - static_cast<int>(m_Symbols.GetMaxWidth()) - 2);
        break;
      case 2:
        row = m_Shape->BottomRightCell().Row() + 2;
        if (m_Shape->AutoShapeType() == kDecision || host::ExcelVersion >= 12) ++row;
        column = m_Column;
        break;
      default:
        row = m_Row - 4;
        column = m_Column;
        break;
    }
    host::ExcelApp->SetScreenUpdating(true);
    try {
      m_NextCell = m_ws->Cells(row, column);
      m_NextCell->Select();
    } catch (...) {
      // By way of A1, which takes any offset on the sheet; the row and
      // column 1 cases are one off, as they always were.
      office::Range a1 = m_ws->GetRange("A1");
      office::Range cell = a1;
      if (row >= 2 && column >= 2)
        cell = a1.Offset(row - 1, column - 1);
      else if (row <= 1 && column <= 1)
        cell = a1;
      else if (row == 1)
        cell = a1.Offset(row, column - 1);
      else if (column == 1)
        cell = a1.Offset(row - 1, column);
      m_NextCell = cell;
      cell.Select();
    }
    host::ExcelApp->SetScreenUpdating(screen);
  } catch (...) {
    host::ErrorHandler(kSource, "SelectNextCell", false);
  }
}

bool CInteractiveFlowcharter::AddStopTerminator() {
  bool result = false;
  try {
    if (!m_Config.EndTerminator) return false;
    std::string address;
    auto active = host::ExcelApp->ActiveCell();
    if (active) {
      address = active->AddressLocal(false);
    } else if (m_NextCell) {
      address = m_NextCell->AddressLocal(false);
    } else if (!m_LastShapeName.empty()) {
      office::Shape last = m_ws->GetShapes().Item(m_LastShapeName);
      office::Range below = m_ws->Cells(last.BottomRightCell().Row() + 2, last.TopLeftCell().Column());
      below.Select();
      auto selection = host::ExcelApp->GetSelection();
      address = selection.cells ? selection.cells->AddressLocal(false) : below.AddressLocal(false);
    } else {
      address = "A1";
    }
    bool screen = host::ExcelApp->ScreenUpdating();
    host::ExcelApp->SetScreenUpdating(true);
    dialogs::frmTerminator prompt;
    prompt.Display(address, "Stop");
    host::ExcelApp->SetScreenUpdating(screen);
    if (!prompt.OK()) return false;
    result = true;
    m_Text = prompt.TerminatorText();
    address = prompt.StartLocation();

    office::Range cell = m_ws->GetRange(address);
    Drawing drawing(*m_ws);
    cell.Select();
    m_Row = cell.Row();
    m_Column = cell.Column();
    m_ShapeType = kTerminator;
    office::Shape shape = m_ws->GetShapes().AddShape(kTerminator, cell.Left(), cell.Top(),
                                                   m_Symbols.GetWidth(kTerminator) * host::GlobalRowHeight,
                                                   m_Symbols.GetMinHeight(kTerminator) * host::GlobalRowHeight);
    shape.GetTextFrame().GetCharacters().SetText(m_Text);
    try {
      shape.GetTextFrame().SetReadingOrder(office::xlContext);
    } catch (...) {
    }
    m_Formatter.SetAllFormatSettings(shape, m_Config, m_Symbols.GetStyle(kTerminator));
    m_Shape = shape;
  } catch (...) {
    host::ErrorHandler(kSource, "AddStopTerminator", false);
  }
  return result;
}

void CInteractiveFlowcharter::StopFlowcharting(bool skip) {
  Restore restore;
  try {
    try {
      m_ws->Activate();
    } catch (...) {
    }
    // The end terminator and the guides' going are one entry of the undo list.
    office::UndoList::Entry entry(m_ws->Parent(), std::string(kEntryPrefix) + "Stop Flowcharting");
    office::KeptShading shading(*m_ws);
    bool endTerminator = false;
    if (!skip) {
      endTerminator = m_Config.EndTerminator;
      m_Text = m_Config.EndTerminatorText;
    }
    bool endExists = false;
    if (endTerminator) {
      std::string wanted = rules::UpperCase(m_Text);
      office::Shapes shapes = m_ws->GetShapes();
      for (int i = 1; i <= shapes.Count() && !endExists; ++i) {
        office::Shape s = shapes.Item(i);
        if (s.Type() != office::msoAutoShape || s.AutoShapeType() != kTerminator) continue;
        std::string text = rules::UpperCase(s.GetTextFrame().GetCharacters().Text());
        endExists = (!wanted.empty() && text.find(wanted) != std::string::npos) ||
                    text.find("STOP") != std::string::npos || text.find("END") != std::string::npos ||
                    text.find("DONE") != std::string::npos;
      }
    }
    host::ExcelApp->SetEnableEvents(false);
    host::ExcelApp->SetScreenUpdating(false);
    if (m_Config.ShowGuides) m_ws->Columns().GetInterior().SetColorIndex(office::xlNone);
    office::AddedShapes added(*m_ws);
    if (endTerminator && !endExists) {
      m_LastShapeName = GetLastShapeName();
      if (AddStopTerminator()) {
        Drawing drawing(*m_ws);
        FitTerminator(*m_Shape, m_Symbols.GetWidth(kTerminator));
        bool prompt = false;
        if (m_LastShapeName.empty()) prompt = host::GetNonTemplateShapeCount(*m_ws, 2) >= 2;
        if (m_Config.AddFlowLine) AddFlowLineConnector(prompt);
        try {
          m_ws->Cells(m_Shape->BottomRightCell().Row() + 1, m_Column).Select();
        } catch (...) {
        }
      }
    }
    Drawing drawing(*m_ws);
    shapes::CFlowLineFormatter().SetFlowLineOrder(*m_ws);
  } catch (...) {
    host::ErrorHandler(kSource, "StopFlowcharting", false);
  }
}

}  // namespace nivarel::flowcharting
