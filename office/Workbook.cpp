#include "Workbook.h"

#include <filesystem>
#include <map>

#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/document/XDocumentEventBroadcaster.hpp>
#include <com/sun/star/document/XDocumentEventListener.hpp>
#include <com/sun/star/document/XUndoAction.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XSpreadsheets2.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XPrintable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <osl/file.hxx>

#include "Border.h"
#include "ConnectorFormat.h"
#include "MsoConstants.h"
#include "Shape.h"
#include "ShapeRecipe.h"
#include "Shapes.h"
#include "Characters.h"
#include "Font.h"
#include "TextFrame.h"
#include "Workbooks.h"
#include "XlsxConnectors.h"
#include "Uno.h"

namespace nivarel::office {

Reference<css::frame::XModel> WorkbookImpl::Model() const {
  return Reference<css::frame::XModel>(document, uno::UNO_QUERY);
}

int Workbook::SheetCount() const {
  return Call("Workbook.Sheets", [&] {
    Reference<css::container::XIndexAccess> sheets(impl_->document->getSheets(), uno::UNO_QUERY_THROW);
    return static_cast<int>(sheets->getCount());
  });
}

Worksheet Workbook::Sheet(int index) const {
  return Call("Workbook.Sheets", [&] {
    Reference<css::container::XIndexAccess> sheets(impl_->document->getSheets(), uno::UNO_QUERY_THROW);
    if (index < 1 || index > sheets->getCount())
      throw HostError(HostError::kInvalidArgument, "Subscript out of range");
    Reference<css::sheet::XSpreadsheet> sheet(sheets->getByIndex(index - 1), uno::UNO_QUERY_THROW);
    return Worksheet(MakeSheetRef(impl_->session, impl_->document, sheet));
  });
}

std::optional<Worksheet> Workbook::SheetNamed(const std::string& name) const {
  for (int i = 1, n = SheetCount(); i <= n; ++i) {
    Worksheet sheet = Sheet(i);
    if (sheet.Name() == name) return sheet;
  }
  return std::nullopt;
}

namespace {

// "SheetN", N from one above count up, the first name no sheet has.
OUString FreshSheetName(const Reference<css::sheet::XSpreadsheets>& sheets, int count) {
  for (int i = count + 1;; ++i) {
    OUString name = ToOu("Sheet" + std::to_string(i));
    if (!sheets->hasByName(name)) return name;
  }
}

}  // namespace

Worksheet Workbook::AddSheet() {
  int n = SheetCount();
  Call("Sheets.Add", [&] {
    auto sheets = impl_->document->getSheets();
    sheets->insertNewByName(FreshSheetName(sheets, n), static_cast<sal_Int16>(n));
  });
  Worksheet ws = Sheet(n + 1);
  ws.Activate();
  return ws;
}

Worksheet Workbook::CopySheet(const Worksheet& sheet) {
  int n = SheetCount();
  std::string from = sheet.Name();
  Call("Sheets.Copy", [&] {
    auto sheets = impl_->document->getSheets();
    sheets->copyByName(ToOu(from), FreshSheetName(sheets, n), static_cast<sal_Int16>(n));
  });
  return Sheet(n + 1);
}

namespace {

// The office's undo list records no sheet copied in from another document:
// Ctrl+Z takes the copies away again, Ctrl+Y copies them in once more from
// the file they came from (a file gone meanwhile leaves the workbook as it is).
class CopiedSheetsAction : public cppu::WeakImplHelper1<css::document::XUndoAction> {
 public:
  CopiedSheetsAction(std::shared_ptr<WorkbookImpl> book, OUString source, std::vector<OUString> names,
                     sal_Int32 position)
      : book_(std::move(book)), source_(std::move(source)), names_(std::move(names)), position_(position) {}

  OUString SAL_CALL getTitle() override { return "Sheets"; }

