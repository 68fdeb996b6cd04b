// Ctrl+Z and Ctrl+Y on a run started from the menu, pressed as a person
// presses them: each typed step is one entry of the undo list, taken back
// whole with its text put back into its cell, and drawn again glued; Start
// and Stop are one entry each, the cells' shading with them; the office
// keeps answering throughout.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "AddinFixture.h"
#include "AddinProbe.h"
#include "Range.h"
#include "Shapes.h"
#include "UndoList.h"

namespace nivarel {
namespace {

using namespace std::chrono_literals;
using office::Shape;

constexpr char kStart[] = "vnd.nivarel:rxNivarelStartFlowcharting";
constexpr char kStop[] = "vnd.nivarel:rxNivarelStopFlowcharting";

class UndoTest : public testing::AddinFixture {
 protected:
  void StartFromTheMenu() {
    Drive([&] { Ui().RunCommand(kStart); }, "  Start Flowcharting", [&] { Ui().PressDialogKey("RETURN"); });
    ASSERT_TRUE(WaitForShapes(1)) << "the start terminator";
  }
  int ShapeCount() { return sheet_->GetShapes().Count(); }
  // Waits until the sheet holds this many shapes; false when it doesn't in time.
  bool WaitForShapes(int count) {
    for (int i = 0; i < 200 && ShapeCount() != count; ++i) std::this_thread::sleep_for(50ms);
    return ShapeCount() == count;
  }
  std::string Cursor() { return App().ActiveCell()->Address(false); }
  std::vector<std::string> Entries() { return office::UndoList(*book_).Titles(); }
  // The symbols (not lines) on the sheet, in drawing order.
  std::vector<Shape> Symbols() {
    std::vector<Shape> out;
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i)
      if (!shapes.Item(i).Connector()) out.push_back(shapes.Item(i));
    return out;
  }
  // The sheet's drawing as the office renders it, as PNG bytes.
  std::string Picture(const std::string& name) {
    std::string path = testing::ConfigHome() + "/undo-" + name + ".png";
    sheet_->ExportDrawingPicture(path);
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  // Each symbol joined to the next by a glued line.
  void ExpectAChain() {
    auto symbols = Symbols();
    for (size_t i = 1; i < symbols.size(); ++i)
      EXPECT_TRUE(Joined(symbols[i - 1], symbols[i])) << "step " << i << ": " << LinesText();
  }
};

TEST_F(UndoTest, EachTypedStepIsOneEntryThatCtrlZTakesBackWithItsTextAndCtrlYDrawsAgain) {
  StartFromTheMenu();
  ASSERT_FALSE(Entries().empty());
  EXPECT_EQ("Nivarel: Start Flowcharting", Entries()[0]) << "one entry for the start, with nothing after it";
  size_t entries = Entries().size();

  const std::vector<std::string> steps = {"receive the order", "check stock", "ship it"};
  std::vector<std::string> cells;
  for (const auto& step : steps) {
    cells.push_back(Cursor());
    Ui().TypeIntoCell(cells.back(), step);
    ASSERT_TRUE(WaitForShapes(1 + 2 * static_cast<int>(cells.size()))) << "a symbol and its line for " << step;
    ASSERT_EQ(entries + cells.size(), Entries().size()) << "one entry per step, the typing's own included";
  }
  EXPECT_EQ("Nivarel: Ship it", Entries()[0]);
  EXPECT_EQ("Nivarel: Check stock", Entries()[1]);
  std::string next = Cursor();
  std::string drawn = Picture("drawn");
  ASSERT_GT(drawn.size(), 1000u) << "a picture of the chart";

  for (int i = 2; i >= 0; --i) {
    Ui().PressKey("CTRL+z");
    ASSERT_TRUE(WaitForShapes(1 + 2 * i)) << "Ctrl+Z takes back '" << steps[i] << "' whole";
    EXPECT_EQ(steps[i], sheet_->GetRange(cells[i]).Value()) << "and puts its text back into its cell";
  }
  EXPECT_EQ("Nivarel: Start Flowcharting", Entries()[0]);

  for (int i = 0; i < 3; ++i) {
    Ui().PressKey("CTRL+y");
    ASSERT_TRUE(WaitForShapes(3 + 2 * i)) << "Ctrl+Y draws '" << steps[i] << "' again";
    EXPECT_EQ("", sheet_->GetRange(cells[i]).Value());
  }
  ExpectAChain();
  EXPECT_EQ(4u, Symbols().size()) << "the run drew nothing again while the office redid";
  EXPECT_EQ(drawn, Picture("redrawn")) << "the chart drawn again looks as it did";

  // Back and forth many times: the office keeps answering and nothing is
  // drawn twice.
  for (int round = 0; round < 20; ++round) {
    Ui().PressKey("CTRL+z");
    ASSERT_TRUE(WaitForShapes(5)) << "round " << round;
    Ui().PressKey("CTRL+y");
    ASSERT_TRUE(WaitForShapes(7)) << "round " << round;
  }

  // The run goes on from the step that is last now.
  Ui().TypeIntoCell(next, "send the invoice");
  ASSERT_TRUE(WaitForShapes(9));
  ExpectAChain();
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(UndoTest, AfterAStepIsTakenBackTheNextStepJoinsTheOneBeforeIt) {
  StartFromTheMenu();
  Ui().TypeIntoCell(Cursor(), "receive the order");
  ASSERT_TRUE(WaitForShapes(3));
  std::string second = Cursor();
  Ui().TypeIntoCell(second, "check stock");
  ASSERT_TRUE(WaitForShapes(5));
  Ui().PressKey("CTRL+z");
  ASSERT_TRUE(WaitForShapes(3));

  // Typed again over its text, where it was.
  Ui().TypeIntoCell(second, "check the stock");
  ASSERT_TRUE(WaitForShapes(5));
  ExpectAChain();
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(UndoTest, CtrlZAfterStopTakesTheEndFirstAndAtLastLeavesTheSheetAsBeforeStart) {
  office::Range cell = sheet_->GetRange("M60");
  double width = cell.Width(), height = cell.Height();
  auto shade = [&](const std::string& address) { return sheet_->GetRange(address).GetInterior().ColorIndex(); };
  constexpr int kNone = office::Interior::kNone;
  ASSERT_EQ(kNone, shade("M60")) << "a new sheet has no fill";

  StartFromTheMenu();
  std::string first = Cursor();
  EXPECT_NE(kNone, shade(first)) << "the guides cross at the cursor";
  Ui().TypeIntoCell(first, "receive the order");
  ASSERT_TRUE(WaitForShapes(3));
  std::string next = Cursor();
  ASSERT_NE(kNone, shade(next)) << "the guides cross at the next cell";
  Drive([&] { Ui().RunCommand(kStop); }, " Add End Terminator?", [&] { Ui().PressDialogKey("RETURN"); });
  ASSERT_TRUE(WaitForShapes(5)) << "the end terminator and its line";
  ASSERT_FALSE(driver::CommandEnabled(App(), kStop));
  EXPECT_EQ("Nivarel: Stop Flowcharting", Entries()[0]);
  EXPECT_EQ("Nivarel: Receive the order", Entries()[1]);
  EXPECT_EQ("Nivarel: Start Flowcharting", Entries()[2]);

  EXPECT_EQ(kNone, shade(next)) << "Stop takes the guides away";

  Ui().PressKey("CTRL+z");
  ASSERT_TRUE(WaitForShapes(3)) << "the end terminator goes first";
  EXPECT_NE(kNone, shade(next)) << "the guides come back with the run";
  Ui().PressKey("CTRL+z");
  ASSERT_TRUE(WaitForShapes(1));
  EXPECT_EQ("receive the order", sheet_->GetRange(first).Value());
  EXPECT_NE(kNone, shade(first)) << "the guides cross at the first cell again";
  Ui().PressKey("CTRL+z");
  ASSERT_TRUE(WaitForShapes(0)) << "the start terminator goes with the start";
  EXPECT_NEAR(width, cell.Width(), 0.01) << "the columns as they were";
  EXPECT_NEAR(height, cell.Height(), 0.01) << "the rows as they were";
  EXPECT_EQ(kNone, shade("M60")) << "no white fill";
  EXPECT_EQ(kNone, shade(first)) << "no guides";
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
