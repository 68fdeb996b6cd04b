#include "UiDriver.h"

#include <algorithm>
#include <chrono>
#include <functional>

#include <nlohmann/json.hpp>
#include <thread>

#include <com/sun/star/ui/test/XUIObject.hpp>
#include <com/sun/star/ui/test/XUITest.hpp>

#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/AccessibleStateType.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/accessibility/XAccessibleContext.hpp>
#include <com/sun/star/accessibility/XAccessibleStateSet.hpp>
#include <com/sun/star/accessibility/XAccessibleTable.hpp>
#include <com/sun/star/accessibility/XAccessibleText.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/MouseEvent.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XBitmap.hpp>
#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XFixedHyperlink.hpp>
#include <com/sun/star/awt/XDialog.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XToolkitRobot.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/awt/XVclContainer.hpp>
#include <com/sun/star/awt/XVclWindowPeer.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDesktop.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>

#include "Uno.h"

namespace nivarel::driver {

using namespace office;

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
    // The grid reads an address without a sheet as one on the first sheet;
    // a person means the sheet in front.
    std::string target = address;
    if (address.find('.') == std::string::npos) {
      Reference<css::frame::XModel> model(state_->session->desktop->getCurrentComponent(), uno::UNO_QUERY);
      Reference<css::sheet::XSpreadsheetView> view(model.is() ? model->getCurrentController() : nullptr, uno::UNO_QUERY);
      if (view.is()) {
        std::string sheet = ToUtf8(Reference<css::container::XNamed>(view->getActiveSheet(), uno::UNO_QUERY_THROW)->getName());
        std::string quoted = "'";
        for (char c : sheet) quoted += c == '\'' ? std::string("''") : std::string(1, c);
        quoted += "'.";
        target = single ? quoted + address : quoted + address.substr(0, address.find(':')) + ":" + quoted + address.substr(address.find(':') + 1);
      }
    }
    grid->executeAction("SELECT", Args({{single ? "CELL" : "RANGE", target}}));
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
  // From the office's own thread, as a menu click runs: a modal dialog that
  // the command opens then runs its loop where the office's windows live,
  // and message boxes over it don't fight another thread for the office.
  Call("UiDriver.RunCommand", [&] {
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

namespace {

std::string StateOf(const Reference<test::XUIObject>& o, const char* name);

}  // namespace

void UiDriver::SetBoxText(const std::string& id, const std::string& text) {
  CallHere("UiDriver.SetBoxText", [&] {
    Top(state_->ui)->getChild(ToOu(id))->executeAction("SET", Args({{"TEXT", text}}));
  });
}

std::string UiDriver::BoxText(const std::string& id) const {
  return CallHere("UiDriver.BoxText", [&] { return StateOf(Top(state_->ui)->getChild(ToOu(id)), "Text"); });
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

namespace {

namespace awt = css::awt;

Reference<awt::XToolkitRobot> Robot(const std::shared_ptr<HostSession>& session) {
  return Reference<awt::XToolkitRobot>(awt::Toolkit::create(session->context), uno::UNO_QUERY_THROW);
}

// The window that has the user's attention: a dialog or a message box.
// The office may for a moment still name a window that has just closed as
// the active one: wait for a live, visible one.
Reference<awt::XWindow> ActiveTop(const std::shared_ptr<HostSession>& session) {
  Reference<awt::XExtendedToolkit> toolkit(awt::Toolkit::create(session->context), uno::UNO_QUERY_THROW);
  auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
  for (;;) {
    Reference<awt::XWindow2> top(toolkit->getActiveTopWindow(), uno::UNO_QUERY);
    try {
      if (top.is() && top->isVisible()) return Reference<awt::XWindow>(top, uno::UNO_QUERY_THROW);
    } catch (const css::lang::DisposedException&) {
    }
    if (std::chrono::steady_clock::now() > end)
      throw HostError(HostError::kOfficeFailure, "No office window is active");
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

uno::Sequence<Reference<awt::XWindow>> ControlsOf(const Reference<awt::XWindow>& dialog) {
  Reference<awt::XVclContainer> container(dialog, uno::UNO_QUERY_THROW);
  return container->getWindows();
}

std::string Caption(const Reference<awt::XWindow>& control) {
  Reference<awt::XVclWindowPeer> peer(control, uno::UNO_QUERY);
  if (!peer.is()) return std::string();
  OUString label;
  peer->getProperty("Label") >>= label;
  if (label.isEmpty()) peer->getProperty("Text") >>= label;
  return ToUtf8(label.replaceAll("~", ""));
}

void PostKey(const Reference<awt::XToolkitRobot>& robot, const Reference<awt::XWindow>& dialog, sal_Int16 code,
             sal_Unicode ch, sal_Int16 modifiers) {
  awt::KeyEvent event;
  event.Source = dialog;
  event.KeyCode = code;
  event.KeyChar = ch;
  event.Modifiers = modifiers;
  // Both in one go on the office's thread, before it handles either: a
  // press that closes the window then also takes its release away with it.
  // Posted one by one from beside, the release could go to a window that the
  // press had already closed, which brings the office down.
  Call("UiDriver.Key", [&] {
    robot->keyPress(event);
    robot->keyRelease(event);
  });
}

// Presses and releases the left button at a point of a window, with pauses,
// as a hand would.
void ClickAt(const Reference<awt::XToolkitRobot>& robot, const Reference<awt::XWindow>& window, sal_Int32 x,
             sal_Int32 y) {
  awt::MouseEvent event;
  event.Source = window;
  event.X = x;
  event.Y = y;
  event.Buttons = awt::MouseButton::LEFT;
  event.ClickCount = 1;
  robot->mouseMove(event);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  robot->mousePress(event);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  robot->mouseRelease(event);
}

// The key code that a character's key sends, and whether it needs Shift.
sal_Int16 KeyOf(sal_Unicode c, bool& shift) {
  shift = false;
  if (c >= 'a' && c <= 'z') return static_cast<sal_Int16>(awt::Key::A + (c - 'a'));
  if (c >= 'A' && c <= 'Z') {
    shift = true;
    return static_cast<sal_Int16>(awt::Key::A + (c - 'A'));
  }
  if (c >= '0' && c <= '9') return static_cast<sal_Int16>(awt::Key::NUM0 + (c - '0'));
  if (c == ' ') return awt::Key::SPACE;
  return 0;
}

}  // namespace

std::string UiDriver::ActiveTitle() const {
  return CallHere("UiDriver.ActiveTitle", [&] {
    Reference<awt::XExtendedToolkit> toolkit(awt::Toolkit::create(state_->session->context), uno::UNO_QUERY_THROW);
    Reference<css::accessibility::XAccessible> top(toolkit->getActiveTopWindow(), uno::UNO_QUERY);
    try {
      // A window on its way down may have no context left.
      Reference<css::accessibility::XAccessibleContext> context;
      if (top.is()) context = top->getAccessibleContext();
      return context.is() ? ToUtf8(context->getAccessibleName()) : std::string();
    } catch (const css::lang::DisposedException&) {
      return std::string();  // the window went meanwhile
    }
  });
}

std::string UiDriver::DialogTitle() const {
  return CallHere("UiDriver.DialogTitle", [&] {
    Reference<awt::XExtendedToolkit> toolkit(awt::Toolkit::create(state_->session->context), uno::UNO_QUERY_THROW);
    Reference<awt::XDialog> dialog(toolkit->getActiveTopWindow(), uno::UNO_QUERY);
    return dialog.is() ? ToUtf8(dialog->getTitle()) : std::string();
  });
}

namespace {

// The controls under an accessible object, with their places on the screen:
// the accessibility tree reaches the text boxes, which the office keeps in
// frames of their own.
void CollectControls(const Reference<css::accessibility::XAccessibleContext>& parent,
                     std::vector<std::pair<awt::Point, UiDriver::DialogControl>>& found) {
  namespace role = css::accessibility::AccessibleRole;
  namespace state = css::accessibility::AccessibleStateType;
  sal_Int32 count = parent->getAccessibleChildCount();
  for (sal_Int32 i = 0; i < count; ++i) {
    auto child = parent->getAccessibleChild(i);
    auto context = child.is() ? child->getAccessibleContext() : nullptr;
    if (!context.is()) continue;
    UiDriver::DialogControl control;
    switch (context->getAccessibleRole()) {
      case role::LABEL: control.kind = "text"; break;
      case role::TEXT: control.kind = "edit"; break;
      case role::SCROLL_PANE: {
        // A text box of many lines shows itself as a pane named by its text,
        // which holds only its scroll bars and empty panels.
        bool parts = false;
        for (sal_Int32 k = 0, n = context->getAccessibleChildCount(); k < n && !parts; ++k) {
          auto part = context->getAccessibleChild(k);
          auto inner = part.is() ? part->getAccessibleContext() : nullptr;
          sal_Int16 kind = inner.is() ? inner->getAccessibleRole() : role::SCROLL_BAR;
          parts = (kind != role::SCROLL_BAR && kind != role::PANEL && kind != role::FILLER) ||
                  (inner.is() && inner->getAccessibleChildCount() > 0);
        }
        if (parts) {
          CollectControls(context, found);
          continue;
        }
        control.kind = "edit";
        break;
      }
      case role::PUSH_BUTTON: control.kind = "button"; break;
      case role::CHECK_BOX: control.kind = "check"; break;
      case role::RADIO_BUTTON: control.kind = "radio"; break;
      case role::SCROLL_BAR: continue;
      case role::LIST_ITEM: control.kind = "item"; break;
      case role::COMBO_BOX: {
        // A drop-down list shows its chosen entry in a part of its own; its
        // entries, in a list part, are not read (a long list takes long).
        control.kind = "list";
        for (sal_Int32 k = 0, n = context->getAccessibleChildCount(); k < n && control.text.empty(); ++k) {
          auto part = context->getAccessibleChild(k);
          auto shown = part.is() ? part->getAccessibleContext() : nullptr;
          if (!shown.is() || shown->getAccessibleRole() == role::LIST) continue;
          Reference<css::accessibility::XAccessibleText> text(shown, uno::UNO_QUERY);
          control.text = ToUtf8(text.is() ? text->getText() : shown->getAccessibleName());
        }
        break;
      }
      default:
        CollectControls(context, found);
        continue;
    }
    Reference<css::accessibility::XAccessibleText> text(context, uno::UNO_QUERY);
    if (control.kind == "item")
      control.text = ToUtf8(context->getAccessibleName());
    else if (control.kind != "list")
      control.text = ToUtf8(text.is() ? text->getText() : context->getAccessibleName());
    auto states = context->getAccessibleStateSet();
    if (states.is()) {
      control.checked = states->contains(state::CHECKED);
      control.selected = states->contains(state::SELECTED);
      control.enabled = states->contains(state::ENABLED);
      control.focused = states->contains(state::FOCUSED);
    }
    Reference<css::accessibility::XAccessibleComponent> component(context, uno::UNO_QUERY);
    if (control.kind == "text" && component.is()) control.color = component->getForeground() & 0xFFFFFF;
    found.emplace_back(component.is() ? component->getLocationOnScreen() : awt::Point(), control);
  }
}

}  // namespace

bool UiDriver::DialogFocused() const {
  return CallHere("UiDriver.DialogFocused", [&] {
    std::function<bool(const Reference<css::accessibility::XAccessibleContext>&)> walk =
        [&](const Reference<css::accessibility::XAccessibleContext>& parent) {
          sal_Int32 count = parent->getAccessibleChildCount();
          for (sal_Int32 i = 0; i < count && i < 500; ++i) {
            auto child = parent->getAccessibleChild(i);
            auto context = child.is() ? child->getAccessibleContext() : nullptr;
            if (!context.is()) continue;
            auto states = context->getAccessibleStateSet();
            if (states.is() && states->contains(css::accessibility::AccessibleStateType::FOCUSED)) return true;
            // A list's entries are not where the focus rests.
            if (context->getAccessibleRole() != css::accessibility::AccessibleRole::LIST && walk(context)) return true;
          }
          return false;
        };
    try {
      Reference<css::accessibility::XAccessible> top(ActiveTop(state_->session), uno::UNO_QUERY_THROW);
      return walk(top->getAccessibleContext());
    } catch (...) {
      return false;  // the window went meanwhile
    }
  });
}

std::vector<UiDriver::DialogControl> UiDriver::DialogControls() const {
  return CallHere("UiDriver.DialogControls", [&] {
    std::vector<std::pair<awt::Point, DialogControl>> found;
    // Read from beside the office's thread, a control can go while it is
    // being read (a dialog showing another page): read again.
    for (int attempt = 1;; ++attempt) {
      try {
        found.clear();
        Reference<css::accessibility::XAccessible> top(ActiveTop(state_->session), uno::UNO_QUERY_THROW);
        CollectControls(top->getAccessibleContext(), found);
        break;
      } catch (const uno::Exception&) {
        if (attempt == 5) throw;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
      }
    }
    // As a person reads them: by lines from the top, each line from the left.
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
      return a.first.Y != b.first.Y ? a.first.Y < b.first.Y : a.first.X < b.first.X;
    });
    std::vector<DialogControl> out;
    for (auto& f : found) {
      f.second.left = f.first.X;
      out.push_back(f.second);
    }
    return out;
  });
}

void UiDriver::TypeInDialog(const std::string& text) {
  CallHere("UiDriver.TypeInDialog", [&] {
    auto dialog = ActiveTop(state_->session);
    auto robot = Robot(state_->session);
    OUString chars = ToOu(text);
    for (sal_Int32 i = 0; i < chars.getLength(); ++i) {
      bool shift = false;
      sal_Int16 code = KeyOf(chars[i], shift);
      PostKey(robot, dialog, code, chars[i], shift ? awt::KeyModifier::SHIFT : 0);
    }
  });
}

void UiDriver::PressDialogKey(const std::string& key) {
  CallHere("UiDriver.PressDialogKey", [&] {
    sal_Int16 modifiers = 0;
    std::string rest = key;
    for (;;) {
      if (rest.rfind("ALT+", 0) == 0) {
        modifiers |= awt::KeyModifier::MOD2;
        rest = rest.substr(4);
      } else if (rest.rfind("SHIFT+", 0) == 0) {
        modifiers |= awt::KeyModifier::SHIFT;
        rest = rest.substr(6);
      } else if (rest.rfind("CTRL+", 0) == 0) {
        modifiers |= awt::KeyModifier::MOD1;
        rest = rest.substr(5);
      } else {
        break;
      }
    }
    sal_Int16 code = 0;
    sal_Unicode ch = 0;
    if (rest == "RETURN") {
      code = awt::Key::RETURN;
      ch = '\r';
    } else if (rest == "ESC") {
      code = awt::Key::ESCAPE;
    } else if (rest == "TAB") {
      code = awt::Key::TAB;
    } else if (rest == "SPACE") {
      code = awt::Key::SPACE;
      ch = ' ';
    } else if (rest == "DOWN") {
      code = awt::Key::DOWN;
    } else if (rest == "UP") {
      code = awt::Key::UP;
    } else if (rest == "BACKSPACE") {
      code = awt::Key::BACKSPACE;
    } else if (rest.size() == 1) {
      bool shift = false;
      ch = static_cast<sal_Unicode>(std::tolower(static_cast<unsigned char>(rest[0])));
      code = KeyOf(ch, shift);
    }
    if (code == 0) throw HostError(HostError::kInvalidArgument, "Unknown key " + key);
    PostKey(Robot(state_->session), ActiveTop(state_->session), code, ch, modifiers);
  });
}

namespace {

using AccessibleContext = Reference<css::accessibility::XAccessibleContext>;

// Walks the accessible objects showing under parent, depth first; take
// answers true for one it takes, whose own children are then not walked.
void WalkShowing(const AccessibleContext& parent, const std::function<bool(const AccessibleContext&)>& take) {
  sal_Int32 count = parent->getAccessibleChildCount();
  for (sal_Int32 i = 0; i < count; ++i) {
    auto child = parent->getAccessibleChild(i);
    auto context = child.is() ? child->getAccessibleContext() : nullptr;
    if (!context.is()) continue;
    auto states = context->getAccessibleStateSet();
    if (!states.is() || !states->contains(css::accessibility::AccessibleStateType::SHOWING)) continue;
    if (!take(context)) WalkShowing(context, take);
  }
}

}  // namespace

void UiDriver::ClickInDialog(const std::string& caption) {
  CallHere("UiDriver.ClickInDialog", [&] {
    auto dialog = ActiveTop(state_->session);
    for (const auto& window : ControlsOf(dialog)) {
      bool clickable = Reference<awt::XButton>(window, uno::UNO_QUERY).is() ||
                       Reference<awt::XFixedHyperlink>(window, uno::UNO_QUERY).is() ||
                       Reference<awt::XCheckBox>(window, uno::UNO_QUERY).is() ||
                       Reference<awt::XRadioButton>(window, uno::UNO_QUERY).is();
      if (!clickable || Caption(window) != caption) continue;
      // Move, press and release with pauses, as a hand would: a button
      // only clicks when the release ends the press that it tracked.
      // Buttons take a click anywhere; check boxes, options and links only on
      // their box and caption, which begin at the left.
      auto size = window->getPosSize();
      // (A check box's peer is a button too.)
      bool button = !Reference<awt::XCheckBox>(window, uno::UNO_QUERY).is() &&
                    !Reference<awt::XRadioButton>(window, uno::UNO_QUERY).is() &&
                    !Reference<awt::XFixedHyperlink>(window, uno::UNO_QUERY).is();
      ClickAt(Robot(state_->session), window, button ? size.Width / 2 : std::min<sal_Int32>(6, size.Width / 2),
              size.Height / 2);
      return;
    }
    // The office's own dialogs keep their controls out of the toolkit's
    // list: find the control in the accessibility tree and click its middle
    // through the dialog, which hands the press to the control under it.
    Reference<css::accessibility::XAccessible> top(dialog, uno::UNO_QUERY_THROW);
    auto context = top->getAccessibleContext();
    Reference<css::accessibility::XAccessibleComponent> found;
    WalkShowing(context, [&](const AccessibleContext& control) {
      namespace role = css::accessibility::AccessibleRole;
      if (found.is()) return true;
      sal_Int16 r = control->getAccessibleRole();
      if (r != role::PUSH_BUTTON && r != role::TOGGLE_BUTTON && r != role::CHECK_BOX && r != role::RADIO_BUTTON)
        return false;
      if (ToUtf8(control->getAccessibleName().replaceAll("~", "")) == caption) found.set(control, uno::UNO_QUERY);
      return found.is();
    });
    if (!found.is()) throw HostError(HostError::kNotFound, "The dialog has no control '" + caption + "'");
    Reference<css::accessibility::XAccessibleComponent> frame(context, uno::UNO_QUERY_THROW);
    awt::Point origin = frame->getLocationOnScreen(), at = found->getLocationOnScreen();
    awt::Size size = found->getSize();
    ClickAt(Robot(state_->session), dialog, at.X - origin.X + size.Width / 2, at.Y - origin.Y + size.Height / 2);
  });
}

namespace {

// The pictures showing under parent, with their places in their parent.
void CollectPictures(const AccessibleContext& parent, std::vector<awt::Rectangle>& found) {
  WalkShowing(parent, [&](const AccessibleContext& context) {
    Reference<css::accessibility::XAccessibleComponent> component(context, uno::UNO_QUERY);
    if (context->getAccessibleRole() != css::accessibility::AccessibleRole::ICON || !component.is()) return false;
    found.push_back(component->getBounds());
    return true;
  });
}

}  // namespace

namespace {

// The first entry of a list under parent that reads text and shows.
Reference<css::accessibility::XAccessibleComponent> FindItem(const AccessibleContext& parent, const OUString& text) {
  Reference<css::accessibility::XAccessibleComponent> found;
  WalkShowing(parent, [&](const AccessibleContext& context) {
    if (found.is()) return true;
    if (context->getAccessibleRole() != css::accessibility::AccessibleRole::LIST_ITEM ||
        context->getAccessibleName() != text)
      return false;
    found.set(context, uno::UNO_QUERY);
    return true;
  });
  return found;
}

}  // namespace

void UiDriver::ClickItem(const std::string& text) {
  CallHere("UiDriver.ClickItem", [&] {
    auto dialog = ActiveTop(state_->session);
    Reference<css::accessibility::XAccessible> top(dialog, uno::UNO_QUERY_THROW);
    auto context = top->getAccessibleContext();
    auto item = FindItem(context, ToOu(text));
    if (!item.is()) throw HostError(HostError::kNotFound, "The dialog shows no entry '" + text + "'");
    // The entry's middle, in the dialog's coordinates, which its controls' places are in.
    Reference<css::accessibility::XAccessibleComponent> frame(context, uno::UNO_QUERY_THROW);
    awt::Point origin = frame->getLocationOnScreen(), at = item->getLocationOnScreen();
    awt::Size size = item->getSize();
    sal_Int32 x = at.X - origin.X + size.Width / 2, y = at.Y - origin.Y + size.Height / 2;
    // The list is the smallest shown window of the dialog under that point.
    Reference<awt::XWindow> list;
    awt::Rectangle listArea;
    for (const auto& window : ControlsOf(dialog)) {
      Reference<awt::XWindow2> shown(window, uno::UNO_QUERY);
      if (!shown.is() || !shown->isVisible()) continue;
      awt::Rectangle area = window->getPosSize();
      if (x < area.X || y < area.Y || x >= area.X + area.Width || y >= area.Y + area.Height) continue;
      if (!list.is() || area.Width * area.Height < listArea.Width * listArea.Height) {
        list = window;
        listArea = area;
      }
    }
    if (!list.is()) throw HostError(HostError::kNotFound, "The entry '" + text + "' is in no list of the dialog");
    ClickAt(Robot(state_->session), list, x - listArea.X, y - listArea.Y);
  });
}

namespace {

// The scroll bars showing under parent, with their places on the screen.
void CollectScrollBars(const AccessibleContext& parent, std::vector<awt::Rectangle>& found) {
  WalkShowing(parent, [&](const AccessibleContext& context) {
    Reference<css::accessibility::XAccessibleComponent> component(context, uno::UNO_QUERY);
    if (context->getAccessibleRole() != css::accessibility::AccessibleRole::SCROLL_BAR || !component.is())
      return false;
    awt::Point at = component->getLocationOnScreen();
    awt::Size size = component->getSize();
    found.push_back({at.X, at.Y, size.Width, size.Height});
    return true;
  });
}

}  // namespace

void UiDriver::ClickScrollBar(int index, bool forward) {
  CallHere("UiDriver.ClickScrollBar", [&] {
    auto dialog = ActiveTop(state_->session);
    Reference<css::accessibility::XAccessible> top(dialog, uno::UNO_QUERY_THROW);
    auto context = top->getAccessibleContext();
    std::vector<awt::Rectangle> bars;
    CollectScrollBars(context, bars);
    std::stable_sort(bars.begin(), bars.end(),
                     [](const auto& a, const auto& b) { return a.Y != b.Y ? a.Y < b.Y : a.X < b.X; });
    if (index < 0 || index >= static_cast<int>(bars.size()))
      throw HostError(HostError::kNotFound, "The dialog shows no scroll bar " + std::to_string(index));
    Reference<css::accessibility::XAccessibleComponent> frame(context, uno::UNO_QUERY_THROW);
    awt::Point origin = frame->getLocationOnScreen();
    awt::Rectangle bar = bars[index];
    bar.X -= origin.X;
    bar.Y -= origin.Y;
    for (const auto& window : ControlsOf(dialog)) {
      awt::Rectangle at = window->getPosSize();
      if (at.X != bar.X || at.Y != bar.Y || at.Width != bar.Width || at.Height != bar.Height) continue;
      // The arrows are square, at the bar's two ends.
      bool vertical = bar.Height >= bar.Width;
      sal_Int32 arrow = std::min(bar.Width, bar.Height) / 2;
      sal_Int32 x = vertical ? bar.Width / 2 : (forward ? bar.Width - arrow : arrow);
      sal_Int32 y = vertical ? (forward ? bar.Height - arrow : arrow) : bar.Height / 2;
      ClickAt(Robot(state_->session), window, x, y);
      return;
    }
    throw HostError(HostError::kNotFound, "The scroll bar " + std::to_string(index) + " has no window of its own");
  });
}

namespace {

// The window of the index-th picture shown in dialog (in reading order, from 0).
Reference<awt::XWindow> PictureWindow(const Reference<awt::XWindow>& dialog, int index, awt::Rectangle& area) {
  // The toolkit's windows do not say which of them shows a picture; the
  // accessibility tree does, with the place of each in the dialog.
  std::vector<awt::Rectangle> pictures;
  Reference<css::accessibility::XAccessible> top(dialog, uno::UNO_QUERY_THROW);
  CollectPictures(top->getAccessibleContext(), pictures);
  std::stable_sort(pictures.begin(), pictures.end(),
                   [](const auto& a, const auto& b) { return a.Y != b.Y ? a.Y < b.Y : a.X < b.X; });
  if (index < 0 || index >= static_cast<int>(pictures.size()))
    throw HostError(HostError::kNotFound, "The dialog shows no picture " + std::to_string(index));
  area = pictures[index];
  for (const auto& window : ControlsOf(dialog)) {
    awt::Rectangle at = window->getPosSize();
    if (at.X == area.X && at.Y == area.Y && at.Width == area.Width && at.Height == area.Height) return window;
  }
  throw HostError(HostError::kNotFound, "The picture " + std::to_string(index) + " has no window of its own");
}

}  // namespace

void UiDriver::ClickPicture(int index, double x, double y) {
  CallHere("UiDriver.ClickPicture", [&] {
    awt::Rectangle area;
    auto window = PictureWindow(ActiveTop(state_->session), index, area);
    ClickAt(Robot(state_->session), window, static_cast<sal_Int32>(x * area.Width),
            static_cast<sal_Int32>(y * area.Height));
  });
}

void UiDriver::SavePictureShown(int index, const std::string& path) {
  CallHere("UiDriver.SavePictureShown", [&] {
    awt::Rectangle area;
    auto window = PictureWindow(ActiveTop(state_->session), index, area);
    // The pixels the window holds on the screen, as drawn.
    Reference<awt::XDevice> device(window, uno::UNO_QUERY_THROW);
    Reference<awt::XBitmap> pixels = device->createBitmap(0, 0, area.Width, area.Height);
    auto provider = css::graphic::GraphicProvider::create(state_->session->context);
    uno::Sequence<css::beans::PropertyValue> from(1);
    from.getArray()[0].Name = "Bitmap";
    from.getArray()[0].Value <<= pixels;
    Reference<css::graphic::XGraphic> graphic = provider->queryGraphic(from);
    uno::Sequence<css::beans::PropertyValue> to(2);
    to.getArray()[0].Name = "URL";
    to.getArray()[0].Value <<= ToOu("file://" + std::filesystem::absolute(path).string());
    to.getArray()[1].Name = "MimeType";
    to.getArray()[1].Value <<= OUString("image/png");
    provider->storeGraphic(graphic, to);
  });
}

namespace {

// The 0-based column and row of an A1 address ("E7" is 4, 6).
bool ParseCell(const std::string& address, sal_Int32& column, sal_Int32& row) {
  size_t i = 0;
  column = 0;
  while (i < address.size() && std::isalpha(static_cast<unsigned char>(address[i])))
    column = column * 26 + (std::toupper(static_cast<unsigned char>(address[i++])) - 'A' + 1);
  if (i == 0 || i == address.size()) return false;
  row = 0;
  for (; i < address.size(); ++i) {
    if (!std::isdigit(static_cast<unsigned char>(address[i]))) return false;
    row = row * 10 + (address[i] - '0');
  }
  --column;
  --row;
  return column >= 0 && row >= 0;
}

// The sheet's cell table under a window's accessible object: its cells can
// say where they stand on the screen.
Reference<css::accessibility::XAccessibleTable> FindCellTable(const AccessibleContext& parent) {
  namespace role = css::accessibility::AccessibleRole;
  sal_Int32 count = parent->getAccessibleChildCount();
  for (sal_Int32 i = 0; i < count && i < 200; ++i) {
    auto child = parent->getAccessibleChild(i);
    auto context = child.is() ? child->getAccessibleContext() : nullptr;
    if (!context.is()) continue;
    if (context->getAccessibleRole() == role::TABLE) {
      Reference<css::accessibility::XAccessibleTable> table(context, uno::UNO_QUERY);
      if (table.is()) return table;
      continue;
    }
    if (auto found = FindCellTable(context); found.is()) return found;
  }
  return nullptr;
}

}  // namespace

void UiDriver::ClickCell(const std::string& address) {
  CallHere("UiDriver.ClickCell", [&] {
    sal_Int32 column = 0, row = 0;
    if (!ParseCell(address, column, row)) throw HostError(HostError::kInvalidArgument, "Not a cell: " + address);
    Reference<css::frame::XModel> model(state_->session->desktop->getCurrentComponent(), uno::UNO_QUERY);
    if (!model.is()) throw HostError(HostError::kOfficeFailure, "No document is in front");
    auto window = model->getCurrentController()->getFrame()->getComponentWindow();
    Reference<css::accessibility::XAccessible> accessible(window, uno::UNO_QUERY_THROW);
    auto context = accessible->getAccessibleContext();
    auto table = FindCellTable(context);
    if (!table.is()) throw HostError(HostError::kNotFound, "The document shows no cell grid");
    auto cell = table->getAccessibleCellAt(row, column);
    Reference<css::accessibility::XAccessibleComponent> at(cell->getAccessibleContext(), uno::UNO_QUERY_THROW);
    Reference<css::accessibility::XAccessibleComponent> frame(context, uno::UNO_QUERY_THROW);
    awt::Point origin = frame->getLocationOnScreen(), corner = at->getLocationOnScreen();
    awt::Size size = at->getSize();
    // The robot hands the press to whichever of the frame's windows lies under the point.
    ClickAt(Robot(state_->session), window, corner.X - origin.X + size.Width / 2,
            corner.Y - origin.Y + size.Height / 2);
  });
}

}  // namespace nivarel::driver
