// A document's title and its custom properties, as a template carries them:
// each custom property has a name, a type (a number or a text) and a value.
// They are saved with the document in every format (.ods, .xlsx, .xltx,
// .xls, .xlt).
#pragma once

#include <memory>
#include <string>

namespace nivarel::office {

struct WorkbookImpl;

class DocumentProperties {
 public:
  // MsoDocProperties: the types a custom property is added with.
  static constexpr int kTypeNumber = 1, kTypeString = 4;

  explicit DocumentProperties(std::shared_ptr<WorkbookImpl> book) : book_(std::move(book)) {}

  std::string Title() const;
  void SetTitle(const std::string& title);

  // The custom properties, by 1-based index in the order the document keeps them.
  int Count() const;
  std::string Name(int index) const;
  // The value as text: a number as the office writes it ("4"), a text as it is.
  std::string Value(int index) const;
  // kTypeNumber or kTypeString.
  int Type(int index) const;
  // Adds a property; one of the same name is replaced.
  void AddNumber(const std::string& name, double value);
  void AddText(const std::string& name, const std::string& value);
  // Removes it; a missing name raises HostError.
  void Delete(const std::string& name);

 private:
  std::shared_ptr<WorkbookImpl> book_;
};

}  // namespace nivarel::office
