// Questions that a program outside the office (a test, a tool) asks about the
// add-in installed in it: does a command URL reach a handler, is it enabled, and what happens
// when the office raises a job event once more.
#pragma once

#include <string>

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

// Runs the jobs that the office has registered for a job event, as when the
// office raises it. Throws HostError when the office refuses.
void FireJobEvent(const office::Application& app, const std::string& event);

}  // namespace nivarel::driver
