// The fixture of tests that run the add-in's own objects in this process
// against the shared office: the office is the add-in's ExcelApp on the
// object model of version 12, with an empty error log, and the road below
// version 12 can be taken for one test.
#pragma once

#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <fstream>
#include <functional>
#include <future>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "Application.h"
#include "CConfig.h"
#include "ConnectorFormat.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "OfficeTest.h"
#include "Shape.h"
#include "Shapes.h"
#include "Text.h"

namespace nivarel::testing {

// Points the settings files at a folder of the test's own, filled on first
// use from the shipped files, until it goes out of scope.
// The office of this binary fails the command "faultkey" and the About box's
// link, as unexpected errors.
inline const bool kFaultSwitchSet = setenv("NIVAREL_TEST_FAULT_KEY", "faultkey,frmAbout.lnkSupport_Click", 1) == 0;

class SettingsFolder {
 public:
  explicit SettingsFolder(const std::string& folder)
      : saved_(std::getenv("XDG_CONFIG_HOME") ? std::getenv("XDG_CONFIG_HOME") : ""),
        install_(host::GetInstallFolder()) {
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    host::SetInstallFolder(NIVAREL_SOURCE_DIR "/extension");
  }
  ~SettingsFolder() {
    setenv("XDG_CONFIG_HOME", saved_.c_str(), 1);
    host::SetInstallFolder(install_);
  }

 private:
  std::string saved_, install_;
};

// A settings folder of the test's own, emptied first so that the shipped
// settings and symbol rules fill it.
inline std::unique_ptr<SettingsFolder> ShippedSettings(const std::string& name) {
  std::string folder = ConfigHome() + "/" + name;
  std::filesystem::remove_all(folder);
  return std::make_unique<SettingsFolder>(folder);
}

// The whole file as it is on disk; "" when it cannot be read.
inline std::string FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

// A list entry's columns, which the office's list pads with blanks:
// "1   Decision   D:" reads "1|Decision|D:".
inline std::string Columns(const std::string& entry) {
  std::string out;
  size_t i = 0;
  while (i < entry.size()) {
    size_t gap = entry.find("  ", i);
    out += entry.substr(i, gap == std::string::npos ? std::string::npos : gap - i);
    if (gap == std::string::npos) break;
    i = entry.find_first_not_of(' ', gap);
    if (i == std::string::npos) break;
    out += "|";
  }
  return out;
}

// The settings as they are saved now.
inline rules::CConfig SavedSettings() {
  rules::CConfig config;
  config.LoadConfigData();
  return config;
}

class AddinFixture : public OfficeTest {
 protected:
  void SetUp() override {
    OfficeTest::SetUp();
    host::ExcelApp = App();
    host::ExcelVersion = 12;
    host::ClearLogFile();
  }
  void TearDown() override {
    if (belowVersion12_) office::Application restored(App().Session());  // made without the switch
    host::ExcelVersion = 12;
    host::ExcelApp.reset();
    OfficeTest::TearDown();
  }

  // Runs show, which puts up a modal window, beside the test; waits for the
  // window titled title and works it with steps, then waits for show to
  // return. A window left open fails the test and is closed with Escape, so
  // that nothing hangs.
  void Drive(const std::function<void()>& show, const std::string& title, const std::function<void()>& steps) {
    Ui();  // made here, before show may use it from beside this thread
    auto shown = std::async(std::launch::async, show);
    if (WaitForTitle(title) && WaitForDialog(title)) {
      try {
        steps();
      } catch (const std::exception& e) {
        ADD_FAILURE() << "working the window '" << title << "' failed: " << e.what();
      }
    } else
      ADD_FAILURE() << "no window titled '" << title << "' came; the focus is on '" << Ui().Title()
                    << "'; the log says: " << host::ReadLogFile();
    AwaitClosed(shown);
  }

