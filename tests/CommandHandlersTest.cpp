// The commands that work on the active sheet as a whole, called as the
// command router calls them: labels, grouping, selecting by kind, gridlines,
// shading and the status box.
#include <gtest/gtest.h>

#include <algorithm>
#include <future>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CEventHandler.h"
#include "Interior.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "Window.h"

namespace nivarel {
namespace {

using office::Shape;
using Names = std::vector<std::string>;

class CommandHandlersTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = std::make_unique<testing::SettingsFolder>(testing::ConfigHome() + "/commands");
    host::ClearLogFile();  // the log lives in the settings folder
  }
  void TearDown() override {
    folder_.reset();
    AddinFixture::TearDown();
  }

  // The names of the selected shapes, sorted; empty when cells are selected.
  Names SelectedShapes() {
    Names names;
    auto selection = App().GetSelection();
    if (selection.shapes)
      for (const auto& s : selection.shapes->Items()) names.push_back(s.Name());
    std::sort(names.begin(), names.end());
    return names;
  }

  // Handles to the shapes a test makes are kept until it ends: a shape
  // fetched again from the office right after its last handle went can come
  // back as a dead copy (no name, at 0, 0), a fault of the connection.

  Shape Named(Shape shape, const std::string& name) {
    shape.SetName(name);
    return shape;
  }

  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;
};

