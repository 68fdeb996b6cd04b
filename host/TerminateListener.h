// Listens for the office's termination and runs one action when it is final.
// The action runs at most once, however often the office reports the end.
// Optional actions run when the office asks whether it may end (its windows
// are still open then) and when it goes on after all (a window's question
// about saving was cancelled).
#pragma once

#include <atomic>
#include <functional>

#include <com/sun/star/frame/XTerminateListener2.hpp>
#include <cppuhelper/implbase1.hxx>

namespace nivarel::host {

class TerminateListener : public cppu::WeakImplHelper1<com::sun::star::frame::XTerminateListener2> {
 public:
  explicit TerminateListener(std::function<void()> onTermination, std::function<void()> onQuery = nullptr,
                             std::function<void()> onCancel = nullptr);

  // Never vetoes.
  void SAL_CALL queryTermination(const com::sun::star::lang::EventObject& event) override;
  void SAL_CALL cancelTermination(const com::sun::star::lang::EventObject& event) override;
  void SAL_CALL notifyTermination(const com::sun::star::lang::EventObject& event) override;
  void SAL_CALL disposing(const com::sun::star::lang::EventObject& event) override;

 private:
  std::function<void()> onTermination_, onQuery_, onCancel_;
  std::atomic<bool> done_{false};
};

}  // namespace nivarel::host
