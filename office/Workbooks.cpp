#include "Workbooks.h"

#include <filesystem>
#include <optional>

#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/task/XInteractionAbort.hpp>
#include <com/sun/star/task/XInteractionDisapprove.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <osl/file.hxx>

#include <cppuhelper/implbase1.hxx>

#include "Uno.h"

namespace nivarel::office {

namespace {

// Answers every question of a load with no: a file that the office would ask
// about (its filter options, a repair) fails to open instead of waiting for
// a person.
class RefusingHandler : public cppu::WeakImplHelper1<css::task::XInteractionHandler> {
 public:
  void SAL_CALL handle(const Reference<css::task::XInteractionRequest>& request) override {
    Reference<css::task::XInteractionContinuation> disapprove;
    for (const auto& c : request->getContinuations()) {
      if (Reference<css::task::XInteractionAbort>(c, uno::UNO_QUERY).is()) {
        c->select();
        return;
      }
      if (Reference<css::task::XInteractionDisapprove>(c, uno::UNO_QUERY).is()) disapprove = c;
    }
    if (disapprove.is()) disapprove->select();
  }
};

}  // namespace

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

static Workbook Load(const std::shared_ptr<HostSession>& session, const OUString& url, bool asTemplate,
                     bool readOnly = false, bool hidden = false, bool csv = false, bool askNothing = false) {
  std::vector<css::beans::PropertyValue> props;
  auto text = [&](const char* name, const char* value) {
    css::beans::PropertyValue p;
    p.Name = OUString::createFromAscii(name);
    p.Value <<= OUString::createFromAscii(value);
    props.push_back(p);
  };
  if (csv) {
    // The office's CSV filter: fields split at commas, text between double
    // quotes, UTF-8, from line 1, standard cell formats, system language,
    // quoted fields not forced to text, no guessing of dates and special
    // numbers. Given whole, so that the filter asks nothing.
    text("FilterName", "Text - txt - csv (StarCalc)");
    text("FilterOptions", "44,34,76,1,,0,false,false");
  }
  auto flag = [&](const char* name) {
    css::beans::PropertyValue p;
    p.Name = OUString::createFromAscii(name);
    p.Value <<= true;
    props.push_back(p);
  };
  if (asTemplate) flag("AsTemplate");
  if (hidden) flag("Hidden");
  if (readOnly) flag("ReadOnly");
  if (readOnly || askNothing) {
    css::beans::PropertyValue p;
    p.Name = "InteractionHandler";
    p.Value <<= Reference<css::task::XInteractionHandler>(new RefusingHandler());
    props.push_back(p);
  }
  uno::Sequence<css::beans::PropertyValue> args(props.data(), static_cast<sal_Int32>(props.size()));
  auto comp = session->desktop->loadComponentFromURL(url, "_blank", 0, args);
  Reference<css::sheet::XSpreadsheetDocument> doc(comp, uno::UNO_QUERY);
  if (!doc.is()) {
    // Another kind of document, say a text file, opens in another module: close it again.
    Reference<css::util::XCloseable> other(comp, uno::UNO_QUERY);
    if (other.is()) {
      try {
        other->close(true);
      } catch (const uno::Exception&) {
      }
    }
    throw HostError(HostError::kOfficeFailure, "The document is not a spreadsheet");
  }
  return Workbook(std::make_shared<WorkbookImpl>(WorkbookImpl{session, doc}));
}

Workbook Workbooks::Add() {
  return Call("Workbooks.Add", [&] { return Load(session_, "private:factory/scalc", false); });
}

Workbook Workbooks::Open(const std::string& path, bool readOnly) { return OpenAs(path, readOnly, false); }

Workbook Workbooks::OpenHidden(const std::string& path) { return OpenAs(path, true, true); }

Workbook Workbooks::OpenCopy(const std::string& path) { return OpenAs(path, false, false, true); }

Workbook Workbooks::OpenAs(const std::string& path, bool readOnly, bool hidden, bool copy) {
  return Call("Workbooks.Open", [&] {
    if (!std::filesystem::exists(path))
      throw HostError(HostError::kOfficeFailure, "'" + path + "' could not be found");
    std::string ext = FileTypeOf(path);
    bool tmpl = ext == ".xlt" || ext == ".xltx" || ext == ".ots";
    // A proper URL: names with spaces, '#' or '%' open as they are.
    OUString url;
    if (osl::FileBase::getFileURLFromSystemPath(ToOu(std::filesystem::absolute(path).string()), url) !=
        osl::FileBase::E_None)
      throw HostError(HostError::kOfficeFailure, "'" + path + "' is not a valid file name");
    return Load(session_, url, copy || (tmpl && !hidden), readOnly, hidden, ext == ".csv", copy);
  });
}

}  // namespace nivarel::office