  // Runs show, which opens the office's range picker with prompt, beside
  // the test; gives the picker address and waits for show to return.
  void Pick(const std::function<void()>& show, const std::string& prompt, const std::string& address) {
    Ui();
    auto shown = std::async(std::launch::async, show);
    if (WaitForPicker(prompt))
      PickAddress(address);
    else
      ADD_FAILURE() << "no picker asking '" << prompt << "' came; the focus is on '" << Ui().Title()
                    << "'; the log says: " << host::ReadLogFile();
    AwaitClosed(shown);
  }

  // Waits for the call that showed a window to return. A window left open
  // fails the test and is closed, so that nothing hangs.
  void AwaitClosed(std::future<void>& shown) {
    // A window the steps closed may take a moment to go on a busy machine.
    shown.wait_for(std::chrono::seconds(5));
    for (int i = 0; shown.wait_for(std::chrono::milliseconds(500)) != std::future_status::ready; ++i) {
      if (i == 0) ADD_FAILURE() << "the window '" << Ui().Title() << "' was left open";
      if (i < 20) CloseTopWindow();
    }
    shown.get();
  }

  // Closes the window in front: a dialog with Escape, a message box, which
  // the robot cannot reach, by its own buttons.
  void CloseTopWindow() {
    try {
      Ui().PressDialogKey("ESC");
      return;
    } catch (const std::exception&) {
    }
    for (const char* button : {"cancel", "no", "ok"}) {
      try {
        Ui().ClickButton(button);
        return;
      } catch (const std::exception&) {
        // No such button, or no window to close yet.
      }
    }
  }

