// The document window of the active workbook.
#pragma once

#include <memory>

namespace nivarel::office {

struct WorkbookImpl;

class Window {
 public:
  explicit Window(std::shared_ptr<WorkbookImpl> book) : book_(std::move(book)) {}
  bool DisplayGridlines() const;
  void SetDisplayGridlines(bool on);

 private:
  std::shared_ptr<WorkbookImpl> book_;
};

}  // namespace nivarel::office
