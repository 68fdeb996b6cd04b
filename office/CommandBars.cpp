#include "CommandBars.h"

#include <cctype>
#include <map>

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/awt/XVclWindowPeer.hpp>
#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/configuration/theDefaultProvider.hpp>
#include <com/sun/star/lang/XSingleServiceFactory.hpp>
#include <com/sun/star/util/XChangesBatch.hpp>
#include <com/sun/star/util/XFlushable.hpp>
#include <com/sun/star/container/XIndexContainer.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XFramesSupplier.hpp>
#include <com/sun/star/frame/XLayoutManager.hpp>
#include <com/sun/star/frame/theUICommandDescription.hpp>
#include <com/sun/star/ui/DockingArea.hpp>
#include <com/sun/star/ui/ItemStyle.hpp>
#include <com/sun/star/ui/ItemType.hpp>
#include <com/sun/star/ui/UIElementType.hpp>
#include <com/sun/star/ui/XModuleUIConfigurationManagerSupplier.hpp>
#include <com/sun/star/ui/XUIConfigurationManager.hpp>
#include <com/sun/star/ui/XUIElementSettings.hpp>
#include <com/sun/star/ui/XUIConfigurationPersistence.hpp>
#include <com/sun/star/ui/theModuleUIConfigurationManagerSupplier.hpp>
#include <com/sun/star/ui/theWindowStateConfiguration.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {

constexpr char kModule[] = "com.sun.star.sheet.SpreadsheetDocument";
constexpr char kToolbar[] = "private:resource/toolbar/";
constexpr char kMenu[] = "private:resource/menubar/";

using Props = uno::Sequence<css::beans::PropertyValue>;

css::beans::PropertyValue Prop(const char* name, const uno::Any& value) {
  css::beans::PropertyValue p;
  p.Name = OUString::createFromAscii(name);
  p.Value = value;
  return p;
}

// The name's letters and digits, lower-cased: "Nivarel" gives "nivarel".
std::string Slug(const std::string& name) {
  std::string out;
  for (unsigned char c : name)
    if (std::isalnum(c)) out += static_cast<char>(std::tolower(c));
  return out;
}

Reference<css::ui::XUIConfigurationManager> ModuleUi(const HostSession& s) {
  return css::ui::theModuleUIConfigurationManagerSupplier::get(s.context)->getUIConfigurationManager(
      OUString::createFromAscii(kModule));
}

Reference<css::container::XNameContainer> WindowStates(const HostSession& s) {
  Reference<css::container::XNameAccess> modules = css::ui::theWindowStateConfiguration::get(s.context);
  return Reference<css::container::XNameContainer>(modules->getByName(OUString::createFromAscii(kModule)),
                                                   uno::UNO_QUERY_THROW);
}

// A property of a window state or an element's description; empty when it has none.
uno::Any Value(const Props& props, const char* name) {
  for (const auto& p : props)
    if (p.Name.equalsAscii(name)) return p.Value;
  return {};
}

Props StateOf(const HostSession& s, const OUString& url) {
  auto states = WindowStates(s);
  Props state;
  if (states->hasByName(url)) states->getByName(url) >>= state;
  return state;
}

// Writes the given properties into the resource's window state, keeping the others.
void WriteState(const HostSession& s, const OUString& url, const std::vector<css::beans::PropertyValue>& values) {
  auto states = WindowStates(s);
  Props state;
  bool had = states->hasByName(url) && (states->getByName(url) >>= state);
  std::vector<css::beans::PropertyValue> out(state.begin(), state.end());
  for (const auto& v : values) {
    bool found = false;
    for (auto& o : out)
      if (o.Name == v.Name) {
        o.Value = v.Value;
        found = true;
      }
    if (!found) out.push_back(v);
  }
  uno::Any all(Props(out.data(), static_cast<sal_Int32>(out.size())));
  if (had)
    states->replaceByName(url, all);
  else
    states->insertByName(url, all);
}