  void SAL_CALL undo() override {
    OfficeThreadScope scope;
    AtBorder("Workbook", "UndoCopySheets", [&] {
      UnrecordedUndo unrecorded(book_->document);
      auto sheets = book_->document->getSheets();
      for (const OUString& name : names_)
        if (sheets->hasByName(name)) sheets->removeByName(name);
    });
  }

  void SAL_CALL redo() override {
    OfficeThreadScope scope;
    AtBorder("Workbook", "RedoCopySheets", [&] {
      OUString path;
      if (osl::FileBase::getSystemPathFromFileURL(source_, path) != osl::FileBase::E_None) return;
      Workbook source = Workbooks(book_->session).OpenHidden(ToUtf8(path));
      try {
        UnrecordedUndo unrecorded(book_->document);
        Reference<css::sheet::XSpreadsheets2> sheets(book_->document->getSheets(), uno::UNO_QUERY_THROW);
        auto from = source.Impl()->document->getSheets();
        const auto names = from->getElementNames();
        for (sal_Int32 i = 0; i < names.getLength() && i < static_cast<sal_Int32>(names_.size()); ++i) {
          if (sheets->hasByName(names_[i])) continue;
          if (names[i] != names_[i])
            Reference<css::container::XNamed>(from->getByName(names[i]), uno::UNO_QUERY_THROW)->setName(names_[i]);
          sheets->importSheet(source.Impl()->document, names_[i], position_ + i);
        }
      } catch (...) {
        source.Close();
        throw;
      }
      source.Close();
    });
  }

