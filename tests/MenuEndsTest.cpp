// What else ends a run started from the menu: closing or printing its
// workbook ends it, without the end terminator. And what the start command
// says when there is no worksheet in front to run on.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <thread>

#include "AddinFixture.h"
#include "MErrorHandler.h"
#include "Range.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using namespace std::chrono_literals;

constexpr char kStart[] = "vnd.nivarel:rxNivarelStartFlowcharting";
constexpr char kStop[] = "vnd.nivarel:rxNivarelStopFlowcharting";
constexpr char kEndPrompt[] = " Add End Terminator?";

class MenuEndsTest : public testing::AddinFixture {
 protected:
  void TearDown() override {
    if (chartOpen_) {
      // The chart is the document in front: close it as the user does.
      Ui().RunCommand(".uno:CloseDoc", true);
      if (Ui().WaitForModal(1000)) CloseWindows();
    }
    AddinFixture::TearDown();
  }

  // Starts a run from the menu with the stored settings and draws one step.
  void StartARun() {
    Drive([&] { Ui().RunCommand(kStart); }, "  Start Flowcharting", [&] { Ui().PressDialogKey("RETURN"); });
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 0; i < 100 && shapes.Count() == 0; ++i) std::this_thread::sleep_for(50ms);
    Ui().TypeIntoCell(App().ActiveCell()->Address(false), "check the order");
    ASSERT_EQ(3, shapes.Count()) << "the start terminator, the step and its line";
  }

  // Runs action beside the test; the end terminator's prompt coming up
  // meanwhile fails the test and is closed, so that nothing waits on it.
  void WithoutAnEnd(const std::function<void()>& action) {
    Ui();
    auto done = std::async(std::launch::async, action);
    while (done.wait_for(100ms) != std::future_status::ready)
      if (Ui().DialogTitle() == kEndPrompt) {
        ADD_FAILURE() << "the end terminator was offered";
        Ui().PressDialogKey("ESC");
      }
    done.get();
  }

  // A fresh workbook becomes the test's, and the one in front.
  void NewBook() {
    book_ = App().GetWorkbooks().Add();
    sheet_ = book_->Sheet(1);
    auto inFront = [&] {
      auto active = App().ActiveSheet();
      return active && active->SameAs(*sheet_);
    };
    for (int i = 0; i < 100 && !inFront(); ++i) std::this_thread::sleep_for(50ms);
  }

  // After the run's workbook closed, in a fresh one: stopping from the menu
  // finds no run. A run left going would be stopped on its closed sheet,
  // which fails into the log.
  void ExpectTheRunOver() {
    NewBook();
    EXPECT_EQ("", Answer(kStop, 3000).first) << "no end terminator is offered";
    EXPECT_EQ("", host::ReadLogFile()) << "the stop found a run on the closed workbook";
  }

  // Runs a menu command and returns the title and text of the modal window
  // it brings up, or a title "" when none comes within waitMs.
  std::pair<std::string, std::string> Answer(const char* url, int waitMs = 10000) {
    Ui().RunCommand(url, true);
    if (!Ui().WaitForModal(waitMs)) return {"", ""};
    std::pair<std::string, std::string> shown{Ui().Title(), Ui().MessageText()};
    CloseWindows();
    return shown;
  }
  // The title of a modal window that comes within a moment, or "".
  std::string NextWindow() {
    if (!Ui().WaitForModal(2000)) return "";
    std::string title = Ui().Title();
    CloseWindows();
    return title;
  }
  // Closes the modal windows up: a message box with OK, anything else with
  // Escape.
  void CloseWindows() {
    try {
      Ui().ClickButton("ok");
    } catch (const std::exception&) {
    }
    for (int i = 0; i < 10 && !Ui().WaitForNoModal(1000); ++i) Ui().PressDialogKey("ESC");
  }

  // A new chart in a window of its own, in front of the test's workbook: a
  // document of the office that is no spreadsheet, there even when Calc is
  // the only program of the office installed.
  void OpenAChartInFront() {
    Ui().RunCommand(".uno:Open?URL:string=private:factory/schart&FrameName:string=_blank");
    chartOpen_ = true;
    for (int i = 0; i < 100 && App().ActiveSheet(); ++i) std::this_thread::sleep_for(50ms);
  }

  bool chartOpen_ = false;
};

// Closing the run's workbook ends the run without the end terminator. When
// the user closes it, the run ends before the office asks about saving, so
// it stays ended when the user then cancels the close. When a program
// closes it, the office tells the document only as it goes.
TEST_F(MenuEndsTest, ClosingTheWorkbookEndsTheRun) {
  StartARun();
  Ui().RunCommand(".uno:CloseDoc", true);
  ASSERT_TRUE(Ui().WaitForModal());
  if (Ui().FocusWindowId() != "QuerySaveDialog") {
    ADD_FAILURE() << "'" << Ui().Title() << "' came before the office's question about saving";
    CloseWindows();
    return;
  }
  Ui().ClickButton("cancel");
  ASSERT_TRUE(Ui().WaitForDocument());
  office::Shapes shapes = sheet_->GetShapes();
  Ui().TypeIntoCell("H20", "after the run");
  EXPECT_EQ(3, shapes.Count()) << "the run still listens";
  EXPECT_EQ("after the run", sheet_->GetRange("H20").Value());
  book_->Close();

  NewBook();
  StartARun();
  WithoutAnEnd([&] { book_->Close(); });
  ExpectTheRunOver();
}

// Printing the workbook during a run ends the run, without the end
// terminator, and the printing goes on.
TEST_F(MenuEndsTest, PrintingTheWorkbookEndsTheRunQuietly) {
  StartARun();
  std::string file = testing::ConfigHome() + "/printed-during-run.ps";
  WithoutAnEnd([&] { book_->PrintOut(file); });
  EXPECT_GT(std::filesystem::exists(file) ? std::filesystem::file_size(file) : 0, 0u) << "printed";
  office::Shapes shapes = sheet_->GetShapes();
  Ui().TypeIntoCell("H20", "after the run");
  EXPECT_EQ(3, shapes.Count()) << "the run no longer listens";
  EXPECT_EQ("after the run", sheet_->GetRange("H20").Value());
  EXPECT_EQ("", host::ReadLogFile());
}

// The start command needs a worksheet in front. With a spreadsheet open
// behind another kind of document it says the sheet in front is no
// worksheet; with no spreadsheet open at all it says so. Neither case goes
// on to the start dialog.
TEST_F(MenuEndsTest, StartingWithoutAWorksheetInFrontIsRefused) {
  OpenAChartInFront();
  EXPECT_EQ(std::make_pair(std::string("Nivarel"),
                           std::string("The current sheet is not a Worksheet. This function cannot be run.\n"
                                       "Please select a Worksheet when using this function.")),
            Answer(kStart));
  EXPECT_EQ("", NextWindow()) << "no start dialog follows";

  book_->Close();
  book_.reset();
  ASSERT_EQ(0, App().GetWorkbooks().Count()) << "no other workbook is left open";
  EXPECT_EQ(std::make_pair(std::string("No Workbooks Open"),
                           std::string("There are no workbooks open. You must open a workbook before using Nivarel.")),
            Answer(kStart));
  EXPECT_EQ("", NextWindow()) << "no start dialog follows";
}

}  // namespace
}  // namespace nivarel
