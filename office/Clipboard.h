// The office's clipboard: what Copy and Paste use in every document of the
// office. Text put here is pasted as plain text anywhere in the office.
#pragma once

#include <string>

#include "Application.h"

namespace nivarel::office {

class Clipboard {
 public:
  explicit Clipboard(const Application& app) : app_(app) {}
  // Replaces whatever the clipboard held with the text.
  void SetText(const std::string& text);
  // The clipboard's content as plain text; "" when it holds no text.
  std::string Text() const;

 private:
  Application app_;
};

}  // namespace nivarel::office
