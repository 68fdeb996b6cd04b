// The add-in inside a real office: commands through the office's dispatch,
// the checks that run before every command, the entry point's report, the
// connection's life, the settings files' messages and the grid measure.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <regex>
#include <set>
#include <thread>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "MsoConstants.h"
#include "AddinFixture.h"
#include "Range.h"
#include "Shape.h"
#include "ShapeRange.h"
#include "Shapes.h"
#include "dsrConnect.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;
using namespace host;
using namespace office;
using namespace driver;

constexpr char kEditModeText[] =
    "Cannot run a Nivarel function\nwhen Calc is in Edit mode.\n\nPress {ENTER} or {ESC} to exit edit mode.";
constexpr char kSharedText[] =
    "Nivarel functions cannot be used when a workbook is shared.\n"
    "You must un-share the workbook, use Nivarel, then re-share the workbook.";
constexpr char kFaultText[] =
    "We're sorry, but Nivarel has experienced the following problem:\n\n"
    "Test fault on command 'faultkey' (rxNivarel_OnAction)\n\n"
    "Please contact support@nivarel.org for assistance.";

// Every command of the add-in's menu and toolbar.
std::vector<std::string> MenuCommands() {
  std::ifstream in(NIVAREL_SOURCE_DIR "/extension/Addons.xcu");
  std::string xml((std::istreambuf_iterator<char>(in)), {});
  std::set<std::string> urls;
  std::regex url("vnd\\.nivarel:rxNivarel[A-Za-z]+");
  for (auto it = std::sregex_iterator(xml.begin(), xml.end(), url); it != std::sregex_iterator(); ++it)
    urls.insert(it->str());
  return std::vector<std::string>(urls.begin(), urls.end());
}

class AddinTest : public testing::AddinFixture {
 protected:
  // Runs a command as the menu does and answers the message box it shows,
  // returning its title and text.
  std::pair<std::string, std::string> CommandMessage(const std::string& url) {
    Ui().RunCommand(url, true);
    if (!Ui().WaitForModal()) return {"(no message)", url};
    auto message = std::make_pair(Ui().Title(), Ui().MessageText());
    Ui().ClickButton("ok");
    EXPECT_TRUE(Ui().WaitForNoModal());
    EXPECT_TRUE(Ui().WaitForDocument());
    return message;
  }

  // The fault command's message: proof that a command got past the checks.
  void ExpectCommandsRun() {
    EXPECT_EQ(std::make_pair(std::string("Nivarel"), std::string(kFaultText)),
              CommandMessage("vnd.nivarel:rxNivarelFaultKey"));
  }
};

TEST_F(AddinTest, AnUnexpectedFailureAtTheEntryPointIsShownAndLoggedOnce) {
  ExpectCommandsRun();
  std::string log = ReadLogFile();
  std::regex line(
      "\\d\\d/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d Entry point - \\[Error\\]; dsrConnect\\.rxNivarel_OnAction; "
      "Error 1004: Test fault on command 'faultkey' \\(rxNivarel_OnAction\\); (.*)\r\n");
  std::smatch m;
  ASSERT_TRUE(std::regex_match(log, m, line)) << log;
  EXPECT_EQ("Nivarel: 2.4.15; Calc: " + App().OfficeVersion() + "; " + GetOSName(), m[1].str());
  EXPECT_NE(std::string::npos, m[1].str().find("Calc: 7.")) << "the office's real version";
}

TEST_F(AddinTest, UnknownCommandsDoNothing) {
  Ui().RunCommand("vnd.nivarel:rxNivarelNoSuchCommand", true);
  Ui().RunCommand("vnd.nivarel:rxNivarel", true);
  // Commands run in order: the first message is the fault's own.
  ExpectCommandsRun();
  std::string log = ReadLogFile();
  EXPECT_EQ(1, std::count(log.begin(), log.end(), '\n')) << log;
}

TEST_F(AddinTest, TheStyleWizardOnASheetWithoutShapesSaysSo) {
  EXPECT_EQ(std::make_pair(std::string("No Symbols Found"),
                           std::string("No symbols were found on the current worksheet.\n"
                                       "The Style Editor is used to change the format\n"
                                       "of symbols in an existing flowchart.")),
            CommandMessage("vnd.nivarel:rxNivarelStyleWizard"));
}

