// The sheet's Change event: raised once per committed edit typed through the
// user interface, for the subscribed sheet only, and never while events are off.
#include <mutex>
#include <vector>

#include "OfficeTest.h"

using namespace nivarel::office;

namespace nivarel::testing {
namespace {

class HostEventsTest : public OfficeTest {
 protected:
  // Records the addresses that the event reports.
  Subscription Listen(Worksheet sheet) {
    return sheet.OnChange([this](const Range& r) {
      std::lock_guard<std::mutex> lock(mutex_);
      changes_.push_back(r.Sheet().Name() + "!" + r.Address(false));
    });
  }
  std::vector<std::string> Changes() {
    std::lock_guard<std::mutex> lock(mutex_);
    return changes_;
  }
  std::mutex mutex_;
  std::vector<std::string> changes_;
};

TEST_F(HostEventsTest, TypedCommitRaisesOneChangeWithItsCell) {
  Subscription sub = Listen(*sheet_);
  Ui().TypeIntoCell("C3", "is it in stock?");
  EXPECT_EQ(std::vector<std::string>{"Sheet1!C3"}, Changes());
  EXPECT_EQ("is it in stock?", sheet_->GetRange("C3").Value());

  // An edit left with Escape commits nothing.
  Ui().SelectCell("D5");
  Ui().Type("never mind");
  Ui().PressKey("ESC");
  EXPECT_EQ(1u, Changes().size());
  EXPECT_EQ("", sheet_->GetRange("D5").Value());
}

TEST_F(HostEventsTest, NoChangeWhileEventsAreOffNorAfterUnsubscribing) {
  Subscription sub = Listen(*sheet_);
  App().SetEnableEvents(false);
  Ui().TypeIntoCell("C3", "is it in stock?");
  App().SetEnableEvents(true);
  EXPECT_TRUE(Changes().empty());
  EXPECT_EQ("is it in stock?", sheet_->GetRange("C3").Value());

  sub.Reset();
  Ui().TypeIntoCell("C4", "ship it");
  EXPECT_TRUE(Changes().empty());
}

TEST_F(HostEventsTest, OnlyTheSubscribedSheetsEditsArrive) {
  Worksheet second = book_->AddSheet();
  std::vector<std::string> onSecond;
  Subscription subSecond = second.OnChange([&](const Range& r) { onSecond.push_back(r.Address(false)); });
  Subscription subFirst = Listen(*sheet_);
  sheet_->Activate();
  Ui().TypeIntoCell("B2", "on the first sheet");
  EXPECT_EQ("on the first sheet", sheet_->GetRange("B2").Value());
  EXPECT_EQ(std::vector<std::string>{"Sheet1!B2"}, Changes());
  EXPECT_TRUE(onSecond.empty());
}

}  // namespace
}  // namespace nivarel::testing
