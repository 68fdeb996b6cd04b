#include "AddinProbe.h"

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/task/theJobExecutor.hpp>
#include <com/sun/star/util/URLTransformer.hpp>

#include <com/sun/star/frame/XStatusListener.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "Uno.h"

namespace nivarel::driver {

using namespace office;

namespace {

// A menu entry that fails whenever it is told a state.
class FailingWatch : public cppu::WeakImplHelper1<css::frame::XStatusListener> {
 public:
  void SAL_CALL statusChanged(const css::frame::FeatureStateEvent&) override {
    throw uno::RuntimeException("A status listener that fails when told");
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}
};

}  // namespace

bool CanDispatch(const Application& app, const std::string& url) {
  return Call("CanDispatch", [&] {
    css::util::URL parsed;
    return CommandDispatch(*app.Session(), parsed, url).is();
  });
}

bool CommandEnabled(const Application& app, const std::string& url) {
  return app.CommandState(url).value_or(false);
}

bool AddFailingStatusListener(const Application& app, const std::string& url) {
  return Call("AddFailingStatusListener", [&] {
    css::util::URL parsed;
    auto dispatch = CommandDispatch(*app.Session(), parsed, url);
    if (!dispatch.is()) throw HostError(HostError::kNotFound, "No handler for " + url);
    Reference<css::frame::XStatusListener> listener(new FailingWatch);
    bool returned = true;
    try {
      dispatch->addStatusListener(listener, parsed);
    } catch (const uno::RuntimeException&) {
      returned = false;
    }
    dispatch->removeStatusListener(listener, parsed);
    return returned;
  });
}

void FireJobEvent(const Application& app, const std::string& event) {
  Call("FireJobEvent", [&] { css::task::theJobExecutor::get(app.Session()->context)->trigger(ToOu(event)); });
}

}  // namespace nivarel::driver