// The layout managers of the spreadsheet windows open now.
std::vector<Reference<css::frame::XLayoutManager>> SheetWindows(const HostSession& s) {
  std::vector<Reference<css::frame::XLayoutManager>> out;
  Reference<css::frame::XFramesSupplier> desktop(s.desktop, uno::UNO_QUERY_THROW);
  Reference<css::container::XIndexAccess> frames(desktop->getFrames(), uno::UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
    Reference<css::frame::XFrame> frame(frames->getByIndex(i), uno::UNO_QUERY);
    if (!frame.is()) continue;
    Reference<css::frame::XController> controller = frame->getController();
    Reference<css::sheet::XSpreadsheetDocument> document(
        controller.is() ? controller->getModel() : Reference<css::frame::XModel>(), uno::UNO_QUERY);
    if (!document.is()) continue;
    Reference<css::beans::XPropertySet> props(frame, uno::UNO_QUERY_THROW);
    Reference<css::frame::XLayoutManager> layout(props->getPropertyValue("LayoutManager"), uno::UNO_QUERY);
    if (layout.is()) out.push_back(layout);
  }
  return out;
}

// The resource URL of the first toolbar of the module titled name; empty
// when there is none. A toolbar's title is its settings' UIName, else its
// window state's.
OUString FindBar(const HostSession& s, const std::string& name) {
  OUString title = ToOu(name);
  auto states = WindowStates(s);
  const auto infos = ModuleUi(s)->getUIElementsInfo(css::ui::UIElementType::TOOLBAR);
  for (const Props& info : infos) {
    OUString url, uiName;
    Value(info, "ResourceURL") >>= url;
    Value(info, "UIName") >>= uiName;
    if (uiName.isEmpty() && states->hasByName(url)) Value(StateOf(s, url), "UIName") >>= uiName;
    if (uiName == title) return url;
  }
  return {};
}

Props Item(const std::string& command, const std::string& caption, const std::string& tooltip, sal_Int16 type,
           sal_Int32 style) {
  std::vector<css::beans::PropertyValue> p = {
      Prop("CommandURL", uno::Any(ToOu(command))), Prop("Label", uno::Any(ToOu(caption))),
      Prop("Type", uno::Any(type)), Prop("Style", uno::Any(style)), Prop("IsVisible", uno::Any(true))};
  // A command the office doesn't know takes its tooltip from its item.
  if (!tooltip.empty()) p.push_back(Prop("TooltipLabel", uno::Any(ToOu(tooltip))));
  return Props(p.data(), static_cast<sal_Int32>(p.size()));
}

Props Separator() {
  css::beans::PropertyValue type = Prop("Type", uno::Any(sal_Int16(css::ui::ItemType::SEPARATOR_LINE)));
  return Props(&type, 1);
}

void Append(const Reference<css::container::XIndexContainer>& container, const Props& item) {
  container->insertByIndex(container->getCount(), uno::Any(item));
}

// The entries of a drop-down menu: buttons, and popups as submenus.
Reference<css::container::XIndexContainer> MenuEntries(const Reference<css::ui::XUIConfigurationManager>& ui,
                                                       const std::vector<CommandBarControl>& controls) {
  Reference<css::container::XIndexContainer> entries(ui->createSettings(), uno::UNO_QUERY_THROW);
  for (const auto& c : controls) {
    if (c.beginGroup && entries->getCount() > 0) Append(entries, Separator());
    Props item = Item(c.IsPopup() ? "vnd.nivarel:rxNivarel" + c.parameter : c.command, c.caption, c.tooltip,
                      css::ui::ItemType::DEFAULT, 0);
    if (c.IsPopup()) {
      std::vector<css::beans::PropertyValue> p(item.begin(), item.end());
      p.push_back(Prop("ItemDescriptorContainer", uno::Any(MenuEntries(ui, c.controls))));
      item = Props(p.data(), static_cast<sal_Int32>(p.size()));
    }
    Append(entries, item);
  }
  return entries;
}

void Replace(const Reference<css::ui::XUIConfigurationManager>& ui, const OUString& url,
             const Reference<css::container::XIndexContainer>& container) {
  Reference<css::container::XIndexAccess> settings(container, uno::UNO_QUERY_THROW);
  if (ui->hasSettings(url))
    ui->replaceSettings(url, settings);
  else
    ui->insertSettings(url, settings);
}

css::ui::DockingArea AreaOf(int position) {
  switch (position) {
    case msoBarLeft: return css::ui::DockingArea_DOCKINGAREA_LEFT;
    case msoBarRight: return css::ui::DockingArea_DOCKINGAREA_RIGHT;
    case msoBarBottom: return css::ui::DockingArea_DOCKINGAREA_BOTTOM;
    default: return css::ui::DockingArea_DOCKINGAREA_TOP;
  }
}

