#include "CShapeDimensions.h"

#include <cmath>
#include <sstream>
#include <vector>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "TextEncoding.h"
#include "Text.h"

namespace nivarel::shapes {

namespace {

constexpr char kSource[] = "CShapeDimensions";
constexpr double kFitMargin = 0.03 * 72;  // 2.16 points

std::vector<std::string> Split(const std::string& text, char at) {
  std::vector<std::string> parts;
  std::string part;
  std::istringstream in(text);
  while (std::getline(in, part, at)) parts.push_back(part);
  if (!text.empty() && text.back() == at) parts.push_back(std::string());
  return parts;
}

// The first n characters of UTF-8 text.
std::string Head(const std::string& s, size_t n) { return s.substr(0, rules::CharacterOffset(s, n)); }

double U() { return host::GlobalRowHeight; }

}  // namespace

void CShapeDimensions::BeginMeasure(office::Shape& shape) {
  if (host::ExcelVersion < 12) return;
  try {
    office::TextFrame2 frame = shape.GetTextFrame2();
    frame.SetWordWrap(office::msoFalse);
    frame.SetAutoSize(office::msoAutoSizeShapeToFitText);
  } catch (...) {
  }
}

void CShapeDimensions::StopFitting(office::Shape& shape) {
  // The office keeps fitting a shape to its text while fitting is on; the
  // measure turns it off, but a text that needed no measure left it on.
  try {
    shape.GetTextFrame().SetAutoSize(false);
  } catch (...) {
  }
}

void CShapeDimensions::Place(office::Shape& shape, double left, double top, int32_t width, int32_t rows) {
  StopFitting(shape);
  shape.SetLeft(left);
  shape.SetWidth(width * U());
  shape.SetTop(top);
  shape.SetHeight(rows * U());
}

void CShapeDimensions::EndMeasure(office::Shape& shape) {
  if (host::ExcelVersion < 12) return;
  try {
    shape.GetTextFrame2().SetWordWrap(office::msoTrue);
  } catch (...) {
  }
}

void CShapeDimensions::SetShapeDimensions(office::Shape& shape, const rules::CConfig& config,
                                          const rules::CSymbolData& symbols, int32_t maxWidth, bool newColumn,
                                          const std::string& text) {
  try {
    int16_t type = static_cast<int16_t>(shape.AutoShapeType());
    if (!config.AutosizeHeight) {
      shape.SetWidth(symbols.GetWidth(type) * U());
      shape.SetHeight(symbols.GetMinHeight(type) * U());
      return;
    }
    double left = shape.Left(), top = shape.Top();
    int32_t width = symbols.GetWidth(type);
    int16_t minRows = symbols.GetMinHeight(type);
    BeginMeasure(shape);
    if (type == office::msoShapeFlowchartConnector || type == office::msoShapeFlowchartOffpageConnector) {
      int32_t centre = newColumn ? maxWidth : width;
      SetConnectorDimensions(shape, config, type, width, minRows, centre, left, top, text);
    } else if (type == office::msoShapeFlowchartTerminator) {
      SetTerminatorDimensions(shape, width, minRows, left, top, text);
    } else {
      SetNormalShapeDimensions(shape, width, minRows, left, top, text);
    }
    EndMeasure(shape);
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeDimensions", false);
  }
}

void CShapeDimensions::SetConnectorDimensions(office::Shape& shape, const rules::CConfig& config, int16_t type,
                                              int32_t width, int16_t minRows, int32_t centreWidth, double left,
                                              double top, const std::string& text) {
  try {
    if (config.SmartSizing) {
      int32_t side = 2;
      while (GetWrappedTextRowCount(text, shape, side) > side) side += 2;
      Place(shape, left + (centreWidth - side) / 2.0 * U(), top, side, side);
    } else {
      int16_t rows = GetWrappedTextRowCount(text, shape, width);
      if (rows % 2 == 1) ++rows;
      if (rows < minRows) rows = minRows;
      Place(shape, left, top, width, rows);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "SetConnectorDimensions", false);
  }
}

void CShapeDimensions::SetTerminatorDimensions(office::Shape& shape, int32_t width, int16_t minRows, double left,
                                               double top, const std::string& text) {
  try {
    SetNormalShapeDimensions(shape, width, minRows, left, top, text);
  } catch (...) {
    host::ErrorHandler(kSource, "SetTerminatorDimensions", false);
  }
}

void CShapeDimensions::SetNormalShapeDimensions(office::Shape& shape, int32_t width, int16_t minRows, double left,
                                                double top, const std::string& text) {
  try {
    int16_t rows = GetWrappedTextRowCount(text, shape, width);
    if (rows < minRows) rows = minRows;
    Place(shape, left, top, width, rows);
  } catch (...) {
    host::ErrorHandler(kSource, "SetNormalShapeDimensions", false);
  }
}

int16_t CShapeDimensions::GetWrappedTextRowCount(const std::string& text, office::Shape& shape, int32_t width) {
  int16_t rows = 0;
  try {
    std::string line = rules::Trim(text);
    if (line.empty()) return 2;
    // A hyphen is a place to break: the measure reads it as a blank.
    for (auto& c : line)
      if (c == '-') c = ' ';
    for (size_t at; (at = line.find("  ")) != std::string::npos;) line.erase(at, 1);

    std::string wrapped;
    std::vector<std::string> paragraphs = Split(line, '\n');
    for (size_t i = 0; i < paragraphs.size(); ++i) {
      if (i) wrapped += '\n';
      wrapped += ProcessParagraph(paragraphs[i], shape, width * U());
    }
    size_t n = rules::CharacterCount(wrapped);
    bool oldHost = host::ExcelVersion < 12;
    if (n >= 256 && oldHost) {
      // The older host takes no text this long at once: the same number of
      // lines stands in.
      size_t lines = Split(wrapped, '\n').size();
      wrapped.clear();
      for (size_t i = 0; i < lines; ++i) wrapped += "X\n";
      wrapped += "X";
    }
    office::TextFrame frame = shape.GetTextFrame();
    frame.GetCharacters().SetText(wrapped);
    frame.SetAutoSize(true);
    shape.SetTop(0);
    shape.SetLeft(0);
    shape.SetWidth(width * U());
    frame.SetAutoSize(false);
    if (n >= 256 && oldHost) {
      for (size_t position = 1; position < n; position += 250)
        frame.GetCharacters(static_cast<int>(position), -1).Insert(text.substr(position - 1, 250));
    } else {
      frame.GetCharacters().SetText(text);
    }
    double height = shape.Height();
    rows = static_cast<int16_t>(std::floor(height / U()));
    if (height - rows * U() > kFitMargin) ++rows;
  } catch (...) {
    host::ErrorHandler(kSource, "GetWrappedTextRowCount", false);
  }
  return rows;
}

std::string CShapeDimensions::ProcessParagraph(const std::string& paragraph, office::Shape& shape, double limit) {
  std::string result;
  try {
    std::string p = rules::Trim(paragraph);
    if (p.empty()) return std::string();
    std::vector<std::string> words = Split(p, ' ');
    std::string line;
    for (size_t i = 0; i < words.size(); ++i) {
      const std::string& word = words[i];
      if (LineFits(line, word, shape, limit)) {
        line = rules::TrimLeft(line + " " + word);
        if (i + 1 == words.size()) result = ConditionalAppend(result, line, "\n");
      } else if (!line.empty()) {
        result = ConditionalAppend(result, line, "\n");
        line.clear();
        --i;  // the same word again, on a line of its own
      } else {
        result = ConditionalAppend(result, WrapSingleWord(word, shape, limit), "\n");
      }
    }
  } catch (...) {
    host::ErrorHandler(kSource, "ProcessParagraph", false);
  }
  return result;
}

double CShapeDimensions::FittedWidth(office::Shape& shape, const std::string& text) {
  office::TextFrame frame = shape.GetTextFrame();
  frame.GetCharacters().SetText(text);
  frame.SetAutoSize(true);
  return shape.Width();
}

bool CShapeDimensions::LineFits(const std::string& line, const std::string& word, office::Shape& shape,
                                double limit) {
  try {
    return limit + kFitMargin >= FittedWidth(shape, rules::TrimLeft(line + " " + word));
  } catch (...) {
    return false;
  }
}

bool CShapeDimensions::WordFits(const std::string& piece, office::Shape& shape, double limit) {
  try {
    return limit + kFitMargin >= FittedWidth(shape, rules::Trim(piece));
  } catch (...) {
    return false;
  }
}

std::string CShapeDimensions::WrapSingleWord(const std::string& word, office::Shape& shape, double limit) {
  std::string result;
  try {
    std::string rest = word;
    size_t n = rules::CharacterCount(rest), i = 1;
    while (i <= n) {
      if (WordFits(Head(rest, i), shape, limit)) {
        ++i;
        if (i > n) result = ConditionalAppend(result, rest, "\n");
      } else {
        size_t keep = i == 1 ? 1 : i - 1;
        result = ConditionalAppend(result, Head(rest, keep), "\n");
        rest = rest.substr(Head(rest, keep).size());
        n = rules::CharacterCount(rest);
        i = 1;
      }
    }
  } catch (...) {
    host::ErrorHandler(kSource, "WrapSingleWord", false);
  }
  return result;
}

std::string CShapeDimensions::ConditionalAppend(const std::string& first, const std::string& second,
                                                const std::string& separator) {
  return first.empty() ? second : first + separator + second;
}

}  // namespace nivarel::shapes
