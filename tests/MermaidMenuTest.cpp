// The two Mermaid entries of Diagram Tools, run from the menu in the office:
// Copy as Mermaid (the chart's text on the clipboard and in the file the
// save dialog names, nothing on a sheet without symbols) and Import Mermaid
// (text pasted or loaded from a file drawn as one undo entry; text that
// draws nothing said, the dialog back with it), and both during a live run.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "AddinFixture.h"
#include "Clipboard.h"
#include "ColorFormat.h"
#include "FillFormat.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using namespace office;
namespace fs = std::filesystem;

constexpr char kCopy[] = "vnd.nivarel:rxNivarelCopyMermaid";
constexpr char kImport[] = "vnd.nivarel:rxNivarelImportMermaid";

class MermaidMenuTest : public testing::AddinFixture {
 protected:
  Shape Add(int type, const std::string& name, const std::string& text, double left, double top) {
    Shape s = sheet_->GetShapes().AddShape(type, left, top, 90, 40);
    s.SetName(name);
    s.GetTextFrame().GetCharacters().SetText(text);
    s.Fill().SetVisible(true);
    s.Fill().ForeColor().SetRGB(0xFFFFFF);
    s.Line().SetVisible(true);
    s.Line().ForeColor().SetRGB(0x000000);
    return s;
  }
  void Join(const Shape& from, const Shape& to) {
    Shape line = sheet_->GetShapes().AddConnector(msoConnectorStraight, 0, 0, 10, 10);
    line.GetConnectorFormat().BeginConnect(from, 3);  // bottom
    line.GetConnectorFormat().EndConnect(to, 1);      // top
    line.Line().SetEndArrowheadStyle(msoArrowheadTriangle);
  }
  std::string Clipboard() { return office::Clipboard(App()).Text(); }
  void SetClipboard(const std::string& text) { office::Clipboard(App()).SetText(text); }
  std::string Out(const std::string& name) {
    fs::create_directories(testing::ConfigHome() + "/mermaid-menu");
    return testing::ConfigHome() + "/mermaid-menu/" + name;
  }
  // The office's text box shows lines by LF; the accessibility tree may end
  // them otherwise.
  static std::string Plain(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
  }
  // What the dialog's text box holds.
  std::string BoxText() {
    for (const auto& c : Ui().DialogControls())
      if (c.kind == "edit") return Plain(c.text);
    return "(no box)";
  }
  // Puts text into the dialog's box as a user pastes it.
  void Paste(const std::string& text) {
    SetClipboard(text);
    ASSERT_TRUE(FocusControl([](const auto& c) { return c.kind == "edit"; }));
    Ui().PressDialogKey("CTRL+A");
    Ui().PressDialogKey("CTRL+V");
    ASSERT_TRUE(Eventually([&] { return BoxText() == Plain(text); })) << BoxText();
  }
  // Clicks OK; the message that comes, answered, and the dialog back.
  std::pair<std::string, std::string> MessageAfterOK() {
    Ui().ClickInDialog("OK");
    std::pair<std::string, std::string> shown{"(no message)", ""};
    // The dialog goes while the chart is drawn: read through the toolkit.
    if (Eventually([&] { return Ui().ActiveTitle() == "Import Mermaid"; }, 10000)) {
      shown = {Ui().Title(), Ui().MessageText()};
      Ui().ClickButton("ok");
    }
    EXPECT_TRUE(WaitForDialog(" Import Mermaid", 10000)) << "the dialog comes back";
    return shown;
  }
  int Count() { return sheet_->GetShapes().Count(); }
};

