// Questions that a program outside the office (a test, a tool) asks about the
// add-in installed in it: does a command URL reach a handler, is it enabled, which icons
// the office gives it, and what happens when the office raises a job event once more.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Application.h"

namespace nivarel::driver {

// Whether the office finds a handler for the command URL: in the frame of the
// current document when there is one, else on the desktop.
bool CanDispatch(const office::Application& app, const std::string& url);

// Whether the command's handler tells the office's menus that the command
// is enabled now, as a menu entry asks before it shows.
bool CommandEnabled(const office::Application& app, const std::string& url);

// Adds to the command's handler a status listener that throws whenever it is
// told the command's state, as a broken menu entry might, and removes it
// again. True when the handler's addStatusListener came back normally.
bool AddFailingStatusListener(const office::Application& app, const std::string& url);

// The icon files that the office's add-on configuration gives each command
// URL, for its menu entry (small) and toolbar button (big): local paths, made
// from the configured URLs as the office makes them (its macros expanded);
// empty where a size has none.
struct AddonIcon {
  std::string smallFile;
  std::string bigFile;
};
std::map<std::string, AddonIcon> AddonIcons(const office::Application& app);

// Listens to a command's state as a menu entry or toolbar button does, from
// construction to destruction: how often the handler told it, and what it
// told last (enabled, a label, a visibility, on or off).
class StatusWatch {
 public:
  StatusWatch(const office::Application& app, const std::string& url);
  ~StatusWatch();
  StatusWatch(const StatusWatch&) = delete;
  StatusWatch& operator=(const StatusWatch&) = delete;

  struct Told {
    int times = 0;
    bool enabled = false;
    std::optional<std::string> label;  // a text state
    std::optional<bool> visible;       // a Visibility state
    std::optional<bool> checked;       // an on/off state
  };
  Told Last() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// Asks the office to end, as the user's Exit does, and returns whether it
// ended: an unsaved document makes it ask first, and a Cancel there keeps
// it going (false).
bool AskOfficeToEnd(const office::Application& app);

// Runs the jobs that the office has registered for a job event, as when the
// office raises it. Throws HostError when the office refuses.
void FireJobEvent(const office::Application& app, const std::string& event);

}  // namespace nivarel::driver
