#include "TerminateListener.h"

#include "Border.h"

namespace nivarel::host {

TerminateListener::TerminateListener(std::function<void()> onTermination)
    : onTermination_(std::move(onTermination)) {}

void TerminateListener::queryTermination(const com::sun::star::lang::EventObject&) {}

void TerminateListener::notifyTermination(const com::sun::star::lang::EventObject&) {
  if (done_.exchange(true)) return;
  office::AtBorder("TerminateListener", "notifyTermination", onTermination_);
}

void TerminateListener::disposing(const com::sun::star::lang::EventObject&) {}

}  // namespace nivarel::host
