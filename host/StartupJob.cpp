#include "StartupJob.h"

#include <atomic>
#include <memory>

#include <com/sun/star/frame/Desktop.hpp>
#include <cppuhelper/supportsservice.hxx>

#include "Border.h"
#include "TerminateListener.h"
#include "Uno.h"
#include "MErrorHandler.h"
#include "dsrConnect.h"

namespace nivarel::host {

using namespace office;

namespace {

std::atomic<bool> connected{false};

}  // namespace

StartupJob::StartupJob(const Reference<uno::XComponentContext>& context) : context_(context) {}

OUString StartupJob::ImplementationName() { return "org.nivarel.addin.StartupJob"; }

uno::Sequence<OUString> StartupJob::ServiceNames() {
  OUString name("com.sun.star.task.Job");
  return uno::Sequence<OUString>(&name, 1);
}

uno::Any StartupJob::execute(const uno::Sequence<css::beans::NamedValue>&) {
  AtBorder("StartupJob", "execute", [&] { ConnectOnce(context_); });
  return {};
}

void StartupJob::ConnectOnce(const Reference<uno::XComponentContext>& context) {
  if (connected.exchange(true)) return;
  try {
    auto session = std::make_shared<HostSession>();
    session->context = context;
    session->desktop = css::frame::Desktop::create(context);
    TheConnection().AddinInstance_OnConnection(Application(session));
    TheConnection().AddinInstance_OnStartupComplete();
    session->desktop->addTerminateListener(new TerminateListener(
        [] { TheConnection().AddinInstance_OnDisconnection(); }, [] { TheConnection().TerminationAsked(); },
        [] { TheConnection().TerminationCancelled(); }));
  } catch (...) {
    // The office starts without the add-in.
    ErrorHandler("StartupJob", "ConnectOnce", false);
  }
}

OUString StartupJob::getImplementationName() { return ImplementationName(); }

sal_Bool StartupJob::supportsService(const OUString& name) { return cppu::supportsService(this, name); }

uno::Sequence<OUString> StartupJob::getSupportedServiceNames() { return ServiceNames(); }

}  // namespace nivarel::host
