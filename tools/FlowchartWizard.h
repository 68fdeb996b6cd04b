// The text-to-flowchart wizard's engine: text already on a sheet becomes a
// finished flowchart in one batch. The source sheet is read column by column
// into a table, one row per non-blank cell, each text classified as a symbol
// and given connectors to the next cell below it; a caller (the wizard's
// dialog, the command line) may change the table and the choices, then calls
// UpdateGridColumns and RunFlowchartWizard, in that order, once. The run is
// one entry of the workbook's undo list. Failures are logged under
// "FlowchartWizard" with the procedure's name; a run goes on past a row or a
// line that fails.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "CConfig.h"
#include "CIniSymbolDataAccess.h"
#include "CSymbolData.h"
#include "Shape.h"
#include "Shapes.h"
#include "Worksheet.h"

namespace nivarel::tools {

// How one connection of a row is drawn.
struct WizardLink {
  std::string label;
  bool dashed = false;
};

// One row of the table: a non-blank cell of the source sheet.
struct WizardRow {
  int entry_id = 0;           // the row's own number, from 1 in reading order
  int symbol_id = 60;         // the symbol's shape type less 1
  int style_id = 0;           // the style plus 123
  std::string entry;          // the shape's text, its prefix taken off
  std::string connect_to;     // row numbers or unique texts, comma-separated
  // How each item of connect_to is drawn, in its order (missing ones
  // plain): a label, on a decision, goes on the side that item's line
  // leaves by, in place of that side's branch text; a dashed line is drawn
  // dashed.
  std::vector<WizardLink> connect_links;
  std::string branchtop, branchright, branchbottom, branchleft;  // a decision's labels
  std::string celladdress;    // the source cell, "B5"
  std::string shapename;      // the shape's name once drawn
  int target_column = 0;      // the shape's sheet column
  int target_row = 0;         // the shape's sheet row
  bool included = true;       // excluded rows draw nothing; their text goes to column A
};

class FlowchartWizard {
 public:
  static constexpr int kStyleOffset = 123;  // style_id is the style plus this

  // Takes source as the sheet to read and loads the settings and the
  // symbol rules.
  explicit FlowchartWizard(const office::Worksheet& source);

  // The layout and output choices, with the dialog's defaults.
  bool addSpacing = true;    // false: keep the existing layout
  int rowsBetween = 2;       // 0 to 10
  int columnsBetween = 4;    // 0 to 10
  bool newSheet = true;      // false: draw over the source sheet itself
  // Called once every symbol is drawn and sized, before the flow lines and
  // the branch labels: may move the symbols (the rows' shapename name them)
  // to places of its own. None: the wizard's own places stand.
  std::function<void(office::Worksheet&, std::vector<WizardRow>&)> arrange;

  // The address of the sheet's occupied rectangle ("" on an empty sheet)
  // and the count of its non-blank cells.
  void GetEntryCount(std::string& address, int16_t& count);
  // Reads the source sheet into the table.
  void InitializeGrid();
  std::vector<WizardRow>& Rows() { return rows_; }
  const std::vector<WizardRow>& Rows() const { return rows_; }

  // The symbol type text stands for; text loses its prefix.
  int16_t SetShapeType(std::string& text);

  // The final columns and rows of the shapes.
  void UpdateGridColumns();
  // Draws the chart: on a copy of the source sheet behind the workbook's
  // last sheet (newSheet), or on the source sheet. The output sheet is left
  // active.
  void RunFlowchartWizard();
  // The sheet drawn on by the last run.
  std::optional<office::Worksheet> OutputSheet() const { return output_; }

  // The settings in force for the run; the dialog changes the styles' ones.
  rules::CConfig& Config() { return config_; }
  const rules::CSymbolData& Symbols() const { return symbols_; }

  // Building blocks, public for their tests.
  int GetNextRow(const office::Shape& previous, int proposedRow);
  // The first included row (1-based) whose entry holds text, in any case
  // and without double quotes; 0 when none does.
  int FindRowByEntryText(const std::string& text) const;
  // Whole degrees from a's centre to b's: 0 right, 90 above, 180 left, 270 below.
  static int GetAngleBetweenShapes(const office::Shape& a, const office::Shape& b);

 private:
  int16_t SetShapeTypeFromPrefix(std::string& text);
  int16_t SetShapeTypeFromSpecialRules(const std::string& text);
  int16_t SetShapeTypeFromKeywordSearch(const std::string& text);
  static bool IsOnPageConnector(const std::string& text);
  void PopulateGridRows(const std::string& address);
  void AddColumnToArray(int column);
  void SpreadColumnArray();
  int GetNewTargetColumn(int column) const;
  void ReSpaceColumns();
  void CreateWorksheetGrid();
  void CreateFlowchart(office::Worksheet& sheet);
  void CreateFlowlines(office::Worksheet& sheet);
  // The line drawn, if any; it leaves by none of the taken sides where
  // another way round will do.
  std::optional<office::Shape> CreateFlowlinesForRow(office::Worksheet& sheet, office::Shape& from, int targetRow,
                                                     const std::set<int>& taken);
  // The side (0 top ... 3 left) of from that line leaves by; -1 when none.
  static int SideLeftBy(const office::Shape& from, const office::Shape& line);
  // Each decision's branch labels: its rows' texts, a side's text replaced
  // by the label of the line that leaves by that side.
  void AddBranchLabels(office::Worksheet& sheet);
  WizardRow* Row(int number);  // 1-based; null outside the table
  // The (column, row) of a shape's top-left cell; a symbol's is read once,
  // when it has its place for good (nothing moves it afterwards).
  std::pair<int, int> TopLeftOf(const office::Shape& shape);

  office::Worksheet source_;
  std::optional<office::Worksheet> output_;
  rules::CConfig config_;
  rules::CSymbolData symbols_;
  rules::RuleTable prefixes_, keywords_;
  std::vector<WizardRow> rows_;
  // The column map: (original column, new column) in order of first appearance.
  std::vector<std::pair<int, int>> columnMap_;
  bool columnMapFilled_ = false;
  // While drawing: the output sheet's top-level shapes, kept up to date.
  std::vector<office::ShapeOutline> outlines_;
  std::map<const void*, std::pair<int, int>> topLeft_;
  // Per row, the labels of its lines by the side they leave by.
  std::vector<std::map<int, std::string>> sideTexts_;
};

}  // namespace nivarel::tools
