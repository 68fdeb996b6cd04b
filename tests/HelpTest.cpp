// Help from the menu, as a click reaches it through the office's dispatch:
// the help window and the event log's window it opens, with the log erased,
// missing and copied; the walkthrough workbook; and a help page for every
// topic the program opens.
#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "AddinFixture.h"
#include "Clipboard.h"
#include "MErrorHandler.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "MsgBox.h"
#include "UserSettings.h"
#include "Workbook.h"
#include "dsrConnect.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;

constexpr char kHelpContents[] = "vnd.nivarel:rxNivarelHelpContents";
constexpr char kHelpWindow[] = " Nivarel Help Resources";
constexpr char kLogWindow[] = " Nivarel Event Log";
constexpr char kNoEvents[] = "<There are no events logged for Nivarel>";

class HelpTest : public testing::AddinFixture {
 protected:
  // The text box of the log's window, as the window shows it.
  std::string LogBox() {
    for (const auto& c : Ui().DialogControls())
      if (c.kind == "edit") return c.text;
    std::string seen = "(no text box:";
    for (const auto& c : Ui().DialogControls()) seen += " [" + c.kind + " '" + c.text + "']";
    return seen + ")";
  }
  bool LogBoxReads(const std::string& text) {
    return Eventually([&] { return LogBox() == text; });
  }

  // Opens Help Contents from the menu, goes on to the event log with "View
  // Event Log", and works the log's window with steps. A window on its way
  // out is waited through with the toolkit: the UI-test service's reading of
  // a window that the office is taking down brings the office down.
  void WithTheLog(const std::function<void()>& steps) {
    Drive([&] { Ui().RunCommand(kHelpContents, true); }, kHelpWindow, [&] {
      Ui().ClickInDialog("View Event Log");
      ASSERT_TRUE(WaitForDialog(kLogWindow, 10000)) << "the focus is on " << Ui().Title();
      steps();
    });
  }
  // Clicks the log window's button and answers the message box titled title
  // that it brings up with button ("yes", "no", "ok"); returns its text.
  std::string Answer(const std::string& caption, const std::string& title, const std::string& button) {
    Ui().ClickInDialog(caption);
    std::string text = "(no message titled " + title + ")";
    if (WaitForTitle(title)) {
      text = Ui().MessageText();
      Ui().ClickButton(button);
    }
    EXPECT_TRUE(WaitForDialog(kLogWindow, 10000)) << "back in the log's window";
    return text;
  }

  // The lines the log holds, as the window shows them (LF line ends).
  static std::string Shown(std::string log) {
    log.erase(std::remove(log.begin(), log.end(), '\r'), log.end());
    return log;
  }
};

// The help window's texts, and "View Event Log" going on to the log's
// window, which shows the log's lines.
TEST_F(HelpTest, HelpContentsLeadsToTheEventLog) {
  host::LogEvent("HelpTest", "Seed", "an event to read");
  std::string log = host::ReadLogFile();
  ASSERT_NE("", log);
  Drive([&] { Ui().RunCommand(kHelpContents, true); }, kHelpWindow, [&] {
    EXPECT_TRUE(Shows("Help and Support"));
    EXPECT_TRUE(Shows("Nivarel has an extensive help file. In addition to covering Nivarel usage and screens, it "
                      "also has a helpful 'How do I...'  section."));
    EXPECT_TRUE(Shows("If you need to email support (support@nivarel.org), it may be helpful to include the "
                      "contents of the Event Log. Click the button below and copy and paste the contents into "
                      "your support request."));
    Ui().ClickInDialog("View Event Log");
    ASSERT_TRUE(WaitForDialog(kLogWindow, 10000)) << "the focus is on " << Ui().Title();
    EXPECT_TRUE(Shows("Nivarel Events"));
    EXPECT_TRUE(LogBoxReads(Shown(log))) << LogBox();
    Ui().ClickInDialog("OK");
  });
  // OK alone closes the help window and opens nothing after it.
  Drive([&] { Ui().RunCommand(kHelpContents, true); }, kHelpWindow, [&] { Ui().ClickInDialog("OK"); });
  // Read through the toolkit: the UI-test service's reading of the window
  // the office is taking down can bring the office down.
  EXPECT_FALSE(Eventually([&] { return !Ui().DialogTitle().empty(); }, 1000))
      << Ui().DialogTitle() << " came after the help window";
  EXPECT_EQ(log, host::ReadLogFile()) << "nothing failed on the way";
}

