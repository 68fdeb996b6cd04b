#include "ProtocolHandler.h"

#include <functional>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/frame/DispatchDescriptor.hpp>
#include <com/sun/star/frame/FeatureStateEvent.hpp>
#include <com/sun/star/frame/XStatusListener.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/supportsservice.hxx>

#include "Uno.h"
#include "dsrConnect.h"

namespace nivarel::host {

namespace {

constexpr char kProtocol[] = "vnd.nivarel:";
constexpr char kControlPrefix[] = "rxNivarel";

// Runs a command from the office's event loop.
class Deferred : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Deferred(std::function<void()> run) : run_(std::move(run)) {}
  void SAL_CALL notify(const uno::Any&) override { run_(); }

 private:
  std::function<void()> run_;
};

}  // namespace

ProtocolHandler::ProtocolHandler(const Reference<uno::XComponentContext>& context) : context_(context) {}

OUString ProtocolHandler::ImplementationName() { return "org.nivarel.addin.ProtocolHandler"; }

uno::Sequence<OUString> ProtocolHandler::ServiceNames() {
  OUString name("com.sun.star.frame.ProtocolHandler");
  return uno::Sequence<OUString>(&name, 1);
}

bool ProtocolHandler::IsCommand(const OUString& url) {
  OUString controlId;
  if (!url.startsWith(kProtocol, &controlId)) return false;
  OUString name;
  return controlId.startsWith(kControlPrefix, &name) && !name.isEmpty();
}

Reference<css::frame::XDispatch> ProtocolHandler::queryDispatch(const css::util::URL& url, const OUString&,
                                                                sal_Int32) {
  if (!IsCommand(url.Complete)) return {};
  return this;
}

uno::Sequence<Reference<css::frame::XDispatch>> ProtocolHandler::queryDispatches(
    const uno::Sequence<css::frame::DispatchDescriptor>& requests) {
  uno::Sequence<Reference<css::frame::XDispatch>> result(requests.getLength());
  auto* out = result.getArray();
  for (sal_Int32 i = 0; i < requests.getLength(); ++i)
    out[i] = queryDispatch(requests[i].FeatureURL, requests[i].FrameName, requests[i].SearchFlags);
  return result;
}

void ProtocolHandler::dispatch(const css::util::URL& url, const uno::Sequence<css::beans::PropertyValue>& arguments) {
  OUString controlId;
  if (!url.Complete.startsWith(kProtocol, &controlId)) return;
  std::string id = ToUtf8(controlId);
  // A caller that asks not to wait (SynchronMode false) gets the command run
  // from the event loop once its call has returned.
  bool synchron = true;
  for (const auto& a : arguments)
    if (a.Name == "SynchronMode") a.Value >>= synchron;
  if (synchron) {
    TheConnection().rxNivarel_OnAction(id);
    return;
  }
  auto callback = css::awt::AsyncCallback::create(context_);
  callback->addCallback(new Deferred([id] { TheConnection().rxNivarel_OnAction(id); }), uno::Any());
}

void ProtocolHandler::addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                        const css::util::URL& url) {
  if (!listener.is()) return;
  css::frame::FeatureStateEvent state;
  state.Source = static_cast<cppu::OWeakObject*>(this);
  state.FeatureURL = url;
  state.IsEnabled = IsCommand(url.Complete);
  state.Requery = false;
  listener->statusChanged(state);
}

void ProtocolHandler::removeStatusListener(const Reference<css::frame::XStatusListener>&, const css::util::URL&) {}

void ProtocolHandler::initialize(const uno::Sequence<uno::Any>& arguments) {
  Reference<css::frame::XFrame> frame;
  if (arguments.getLength() > 0 && (arguments[0] >>= frame)) frame_ = frame;
}

OUString ProtocolHandler::getImplementationName() { return ImplementationName(); }

sal_Bool ProtocolHandler::supportsService(const OUString& name) { return cppu::supportsService(this, name); }

uno::Sequence<OUString> ProtocolHandler::getSupportedServiceNames() { return ServiceNames(); }

}  // namespace nivarel::host
