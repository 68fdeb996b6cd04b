#include "Border.h"

#include <mutex>

namespace nivarel::office {

namespace {

using Log = std::function<void(const std::string&, const std::string&)>;

// Made on first use: a log set while statics are still being made is kept.
Log& TheLog() {
  static Log log;
  return log;
}
std::mutex& LogMutex() {
  static std::mutex m;
  return m;
}

}  // namespace

void SetBorderLog(Log log) {
  std::lock_guard<std::mutex> lock(LogMutex());
  TheLog() = std::move(log);
}

bool AtBorder(const char* source, const char* procedure, const std::function<void()>& work) noexcept {
  try {
    work();
    return true;
  } catch (...) {
    try {
      Log log;
      {
        std::lock_guard<std::mutex> lock(LogMutex());
        log = TheLog();
      }
      if (log) log(source, procedure);
    } catch (...) {
    }
    return false;
  }
}

}  // namespace nivarel::office
