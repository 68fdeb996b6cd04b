#include "frmSymbolLists.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "AutoShapeTypes.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "PictureGrid.h"
#include "Text.h"
#include "TextConvert.h"
#include "UserDialog.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmSymbolLists";
const char* const kGridFont = "DejaVu Sans Mono";
constexpr double kGridFontSize = 8;

// The filter's entries after "All", each a range of shape types.
struct Group {
  const char* name;
  int first, last;
};
const Group kGroups[] = {{"Flowchart Symbols", 61, 88},
                         {"Basic Shapes", 1, 32},
                         {"Block Arrows", 33, 60},
                         {"Stars and Banners", 89, 104},
                         {"Callouts", 105, 124}};

struct Symbol {
  int id = 0;
  std::string name;
  int order = 0;  // in the rules file; the active list numbers its rows afresh
};

std::string Section(int id) { return "Shape " + std::to_string(id); }

class Form {
 public:
  Form(host::UserDialog& dialog, rules::CIniFileHandler& handler, rules::IniFile& ini)
      : dialog_(dialog), handler_(handler), ini_(ini),
        unused_(dialog, "iGrid1",
                {{"symbol_id", "Symbol", true, Pictures()},
                 {"display_name", "Name", true},
                 {"shape_group", "Group", true}}),
        active_(dialog, "iGrid2",
                {{"order", "Order", true},
                 {"symbol_id", "Symbol", true, Pictures()},
                 {"display_name", "Name", true}}) {}

  // InitializeControls and InitializeGrids.
  void Load() {
    for (const char* control : {"iGrid1", "iGrid2", "lblHeading1", "lblHeading2"})
      dialog_.SetFont(control, kGridFont, kGridFontSize, false, false);
    dialog_.SetListIndex("cboFilter", 0);
    for (int16_t s = 1; s <= ini_.SectionCount; ++s) {
      std::string name = ini_.SectionNames[s];
      if (rules::UpperCase(name.substr(0, 7)) != "[SHAPE ") continue;
      int id = rules::ToInt32Or(name.substr(7, name.size() - 8), 0);
      if (id <= 0) continue;
      Symbol symbol;
      symbol.id = id;
      symbol.name = rules::Trim(handler_.ReadFrom(ini_, Section(id), "display_name", ""));
      if (symbol.name.empty())
        if (const office::AutoShapeTypeInfo* info = office::FindAutoShapeType(id)) symbol.name = info->name;
      symbol.order = rules::ToInt32Or(rules::Trim(handler_.ReadFrom(ini_, Section(id), "order", "")), 0);
      bool on = rules::ToBool(handler_.ReadFrom(ini_, Section(id), "is_active", "False"));
      (on ? activeSymbols_ : unusedSymbols_).push_back(symbol);
    }
    std::stable_sort(activeSymbols_.begin(), activeSymbols_.end(),
                     [](const Symbol& a, const Symbol& b) { return a.order < b.order; });
    Fill();
    loaded_ = true;
  }

  void Event(const std::string& method) {
    if (!loaded_) return;
    if (method == "cmdAdd_Click") {
      Add();
    } else if (method == "cmdRemove_Click") {
      Remove();
    } else if (method == "cboFilter_Changed") {
      ApplyFilter();
    } else if (method == "cmdOK_Click") {
      Accept();
    } else if (unused_.Handle(method) || active_.Handle(method)) {
      EnableButtons();
    }
  }

  bool ok = false;

 private:
  static std::vector<std::pair<std::string, std::string>> Pictures() {
    output::ucShapes pictures;
    std::vector<std::pair<std::string, std::string>> out;
    for (int type = output::ucShapes::kFirst; type <= output::ucShapes::kLast; ++type) {
      int index = type;
      out.emplace_back(std::to_string(type), pictures.ShapeImage(index));
    }
    return out;
  }

