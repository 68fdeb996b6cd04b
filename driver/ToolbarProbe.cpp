#include "ToolbarProbe.h"

#include <chrono>
#include <functional>
#include <thread>

#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/accessibility/AccessibleStateType.hpp>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleContext.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/MouseEvent.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XToolkitRobot.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XFramesSupplier.hpp>
#include <com/sun/star/frame/XLayoutManager.hpp>
#include <com/sun/star/frame/theUICommandDescription.hpp>
#include <com/sun/star/ui/XUIConfigurationManager.hpp>
#include <com/sun/star/ui/XUIElement.hpp>
#include <com/sun/star/ui/XUIElementSettings.hpp>
#include <com/sun/star/ui/ItemType.hpp>
#include <com/sun/star/ui/theModuleUIConfigurationManagerSupplier.hpp>

#include "Uno.h"

namespace nivarel::driver {

using namespace office;
namespace a11y = css::accessibility;

namespace {

// The layout manager of the spreadsheet window in front: the desktop's
// current frame, else the last spreadsheet window.
Reference<css::frame::XLayoutManager> LayoutInFront(const HostSession& s) {
  Reference<css::frame::XFrame> frame = s.desktop->getCurrentFrame();
  if (!frame.is()) {
    Reference<css::frame::XFramesSupplier> desktop(s.desktop, uno::UNO_QUERY_THROW);
    Reference<css::container::XIndexAccess> frames(desktop->getFrames(), uno::UNO_QUERY_THROW);
    for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
      Reference<css::frame::XFrame> f(frames->getByIndex(i), uno::UNO_QUERY);
      auto c = f.is() ? f->getController() : nullptr;
      if (c.is() && Reference<css::sheet::XSpreadsheetDocument>(c->getModel(), uno::UNO_QUERY).is()) frame = f;
    }
  }
  if (!frame.is()) throw HostError(HostError::kOfficeFailure, "No window is in front");
  Reference<css::beans::XPropertySet> props(frame, uno::UNO_QUERY_THROW);
  return Reference<css::frame::XLayoutManager>(props->getPropertyValue("LayoutManager"), uno::UNO_QUERY_THROW);
}

Reference<a11y::XAccessibleContext> ContextOf(const Reference<css::ui::XUIElement>& element) {
  Reference<a11y::XAccessible> window(element->getRealInterface(), uno::UNO_QUERY);
  return window.is() ? window->getAccessibleContext() : nullptr;
}

// The toolbars that the window in front shows titled title.
std::vector<Reference<css::ui::XUIElement>> Titled(const HostSession& s, const std::string& title) {
  std::vector<Reference<css::ui::XUIElement>> out;
  auto layout = LayoutInFront(s);
  for (const auto& element : layout->getElements()) {
    if (!element.is() || !element->getResourceURL().startsWith("private:resource/toolbar/")) continue;
    if (!layout->isElementVisible(element->getResourceURL())) continue;
    auto context = ContextOf(element);
    if (context.is() && ToUtf8(context->getAccessibleName()) == title) out.push_back(element);
  }
  return out;
}

Reference<css::ui::XUIElement> First(const HostSession& s, const std::string& title) {
  auto all = Titled(s, title);
  if (all.empty()) throw HostError(HostError::kNotFound, "No toolbar titled " + title);
  return all.front();
}

uno::Any ValueOf(const uno::Sequence<css::beans::PropertyValue>& props, const char* name) {
  for (const auto& p : props)
    if (p.Name.equalsAscii(name)) return p.Value;
  return {};
}

void Collect(const Reference<css::container::XIndexAccess>& items, const std::string& menu,
             std::vector<ToolbarCommand>& out, const Reference<css::ui::XUIConfigurationManager>& ui) {
  bool separator = false;
  for (sal_Int32 i = 0; items.is() && i < items->getCount(); ++i) {
    uno::Sequence<css::beans::PropertyValue> item;
    items->getByIndex(i) >>= item;
    sal_Int16 type = css::ui::ItemType::DEFAULT;
    ValueOf(item, "Type") >>= type;
    if (type != css::ui::ItemType::DEFAULT) {
      separator = true;
      continue;
    }
    OUString command, label;
    ValueOf(item, "CommandURL") >>= command;
    ValueOf(item, "Label") >>= label;
    Reference<css::container::XIndexAccess> sub;
    ValueOf(item, "ItemDescriptorContainer") >>= sub;
    // A drop-down: the office shows the menu of the configuration that the
    // button's command names.
    if (!sub.is() && command.startsWith("private:resource/menubar/") && ui->hasSettings(command))
      sub = ui->getSettings(command, false);
    std::string caption = ToUtf8(label);
    if (sub.is())
      Collect(sub, menu.empty() ? caption : menu + "/" + caption, out, ui);
    else
      out.push_back({menu, caption, ToUtf8(command), separator});
    separator = false;
  }
}

}  // namespace

