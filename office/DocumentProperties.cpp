#include "DocumentProperties.h"

#include <cmath>
#include <cstdio>

#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/XPropertyContainer.hpp>
#include <com/sun/star/document/XDocumentProperties.hpp>
#include <com/sun/star/document/XDocumentPropertiesSupplier.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {

Reference<css::document::XDocumentProperties> PropertiesOf(const WorkbookImpl& book) {
  Reference<css::document::XDocumentPropertiesSupplier> s(book.document, uno::UNO_QUERY_THROW);
  return s->getDocumentProperties();
}

Reference<css::beans::XPropertySet> UserDefined(const WorkbookImpl& book) {
  return Reference<css::beans::XPropertySet>(PropertiesOf(book)->getUserDefinedProperties(), uno::UNO_QUERY_THROW);
}

css::beans::Property PropertyAt(const WorkbookImpl& book, int index) {
  auto all = UserDefined(book)->getPropertySetInfo()->getProperties();
  if (index < 1 || index > all.getLength()) throw HostError(HostError::kInvalidArgument, "Invalid procedure call or argument");
  return all[index - 1];
}

bool IsNumber(const uno::Any& value) {
  switch (value.getValueTypeClass()) {
    case uno::TypeClass_BYTE:
    case uno::TypeClass_SHORT:
    case uno::TypeClass_UNSIGNED_SHORT:
    case uno::TypeClass_LONG:
    case uno::TypeClass_UNSIGNED_LONG:
    case uno::TypeClass_HYPER:
    case uno::TypeClass_UNSIGNED_HYPER:
    case uno::TypeClass_FLOAT:
    case uno::TypeClass_DOUBLE:
      return true;
    default:
      return false;
  }
}

void Add(const WorkbookImpl& book, const std::string& name, const uno::Any& value) {
  Reference<css::beans::XPropertyContainer> c(PropertiesOf(book)->getUserDefinedProperties());
  OUString key = ToOu(name);
  Reference<css::beans::XPropertySet> set(c, uno::UNO_QUERY_THROW);
  if (set->getPropertySetInfo()->hasPropertyByName(key)) c->removeProperty(key);
  c->addProperty(key, css::beans::PropertyAttribute::REMOVABLE, value);
}

}  // namespace

std::string DocumentProperties::Title() const {
  return Call("BuiltinDocumentProperties.Title", [&] { return ToUtf8(PropertiesOf(*book_)->getTitle()); });
}

void DocumentProperties::SetTitle(const std::string& title) {
  Call("BuiltinDocumentProperties.Title", [&] { PropertiesOf(*book_)->setTitle(ToOu(title)); });
}

int DocumentProperties::Count() const {
  return Call("CustomDocumentProperties.Count", [&] {
    return static_cast<int>(UserDefined(*book_)->getPropertySetInfo()->getProperties().getLength());
  });
}

std::string DocumentProperties::Name(int index) const {
  return Call("DocumentProperty.Name", [&] { return ToUtf8(PropertyAt(*book_, index).Name); });
}

std::string DocumentProperties::Value(int index) const {
  return Call("DocumentProperty.Value", [&] {
    uno::Any value = UserDefined(*book_)->getPropertyValue(PropertyAt(*book_, index).Name);
    if (IsNumber(value)) {
      double number = 0;
      value >>= number;
      char text[32];
      std::snprintf(text, sizeof text, "%.15g", number);
      return std::string(text);
    }
    OUString text;
    value >>= text;
    return ToUtf8(text);
  });
}

int DocumentProperties::Type(int index) const {
  return Call("DocumentProperty.Type", [&] {
    uno::Any value = UserDefined(*book_)->getPropertyValue(PropertyAt(*book_, index).Name);
    return IsNumber(value) ? kTypeNumber : kTypeString;
  });
}

void DocumentProperties::AddNumber(const std::string& name, double value) {
  Call("CustomDocumentProperties.Add", [&] { Add(*book_, name, uno::Any(value)); });
}

void DocumentProperties::AddText(const std::string& name, const std::string& value) {
  Call("CustomDocumentProperties.Add", [&] { Add(*book_, name, uno::Any(ToOu(value))); });
}

void DocumentProperties::Delete(const std::string& name) {
  Call("DocumentProperty.Delete", [&] {
    Reference<css::beans::XPropertyContainer> c(PropertiesOf(*book_)->getUserDefinedProperties());
    Reference<css::beans::XPropertySet> set(c, uno::UNO_QUERY_THROW);
    if (!set->getPropertySetInfo()->hasPropertyByName(ToOu(name)))
      throw HostError(HostError::kInvalidArgument, "Invalid procedure call or argument");
    c->removeProperty(ToOu(name));
  });
}

}  // namespace nivarel::office