// A start terminator, a process and a decision with a process below it,
// whose line leaves by the bottom under the label "Yes": each symbol is a
// node in its shape under its name, the lines edges in drawing order, Yes
// on the decision's edge, one class for the white fill and black outline.
// The text goes to the clipboard and, as the save dialog names it, to a
// .mmd file; nothing on the sheet changes.
TEST_F(MermaidMenuTest, CopyPutsTheChartOnTheClipboardAndSavesItAsMmd) {
  Shape start = Add(msoShapeFlowchartTerminator, "Start", "Start", 40, 20);
  Shape pack = Add(msoShapeFlowchartProcess, "Pack", "Pack the order", 40, 80);
  Shape paid = Add(msoShapeFlowchartDecision, "Paid", "Paid?", 40, 140);
  Shape ship = Add(msoShapeFlowchartProcess, "Ship", "Ship it", 40, 220);
  Join(start, pack);
  Join(pack, paid);
  Join(paid, ship);
  sheet_->GetShapes().AddTextbox(msoTextOrientationHorizontal, 90, 182, 30, 16).GetTextFrame().GetCharacters().SetText(
      "Yes");
  const std::string expected =
      "flowchart TD\n"
      "    Start([\"Start\"])\n"
      "    Pack[\"Pack the order\"]\n"
      "    Paid{\"Paid?\"}\n"
      "    Ship[\"Ship it\"]\n"
      "    Start --> Pack\n"
      "    Pack --> Paid\n"
      "    Paid -->|Yes| Ship\n"
      "    classDef style1 fill:#ffffff,stroke:#000000\n"
      "    class Start,Pack,Paid,Ship style1\n";
  const int shapes = Count();
  const std::vector<std::string> undo = UndoList(*book_).Titles();
  const std::string typed = Out("order");
  fs::remove(typed + ".mmd");

  Drive([&] { Ui().RunCommand(kCopy, true); }, "Save Mermaid Text", [&] {
    bool offered = false;
    for (const auto& c : Ui().DialogControls())
      if (c.focused && c.text == "Sheet1 flowchart") offered = true;
    EXPECT_TRUE(offered) << "the sheet's name is offered";
    EXPECT_EQ(expected, Clipboard()) << "copied before the file is asked for";
    Ui().PressDialogKey("CTRL+A");
    Ui().TypeInDialog(typed);
    Ui().PressDialogKey("RETURN");
  });
  ASSERT_TRUE(Eventually([&] { return fs::exists(typed + ".mmd"); })) << host::ReadLogFile();
  EXPECT_TRUE(Eventually([&] { return testing::FileBytes(typed + ".mmd") == expected; }))
      << testing::FileBytes(typed + ".mmd");
  EXPECT_EQ(expected, Clipboard());
  EXPECT_EQ(shapes, Count());
  EXPECT_EQ(undo, UndoList(*book_).Titles()) << "nothing to undo";
  EXPECT_EQ("", host::ReadLogFile());
}

// Cancel in the save dialog keeps the clipboard's copy and writes no file.
// A sheet whose only shape is a label has no symbols: a message, and the
// clipboard keeps what it held.
TEST_F(MermaidMenuTest, CancelKeepsOnlyTheClipboardAndASheetWithoutSymbolsCopiesNothing) {
  auto files = [] {
    std::set<std::string> names;
    for (const auto& e : fs::directory_iterator(host::GetFlowchartsPath())) names.insert(e.path().string());
    return names;
  };
  sheet_->GetShapes().AddTextbox(msoTextOrientationHorizontal, 40, 40, 60, 20).GetTextFrame().GetCharacters().SetText(
      "a note");
  SetClipboard("held before");
  EXPECT_EQ(std::make_pair(std::string("Copy as Mermaid"),
                           std::string("No flowchart symbols were found on the sheet 'Sheet1'.")),
            MessageOf([&] { Ui().RunCommand(kCopy, true); }));
  EXPECT_EQ("held before", Clipboard());

  Add(msoShapeFlowchartProcess, "Step", "Only step", 40, 80);
  const std::set<std::string> before = files();
  Drive([&] { Ui().RunCommand(kCopy, true); }, "Save Mermaid Text", [&] { Ui().PressDialogKey("ESC"); });
  EXPECT_EQ("flowchart TD\n    Step[\"Only step\"]\n    classDef style1 fill:#ffffff,stroke:#000000\n"
            "    class Step style1\n",
            Clipboard());
  EXPECT_EQ(before, files());
  EXPECT_EQ("", host::ReadLogFile());
}

// Three nodes pasted into the box: three symbols of their shapes and texts
// on the empty sheet, joined in order by two glued lines; one undo entry,
// which Ctrl+Z takes back whole.
TEST_F(MermaidMenuTest, ImportDrawsPastedTextAsOneUndoEntry) {
  const size_t entries = UndoList(*book_).Titles().size();
  Drive([&] { Ui().RunCommand(kImport, true); }, " Import Mermaid", [&] {
    Paste("flowchart TD\n    A([\"Begin\"]) --> B[\"Weigh the parcel\"]\n    B --> C{\"Heavy?\"}\n");
    Ui().ClickInDialog("OK");
    // A message instead of the chart is a failure, answered so that nothing is left open.
    Eventually([&] { return Ui().ActiveTitle() != " Import Mermaid"; }, 10000);
    if (Eventually([&] { return Ui().ActiveTitle() == "Import Mermaid"; }, 1000)) {
      ADD_FAILURE() << "the import said: " << Ui().MessageText();
      Ui().ClickButton("ok");
    }
  });
  ASSERT_TRUE(Eventually([&] { return Count() == 5; }, 10000)) << LinesText();
  std::map<std::string, int> types;
  std::map<std::string, Shape> byText;
  Shapes shapes = sheet_->GetShapes();
  for (int i = 1; i <= shapes.Count(); ++i) {
    Shape s = shapes.Item(i);
    if (s.Connector()) continue;
    std::string text = s.GetTextFrame().GetCharacters().Text();
    types[text] = s.AutoShapeType();
    byText.emplace(text, s);
  }
  EXPECT_EQ((std::map<std::string, int>{{"Begin", msoShapeFlowchartTerminator},
                                        {"Weigh the parcel", msoShapeFlowchartProcess},
                                        {"Heavy?", msoShapeFlowchartDecision}}),
            types);
  ASSERT_EQ(3u, byText.size());
  EXPECT_EQ(2u, Lines().size());
  EXPECT_TRUE(Joined(byText.at("Begin"), byText.at("Weigh the parcel"))) << LinesText();
  EXPECT_TRUE(Joined(byText.at("Weigh the parcel"), byText.at("Heavy?"))) << LinesText();
  EXPECT_LT(byText.at("Begin").Top(), byText.at("Weigh the parcel").Top()) << "top down";
  EXPECT_LT(byText.at("Weigh the parcel").Top(), byText.at("Heavy?").Top());
  std::vector<std::string> titles = UndoList(*book_).Titles();
  ASSERT_EQ(entries + 1, titles.size());
  EXPECT_EQ("Nivarel: Import Mermaid", titles[0]);

  ASSERT_TRUE(Ui().WaitForDocument());
  Ui().PressKey("CTRL+z");
  EXPECT_TRUE(Eventually([&] { return Count() == 0; })) << LinesText();
  EXPECT_EQ(entries, UndoList(*book_).Titles().size());
  EXPECT_EQ("", host::ReadLogFile());
}