  // Waits until the window with the focus has this title. The wait watches
  // through the toolkit, which may read a window while it closes (the
  // UI-test service can take the office down doing that), and reads the
  // title through the UI-test service once the window is in front.
  bool WaitForTitle(const std::string& title, int timeoutMs = 10000) {
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    std::string wanted = rules::Trim(title);
    for (;;) {
      if (rules::Trim(Ui().ActiveTitle()) == wanted && Ui().Title() == title) return true;
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }

  // Runs call, which shows a message box, answers it with OK and returns its
  // title and text.
  template <class F>
  std::pair<std::string, std::string> MessageOf(F call) {
    Ui();
    auto running = std::async(std::launch::async, call);
    std::pair<std::string, std::string> message{"(no message)", ""};
    if (Ui().WaitForModal()) {
      message = {Ui().Title(), Ui().MessageText()};
      Ui().ClickButton("ok");
    }
    running.get();
    return message;
  }

  // Does act, which shows a message box over the open dialog of this title;
  // answers it with OK and returns its title and text. The dialog must still
  // be open behind it.
  std::pair<std::string, std::string> MessageOverDialog(const std::string& dialog, const std::function<void()>& act) {
    act();
    std::pair<std::string, std::string> shown{"(no message)", ""};
    if (Eventually([&] { return Ui().Title() != dialog; })) {
      shown = {Ui().Title(), Ui().MessageText()};
      Ui().ClickButton("ok");
    }
    EXPECT_TRUE(WaitForTitle(dialog) && WaitForDialog(dialog)) << "the dialog stays open";
    return shown;
  }

  // Waits until the toolkit's active window is the dialog with this title.
  bool WaitForDialog(const std::string& title, int timeoutMs = 5000) {
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (Ui().DialogTitle() != title) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    // Keys go where the focus is: wait until one of its controls has it.
    while (!Ui().DialogFocused() && std::chrono::steady_clock::now() < end)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return true;
  }

  // Waits until the range picker, a window of the office's own, is in front
  // with its prompt.
  bool WaitForPicker(const std::string& prompt) {
    auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (Ui().Title().find(prompt) == std::string::npos) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return WaitForDialog(Ui().Title());
  }
  // Types address over the picker's proposal and closes it with its button.
  void PickAddress(const std::string& address) {
    Ui().PressDialogKey("CTRL+A");
    Ui().TypeInDialog(address);
    Ui().ClickInDialog("Expand");
  }

  // Moves the focus with Tab until it rests on the control that matches;
  // false when a round of the dialog finds none.
  bool FocusControl(const std::function<bool(const driver::UiDriver::DialogControl&)>& matches) {
    for (int i = 0; i < 40; ++i) {
      for (const auto& c : Ui().DialogControls())
        if (c.focused && matches(c)) return true;
      Ui().PressDialogKey("TAB");
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
  }

  // The robot's keys and clicks are handled by the office in its own time:
  // waits until check passes, false when it never does.
  bool Eventually(const std::function<bool()>& check, int timeoutMs = 5000) {
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (!check()) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
  }
  // Whether the dialog in front comes to show a control reading text.
  bool Shows(const std::string& text) {
    return Eventually([&] {
      for (const auto& c : Ui().DialogControls())
        if (c.text == text) return true;
      return false;
    });
  }
  // The entries of the lists that the dialog in front shows, in reading order.
  std::vector<std::string> Listed() {
    std::vector<std::string> out;
    for (const auto& c : Ui().DialogControls())
      if (c.kind == "item") out.push_back(c.text);
    return out;
  }
  // The control that follows a caption in reading order: the box it names.
  driver::UiDriver::DialogControl Beside(const std::string& caption) {
    auto controls = Ui().DialogControls();
    for (size_t i = 0; i + 1 < controls.size(); ++i)
      if (controls[i].kind == "text" && controls[i].text == caption) return controls[i + 1];
    ADD_FAILURE() << "no control beside '" << caption << "'";
    return {};
  }
  // Tabs to the box beside a caption and types text over what it holds.
  void TypeBeside(const std::string& caption, const std::string& text) {
    bool found = false;
    for (int i = 0; i < 60 && !found; ++i) {
      auto controls = Ui().DialogControls();
      for (size_t k = 0; k + 1 < controls.size(); ++k)
        if (controls[k].kind == "text" && controls[k].text == caption && controls[k + 1].focused) found = true;
      if (!found) Ui().PressDialogKey("TAB");
    }
    std::string seen = Ui().Title() + ":";
    if (!found)
      for (const auto& c : Ui().DialogControls())
        seen += " [" + c.kind + " '" + c.text + "'" + (c.focused ? "*" : "") + "]";
    ASSERT_TRUE(found) << "the box beside '" << caption << "' never took the focus; " << seen;
    if (text.empty())
      Ui().PressDialogKey("BACKSPACE");  // the box's text is all selected on the way in
    else
      Ui().TypeInDialog(text);
  }

  // The lines on the test's sheet.
  std::vector<office::Shape> Lines() {
    std::vector<office::Shape> out;
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i)
      if (shapes.Item(i).Connector()) out.push_back(shapes.Item(i));
    return out;
  }
  // Whether a glued line joins the two shapes, from the first to the second.
  bool Joined(const office::Shape& from, const office::Shape& to) {
    for (office::Shape& line : Lines()) {
      auto begin = line.GetConnectorFormat().BeginConnectedShape();
      auto end = line.GetConnectorFormat().EndConnectedShape();
      if (begin && end && begin->Name() == from.Name() && end->Name() == to.Name()) return true;
    }
    return false;
  }
  // The sheet's shapes and where each line's ends are glued, for a failure's message.
  std::string LinesText() {
    std::string out = "shapes:";
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) out += " '" + shapes.Item(i).Name() + "'";
    for (office::Shape& line : Lines()) {
      auto begin = line.GetConnectorFormat().BeginConnectedShape();
      auto end = line.GetConnectorFormat().EndConnectedShape();
      out += "; " + line.Name() + ": " + (begin ? begin->Name() : "-") + " -> " + (end ? end->Name() : "-");
    }
    return out;
  }

  // The office offers the object model of version 11 until the test ends.
  void TakeTheRoadBelowVersion12() {
    setenv("NIVAREL_OBJECT_MODEL", "11", 1);
    office::Application old(App().Session());
    unsetenv("NIVAREL_OBJECT_MODEL");
    ASSERT_EQ("11.0", old.Version());
    host::ExcelVersion = 11;
    belowVersion12_ = true;
  }

 private:
  bool belowVersion12_ = false;
};

}  // namespace nivarel::testing