TEST_F(CommandHandlersTest, ALabelNeedsACellSelected) {
  Shape box = sheet_->GetShapes().AddShape(office::msoShapeFlowchartProcess, 100, 100, 80, 40);
  box.Select();
  auto message = MessageOf([&] { handler_.InsertLabel(); });
  EXPECT_EQ("No Range Selected", message.first);
  EXPECT_EQ("You must select the worksheet cell\nwhere you want the label inserted.", message.second);
  EXPECT_EQ(1, sheet_->GetShapes().Count());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(CommandHandlersTest, ALabelDropsBorderlessAtTheCellAndTheCursorGoesBelowIt) {
  rules::CConfig config;
  config.LoadConfigData();
  office::Shapes shapes = sheet_->GetShapes();

  Ui().SelectCell("D4");
  Drive([&] { handler_.InsertLabel(); }, " Add Label", [&] {
    Ui().TypeInDialog("Safety stock");
    Ui().PressDialogKey("RETURN");
  });
  ASSERT_EQ(1, shapes.Count());
  Shape label = shapes.Item(1);
  EXPECT_EQ(office::msoTextBox, label.Type());
  EXPECT_EQ("Safety stock", label.GetTextFrame().GetCharacters().Text());
  EXPECT_FALSE(label.Line().Visible());
  EXPECT_NEAR(sheet_->GetRange("D4").Left(), label.Left(), 0.1);
  EXPECT_NEAR(sheet_->GetRange("D4").Top(), label.Top(), 0.1);
  office::Font font = label.GetTextFrame().GetCharacters().GetFont();
  EXPECT_EQ(config.BranchFontName, font.Name());
  EXPECT_NEAR(config.BranchFontSize, font.Size(), 0.01);
  EXPECT_EQ(config.BranchFontBold, font.Bold());
  EXPECT_EQ(office::msoFalse, label.GetTextFrame2().WordWrap());
  EXPECT_EQ(office::msoAutoSizeShapeToFitText, label.GetTextFrame2().AutoSize());
  EXPECT_EQ(office::xlMove, label.Placement());
  EXPECT_EQ("D5", App().ActiveCell()->Address(false));
  EXPECT_TRUE(App().ScreenUpdating());

  // Cancelled or blank, the prompt draws nothing and the cursor stays.
  Ui().SelectCell("F9");
  Drive([&] { handler_.InsertLabel(); }, " Add Label", [&] {
    Ui().TypeInDialog("not wanted");
    Ui().PressDialogKey("ESC");
  });
  Drive([&] { handler_.InsertLabel(); }, " Add Label", [&] {
    Ui().TypeInDialog("   ");
    Ui().PressDialogKey("RETURN");
  });
  EXPECT_EQ(1, shapes.Count());
  EXPECT_EQ("F9", App().ActiveCell()->Address(false));
  EXPECT_TRUE(App().ScreenUpdating());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(CommandHandlersTest, ShapesAreSelectedByKind) {
  office::Shapes shapes = sheet_->GetShapes();
  Ui().SelectCell("A1");
  handler_.SelectAllShapes();
  handler_.SelectAllLines();
  EXPECT_EQ(Names{}, SelectedShapes()) << "an empty sheet keeps its cell selected";

  std::vector<Shape> made;  // kept until the test ends, as told above
  Shape process = Named(shapes.AddShape(office::msoShapeFlowchartProcess, 50, 50, 80, 40), "Process");
  Shape decision = Named(shapes.AddShape(office::msoShapeFlowchartDecision, 50, 150, 80, 40), "Decision");
  made.push_back(Named(shapes.AddShape(office::msoShapeRectangle, 200, 50, 80, 40), "Rectangle"));
  made.push_back(Named(shapes.AddTextbox(office::msoTextOrientationHorizontal, 200, 150, 80, 20), "Label"));
  made.push_back(Named(shapes.AddConnector(office::msoConnectorElbow, 90, 90, 90, 150), "Flow"));
  made.push_back(Named(shapes.AddLine(300, 50, 300, 150), "Line"));

  handler_.SelectAllLines();
  EXPECT_EQ((Names{"Flow", "Line"}), SelectedShapes());
  handler_.SelectAllLabels();
  EXPECT_EQ((Names{"Label", "Rectangle"}), SelectedShapes()) << "a plain rectangle is a label too";
  handler_.SelectFlowchartSymbolsOnly();
  EXPECT_EQ((Names{"Decision", "Process"}), SelectedShapes());
  handler_.SelectAllShapes();
  EXPECT_EQ((Names{"Decision", "Flow", "Label", "Line", "Process", "Rectangle"}), SelectedShapes());
  EXPECT_EQ("", host::ReadLogFile());

  // The names travel as a comma-separated list: a comma in a name fails the
  // selection, and the failure is logged.
  process.SetName("Process, first");
  sheet_->GetRange("A1").Select();
  handler_.SelectFlowchartSymbolsOnly();
  EXPECT_EQ(Names{}, SelectedShapes());
  EXPECT_NE(std::string::npos, host::ReadLogFile().find("CEventHandler.SelectFlowchartSymbolsOnly; ")) << host::ReadLogFile();
}

TEST_F(CommandHandlersTest, SelectingAKindThatIsMissingLeavesTheSelection) {
  office::Shapes shapes = sheet_->GetShapes();
  shapes.AddShape(office::msoShapeFlowchartProcess, 50, 50, 80, 40);
  Ui().SelectCell("B2");
  handler_.SelectAllLines();
  handler_.SelectAllLabels();
  EXPECT_EQ(Names{}, SelectedShapes());
  EXPECT_EQ("B2", App().ActiveCell()->Address(false));
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(CommandHandlersTest, GridlinesFlipOrFollowTheArgument) {
  office::Window window = *App().ActiveWindow();
  bool before = window.DisplayGridlines();
  handler_.ToggleGridLines();
  EXPECT_EQ(!before, window.DisplayGridlines());
  handler_.ToggleGridLines();
  EXPECT_EQ(before, window.DisplayGridlines());
  handler_.ToggleGridLines(false);
  handler_.ToggleGridLines(false);
  EXPECT_FALSE(window.DisplayGridlines());
  handler_.ToggleGridLines(true);
  EXPECT_TRUE(window.DisplayGridlines());
}

TEST_F(CommandHandlersTest, ClearingShadingEmptiesTheFillOfEveryCell) {
  sheet_->GetRange("B2:C3").GetInterior().SetColorIndex(6);
  sheet_->GetRange("AA5000").GetInterior().SetColor(0x00CCFF);
  sheet_->GetRange("B2").SetValue("kept");
  ASSERT_EQ(6, sheet_->GetRange("B2:C3").GetInterior().ColorIndex());
  ASSERT_NE(office::Interior::kNone, sheet_->GetRange("AA5000").GetInterior().ColorIndex());
  handler_.ClearShading();
  EXPECT_EQ(office::Interior::kNone, sheet_->GetRange("B2:C3").GetInterior().ColorIndex());
  EXPECT_EQ(office::Interior::kNone, sheet_->GetRange("AA5000").GetInterior().ColorIndex());
  EXPECT_EQ("kept", sheet_->GetRange("B2").Text()) << "only the fill goes";
}

TEST_F(CommandHandlersTest, TheStatusBoxTellsTheSwitchesAndTheSession) {
  App().SetEnableEvents(true);
  App().SetScreenUpdating(true);
  auto message = MessageOf([&] { handler_.CheckStatus(); });
  EXPECT_EQ("Status Check", message.first);
  EXPECT_EQ(
      "The following should all read True when a flowcharting session is in progress.\n\n"
      "Events enabled: True\nScreen updates enabled: True\nFlowchart controller exists: False\n"
      "Flowchart in session: False",
      message.second);

  App().SetEnableEvents(false);
  message = MessageOf([&] { handler_.CheckStatus(); });
  EXPECT_NE(std::string::npos, message.second.find("Events enabled: False\n")) << message.second;
  App().SetEnableEvents(true);
}

}  // namespace
}  // namespace nivarel
