#include "Application.h"

#include <algorithm>
#include <set>

#include <com/sun/star/awt/FontDescriptor.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XDevice.hpp>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XReschedule.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/deployment/PackageInformationProvider.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>
#include <com/sun/star/system/SystemShellExecuteFlags.hpp>
#include <com/sun/star/ui/dialogs/ExecutableDialogResults.hpp>
#include <com/sun/star/ui/dialogs/FilePicker.hpp>
#include <com/sun/star/ui/dialogs/FolderPicker.hpp>
#include <com/sun/star/ui/dialogs/TemplateDescription.hpp>
#include <com/sun/star/ui/dialogs/XFilterManager.hpp>
#include <com/sun/star/ui/dialogs/XExecutableDialog.hpp>
#include <com/sun/star/beans/XPropertyAccess.hpp>
#include <com/sun/star/frame/FeatureStateEvent.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XStatusListener.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/util/URLTransformer.hpp>
#include <cppuhelper/implbase1.hxx>
#include <osl/file.hxx>
#include <rtl/ref.hxx>
#include <com/sun/star/configuration/theDefaultProvider.hpp>
#include <com/sun/star/util/XChangesBatch.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/drawing/XShapes.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XRangeSelection.hpp>
#include <com/sun/star/sheet/XRangeSelectionListener.hpp>
#include <com/sun/star/sheet/RangeSelectionEvent.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "Border.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

// The spreadsheet in front. Another kind of document in front (a chart or a
// text in a window of its own) means there is none. Only when no document
// is in front at all (an invisible office, a window just closed) does the
// last spreadsheet the office lists stand in.
Reference<css::sheet::XSpreadsheetDocument> CurrentDocument(const HostSession& s) {
  Reference<css::lang::XComponent> current = s.desktop->getCurrentComponent();
  Reference<css::sheet::XSpreadsheetDocument> doc(current, uno::UNO_QUERY);
  if (doc.is() || current.is()) return doc;
  auto e = s.desktop->getComponents()->createEnumeration();
  Reference<css::sheet::XSpreadsheetDocument> last;
  while (e->hasMoreElements()) {
    Reference<css::sheet::XSpreadsheetDocument> d(e->nextElement(), uno::UNO_QUERY);
    if (d.is()) last = d;
  }
  return last;
}

}  // namespace

Application::Application(std::shared_ptr<HostSession> session) : session_(std::move(session)) {
  const char* v = std::getenv("NIVAREL_OBJECT_MODEL");
  int major = v ? std::atoi(v) : 0;
  session_->objectModelVersion = major > 0 ? major : 12;
}

std::string Application::Version() const { return std::to_string(session_->objectModelVersion) + ".0"; }

std::string Application::OfficeVersion() const {
  return Call("Application.OfficeVersion", [&] {
    auto provider = css::configuration::theDefaultProvider::get(session_->context);
    css::beans::NamedValue path("nodepath", uno::Any(OUString("/org.openoffice.Setup/Product")));
    uno::Sequence<uno::Any> args(1);
    args.getArray()[0] <<= path;
    Reference<css::container::XNameAccess> product(
        provider->createInstanceWithArguments("com.sun.star.configuration.ConfigurationAccess", args),
        uno::UNO_QUERY_THROW);
    OUString v;
    product->getByName("ooSetupVersionAboutBox") >>= v;
    return ToUtf8(v);
  });
}

namespace {

// The spreadsheet's drawing-grid options, to read or change.
Reference<css::beans::XPropertySet> GridOptions(const HostSession& session, bool update) {
  auto provider = css::configuration::theDefaultProvider::get(session.context);
  css::beans::NamedValue path("nodepath", uno::Any(OUString("/org.openoffice.Office.Calc/Grid/Option")));
  uno::Sequence<uno::Any> args(1);
  args.getArray()[0] <<= path;
  return Reference<css::beans::XPropertySet>(
      provider->createInstanceWithArguments(update ? OUString("com.sun.star.configuration.ConfigurationUpdateAccess")
                                                   : OUString("com.sun.star.configuration.ConfigurationAccess"),
                                            args),
      uno::UNO_QUERY_THROW);
}

}  // namespace

