#include "CTextParser.h"

#include "UndoList.h"
#include "frmFlowLineInsert.h"
#include "frmInsertTree.h"
#include "frmTextBox.h"

#include <cctype>

#include "MBranchLabels.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextConvert.h"
#include "Text.h"

namespace nivarel::flowcharting {

namespace {

constexpr char kSource[] = "CTextParser";
constexpr int16_t kProcess = 61, kDecision = 63, kConnector = 73, kOffPageConnector = 74;

}  // namespace

void CTextParser::ParseText(const std::string& text, const rules::CConfig& config, office::Worksheet& worksheet,
                            const rules::RuleTable& prefixTable, const rules::RuleTable& keywordTable,
                            const rules::CSymbolData& symbols, const std::string& cellAddress,
                            const std::string& lastShapeName) {
  try {
    ResetMemberVariables();
    m_LastShapeName = lastShapeName;
    SetPrefixAndText(text, config.PrefixDelimiter, config.Capitalize);
    m_IsPowerString = IsPowerStringEntry(worksheet, config, cellAddress);
    if (!m_IsPowerString) m_IsReserved = IsReservedKeyword(worksheet, config, cellAddress);
    if (!m_IsReserved) m_ShapeType = SetShapeType(config, prefixTable, keywordTable, symbols);
  } catch (...) {
    host::ErrorHandler(kSource, "ParseText", false);
  }
}

void CTextParser::ResetMemberVariables() {
  std::string keep = m_LastShapeName;
  *this = CTextParser();
  m_LastShapeName = keep;
}

void CTextParser::SetPrefixAndText(const std::string& text, const std::string& delimiter, bool capitalize) {
  try {
    if (text.empty()) {
      m_Prefix.clear();
      m_Text = " ";
      return;
    }
    // An empty delimiter stands at the first character.
    size_t p = delimiter.empty() ? 0 : text.find(delimiter);
    if (p == std::string::npos) {
      m_Prefix.clear();
      m_Text = rules::Trim(text);
    } else {
      // Everything behind the delimiter's first character is the text.
      m_Prefix = rules::UpperCase(rules::Trim(text.substr(0, p)));
      m_Text = rules::Trim(text.substr(p + 1));
    }
    if (m_Text.empty()) {
      m_Text = " ";
    } else if (capitalize) {
      m_Text = rules::CapitalizeFirst(m_Text);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "SetPrefixAndText", false);
  }
}

bool CTextParser::IsPowerStringEntry(office::Worksheet& worksheet, const rules::CConfig& config,
                                     const std::string& cellAddress) {
  bool result = false;
  try {
    result = !rules::Trim(m_Text).empty() && m_Prefix == "LBL";
    if (result) {
      worksheet.GetRange(cellAddress).ClearContents();
      DropLabel(worksheet, config, cellAddress);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "IsPowerStringEntry", false);
  }
  return result;
}

void CTextParser::DropLabel(office::Worksheet& worksheet, const rules::CConfig& config,
                            const std::string& cellAddress) {
  // Drawing, unrecorded: the run records the shapes its step adds.
  office::UndoList::Pause drawing(worksheet.Parent());
  office::Range cell = worksheet.GetRange(cellAddress);
  office::Shapes shapes = worksheet.GetShapes();
  shapes::AddFreeLabel(shapes, cell.Left(), cell.Top(), m_Text, config);
}

bool CTextParser::IsReservedKeyword(office::Worksheet& worksheet, const rules::CConfig& config,
                                    const std::string& cellAddress) {
  try {
    std::string word = rules::UpperCase(rules::Trim(m_Text));
    if (word != "FL" && word != "LBL" && word != "BR") return false;
    worksheet.GetRange(cellAddress).ClearContents();
    if (word == "FL" && host::ExcelApp) {
      dialogs::frmFlowLineInsert tool;
      host::ExcelApp->SetScreenUpdating(true);
      tool.Display(worksheet, config);
      host::ExcelApp->SetScreenUpdating(false);
    }
    if (word == "BR" && host::ExcelApp) {
      // The run goes on below the fan's new symbol.
      long count = host::GetNonTemplateShapeCount(worksheet);
      if (!host::IsGlobalRowHeightSet()) host::SetGlobalRowHeight();
      host::ExcelApp->SetScreenUpdating(true);
      dialogs::frmInsertTree tree;
      tree.Display(worksheet, m_LastShapeName, static_cast<int>(count));
      m_LastShapeName = tree.LastShapeName();
      m_LastShapeChanged = true;
    }
    if (word == "LBL" && host::ExcelApp) {
      dialogs::frmTextBox prompt;
      host::ExcelApp->SetScreenUpdating(true);
      prompt.Display();
      host::ExcelApp->SetScreenUpdating(false);
      if (prompt.OK()) {
        m_Text = prompt.TextBoxText();
        if (!m_Text.empty()) DropLabel(worksheet, config, cellAddress);
      }
    }
    return true;
  } catch (...) {
    host::ErrorHandler(kSource, "IsReservedKeyword", false);
    return false;
  }
}

int16_t CTextParser::SetShapeType(const rules::CConfig& config, const rules::RuleTable& prefixTable,
                                  const rules::RuleTable& keywordTable, const rules::CSymbolData& symbols) {
  int16_t type = 0;
  try {
    if (!m_Prefix.empty()) type = SetShapeTypeFromPrefix(prefixTable);
    if (type < 1) type = SetShapeTypeFromSpecialRules(config, symbols);
    if (type < 1) type = SetShapeTypeFromKeywordSearch(keywordTable);
    if (type < 1) type = kProcess;
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeType", false);
  }
  return type;
}

int16_t CTextParser::SetShapeTypeFromPrefix(const rules::RuleTable& prefixTable) {
  try {
    for (const auto& row : prefixTable)
      if (rules::UpperCase(row[2]) == m_Prefix) return rules::ToInt16(row[1]);
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeTypeFromPrefix", false);
  }
  return 0;
}

int16_t CTextParser::SetShapeTypeFromSpecialRules(const rules::CConfig& config, const rules::CSymbolData& symbols) {
  try {
    std::string text = rules::Trim(m_Text);
    if (text.find('?') != std::string::npos && config.QuestionMarkIsDecision) return kDecision;
    if (rules::IsNumeric(text)) {
      if (config.OffPageReference && symbols.Exists(kOffPageConnector) >= 0) return kOffPageConnector;
      if (config.OnPageReference) return kConnector;
      return 0;
    }
    if (IsOnPageConnector()) return kConnector;
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeTypeFromSpecialRules", false);
  }
  return 0;
}

bool CTextParser::IsOnPageConnector() {
  std::string text = rules::Trim(m_Text);
  return text.size() < 3 && text == rules::UpperCase(text);
}

int16_t CTextParser::SetShapeTypeFromKeywordSearch(const rules::RuleTable& keywordTable) {
  try {
    return KeywordSymbol(m_Text, keywordTable);
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeTypeFromKeywordSearch", false);
  }
  return 0;
}

int16_t CTextParser::KeywordSymbol(const std::string& text, const rules::RuleTable& keywordTable) {
  const std::string u = rules::UpperCase(rules::Trim(text));
  for (const auto& row : keywordTable) {
    const std::string& k = row[2];
    if (k.empty()) continue;
    size_t p = u.find(k);
    if (p == std::string::npos) continue;
    bool match;
    if (u.size() == k.size()) {
      match = true;
    } else if (u.size() < k.size()) {
      continue;
    } else if (p == 0) {
      match = IsNotAlpha(u, k.size());
    } else if (p + k.size() == u.size()) {
      match = IsNotAlpha(u, p - 1);
    } else {
      match = IsNotAlpha(u, p - 1) && IsNotAlpha(u, p + k.size());
    }
    if (match) return rules::ToInt16(row[1]);
  }
  return 0;
}

bool CTextParser::IsNotAlpha(const std::string& text, size_t position) {
  unsigned char c = static_cast<unsigned char>(text.at(position));
  return c < 65 || (c >= 91 && c <= 96) || c >= 123;
}

void CTextParser::FindComponents(const std::string& text) {
  try {
    static const char* kTokens[] = {"N", "NAME", "F", "FLOWLINE", "R", "RIGHT", "L", "LEFT",
                                    "B", "BOTTOM", "T", "TOP", "H", "HYPERLINK"};
    std::string rest = text;
    size_t first = rest.rfind('-');
    while (first != std::string::npos) {
      size_t second = rest.find('-', first + 1);
      // The second "-" never stands behind the last one: the token is empty.
      size_t length = second == std::string::npos ? 0 : second;
      std::string token = rules::UpperCase(rules::Trim(rest.substr(first + 1, length)));
      bool known = false;
      for (const char* t : kTokens) known = known || token == t;
      if (!known) break;
      rest = rest.substr(0, first);
      first = rest.rfind('-');
    }
  } catch (...) {
    host::ErrorHandler(kSource, "FindComponents", false);
  }
}

}  // namespace nivarel::flowcharting