  // Both lists from the symbols: the unused ones by shape type, the active
  // ones numbered in their order; nothing selected.
  void Fill() {
    std::sort(unusedSymbols_.begin(), unusedSymbols_.end(),
              [](const Symbol& a, const Symbol& b) { return a.id < b.id; });
    unused_.Clear();
    for (const Symbol& s : unusedSymbols_)
      unused_.AddRow({{"symbol_id", std::to_string(s.id)}, {"display_name", s.name},
                      {"shape_group", frmSymbolLists::ShapeGroup(s.id)}});
    active_.Clear();
    for (size_t i = 0; i < activeSymbols_.size(); ++i) {
      activeSymbols_[i].order = static_cast<int>(i) + 1;
      active_.AddRow({{"order", std::to_string(activeSymbols_[i].order)},
                      {"symbol_id", std::to_string(activeSymbols_[i].id)},
                      {"display_name", activeSymbols_[i].name}});
    }
    for (PictureGrid* grid : {&unused_, &active_}) grid->FitColumns();
    dialog_.SetLabel("lblHeading1", unused_.Heading());
    dialog_.SetLabel("lblHeading2", active_.Heading());
    ApplyFilter();
  }

  void ApplyFilter() {
    int entry = dialog_.ListIndex("cboFilter");
    std::vector<bool> visible(unusedSymbols_.size(), true);
    if (entry >= 1 && entry <= static_cast<int>(std::size(kGroups))) {
      const Group& g = kGroups[entry - 1];
      for (size_t i = 0; i < unusedSymbols_.size(); ++i)
        visible[i] = unusedSymbols_[i].id >= g.first && unusedSymbols_[i].id <= g.last;
    }
    unused_.SetVisibleRows(visible);
    EnableButtons();
  }

  void EnableButtons() {
    dialog_.SetEnabled("cmdAdd", !unused_.SelectedRows().empty());
    dialog_.SetEnabled("cmdRemove", !active_.SelectedRows().empty());
  }

  // Moves the selected rows of one list to the end of the other; hidden rows
  // are never selected, so only shown ones move.
  static void Move(const std::vector<int>& rows, std::vector<Symbol>& from, std::vector<Symbol>& to) {
    for (int row : rows) to.push_back(from[row]);
    for (auto r = rows.rbegin(); r != rows.rend(); ++r) from.erase(from.begin() + *r);
  }

  void Add() {
    try {
      std::vector<int> rows = unused_.SelectedRows();
      if (rows.empty()) return;
      Move(rows, unusedSymbols_, activeSymbols_);
      Fill();
    } catch (...) {
      host::ErrorHandler(kSource, "cmdAdd_Click", false);
    }
  }

  void Remove() {
    try {
      if (activeSymbols_.empty()) return;
      std::vector<int> rows = active_.SelectedRows();
      // Every unused row shows while rows come back to the list.
      dialog_.SetListIndex("cboFilter", 0);
      if (!rows.empty()) Move(rows, activeSymbols_, unusedSymbols_);
      Fill();
    } catch (...) {
      host::ErrorHandler(kSource, "cmdRemove_Click", false);
    }
  }

  void Accept() {
    for (const Symbol& s : unusedSymbols_) handler_.WriteTo(ini_, Section(s.id), "is_active", "False");
    for (const Symbol& s : activeSymbols_) {
      handler_.WriteTo(ini_, Section(s.id), "is_active", "True");
      handler_.WriteTo(ini_, Section(s.id), "order", std::to_string(s.order));
    }
    ok = true;
    dialog_.EndDialog(1);
  }

  host::UserDialog& dialog_;
  rules::CIniFileHandler& handler_;
  rules::IniFile& ini_;
  PictureGrid unused_, active_;
  std::vector<Symbol> unusedSymbols_, activeSymbols_;  // as the lists show them
  bool loaded_ = false;
};

}  // namespace

std::string frmSymbolLists::ShapeGroup(int id) {
  for (const Group& g : kGroups)
    if (id >= g.first && id <= g.last) return g.name;
  return "";
}

void frmSymbolLists::InitializeSettings(rules::CIniFileHandler& handler, const rules::IniFile& ini) {
  handler_ = &handler;
  ini_ = ini;
  ok_ = false;
}

void frmSymbolLists::Show() {
  ok_ = false;
  try {
    if (!host::ExcelApp || !handler_) return;
    // The form edits a copy, so that Cancel leaves the record as it was.
    rules::IniFile edited = ini_;
    std::unique_ptr<Form> form;
    host::UserDialog dialog(*host::ExcelApp, "frmSymbolLists", [&](const std::string& method) {
      try {
        if (form) form->Event(method);
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    form = std::make_unique<Form>(dialog, *handler_, edited);
    form->Load();
    dialog.Execute();
    if (!form->ok) return;
    ini_ = edited;
    ok_ = true;
  } catch (...) {
    ok_ = false;
    host::ErrorHandler(kSource, "Show", false);
  }
}

}  // namespace nivarel::dialogs
