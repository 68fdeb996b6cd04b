#include "CIniDataAccess.h"

#include <functional>

#include "CIniFileHandler.h"
#include "HostError.h"
#include "IniFile.h"
#include "MSpecialFolders.h"
#include "MsgBox.h"
#include "TextConvert.h"
#include "UserSettings.h"

namespace nivarel::rules {

namespace {

constexpr char kSection[] = "Settings";

// One stored key: its name, its default as the file writes it, and how it
// moves between text and the field.
struct Key {
  const char* name;
  const char* fallback;
  std::function<void(CConfig&, const std::string&)> read;
  std::function<std::string(const CConfig&)> write;
};

Key Bool(const char* name, const char* fallback, bool CConfig::*field) {
  return {name, fallback, [field](CConfig& c, const std::string& t) { c.*field = ToBool(t); },
          [field](const CConfig& c) { return FromBool(c.*field); }};
}
Key Text(const char* name, const char* fallback, std::string CConfig::*field) {
  return {name, fallback, [field](CConfig& c, const std::string& t) { c.*field = t; },
          [field](const CConfig& c) { return c.*field; }};
}
Key Short(const char* name, const char* fallback, int16_t CConfig::*field) {
  return {name, fallback, [field](CConfig& c, const std::string& t) { c.*field = ToInt16(t); },
          [field](const CConfig& c) { return std::to_string(c.*field); }};
}
Key Long(const char* name, const char* fallback, int32_t CConfig::*field) {
  return {name, fallback, [field](CConfig& c, const std::string& t) { c.*field = ToInt32(t); },
          [field](const CConfig& c) { return std::to_string(c.*field); }};
}
Key Single(const char* name, const char* fallback, float CConfig::*field) {
  return {name, fallback, [field](CConfig& c, const std::string& t) { c.*field = ToSingle(t); },
          [field](const CConfig& c) { return FromNumber(c.*field); }};
}

const std::vector<Key>& Keys() {
  static const std::vector<Key> keys = {
      Bool("AddFlowLine", "True", &CConfig::AddFlowLine),
      Bool("AlternateProcessDashed", "True", &CConfig::AlternateProcessDashed),
      Bool("AutosizeHeight", "True", &CConfig::AutosizeHeight),
      Text("BottomBranchText", "Yes", &CConfig::BottomBranchText),
      Bool("BranchesUseDefaultFont", "True", &CConfig::BranchesUseDefaultFont),
      Bool("BranchFontBold", "False", &CConfig::BranchFontBold),
      Long("BranchFontColor", "0", &CConfig::BranchFontColor),
      Bool("BranchFontItalic", "False", &CConfig::BranchFontItalic),
      Text("BranchFontName", "Tahoma", &CConfig::BranchFontName),
      Single("BranchFontSize", "8", &CConfig::BranchFontSize),
      Short("BranchLabelOption", "0", &CConfig::BranchLabelOption),
      Short("BranchPosition", "1", &CConfig::BranchPosition),
      Bool("Capitalize", "True", &CConfig::Capitalize),
      Bool("CustomLayout", "False", &CConfig::CustomLayout),
      Bool("EndTerminator", "True", &CConfig::EndTerminator),
      Text("EndTerminatorText", "End", &CConfig::EndTerminatorText),
      Short("FlowDirection", "0", &CConfig::FlowDirection),
      Short("FlowLineStyle", "9", &CConfig::FlowLineStyle),
      Short("FlowLineType", "1", &CConfig::FlowLineType),
      Bool("FontBold", "False", &CConfig::FontBold),
      Bool("FontItalic", "False", &CConfig::FontItalic),
      Text("FontName", "Tahoma", &CConfig::FontName),
      Single("FontSize", "8", &CConfig::FontSize),
      Bool("GroupBranchLabels", "True", &CConfig::GroupBranchLabels),
      Bool("HideGridlines", "True", &CConfig::HideGridlines),
      Long("HorizontalAlignment", "-4108", &CConfig::HorizontalAlignment),
      Text("LeftBranchText", "", &CConfig::LeftBranchText),
      Short("Margins", "0", &CConfig::Margins),
      Bool("OffPageReference", "True", &CConfig::OffPageReference),
      Bool("OnPageReference", "True", &CConfig::OnPageReference),
      Short("Orientation", "1", &CConfig::Orientation),
      Short("PaperSize", "1", &CConfig::PaperSize),
      Text("PrefixDelimiter", ":", &CConfig::PrefixDelimiter),
      Bool("QuestionMarkIsDecision", "True", &CConfig::QuestionMarkIsDecision),
      Text("RightBranchText", "No", &CConfig::RightBranchText),
      Bool("ShowGuides", "True", &CConfig::ShowGuides),
      Bool("SmartSizing", "True", &CConfig::SmartSizing),
      Text("StartLocation", "C3", &CConfig::StartLocation),
      Bool("StartTerminator", "True", &CConfig::StartTerminator),
      Text("StartTerminatorText", "Start", &CConfig::StartTerminatorText),
      Short("StyleId", "2", &CConfig::StyleId),
      Short("SymbolList", "99", &CConfig::SymbolList),
      Text("TemplateFolderPath", "", &CConfig::TemplateFolderPath),
      Text("TopBranchText", "", &CConfig::TopBranchText),
      Long("VerticalAlignment", "-4108", &CConfig::VerticalAlignment),
  };
  return keys;
}

std::string Legacy(const std::string& key, const std::string& fallback) {
  return host::GetSetting(host::kAppTitle, kSection, key, fallback);
}

// Brings the per-user store's old settings into the new file, once.
void ImportLegacySettings(CIniFileHandler& handler, IniFile& ini) {
  static const std::pair<const char*, const char*> copied[] = {
      {"AddFlowLine", "True"},      {"AlternateProcessDashed", "True"}, {"Capitalize", "True"},
      {"EndTerminator", "True"},    {"EndTerminatorText", "End"},       {"FontBold", "False"},
      {"FontItalic", "False"},      {"FontName", "Tahoma"},             {"FontSize", "8"},
      {"HorizontalAlignment", "-4108"}, {"OffPageReference", "True"},   {"OnPageReference", "True"},
      {"SmartSizing", "True"},      {"StartTerminator", "True"},        {"StartTerminatorText", "Start"},
      {"VerticalAlignment", "-4108"},
  };
  for (const auto& [key, fallback] : copied) {
    try {
      handler.WriteTo(ini, kSection, key, Legacy(key, fallback));
    } catch (...) {
    }
  }
  // The question-mark rule follows the old end-terminator setting.
  try {
    handler.WriteTo(ini, kSection, "QuestionMarkIsDecision", Legacy("EndTerminator", "True"));
  } catch (...) {
  }
  // The two old branch labels go to the sides that they stood at.
  auto label = [&](const char* locationKey, const char* locationDefault, const char* textKey,
                   const char* textDefault) {
    try {
      int location = ToInt16(Legacy(locationKey, locationDefault));
      std::string text = Legacy(textKey, textDefault);
      const char* target = location == 1   ? "RightBranchText"
                           : location == 2 ? "BottomBranchText"
                           : location == 3 ? "LeftBranchText"
                           : location == 4 ? "TopBranchText"
                                           : nullptr;
      if (target) handler.WriteTo(ini, kSection, target, text);
    } catch (...) {
    }
  };
  label("YesTextboxLocation", "2", "YesTextboxText", "Y");
  label("NoTextboxLocation", "1", "NoTextboxText", "N");
  handler.WriteIniFile(ini);
}

// Steps shared by reading and saving: the file, loaded, imported on first use.
void Open(CIniFileHandler& handler, IniFile& ini) {
  bool found = true;
  try {
    ini.FileName = host::GetCfgFilePath(found);
  } catch (...) {
  }
  try {
    handler.LoadIniFile(ini);
  } catch (...) {
  }
  try {
    if (!found && ToBool(Legacy("SaveSettings", "False"))) ImportLegacySettings(handler, ini);
  } catch (...) {
  }
}

}  // namespace

std::vector<std::string> CIniDataAccess::KeyNames() {
  std::vector<std::string> names;
  for (const auto& k : Keys()) names.push_back(k.name);
  return names;
}

void CIniDataAccess::ReadConfigData(CConfig& config) {
  CIniFileHandler handler;
  IniFile ini;
  Open(handler, ini);
  for (const auto& k : Keys()) {
    try {
      k.read(config, handler.ReadFrom(ini, kSection, k.name, k.fallback));
    } catch (...) {
      // The field keeps what it held; the next key goes on.
    }
  }
  handler.ResetIniData(ini);
}

void CIniDataAccess::SaveConfigData(CConfig& config) {
  CIniFileHandler handler;
  IniFile ini;
  Open(handler, ini);
  for (const auto& k : Keys()) {
    try {
      handler.WriteTo(ini, kSection, k.name, k.write(config));
    } catch (...) {
    }
  }
  handler.WriteIniFile(ini);
  handler.ResetIniData(ini);
}

}  // namespace nivarel::rules
