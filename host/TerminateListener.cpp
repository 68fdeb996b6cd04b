#include "TerminateListener.h"

#include "Border.h"

namespace nivarel::host {

TerminateListener::TerminateListener(std::function<void()> onTermination, std::function<void()> onQuery,
                                     std::function<void()> onCancel)
    : onTermination_(std::move(onTermination)), onQuery_(std::move(onQuery)), onCancel_(std::move(onCancel)) {}

void TerminateListener::queryTermination(const com::sun::star::lang::EventObject&) {
  if (onQuery_ && !done_) office::AtBorder("TerminateListener", "queryTermination", onQuery_);
}

void TerminateListener::cancelTermination(const com::sun::star::lang::EventObject&) {
  if (onCancel_ && !done_) office::AtBorder("TerminateListener", "cancelTermination", onCancel_);
}

void TerminateListener::notifyTermination(const com::sun::star::lang::EventObject&) {
  if (done_.exchange(true)) return;
  office::AtBorder("TerminateListener", "notifyTermination", onTermination_);
}

void TerminateListener::disposing(const com::sun::star::lang::EventObject&) {}

}  // namespace nivarel::host
