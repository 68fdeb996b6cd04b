#include "CShapeDimensions.h"

#include <cmath>
#include <map>
#include <mutex>
#include <sstream>
#include <tuple>
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

// What a kind of symbol adds to the width of its text, and the heights of n
// lines in it at a width, as the office fitted them.
struct Widening {
  double a = 1, b = 0;
};
std::mutex learntMutex;
std::map<std::pair<int, office::TextLook>, Widening> widenings;
std::map<std::tuple<int, office::TextLook, int32_t, size_t>, double> heights;

// Text in Latin letters only keeps one font's line height; other scripts
// may fall back to fonts with taller lines, so their heights are not kept.
bool LatinOnly(const std::string& text) {
  for (size_t i = 0; i < text.size();) {
    unsigned char c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      ++i;
      continue;
    }
    // Two-byte sequences up to U+024F.
    if ((c & 0xE0) != 0xC0 || c > 0xC9) return false;
    i += 2;
  }
  return true;
}

}  // namespace

void CShapeDimensions::BeginMeasure(office::Shape& shape) {
  m_Measuring = true;
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
    m_For.reset();
    m_Type = type;
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

    Prepare(shape);
    std::string wrapped;
    std::vector<std::string> paragraphs = Split(line, '\n');
    for (size_t i = 0; i < paragraphs.size(); ++i) {
      if (i) wrapped += '\n';
      wrapped += ProcessParagraph(paragraphs[i], shape, width * U());
    }
    double height = WrappedHeight(shape, wrapped, text, width);
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

double CShapeDimensions::FitShape(office::Shape& shape, const std::string& text) {
  if (!m_Measuring) BeginMeasure(shape);
  office::TextFrame frame = shape.GetTextFrame();
  frame.GetCharacters().SetText(text);
  frame.SetAutoSize(true);
  return shape.Width();
}

double CShapeDimensions::FittedWidth(office::Shape& shape, const std::string& text) {
  Prepare(shape);
  return m_A * m_Measure->Width(text) + m_B;
}

void CShapeDimensions::Prepare(office::Shape& shape) {
  if (m_For && m_For->SameAs(shape)) return;
  if (!m_Type) m_Type = static_cast<int>(shape.AutoShapeType());
  m_Measure.emplace(shape.GetTextFrame());
  m_For = shape;
  auto key = std::make_pair(m_Type, m_Measure->Look());
  {
    std::lock_guard<std::mutex> lock(learntMutex);
    auto found = widenings.find(key);
    if (found != widenings.end()) {
      m_A = found->second.a;
      m_B = found->second.b;
      return;
    }
  }
  // Two texts, short and long, fitted by the office: the shape's width
  // grows with its text's by a, beyond b.
  const std::string shortText(4, 'M'), longText(24, 'M');
  double w1 = m_Measure->Width(shortText), w2 = m_Measure->Width(longText);
  double f1 = FitShape(shape, shortText), f2 = FitShape(shape, longText);
  Widening learnt;
  if (w2 > w1) {
    learnt.a = (f2 - f1) / (w2 - w1);
    learnt.b = f1 - learnt.a * w1;
  }
  m_A = learnt.a;
  m_B = learnt.b;
  std::lock_guard<std::mutex> lock(learntMutex);
  widenings[key] = learnt;
}

double CShapeDimensions::WrappedHeight(office::Shape& shape, const std::string& wrapped, const std::string& text,
                                       int32_t width) {
  size_t n = rules::CharacterCount(wrapped);
  bool oldHost = host::ExcelVersion < 12;
  size_t lines = Split(wrapped, '\n').size();
  office::TextFrame frame = shape.GetTextFrame();
  auto putBack = [&] {
    if (n >= 256 && oldHost) {
      for (size_t position = 1; position < n; position += 250)
        frame.GetCharacters(static_cast<int>(position), -1).Insert(text.substr(position - 1, 250));
    } else {
      frame.GetCharacters().SetText(text);
    }
  };
  bool keep = LatinOnly(wrapped);
  auto key = std::make_tuple(m_Type, m_Measure->Look(), width, lines);
  if (keep) {
    std::lock_guard<std::mutex> lock(learntMutex);
    auto found = heights.find(key);
    if (found != heights.end()) {
      double height = found->second;
      putBack();
      return height;
    }
  }
  std::string measured = wrapped;
  if (n >= 256 && oldHost) {
    // The older host takes no text this long at once: the same number of
    // lines stands in.
    measured.clear();
    for (size_t i = 0; i < lines; ++i) measured += "X\n";
    measured += "X";
  }
  if (!m_Measuring) BeginMeasure(shape);
  frame.GetCharacters().SetText(measured);
  frame.SetAutoSize(true);
  shape.SetTop(0);
  shape.SetLeft(0);
  shape.SetWidth(width * U());
  frame.SetAutoSize(false);
  putBack();
  double height = shape.Height();
  if (keep) {
    std::lock_guard<std::mutex> lock(learntMutex);
    heights[key] = height;
  }
  return height;
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
