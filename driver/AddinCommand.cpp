#include "AddinCommand.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <sstream>

#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/frame/DispatchResultEvent.hpp>
#include <com/sun/star/frame/DispatchResultState.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XDispatchResultListener.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XNotifyingDispatch.hpp>
#include <com/sun/star/util/URLTransformer.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "Border.h"
#include "Uno.h"

namespace nivarel::driver {

using namespace office;

namespace {

// Keeps the answer the handler gives, whenever it comes.
class Listener : public cppu::WeakImplHelper1<css::frame::XDispatchResultListener> {
 public:
  void SAL_CALL dispatchFinished(const css::frame::DispatchResultEvent& event) override {
    AtBorder("AddinCommand", "dispatchFinished", [&] {
      std::lock_guard<std::mutex> lock(mutex_);
      event_ = event;
      told_.notify_all();
    });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

  std::optional<css::frame::DispatchResultEvent> Wait(int seconds) {
    std::unique_lock<std::mutex> lock(mutex_);
    told_.wait_for(lock, std::chrono::seconds(seconds), [&] { return event_.has_value(); });
    return event_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable told_;
  std::optional<css::frame::DispatchResultEvent> event_;
};

std::string TextOf(const uno::Any& value) {
  OUString text;
  if (value >>= text) return ToUtf8(text);
  bool flag = false;
  if (value.getValueTypeClass() == uno::TypeClass_BOOLEAN && (value >>= flag)) return flag ? "true" : "false";
  double number = 0;
  if (value >>= number) {
    std::ostringstream out;
    out << number;
    return out.str();
  }
  return {};
}

}  // namespace

AddinCommand::Answer AddinCommand::Send(const Workbook& book, const std::string& url,
                                        const std::vector<std::pair<std::string, Value>>& arguments,
                                        int timeoutSeconds) {
  rtl::Reference<Listener> listener(new Listener());
  std::vector<css::beans::PropertyValue> args;
  for (const auto& [name, value] : arguments) {
    css::beans::PropertyValue p;
    p.Name = ToOu(name);
    if (const bool* flag = std::get_if<bool>(&value))
      p.Value <<= *flag;
    else if (const int* number = std::get_if<int>(&value))
      p.Value <<= sal_Int32(*number);
    else
      p.Value <<= ToOu(std::get<std::string>(value));
    args.push_back(p);
  }
  // Sent from the office's own thread, as a menu click is: a handler that
  // answers at once has answered when this returns.
  Call("AddinCommand.Send", [&] {
    Reference<css::frame::XFrame> frame = book.Impl()->Model()->getCurrentController()->getFrame();
    css::util::URL parsed;
    parsed.Complete = ToOu(url);
    css::util::URLTransformer::create(book.Impl()->session->context)->parseStrict(parsed);
    Reference<css::frame::XDispatchProvider> provider(frame, uno::UNO_QUERY_THROW);
    Reference<css::frame::XNotifyingDispatch> dispatch(provider->queryDispatch(parsed, "_self", 0), uno::UNO_QUERY);
    if (!dispatch.is()) throw HostError(HostError::kOfficeFailure, "No handler answers " + url);
    dispatch->dispatchWithNotification(
        parsed, uno::Sequence<css::beans::PropertyValue>(args.data(), static_cast<sal_Int32>(args.size())),
        Reference<css::frame::XDispatchResultListener>(listener.get()));
  });
  std::optional<css::frame::DispatchResultEvent> event = listener->Wait(timeoutSeconds);
  if (!event) throw HostError(HostError::kOfficeFailure, "No answer came from " + url);
  if (event->State == css::frame::DispatchResultState::DONTKNOW)
    throw HostError(HostError::kOfficeFailure, url + " gives no answer");
  Answer answer;
  answer.succeeded = event->State == css::frame::DispatchResultState::SUCCESS;
  uno::Sequence<css::beans::NamedValue> values;
  if (event->Result >>= values)
    for (const auto& v : values) answer.values[ToUtf8(v.Name)] = TextOf(v.Value);
  return answer;
}

}  // namespace nivarel::driver
