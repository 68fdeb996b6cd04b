// Keeps an event handler registered with the office for as long as it lives.
#pragma once

#include <functional>
#include <memory>

namespace nivarel::office {

class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> cancel) : cancel_(std::make_shared<Cancel>(std::move(cancel))) {}
  void Reset() { cancel_.reset(); }
  bool Active() const { return cancel_ != nullptr; }

 private:
  struct Cancel {
    explicit Cancel(std::function<void()> f) : f(std::move(f)) {}
    ~Cancel() {
      try {
        if (f) f();
      } catch (...) {
      }
    }
    std::function<void()> f;
  };
  std::shared_ptr<Cancel> cancel_;
};

}  // namespace nivarel::office