int PositionOf(css::ui::DockingArea area) {
  switch (area) {
    case css::ui::DockingArea_DOCKINGAREA_LEFT: return msoBarLeft;
    case css::ui::DockingArea_DOCKINGAREA_RIGHT: return msoBarRight;
    case css::ui::DockingArea_DOCKINGAREA_BOTTOM: return msoBarBottom;
    default: return msoBarTop;
  }
}

// The office's descriptions of the spreadsheet's commands, to change: a
// toolbar button takes its tooltip from its command's description.
Reference<css::container::XNameContainer> CommandDescriptions(const HostSession& s) {
  auto provider = css::configuration::theDefaultProvider::get(s.context);
  css::beans::NamedValue path("nodepath",
                              uno::Any(OUString("/org.openoffice.Office.UI.CalcCommands/UserInterface/Commands")));
  uno::Sequence<uno::Any> args(1);
  args.getArray()[0] <<= path;
  return Reference<css::container::XNameContainer>(
      provider->createInstanceWithArguments("com.sun.star.configuration.ConfigurationUpdateAccess", args),
      uno::UNO_QUERY_THROW);
}

// Describes a command of the add-in's own with its caption and tooltip.
void Describe(const HostSession& s, const std::string& command, const std::string& caption,
              const std::string& tooltip) {
  auto descriptions = CommandDescriptions(s);
  OUString name = ToOu(command);
  if (descriptions->hasByName(name)) descriptions->removeByName(name);
  Reference<css::lang::XSingleServiceFactory> factory(descriptions, uno::UNO_QUERY_THROW);
  Reference<css::beans::XPropertySet> entry(factory->createInstance(), uno::UNO_QUERY_THROW);
  entry->setPropertyValue("Label", uno::Any(ToOu(caption)));
  entry->setPropertyValue("TooltipLabel", uno::Any(ToOu(tooltip)));
  descriptions->insertByName(name, uno::Any(entry));
  Reference<css::util::XChangesBatch>(descriptions, uno::UNO_QUERY_THROW)->commitChanges();
}

void Forget(const HostSession& s, const OUString& command) {
  auto descriptions = CommandDescriptions(s);
  if (!descriptions->hasByName(command)) return;
  descriptions->removeByName(command);
  Reference<css::util::XChangesBatch>(descriptions, uno::UNO_QUERY_THROW)->commitChanges();
}

// Writes the configuration's changes to the user's profile now: at the
// office's end they come after its own last writing.
void Flush(const HostSession& s) {
  Reference<css::util::XFlushable>(css::configuration::theDefaultProvider::get(s.context), uno::UNO_QUERY_THROW)
      ->flush();
}

bool Horizontal(int position) { return position == msoBarTop || position == msoBarBottom; }

}  // namespace

CommandBars::CommandBars(std::shared_ptr<HostSession> session) : session_(std::move(session)) {}

