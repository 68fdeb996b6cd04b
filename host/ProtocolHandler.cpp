#include "ProtocolHandler.h"

#include <com/sun/star/frame/DispatchDescriptor.hpp>
#include <com/sun/star/frame/FeatureStateEvent.hpp>
#include <com/sun/star/frame/XStatusListener.hpp>
#include <cppuhelper/supportsservice.hxx>

#include "Uno.h"

namespace nivarel::host {

namespace {

constexpr char kProtocol[] = "vnd.nivarel:";
constexpr char kControlPrefix[] = "rxNivarel";

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

void ProtocolHandler::dispatch(const css::util::URL&, const uno::Sequence<css::beans::PropertyValue>&) {
  // SEAM: the command router takes the control id from here (prechecks, then
  // the command key: the id less "rxNivarel", lower-cased).
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
