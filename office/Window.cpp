#include "Window.h"

#include <com/sun/star/frame/XController.hpp>

#include "Uno.h"

namespace nivarel::office {

bool Window::DisplayGridlines() const {
  return Call("Window.DisplayGridlines", [&] {
    Reference<css::beans::XPropertySet> view(book_->Model()->getCurrentController(), uno::UNO_QUERY_THROW);
    return GetProp<bool>(view, "ShowGrid");
  });
}

void Window::SetDisplayGridlines(bool on) {
  Call("Window.DisplayGridlines", [&] {
    Reference<css::beans::XPropertySet> view(book_->Model()->getCurrentController(), uno::UNO_QUERY_THROW);
    // Setting the view's options, even to what they are, has the office
    // redo its view; a run sets this on every step.
    if (GetProp<bool>(view, "ShowGrid") != on) SetProp(view, "ShowGrid", on);
  });
}

}  // namespace nivarel::office