namespace {

// The host's built-in controls that a bar of the add-in names, and the
// office's commands for spreadsheets that do the same.
const std::map<int, const char*> kBuiltIn = {
    {182, ".uno:SelectObject"},
    // Flowchart symbols
    {1190, ".uno:FlowChartShapes.flowchart-process"}, {1191, ".uno:FlowChartShapes.flowchart-alternate-process"},
    {1192, ".uno:FlowChartShapes.flowchart-decision"}, {1193, ".uno:FlowChartShapes.flowchart-data"},
    {1194, ".uno:FlowChartShapes.flowchart-predefined-process"},
    {1195, ".uno:FlowChartShapes.flowchart-internal-storage"}, {1196, ".uno:FlowChartShapes.flowchart-document"},
    {1197, ".uno:FlowChartShapes.flowchart-multidocument"}, {1198, ".uno:FlowChartShapes.flowchart-terminator"},
    {1199, ".uno:FlowChartShapes.flowchart-preparation"}, {1200, ".uno:FlowChartShapes.flowchart-manual-input"},
    {1201, ".uno:FlowChartShapes.flowchart-manual-operation"}, {1202, ".uno:FlowChartShapes.flowchart-connector"},
    {1203, ".uno:FlowChartShapes.flowchart-off-page-connector"}, {1204, ".uno:FlowChartShapes.flowchart-card"},
    {1205, ".uno:FlowChartShapes.flowchart-punched-tape"}, {1206, ".uno:FlowChartShapes.flowchart-summing-junction"},
    {1207, ".uno:FlowChartShapes.flowchart-or"}, {1208, ".uno:FlowChartShapes.flowchart-collate"},
    {1209, ".uno:FlowChartShapes.flowchart-sort"}, {1210, ".uno:FlowChartShapes.flowchart-extract"},
    {1211, ".uno:FlowChartShapes.flowchart-merge"}, {1213, ".uno:FlowChartShapes.flowchart-stored-data"},
    {1214, ".uno:FlowChartShapes.flowchart-sequential-access"}, {1215, ".uno:FlowChartShapes.flowchart-magnetic-disk"},
    {1216, ".uno:FlowChartShapes.flowchart-direct-access-storage"}, {1217, ".uno:FlowChartShapes.flowchart-display"},
    {1218, ".uno:FlowChartShapes.flowchart-delay"},
    // Lines: Calc draws straight lines with and without arrows, and has no
    // connector tools (elbow and curved connectors).
    {2640, ".uno:LineArrowEnd"}, {2641, ".uno:LineArrows"}, {1042, ".uno:Line"},
    // Callouts: Calc has the first three line callouts, with a border.
    {1172, ".uno:CalloutShapes.rectangular-callout"}, {1173, ".uno:CalloutShapes.round-rectangular-callout"},
    {1174, ".uno:CalloutShapes.round-callout"}, {1175, ".uno:CalloutShapes.cloud-callout"},
    {1219, ".uno:CalloutShapes.line-callout-1"}, {1176, ".uno:CalloutShapes.line-callout-2"},
    {1177, ".uno:CalloutShapes.line-callout-3"},
    // Block arrows
    {1142, ".uno:ArrowShapes.right-arrow"}, {1143, ".uno:ArrowShapes.left-arrow"},
    {1144, ".uno:ArrowShapes.up-arrow"}, {1145, ".uno:ArrowShapes.down-arrow"},
    {1576, ".uno:HyperlinkDialog"},
    // Layout: snap to grid, group, ungroup. Calc has no snapping to other
    // shapes (1402), no regrouping (338) and no rerouting of connectors (1033).
    {549, ".uno:GridUse"}, {164, ".uno:FormatGroup"}, {165, ".uno:FormatUngroup"},
};

struct PopupEntry {
  const char* caption;
  const char* command;
};
struct Popup {
  const char* caption;
  std::vector<PopupEntry> entries;
};
// The host's built-in popups, as Calc's own commands for their entries. The
// host's last popup of shape changes (30080) has no counterpart in Calc.
const std::map<int, Popup> kBuiltInPopups = {
    {30078,
     {"Order",
      {{"Bring to Front", ".uno:BringToFront"}, {"Send to Back", ".uno:SendToBack"},
       {"Bring Forward", ".uno:ObjectForwardOne"}, {"Send Backward", ".uno:ObjectBackOne"}}}},
    {30174,
     {"Align or Distribute",
      {{"Align Left", ".uno:ObjectAlignLeft"}, {"Align Center", ".uno:AlignCenter"},
       {"Align Right", ".uno:ObjectAlignRight"}, {"Align Top", ".uno:AlignUp"}, {"Align Middle", ".uno:AlignMiddle"},
       {"Align Bottom", ".uno:AlignDown"}}}},
    {30036,
     {"Rotate or Flip",
      {{"Free Rotate", ".uno:ToggleObjectRotateMode"}, {"Flip Vertical", ".uno:ObjectMirrorVertical"},
       {"Flip Horizontal", ".uno:ObjectMirrorHorizontal"}}}},
};

bool OfficeHasCommand(const HostSession& s, const std::string& command) {
  Reference<css::container::XNameAccess> modules = css::frame::theUICommandDescription::get(s.context);
  Reference<css::container::XNameAccess> commands(modules->getByName(OUString::createFromAscii(kModule)),
                                                  uno::UNO_QUERY_THROW);
  return commands->hasByName(ToOu(command));
}

}  // namespace

std::string CommandBars::BuiltInCommand(int controlId) const {
  return Call("CommandBars.BuiltInCommand", [&] {
    auto found = kBuiltIn.find(controlId);
    if (found == kBuiltIn.end() || !OfficeHasCommand(*session_, found->second)) return std::string();
    return std::string(found->second);
  });
}

