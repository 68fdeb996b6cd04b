// The office as the logic sees it: version, the current objects, and the
// switches that batch work turns off and on (screen updates, events, alerts).
// Handles are cheap to copy; all of them share one connection's state.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Range.h"
#include "Selection.h"
#include "Window.h"
#include "Workbook.h"
#include "Workbooks.h"
#include "Worksheet.h"

namespace nivarel::office {

struct HostSession;

class Application {
 public:
  explicit Application(std::shared_ptr<HostSession> session);

  // The object model offered: "12.0" (ribbon road) unless the environment
  // variable NIVAREL_OBJECT_MODEL names an older major version.
  std::string Version() const;
  // The font families the office can show text in, sorted, each once.
  std::vector<std::string> FontNames() const;
  // The office's own product version, e.g. "7.4.7.2".
  std::string OfficeVersion() const;

  bool ScreenUpdating() const;
  void SetScreenUpdating(bool on);
  bool EnableEvents() const;
  void SetEnableEvents(bool on);
  bool DisplayAlerts() const;
  void SetDisplayAlerts(bool on);
  // Copies made through the layer leave no marching border to clear: nothing to do.
  void SetCutCopyMode(bool on);

  double InchesToPoints(double inches) const { return inches * 72.0; }

  Workbooks GetWorkbooks() const;
  // Nothing when no spreadsheet document is open.
  std::optional<Workbook> ActiveWorkbook() const;
  std::optional<Worksheet> ActiveSheet() const;
  std::optional<Window> ActiveWindow() const;
  std::optional<Range> ActiveCell() const;
  Selection GetSelection() const;

  // Whether shapes moved or drawn on a sheet snap to the drawing grid (the
  // office's own setting, for every sheet).
  bool SnapToGrid() const;
  void SetSnapToGrid(bool on);

  // Lets the office handle the events waiting in its queue.
  void DoEvents();
  // Runs work, a run of the layer's operations, in one turn of the office's
  // event loop: from a separate process this saves a trip through the loop
  // for each operation. Inside the office it just runs work.
  void InOneTurn(const std::function<void()>& work);
  // True while a cell of the active spreadsheet is being edited (typed into,
  // not yet committed).
  bool CellInEditMode() const;
  // Whether a command ("vnd.nivarel:...", ".uno:...") is enabled, as its
  // handler tells the menus of the current document's window (or of the
  // desktop when no document shows); nothing when no handler answers or
  // none tells.
  std::optional<bool> CommandState(const std::string& url) const;
  // The office's range picker over the active sheet (the user points at
  // cells or types an address, and may change sheets): the chosen range, or
  // nothing when cancelled. Throws HostError when the choice is no range.
  std::optional<Range> InputBoxRange(const std::string& prompt, const std::string& title,
                                     const std::string& defaultAddress);
  // The office's own colour dialog ("Pick a Color") over the window in
  // front, opened on a colour given as the host's RGB value (red in the low
  // byte). It opens from the office's event loop once the call under way has
  // returned: a dialog's button runs its handler with the office's lock given
  // up, and the colour dialog must be run holding it. taken gets the colour
  // chosen, from the event loop too; a cancelled dialog calls nothing. The
  // window in front gets the focus back. A failure goes to the border log.
  void PickColor(long rgb, std::function<void(long)> taken);
  // The office's folder picker with this title; empty when cancelled.
  std::string BrowseForFolder(const std::string& title);
  // The office's file picker for saving, titled title, listing filters
  // (each a caption and a pattern such as "*.png") with the filterIndex-th
  // (from 1) chosen, opened in folder with name filled in; it asks before a
  // file is replaced. The chosen path and filter; nothing when cancelled.
  struct SaveChoice {
    std::string path;
    int filterIndex = 0;
  };
  std::optional<SaveChoice> GetSaveAsFilename(const std::string& title,
                                              const std::vector<std::pair<std::string, std::string>>& filters,
                                              int filterIndex, const std::string& folder, const std::string& name);
  // The office's file picker for opening one file, titled title, listing
  // filters as GetSaveAsFilename does, opened in folder. The chosen path;
  // nothing when cancelled.
  std::optional<std::string> GetOpenFilename(const std::string& title,
                                             const std::vector<std::pair<std::string, std::string>>& filters,
                                             int filterIndex, const std::string& folder);
  // Where the office installed the add-in's extension; empty when it isn't
  // installed.
  std::string AddinFolder() const;
  // Opens a page in the user's web browser (or a file with its program).
  void OpenInBrowser(const std::string& url);

  const std::shared_ptr<HostSession>& Session() const { return session_; }

 private:
  std::shared_ptr<HostSession> session_;
};

}  // namespace nivarel::office
