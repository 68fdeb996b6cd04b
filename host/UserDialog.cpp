#include "UserDialog.h"

#include <com/sun/star/awt/DialogProvider2.hpp>
#include <com/sun/star/awt/FocusEvent.hpp>
#include <com/sun/star/awt/Selection.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XControlContainer.hpp>
#include <com/sun/star/awt/XDialog.hpp>
#include <com/sun/star/awt/XDialog2.hpp>
#include <com/sun/star/awt/XDialogEventHandler.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XKeyHandler.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/XFocusListener.hpp>
#include <com/sun/star/awt/XKeyListener.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/awt/FontDescriptor.hpp>
#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/MouseEvent.hpp>
#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/awt/XItemList.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <cppuhelper/implbase1.hxx>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <map>

#include "Border.h"
#include "MErrorHandler.h"
#include "Uno.h"

namespace nivarel::host {

using namespace office;

namespace {

namespace awt = css::awt;

// Passes the dialog's bound events on by method name. A handler's failure
// is logged under the dialog's name and the method's; the dialog goes on.
// Where a mouse press fell on its control, as fractions of the control's size.
struct PressPoint {
  bool known = false;
  double x = 0, y = 0;
};

class Events : public cppu::WeakImplHelper1<awt::XDialogEventHandler> {
 public:
  Events(std::string dialog, std::function<void(const std::string&)> handler, std::shared_ptr<PressPoint> press)
      : dialog_(std::move(dialog)), handler_(std::move(handler)), press_(std::move(press)) {}
  sal_Bool SAL_CALL callHandlerMethod(const Reference<awt::XDialog>&, const uno::Any& event,
                                      const OUString& method) override {
    OfficeThreadScope scope;
    std::string name = ToUtf8(method);
    AtBorder(dialog_.c_str(), name.c_str(), [&] {
      FailWhenAsked(dialog_ + "." + name, "dialog event");
      awt::MouseEvent mouse;
      if (event >>= mouse) {
        Reference<awt::XWindow> control(mouse.Source, uno::UNO_QUERY);
        awt::Rectangle area = control.is() ? control->getPosSize() : awt::Rectangle();
        press_->known = area.Width > 0 && area.Height > 0;
        if (press_->known) {
          press_->x = static_cast<double>(mouse.X) / area.Width;
          press_->y = static_cast<double>(mouse.Y) / area.Height;
        }
      }
      if (handler_) handler_(name);
    });
    return true;
  }
  uno::Sequence<OUString> SAL_CALL getSupportedMethodNames() override { return {}; }