CommandBarControl CommandBars::BuiltInPopup(int controlId) const {
  return Call("CommandBars.BuiltInPopup", [&] {
    CommandBarControl popup;
    auto found = kBuiltInPopups.find(controlId);
    if (found == kBuiltInPopups.end()) return popup;
    popup.caption = found->second.caption;
    popup.parameter = "Popup" + std::to_string(controlId);
    for (const auto& e : found->second.entries) {
      if (!OfficeHasCommand(*session_, e.command)) continue;
      CommandBarControl entry;
      entry.caption = e.caption;
      entry.command = e.command;
      popup.controls.push_back(entry);
    }
    return popup;
  });
}

bool CommandBars::Exists(const std::string& name) const {
  return Call("CommandBars.Exists", [&] { return !FindBar(*session_, name).isEmpty(); });
}

bool CommandBars::Delete(const std::string& name) {
  return Call("CommandBars.Delete", [&] {
    OUString url = FindBar(*session_, name);
    if (url.isEmpty()) return false;
    for (const auto& layout : SheetWindows(*session_)) layout->destroyElement(url);
    auto ui = ModuleUi(*session_);
    Reference<css::container::XIndexAccess> items = ui->getSettings(url, false);
    for (sal_Int32 i = 0; items.is() && i < items->getCount(); ++i) {
      Props item;
      OUString command;
      if (!(items->getByIndex(i) >>= item) || !(Value(item, "CommandURL") >>= command)) continue;
      if (command.startsWith(kMenu) && ui->hasSettings(command))
        ui->removeSettings(command);
      else if (!command.startsWith(".uno:"))
        Forget(*session_, command);
    }
    ui->removeSettings(url);
    // A bar that the user's configuration kept (stored by the office's
    // Customize dialog, say) goes from there too.
    // At the office's end its storage may be gone already: the bar, never
    // stored, is gone all the same.
    Reference<css::ui::XUIConfigurationPersistence> persistence(ui, uno::UNO_QUERY);
    try {
      if (persistence.is() && persistence->isModified()) persistence->store();
    } catch (const uno::Exception&) {
    }
    auto states = WindowStates(*session_);
    if (states->hasByName(url)) states->removeByName(url);
    Flush(*session_);
    return true;
  });
}

