// Listens for the office's termination and runs one action when it is final.
// The action runs at most once, however often the office reports the end.
#pragma once

#include <atomic>
#include <functional>

#include <com/sun/star/frame/XTerminateListener.hpp>
#include <cppuhelper/implbase1.hxx>

namespace nivarel::host {

class TerminateListener : public cppu::WeakImplHelper1<com::sun::star::frame::XTerminateListener> {
 public:
  explicit TerminateListener(std::function<void()> onTermination);

  // Never vetoes.
  void SAL_CALL queryTermination(const com::sun::star::lang::EventObject& event) override;
  void SAL_CALL notifyTermination(const com::sun::star::lang::EventObject& event) override;
  void SAL_CALL disposing(const com::sun::star::lang::EventObject& event) override;

 private:
  std::function<void()> onTermination_;
  std::atomic<bool> done_{false};
};

}  // namespace nivarel::host