// OK on an empty box says what to do, over the dialog. Text the reader
// stops at says the line, and the dialog comes back with the text as
// pasted; the sheet stays empty. Cancel draws nothing.
TEST_F(MermaidMenuTest, EmptyOrMalformedTextIsSaidAndTheDialogKeepsTheText) {
  const size_t entries = UndoList(*book_).Titles().size();
  const std::string malformed = "flowchart TD\n    A[open --> B";
  Drive([&] { Ui().RunCommand(kImport, true); }, " Import Mermaid", [&] {
    auto empty = MessageOverDialog(" Import Mermaid", [&] { Ui().ClickInDialog("OK"); });
    EXPECT_EQ("Import Mermaid", empty.first);
    EXPECT_EQ("Paste or type the Mermaid flowchart text to import,\nor load it from a file with Browse...",
              empty.second);
    Paste(malformed);
    auto said = MessageAfterOK();
    EXPECT_EQ("Import Mermaid", said.first);
    // The bracket opened after "    A" is never closed.
    EXPECT_NE(std::string::npos, said.second.find("line 2: expected ']' to close the node text begun at column 6"))
        << said.second;
    EXPECT_EQ(Plain(malformed), BoxText()) << "the text as pasted";
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_EQ(0, Count());
  EXPECT_EQ(entries, UndoList(*book_).Titles().size());
  EXPECT_EQ("", host::ReadLogFile());
}

// Browse... opens the office's file picker; a Markdown file chosen there
// fills the box with its mermaid block alone, and the dialog is back.
TEST_F(MermaidMenuTest, BrowseLoadsAMarkdownFilesMermaidBlockIntoTheBox) {
  const std::string path = Out("notes.md");
  std::ofstream(path, std::ios::binary) << "# Shipping\r\n\r\nHow a parcel goes:\r\n\r\n```mermaid\r\n"
                                           "flowchart LR\r\n    A --> B\r\n```\r\n\r\nThat is all.\r\n";
  Drive([&] { Ui().RunCommand(kImport, true); }, " Import Mermaid", [&] {
    Ui().ClickInDialog("Browse...");
    ASSERT_TRUE(WaitForTitle("Open Mermaid Text")) << Ui().Title();
    Ui().TypeInDialog(path);
    Ui().PressDialogKey("RETURN");
    ASSERT_TRUE(WaitForTitle(" Import Mermaid") && WaitForDialog(" Import Mermaid")) << Ui().Title();
    EXPECT_TRUE(Eventually([&] { return BoxText() == "flowchart LR\n    A --> B"; })) << BoxText();
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_EQ(0, Count());
  EXPECT_EQ("", host::ReadLogFile());
}

// During a live run the chart can be copied (the save dialog comes, the
// run's start terminator on the clipboard) and no import is begun.
TEST_F(MermaidMenuTest, DuringARunCopyWorksAndImportIsRefused) {
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting", true); }, "  Start Flowcharting",
        [&] { Ui().PressDialogKey("RETURN"); });
  ASSERT_TRUE(Eventually([&] { return Count() == 1; })) << "the start terminator";
  Drive([&] { Ui().RunCommand(kCopy, true); }, "Save Mermaid Text", [&] { Ui().PressDialogKey("ESC"); });
  EXPECT_NE(std::string::npos, Clipboard().find("([\"Start\"])")) << Clipboard();
  EXPECT_EQ(std::make_pair(std::string("Import Mermaid"),
                           std::string("Flowcharting is in progress.\nStop it before importing a Mermaid chart.")),
            MessageOf([&] { Ui().RunCommand(kImport, true); }));
  EXPECT_EQ(1, Count());
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStopFlowcharting", true); }, " Add End Terminator?",
        [&] { Ui().PressDialogKey("ESC"); });
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
