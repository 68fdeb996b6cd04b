// The open spreadsheet documents of the office.
#pragma once

#include <memory>
#include <string>

#include "Workbook.h"

namespace nivarel::office {

struct HostSession;

class Workbooks {
 public:
  explicit Workbooks(std::shared_ptr<HostSession> session) : session_(std::move(session)) {}
  int Count() const;
  // A new, empty spreadsheet document; it becomes the active one.
  Workbook Add();
  // Opens a file by path; a template opens as a new document. A read-only
  // document leaves no lock file beside the file, and a file that the office
  // would ask a question about fails to open instead. A .csv file comes in
  // through the office's CSV filter as one sheet: UTF-8 text, fields split
  // at commas, double quotes around a field that holds one.
  Workbook Open(const std::string& path, bool readOnly = false);
  // Opens a file read-only and out of sight, to copy from; the caller closes it.
  Workbook OpenHidden(const std::string& path);
  // Opens a new, untitled document made from a file, as a template opens:
  // the file is neither locked nor changed, even while it is open
  // elsewhere, and a file the office would ask a question about fails to
  // open instead.
  Workbook OpenCopy(const std::string& path);

 private:
  Workbook OpenAs(const std::string& path, bool readOnly, bool hidden, bool copy = false);
  std::shared_ptr<HostSession> session_;
};

}  // namespace nivarel::office
