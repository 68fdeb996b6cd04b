// The job that the office runs when it starts: it connects the add-in once per
// office process and arranges the disconnection for when the office
// terminates. Running the job again does nothing. The office does not always
// run it (an extension added while the office runs, a first start that
// registers the extension late): the add-in's menu then connects through
// ConnectOnce when it first asks for its state.
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>

namespace nivarel::host {

class StartupJob
    : public cppu::WeakImplHelper2<com::sun::star::task::XJob, com::sun::star::lang::XServiceInfo> {
 public:
  explicit StartupJob(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

  // Connects the add-in to this office unless that has happened already.
  static void ConnectOnce(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

  static rtl::OUString ImplementationName();
  static com::sun::star::uno::Sequence<rtl::OUString> ServiceNames();

  com::sun::star::uno::Any SAL_CALL execute(
      const com::sun::star::uno::Sequence<com::sun::star::beans::NamedValue>& arguments) override;

  rtl::OUString SAL_CALL getImplementationName() override;
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override;
  com::sun::star::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override;

 private:
  com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
};

}  // namespace nivarel::host
