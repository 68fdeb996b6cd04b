#include "AddinProbe.h"

#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/configuration/theDefaultProvider.hpp>
#include <com/sun/star/container/XHierarchicalNameAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/status/Visibility.hpp>

#include <mutex>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/task/theJobExecutor.hpp>
#include <com/sun/star/util/URLTransformer.hpp>
#include <com/sun/star/util/theMacroExpander.hpp>

#include <com/sun/star/frame/XStatusListener.hpp>
#include <cppuhelper/implbase1.hxx>
#include <osl/file.hxx>
#include <rtl/uri.hxx>
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

std::map<std::string, AddonIcon> AddonIcons(const Application& app) {
  return Call("AddonIcons", [&] {
    const auto& context = app.Session()->context;
    auto provider = css::configuration::theDefaultProvider::get(context);
    css::beans::NamedValue path("nodepath", uno::Any(OUString("/org.openoffice.Office.Addons/AddonUI/Images")));
    uno::Sequence<uno::Any> args(1);
    args.getArray()[0] <<= path;
    Reference<css::container::XNameAccess> images(
        provider->createInstanceWithArguments("com.sun.star.configuration.ConfigurationAccess", args),
        uno::UNO_QUERY_THROW);
    auto expander = css::util::theMacroExpander::get(context);
    // A package's files are named "vnd.sun.star.expand:" and an encoded URL
    // with the office's macros in it.
    auto file = [&](const Reference<css::container::XHierarchicalNameAccess>& image, const char* name) {
      OUString url;
      image->getByHierarchicalName(OUString::createFromAscii(name)) >>= url;
      if (url.isEmpty()) return std::string();
      OUString rest;
      if (url.startsWithIgnoreAsciiCase("vnd.sun.star.expand:", &rest))
        url = expander->expandMacros(rtl::Uri::decode(rest, rtl_UriDecodeWithCharset, RTL_TEXTENCODING_UTF8));
      OUString system;
      if (osl::FileBase::getSystemPathFromFileURL(url, system) != osl::FileBase::E_None) return ToUtf8(url);
      return ToUtf8(system);
    };
    std::map<std::string, AddonIcon> icons;
    for (const OUString& name : images->getElementNames()) {
      Reference<css::container::XHierarchicalNameAccess> image(images->getByName(name), uno::UNO_QUERY_THROW);
      OUString url;
      image->getByHierarchicalName("URL") >>= url;
      icons[ToUtf8(url)] = {file(image, "UserDefinedImages/ImageSmallURL"), file(image, "UserDefinedImages/ImageBigURL")};
    }
    return icons;
  });
}

namespace {

// Keeps what a command's handler tells; the office may call from its own thread.
class Listener : public cppu::WeakImplHelper1<css::frame::XStatusListener> {
 public:
  void SAL_CALL statusChanged(const css::frame::FeatureStateEvent& e) override {
    std::lock_guard<std::mutex> lock(mutex_);
    ++told_.times;
    told_.enabled = e.IsEnabled;
    OUString text;
    css::frame::status::Visibility visibility;
    bool on = false;
    told_.label.reset();
    told_.visible.reset();
    told_.checked.reset();
    if (e.State >>= text) told_.label = ToUtf8(text);
    else if (e.State >>= visibility) told_.visible = static_cast<bool>(visibility.bVisible);
    else if (e.State >>= on) told_.checked = on;
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}
  StatusWatch::Told Last() {
    std::lock_guard<std::mutex> lock(mutex_);
    return told_;
  }

 private:
  std::mutex mutex_;
  StatusWatch::Told told_;
};

}  // namespace

struct StatusWatch::Impl {
  rtl::Reference<Listener> listener;
  Reference<css::frame::XDispatch> dispatch;
  css::util::URL url;
};

StatusWatch::StatusWatch(const Application& app, const std::string& url) : impl_(new Impl) {
  Call("StatusWatch", [&] {
    impl_->dispatch = CommandDispatch(*app.Session(), impl_->url, url);
    if (!impl_->dispatch.is()) throw HostError(HostError::kNotFound, "No handler for " + url);
    impl_->listener = new Listener;
    impl_->dispatch->addStatusListener(impl_->listener.get(), impl_->url);
  });
}

StatusWatch::~StatusWatch() {
  try {
    Call("StatusWatch", [&] { impl_->dispatch->removeStatusListener(impl_->listener.get(), impl_->url); });
  } catch (...) {
    // an office that has gone has no listeners to remove
  }
}

StatusWatch::Told StatusWatch::Last() const { return impl_->listener->Last(); }

void FireJobEvent(const Application& app, const std::string& event) {
  Call("FireJobEvent", [&] { css::task::theJobExecutor::get(app.Session()->context)->trigger(ToOu(event)); });
}

bool AskOfficeToEnd(const Application& app) {
  // From beside the office's thread, as the office's question comes up
  // while the call waits.
  return CallHere("AskOfficeToEnd", [&] { return bool(app.Session()->desktop->terminate()); });
}

}  // namespace nivarel::driver
