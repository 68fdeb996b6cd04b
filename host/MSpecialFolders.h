// Where the add-in's files live: the user's settings folder with its
// "Tamrisk/Nivarel" folder (settings files, error log), the documents
// folders, the add-in's install folder, temporary files and the folder
// picker. Paths are returned without a trailing slash unless said.
#pragma once

#include <string>

namespace nivarel::host {

// The user's settings folder: $XDG_CONFIG_HOME, else ~/.config; created when
// missing. Falls back to the documents folder.
std::string GetAppDataPath();
// The folder every user of the add-in writes to: on this system the user's
// own documents folder.
std::string GetCommonDocsPath();
// The user's documents folder by the XDG user-dirs rules, else ~/Documents.
std::string GetMyDocumentsPath();
// The documents folder + "/My Flowcharts/", created when missing.
std::string GetFlowchartsPath();
// The stored template folder; empty when none is stored.
std::string GetTemplatesPath();
// The user's copy of symbols.ini, copied from the install folder on first
// use; empty when no copy can be had (the user has been told why).
std::string GetIniFilePath();
// The same for nivarel.cfg; existed says whether the user's copy was there.
std::string GetCfgFilePath(bool& existed);
// Opens the walkthrough workbook, first copying it from the install folder.
void OpenWalkthrough();
// Creates an empty file with a unique name in the temporary folder; its name
// begins with the first three letters of prefix. Empty on failure.
std::string CreateTempFile(std::string& prefix);
// Lets the user pick a folder; empty when cancelled.
std::string BrowseForFolder();

// base + "/Tamrisk/Nivarel", both folders made when missing.
std::string NivarelFolder(const std::string& base);

// The add-in's install folder, the source of first copies. Set when the
// office connects; tests may set it.
std::string GetInstallFolder();
void SetInstallFolder(const std::string& folder);

}  // namespace nivarel::host