 private:
  std::shared_ptr<WorkbookImpl> book_;
  OUString source_;
  std::vector<OUString> names_;
  sal_Int32 position_;
};

}  // namespace

Worksheet Workbook::CopySheetsFrom(const Workbook& source, const Worksheet& after) {
  int position = after.Index();
  int first = 0;
  Call("Sheets.Add", [&] {
    std::vector<OUString> copied;
    Reference<css::sheet::XSpreadsheets2> sheets(impl_->document->getSheets(), uno::UNO_QUERY_THROW);
    auto from = source.impl_->document->getSheets();
    const auto names = from->getElementNames();
    if (names.getLength() == 0) throw HostError(HostError::kInvalidArgument, "The template has no sheet");
    for (sal_Int32 i = 0; i < names.getLength(); ++i) {
      OUString name = names[i];
      // The copy keeps the source's name, so a taken one is changed in the
      // source first: it is a copy of its own that nobody sees.
      if (sheets->hasByName(name)) {
        OUString base = name;
        for (int n = 2; sheets->hasByName(name) || from->hasByName(name); ++n)
          name = base + "_" + OUString::number(n);
        Reference<css::container::XNamed>(from->getByName(names[i]), uno::UNO_QUERY_THROW)->setName(name);
      }
      sal_Int32 at = sheets->importSheet(source.impl_->document, name, static_cast<sal_Int32>(position + i));
      if (i == 0) first = static_cast<int>(at) + 1;
      copied.push_back(name);
    }
    // A template opens as a new untitled document: its file is the one the
    // office was asked to load.
    OUString file = source.impl_->Model()->getURL();
    for (const auto& arg : source.impl_->Model()->getArgs())
      if (arg.Name == "URL" && file.isEmpty()) arg.Value >>= file;
    ManagerOf(impl_->document)
        ->addUndoAction(new CopiedSheetsAction(impl_, file, std::move(copied),
                                               static_cast<sal_Int32>(position)));
  });
  return Sheet(first);
}

std::string Workbook::Name() const {
  return Call("Workbook.Name", [&] {
    std::string url = ToUtf8(impl_->Model()->getURL());
    if (url.empty()) return std::string("Untitled");
    return url.substr(url.find_last_of('/') + 1);
  });
}

void Workbook::SaveAs(const std::string& path) {
  Call("Workbook.SaveAs", [&] {
    static const std::map<std::string, const char*> filters = {
        {".ods", "calc8"},
        {".ots", "calc8_template"},
        {".xlsx", "Calc MS Excel 2007 XML"},
        {".xltx", "Calc MS Excel 2007 XML Template"},
        {".xls", "MS Excel 97"},
        {".xlt", "MS Excel 97 Vorlage/Template"},
    };
    std::string ext = FileTypeOf(path);
    auto f = filters.find(ext);
    if (f == filters.end()) throw HostError(HostError::kInvalidArgument, "Unknown file type '" + ext + "'");
    Reference<css::frame::XStorable> store(impl_->document, uno::UNO_QUERY_THROW);
    uno::Sequence<css::beans::PropertyValue> args(2);
    args.getArray()[0].Name = "FilterName";
    args.getArray()[0].Value <<= OUString::createFromAscii(f->second);
    args.getArray()[1].Name = "Overwrite";
    args.getArray()[1].Value <<= true;
    // The document becomes that file, as after the user's Save As.
    store->storeAsURL(ToOu("file://" + std::filesystem::absolute(path).string()), args);
  });
  RepairSavedConnectors();
}

namespace {

// What the office's .xlsx writer leaves out of shape's text: its direction,
// and the font and anchor of a shape without text.
void TextToKeep(const Shape& shape, std::vector<XlsxConnectors::ShapeText>& texts) {
  TextFrame frame = shape.GetTextFrame();
  XlsxConnectors::ShapeText text;
  text.name = shape.Name();
  int orientation = frame.Orientation();
  if (orientation == msoTextOrientationUpward) text.vert = "vert270";
  if (orientation == msoTextOrientationDownward) text.vert = "vert";
  text.empty = frame.GetCharacters().Text().empty();
  if (text.vert.empty() && !text.empty) return;
  if (text.empty) {
    Font font = frame.GetCharacters().GetFont();
    text.font = font.Name();
    text.size = font.Size();
    text.bold = font.Bold();
    text.italic = font.Italic();
    int align = frame.VerticalAlignment();
    text.anchor = align == xlTop ? "t" : align == xlBottom ? "b" : "ctr";
  }
  texts.push_back(text);
}

}  // namespace

void Workbook::RepairSavedConnectors() {
  std::string path;
  Call("Workbook.SaveAs", [&] {
    auto model = impl_->Model();
    OUString filter;
    for (const auto& a : model->getArgs())
      if (a.Name == "FilterName") a.Value >>= filter;
    OUString system;
    if (!filter.startsWith("Calc MS Excel 2007") || model->getURL().isEmpty() ||
        osl::FileBase::getSystemPathFromFileURL(model->getURL(), system) != osl::FileBase::E_None)
      return;
    path = ToUtf8(system);
  });
  if (path.empty()) return;
  std::vector<std::vector<XlsxConnectors::Connector>> sheets;
  std::vector<std::vector<XlsxConnectors::ShapeText>> texts;
  for (int i = 1, n = SheetCount(); i <= n; ++i) {
    auto& glued = sheets.emplace_back();
    texts.emplace_back();
    std::vector<Shape> pending;
    Shapes shapes = Sheet(i).GetShapes();
    for (int k = 1, m = shapes.Count(); k <= m; ++k) pending.push_back(shapes.Item(k));
    while (!pending.empty()) {
      Shape s = pending.back();
      pending.pop_back();
      if (s.Type() == msoGroup) {
        for (auto& member : s.GroupItems()) pending.push_back(member);
        continue;
      }
      if (!s.Connector()) {
        if (s.Type() == msoAutoShape) TextToKeep(s, texts.back());
        continue;
      }
      ConnectorFormat c = s.GetConnectorFormat();
      XlsxConnectors::Connector entry{s.Name(), {}, {}};
      if (auto b = c.BeginConnectedShape()) entry.begin = {b->Name(), c.BeginConnectionSite()};
      if (auto e = c.EndConnectedShape()) entry.end = {e->Name(), c.EndConnectionSite()};
      glued.push_back(entry);
    }
  }
  XlsxConnectors(std::move(sheets), std::move(texts)).Rewrite(path);
}

void Workbook::PrintOut(const std::string& path) {
  Call("Workbook.PrintOut", [&] {
    OUString url;
    if (osl::FileBase::getFileURLFromSystemPath(ToOu(std::filesystem::absolute(path).string()), url) !=
        osl::FileBase::E_None)
      throw HostError(HostError::kInvalidArgument, "'" + path + "' is not a valid file name");
    Reference<css::view::XPrintable> printable(impl_->document, uno::UNO_QUERY_THROW);
    uno::Sequence<css::beans::PropertyValue> options(2);
    options.getArray()[0].Name = "FileName";
    options.getArray()[0].Value <<= url;
    options.getArray()[1].Name = "Wait";
    options.getArray()[1].Value <<= true;
    printable->print(options);
  });
}

bool Workbook::MultiUserEditing() const {
  return Call("Workbook.MultiUserEditing", [&] {
    // A shared document is edited in a private copy: the model's location
    // names the shared file while the URL it was loaded from names the copy.
    Reference<css::frame::XStorable> storable(impl_->document, uno::UNO_QUERY_THROW);
    OUString location = storable->getLocation();
    OUString url;
    for (const auto& arg : impl_->Model()->getArgs())
      if (arg.Name == "URL") arg.Value >>= url;
    return !location.isEmpty() && !url.isEmpty() && location != url;
  });
}

void Workbook::Close() {
  Call("Workbook.Close", [&] {
    Reference<css::util::XCloseable> c(impl_->document, uno::UNO_QUERY_THROW);
    c->close(true);
  });
}

void Workbook::Activate() {
  Call("Workbook.Activate", [&] {
    auto frame = impl_->Model()->getCurrentController()->getFrame();
    frame->activate();
    Reference<css::awt::XTopWindow> top(frame->getContainerWindow(), uno::UNO_QUERY);
    if (top.is()) top->toFront();
    frame->getContainerWindow()->setFocus();
  });
}

bool Workbook::SameAs(const Workbook& other) const {
  return impl_->Model() == other.impl_->Model();
}

namespace {

class DocumentEvents : public cppu::WeakImplHelper1<css::document::XDocumentEventListener> {
 public:
  explicit DocumentEvents(std::function<void(Workbook::Event)> f) : f_(std::move(f)) {}
  void SAL_CALL documentEventOccured(const css::document::DocumentEvent& e) override {
    OfficeThreadScope scope;
    const OUString& n = e.EventName;
    // A handler's failure must not stop the office's own action.
    AtBorder("Workbook", "DocumentEvent", [&] {
      if (n == "OnPrepareUnload") {
        closing_ = true;
        f_(Workbook::Event::BeforeClose);
      } else if (n == "OnUnload") {
        // A close by a program (the model's own close) skips the warning
        // above: the unload is the last word before the document goes.
        if (!closing_) f_(Workbook::Event::BeforeClose);
      } else if (n == "OnPrint")
        f_(Workbook::Event::BeforePrint);
      else if (n == "OnSave" || n == "OnSaveAs")
        f_(Workbook::Event::BeforeSave);
      else if (n == "OnSaveDone" || n == "OnSaveAsDone")
        f_(Workbook::Event::AfterSave);
    });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  std::function<void(Workbook::Event)> f_;
  bool closing_ = false;  // this close was told at its warning
};

}  // namespace

Subscription Workbook::OnEvent(std::function<void(Event)> handler) {
  return Call("Workbook.Events", [&] {
    Reference<css::document::XDocumentEventBroadcaster> b(impl_->document, uno::UNO_QUERY_THROW);
    Reference<css::document::XDocumentEventListener> l(new DocumentEvents(std::move(handler)));
    b->addDocumentEventListener(l);
    return Subscription([b, l] { b->removeDocumentEventListener(l); });
  });
}

}  // namespace nivarel::office