bool Application::SnapToGrid() const {
  return Call("Application.SnapToGrid", [&] {
    bool on = false;
    GridOptions(*session_, false)->getPropertyValue("SnapToGrid") >>= on;
    return on;
  });
}

void Application::SetSnapToGrid(bool on) {
  Call("Application.SnapToGrid", [&] {
    auto options = GridOptions(*session_, true);
    options->setPropertyValue("SnapToGrid", uno::Any(on));
    Reference<css::util::XChangesBatch>(options, uno::UNO_QUERY_THROW)->commitChanges();
  });
}

bool Application::ScreenUpdating() const { return session_->screenUpdating; }

void Application::SetScreenUpdating(bool on) {
  if (on == session_->screenUpdating) return;
  Call("Application.ScreenUpdating", [&] {
    if (!on) {
      auto doc = CurrentDocument(*session_);
      Reference<css::frame::XModel> model(doc, uno::UNO_QUERY);
      if (model.is()) model->lockControllers();
      session_->lockedModel = model;
    } else {
      auto model = session_->lockedModel;
      session_->lockedModel.clear();
      try {
        if (model.is() && model->hasControllersLocked()) model->unlockControllers();
      } catch (const css::lang::DisposedException&) {
        // The document was closed while its screen was off: nothing to show.
      }
    }
  });
  session_->screenUpdating = on;
}

bool Application::EnableEvents() const { return session_->enableEvents; }
void Application::SetEnableEvents(bool on) { session_->enableEvents = on; }
bool Application::DisplayAlerts() const { return session_->displayAlerts; }
void Application::SetDisplayAlerts(bool on) { session_->displayAlerts = on; }
void Application::SetCutCopyMode(bool) {}

Workbooks Application::GetWorkbooks() const { return Workbooks(session_); }

std::optional<Workbook> Application::ActiveWorkbook() const {
  return Call("Application.ActiveWorkbook", [&]() -> std::optional<Workbook> {
    auto doc = CurrentDocument(*session_);
    if (!doc.is()) return std::nullopt;
    return Workbook(std::make_shared<WorkbookImpl>(WorkbookImpl{session_, doc}));
  });
}

std::optional<Worksheet> Application::ActiveSheet() const {
  return Call("Application.ActiveSheet", [&]() -> std::optional<Worksheet> {
    auto doc = CurrentDocument(*session_);
    Reference<css::frame::XModel> model(doc, uno::UNO_QUERY);
    if (!model.is()) return std::nullopt;
    Reference<css::sheet::XSpreadsheetView> view(model->getCurrentController(), uno::UNO_QUERY);
    if (!view.is()) return std::nullopt;
    return Worksheet(MakeSheetRef(session_, doc, view->getActiveSheet()));
  });
}

std::optional<Window> Application::ActiveWindow() const {
  auto book = ActiveWorkbook();
  if (!book) return std::nullopt;
  return Window(book->Impl());
}

