// Character formats of cells or of a shape's text.
#pragma once

#include <memory>
#include <string>

namespace nivarel::office {

struct PropsRef;

class Font {
 public:
  explicit Font(std::shared_ptr<PropsRef> props) : props_(std::move(props)) {}
  std::string Name() const;
  void SetName(const std::string& name);
  double Size() const;
  void SetSize(double points);
  bool Bold() const;
  void SetBold(bool on);
  bool Italic() const;
  void SetItalic(bool on);
  long Color() const;  // red in the low byte
  void SetColor(long rgb);

 private:
  std::shared_ptr<PropsRef> props_;
};

}  // namespace nivarel::office
