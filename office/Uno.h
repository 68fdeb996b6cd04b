// The office API headers and the state shared by the object model's handle
// classes. Included only by office/, driver/, the bench and the components of
// host/ that the office loads.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <type_traits>
#include <memory>
#include <string>
#include <vector>

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/frame/XDispatch.hpp>
#include <com/sun/star/util/URL.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/drawing/XShapes.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/graphic/XGraphic.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <rtl/ustring.hxx>

#include "HostError.h"

using ::rtl::OString;
using ::rtl::OUString;
using ::rtl::OUStringToOString;

namespace nivarel::office {

namespace uno = ::com::sun::star::uno;
namespace css = ::com::sun::star;
using uno::Reference;

// A group that the layer broke up: its handle state, which follows the group
// when it is made again, its name and its members' handle states.
struct UngroupedGroup {
  std::shared_ptr<struct ShapeImpl> group;
  std::string name;
  std::vector<std::shared_ptr<struct ShapeImpl>> members;
};

// State of one connection to the office, shared by every handle.
struct HostSession {
  Reference<uno::XComponentContext> context;
  Reference<css::frame::XDesktop2> desktop;
  bool enableEvents = true;
  bool displayAlerts = true;
  bool screenUpdating = true;
  Reference<css::frame::XModel> lockedModel;
  int objectModelVersion = 12;
  // One handle state per office shape, so that every handle the logic holds
  // follows the shape when the office replaces its object (grouping).
  std::mutex shapesMutex;
  std::map<void*, std::weak_ptr<struct ShapeImpl>> shapes;
  // The groups the layer broke up, latest last, for Shape::Regroup.
  std::mutex ungroupedMutex;
  std::vector<UngroupedGroup> ungrouped;
};


// The office that this process drives from outside, or none (inside the
// office). Every call of the layer then runs on the office's own event-loop
// thread, as the add-in's own calls inside the office do, and not beside the
// office's idle work.
void SetRemoteOffice(const Reference<uno::XComponentContext>& context);
// Stops sending calls to that office, when it is the one calls go to.
void ForgetRemoteOffice(const Reference<uno::XComponentContext>& context);
// True when a call of the layer must be sent to the office's thread first.
bool NeedsOfficeThread();
// Runs f on the remote office's thread, or at once when there is no remote
// office or this thread already serves the office's thread. Exceptions travel.
void RunOnOfficeThread(const std::function<void()>& f);
// Runs f from the office's event loop, after the office call now under way
// has returned, with calls going straight to the office. f reports its own
// failures; whatever escapes it is dropped, so that the office goes on.
void RunLater(const Reference<uno::XComponentContext>& context, std::function<void()> f);
// The office switches an undo list's recording back on, behind its lock,
// whenever it changes cells itself. While a lock is held this switches the
// recording off again; with no lock held it takes one, counted in taken, for
// the caller to give back.
void KeepUndoListLocked(const Reference<css::document::XUndoManager>& manager, int& taken);
// Marks the current thread as serving a call from the office's thread (the
// office's callbacks into this process): calls made here go straight back.
class OfficeThreadScope {
 public:
  OfficeThreadScope();
  ~OfficeThreadScope();
  OfficeThreadScope(const OfficeThreadScope&) = delete;
  OfficeThreadScope& operator=(const OfficeThreadScope&) = delete;

