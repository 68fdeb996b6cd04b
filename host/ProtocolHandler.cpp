#include "ProtocolHandler.h"

#include <algorithm>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/frame/DispatchDescriptor.hpp>
#include <com/sun/star/frame/DispatchResultEvent.hpp>
#include <com/sun/star/frame/DispatchResultState.hpp>
#include <com/sun/star/frame/FeatureStateEvent.hpp>
#include <com/sun/star/frame/XDispatchResultListener.hpp>
#include <com/sun/star/frame/XStatusListener.hpp>
#include <com/sun/star/frame/status/Visibility.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/supportsservice.hxx>

#include "Border.h"
#include "CommandKeys.h"
#include "MGlobalVariables.h"
#include "Uno.h"
#include "StartupJob.h"
#include "ExportCommand.h"
#include "OutputCommand.h"
#include "WizardCommand.h"
#include "dsrConnect.h"

namespace nivarel::host {

using namespace office;

namespace {

constexpr char kProtocol[] = "vnd.nivarel:";
constexpr char kControlPrefix[] = "rxNivarel";

// The office's menu entries and buttons that watch a command's state.
struct Watcher {
  Reference<css::frame::XStatusListener> listener;
  css::util::URL url;
  Reference<css::frame::XDispatch> source;
};
std::mutex watchersMutex;
std::vector<Watcher> watchers;

// The control id that a command URL names; empty for any other URL.
std::string ControlIdOf(const OUString& url) {
  OUString controlId;
  if (!ProtocolHandler::IsCommand(url) || !url.startsWith(kProtocol, &controlId)) return {};
  return ToUtf8(controlId);
}

void Tell(const Watcher& w) {
  css::frame::FeatureStateEvent state;
  state.Source = w.source;
  state.FeatureURL = w.url;
  std::string controlId = ControlIdOf(w.url.Complete);
  state.IsEnabled = !controlId.empty() && TheConnection().rxNivarel_GetEnabled(controlId);
  // The feature commands' label and visibility, in the forms a menu entry
  // and a toolbar button take: a text relabels (and shows) the entry, a
  // Visibility hides it. The command bar's buttons keep their captions.
  if (dsrConnect::IsFeatureControl(controlId) && ExcelVersion >= 12) {
    if (!TheConnection().rxNivarel_GetVisible(controlId))
      state.State <<= css::frame::status::Visibility(false);
    else
      state.State <<= ToOu(TheConnection().rxNivarel_GetLabel(controlId));
  }
  state.Requery = false;
  w.listener->statusChanged(state);
}

// Tells the watcher; one that fails (a menu whose window has gone, or one
// that throws) is logged and forgotten, and the others are told all the same.
void TellOrForget(const Watcher& w) {
  if (AtBorder("ProtocolHandler", "statusChanged", [&] { Tell(w); })) return;
  std::lock_guard<std::mutex> lock(watchersMutex);
  watchers.erase(std::remove_if(watchers.begin(), watchers.end(),
                                [&](const Watcher& x) { return x.listener == w.listener; }),
                 watchers.end());
}

// The spreadsheet shown in frame, if any.
std::optional<Workbook> WorkbookShownIn(const Reference<css::frame::XFrame>& frame) {
  if (!frame.is() || !ExcelApp) return std::nullopt;
  Reference<css::frame::XController> controller = frame->getController();
  Reference<css::sheet::XSpreadsheetDocument> document(
      controller.is() ? controller->getModel() : Reference<css::frame::XModel>(), uno::UNO_QUERY);
  if (!document.is()) return std::nullopt;
  return Workbook(std::make_shared<WorkbookImpl>(WorkbookImpl{ExcelApp->Session(), document}));
}

bool IsWizardRun(const std::string& controlId) { return KeyOfControlId(controlId) == kRunWizardKey; }
bool IsOutputRun(const std::string& controlId) {
  std::string key = KeyOfControlId(controlId);
  return key == kRunKeyKey || key == kRunExtractKey || key == kRunMermaidKey;
}

// The wizard's choices from the command's arguments: Sheet (text), Layout
// ("add" or "keep"), RowsBetween and ColumnsBetween (whole numbers) and
// NewSheet (true or false), Mermaid (text to draw instead of the sheet's);
// the dialog's defaults for those not given. The
// workbook is the one shown in frame.
WizardChoices ChoicesOf(const uno::Sequence<css::beans::PropertyValue>& arguments,
                        const Reference<css::frame::XFrame>& frame) {
  WizardChoices choices;
  for (const auto& a : arguments) {
    OUString text;
    sal_Int32 number = 0;
    bool flag = false;
    if (a.Name == "Sheet" && (a.Value >>= text))
      choices.sheet = ToUtf8(text);
    else if (a.Name == "Layout" && (a.Value >>= text))
      choices.addSpacing = text != "keep";
    else if (a.Name == "RowsBetween" && (a.Value >>= number))
      choices.rowsBetween = number;
    else if (a.Name == "ColumnsBetween" && (a.Value >>= number))
      choices.columnsBetween = number;
    else if (a.Name == "NewSheet" && (a.Value >>= flag))
      choices.newSheet = flag;
    else if (a.Name == "Mermaid" && (a.Value >>= text))
      choices.mermaid = ToUtf8(text);
  }
  choices.workbook = WorkbookShownIn(frame);
  return choices;
}

bool IsExportRun(const std::string& controlId) { return KeyOfControlId(controlId) == kRunExportKey; }

// The export's choices from the command's arguments: Path, Sheet and Range
// (texts) and Scale (a whole number); the workbook is the one shown in frame.
ExportChoices ExportChoicesOf(const uno::Sequence<css::beans::PropertyValue>& arguments,
                              const Reference<css::frame::XFrame>& frame) {
  ExportChoices choices;
  for (const auto& a : arguments) {
    OUString text;
    sal_Int32 number = 0;
    if (a.Name == "Path" && (a.Value >>= text))
      choices.path = ToUtf8(text);
    else if (a.Name == "Sheet" && (a.Value >>= text))
      choices.sheet = ToUtf8(text);
    else if (a.Name == "Range" && (a.Value >>= text))
      choices.range = ToUtf8(text);
    else if (a.Name == "Scale" && (a.Value >>= number))
      choices.scale = number;
  }
  choices.workbook = WorkbookShownIn(frame);
  return choices;
}

// The key's or the list's choices: Sheet and Cell (texts); the workbook is
// the one shown in frame.
OutputChoices OutputChoicesOf(const uno::Sequence<css::beans::PropertyValue>& arguments,
                              const Reference<css::frame::XFrame>& frame) {
  OutputChoices choices;
  for (const auto& a : arguments) {
    OUString text;
    if (a.Name == "Sheet" && (a.Value >>= text))
      choices.sheet = ToUtf8(text);
    else if (a.Name == "Cell" && (a.Value >>= text))
      choices.cell = ToUtf8(text);
  }
  choices.workbook = WorkbookShownIn(frame);
  return choices;
}

css::beans::NamedValue Named(const char* name, const uno::Any& value) {
  return css::beans::NamedValue(OUString::createFromAscii(name), value);
}

}  // namespace

void ProtocolHandler::Requery(const std::vector<std::string>& controlIds) {
  std::vector<Watcher> due;
  {
    std::lock_guard<std::mutex> lock(watchersMutex);
    for (const auto& w : watchers)
      if (std::find(controlIds.begin(), controlIds.end(), ControlIdOf(w.url.Complete)) != controlIds.end())
        due.push_back(w);
  }
  for (const auto& w : due) TellOrForget(w);
}

ProtocolHandler::ProtocolHandler(const Reference<uno::XComponentContext>& context) : context_(context) {}

OUString ProtocolHandler::ImplementationName() { return "org.nivarel.addin.ProtocolHandler"; }

uno::Sequence<OUString> ProtocolHandler::ServiceNames() {
  OUString name("com.sun.star.frame.ProtocolHandler");
  return uno::Sequence<OUString>(&name, 1);
}

bool ProtocolHandler::IsCommand(const OUString& url) {
  OUString controlId;
  if (!url.startsWith(kProtocol, &controlId)) return false;
  OUString name;
  return controlId.startsWith(kControlPrefix, &name) && !name.isEmpty();
}

Reference<css::frame::XDispatch> ProtocolHandler::queryDispatch(const css::util::URL& url, const OUString&,
                                                                sal_Int32) {
  Reference<css::frame::XDispatch> out;
  AtBorder("ProtocolHandler", "queryDispatch", [&] {
    if (IsCommand(url.Complete)) out = this;
  });
  return out;
}

uno::Sequence<Reference<css::frame::XDispatch>> ProtocolHandler::queryDispatches(
    const uno::Sequence<css::frame::DispatchDescriptor>& requests) {
  uno::Sequence<Reference<css::frame::XDispatch>> result(requests.getLength());
  auto* out = result.getArray();
  for (sal_Int32 i = 0; i < requests.getLength(); ++i)
    out[i] = queryDispatch(requests[i].FeatureURL, requests[i].FrameName, requests[i].SearchFlags);
  return result;
}

void ProtocolHandler::dispatch(const css::util::URL& url, const uno::Sequence<css::beans::PropertyValue>& arguments) {
  AtBorder("ProtocolHandler", "dispatch", [&] {
    StartupJob::ConnectOnce(context_);
    OUString controlId;
    if (!url.Complete.startsWith(kProtocol, &controlId)) return;
    std::string id = ToUtf8(controlId);
    if (IsWizardRun(id)) {
      TheConnection().rxNivarel_RunWizard(ChoicesOf(arguments, frame_));
      return;
    }
    if (IsOutputRun(id)) {
      TheConnection().rxNivarel_RunOutput(KeyOfControlId(id), OutputChoicesOf(arguments, frame_));
      return;
    }
    // A caller that asks not to wait (SynchronMode false) gets the command run
    // from the event loop once its call has returned.
    bool synchron = true;
    for (const auto& a : arguments)
      if (a.Name == "SynchronMode") a.Value >>= synchron;
    if (synchron) {
      TheConnection().rxNivarel_OnAction(id);
      return;
    }
    RunLater(context_, [id] { TheConnection().rxNivarel_OnAction(id); });
  });
}

void ProtocolHandler::dispatchWithNotification(const css::util::URL& url,
                                               const uno::Sequence<css::beans::PropertyValue>& arguments,
                                               const Reference<css::frame::XDispatchResultListener>& listener) {
  css::frame::DispatchResultEvent result;
  result.Source = static_cast<cppu::OWeakObject*>(this);
  result.State = css::frame::DispatchResultState::FAILURE;
  bool ran = AtBorder("ProtocolHandler", "dispatchWithNotification", [&] {
    StartupJob::ConnectOnce(context_);
    OUString controlId;
    if (!url.Complete.startsWith(kProtocol, &controlId)) return;
    std::string id = ToUtf8(controlId);
    if (IsExportRun(id)) {
      ExportOutcome outcome = ExportCommand::Run(ExportChoicesOf(arguments, frame_));
      result.State = outcome.written ? css::frame::DispatchResultState::SUCCESS : css::frame::DispatchResultState::FAILURE;
      std::vector<css::beans::NamedValue> values = {Named("Message", uno::Any(ToOu(outcome.message))),
                                                    Named("Width", uno::Any(sal_Int32(outcome.width))),
                                                    Named("Height", uno::Any(sal_Int32(outcome.height))),
                                                    Named("Seconds", uno::Any(outcome.seconds))};
      result.Result <<= uno::Sequence<css::beans::NamedValue>(values.data(), static_cast<sal_Int32>(values.size()));
      return;
    }
    if (IsOutputRun(id)) {
      OutputOutcome outcome = TheConnection().rxNivarel_RunOutput(KeyOfControlId(id), OutputChoicesOf(arguments, frame_));
      result.State = outcome.done ? css::frame::DispatchResultState::SUCCESS : css::frame::DispatchResultState::FAILURE;
      const css::beans::NamedValue values[] = {Named("Message", uno::Any(ToOu(outcome.message))),
                                               Named("Sheet", uno::Any(ToOu(outcome.sheet))),
                                               Named("Cell", uno::Any(ToOu(outcome.cell))),
                                               Named("Count", uno::Any(sal_Int32(outcome.count))),
                                               Named("Text", uno::Any(ToOu(outcome.text)))};
      result.Result <<= uno::Sequence<css::beans::NamedValue>(values, 5);
      return;
    }
    if (!IsWizardRun(id)) {
      dispatch(url, arguments);
      result.State = css::frame::DispatchResultState::DONTKNOW;
      return;
    }
    WizardOutcome outcome = TheConnection().rxNivarel_RunWizard(ChoicesOf(arguments, frame_));
    result.State = outcome.drawn ? css::frame::DispatchResultState::SUCCESS : css::frame::DispatchResultState::FAILURE;
    std::vector<css::beans::NamedValue> values = {Named("Message", uno::Any(ToOu(outcome.message)))};
    if (outcome.drawn) {
      values.push_back(Named("Sheet", uno::Any(ToOu(outcome.sheet))));
      values.push_back(Named("Shapes", uno::Any(sal_Int32(outcome.shapes))));
      values.push_back(Named("Seconds", uno::Any(outcome.seconds)));
    }
    result.Result <<= uno::Sequence<css::beans::NamedValue>(values.data(), static_cast<sal_Int32>(values.size()));
  });
  if (!ran) {
    css::beans::NamedValue failed = Named("Message", uno::Any(OUString("The command failed; see the error log.")));
    result.Result <<= uno::Sequence<css::beans::NamedValue>(&failed, 1);
  }
  if (listener.is())
    AtBorder("ProtocolHandler", "dispatchFinished", [&] { listener->dispatchFinished(result); });
}

void ProtocolHandler::addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                        const css::util::URL& url) {
  AtBorder("ProtocolHandler", "addStatusListener", [&] {
    if (!listener.is()) return;
    // A menu asking before the start-up job ran finds the add-in connected.
    StartupJob::ConnectOnce(context_);
    Watcher w{listener, url, this};
    if (IsCommand(url.Complete)) {
      std::lock_guard<std::mutex> lock(watchersMutex);
      watchers.push_back(w);
    }
    TellOrForget(w);
  });
}

void ProtocolHandler::removeStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                           const css::util::URL& url) {
  AtBorder("ProtocolHandler", "removeStatusListener", [&] {
    std::lock_guard<std::mutex> lock(watchersMutex);
    watchers.erase(std::remove_if(watchers.begin(), watchers.end(), [&](const Watcher& w) {
                     return w.listener == listener && w.url.Complete == url.Complete;
                   }),
                   watchers.end());
  });
}

void ProtocolHandler::initialize(const uno::Sequence<uno::Any>& arguments) {
  AtBorder("ProtocolHandler", "initialize", [&] {
    Reference<css::frame::XFrame> frame;
    if (arguments.getLength() > 0 && (arguments[0] >>= frame)) frame_ = frame;
  });
}

OUString ProtocolHandler::getImplementationName() { return ImplementationName(); }

sal_Bool ProtocolHandler::supportsService(const OUString& name) { return cppu::supportsService(this, name); }

uno::Sequence<OUString> ProtocolHandler::getSupportedServiceNames() { return ServiceNames(); }

}  // namespace nivarel::host
