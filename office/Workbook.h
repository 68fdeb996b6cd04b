// One spreadsheet document: its sheets, saving, sharing state and the
// document events that end a flowcharting session.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "DocumentProperties.h"
#include "Subscription.h"
#include "Worksheet.h"

namespace nivarel::office {

struct HostSession;
struct WorkbookImpl;

class Workbook {
 public:
  explicit Workbook(std::shared_ptr<WorkbookImpl> impl) : impl_(std::move(impl)) {}

  int SheetCount() const;
  // Sheets by 1-based index.
  Worksheet Sheet(int index) const;
  // The sheet of that name (compared exactly); none when there is none.
  std::optional<Worksheet> SheetNamed(const std::string& name) const;
  // A new sheet after the last one; it becomes the active sheet.
  Worksheet AddSheet();
  // Copies every sheet of source, with its cells, shapes and page setup, in
  // behind the sheet after; a name already taken gets a number. Returns the
  // first copy. Recorded in the undo list: undone, the copies go; redone,
  // they are copied again from source's file.
  Worksheet CopySheetsFrom(const Workbook& source, const Worksheet& after);
  // A copy of one of this workbook's sheets, cells, formats and drawing, as
  // a new sheet "SheetN" behind the last one; the office records it for
  // Ctrl+Z.
  Worksheet CopySheet(const Worksheet& sheet);
  std::string Name() const;
  // Its title and custom properties.
  DocumentProperties GetDocumentProperties() const { return DocumentProperties(impl_); }
  // Saves under path, which the document then stands for; the format follows the extension (.ods, .xlsx, .xls,
  // .xltx, .xlt, .ots).
  void SaveAs(const std::string& path);
  // After the office saved this document as .xlsx or .xltx: rewrites the
  // file so that other programs see each connector glued to its shapes (see
  // XlsxConnectors). Does nothing for other formats or an unsaved document.
  void RepairSavedConnectors();
  // Prints the whole document into the file at path instead of to a printer,
  // and returns when the printing is done; the document's print event fires.
  void PrintOut(const std::string& path);
  bool MultiUserEditing() const;
  void Close();
  void Activate();
  bool SameAs(const Workbook& other) const;

  enum class Event { BeforeClose, BeforePrint, BeforeSave, AfterSave };
  // Called before the document closes, prints or saves, and after it was saved
  // under its own location; the office's action goes on. A close is told once,
  // whether the user or a program closes the document.
  Subscription OnEvent(std::function<void(Event)> handler);

  const std::shared_ptr<WorkbookImpl>& Impl() const { return impl_; }

 private:
  std::shared_ptr<WorkbookImpl> impl_;
};

}  // namespace nivarel::office
