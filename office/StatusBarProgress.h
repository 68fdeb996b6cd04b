// A long piece of work's progress on the office's status bar: a text and a
// bar that fills from 0 to range, taken off the bar when this goes. Best
// effort: a window without a status bar shows nothing and nothing fails.
#pragma once

#include <memory>
#include <string>

#include "Application.h"

namespace nivarel::office {

class StatusBarProgress {
 public:
  StatusBarProgress(const Application& app, const std::string& text, int range);
  ~StatusBarProgress();
  StatusBarProgress(const StatusBarProgress&) = delete;
  StatusBarProgress& operator=(const StatusBarProgress&) = delete;

  void Set(int value);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace nivarel::office
