// Where the office calls into the add-in: a failure there is written to the
// error log under the callback's name, and the office goes on answering.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "AddinFixture.h"
#include "AddinProbe.h"
#include "MErrorHandler.h"
#include "Range.h"

namespace nivarel {
namespace {

using namespace std::chrono_literals;

constexpr char kStart[] = "vnd.nivarel:rxNivarelStartFlowcharting";
constexpr char kAbout[] = "vnd.nivarel:rxNivarelAboutNivarel";

class BorderTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    host::ClearLogFile();
  }
  // The log's lines, once it has at least one (or after a while).
  std::string LogOnceWritten() {
    for (int i = 0; i < 100 && host::ReadLogFile().empty(); ++i) std::this_thread::sleep_for(50ms);
    return host::ReadLogFile();
  }
  static int Lines(const std::string& log) {
    int n = 0;
    for (char c : log) n += c == '\n';
    return n;
  }
  // The office still takes typing and reads it back.
  void ExpectTheOfficeAnswers() {
    Ui().TypeIntoCell("D4", "still here");
    EXPECT_EQ("still here", sheet_->GetRange("D4").Value());
  }
};

TEST_F(BorderTest, ADialogHandlerThatFailsInsideTheOfficeIsLoggedAndTheDialogGoesOn) {
  // The About box of the menu, inside the office, whose link is switched to fail.
  Drive([&] { Ui().RunCommand(kAbout, true); }, "About Nivarel", [&] {
    Ui().ClickInDialog("https://www.nivarel.org/support");
    LogOnceWritten();
    EXPECT_EQ("About Nivarel", Ui().DialogTitle()) << "the failed handler closed nothing";
    Ui().PressDialogKey("ESC");
  });

  std::string log = host::ReadLogFile();
  EXPECT_EQ(1, Lines(log)) << log;
  EXPECT_NE(std::string::npos, log.find("Test fault on dialog event 'frmAbout.lnkSupport_Click'")) << log;
  EXPECT_NE(std::string::npos, log.find("frmAbout")) << log;
  ExpectTheOfficeAnswers();
}

TEST_F(BorderTest, AChangeHeardForADeletedSheetIsLoggedAndPassesNothingOn) {
  office::Worksheet other = book_->AddSheet();
  std::atomic<int> heard{0};
  office::Subscription watch = other.OnChange([&](const office::Range&) { ++heard; });
  other.Delete();
  sheet_->Activate();

  ExpectTheOfficeAnswers();
  LogOnceWritten();
  Ui().TypeIntoCell("D5", "and again");
  std::string log = host::ReadLogFile();
  EXPECT_EQ(1, Lines(log)) << "told once: " << log;
  EXPECT_NE(std::string::npos, log.find("Worksheet")) << log;
  EXPECT_NE(std::string::npos, log.find("deleted")) << log;
  EXPECT_EQ(0, heard) << "a change of another sheet is not the deleted sheet's";
}

TEST_F(BorderTest, AMenuEntryThatFailsWhenToldIsLoggedAndTheMenuStillWorks) {
  EXPECT_TRUE(driver::AddFailingStatusListener(App(), kStart)) << "the failure stays in the add-in";
  std::string log = LogOnceWritten();
  EXPECT_EQ(1, Lines(log)) << log;
  EXPECT_NE(std::string::npos, log.find("statusChanged")) << log;
  EXPECT_TRUE(driver::CommandEnabled(App(), kStart)) << "other entries are told as before";
  ExpectTheOfficeAnswers();
}

}  // namespace
}  // namespace nivarel