 private:
  std::string dialog_;
  std::function<void(const std::string&)> handler_;
  std::shared_ptr<PressPoint> press_;
};

// Selects all of a text box's text when it gets the focus.
class SelectAllOnFocus : public cppu::WeakImplHelper1<awt::XFocusListener> {
 public:
  void SAL_CALL focusGained(const awt::FocusEvent& e) override {
    OfficeThreadScope scope;
    AtBorder("UserDialog", "FocusGained", [&] {
      Reference<awt::XTextComponent> text(e.Source, uno::UNO_QUERY);
      if (text.is()) text->setSelection(awt::Selection(0, text->getText().getLength()));
    });
  }
  void SAL_CALL focusLost(const awt::FocusEvent&) override {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}
};

// Notes the name of the control that gets the focus.
class FocusWatch : public cppu::WeakImplHelper1<awt::XFocusListener> {
 public:
  explicit FocusWatch(std::shared_ptr<std::string> focused) : focused_(std::move(focused)) {}
  void SAL_CALL focusGained(const awt::FocusEvent& e) override {
    OfficeThreadScope scope;
    AtBorder("UserDialog", "FocusGained", [&] {
      Reference<awt::XControl> control(e.Source, uno::UNO_QUERY);
      if (!control.is()) return;
      Reference<css::beans::XPropertySet> model(control->getModel(), uno::UNO_QUERY);
      OUString name;
      if (model.is()) model->getPropertyValue("Name") >>= name;
      *focused_ = ToUtf8(name);
    });
  }
  void SAL_CALL focusLost(const awt::FocusEvent&) override {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  std::shared_ptr<std::string> focused_;
};

// Notes an Escape pressed in any of the dialog's controls.
class EscapeWatch : public cppu::WeakImplHelper1<awt::XKeyListener> {
 public:
  explicit EscapeWatch(std::shared_ptr<std::atomic<bool>> pressed) : pressed_(std::move(pressed)) {}
  void SAL_CALL keyPressed(const awt::KeyEvent& e) override {
    if (e.KeyCode == awt::Key::ESCAPE) *pressed_ = true;  // throws nothing
  }
  void SAL_CALL keyReleased(const awt::KeyEvent&) override {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  std::shared_ptr<std::atomic<bool>> pressed_;
};

// Catches F1 while a dialog is the active window and hands it to the
// dialog's handler as "Form_Help". A toolkit key handler sees the key before
// the office does, so the office's own help does not open as well.
class HelpKey : public cppu::WeakImplHelper1<awt::XKeyHandler> {
 public:
  HelpKey(std::string dialog, Reference<awt::XExtendedToolkit> toolkit, Reference<awt::XWindow> window,
          std::function<void(const std::string&)> handler)
      : dialog_(std::move(dialog)), toolkit_(std::move(toolkit)), window_(std::move(window)),
        handler_(std::move(handler)) {}
  sal_Bool SAL_CALL keyPressed(const awt::KeyEvent& e) override {
    OfficeThreadScope scope;
    bool mine = false;
    AtBorder(dialog_.c_str(), "Form_Help", [&] {
      mine = Ours(e);
      if (!mine) return;
      FailWhenAsked(dialog_ + ".Form_Help", "dialog event");
      if (handler_) handler_("Form_Help");
    });
    return mine;
  }
  sal_Bool SAL_CALL keyReleased(const awt::KeyEvent& e) override {
    OfficeThreadScope scope;
    bool mine = false;
    AtBorder(dialog_.c_str(), "Form_Help", [&] { mine = Ours(e); });
    return mine;
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  bool Ours(const awt::KeyEvent& e) const {
    if (e.KeyCode != awt::Key::F1 || e.Modifiers != 0) return false;
    Reference<uno::XInterface> top(toolkit_->getActiveTopWindow(), uno::UNO_QUERY);
    return top.is() && top == Reference<uno::XInterface>(window_, uno::UNO_QUERY);
  }

  std::string dialog_;
  Reference<awt::XExtendedToolkit> toolkit_;
  Reference<awt::XWindow> window_;
  std::function<void(const std::string&)> handler_;
};

}  // namespace

struct UserDialog::State {
  std::shared_ptr<std::atomic<bool>> escape = std::make_shared<std::atomic<bool>>(false);
  std::shared_ptr<PressPoint> press = std::make_shared<PressPoint>();
  std::shared_ptr<std::string> focused = std::make_shared<std::string>();
  std::shared_ptr<HostSession> session;
  std::string name;
  std::function<void(const std::string&)> handler;
  Reference<awt::XDialog> dialog;
  Reference<awt::XControlContainer> controls;
  std::map<std::string, Reference<css::graphic::XGraphic>> graphics;  // by file path

  // The picture in a PNG file, read once per dialog; null when there is none.
  Reference<css::graphic::XGraphic> Graphic(const std::string& path) {
    if (path.empty()) return nullptr;
    auto found = graphics.find(path);
    if (found != graphics.end()) return found->second;
    Reference<css::graphic::XGraphic> graphic;
    std::error_code ec;
    if (std::filesystem::is_regular_file(path, ec)) {
      auto provider = css::graphic::GraphicProvider::create(session->context);
      uno::Sequence<css::beans::PropertyValue> args(1);
      args.getArray()[0].Name = "URL";
      args.getArray()[0].Value <<= FileUrl(path);
      try {
        graphic = provider->queryGraphic(args);
      } catch (const uno::Exception&) {
        // Not a picture the office reads: the cell stays empty.
      }
    }
    graphics[path] = graphic;
    return graphic;
  }
  static OUString FileUrl(const std::string& path) {
    return path.empty() ? OUString() : ToOu("file://" + std::filesystem::absolute(path).string());
  }

