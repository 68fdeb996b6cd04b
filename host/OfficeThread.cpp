#include <chrono>
#include <exception>
#include <future>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "Uno.h"

namespace nivarel::host {

namespace {

// Called back by the office's event loop; runs the work and reports.
class Work : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Work(const std::function<void()>& f) : f_(f) {}
  void SAL_CALL notify(const uno::Any&) override {
    try {
      f_();
      done_.set_value();
    } catch (...) {
      done_.set_exception(std::current_exception());
    }
  }
  std::future<void> Done() { return done_.get_future(); }

 private:
  std::function<void()> f_;
  std::promise<void> done_;
};

}  // namespace

void OnOfficeThread(const HostSession& s, const std::function<void()>& f) {
  if (!s.remote) {
    f();
    return;
  }
  rtl::Reference<Work> work(new Work(f));
  auto done = work->Done();
  css::awt::AsyncCallback::create(s.context)->addCallback(Reference<css::awt::XCallback>(work.get()), uno::Any());
  if (done.wait_for(std::chrono::seconds(60)) != std::future_status::ready)
    throw HostError(HostError::kOfficeFailure, "The office did not get to the work");
  done.get();
}

}  // namespace nivarel::host
