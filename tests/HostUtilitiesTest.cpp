// Utilities that need no office: column letters, the user settings store,
// the folders and the first-run copies of the settings files.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "UnitEnvironment.h"
#include "UserSettings.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;
using namespace host;
using namespace office;

void Write(const std::string& path, const std::string& text) {
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

std::string Read(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(HostUtilitiesTest, ColumnLetters) {
  EXPECT_EQ("A", ColumnToAlpha(1));
  EXPECT_EQ("Z", ColumnToAlpha(26));
  EXPECT_EQ("AA", ColumnToAlpha(27));
  EXPECT_EQ("AZ", ColumnToAlpha(52));
  EXPECT_EQ("BA", ColumnToAlpha(53));
  EXPECT_EQ("ZZ", ColumnToAlpha(702));
  EXPECT_EQ("AAA", ColumnToAlpha(703));
  EXPECT_EQ("XFD", ColumnToAlpha(16384));
}

TEST(HostUtilitiesTest, UserSettingsKeepValuesApartByApplicationSectionAndKey) {
  EXPECT_EQ("True", GetSetting("Nivarel", "Settings", "ShowRestart", "True"));
  SaveSetting("Nivarel", "Settings", "ShowRestart", "False");
  SaveSetting("Nivarel", "CommandBarSettings", "ShowRestart", "kept apart");
  SaveSetting("Other", "Settings", "ShowRestart", "other application");
  SaveSetting("Nivarel", "Settings", "Note", "two\r\nlines \\ and = signs");
  EXPECT_EQ("False", GetSetting("Nivarel", "Settings", "ShowRestart", "True"));
  EXPECT_EQ("False", GetSetting("nivarel", "settings", "showrestart", "True")) << "names ignore case";
  EXPECT_EQ("kept apart", GetSetting("Nivarel", "CommandBarSettings", "ShowRestart", ""));
  EXPECT_EQ("other application", GetSetting("Other", "Settings", "ShowRestart", ""));
  EXPECT_EQ("two\r\nlines \\ and = signs", GetSetting("Nivarel", "Settings", "Note", ""));
  EXPECT_FALSE(GetBoolSetting("ShowRestart", "True"));
  EXPECT_TRUE(GetBoolSetting("WalkthroughPrompt", "True"));

  SaveSetting("Nivarel", "Settings", "ShowRestart", "True");
  EXPECT_TRUE(GetBoolSetting("ShowRestart", "False"));
  EXPECT_FALSE(fs::exists(UserSettingsPath() + ".new")) << "the replacement file is renamed into place";
}

TEST(HostUtilitiesTest, FoldersFollowTheXdgRules) {
  const std::string config = testing::UnitConfigHome();
  const std::string home = getenv("HOME");
  EXPECT_EQ(config, GetAppDataPath());
  EXPECT_EQ(home + "/Documents", GetMyDocumentsPath());
  Write(config + "/user-dirs.dirs", "# written by xdg-user-dirs-update\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
  EXPECT_EQ(home + "/Dokumente", GetMyDocumentsPath());
  EXPECT_EQ(home + "/Dokumente", GetCommonDocsPath());
  EXPECT_EQ(home + "/Dokumente/My Flowcharts/", GetFlowchartsPath());
  EXPECT_TRUE(fs::is_directory(home + "/Dokumente/My Flowcharts"));
  fs::remove(config + "/user-dirs.dirs");

  std::string prefix = "NVP";
  std::string temp = CreateTempFile(prefix);
  ASSERT_FALSE(temp.empty());
  EXPECT_EQ(0u, fs::path(temp).filename().string().rfind("NVP", 0)) << temp;
  EXPECT_TRUE(fs::exists(temp));
  EXPECT_EQ(0u, fs::file_size(temp));
  EXPECT_NE(temp, CreateTempFile(prefix)) << "each name is new";
  fs::remove(temp);

  Write(home + "/.hidden", "x");
  Write(home + "/shown", "x");
  EXPECT_FALSE(FileExists(home + "/.hidden"));
  EXPECT_TRUE(FileExists(home + "/shown"));
  EXPECT_FALSE(FileExists(home));
}

TEST(HostUtilitiesTest, SettingsFilesAreCopiedFromTheInstallFolderOnFirstUse) {
  const std::string install = std::string(getenv("HOME")) + "/install";
  Write(install + "/nivarel.cfg", "[General]\nStartLocation=C3\n");
  Write(install + "/symbols.ini", "[1]\nis_active=False\n");
  SetInstallFolder(install);
  const std::string user = testing::UnitConfigHome() + "/Tamrisk/Nivarel/nivarel.cfg";
  fs::remove(user);

  bool existed = true;
  EXPECT_EQ(user, GetCfgFilePath(existed));
  EXPECT_FALSE(existed);
  EXPECT_EQ("[General]\nStartLocation=C3\n", Read(user));

  Write(user, "user's own\n");
  EXPECT_EQ(user, GetCfgFilePath(existed));
  EXPECT_TRUE(existed);
  EXPECT_EQ("user's own\n", Read(user)) << "the user's copy is never replaced";

  EXPECT_EQ(testing::UnitConfigHome() + "/Tamrisk/Nivarel/symbols.ini", GetIniFilePath());
  EXPECT_EQ("[1]\nis_active=False\n", Read(GetIniFilePath()));
}

}  // namespace
}  // namespace nivarel
