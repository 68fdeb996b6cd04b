// The open spreadsheet documents of the office.
#pragma once

#include <memory>
#include <string>

#include "Workbook.h"

namespace nivarel::host {

struct HostSession;

class Workbooks {
 public:
  explicit Workbooks(std::shared_ptr<HostSession> session) : session_(std::move(session)) {}
  int Count() const;
  // A new, empty spreadsheet document; it becomes the active one.
  Workbook Add();
  // Opens a file by path; a template opens as a new document.
  Workbook Open(const std::string& path);

 private:
  std::shared_ptr<HostSession> session_;
};

}  // namespace nivarel::host