void CommandBars::Add(const std::string& name, const std::vector<CommandBarControl>& controls) {
  Call("CommandBars.Add", [&] {
    auto ui = ModuleUi(*session_);
    const std::string slug = Slug(name);
    OUString url = ToOu(kToolbar + ("custom_" + slug));
    Reference<css::container::XIndexContainer> bar(ui->createSettings(), uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet>(bar, uno::UNO_QUERY_THROW)->setPropertyValue("UIName", uno::Any(ToOu(name)));
    for (const auto& c : controls) {
      if (c.beginGroup && bar->getCount() > 0) Append(bar, Separator());
      if (!c.IsPopup()) {
        if (!c.tooltip.empty() && c.command.rfind(".uno:", 0) != 0) Describe(*session_, c.command, c.caption, c.tooltip);
        sal_Int32 style = (c.style & 1 ? css::ui::ItemStyle::ICON : 0) | (c.style & 2 ? css::ui::ItemStyle::TEXT : 0);
        Append(bar, Item(c.command, c.caption, c.tooltip, css::ui::ItemType::DEFAULT, style));
        continue;
      }
      // A toolbar item whose command names a menu of the configuration
      // drops that menu down.
      std::string menuUrl = kMenu + ("custom_" + slug + "_" + Slug(c.parameter));
      Replace(ui, ToOu(menuUrl), MenuEntries(ui, c.controls));
      Append(bar, Item(menuUrl, c.caption, c.tooltip, css::ui::ItemType::DEFAULT, css::ui::ItemStyle::TEXT));
    }
    // The windows open now make the bar as soon as it is in the
    // configuration, with the title and place of its window state.
    WriteState(*session_, url,
               {Prop("UIName", uno::Any(ToOu(name))), Prop("Visible", uno::Any(true)),
                Prop("ContextSensitive", uno::Any(false)), Prop("Docked", uno::Any(true)),
                Prop("DockingArea", uno::Any(css::ui::DockingArea_DOCKINGAREA_TOP))});
    Replace(ui, url, bar);
    for (const auto& layout : SheetWindows(*session_)) {
      // A window that made the bar on the configuration's news leaves it
      // untitled: the title is the bar's name.
      layout->createElement(url);
      layout->showElement(url);
      auto element = layout->getElement(url);
      Reference<css::awt::XVclWindowPeer> window(element.is() ? element->getRealInterface() : nullptr, uno::UNO_QUERY);
      if (window.is()) window->setProperty("Text", uno::Any(ToOu(name)));
    }
  });
}

CommandBarPlace CommandBars::Place(const std::string& name) const {
  return Call("CommandBars.Place", [&] {
    OUString url = FindBar(*session_, name);
    if (url.isEmpty()) throw HostError(HostError::kInvalidArgument, "There is no command bar named " + name);
    Props state = StateOf(*session_, url);
    CommandBarPlace place;
    bool docked = true;
    Value(state, "Visible") >>= place.visible;
    Value(state, "Docked") >>= docked;
    css::awt::Point pos;
    css::awt::Size size;
    if (docked) {
      css::ui::DockingArea area = css::ui::DockingArea_DOCKINGAREA_TOP;
      Value(state, "DockingArea") >>= area;
      place.position = PositionOf(area);
      Value(state, "DockPos") >>= pos;
      Value(state, "DockSize") >>= size;
    } else {
      place.position = msoBarFloating;
      Value(state, "Pos") >>= pos;
      Value(state, "Size") >>= size;
    }
    if (place.position == msoBarFloating) {
      place.left = pos.X;
      place.top = pos.Y;
    } else if (Horizontal(place.position)) {
      place.left = pos.X;
      place.rowIndex = pos.Y;
    } else {
      place.rowIndex = pos.X;
      place.top = pos.Y;
    }
    place.width = size.Width;
    place.height = size.Height;
    return place;
  });
}

void CommandBars::SetPlace(const std::string& name, const CommandBarPlace& place) {
  Call("CommandBars.SetPlace", [&] {
    OUString url = FindBar(*session_, name);
    if (url.isEmpty()) throw HostError(HostError::kInvalidArgument, "There is no command bar named " + name);
    const bool floating = place.position == msoBarFloating;
    css::awt::Point pos = floating || Horizontal(place.position) ? css::awt::Point(place.left, floating ? place.top : place.rowIndex)
                                                                 : css::awt::Point(place.rowIndex, place.top);
    css::awt::Size size(place.width, place.height);
    std::vector<css::beans::PropertyValue> state = {Prop("Visible", uno::Any(place.visible)),
                                                    Prop("Docked", uno::Any(!floating))};
    if (floating) {
      state.push_back(Prop("Pos", uno::Any(pos)));
      if (size.Width > 0 && size.Height > 0) state.push_back(Prop("Size", uno::Any(size)));
    } else {
      state.push_back(Prop("DockingArea", uno::Any(AreaOf(place.position))));
      state.push_back(Prop("DockPos", uno::Any(pos)));
    }
    WriteState(*session_, url, state);
    for (const auto& layout : SheetWindows(*session_)) {
      if (!layout->getElement(url).is()) continue;
      if (floating) {
        layout->floatWindow(url);
        if (size.Width > 0 && size.Height > 0)
          layout->setElementPosSize(url, pos, size);
        else
          layout->setElementPos(url, pos);
      } else {
        layout->dockWindow(url, AreaOf(place.position), pos);
      }
      if (place.visible)
        layout->showElement(url);
      else
        layout->hideElement(url);
    }
  });
}

void CommandBars::KeepVisible(const std::string& toolbar, bool visible) {
  Call("CommandBars.KeepVisible", [&] {
    WriteState(*session_, ToOu(kToolbar + toolbar), {Prop("Visible", uno::Any(visible))});
    Flush(*session_);
  });
}

bool CommandBars::Visible(const std::string& toolbar) const {
  return Call("CommandBars.Visible", [&] {
    OUString url = ToOu(kToolbar + toolbar);
    for (const auto& layout : SheetWindows(*session_))
      if (layout->isElementVisible(url)) return true;
    return false;
  });
}

void CommandBars::SetVisible(const std::string& toolbar, bool visible) {
  Call("CommandBars.SetVisible", [&] {
    OUString url = ToOu(kToolbar + toolbar);
    WriteState(*session_, url, {Prop("Visible", uno::Any(visible))});
    Flush(*session_);
    for (const auto& layout : SheetWindows(*session_)) {
      if (visible) {
        layout->createElement(url);
        layout->showElement(url);
      } else {
        layout->hideElement(url);
      }
    }
  });
}

}  // namespace nivarel::office
