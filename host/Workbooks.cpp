#include "Workbooks.h"

#include <optional>

#include <filesystem>

#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>

#include "Uno.h"

namespace nivarel::host {

int Workbooks::Count() const {
  return Call("Workbooks.Count", [&] {
    int n = 0;
    auto e = session_->desktop->getComponents()->createEnumeration();
    while (e->hasMoreElements()) {
      Reference<css::sheet::XSpreadsheetDocument> d(e->nextElement(), uno::UNO_QUERY);
      if (d.is()) ++n;
    }
    return n;
  });
}

static Workbook Load(const std::shared_ptr<HostSession>& session, const OUString& url, bool asTemplate) {
  uno::Sequence<css::beans::PropertyValue> args(asTemplate ? 1 : 0);
  if (asTemplate) {
    args.getArray()[0].Name = "AsTemplate";
    args.getArray()[0].Value <<= true;
  }
  auto comp = session->desktop->loadComponentFromURL(url, "_blank", 0, args);
  Reference<css::sheet::XSpreadsheetDocument> doc(comp, uno::UNO_QUERY);
  if (!doc.is()) throw HostError(HostError::kOfficeFailure, "The document is not a spreadsheet");
  return Workbook(std::make_shared<WorkbookImpl>(WorkbookImpl{session, doc}));
}

Workbook Workbooks::Add() {
  return Call("Workbooks.Add", [&] { return Load(session_, "private:factory/scalc", false); });
}

Workbook Workbooks::Open(const std::string& path) {
  return Call("Workbooks.Open", [&] {
    if (!std::filesystem::exists(path))
      throw HostError(HostError::kOfficeFailure, "'" + path + "' could not be found");
    std::string ext = std::filesystem::path(path).extension().string();
    for (auto& c : ext) c = static_cast<char>(tolower(c));
    bool tmpl = ext == ".xlt" || ext == ".xltx" || ext == ".ots";
    return Load(session_, ToOu("file://" + std::filesystem::absolute(path).string()), tmpl);
  });
}

}  // namespace nivarel::host
