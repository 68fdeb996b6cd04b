// Measurements of the add-in's engine, run inside the office as the add-in
// itself runs: a protocol handler for "vnd.nivarel-bench:<name>?<file>" that
// writes its results to the file as one JSON object.
#include <algorithm>
#include <chrono>
#include <malloc.h>
#include <cstdio>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <vector>

#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/DispatchDescriptor.hpp>
#include <com/sun/star/frame/XDispatch.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <cppuhelper/factory.hxx>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase3.hxx>
#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implementationentry.hxx>
#include <cppuhelper/supportsservice.hxx>

#include "Application.h"
#include "CInteractiveFlowcharter.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "CConfig.h"
#include "CShapeAdder.h"
#include "CShapeDimensions.h"
#include "CShapeFormatter.h"
#include "CSymbolData.h"
#include "HostStats.h"
#include "MGlobalVariables.h"
#include "FlowchartWizard.h"
#include "Range.h"
#include "Uno.h"
#include "CMermaidImport.h"
#include "ExportCommand.h"
#include "MermaidSample.h"
#include "WizardCommand.h"

namespace nivarel::bench {

namespace {

using namespace host;
using namespace office;
namespace frame = css::frame;

constexpr char kProtocol[] = "vnd.nivarel-bench:";

// Makes the office the add-in's ExcelApp on the newer object model, with the
// grid measured, as the add-in's connection does.
void Connect(const Reference<uno::XComponentContext>& context) {
  auto session = std::make_shared<HostSession>();
  session->context = context;
  session->desktop = frame::Desktop::create(context);
  ExcelApp = Application(session);
  ExcelVersion = 12;
  InitializeGlobals();
  SetGlobalRowHeight();
}

// Sizes 50 process symbols that hold a 12-word step, one after the other,
// with screen updates off as in a run, and reports the cost of one sizing.
std::string MeasureSizing(const Reference<uno::XComponentContext>& context) {
  Connect(context);

  rules::CConfig config;
  config.AutosizeHeight = true;
  config.SmartSizing = true;
  config.FontName = "Liberation Sans";
  config.FontSize = 8;
  config.HorizontalAlignment = -4108;
  config.VerticalAlignment = -4108;
  rules::CSymbolData symbols;
  auto process = std::make_shared<rules::CSymbol>();
  process->Width = 8;
  process->MinHeight = 2;
  symbols.AddSymbol(process);

  const std::string text = "Check the customer order against the stock list before shipping it out";
  std::optional<Worksheet> sheet = ExcelApp->ActiveSheet();
  shapes::CShapeFormatter formatter;
  shapes::CShapeAdder adder;
  shapes::CShapeDimensions dimensions;
  const int count = 50;
  std::vector<double> ms;
  long calls = 0;
  int rows = 0;
  ExcelApp->SetScreenUpdating(false);
  for (int i = 0; i < count; ++i) {
    auto shape = adder.AddShape(sheet, symbols, config, formatter, text, "C" + std::to_string(3 + 4 * i), 61, "");
    if (!shape) continue;
    long before = HostCallCount();
    auto start = std::chrono::steady_clock::now();
    dimensions.SetShapeDimensions(*shape, config, symbols, 8, false, text);
    ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    calls += HostCallCount() - before;
    rows = static_cast<int>(shape->Height() / GlobalRowHeight + 0.5);
  }
  ExcelApp->SetScreenUpdating(true);
  ExcelApp.reset();

  double total = 0, low = 1e9, high = 0;
  for (double m : ms) {
    total += m;
    low = std::min(low, m);
    high = std::max(high, m);
  }
  size_t n = ms.empty() ? 1 : ms.size();
  return "{\"measure\": \"SetShapeDimensions\", \"words\": 12, \"shapes\": " + std::to_string(ms.size()) +
         ", \"rows\": " + std::to_string(rows) + ", \"host_calls_per_shape\": " + std::to_string(calls / static_cast<long>(n)) +
         ", \"ms_per_shape\": " + std::to_string(total / n) + ", \"ms_min\": " + std::to_string(low) +
         ", \"ms_max\": " + std::to_string(high) + "}";
}

// The middle and the 90th percentile of a list of times.
std::pair<double, double> MedianAndP90(std::vector<double> ms) {
  if (ms.empty()) return {0, 0};
  std::sort(ms.begin(), ms.end());
  return {ms[ms.size() / 2], ms[std::min(ms.size() - 1, ms.size() * 9 / 10)]};
}

// A sheet that already holds existing shapes: process symbols joined in
// pairs, in the columns right of where the run draws.
void Populate(Worksheet& sheet, int existing) {
  Shapes shapes = sheet.GetShapes();
  std::optional<Shape> previous;
  for (int i = 0; i < existing; ++i) {
    Range cell = sheet.Cells(3 + 4 * (i % 100), 30 + 10 * (i / 100));
    Shape s = shapes.AddShape(msoShapeFlowchartProcess, cell.Left(), cell.Top(), 102, 38);
    s.GetTextFrame().GetCharacters().SetText("Existing step " + std::to_string(i));
    if (previous && i % 2 == 1) {
      Shape line = shapes.AddConnector(msoConnectorStraight, 0, 0, 10, 10);
      line.GetConnectorFormat().BeginConnect(*previous, 3);
      line.GetConnectorFormat().EndConnect(s, 1);
    }
    previous = s;
  }
}

// The office process's resident memory in MB.
double ResidentMb() {
  std::ifstream in("/proc/self/status");
  std::string line;
  while (std::getline(in, line))
    if (line.rfind("VmRSS:", 0) == 0) return std::stod(line.substr(6)) / 1024.0;
  return 0;
}

// The office process's heap in use in MB: unlike the resident size, it
// falls again when a document is closed, so runs one after the other can be
// compared.
double HeapMb() {
  struct mallinfo2 m = mallinfo2();
  return static_cast<double>(m.uordblks + m.hblkhd) / (1024.0 * 1024.0);
}

rules::CConfig LiveConfig() {
  rules::CConfig config;
  config.LoadConfigData();
  config.StartTerminator = true;
  config.EndTerminator = false;
  config.AddFlowLine = true;
  config.BranchLabelOption = 0;
  config.StartLocation = "C3";
  return config;
}

const char* const kSteps[] = {"Receive the order", "Check the order for completeness", "Enter it in the system",
                              "Check stock levels", "Pick the items", "Pack the parcel", "Print the invoice",
                              "Hand the parcel to the carrier"};

// A new workbook, active, so that the run draws on its sheet.
Workbook ActiveBook() {
  Workbook book = ExcelApp->GetWorkbooks().Add();
  book.Activate();
  std::optional<Worksheet> active = ExcelApp->ActiveSheet();
  if (!active || !active->SameAs(book.Sheet(1))) throw std::runtime_error("the new workbook is not the active one");
  return book;
}

// Runs count steps of a live run on the active sheet and answers the time of each, as a
// commit costs it: the value put into the cell the run selected, then the
// sheet's change handler on that cell.
std::vector<double> RunSteps(int count) {
  std::vector<double> ms;
  flowcharting::CInteractiveFlowcharter flowcharter;
  flowcharter.StartFlowcharting(LiveConfig());
  for (int i = 0; i < count; ++i) {
    Range cell = *ExcelApp->ActiveCell();
    auto start = std::chrono::steady_clock::now();
    ExcelApp->SetEnableEvents(false);
    cell.SetValue(kSteps[i % 8]);
    ExcelApp->SetEnableEvents(true);
    flowcharter.m_ws_Change(cell);
    ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  flowcharter.StopFlowcharting(true);
  return ms;
}

// The same symbols and glued lines made through the object model, in a
// column of their own.
std::vector<double> LayerSteps(Worksheet& sheet, int count, int column) {
  std::vector<double> ms;
  Shapes shapes = sheet.GetShapes();
  std::optional<Shape> previous;
  for (int i = 0; i < count; ++i) {
    Range cell = sheet.Cells(3 + 5 * i, column);
    auto start = std::chrono::steady_clock::now();
    Shape s = shapes.AddShape(msoShapeFlowchartProcess, cell.Left(), cell.Top(), 102, 38);
    s.GetTextFrame().GetCharacters().SetText(kSteps[i % 8]);
    if (previous) {
      Shape line = shapes.AddConnector(msoConnectorStraight, 0, 0, 10, 10);
      line.GetConnectorFormat().BeginConnect(*previous, 3);
      line.GetConnectorFormat().EndConnect(s, 1);
    }
    previous = s;
    ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  return ms;
}

// The same again with the office's own calls only: a custom shape with its
// geometry, place, size and text, and a connector glued to the one before,
// no names, no index, no bookkeeping.
std::vector<double> BareSteps(Worksheet& sheet, int count, int column) {
  std::vector<double> ms;
  const SheetRef& ref = *sheet.Ref();
  Reference<css::lang::XMultiServiceFactory> factory(ref.document, uno::UNO_QUERY_THROW);
  Reference<css::drawing::XDrawPage> page = ref.Page();
  Reference<css::drawing::XShape> previous;
  for (int i = 0; i < count; ++i) {
    Range cell = sheet.Cells(3 + 5 * i, column);
    double left = cell.Left(), top = cell.Top();
    auto start = std::chrono::steady_clock::now();
    Reference<css::drawing::XShape> s(factory->createInstance("com.sun.star.drawing.CustomShape"),
                                      uno::UNO_QUERY_THROW);
    page->add(s);
    Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY_THROW);
    css::beans::PropertyValue type;
    type.Name = "Type";
    type.Value <<= OUString("flowchart-process");
    ps->setPropertyValue("CustomShapeGeometry", uno::Any(uno::Sequence<css::beans::PropertyValue>(&type, 1)));
    s->setPosition(css::awt::Point(static_cast<sal_Int32>(left * 2540 / 72), static_cast<sal_Int32>(top * 2540 / 72)));
    s->setSize(css::awt::Size(3598, 1341));
    Reference<css::text::XTextRange>(s, uno::UNO_QUERY_THROW)->setString(OUString::createFromAscii(kSteps[i % 8]));
    if (previous.is()) {
      Reference<css::drawing::XShape> line(factory->createInstance("com.sun.star.drawing.ConnectorShape"),
                                           uno::UNO_QUERY_THROW);
      page->add(line);
      Reference<css::beans::XPropertySet> lp(line, uno::UNO_QUERY_THROW);
      lp->setPropertyValue("StartShape", uno::Any(previous));
      lp->setPropertyValue("StartGluePointIndex", uno::Any(sal_Int32(2)));
      lp->setPropertyValue("EndShape", uno::Any(s));
      lp->setPropertyValue("EndGluePointIndex", uno::Any(sal_Int32(0)));
    }
    previous = s;
    ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  return ms;
}

std::string Json(double v) {
  char buf[32];
  snprintf(buf, sizeof buf, "%.2f", v);
  return buf;
}

// The run's cost per step on sheets that already hold shapes; beside it, the
// same symbols and lines made through the object model and with the office's
// own calls, on the same sheet. A second run of the same steps with the
// layer's operations timed says where a step's time goes.
std::string MeasureLive(const Reference<uno::XComponentContext>& context) {
  Connect(context);
  SetInstallFolder(NIVAREL_SHIPPED);
  const int stepCount = 40;
  std::string result = "{\"measure\": \"live run\", \"steps\": " + std::to_string(stepCount) + ", \"sheets\": [";
  bool firstSheet = true;
  for (int existing : {0, 100, 500, 2000}) {
    Workbook book = ActiveBook();
    Worksheet sheet = book.Sheet(1);
    Populate(sheet, existing);
    int before = sheet.GetShapes().Count();
    auto [runMedian, runP90] = MedianAndP90(RunSteps(stepCount));
    int drawn = sheet.GetShapes().Count() - before;
    auto [layerMedian, layerP90] = MedianAndP90(LayerSteps(sheet, stepCount, 14));
    auto [bareMedian, bareP90] = MedianAndP90(BareSteps(sheet, stepCount, 20));
    book.Close();

    // The profile: the same run on a fresh sheet of the same size.
    Workbook again = ActiveBook();
    Worksheet profiled = again.Sheet(1);
    Populate(profiled, existing);
    long calls = HostCallCount();
    ProfileHostCalls(true);
    std::vector<double> steps = RunSteps(stepCount);
    std::vector<HostCallTime> profile = HostCallProfile();
    ProfileHostCalls(false);
    calls = HostCallCount() - calls;
    again.Close();
    double total = 0, inHost = 0;
    for (double m : steps) total += m;
    for (const auto& t : profile) inHost += t.ms;
    std::string top;
    for (size_t i = 0; i < profile.size() && i < 12; ++i)
      top += std::string(i ? ", " : "") + "[\"" + profile[i].what + "\", " +
             Json(static_cast<double>(profile[i].calls) / stepCount) + ", " + Json(profile[i].ms / stepCount) + "]";

    result += std::string(firstSheet ? "" : ", ") + "{\"existing_shapes\": " + std::to_string(existing) +
              ", \"shapes_drawn\": " + std::to_string(drawn) +
              ", \"run_median_ms\": " + Json(runMedian) + ", \"run_p90_ms\": " + Json(runP90) +
              ", \"layer_median_ms\": " + Json(layerMedian) + ", \"layer_p90_ms\": " + Json(layerP90) +
              ", \"bare_median_ms\": " + Json(bareMedian) + ", \"bare_p90_ms\": " + Json(bareP90) +
              ", \"profile\": {\"step_ms\": " + Json(total / stepCount) + ", \"host_ms\": " + Json(inHost / stepCount) +
              ", \"host_calls\": " + Json(static_cast<double>(calls) / stepCount) +
              ", \"costliest [operation, calls, ms] per step\": [" + top + "]}}";
    firstSheet = false;
  }
  ExcelApp.reset();
  return result + "]}";
}

// The office's memory before and after a live run of 2,000 steps on an
// empty sheet, and the run's median step over the first and the last
// hundred; beside it, the memory the office itself takes for the same
// symbols and glued lines made with its own calls.
std::string MeasureMemory(const Reference<uno::XComponentContext>& context) {
  Connect(context);
  SetInstallFolder(NIVAREL_SHIPPED);
  const int stepCount = 2000;
  Workbook book = ActiveBook();
  Worksheet sheet = book.Sheet(1);
  double before = ResidentMb(), heapBefore = HeapMb();
  std::vector<double> ms = RunSteps(stepCount);
  double after = ResidentMb(), heapAfter = HeapMb();
  int shapes = sheet.GetShapes().Count();
  auto [first, firstP90] = MedianAndP90(std::vector<double>(ms.begin(), ms.begin() + 100));
  auto [last, lastP90] = MedianAndP90(std::vector<double>(ms.end() - 100, ms.end()));
  book.Close();

  Workbook bare = ActiveBook();
  Worksheet bareSheet = bare.Sheet(1);
  double bareBefore = HeapMb();
  BareSteps(bareSheet, stepCount, 3);
  double bareAfter = HeapMb();
  int bareShapes = bareSheet.GetShapes().Count();
  bare.Close();
  ExcelApp.reset();
  return "{\"measure\": \"memory\", \"steps\": " + std::to_string(stepCount) + ", \"shapes\": " +
         std::to_string(shapes) + ", \"rss_before_mb\": " + Json(before) + ", \"rss_after_mb\": " + Json(after) +
         ", \"growth_mb\": " + Json(after - before) + ", \"heap_growth_mb\": " + Json(heapAfter - heapBefore) + ", \"first_100_median_ms\": " + Json(first) +
         ", \"last_100_median_ms\": " + Json(last) + ", \"bare_shapes\": " + std::to_string(bareShapes) +
         ", \"bare_heap_growth_mb\": " + Json(bareAfter - bareBefore) + "}";
}

// The wizard's engine on one sheet: a run as the command line asks for it
// (WizardCommand, the dialog's defaults), timed; then the same run again on
// the file opened afresh, its phases timed and the layer's operations
// profiled.
std::string MeasureWizardOn(const std::string& csv) {
  std::string result = "{\"file\": \"" + csv.substr(csv.rfind('/') + 1) + "\"";
  {
    Workbook book = ExcelApp->GetWorkbooks().Open(csv);
    book.Activate();
    WizardChoices choices;
    choices.workbook = book;
    WizardOutcome outcome = WizardCommand::Run(choices);
    if (!outcome.drawn) throw std::runtime_error(outcome.message);
    Shapes drawn = book.Sheet(book.SheetCount()).GetShapes();
    int lines = 0;
    for (int i = 1, n = drawn.Count(); i <= n; ++i)
      if (drawn.Item(i).Connector()) ++lines;
    result += ", \"shapes\": " + std::to_string(outcome.shapes) + ", \"lines\": " + std::to_string(lines) +
              ", \"run_s\": " + Json(outcome.seconds);
    book.Close();
  }
  Workbook book = ExcelApp->GetWorkbooks().Open(csv);
  book.Activate();
  Worksheet source = book.Sheet(1);
  source.Activate();
  ProfileHostCalls(true);
  auto start = std::chrono::steady_clock::now();
  auto since = [&] { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(); };
  tools::FlowchartWizard wizard(source);
  wizard.InitializeGrid();
  double read = since();
  wizard.UpdateGridColumns();
  double laidOut = since();
  wizard.RunFlowchartWizard();
  double drawn = since();
  std::vector<HostCallTime> profile = HostCallProfile();
  ProfileHostCalls(false);
  book.Close();
  std::string top;
  for (size_t i = 0; i < profile.size() && i < 12; ++i)
    top += std::string(i ? ", " : "") + "[\"" + profile[i].what + "\", " + std::to_string(profile[i].calls) + ", " +
           Json(profile[i].ms) + "]";
  return result + ", \"entries\": " + std::to_string(wizard.Rows().size()) + ", \"profiled\": {\"read_s\": " +
         Json(read) + ", \"layout_s\": " + Json(laidOut - read) + ", \"draw_s\": " + Json(drawn - laidOut) +
         ", \"costliest [operation, calls, ms]\": [" + top + "]}}";
}

// The wizard on the two sheets that RunBench wrote as CSV files beside the
// result file: 1,000 entries in one column, and 1,000 across five columns
// with decisions.
std::string MeasureWizard(const Reference<uno::XComponentContext>& context, const std::string& folder) {
  Connect(context);
  SetInstallFolder(NIVAREL_SHIPPED);
  std::string result = "{\"measure\": \"wizard\", \"sheets\": [";
  result += MeasureWizardOn(folder + "/wizard-one-column.csv") + ", ";
  result += MeasureWizardOn(folder + "/wizard-five-columns.csv");
  ExcelApp.reset();
  return result + "]}";
}

// Export as Picture of a 200-step chart, drawn by the wizard's engine from
// the steps RunBench wrote down one column: the picture of its shapes written
// to a PNG as the command line asks for it (capture, the bitmap round trip,
// the file), five times at the screen's resolution.
std::string MeasureExport(const Reference<uno::XComponentContext>& context, const std::string& folder) {
  Connect(context);
  SetInstallFolder(NIVAREL_SHIPPED);
  Workbook book = ExcelApp->GetWorkbooks().Open(folder + "/export-200-steps.csv");
  book.Activate();
  WizardChoices choices;
  choices.workbook = book;
  WizardOutcome chart = WizardCommand::Run(choices);
  if (!chart.drawn) throw std::runtime_error(chart.message);
  std::string result = "{\"measure\": \"export\", \"steps\": 200, \"shapes\": " + std::to_string(chart.shapes);
  // Twice the screen's resolution would be taller than the office draws.
  for (int scale : {1}) {
    std::vector<double> seconds;
    ExportOutcome last;
    for (int i = 0; i < 5; ++i) {
      ExportChoices png;
      png.workbook = book;
      png.sheet = chart.sheet;
      png.scale = scale;
      png.path = folder + "/export.png";
      last = ExportCommand::Run(png);
      if (!last.written) throw std::runtime_error(last.message);
      seconds.push_back(last.seconds);
    }
    std::sort(seconds.begin(), seconds.end());
    result += ", \"scale_" + std::to_string(scale) + "\": {\"pixels\": \"" + std::to_string(last.width) + " x " +
              std::to_string(last.height) + "\", \"median_s\": " + Json(seconds[2]) + ", \"slowest_s\": " +
              Json(seconds.back()) + "}";
  }
  book.Close();
  ExcelApp.reset();
  return result + "}";
}

// The Mermaid import of the tests' chart of 200 nodes with 20 decisions,
// each run into a fresh workbook as the add-in would: five runs timed (the
// import's own time, reading the text to the last shape); then a sixth
// with the layer's operations profiled.
std::string MeasureMermaid(const Reference<uno::XComponentContext>& context) {
  Connect(context);
  SetInstallFolder(NIVAREL_SHIPPED);
  const std::string text = testing::MermaidSample(200, 20);
  auto importOnce = [&](bool profiled) {
    Workbook book = ExcelApp->GetWorkbooks().Add();
    book.Activate();
    if (profiled) ProfileHostCalls(true);
    tools::MermaidImportResult result = tools::CMermaidImport::Import(text, book);
    std::vector<HostCallTime> profile;
    if (profiled) profile = HostCallProfile(), ProfileHostCalls(false);
    int shapes = book.Sheet(1).GetShapes().Count();
    book.Close();
    if (!result.drawn) throw std::runtime_error(result.message);
    return std::make_tuple(result, shapes, profile);
  };
  std::vector<double> seconds;
  std::string result;
  for (int i = 0; i < 5; ++i) {
    auto [run, shapes, profile] = importOnce(false);
    seconds.push_back(run.seconds);
    if (i == 0)
      result = "{\"measure\": \"mermaid\", \"nodes\": " + std::to_string(run.nodes) + ", \"lines\": " +
               std::to_string(run.lines) + ", \"shapes\": " + std::to_string(shapes) + ", \"text_bytes\": " +
               std::to_string(text.size());
  }
  std::sort(seconds.begin(), seconds.end());
  auto [run, shapes, profile] = importOnce(true);
  std::string top;
  for (size_t i = 0; i < profile.size() && i < 12; ++i)
    top += std::string(i ? ", " : "") + "[\"" + profile[i].what + "\", " + std::to_string(profile[i].calls) + ", " +
           Json(profile[i].ms) + "]";
  ExcelApp.reset();
  return result + ", \"runs\": 5, \"median_s\": " + Json(seconds[2]) + ", \"fastest_s\": " +
         Json(seconds.front()) + ", \"slowest_s\": " + Json(seconds.back()) + ", \"profiled\": {\"run_s\": " +
         Json(run.seconds) + ", \"costliest [operation, calls, ms]\": [" + top + "]}}";
}

class BenchHandler : public cppu::WeakImplHelper3<frame::XDispatchProvider, frame::XDispatch, css::lang::XServiceInfo> {
 public:
  explicit BenchHandler(const Reference<uno::XComponentContext>& context) : context_(context) {}

  Reference<frame::XDispatch> SAL_CALL queryDispatch(const css::util::URL& url, const OUString&, sal_Int32) override {
    if (!url.Complete.startsWith(kProtocol)) return {};
    return this;
  }
  uno::Sequence<Reference<frame::XDispatch>> SAL_CALL queryDispatches(
      const uno::Sequence<frame::DispatchDescriptor>& requests) override {
    uno::Sequence<Reference<frame::XDispatch>> result(requests.getLength());
    for (sal_Int32 i = 0; i < requests.getLength(); ++i)
      result.getArray()[i] = queryDispatch(requests[i].FeatureURL, requests[i].FrameName, requests[i].SearchFlags);
    return result;
  }
  void SAL_CALL dispatch(const css::util::URL& url, const uno::Sequence<css::beans::PropertyValue>&) override {
    // The measure runs from the office's event loop, as a menu command does.
    css::awt::AsyncCallback::create(context_)->addCallback(new Run(context_, url.Complete), uno::Any());
  }

  // Runs one measure and writes its result.
  class Run : public cppu::WeakImplHelper1<css::awt::XCallback> {
   public:
    Run(const Reference<uno::XComponentContext>& context, const OUString& url) : context_(context), url_(url) {}
    void SAL_CALL notify(const uno::Any&) override { Measure(context_, url_); }

   private:
    Reference<uno::XComponentContext> context_;
    OUString url_;
  };

  static void Measure(const Reference<uno::XComponentContext>& context_, const OUString& complete) {
    std::string rest = ToUtf8(complete.copy(static_cast<sal_Int32>(sizeof kProtocol - 1)));
    std::string name = rest.substr(0, rest.find('?'));
    std::string file = rest.find('?') == std::string::npos ? std::string() : rest.substr(rest.find('?') + 1);
    std::string result;
    try {
      if (name == "sizing")
        result = MeasureSizing(context_);
      else if (name == "live")
        result = MeasureLive(context_);
      else if (name == "memory")
        result = MeasureMemory(context_);
      else if (name == "export")
        result = MeasureExport(context_, file.substr(0, file.rfind('/')));
      else if (name == "wizard")
        result = MeasureWizard(context_, file.substr(0, file.rfind('/')));
      else if (name == "mermaid")
        result = MeasureMermaid(context_);
      else
        result = "{\"error\": \"unknown measure\"}";
    } catch (const std::exception& e) {
      std::string what = e.what();
      std::replace_if(what.begin(), what.end(), [](char c) { return c == '\r' || c == '\n' || c == '"'; }, ' ');
      result = "{\"error\": \"" + what + "\"}";
    }
    std::ofstream(file) << result << "\n";
  }
  void SAL_CALL addStatusListener(const Reference<frame::XStatusListener>&, const css::util::URL&) override {}
  void SAL_CALL removeStatusListener(const Reference<frame::XStatusListener>&, const css::util::URL&) override {}

  OUString SAL_CALL getImplementationName() override { return Name(); }
  sal_Bool SAL_CALL supportsService(const OUString& name) override { return cppu::supportsService(this, name); }
  uno::Sequence<OUString> SAL_CALL getSupportedServiceNames() override { return Services(); }

  static OUString Name() { return "org.nivarel.bench.ProtocolHandler"; }
  static uno::Sequence<OUString> Services() {
    OUString name("com.sun.star.frame.ProtocolHandler");
    return uno::Sequence<OUString>(&name, 1);
  }

 private:
  Reference<uno::XComponentContext> context_;
};

Reference<uno::XInterface> SAL_CALL Create(const Reference<uno::XComponentContext>& context) {
  return static_cast<cppu::OWeakObject*>(new BenchHandler(context));
}

const cppu::ImplementationEntry kEntries[] = {
    {Create, BenchHandler::Name, BenchHandler::Services, cppu::createSingleComponentFactory, nullptr, 0},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0}};

}  // namespace
}  // namespace nivarel::bench

extern "C" SAL_DLLPUBLIC_EXPORT void* SAL_CALL component_getFactory(const char* implementationName,
                                                                   void* serviceManager, void* registryKey) {
  return cppu::component_getFactoryHelper(implementationName, serviceManager, registryKey,
                                          nivarel::bench::kEntries);
}
