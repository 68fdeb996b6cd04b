// The language of cell text: what one committed cell means. A prefix before
// the delimiter selects a symbol outright; failing that, the text's form
// (a question, a number, short capital text); failing that, the keyword
// table; failing that, a plain process. "LBL:" with text drops a label at the
// cell, and the reserved words FL, LBL and BR open their tools; for those no
// symbol is drawn.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "CConfig.h"
#include "CIniSymbolDataAccess.h"
#include "CSymbolData.h"
#include "Worksheet.h"

namespace nivarel::flowcharting {

class CTextParser {
 public:
  // Parses text typed at cellAddress of worksheet. Acts at once on a label or
  // a reserved word (the cell is cleared).
  void ParseText(const std::string& text, const rules::CConfig& config, office::Worksheet& worksheet,
                 const rules::RuleTable& prefixTable, const rules::RuleTable& keywordTable,
                 const rules::CSymbolData& symbols, const std::string& cellAddress,
                 const std::string& lastShapeName);

  const std::string& Text() const { return m_Text; }
  int16_t ShapeType() const { return m_ShapeType; }
  bool HasName() const { return m_HasName; }
  const std::string& Name() const { return m_Name; }
  bool HasTopBranch() const { return m_HasTopBranch; }
  const std::string& TopBranchSymbolId() const { return m_TopBranchSymbolId; }
  const std::string& TopBranchText() const { return m_TopBranchText; }
  bool HasRightBranch() const { return m_HasRightBranch; }
  const std::string& RightBranchSymbolId() const { return m_RightBranchSymbolId; }
  const std::string& RightBranchText() const { return m_RightBranchText; }
  bool HasBottomBranch() const { return m_HasBottomBranch; }
  const std::string& BottomBranchSymbolId() const { return m_BottomBranchSymbolId; }
  const std::string& BottomBranchText() const { return m_BottomBranchText; }
  bool HasLeftBranch() const { return m_HasLeftBranch; }
  const std::string& LeftBranchSymbolId() const { return m_LeftBranchSymbolId; }
  const std::string& LeftBranchText() const { return m_LeftBranchText; }
  bool HasFlowLine() const { return m_HasFlowLine; }
  const std::string& FlowLineShapeName() const { return m_FlowLineShapeName; }
  bool HasHyperlink() const { return m_HasHyperlink; }
  const std::string& HyperlinkAddress() const { return m_HyperlinkAddress; }
  bool IsPowerString() const { return m_IsPowerString; }
  const std::string& PowerStringTag() const { return m_PowerStringTag; }
  bool IsReserved() const { return m_IsReserved; }
  const std::string& ReservedTag() const { return m_ReservedTag; }
  bool HasPrefix() const { return m_HasPrefix; }
  const std::string& Prefix() const { return m_Prefix; }
  bool LastShapeChanged() const { return m_LastShapeChanged; }
  const std::string& LastShapeName() const { return m_LastShapeName; }

  // The symbol of the first keyword of the table that stands in text as a
  // word of its own (not inside a longer run of letters); 0 when none does.
  static int16_t KeywordSymbol(const std::string& text, const rules::RuleTable& keywordTable);

 private:
  void ResetMemberVariables();
  void SetPrefixAndText(const std::string& text, const std::string& delimiter, bool capitalize);
  bool IsPowerStringEntry(office::Worksheet& worksheet, const rules::CConfig& config, const std::string& cellAddress);
  bool IsReservedKeyword(office::Worksheet& worksheet, const rules::CConfig& config, const std::string& cellAddress);
  int16_t SetShapeType(const rules::CConfig& config, const rules::RuleTable& prefixTable,
                       const rules::RuleTable& keywordTable, const rules::CSymbolData& symbols);
  int16_t SetShapeTypeFromPrefix(const rules::RuleTable& prefixTable);
  int16_t SetShapeTypeFromSpecialRules(const rules::CConfig& config, const rules::CSymbolData& symbols);
  int16_t SetShapeTypeFromKeywordSearch(const rules::RuleTable& keywordTable);
  bool IsOnPageConnector();
  static bool IsNotAlpha(const std::string& text, size_t position);
  // Names, branches, flow lines and links written behind "-" tokens: a part
  // of the language that the parse doesn't use yet.
  void FindComponents(const std::string& text);
  // A borderless label with the branch font at the cell.
  void DropLabel(office::Worksheet& worksheet, const rules::CConfig& config, const std::string& cellAddress);

  std::string m_Text;
  int16_t m_ShapeType = 61;
  bool m_HasName = false;
  std::string m_Name;
  bool m_HasTopBranch = false;
  std::string m_TopBranchSymbolId;
  std::string m_TopBranchText;
  bool m_HasRightBranch = false;
  std::string m_RightBranchSymbolId;
  std::string m_RightBranchText;
  bool m_HasBottomBranch = false;
  std::string m_BottomBranchSymbolId;
  std::string m_BottomBranchText;
  bool m_HasLeftBranch = false;
  std::string m_LeftBranchSymbolId;
  std::string m_LeftBranchText;
  bool m_HasFlowLine = false;
  std::string m_FlowLineShapeName;
  bool m_HasHyperlink = false;
  std::string m_HyperlinkAddress;
  bool m_IsPowerString = false;
  std::string m_PowerStringTag;
  bool m_IsReserved = false;
  std::string m_ReservedTag;
  bool m_HasPrefix = false;
  std::string m_Prefix;
  bool m_LastShapeChanged = false;
  std::string m_LastShapeName;
};

}  // namespace nivarel::flowcharting