Selection Application::GetSelection() const {
  return Call("Application.Selection", [&]() -> Selection {
    Selection result;
    auto doc = CurrentDocument(*session_);
    Reference<css::frame::XModel> model(doc, uno::UNO_QUERY);
    if (!model.is()) return result;
    Reference<css::view::XSelectionSupplier> sel(model->getCurrentController(), uno::UNO_QUERY);
    Reference<css::sheet::XSpreadsheetView> view(sel, uno::UNO_QUERY);
    if (!sel.is() || !view.is()) return result;
    auto sheet = MakeSheetRef(session_, doc, view->getActiveSheet());
    uno::Any any = sel->getSelection();
    Reference<css::sheet::XCellRangeAddressable> addr(any, uno::UNO_QUERY);
    Reference<css::sheet::XSheetCellRanges> ranges(any, uno::UNO_QUERY);
    if (!addr.is() && ranges.is() && ranges->getCount() > 0)
      addr.set(ranges->getByIndex(0), uno::UNO_QUERY);
    if (addr.is()) {
      auto a = addr->getRangeAddress();
      result.cells = Range(sheet, a.StartRow + 1, a.StartColumn + 1, a.EndRow + 1, a.EndColumn + 1);
      return result;
    }
    std::vector<Shape> shapes;
    Reference<css::drawing::XShapes> many(any, uno::UNO_QUERY);
    Reference<css::drawing::XShape> one(any, uno::UNO_QUERY);
    if (many.is()) {
      for (sal_Int32 i = 0; i < many->getCount(); ++i) {
        Reference<css::drawing::XShape> s(many->getByIndex(i), uno::UNO_QUERY);
        if (s.is()) shapes.emplace_back(ShapeFor(sheet, s));
      }
    } else if (one.is()) {
      shapes.emplace_back(ShapeFor(sheet, one));
    }
    if (!shapes.empty()) result.shapes = ShapeRange(sheet, std::move(shapes));
    return result;
  });
}

std::optional<Range> Application::ActiveCell() const {
  auto s = GetSelection();
  if (!s.cells) return std::nullopt;
  return s.cells->Cells(1, 1);
}

}  // namespace nivarel::office

