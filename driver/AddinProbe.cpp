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

// The handler of a command URL in the current document's frame, or the desktop's.
Reference<css::frame::XDispatch> DispatchFor(const HostSession& s, css::util::URL& parsed, const std::string& url) {
  parsed.Complete = ToOu(url);
  css::util::URLTransformer::create(s.context)->parseStrict(parsed);
  Reference<css::frame::XDispatchProvider> provider(s.desktop, uno::UNO_QUERY_THROW);
  Reference<css::frame::XModel> model(s.desktop->getCurrentComponent(), uno::UNO_QUERY);
  if (model.is() && model->getCurrentController().is()) {
    Reference<css::frame::XDispatchProvider> frame(model->getCurrentController()->getFrame(), uno::UNO_QUERY);
    if (frame.is()) provider = frame;
  }
  return provider->queryDispatch(parsed, "", 0);
}

// Keeps the last state that a command's handler told.
class StateWatch : public cppu::WeakImplHelper1<css::frame::XStatusListener> {
 public:
  void SAL_CALL statusChanged(const css::frame::FeatureStateEvent& event) override {
    told = true;
    enabled = event.IsEnabled;
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}
  bool told = false;
  bool enabled = false;
};

}  // namespace

bool CanDispatch(const Application& app, const std::string& url) {
  return Call("CanDispatch", [&] {
    css::util::URL parsed;
    return DispatchFor(*app.Session(), parsed, url).is();
  });
}

bool CommandEnabled(const Application& app, const std::string& url) {
  return Call("CommandEnabled", [&] {
    css::util::URL parsed;
    auto dispatch = DispatchFor(*app.Session(), parsed, url);
    if (!dispatch.is()) return false;
    rtl::Reference<StateWatch> watch(new StateWatch);
    Reference<css::frame::XStatusListener> listener(watch.get());
    dispatch->addStatusListener(listener, parsed);
    dispatch->removeStatusListener(listener, parsed);
    return watch->told && watch->enabled;
  });
}

void FireJobEvent(const Application& app, const std::string& event) {
  Call("FireJobEvent", [&] { css::task::theJobExecutor::get(app.Session()->context)->trigger(ToOu(event)); });
}

}  // namespace nivarel::driver
