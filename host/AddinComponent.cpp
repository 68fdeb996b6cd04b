// The shared library's entry point: the office asks it for the factories of
// the add-in's implementations named in the extension's .components file.
#include <cppuhelper/factory.hxx>
#include <cppuhelper/implementationentry.hxx>

#include "ProtocolHandler.h"
#include "StartupJob.h"
#include "Uno.h"

namespace nivarel::host {

using namespace office;
namespace {

Reference<uno::XInterface> SAL_CALL CreateStartupJob(const Reference<uno::XComponentContext>& context) {
  return static_cast<cppu::OWeakObject*>(new StartupJob(context));
}

Reference<uno::XInterface> SAL_CALL CreateProtocolHandler(const Reference<uno::XComponentContext>& context) {
  return static_cast<cppu::OWeakObject*>(new ProtocolHandler(context));
}

const cppu::ImplementationEntry kEntries[] = {
    {CreateStartupJob, StartupJob::ImplementationName, StartupJob::ServiceNames,
     cppu::createSingleComponentFactory, nullptr, 0},
    {CreateProtocolHandler, ProtocolHandler::ImplementationName, ProtocolHandler::ServiceNames,
     cppu::createSingleComponentFactory, nullptr, 0},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0}};

}  // namespace
}  // namespace nivarel::host

extern "C" SAL_DLLPUBLIC_EXPORT void* SAL_CALL component_getFactory(const char* implementationName,
                                                                   void* serviceManager, void* registryKey) {
  return cppu::component_getFactoryHelper(implementationName, serviceManager, registryKey,
                                          nivarel::host::kEntries);
}