 private:
  bool previous_;
};

// The window that the add-in's dialogs and messages belong to: that of the
// active spreadsheet, else the office's current one; empty when there is none.
Reference<css::awt::XWindowPeer> OfficeWindowPeer(const HostSession& s);
// The handler of a command URL in the current document's window, or the
// desktop's when no document shows; parsed is set to the parsed URL. Null
// when no handler answers.
Reference<css::frame::XDispatch> CommandDispatch(const HostSession& s, css::util::URL& parsed, const std::string& url);

// One sheet of one document.
struct SheetRef {
  std::shared_ptr<HostSession> session;
  Reference<css::sheet::XSpreadsheetDocument> document;
  Reference<css::sheet::XSpreadsheet> sheet;
  Reference<css::drawing::XDrawPage> Page() const;
  int Index() const;
};

struct WorkbookImpl {
  std::shared_ptr<HostSession> session;
  Reference<css::sheet::XSpreadsheetDocument> document;
  Reference<css::frame::XModel> Model() const;
};

// A picture as the office's graphic engine holds it.
struct PictureImpl {
  Reference<css::graphic::XGraphic> graphic;
};

struct ShapeImpl {
  std::shared_ptr<SheetRef> sheet;
  Reference<css::drawing::XShape> shape;
  Reference<css::beans::XPropertySet> Props() const;
};

// Shape::Type of a shape of the office's service t, callouts apart (they
// answer msoAutoShape here).
int TypeOfService(const OUString& t);
// Gives a custom shape the host's connection sites of an auto shape type
// whose office geometry lacks them, as glue points that follow its size.
void AddConnectionSites(const Reference<css::drawing::XShape>& shape, int autoShapeType);

// Turns the shape's fitting to its text on or off: its height, and its width
// too while word wrap is off. The top left corner stays where it is.
void FitShapeToText(const ShapeImpl& shape, bool fit);

// The handle state of an office shape, shared by all handles to it.
std::shared_ptr<ShapeImpl> ShapeFor(const std::shared_ptr<SheetRef>& sheet, const Reference<css::drawing::XShape>& shape);
// The handles given out for the shapes inside each of these shapes' groups,
// in the order of CollectShapes, null where none was given: taken before
// grouping or ungrouping, for RebindMembers.
using HandlesWithin = std::vector<std::vector<std::shared_ptr<ShapeImpl>>>;
HandlesWithin HandlesInside(const std::vector<std::shared_ptr<ShapeImpl>>& impls);
// After grouping or ungrouping the office makes new objects for the members,
// and for all shapes inside them; the members stand in container from index
// first on, in the order of impls (the drawing order). Points each handle at
// its new object, when that carries the handle's old name (unnamed shapes,
// the user's own drawings, included), and the handles inside it at theirs; a
// handle whose object isn't there is pointed at the object in container that
// carries its name.
void RebindMembers(const Reference<css::drawing::XShapes>& container, sal_Int32 first,
                   const std::vector<std::shared_ptr<ShapeImpl>>& impls, const std::vector<std::string>& names,
                   const HandlesWithin& within);

// A property set that formats read and write: cells, a text run, a page style.
struct PropsRef {
  std::shared_ptr<HostSession> session;
  Reference<css::beans::XPropertySet> props;
};

std::shared_ptr<SheetRef> MakeSheetRef(const std::shared_ptr<HostSession>& session,
                                       const Reference<css::sheet::XSpreadsheetDocument>& document,
                                       const Reference<css::sheet::XSpreadsheet>& sheet);

// Every shape on a page, groups opened, in drawing order (a group before its members).
void CollectShapes(const Reference<css::drawing::XShapes>& shapes,
                   std::vector<Reference<css::drawing::XShape>>& out);
// Whole numbers that the layer keeps with a shape (and in the saved file)
// where the office has no property of its own for them.
int GetShapeAttribute(const ShapeImpl& shape, const char* key, int fallback);
void SetShapeAttribute(const ShapeImpl& shape, const char* key, int value);
// The office glue point id of a connection site (1-based) of a shape.
sal_Int32 SiteGluePoint(const ShapeImpl& shape, int site);
// A name of the form "<word> <n>" not yet used on the sheet.
std::string FreshShapeName(const SheetRef& sheet, const std::string& word);
// The word of a new shape's name for each kind of shape.
std::string NameWordFor(const Reference<css::drawing::XShape>& shape);

inline std::string ToUtf8(const OUString& s) {
  return OUStringToOString(s, RTL_TEXTENCODING_UTF8).getStr();
}
inline OUString ToOu(const std::string& s) {
  return OUString(s.data(), static_cast<sal_Int32>(s.size()), RTL_TEXTENCODING_UTF8);
}

// A file name's extension with its dot, lower-cased: how file types are told.
inline std::string FileTypeOf(const std::string& path) {
  return ToUtf8(ToOu(std::filesystem::path(path).extension().string()).toAsciiLowerCase());
}

// Points and the office's 1/100 mm.
inline double HmmToPt(double hmm) { return hmm * 72.0 / 2540.0; }
inline sal_Int32 PtToHmm(double pt) {
  double v = pt * 2540.0 / 72.0;
  return static_cast<sal_Int32>(v < 0 ? v - 0.5 : v + 0.5);
}

// Colours: the logic's values have red in the low byte, the office's in the high byte.
inline sal_Int32 RgbToOffice(long rgb) {
  return static_cast<sal_Int32>(((rgb & 0xFF) << 16) | (rgb & 0xFF00) | ((rgb >> 16) & 0xFF));
}
inline long OfficeToRgb(sal_Int32 c) {
  return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF);
}

// Counts one operation of the layer (see HostCallCount).
void CountHostCall();

// Times the outermost operation while profiling is on (see HostCallProfile).
class HostCallTimer {
 public:
  explicit HostCallTimer(const char* what);
  ~HostCallTimer();
  HostCallTimer(const HostCallTimer&) = delete;
  HostCallTimer& operator=(const HostCallTimer&) = delete;

 private:
  const char* what_;
  bool counted_ = false;
  long long start_ = -1;
};

// Runs an office call on the calling thread and turns any office exception
// into a HostError whose description names the operation.
template <class F>
auto CallHere(const char* what, F&& f) -> decltype(f()) {
  CountHostCall();
  HostCallTimer timer(what);
  try {
    return f();
  } catch (const HostError&) {
    throw;
  } catch (const uno::Exception& e) {
    std::string msg = ToUtf8(e.Message);
    throw HostError(HostError::kOfficeFailure,
                    std::string(what) + (msg.empty() ? std::string() : ": " + msg));
  }
}

// Runs an office call and turns any office exception into a HostError whose
// description names the operation.
template <class F>
auto Call(const char* what, F&& f) -> decltype(f()) {
  using Result = decltype(f());
  if (NeedsOfficeThread()) {
    // Counted once, where it runs.
    if constexpr (std::is_void_v<Result>) {
      RunOnOfficeThread([&] { Call(what, f); });
      return;
    } else {
      std::optional<Result> result;
      RunOnOfficeThread([&] { result.emplace(Call(what, f)); });
      return std::move(*result);
    }
  }
  return CallHere(what, std::forward<F>(f));
}

template <class T>
T GetProp(const Reference<css::beans::XPropertySet>& ps, const char* name) {
  T v{};
  ps->getPropertyValue(OUString::createFromAscii(name)) >>= v;
  return v;
}
template <class T>
void SetProp(const Reference<css::beans::XPropertySet>& ps, const char* name, const T& v) {
  ps->setPropertyValue(OUString::createFromAscii(name), uno::Any(v));
}

}  // namespace nivarel::office