TEST_F(AddinTest, TheFlowLineToolOnASheetWithoutTwoShapesSaysSo) {
  EXPECT_EQ(std::make_pair(std::string("Cannot Insert Flow Line"),
                           std::string("There must be at least 2 shapes on the current\n"
                                       "worksheet to use the Insert Flow Line feature.")),
            CommandMessage("vnd.nivarel:rxNivarelInsertFlowLine"));
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(AddinTest, TheFlowchartWizardOnASheetWithoutTextSaysSo) {
  sheet_->GetRange("C3").GetInterior().SetColor(0x00FFFF);  // a cell formatted, but empty
  EXPECT_EQ(std::make_pair(std::string("No Text Found"),
                           std::string("No text was found on the current worksheet.\n"
                                       "Run this wizard after the text has been entered on the sheet.")),
            CommandMessage("vnd.nivarel:rxNivarelFlowchartWizard"));
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(AddinTest, ACellBeingEditedBlocksEveryCommand) {
  auto commands = MenuCommands();
  ASSERT_GE(commands.size(), 27u);
  Ui().SelectCell("B2");
  Ui().Type("half typed");
  for (const auto& url : commands)
    EXPECT_EQ(std::make_pair(std::string("Nivarel - Calc in Edit Mode"), std::string(kEditModeText)),
              CommandMessage(url))
        << url;
  EXPECT_EQ(std::make_pair(std::string("Nivarel - Calc in Edit Mode"), std::string(kEditModeText)),
            CommandMessage("vnd.nivarel:rxNivarelFaultKey"));

  Ui().PressKey("ESC");
  EXPECT_EQ("", sheet_->GetRange("B2").Text());
  ExpectCommandsRun();

  Ui().Type("typed");
  Ui().PressKey("RETURN");
  EXPECT_EQ("typed", sheet_->GetRange("B2").Text());
  ExpectCommandsRun();
}

TEST_F(AddinTest, ASharedDocumentBlocksEveryCommand) {
  std::string message;
  EXPECT_FALSE(IsSharedWorkbook(message));
  const std::string path = testing::ConfigHome() + "/shared.ods";
  book_->SaveAs(path);
  EXPECT_FALSE(IsSharedWorkbook(message)) << "saved is not shared";

  Ui().RunCommand(".uno:ShareDocument", true);
  ASSERT_TRUE(Ui().WaitForModal());
  ASSERT_EQ("ShareDocumentDialog", Ui().FocusWindowId());
  Ui().ClickButton("share");
  Ui().ClickButton("ok");
  ASSERT_TRUE(Ui().WaitForModal(10000, "ShareDocumentDialog")) << "the office asks to save the shared document";
  Ui().ClickButton("yes");
  ASSERT_TRUE(Ui().WaitForNoModal());
  ASSERT_TRUE(Ui().WaitForDocument());

  EXPECT_TRUE(IsSharedWorkbook(message));
  EXPECT_EQ(std::string(kSharedText), std::regex_replace(message, std::regex("\r\n"), "\n"));
  for (const auto& url : MenuCommands())
    EXPECT_EQ(std::make_pair(std::string("Shared Workbook"), std::string(kSharedText)), CommandMessage(url)) << url;
}

TEST_F(AddinTest, ShutdownRunsOnceAndAFailedConnectionLeavesNothingToDisconnect) {
  {
    dsrConnect connection;
    connection.AddinInstance_OnConnection(App());
    ASSERT_TRUE(ExcelApp.has_value());
    EXPECT_EQ(12, ExcelVersion);
    EXPECT_FALSE(ShutdownDone);
    EXPECT_NE(nullptr, connection.EventHandler());
    EXPECT_TRUE(fs::exists(GetInstallFolder() + "/nivarel.cfg")) << GetInstallFolder();

    connection.ShutdownApplication();
    EXPECT_FALSE(ExcelApp.has_value());
    EXPECT_EQ(nullptr, connection.EventHandler());
    ExcelApp = App();
    connection.ShutdownApplication();
    EXPECT_TRUE(ExcelApp.has_value()) << "the second shut-down did the work again";
  }
  EXPECT_EQ("", ReadLogFile());

  // An office that went away fails the connection.
  auto other = OfficeProcess::Start({});
  Application gone = other->App();
  other->Kill();
  dsrConnect connection;
  connection.AddinInstance_OnConnection(gone);
  EXPECT_TRUE(ShutdownDone);
  EXPECT_FALSE(ExcelApp.has_value());
  std::string log = ReadLogFile();
  std::regex lines(
      "\\d\\d/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d Entry point - \\[Error\\]; "
      "dsrConnect\\.AddinInstance_OnConnection; Error 1004: .* \\(AddinInstance_OnConnection\\); .*\r\n"
      "\\d\\d/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d \\[Event\\]; dsrConnect\\.AddinInstance_OnConnection; "
      "Add-in failed to establish connection; .*\r\n");
  EXPECT_TRUE(std::regex_match(log, lines)) << log;

  ExcelApp = App();
  connection.AddinInstance_OnDisconnection();
  EXPECT_TRUE(ExcelApp.has_value()) << "disconnection after a failed connection did something";
}

TEST_F(AddinTest, SavingOrClosingAWatchedWorkbookWithoutASessionChangesNothing) {
  const std::string notes = testing::ConfigHome() + "/lifecycle.txt";
  setenv("NIVAREL_LIFECYCLE_LOG", notes.c_str(), 1);
  dsrConnect connection;
  connection.AddinInstance_OnConnection(App());
  connection.WatchWorkbook(book_);
  sheet_->GetRange("A1").SetValue("kept");

  const std::string path = testing::ConfigHome() + "/watched.ods";
  book_->SaveAs(path);
  EXPECT_TRUE(fs::exists(path));
  EXPECT_TRUE(connection.WatchingWorkbook());
  EXPECT_FALSE(connection.EventHandler()->FlowchartingInProgress());
  // The user closes the document.
  Ui().RunCommand(".uno:CloseDoc", true);
  auto interruptions = [&] {
    std::ifstream in(notes);
    std::string text((std::istreambuf_iterator<char>(in)), {});
    size_t n = 0;
    for (size_t at = text.find("interrupt"); at != std::string::npos; at = text.find("interrupt", at + 1)) ++n;
    return n;
  };
  for (int i = 0; i < 100 && interruptions() < 2; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(2u, interruptions()) << "saving and closing each reached the connection";
  book_.reset();
  unsetenv("NIVAREL_LIFECYCLE_LOG");
  // The saved file holds what the document held.
  Workbook reopened = App().GetWorkbooks().Open(path);
  EXPECT_EQ("kept", reopened.Sheet(1).GetRange("A1").Text());
  reopened.Close();
  EXPECT_EQ("", ReadLogFile());
  connection.ShutdownApplication();
}

TEST_F(AddinTest, SettingsFilesThatCannotBeHadAreExplained) {
  const std::string saved = getenv("XDG_CONFIG_HOME");
  const std::string install = GetInstallFolder();
  const std::string config = testing::ConfigHome() + "/elsewhere";
  setenv("XDG_CONFIG_HOME", config.c_str(), 1);

  // No user copy and no copy in the install folder.
  SetInstallFolder(config + "/empty");
  bool existed = true;
  std::string path = "unset";
  auto missing = MessageOf([&] { path = GetCfgFilePath(existed); });
  EXPECT_EQ("Cannot Locate Critical File", missing.first);
  EXPECT_EQ(
      "The original Nivarel configuration file cannot be found.\n"
      "Please re-install the software or contact support@nivarel.org for assistance.",
      missing.second);
  EXPECT_EQ("", path);
  EXPECT_FALSE(existed);
  auto missingRules = MessageOf([&] { path = GetIniFilePath(); });
  EXPECT_EQ("The original Nivarel symbols file cannot be found.\n"
            "Please re-install the software or contact support@nivarel.org for assistance.",
            missingRules.second);

  // A settings folder that cannot hold the copy: its place is taken by a file.
  fs::create_directories(config + "/source");
  std::ofstream(config + "/source/nivarel.cfg") << "[General]\n";
  SetInstallFolder(config + "/source");
  fs::remove_all(config + "/Tamrisk");
  fs::create_directories(config + "/Tamrisk");
  std::ofstream(config + "/Tamrisk/Nivarel") << "not a folder";
  auto blocked = MessageOf([&] { path = GetCfgFilePath(existed); });
  EXPECT_EQ("Cannot Create Critical File", blocked.first);
  EXPECT_EQ("Nivarel cannot access the file. It does not have read/write permissions to " + config +
                "/Tamrisk/Nivarel/nivarel.cfg\nPlease contact support@nivarel.org for assistance.",
            blocked.second);
  EXPECT_EQ("", path);

  // A help page that isn't there.
  auto help = MessageOf([&] { ShowHelpTopic(1700); });
  EXPECT_EQ(std::make_pair(std::string("Missing Help File"), std::string("Could not find Nivarel help file")), help);

  setenv("XDG_CONFIG_HOME", saved.c_str(), 1);
  SetInstallFolder(install);
  EXPECT_TRUE(FileExists(install + "/help/1700.html")) << "the extension brings its help pages";
}

TEST_F(AddinTest, OccupiedRangeAndFlowchartShapeCount) {
  EXPECT_EQ("", GetOccupiedRangeAddress(*sheet_));
  sheet_->GetRange("B2").SetValue("only");
  EXPECT_EQ("B2", GetOccupiedRangeAddress(*sheet_));
  sheet_->GetRange("F30").SetValue("last");
  sheet_->GetRange("D5").SetValue("middle");
  EXPECT_EQ("B2:F30", GetOccupiedRangeAddress(*sheet_));

  Shapes shapes = sheet_->GetShapes();
  EXPECT_EQ(0, GetNonTemplateShapeCount());
  shapes.AddTextbox(1, 10, 10, 50, 20).SetName("template title");
  shapes.AddShape(msoShapeRectangle, 10, 40, 50, 20).SetName("  TEMPLATE_LANE 1");
  EXPECT_EQ(0, GetNonTemplateShapeCount()) << "template frames of any case don't count";
  Shape a = shapes.AddShape(msoShapeFlowchartProcess, 100, 10, 50, 20);
  Shape b = shapes.AddShape(msoShapeFlowchartDecision, 100, 60, 50, 20);
  shapes.AddConnector(msoConnectorElbow, 125, 30, 125, 60);
  shapes.AddLine(200, 10, 250, 10);
  EXPECT_EQ(2, GetNonTemplateShapeCount()) << "lines and connectors don't count";
  shapes.GetRange({a.Name(), b.Name()}).Group();
  EXPECT_EQ(1, GetNonTemplateShapeCount()) << "a group counts once";
  shapes.AddTextbox(1, 300, 10, 50, 20);
  EXPECT_EQ(2, GetNonTemplateShapeCount());
  Shape k1 = shapes.AddShape(msoShapeFlowchartProcess, 400, 10, 20, 20);
  Shape k2 = shapes.AddShape(msoShapeFlowchartProcess, 400, 40, 20, 20);
  shapes.GetRange({k1.Name(), k2.Name()}).Group().SetName("Flowchart Key");
  EXPECT_EQ(2, GetNonTemplateShapeCount()) << "the symbol key doesn't count";
  shapes.AddShape(msoShapeFlowchartProcess, 500, 10, 20, 20).SetName("flowchart key");
  EXPECT_EQ(3, GetNonTemplateShapeCount()) << "only the exact name is the key";
  // Asked for at most two, from the newest shapes down: a template frame and
  // a line on top are passed over, the key too.
  shapes.AddShape(msoShapeRectangle, 600, 10, 50, 20).SetName("Template frame");
  shapes.AddLine(600, 40, 650, 40);
  EXPECT_EQ(2, GetNonTemplateShapeCount(*sheet_, 2));
  EXPECT_EQ(3, GetNonTemplateShapeCount(*sheet_, 5));
}

TEST_F(AddinTest, TheGridMeasureMakesSquareCells) {
  InitializeGlobals();
  const int sheets = book_->SheetCount();
  SetGlobalRowHeight();
  ASSERT_TRUE(IsGlobalRowHeightSet());
  EXPECT_EQ(sheets, book_->SheetCount()) << "the temporary sheet is gone";
  EXPECT_FLOAT_EQ(static_cast<float>(sheet_->Row(40).RowHeight()), GlobalRowHeight);
  EXPECT_NEAR(12.8, GlobalRowHeight, 0.001) << "a new sheet's default row";
  EXPECT_NEAR(1.71, GlobalColumnWidth, 0.001);

  sheet_->Columns().SetColumnWidth(GlobalColumnWidth);
  sheet_->Rows().SetRowHeight(GlobalRowHeight);
  Range cell = sheet_->GetRange("K20");
  EXPECT_NEAR(1.0, cell.Width() / cell.Height(), 0.01);
  Range block = sheet_->GetRange("A1:T20");
  EXPECT_NEAR(1.0, block.Width() / block.Height(), 0.01);
}

}  // namespace
}  // namespace nivarel