// "Erase Log" asks first: No keeps the log, Yes empties it and the window
// shows the placeholder, as it does when reopened and when there is no log
// file at all.
TEST_F(HelpTest, AnErasedOrMissingLogShowsThePlaceholder) {
  host::LogEvent("HelpTest", "Seed", "an event to erase");
  std::string log = host::ReadLogFile();
  WithTheLog([&] {
    EXPECT_EQ("This will clear the log file. Are you sure you wish to proceed?",
              Answer("Erase Log", "Clear Log File", "no"));
    EXPECT_TRUE(LogBoxReads(Shown(log))) << LogBox();
    EXPECT_EQ(log, host::ReadLogFile());
    Answer("Erase Log", "Clear Log File", "yes");
    EXPECT_TRUE(LogBoxReads(kNoEvents)) << LogBox();
    EXPECT_EQ("", host::ReadLogFile());
    Ui().ClickInDialog("OK");
  });
  WithTheLog([&] {
    EXPECT_TRUE(LogBoxReads(kNoEvents)) << LogBox();
    Ui().ClickInDialog("OK");
  });
  fs::remove(host::GetLogFilePath());
  WithTheLog([&] {
    EXPECT_TRUE(LogBoxReads(kNoEvents)) << LogBox();
    Ui().ClickInDialog("OK");
  });
}

// "Copy to Clipboard" puts the log's text on the office's clipboard;
// "Display Date" shows today's date as the system has it.
TEST_F(HelpTest, TheLogIsCopiedAndTheDateShown) {
  host::LogEvent("HelpTest", "First", "one");
  host::LogEvent("HelpTest", "Second", "two");
  std::string log = host::ReadLogFile();
  std::time_t now = std::time(nullptr);
  std::tm today{};
  localtime_r(&now, &today);
  WithTheLog([&] {
    Ui().ClickInDialog("Copy to Clipboard");
    EXPECT_TRUE(Eventually([&] { return office::Clipboard(App()).Text() == Shown(log); }))
        << office::Clipboard(App()).Text();
    std::string date = Answer("Display Date", "Calc", "ok");
    std::regex shown("Month: " + std::to_string(today.tm_mon + 1) + "\nDay: " + std::to_string(today.tm_mday) +
                     "\nYear: " + std::to_string(today.tm_year + 1900) + "\nDate: [0-9][0-9./-]+\n?");
    EXPECT_TRUE(std::regex_match(date, shown)) << date;
    Ui().ClickInDialog("OK");
  });
}

// Open Walkthrough copies the shipped walkthrough beside the documents
// folder and opens it: a lesson, the example chart drawn with its decision,
// and an empty sheet to try it on.
TEST_F(HelpTest, OpenWalkthroughOpensTheLessonWithItsExample) {
  std::string copy = host::GetCommonDocsPath() + "Nivarel Walkthrough.xlsx";
  fs::remove(copy);
  Ui().RunCommand("vnd.nivarel:rxNivarelOpenWalkthrough", true);
  auto opened = [&] {
    auto book = App().ActiveWorkbook();
    return book && book->SheetNamed("Example").has_value();
  };
  ASSERT_TRUE(Eventually(opened, 20000)) << "the log says: " << host::ReadLogFile();
  office::Workbook book = *App().ActiveWorkbook();
  EXPECT_TRUE(fs::is_regular_file(copy));
  ASSERT_EQ(3, book.SheetCount());
  EXPECT_EQ("Walkthrough", book.Sheet(1).Name());
  EXPECT_EQ("Try It", book.Sheet(3).Name());
  EXPECT_EQ("Walkthrough", App().ActiveSheet()->Name()) << "the lesson is in front";
  EXPECT_EQ(0, book.Sheet(3).GetShapes().Count());

  office::Worksheet lesson = book.Sheet(1);
  std::set<std::string> typed;
  for (int row = 6; row <= 13; ++row) typed.insert(lesson.Cells(row, 3).Value());
  for (const char* text : {"Receive the order", "Is it in stock?", "Ship the order", "Send the invoice"})
    EXPECT_EQ(1u, typed.count(text)) << text << " is not among what the lesson has typed";

  // The example: every typed step is a symbol of its kind, and lines join them.
  office::Shapes shapes = book.Sheet(2).GetShapes();
  std::map<std::string, int> symbols;
  int lines = 0;
  for (int i = 1; i <= shapes.Count(); ++i) {
    office::Shape s = shapes.Item(i);
    if (s.Connector())
      ++lines;
    else
      symbols[s.GetTextFrame().GetCharacters().Text()] = s.AutoShapeType();
  }
  EXPECT_EQ(office::msoShapeFlowchartDecision, symbols["Is it in stock?"]);
  EXPECT_EQ(office::msoShapeFlowchartProcess, symbols["Receive the order"]);
  EXPECT_EQ(office::msoShapeFlowchartTerminator, symbols["Start"]);
  EXPECT_EQ(office::msoShapeFlowchartTerminator, symbols["End"]);
  EXPECT_EQ(1, symbols.count("Yes")) << "the decision's branch label";
  EXPECT_EQ(7, lines) << "each step joined to the next, both branches of the decision";
  book.Close();
}