  Reference<css::beans::XPropertySet> Model(const std::string& name) const {
    auto control = controls->getControl(ToOu(name));
    if (!control.is()) throw HostError(HostError::kNotFound, "The dialog has no control '" + name + "'");
    return Reference<css::beans::XPropertySet>(control->getModel(), uno::UNO_QUERY_THROW);
  }
};

UserDialog::UserDialog(const Application& app, const std::string& name,
                       std::function<void(const std::string&)> handler)
    : state_(std::make_shared<State>()) {
  state_->session = app.Session();
  state_->name = name;
  state_->handler = handler;
  Call("UserDialog", [&] {
    auto provider = awt::DialogProvider2::create(state_->session->context);
    uno::Sequence<css::beans::NamedValue> args(2);
    args.getArray()[0].Name = "ParentWindow";
    args.getArray()[0].Value <<= OfficeWindowPeer(*state_->session);
    args.getArray()[1].Name = "EventHandler";
    args.getArray()[1].Value <<= Reference<awt::XDialogEventHandler>(new Events(name, std::move(handler), state_->press));
    OUString url = ToOu("vnd.sun.star.extension://org.nivarel.addin/dialogs/" + name + ".xdl");
    state_->dialog = provider->createDialogWithArguments(url, args);
    if (!state_->dialog.is()) throw HostError(HostError::kOfficeFailure, "The dialog " + name + " cannot be made");
    state_->controls.set(state_->dialog, uno::UNO_QUERY_THROW);
    Reference<awt::XFocusListener> select(new SelectAllOnFocus);
    Reference<awt::XKeyListener> escape(new EscapeWatch(state_->escape));
    Reference<awt::XFocusListener> focus(new FocusWatch(state_->focused));
    for (const auto& control : state_->controls->getControls()) {
      Reference<awt::XTextComponent> text(control, uno::UNO_QUERY);
      Reference<awt::XWindow> window(control, uno::UNO_QUERY);
      if (!window.is()) continue;
      if (text.is()) window->addFocusListener(select);
      window->addFocusListener(focus);
      window->addKeyListener(escape);
    }
  });
}

UserDialog::UserDialog(const Application& app, const std::string& name, bool& ok)
    : UserDialog(app, name, [this, &ok](const std::string& method) {
        if (method != "cmdOK_Click") return;
        ok = true;
        EndDialog(1);
      }) {}

UserDialog::~UserDialog() {
  try {
    Call("UserDialog", [&] { Reference<css::lang::XComponent>(state_->dialog, uno::UNO_QUERY_THROW)->dispose(); });
  } catch (...) {
  }
}

int UserDialog::Execute() {
  *state_->escape = false;
  return Call("UserDialog.Execute", [&] {
    Reference<awt::XExtendedToolkit> toolkit(awt::Toolkit::create(state_->session->context), uno::UNO_QUERY_THROW);
    Reference<awt::XControl> control(state_->dialog, uno::UNO_QUERY_THROW);
    Reference<awt::XWindow> window(control->getPeer(), uno::UNO_QUERY);
    Reference<awt::XKeyHandler> help(new HelpKey(state_->name, toolkit, window, state_->handler));
    toolkit->addKeyHandler(help);
    struct Remove {
      Reference<awt::XExtendedToolkit> toolkit;
      Reference<awt::XKeyHandler> help;
      ~Remove() {
        try {
          toolkit->removeKeyHandler(help);
        } catch (...) {
        }
      }
    } remove{toolkit, help};
    return static_cast<int>(state_->dialog->execute());
  });
}

bool UserDialog::ClosedByEscape() const { return *state_->escape; }

void UserDialog::EndDialog(int result) {
  Call("UserDialog.EndDialog", [&] {
    Reference<awt::XDialog2> dialog(state_->dialog, uno::UNO_QUERY_THROW);
    dialog->endDialog(result);
  });
}

void UserDialog::SetTitle(const std::string& title) {
  Call("UserDialog.Title", [&] { state_->dialog->setTitle(ToOu(title)); });
}

std::string UserDialog::Text(const std::string& control) const {
  return Call("UserDialog.Text", [&] {
    OUString text;
    state_->Model(control)->getPropertyValue("Text") >>= text;
    return ToUtf8(text);
  });
}

void UserDialog::SetText(const std::string& control, const std::string& text) {
  Call("UserDialog.Text", [&] { state_->Model(control)->setPropertyValue("Text", uno::Any(ToOu(text))); });
}

void UserDialog::SetLabel(const std::string& control, const std::string& label) {
  Call("UserDialog.Label", [&] { state_->Model(control)->setPropertyValue("Label", uno::Any(ToOu(label))); });
}

bool UserDialog::Checked(const std::string& control) const {
  return Call("UserDialog.Checked", [&] {
    sal_Int16 state = 0;
    state_->Model(control)->getPropertyValue("State") >>= state;
    return state == 1;
  });
}

void UserDialog::SetChecked(const std::string& control, bool on) {
  Call("UserDialog.Checked", [&] {
    state_->Model(control)->setPropertyValue("State", uno::Any(static_cast<sal_Int16>(on ? 1 : 0)));
  });
}

void UserDialog::SetEnabled(const std::string& control, bool enabled) {
  Call("UserDialog.Enabled", [&] { state_->Model(control)->setPropertyValue("Enabled", uno::Any(enabled)); });
}

void UserDialog::SetControlVisible(const std::string& control, bool visible) {
  Call("UserDialog.Visible", [&] {
    Reference<awt::XWindow> window(state_->controls->getControl(ToOu(control)), uno::UNO_QUERY_THROW);
    window->setVisible(visible);
  });
}

void UserDialog::SetBounds(const std::string& control, int left, int top, int width, int height) {
  Call("UserDialog.Bounds", [&] {
    auto model = state_->Model(control);
    model->setPropertyValue("PositionX", uno::Any(static_cast<sal_Int32>(left)));
    model->setPropertyValue("PositionY", uno::Any(static_cast<sal_Int32>(top)));
    model->setPropertyValue("Width", uno::Any(static_cast<sal_Int32>(width)));
    model->setPropertyValue("Height", uno::Any(static_cast<sal_Int32>(height)));
  });
}

int UserDialog::ListIndex(const std::string& control) const {
  return Call("UserDialog.ListIndex", [&] {
    uno::Sequence<sal_Int16> selected;
    state_->Model(control)->getPropertyValue("SelectedItems") >>= selected;
    return selected.getLength() > 0 ? static_cast<int>(selected[0]) : -1;
  });
}

void UserDialog::SetListIndex(const std::string& control, int index) {
  Call("UserDialog.ListIndex", [&] {
    uno::Sequence<sal_Int16> selected(1);
    selected.getArray()[0] = static_cast<sal_Int16>(index);
    state_->Model(control)->setPropertyValue("SelectedItems", uno::Any(selected));
  });
}

std::vector<int> UserDialog::ListIndices(const std::string& control) const {
  return Call("UserDialog.ListIndices", [&] {
    uno::Sequence<sal_Int16> selected;
    state_->Model(control)->getPropertyValue("SelectedItems") >>= selected;
    std::vector<int> out(selected.begin(), selected.end());
    std::sort(out.begin(), out.end());
    return out;
  });
}

void UserDialog::SetListIndices(const std::string& control, const std::vector<int>& indices) {
  Call("UserDialog.ListIndices", [&] {
    uno::Sequence<sal_Int16> selected(static_cast<sal_Int32>(indices.size()));
    for (size_t i = 0; i < indices.size(); ++i) selected.getArray()[i] = static_cast<sal_Int16>(indices[i]);
    state_->Model(control)->setPropertyValue("SelectedItems", uno::Any(selected));
  });
}

int UserDialog::SpinValue(const std::string& control) const {
  return Call("UserDialog.SpinValue", [&] {
    sal_Int32 value = 0;
    state_->Model(control)->getPropertyValue("SpinValue") >>= value;
    return static_cast<int>(value);
  });
}

void UserDialog::SetSpinValue(const std::string& control, int value, int min, int max) {
  Call("UserDialog.SpinValue", [&] {
    auto model = state_->Model(control);
    model->setPropertyValue("SpinValueMin", uno::Any(static_cast<sal_Int32>(min)));
    model->setPropertyValue("SpinValueMax", uno::Any(static_cast<sal_Int32>(max)));
    model->setPropertyValue("SpinValue", uno::Any(static_cast<sal_Int32>(value)));
  });
}

int UserDialog::ScrollValue(const std::string& control) const {
  return Call("UserDialog.ScrollValue", [&] {
    sal_Int32 value = 0;
    state_->Model(control)->getPropertyValue("ScrollValue") >>= value;
    return static_cast<int>(value);
  });
}

void UserDialog::SetScrollBar(const std::string& control, int value, int maximum, int visible) {
  Call("UserDialog.ScrollValue", [&] {
    auto model = state_->Model(control);
    model->setPropertyValue("ScrollValueMax", uno::Any(static_cast<sal_Int32>(maximum)));
    model->setPropertyValue("VisibleSize", uno::Any(static_cast<sal_Int32>(visible)));
    model->setPropertyValue("BlockIncrement", uno::Any(static_cast<sal_Int32>(std::max(visible, 1))));
    model->setPropertyValue("LineIncrement", uno::Any(static_cast<sal_Int32>(1)));
    model->setPropertyValue("ScrollValue", uno::Any(static_cast<sal_Int32>(value)));
  });
}

void UserDialog::SetControlPage(const std::string& control, int page) {
  Call("UserDialog.Page", [&] {
    state_->Model(control)->setPropertyValue("Step", uno::Any(static_cast<sal_Int32>(page)));
    // The dialog sorts its controls by page only when its own page changes.
    Reference<awt::XControl> dialog(state_->dialog, uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> model(dialog->getModel(), uno::UNO_QUERY_THROW);
    sal_Int32 shown = 0;
    model->getPropertyValue("Step") >>= shown;
    Reference<awt::XWindow> window(state_->controls->getControl(ToOu(control)), uno::UNO_QUERY_THROW);
    window->setVisible(page == 0 || page == shown);
  });
}

void UserDialog::SetFocus(const std::string& control, bool selectText) {
  Call("UserDialog.Focus", [&] {
    auto shown = state_->controls->getControl(ToOu(control));
    Reference<awt::XWindow> window(shown, uno::UNO_QUERY_THROW);
    window->setFocus();
    Reference<awt::XTextComponent> text(shown, uno::UNO_QUERY);
    if (selectText && text.is()) text->setSelection(awt::Selection(0, text->getText().getLength()));
  });
}

std::string UserDialog::FocusedControl() const { return *state_->focused; }

void UserDialog::SetItems(const std::string& control, const std::vector<Item>& items) {
  Call("UserDialog.Items", [&] {
    Reference<awt::XItemList> list(state_->Model(control), uno::UNO_QUERY_THROW);
    list->removeAllItems();
    sal_Int32 i = 0;
    for (const Item& item : items) {
      if (item.picture.empty())
        list->insertItemText(i++, ToOu(item.text));
      else
        list->insertItem(i++, ToOu(item.text), State::FileUrl(item.picture));
    }
  });
}

void UserDialog::AddItem(const std::string& control, const Item& item) {
  Call("UserDialog.Items", [&] {
    Reference<awt::XItemList> list(state_->Model(control), uno::UNO_QUERY_THROW);
    list->insertItem(list->getItemCount(), ToOu(item.text), State::FileUrl(item.picture));
  });
}

void UserDialog::SetItem(const std::string& control, int index, const Item& item) {
  Call("UserDialog.Items", [&] {
    Reference<awt::XItemList> list(state_->Model(control), uno::UNO_QUERY_THROW);
    list->setItemTextAndImage(index, ToOu(item.text), State::FileUrl(item.picture));
  });
}

void UserDialog::SetPicture(const std::string& control, const std::string& path) {
  Call("UserDialog.Picture", [&] {
    auto model = state_->Model(control);
    auto graphic = state_->Graphic(path);
    model->setPropertyValue("Graphic", uno::Any(graphic));
  });
}

bool UserDialog::LastPress(double& x, double& y) const {
  if (!state_->press->known) return false;
  x = state_->press->x;
  y = state_->press->y;
  return true;
}

void UserDialog::SetPage(int page) {
  Call("UserDialog.Page", [&] {
    Reference<awt::XControl> dialog(state_->dialog, uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> model(dialog->getModel(), uno::UNO_QUERY_THROW);
    model->setPropertyValue("Step", uno::Any(static_cast<sal_Int32>(page)));
  });
}

void UserDialog::SetFont(const std::string& control, const std::string& name, double size, bool bold, bool italic) {
  Call("UserDialog.Font", [&] {
    auto model = state_->Model(control);
    awt::FontDescriptor font;
    model->getPropertyValue("FontDescriptor") >>= font;
    font.Name = ToOu(name);
    font.Height = static_cast<sal_Int16>(size + 0.5);
    font.Weight = bold ? awt::FontWeight::BOLD : awt::FontWeight::NORMAL;
    font.Slant = italic ? awt::FontSlant_ITALIC : awt::FontSlant_NONE;
    model->setPropertyValue("FontDescriptor", uno::Any(font));
  });
}

void UserDialog::SetTextColor(const std::string& control, long rgb) {
  Call("UserDialog.TextColor", [&] { state_->Model(control)->setPropertyValue("TextColor", uno::Any(RgbToOffice(rgb))); });
}

}  // namespace nivarel::host