std::vector<std::string> ToolbarsTitled(const Application& app, const std::string& title) {
  return Call("ToolbarsTitled", [&] {
    std::vector<std::string> out;
    for (const auto& element : Titled(*app.Session(), title)) out.push_back(ToUtf8(element->getResourceURL()));
    return out;
  });
}

std::vector<ToolbarButton> ToolbarButtons(const Application& app, const std::string& title) {
  return Call("ToolbarButtons", [&] {
    std::vector<ToolbarButton> out;
    auto all = Titled(*app.Session(), title);
    if (all.empty()) return out;
    auto bar = ContextOf(all.front());
    for (sal_Int32 i = 0, n = bar->getAccessibleChildCount(); i < n; ++i) {
      auto child = bar->getAccessibleChild(i);
      auto context = child.is() ? child->getAccessibleContext() : nullptr;
      if (!context.is() || context->getAccessibleRole() == a11y::AccessibleRole::SEPARATOR) continue;
      ToolbarButton button;
      button.caption = ToUtf8(context->getAccessibleName());
      auto states = context->getAccessibleStateSet();
      button.enabled = states.is() && states->contains(a11y::AccessibleStateType::ENABLED);
      sal_Int16 role = context->getAccessibleRole();
      button.dropDown = role == a11y::AccessibleRole::BUTTON_MENU || role == a11y::AccessibleRole::BUTTON_DROPDOWN;
      out.push_back(button);
    }
    return out;
  });
}

std::vector<ToolbarCommand> ToolbarCommands(const Application& app, const std::string& title) {
  return Call("ToolbarCommands", [&] {
    std::vector<ToolbarCommand> out;
    auto element = First(*app.Session(), title);
    Reference<css::ui::XUIElementSettings> settings(element, uno::UNO_QUERY_THROW);
    auto ui = css::ui::theModuleUIConfigurationManagerSupplier::get(app.Session()->context)
                  ->getUIConfigurationManager("com.sun.star.sheet.SpreadsheetDocument");
    Collect(settings->getSettings(false), "", out, ui);
    return out;
  });
}

ToolbarPlace PlaceOfToolbar(const Application& app, const std::string& title) {
  return Call("PlaceOfToolbar", [&] {
    ToolbarPlace place;
    auto element = First(*app.Session(), title);
    OUString url = element->getResourceURL();
    auto layout = LayoutInFront(*app.Session());
    place.visible = layout->isElementVisible(url);
    place.floating = layout->isElementFloating(url);
    // Where a person sees it on the screen.
    Reference<a11y::XAccessibleComponent> component(ContextOf(element), uno::UNO_QUERY_THROW);
    auto pos = component->getLocationOnScreen();
    auto size = component->getSize();
    place.x = pos.X;
    place.y = pos.Y;
    place.width = size.Width;
    place.height = size.Height;
    return place;
  });
}

void FloatToolbar(const Application& app, const std::string& title, int x, int y) {
  Call("FloatToolbar", [&] {
    auto element = First(*app.Session(), title);
    OUString url = element->getResourceURL();
    auto layout = LayoutInFront(*app.Session());
    // The office may lock docked toolbars in place: the user unlocks them first.
    layout->unlockWindow(url);
    layout->floatWindow(url);
    layout->setElementPos(url, css::awt::Point(x, y));

  });
}

