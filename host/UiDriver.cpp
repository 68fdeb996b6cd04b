#include "UiDriver.h"

#include <chrono>
#include <functional>

#include <nlohmann/json.hpp>
#include <thread>

#include <com/sun/star/ui/test/XUIObject.hpp>
#include <com/sun/star/ui/test/XUITest.hpp>

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>

#include "Uno.h"

namespace nivarel::host {

namespace test = css::ui::test;

// The UI-test service is driven from beside the office's thread, as a person
// at the keyboard would be: its calls don't go through the office's thread.

struct UiDriver::State {
  std::shared_ptr<HostSession> session;
  Reference<test::XUITest> ui;
};

namespace {

uno::Sequence<css::beans::PropertyValue> Args(std::initializer_list<std::pair<const char*, std::string>> list) {
  uno::Sequence<css::beans::PropertyValue> seq(static_cast<sal_Int32>(list.size()));
  sal_Int32 i = 0;
  for (const auto& [k, v] : list) {
    seq.getArray()[i].Name = OUString::createFromAscii(k);
    seq.getArray()[i].Value <<= ToOu(v);
    ++i;
  }
  return seq;
}

// The window with the focus; the office may have none (no document open).
Reference<test::XUIObject> Top(const Reference<test::XUITest>& ui) {
  auto top = ui->getTopFocusWindow();
  if (!top.is()) throw HostError(HostError::kOfficeFailure, "No office window has the focus");
  return top;
}

}  // namespace

UiDriver::UiDriver(const Application& app) : state_(std::make_shared<State>()) {
  state_->session = app.Session();
  CallHere("UiDriver", [&] {
    auto ctx = state_->session->context;
    state_->ui.set(ctx->getServiceManager()->createInstanceWithContext("org.libreoffice.uitest.UITest", ctx),
                   uno::UNO_QUERY_THROW);
  });
}

void UiDriver::SelectCell(const std::string& address) {
  CallHere("UiDriver.SelectCell", [&] {
    auto grid = Top(state_->ui)->getChild("grid_window");
    bool single = address.find(':') == std::string::npos;
    grid->executeAction("SELECT", Args({{single ? "CELL" : "RANGE", address}}));
  });
}

void UiDriver::Type(const std::string& text) {
  CallHere("UiDriver.Type", [&] {
    auto grid = Top(state_->ui)->getChild("grid_window");
    grid->executeAction("TYPE", Args({{"TEXT", text}}));
  });
}

void UiDriver::PressKey(const std::string& key) {
  CallHere("UiDriver.PressKey", [&] {
    auto top = Top(state_->ui);
    Reference<test::XUIObject> target = top;
    try {
      target = top->getChild("grid_window");
    } catch (const uno::Exception&) {
      // A dialog has the focus: the key goes to it.
    }
    target->executeAction("TYPE", Args({{"KEYCODE", key}}));
  });
}

void UiDriver::TypeIntoCell(const std::string& address, const std::string& text) {
  SelectCell(address);
  Type(text);
  PressKey("RETURN");
}

void UiDriver::RunCommand(const std::string& command, bool opensDialog) {
  CallHere("UiDriver.RunCommand", [&] {
    if (opensDialog)
      state_->ui->executeDialog(ToOu(command));
    else
      state_->ui->executeCommand(ToOu(command));
  });
}

std::string UiDriver::FocusWindowId() const {
  return CallHere("UiDriver.FocusWindow", [&] {
    auto top = Top(state_->ui);
    auto state = top->getState();
    for (const auto& p : state)
      if (p.Name == "ID") {
        OUString id;
        p.Value >>= id;
        return ToUtf8(id);
      }
    return std::string();
  });
}

void UiDriver::ClickButton(const std::string& id) {
  CallHere("UiDriver.ClickButton", [&] {
    Top(state_->ui)->getChild(ToOu(id))->executeAction("CLICK", {});
  });
}

std::string UiDriver::ControlText(const std::string& id) const {
  return CallHere("UiDriver.ControlText", [&] {
    auto state = Top(state_->ui)->getChild(ToOu(id))->getState();
    for (const auto& p : state)
      if (p.Name == "Text" || p.Name == "Label") {
        OUString t;
        p.Value >>= t;
        return ToUtf8(t);
      }
    return std::string();
  });
}

void UiDriver::TypeInto(const std::string& id, const std::string& text) {
  CallHere("UiDriver.TypeInto", [&] {
    Top(state_->ui)->getChild(ToOu(id))->executeAction("TYPE", Args({{"TEXT", text}}));
  });
}

std::vector<std::string> UiDriver::Children() const {
  return CallHere("UiDriver.Children", [&] {
    std::vector<std::string> out;
    for (const auto& c : Top(state_->ui)->getChildren()) out.push_back(ToUtf8(c));
    return out;
  });
}

namespace {

std::string StateOf(const Reference<test::XUIObject>& o, const char* name) {
  for (const auto& p : o->getState())
    if (p.Name.equalsAscii(name)) {
      OUString v;
      p.Value >>= v;
      return ToUtf8(v);
    }
  return std::string();
}

// Whether the focused window is modal; no window counts as not modal.
bool TopIsModal(const Reference<test::XUITest>& ui) {
  auto top = ui->getTopFocusWindow();
  return top.is() && StateOf(top, "Modal") == "true";
}

}  // namespace

bool UiDriver::WaitForModal(int timeoutMs, const std::string& notId) const {
  return CallHere("UiDriver.WaitForModal", [&] {
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    auto wanted = [&] {
      if (!TopIsModal(state_->ui)) return false;
      auto top = state_->ui->getTopFocusWindow();
      return top.is() && StateOf(top, "ID") != notId;
    };
    while (!wanted()) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
  });
}

bool UiDriver::WaitForNoModal(int timeoutMs) const {
  return CallHere("UiDriver.WaitForNoModal", [&] {
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (TopIsModal(state_->ui)) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
  });
}

bool UiDriver::WaitForDocument(int timeoutMs) const {
  return CallHere("UiDriver.WaitForDocument", [&] {
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
      auto top = state_->ui->getTopFocusWindow();
      if (top.is()) {
        try {
          if (top->getChild("grid_window").is()) return true;
        } catch (const uno::Exception&) {
        }
      }
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  });
}

std::string UiDriver::Title() const {
  return CallHere("UiDriver.Title", [&] { return StateOf(Top(state_->ui), "Text"); });
}

std::string UiDriver::MessageText() const {
  return CallHere("UiDriver.MessageText", [&] {
    // The message is an unnamed multi-line text among the box's children.
    auto tree = nlohmann::json::parse(ToUtf8(Top(state_->ui)->getHierarchy()));
    std::string text;
    std::function<void(const nlohmann::json&)> walk = [&](const nlohmann::json& node) {
      auto impl = node.value("ImplementationName", std::string());
      if (text.empty() && impl.find("VclMultiLineEdit") != std::string::npos) text = node.value("Text", std::string());
      if (node.contains("children"))
        for (const auto& child : node["children"]) walk(child);
    };
    walk(tree);
    return text;
  });
}

}  // namespace nivarel::host
