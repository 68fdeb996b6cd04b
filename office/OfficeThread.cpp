// The office's thread for a remote client, and the count of the layer's calls.
#include <algorithm>
#include <atomic>
#include <map>
#include <chrono>
#include <exception>
#include <future>
#include <mutex>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "Border.h"
#include "HostStats.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

std::mutex remoteMutex;
Reference<uno::XComponentContext> remoteContext;
thread_local bool onOfficeThread = false;

// Called back by the office's event loop; runs the work and reports.
class Work : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Work(const std::function<void()>& f) : f_(f) {}
  void SAL_CALL notify(const uno::Any&) override {
    OfficeThreadScope scope;
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

// Called back by the office's event loop; runs the work and forgets it.
class Later : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Later(std::function<void()> f) : f_(std::move(f)) {}
  void SAL_CALL notify(const uno::Any&) override {
    OfficeThreadScope scope;
    AtBorder("OfficeThread", "RunLater", f_);
  }

 private:
  std::function<void()> f_;
};

}  // namespace

void RunLater(const Reference<uno::XComponentContext>& context, std::function<void()> f) {
  Call("RunLater", [&] {
    css::awt::AsyncCallback::create(context)->addCallback(new Later(std::move(f)), uno::Any());
  });
}

OfficeThreadScope::OfficeThreadScope() : previous_(onOfficeThread) { onOfficeThread = true; }
OfficeThreadScope::~OfficeThreadScope() { onOfficeThread = previous_; }

void SetRemoteOffice(const Reference<uno::XComponentContext>& context) {
  std::lock_guard<std::mutex> lock(remoteMutex);
  remoteContext = context;
}

void ForgetRemoteOffice(const Reference<uno::XComponentContext>& context) {
  std::lock_guard<std::mutex> lock(remoteMutex);
  if (remoteContext == context) remoteContext.clear();
}

bool NeedsOfficeThread() {
  if (onOfficeThread) return false;
  std::lock_guard<std::mutex> lock(remoteMutex);
  return remoteContext.is();
}

void RunOnOfficeThread(const std::function<void()>& f) {
  Reference<uno::XComponentContext> context;
  {
    std::lock_guard<std::mutex> lock(remoteMutex);
    context = remoteContext;
  }
  if (onOfficeThread || !context.is()) {
    f();
    return;
  }
  rtl::Reference<Work> work(new Work(f));
  auto done = work->Done();
  try {
    css::awt::AsyncCallback::create(context)->addCallback(Reference<css::awt::XCallback>(work.get()), uno::Any());
  } catch (const uno::Exception& e) {
    throw HostError(HostError::kOfficeFailure, "The office cannot be reached: " + ToUtf8(e.Message));
  }
  // A modal box may keep the office busy for a while; an office that has
  // gone will never get to the work.
  auto end = std::chrono::steady_clock::now() + std::chrono::minutes(10);
  while (done.wait_for(std::chrono::seconds(1)) != std::future_status::ready) {
    try {
      context->getServiceManager();
    } catch (const uno::Exception&) {
      throw HostError(HostError::kOfficeFailure, "The office has gone");
    }
    if (std::chrono::steady_clock::now() > end)
      throw HostError(HostError::kOfficeFailure, "The office did not get to the work");
  }
  done.get();
}

}  // namespace nivarel::office

namespace nivarel::office {

namespace {
std::atomic<long> hostCalls{0};
std::atomic<bool> profiling{false};
std::mutex profileMutex;
std::map<std::string, HostCallTime> profile;
thread_local int timedDepth = 0;

long long NowNs() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}
}  // namespace

void CountHostCall() { hostCalls.fetch_add(1, std::memory_order_relaxed); }

long HostCallCount() { return hostCalls.load(std::memory_order_relaxed); }

HostCallTimer::HostCallTimer(const char* what) : what_(what) {
  if (!profiling.load(std::memory_order_relaxed)) return;
  counted_ = true;
  if (timedDepth++ == 0) start_ = NowNs();
}

HostCallTimer::~HostCallTimer() {
  if (!counted_) return;
  --timedDepth;
  if (start_ < 0) return;
  double ms = (NowNs() - start_) / 1e6;
  std::lock_guard<std::mutex> lock(profileMutex);
  HostCallTime& t = profile[what_];
  t.what = what_;
  ++t.calls;
  t.ms += ms;
}

void ProfileHostCalls(bool on) {
  std::lock_guard<std::mutex> lock(profileMutex);
  profile.clear();
  profiling = on;
}

std::vector<HostCallTime> HostCallProfile() {
  std::lock_guard<std::mutex> lock(profileMutex);
  std::vector<HostCallTime> sums;
  for (const auto& [what, t] : profile) sums.push_back(t);
  std::sort(sums.begin(), sums.end(), [](const HostCallTime& a, const HostCallTime& b) { return a.ms > b.ms; });
  return sums;
}

}  // namespace nivarel::office