// The walkthrough offered once: accepted, it opens the walkthrough; either
// way it is not offered again.
TEST_F(HelpTest, TheWalkthroughIsOfferedOnce) {
  std::string install = host::GetInstallFolder();
  host::SetInstallFolder(NIVAREL_OXT_STAGE);
  fs::remove(host::GetCommonDocsPath() + "Nivarel Walkthrough.xlsx");
  host::SaveSetting(host::kAppTitle, "Settings", "WalkthroughPrompt", "True");
  host::dsrConnect connection;
  Drive([&] { connection.ShowWalkthroughForm(); }, " Nivarel Walkthrough",
        [&] { Ui().ClickInDialog("Load Walkthrough"); });
  auto book = App().ActiveWorkbook();
  ASSERT_TRUE(book && book->SheetNamed("Try It")) << "the log says: " << host::ReadLogFile();
  book->Close();
  EXPECT_EQ("False", host::GetSetting(host::kAppTitle, "Settings", "WalkthroughPrompt", ""));

  Ui();
  auto again = std::async(std::launch::async, [&] { connection.ShowWalkthroughForm(); });
  if (again.wait_for(std::chrono::seconds(3)) != std::future_status::ready) {
    ADD_FAILURE() << "offered again: " << Ui().Title();
    AwaitClosed(again);
  }
  host::SetInstallFolder(install);
  EXPECT_EQ("", host::ReadLogFile());
}

// Every help topic that the program opens has its page in the extension,
// with a heading and a way back to the contents, and the contents list
// every page.
TEST_F(HelpTest, EveryHelpTopicHasItsPage) {
  std::set<std::string> topics;
  std::regex opened(R"((?:ShowHelpTopic\(|k\w*Help\w* = )(\d{4,5}))");
  for (const char* folder : {"dialogs", "host", "output", "tools", "templates", "flowcharting"})
    for (const auto& entry : fs::directory_iterator(std::string(NIVAREL_SOURCE_DIR) + "/" + folder)) {
      std::ifstream in(entry.path());
      std::string code((std::istreambuf_iterator<char>(in)), {});
      for (auto it = std::sregex_iterator(code.begin(), code.end(), opened); it != std::sregex_iterator(); ++it)
        topics.insert((*it)[1].str());
    }
  // The help window's own, and those of the settings' two pages.
  for (const char* known : {"10000", "1700", "31000", "33000"}) EXPECT_EQ(1u, topics.count(known)) << known;
  std::ifstream contentsFile(std::string(NIVAREL_OXT_STAGE) + "/help/10000.html");
  std::string contents((std::istreambuf_iterator<char>(contentsFile)), {});
  for (const std::string& topic : topics) {
    std::ifstream in(std::string(NIVAREL_OXT_STAGE) + "/help/" + topic + ".html");
    ASSERT_TRUE(in) << "no help page for topic " << topic;
    std::string page((std::istreambuf_iterator<char>(in)), {});
    EXPECT_NE(std::string::npos, page.find("<h1>")) << topic;
    EXPECT_NE(std::string::npos, page.find("href=\"10000.html\"")) << topic;
    EXPECT_NE(std::string::npos, contents.find("href=\"" + topic + ".html\"")) << "the contents lack " << topic;
  }
}

}  // namespace
}  // namespace nivarel
