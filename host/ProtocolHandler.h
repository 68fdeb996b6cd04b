// Receives the add-in's commands from the office's menus and toolbars: URLs of
// the form "vnd.nivarel:<control id>", where the control id is "rxNivarel"
// and a command name. Each command reports whether it is enabled, as the
// connection answers, and again when the connection asks for a requery.
#pragma once

#include <string>
#include <vector>

#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XNotifyingDispatch.hpp>
#include <com/sun/star/lang/XInitialization.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase4.hxx>
#include <cppuhelper/weakref.hxx>

namespace nivarel::host {

class ProtocolHandler
    : public cppu::WeakImplHelper4<com::sun::star::frame::XDispatchProvider, com::sun::star::frame::XNotifyingDispatch,
                                   com::sun::star::lang::XInitialization, com::sun::star::lang::XServiceInfo> {
 public:
  explicit ProtocolHandler(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

  static rtl::OUString ImplementationName();
  static com::sun::star::uno::Sequence<rtl::OUString> ServiceNames();
  // Whether a complete URL names one of the add-in's commands.
  static bool IsCommand(const rtl::OUString& url);
  // Tells every menu entry and button that shows one of these commands its
  // state anew.
  static void Requery(const std::vector<std::string>& controlIds);

  // XDispatchProvider: this object for the add-in's commands, nothing otherwise.
  com::sun::star::uno::Reference<com::sun::star::frame::XDispatch> SAL_CALL queryDispatch(
      const com::sun::star::util::URL& url, const rtl::OUString& targetFrame, sal_Int32 searchFlags) override;
  com::sun::star::uno::Sequence<com::sun::star::uno::Reference<com::sun::star::frame::XDispatch>> SAL_CALL
  queryDispatches(const com::sun::star::uno::Sequence<com::sun::star::frame::DispatchDescriptor>& requests) override;

  // XDispatch
  void SAL_CALL dispatch(const com::sun::star::util::URL& url,
                         const com::sun::star::uno::Sequence<com::sun::star::beans::PropertyValue>& arguments) override;
  // XNotifyingDispatch: the command is run at once, on the calling thread,
  // and the listener told SUCCESS or FAILURE with NamedValues (Message, and
  // for the wizard run Sheet, Shapes and Seconds); DONTKNOW for a command
  // that gives no answer of its own.
  void SAL_CALL dispatchWithNotification(
      const com::sun::star::util::URL& url,
      const com::sun::star::uno::Sequence<com::sun::star::beans::PropertyValue>& arguments,
      const com::sun::star::uno::Reference<com::sun::star::frame::XDispatchResultListener>& listener) override;
  void SAL_CALL addStatusListener(const com::sun::star::uno::Reference<com::sun::star::frame::XStatusListener>& listener,
                                  const com::sun::star::util::URL& url) override;
  void SAL_CALL removeStatusListener(
      const com::sun::star::uno::Reference<com::sun::star::frame::XStatusListener>& listener,
      const com::sun::star::util::URL& url) override;

  // XInitialization: the first argument is the frame that the handler serves.
  void SAL_CALL initialize(const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& arguments) override;

  rtl::OUString SAL_CALL getImplementationName() override;
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override;
  com::sun::star::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override;

 private:
  com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
  com::sun::star::uno::WeakReference<com::sun::star::frame::XFrame> frame_;
};

}  // namespace nivarel::host