namespace {

// The entries of an open menu, read through its accessibility tree.
void MenuEntries(const Reference<a11y::XAccessibleContext>& menu, std::vector<std::string>& out) {
  for (sal_Int32 i = 0, n = menu->getAccessibleChildCount(); i < n; ++i) {
    auto child = menu->getAccessibleChild(i);
    auto context = child.is() ? child->getAccessibleContext() : nullptr;
    if (!context.is()) continue;
    sal_Int16 role = context->getAccessibleRole();
    if (role == a11y::AccessibleRole::MENU_ITEM || role == a11y::AccessibleRole::MENU ||
        role == a11y::AccessibleRole::CHECK_MENU_ITEM || role == a11y::AccessibleRole::RADIO_MENU_ITEM)
      out.push_back(ToUtf8(context->getAccessibleName()));
  }
}

// Finds the open popup menu among the office's top windows.
Reference<a11y::XAccessibleContext> OpenMenu(const HostSession& s) {
  Reference<css::awt::XExtendedToolkit> toolkit(css::awt::Toolkit::create(s.context), uno::UNO_QUERY_THROW);
  for (sal_Int32 i = 0, n = toolkit->getTopWindowCount(); i < n; ++i) {
    Reference<a11y::XAccessible> window(toolkit->getTopWindow(i), uno::UNO_QUERY);
    auto context = window.is() ? window->getAccessibleContext() : nullptr;
    if (!context.is()) continue;
    sal_Int16 role = context->getAccessibleRole();
    if (role == a11y::AccessibleRole::POPUP_MENU || role == a11y::AccessibleRole::MENU) return context;
    for (sal_Int32 k = 0, m = context->getAccessibleChildCount(); k < m; ++k) {
      auto child = context->getAccessibleChild(k);
      auto inner = child.is() ? child->getAccessibleContext() : nullptr;
      if (inner.is() && inner->getAccessibleRole() == a11y::AccessibleRole::POPUP_MENU) return inner;
    }
  }
  return nullptr;
}

}  // namespace

std::vector<std::string> DropDownEntries(const Application& app, const std::string& title, const std::string& caption) {
  auto session = app.Session();
  Reference<css::awt::XWindow> bar;
  css::awt::Point at;
  CallHere("DropDownEntries", [&] {
    auto element = First(*session, title);
    bar.set(element->getRealInterface(), uno::UNO_QUERY_THROW);
    auto context = ContextOf(element);
    Reference<a11y::XAccessibleComponent> barPlace(context, uno::UNO_QUERY_THROW);
    for (sal_Int32 i = 0, n = context->getAccessibleChildCount(); i < n; ++i) {
      auto child = context->getAccessibleChild(i)->getAccessibleContext();
      if (ToUtf8(child->getAccessibleName()) != caption) continue;
      Reference<a11y::XAccessibleComponent> button(child, uno::UNO_QUERY_THROW);
      auto origin = barPlace->getLocationOnScreen(), corner = button->getLocationOnScreen();
      auto size = button->getSize();
      at = css::awt::Point(corner.X - origin.X + size.Width / 2, corner.Y - origin.Y + size.Height / 2);
      return;
    }
    throw HostError(HostError::kNotFound, "No button " + caption);
  });
  // A person's click on the button: the office opens the menu and waits in
  // it for the next key or click.
  Reference<css::awt::XToolkitRobot> robot(css::awt::Toolkit::create(session->context), uno::UNO_QUERY_THROW);
  css::awt::MouseEvent click;
  click.Source = bar;
  click.X = at.X;
  click.Y = at.Y;
  click.Buttons = css::awt::MouseButton::LEFT;
  click.ClickCount = 1;
  robot->mouseMove(click);
  robot->mousePress(click);
  robot->mouseRelease(click);
  std::vector<std::string> out;
  Reference<a11y::XAccessibleContext> menu;
  for (int i = 0; i < 100 && !menu.is(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    menu = CallHere("DropDownEntries", [&] { return OpenMenu(*session); });
  }
  if (!menu.is()) throw HostError(HostError::kNotFound, "No menu dropped down under " + caption);
  CallHere("DropDownEntries", [&] { MenuEntries(menu, out); });
  // Escape closes the menu again.
  css::awt::KeyEvent escape;
  escape.Source = bar;
  escape.KeyCode = css::awt::Key::ESCAPE;
  Call("DropDownEntries", [&] {
    robot->keyPress(escape);
    robot->keyRelease(escape);
  });
  for (int i = 0; i < 100 && CallHere("DropDownEntries", [&] { return OpenMenu(*session).is(); }); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  return out;
}

std::string CommandTooltip(const Application& app, const std::string& command) {
  return Call("CommandTooltip", [&] {
    Reference<css::container::XNameAccess> modules = css::frame::theUICommandDescription::get(app.Session()->context);
    Reference<css::container::XNameAccess> commands(modules->getByName("com.sun.star.sheet.SpreadsheetDocument"),
                                                    uno::UNO_QUERY_THROW);
    uno::Sequence<css::beans::PropertyValue> description;
    if (commands->hasByName(ToOu(command))) commands->getByName(ToOu(command)) >>= description;
    OUString tooltip;
    ValueOf(description, "TooltipLabel") >>= tooltip;
    return ToUtf8(tooltip);
  });
}

bool OfficeToolbarShown(const Application& app, const std::string& resource) {
  return Call("OfficeToolbarShown", [&] {
    return bool(LayoutInFront(*app.Session())->isElementVisible(ToOu("private:resource/toolbar/" + resource)));
  });
}

}  // namespace nivarel::driver