namespace nivarel::office {

Reference<css::awt::XWindowPeer> OfficeWindowPeer(const HostSession& s) {
  Reference<css::frame::XFrame> frame;
  Reference<css::frame::XModel> model(CurrentDocument(s), uno::UNO_QUERY);
  if (model.is() && model->getCurrentController().is()) frame = model->getCurrentController()->getFrame();
  if (!frame.is()) frame = s.desktop->getCurrentFrame();
  if (!frame.is()) return {};
  return Reference<css::awt::XWindowPeer>(frame->getContainerWindow(), uno::UNO_QUERY);
}

namespace {

// Hears how a range selection ends.
class RangeChoice : public cppu::WeakImplHelper1<css::sheet::XRangeSelectionListener> {
 public:
  void SAL_CALL done(const css::sheet::RangeSelectionEvent& e) override {
    descriptor = e.RangeDescriptor;
    finished = true;
  }
  void SAL_CALL aborted(const css::sheet::RangeSelectionEvent&) override {
    cancelled = true;
    finished = true;
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {
    cancelled = true;
    finished = true;
  }
  OUString descriptor;
  std::atomic<bool> finished{false};
  bool cancelled = false;
};

}  // namespace

std::optional<Range> Application::InputBoxRange(const std::string& prompt, const std::string& title,
                                                const std::string& defaultAddress) {
  rtl::Reference<RangeChoice> choice(new RangeChoice);
  Reference<css::sheet::XRangeSelectionListener> listener(choice.get());
  Reference<css::sheet::XRangeSelection> picker;
  Reference<css::sheet::XSpreadsheetDocument> book;
  Reference<css::sheet::XSpreadsheet> active;
  Call("Application.InputBox", [&] {
    auto doc = CurrentDocument(*session_);
    Reference<css::frame::XModel> model(doc, uno::UNO_QUERY);
    if (!model.is()) throw HostError(HostError::kOfficeFailure, "No spreadsheet is open");
    book.set(doc, uno::UNO_QUERY_THROW);
    picker.set(model->getCurrentController(), uno::UNO_QUERY_THROW);
    picker->addRangeSelectionListener(listener);
    // The picker has a caption and no room for more: the caption carries both.
    std::string caption = title.empty() ? prompt : title + ": " + prompt;
    uno::Sequence<css::beans::PropertyValue> args(3);
    args.getArray()[0].Name = "Title";
    args.getArray()[0].Value <<= ToOu(caption);
    args.getArray()[1].Name = "InitialValue";
    args.getArray()[1].Value <<= ToOu(defaultAddress);
    args.getArray()[2].Name = "CloseOnMouseRelease";
    args.getArray()[2].Value <<= false;
    picker->startRangeSelection(args);
  });
  // The picker doesn't block. On the office's thread, keep the office going
  // until it ends; from beside the office, just wait.
  bool pump = !NeedsOfficeThread();
  Reference<css::awt::XReschedule> toolkit(css::awt::Toolkit::create(session_->context), uno::UNO_QUERY_THROW);
  while (!choice->finished) {
    if (pump) Call("Application.InputBox", [&] { toolkit->reschedule(); });
    std::this_thread::sleep_for(std::chrono::milliseconds(pump ? 10 : 50));
  }
  return Call("Application.InputBox", [&]() -> std::optional<Range> {
    picker->removeRangeSelectionListener(listener);
    if (choice->cancelled) return std::nullopt;
    // "$Sheet1.$C$3" or "$'My sheet'.$C$3:$D$4", the sheet before the last dot.
    std::string text = ToUtf8(choice->descriptor);
    auto strip = [](const std::string& s) {
      std::string out;
      for (char c : s)
        if (c != '$') out += c;
      return out;
    };
    std::string sheetName, address = strip(text);
    size_t colon = address.find(':');
    std::string first = colon == std::string::npos ? address : address.substr(0, colon);
    size_t dot = first.rfind('.');
    if (dot != std::string::npos) {
      sheetName = first.substr(0, dot);
      address = address.substr(dot + 1);
    }
    colon = address.find(':');
    if (colon != std::string::npos && address.find('.', colon) != std::string::npos)
      address = address.substr(0, colon + 1) + address.substr(address.rfind('.') + 1);
    if (sheetName.size() >= 2 && sheetName.front() == '\'' && sheetName.back() == '\'')
      sheetName = sheetName.substr(1, sheetName.size() - 2);
    Reference<css::sheet::XSpreadsheet> sheet;
    if (sheetName.empty()) {
      Reference<css::sheet::XSpreadsheetView> view(picker, uno::UNO_QUERY_THROW);
      sheet = view->getActiveSheet();
    } else if (book->getSheets()->hasByName(ToOu(sheetName))) {
      book->getSheets()->getByName(ToOu(sheetName)) >>= sheet;
    }
    if (!sheet.is() || address.empty()) throw HostError(HostError::kOfficeFailure, "No range was chosen");
    return Worksheet(MakeSheetRef(session_, book, sheet)).GetRange(address);
  });
}

void Application::DoEvents() {
  Call("Application.DoEvents", [&] {
    Reference<css::awt::XReschedule> toolkit(css::awt::Toolkit::create(session_->context), uno::UNO_QUERY_THROW);
    toolkit->reschedule();
  });
}

void Application::InOneTurn(const std::function<void()>& work) { RunOnOfficeThread(work); }

void Application::PickColor(long rgb, std::function<void(long)> taken) {
  auto session = session_;
  RunLater(session->context, [session, rgb, taken] {
    AtBorder("Application", "PickColor", [&] {
      auto ctx = session->context;
      // Over the window in front: a dialog that opens it stays behind it.
      Reference<css::awt::XExtendedToolkit> toolkit(css::awt::Toolkit::create(ctx), uno::UNO_QUERY_THROW);
      Reference<css::awt::XWindow> parent(toolkit->getActiveTopWindow(), uno::UNO_QUERY);
      uno::Sequence<uno::Any> args(1);
      if (parent.is())
        args.getArray()[0] <<= parent;
      else
        args.getArray()[0] <<= OfficeWindowPeer(*session);
      Reference<css::ui::dialogs::XExecutableDialog> dialog(
          ctx->getServiceManager()->createInstanceWithArgumentsAndContext("com.sun.star.ui.dialogs.ColorPicker", args,
                                                                          ctx),
          uno::UNO_QUERY_THROW);
      Reference<css::beans::XPropertyAccess> color(dialog, uno::UNO_QUERY_THROW);
      uno::Sequence<css::beans::PropertyValue> start(1);
      start.getArray()[0].Name = "Color";
      start.getArray()[0].Value <<= RgbToOffice(rgb);
      color->setPropertyValues(start);
      bool ok = dialog->execute() == css::ui::dialogs::ExecutableDialogResults::OK;
      // The window it was opened over takes the keys again, as after any
      // dialog over it.
      if (parent.is()) parent->setFocus();
      if (!ok) return;
      for (const auto& p : color->getPropertyValues()) {
        sal_Int32 chosen = 0;
        if (p.Name == "Color" && (p.Value >>= chosen)) return taken(OfficeToRgb(chosen));
      }
    });
  });
}

std::string Application::BrowseForFolder(const std::string& title) {
  return Call("Application.BrowseForFolder", [&] {
    auto picker = css::ui::dialogs::FolderPicker::create(session_->context);
    picker->setTitle(ToOu(title));
    if (picker->execute() != css::ui::dialogs::ExecutableDialogResults::OK) return std::string();
    OUString path;
    osl::FileBase::getSystemPathFromFileURL(picker->getDirectory(), path);
    return ToUtf8(path);
  });
}

namespace {

// The office's file picker of a kind, titled, listing filters (each a
// caption and a pattern) with the filterIndex-th (from 1) chosen, opened in
// folder.
Reference<css::ui::dialogs::XFilePicker3> FilePickerFor(const Reference<uno::XComponentContext>& context,
                                                       sal_Int16 kind, const std::string& title,
                                                       const std::vector<std::pair<std::string, std::string>>& filters,
                                                       int filterIndex, const std::string& folder) {
  auto picker = css::ui::dialogs::FilePicker::createWithMode(context, kind);
  picker->setTitle(ToOu(title));
  for (const auto& [caption, pattern] : filters) picker->appendFilter(ToOu(caption), ToOu(pattern));
  if (filterIndex >= 1 && filterIndex <= static_cast<int>(filters.size()))
    picker->setCurrentFilter(ToOu(filters[filterIndex - 1].first));
  OUString folderUrl;
  if (!folder.empty() && osl::FileBase::getFileURLFromSystemPath(ToOu(folder), folderUrl) == osl::FileBase::E_None)
    picker->setDisplayDirectory(folderUrl);
  return picker;
}

}  // namespace

std::optional<Application::SaveChoice> Application::GetSaveAsFilename(
    const std::string& title, const std::vector<std::pair<std::string, std::string>>& filters, int filterIndex,
    const std::string& folder, const std::string& name) {
  return Call("Application.GetSaveAsFilename", [&]() -> std::optional<SaveChoice> {
    auto picker = FilePickerFor(session_->context, css::ui::dialogs::TemplateDescription::FILESAVE_SIMPLE, title,
                                filters, filterIndex, folder);
    Reference<css::ui::dialogs::XFilterManager> filterManager(picker, uno::UNO_QUERY_THROW);
    picker->setDefaultName(ToOu(name));
    if (picker->execute() != css::ui::dialogs::ExecutableDialogResults::OK) return std::nullopt;
    uno::Sequence<OUString> files = picker->getSelectedFiles();
    if (!files.hasElements()) return std::nullopt;
    SaveChoice choice;
    OUString path;
    osl::FileBase::getSystemPathFromFileURL(files[0], path);
    choice.path = ToUtf8(path);
    OUString current = filterManager->getCurrentFilter();
    for (size_t i = 0; i < filters.size(); ++i)
      if (ToOu(filters[i].first) == current) choice.filterIndex = static_cast<int>(i) + 1;
    return choice;
  });
}

std::optional<std::string> Application::GetOpenFilename(
    const std::string& title, const std::vector<std::pair<std::string, std::string>>& filters, int filterIndex,
    const std::string& folder) {
  return Call("Application.GetOpenFilename", [&]() -> std::optional<std::string> {
    auto picker = FilePickerFor(session_->context, css::ui::dialogs::TemplateDescription::FILEOPEN_SIMPLE, title,
                                filters, filterIndex, folder);
    picker->setMultiSelectionMode(false);
    if (picker->execute() != css::ui::dialogs::ExecutableDialogResults::OK) return std::nullopt;
    uno::Sequence<OUString> files = picker->getSelectedFiles();
    if (!files.hasElements()) return std::nullopt;
    OUString path;
    osl::FileBase::getSystemPathFromFileURL(files[0], path);
    return ToUtf8(path);
  });
}

std::string Application::AddinFolder() const {
  return Call("Application.AddinFolder", [&] {
    auto info = css::deployment::PackageInformationProvider::get(session_->context);
    OUString url = info->getPackageLocation("org.nivarel.addin");
    if (url.isEmpty()) return std::string();
    OUString path;
    osl::FileBase::getSystemPathFromFileURL(url, path);
    return ToUtf8(path);
  });
}

void Application::OpenInBrowser(const std::string& url) {
  Call("Application.OpenInBrowser", [&] {
    auto shell = css::system::SystemShellExecute::create(session_->context);
    shell->execute(ToOu(url), OUString(), css::system::SystemShellExecuteFlags::URIS_ONLY);
  });
}

namespace {

// Keeps the last state that a command reported.
class StateListener : public cppu::WeakImplHelper1<css::frame::XStatusListener> {
 public:
  void SAL_CALL statusChanged(const css::frame::FeatureStateEvent& e) override {
    reported = true;
    enabled = e.IsEnabled;
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}
  bool reported = false;
  bool enabled = false;
};

}  // namespace

Reference<css::frame::XDispatch> CommandDispatch(const HostSession& s, css::util::URL& parsed, const std::string& url) {
  parsed.Complete = ToOu(url);
  css::util::URLTransformer::create(s.context)->parseStrict(parsed);
  Reference<css::frame::XDispatchProvider> provider(s.desktop, uno::UNO_QUERY_THROW);
  Reference<css::frame::XModel> model(s.desktop->getCurrentComponent(), uno::UNO_QUERY);
  if (model.is() && model->getCurrentController().is()) {
    Reference<css::frame::XDispatchProvider> frame(model->getCurrentController()->getFrame(), uno::UNO_QUERY);
    if (frame.is()) provider = frame;
  }
  return provider->queryDispatch(parsed, OUString(), 0);
}

bool Application::CellInEditMode() const {
  // Calc turns the format paintbrush off exactly while a cell has an edit
  // view.
  auto paintbrush = CommandState(".uno:FormatPaintbrush");
  return paintbrush && !*paintbrush;
}

std::optional<bool> Application::CommandState(const std::string& command) const {
  return Call("Application.CommandState", [&]() -> std::optional<bool> {
    css::util::URL url;
    auto dispatch = CommandDispatch(*session_, url, command);
    if (!dispatch.is()) return std::nullopt;
    // A listener hears the command's state as it is added.
    rtl::Reference<StateListener> heard(new StateListener);
    Reference<css::frame::XStatusListener> listener(heard.get());
    dispatch->addStatusListener(listener, url);
    dispatch->removeStatusListener(listener, url);
    if (!heard->reported) return std::nullopt;
    return heard->enabled;
  });
}

std::vector<std::string> Application::FontNames() const {
  return Call("Application.FontNames", [&] {
    auto device = css::awt::Toolkit::create(session_->context)->createScreenCompatibleDevice(1, 1);
    std::set<std::string> names;
    for (const auto& font : device->getFontDescriptors())
      if (!font.Name.isEmpty()) names.insert(ToUtf8(font.Name));
    return std::vector<std::string>(names.begin(), names.end());
  });
}

}  // namespace nivarel::office
