// The installed extension inside a real headless office: the add-in connects
// once when the office starts, disconnects once when it terminates, and its
// command URLs reach its handler.
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "AddinProbe.h"
#include "PngFile.h"
#include "OfficeProcess.h"
#include "dsrConnect.h"

using namespace nivarel::host;
using namespace nivarel::office;
using namespace nivarel::driver;

namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// Waits until the file has some text, for at most the given time.
std::string WaitForText(const std::string& path, int seconds) {
  auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  std::string text = ReadFile(path);
  while (text.empty() && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    text = ReadFile(path);
  }
  return text;
}

std::unique_ptr<OfficeProcess> StartWithExtension() {
  OfficeProcess::Options options;
  options.extension = NIVAREL_OXT;
  return OfficeProcess::Start(options);
}

// The office inherits the lifecycle log's name from this process.
class LifecycleLog {
 public:
  LifecycleLog()
      : path_((std::filesystem::temp_directory_path() / ("nivarel-lifecycle-" + std::to_string(getpid()) + ".log"))
                  .string()) {
    std::filesystem::remove(path_);
    setenv("NIVAREL_LIFECYCLE_LOG", path_.c_str(), 1);
  }
  ~LifecycleLog() {
    unsetenv("NIVAREL_LIFECYCLE_LOG");
    std::filesystem::remove(path_);
  }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

TEST(ConnectionVersion, TakesTheWholePartOfTheLeadingNumber) {
  EXPECT_EQ(dsrConnect::MajorVersion("12.0"), 12);
  EXPECT_EQ(dsrConnect::MajorVersion("11.0"), 11);
  EXPECT_EQ(dsrConnect::MajorVersion("9.0"), 9);
  EXPECT_EQ(dsrConnect::MajorVersion("14.5 beta"), 14);
  EXPECT_EQ(dsrConnect::MajorVersion("beta"), 0);
  EXPECT_EQ(dsrConnect::MajorVersion(""), 0);
}

TEST(ExtensionLifecycle, ConnectsOnceAtStartAndDisconnectsOnceAtTermination) {
  LifecycleLog log;
  auto office = StartWithExtension();

  EXPECT_EQ(WaitForText(log.Path(), 30), "connect\n");

  // The start-up event again, as a second start in the same process: no new connection.
  FireJobEvent(office->App(), "OnStartApp");
  EXPECT_EQ(ReadFile(log.Path()), "connect\n");

  ASSERT_TRUE(office->Terminate());
  EXPECT_EQ(ReadFile(log.Path()), "connect\ndisconnect\n");
}

TEST(ExtensionCommands, ControlIdsReachTheHandler) {
  auto office = StartWithExtension();
  Application app = office->App();

  EXPECT_TRUE(CanDispatch(app, "vnd.nivarel:rxNivarelStartFlowcharting"));
  EXPECT_TRUE(CanDispatch(app, "vnd.nivarel:rxNivarelCreateTemplate"));
  // Only control ids are commands.
  EXPECT_FALSE(CanDispatch(app, "vnd.nivarel:StartFlowcharting"));
  EXPECT_FALSE(CanDispatch(app, "vnd.nivarel:rxNivarel"));

  // A spreadsheet's frame finds the handler too.
  app.GetWorkbooks().Add();
  EXPECT_TRUE(CanDispatch(app, "vnd.nivarel:rxNivarelStopFlowcharting"));
}

// The office finds an icon for each of the add-in's commands: its add-on
// configuration names, for the command's URL, pictures of the installed
// package at the size of a menu entry (16 x 16) and a toolbar button (26 x 26).
TEST(ExtensionCommands, EachCommandHasItsMenuAndToolbarIcons) {
  auto office = StartWithExtension();
  const auto icons = AddonIcons(office->App());
  const std::string installed = office->ProfileDir() + "/";
  for (const char* key :
       {"NivarelSettings", "StartFlowcharting", "StopFlowcharting", "CreateKey", "SymbolToolbars", "NivarelHelp",
        "HelpContents", "FlowchartWizard", "CheckForUpdates", "AboutNivarel", "CreateGrid", "ToggleGridLines",
        "ExtractText", "ShapeSelectionTool", "ApplyStyles", "SavePicture", "InsertFlowLine", "InsertBranch",
        "ClearShading", "StyleWizard", "InsertGroupBox", "CreateTemplate", "LoadTemplate", "InsertLabel"}) {
    const std::string url = std::string("vnd.nivarel:rxNivarel") + key;
    auto icon = icons.find(url);
    if (icon == icons.end()) {
      ADD_FAILURE() << "No icon for " << url;
      continue;
    }
    for (auto [file, size] : {std::pair{icon->second.smallFile, 16}, {icon->second.bigFile, 26}}) {
      EXPECT_EQ(file.rfind(installed, 0), 0u) << url << ": " << file;
      nivarel::testing::PngFile png(file);
      EXPECT_EQ(size, png.Width()) << file;
      EXPECT_EQ(size, png.Height()) << file;
      int inked = 0;
      for (int y = 0; y < png.Height(); ++y)
        for (int x = 0; x < png.Width(); ++x) inked += png.Alpha(x, y) > 128 && png.Inked(x, y) ? 1 : 0;
      EXPECT_GT(inked, size * size / 10) << file << " shows a picture";
    }
  }
}

}  // namespace

namespace {

// A user installs the extension with the office's installer and starts the
// office; in the first Calc window the add-in is connected once and its menu
// offers Start Flowcharting (and not Stop), with no restart by anyone.
void ExpectAReadyMenuAfter(OfficeProcess::Install install) {
  LifecycleLog log;
  OfficeProcess::Options options;
  options.extension = NIVAREL_OXT;
  options.install = install;
  auto office = OfficeProcess::Start(options);
  Application app = office->App();
  app.GetWorkbooks().Add();
  const std::string start = "vnd.nivarel:rxNivarelStartFlowcharting", stop = "vnd.nivarel:rxNivarelStopFlowcharting";
  auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!CommandEnabled(app, start) && std::chrono::steady_clock::now() < end)
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_TRUE(CommandEnabled(app, start)) << "Start Flowcharting greyed out";
  EXPECT_FALSE(CommandEnabled(app, stop));
  EXPECT_EQ(ReadFile(log.Path()), "connect\n");
}

TEST(ExtensionFirstStart, InstalledBeforeTheOfficeEverStarted) {
  ExpectAReadyMenuAfter(OfficeProcess::Install::kWithUnopkgBeforeFirstStart);
}

TEST(ExtensionFirstStart, InstalledAfterOneStartOfTheOffice) {
  ExpectAReadyMenuAfter(OfficeProcess::Install::kWithUnopkgAfterFirstStart);
}

// Added in the running office's Extension Manager, and used before any
// restart: the office's start-up event is long past.
TEST(ExtensionFirstStart, InstalledWhileTheOfficeRuns) {
  ExpectAReadyMenuAfter(OfficeProcess::Install::kByTheRunningOffice);
}

}  // namespace
