#include "ShapeStylePresets.h"

#include <array>
#include <functional>
#include <optional>

#include "HostError.h"
#include "MsoConstants.h"
#include "Shape.h"

namespace nivarel::office {

namespace {

constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }

constexpr long kBlack = Rgb(0, 0, 0), kWhite = Rgb(255, 255, 255);

// Line, fill and second fill colour of each id; the second colour is used by
// the gradient bands only.
struct PresetColours {
  long line, fill, fill2;
};

const PresetColours kColours[42] = {
    // 1 to 7: outline in the theme colour on white.
    {Rgb(0, 0, 0), kWhite, -1},
    {Rgb(79, 129, 189), kWhite, -1},
    {Rgb(192, 80, 77), kWhite, -1},
    {Rgb(155, 187, 89), kWhite, -1},
    {Rgb(128, 100, 162), kWhite, -1},
    {Rgb(75, 172, 198), kWhite, -1},
    {Rgb(247, 150, 70), kWhite, -1},
    // 8 to 14: filled with the theme colour, a darker outline.
    {Rgb(0, 0, 0), Rgb(0, 0, 0), -1},
    {Rgb(56, 93, 138), Rgb(79, 129, 189), -1},
    {Rgb(140, 56, 54), Rgb(192, 80, 77), -1},
    {Rgb(113, 137, 63), Rgb(155, 187, 89), -1},
    {Rgb(92, 71, 118), Rgb(128, 100, 162), -1},
    {Rgb(53, 125, 145), Rgb(75, 172, 198), -1},
    {Rgb(182, 109, 49), Rgb(247, 150, 70), -1},
    // 15 to 21: filled with the theme colour, a white outline.
    {kWhite, Rgb(0, 0, 0), -1},
    {kWhite, Rgb(79, 129, 189), -1},
    {kWhite, Rgb(192, 80, 77), -1},
    {kWhite, Rgb(155, 187, 89), -1},
    {kWhite, Rgb(128, 100, 162), -1},
    {kWhite, Rgb(75, 172, 198), -1},
    {kWhite, Rgb(247, 150, 70), -1},
    // 22 to 28: light gradients.
    {Rgb(0, 0, 0), Rgb(188, 188, 188), Rgb(237, 237, 237)},
    {Rgb(74, 126, 187), Rgb(163, 196, 255), Rgb(229, 238, 255)},
    {Rgb(190, 75, 72), Rgb(255, 162, 161), Rgb(255, 229, 229)},
    {Rgb(152, 185, 84), Rgb(218, 253, 167), Rgb(245, 255, 230)},
    {Rgb(125, 96, 160), Rgb(201, 181, 232), Rgb(240, 234, 249)},
    {Rgb(70, 170, 197), Rgb(158, 234, 255), Rgb(228, 249, 255)},
    {Rgb(246, 146, 64), Rgb(255, 190, 134), Rgb(255, 235, 219)},
    // 29 to 35, and again 36 to 42: dark gradients.
    {Rgb(0, 0, 0), Rgb(0, 0, 0), Rgb(0, 0, 0)},
    {Rgb(74, 126, 187), Rgb(44, 93, 152), Rgb(58, 124, 203)},
    {Rgb(190, 75, 72), Rgb(155, 45, 42), Rgb(206, 59, 55)},
    {Rgb(152, 185, 84), Rgb(118, 149, 53), Rgb(156, 199, 70)},
    {Rgb(125, 96, 160), Rgb(93, 65, 126), Rgb(123, 87, 168)},
    {Rgb(70, 170, 197), Rgb(39, 135, 160), Rgb(52, 179, 214)},
    {Rgb(246, 146, 64), Rgb(203, 108, 29), Rgb(255, 143, 38)},
    {Rgb(0, 0, 0), Rgb(0, 0, 0), Rgb(0, 0, 0)},
    {Rgb(74, 126, 187), Rgb(44, 93, 152), Rgb(58, 124, 203)},
    {Rgb(190, 75, 72), Rgb(155, 45, 42), Rgb(206, 59, 55)},
    {Rgb(152, 185, 84), Rgb(118, 149, 53), Rgb(156, 199, 70)},
    {Rgb(125, 96, 160), Rgb(93, 65, 126), Rgb(123, 87, 168)},
    {Rgb(70, 170, 197), Rgb(39, 135, 160), Rgb(52, 179, 214)},
    {Rgb(246, 146, 64), Rgb(203, 108, 29), Rgb(255, 143, 38)},
};

// The look shared by the seven ids of a band.
struct BandLook {
  StyleFill fillKind;
  double lineWeight;
  bool shadow;
  double shadowOffsetY;
  double shadowTransparency;
  long text;
};

const BandLook kBands[6] = {
    {StyleFill::kSolid, 2, false, 0, 0, kBlack},
    {StyleFill::kSolid, 2, false, 0, 0, kWhite},
    {StyleFill::kSolid, 3, true, 1.575, 0.62, kWhite},
    {StyleFill::kGradient, 0.75, true, 1.575, 0.62, kBlack},
    {StyleFill::kGradient, 0.75, true, 1.811, 0.65, kWhite},
    {StyleFill::kGradient, 0.75, true, 1.811, 0.65, kWhite},
};

// Line styles: seven colours in each of three weights. The two heavier
// weights cast a grey shadow.
const long kLineColours[7] = {
    Rgb(0, 0, 0), Rgb(74, 126, 187), Rgb(190, 75, 72), Rgb(152, 185, 84),
    Rgb(125, 96, 160), Rgb(70, 170, 197), Rgb(246, 146, 64),
};

struct LineWeightLook {
  double weight;
  bool shadow;
  double shadowOffsetX, shadowOffsetY, shadowTransparency;
};

const LineWeightLook kLineWeights[3] = {
    {0.75, false, 0, 0, 0},
    {2, true, 0.8, 1.575, 0.62},
    {3, true, 0.9, 1.81, 0.65},
};

constexpr long kLineShadow = Rgb(150, 150, 150);

std::array<LineStylePreset, 21> MakeLinePresets() {
  std::array<LineStylePreset, 21> presets{};
  for (int i = 0; i < 21; ++i) {
    const LineWeightLook& w = kLineWeights[i / 7];
    presets[i] = {kLineColours[i % 7], w.weight, w.shadow, kLineShadow, w.shadowOffsetX, w.shadowOffsetY,
                  w.shadowTransparency};
  }
  return presets;
}

std::array<ShapeStylePreset, 42> MakePresets() {
  std::array<ShapeStylePreset, 42> presets{};
  for (int i = 0; i < 42; ++i) {
    const PresetColours& c = kColours[i];
    const BandLook& b = kBands[i / 7];
    presets[i] = {c.line, c.fill, c.fill2, b.fillKind, b.lineWeight, b.shadow, b.shadowOffsetY,
                  b.shadowTransparency, b.text};
  }
  return presets;
}

// Runs the parts of a look one after another; a refusal doesn't stop the
// parts after it and is raised at the end.
class Parts {
 public:
  void Run(const std::function<void()>& part) {
    try {
      part();
    } catch (const HostError& e) {
      if (!first_) first_ = e;
    }
  }
  void RaiseFirst() const {
    if (first_) throw *first_;
  }

 private:
  std::optional<HostError> first_;
};

}  // namespace

const ShapeStylePreset* FindShapeStylePreset(int id) {
  static const std::array<ShapeStylePreset, 42> presets = MakePresets();
  if (id < kFirstShapeStylePreset || id > kLastShapeStylePreset) return nullptr;
  return &presets[id - 1];
}

void ApplyShapeStylePreset(const Shape& shape, int id, bool withText) {
  const ShapeStylePreset* p = FindShapeStylePreset(id);
  if (!p) return;
  Parts parts;
  FillFormat fill = shape.Fill();
  parts.Run([&] { fill.SetVisible(true); });
  parts.Run([&] { fill.ForeColor().SetRGB(p->fill); });
  if (p->fillKind == StyleFill::kGradient) {
    parts.Run([&] { fill.BackColor().SetRGB(p->fill2); });
    parts.Run([&] { fill.TwoColorGradient(msoGradientHorizontal, 2); });
  } else {
    parts.Run([&] { fill.Solid(); });
  }

  LineFormat line = shape.Line();
  parts.Run([&] { line.SetVisible(true); });
  parts.Run([&] { line.SetStyle(msoLineSingle); });
  parts.Run([&] { line.ForeColor().SetRGB(p->line); });
  parts.Run([&] { line.SetWeight(p->lineWeight); });

  ShadowFormat shadow = shape.Shadow();
  parts.Run([&] { shadow.SetVisible(p->shadow); });
  if (p->shadow) {
    parts.Run([&] { shadow.ForeColor().SetRGB(kBlack); });
    parts.Run([&] { shadow.SetOffsetX(0); });
    parts.Run([&] { shadow.SetOffsetY(p->shadowOffsetY); });
    parts.Run([&] { shadow.SetTransparency(p->shadowTransparency); });
  }

  if (withText) parts.Run([&] { shape.GetTextFrame().GetCharacters().GetFont().SetColor(p->text); });
  parts.RaiseFirst();
}

const LineStylePreset* FindLineStylePreset(int id) {
  static const std::array<LineStylePreset, 21> presets = MakeLinePresets();
  if (id < kFirstLineStylePreset || id > kLastLineStylePreset) return nullptr;
  return &presets[id - kFirstLineStylePreset];
}

void ApplyLineStylePreset(const Shape& line, int id) {
  const LineStylePreset* p = FindLineStylePreset(id);
  if (!p) return;
  Parts parts;
  LineFormat format = line.Line();
  parts.Run([&] { format.SetWeight(p->weight); });
  ShadowFormat shadow = line.Shadow();
  parts.Run([&] { shadow.SetVisible(p->shadow); });
  if (p->shadow) {
    parts.Run([&] { shadow.ForeColor().SetRGB(p->shadowColour); });
    parts.Run([&] { shadow.SetOffsetX(p->shadowOffsetX); });
    parts.Run([&] { shadow.SetOffsetY(p->shadowOffsetY); });
    parts.Run([&] { shadow.SetTransparency(p->shadowTransparency); });
  }
  parts.Run([&] { format.ForeColor().SetRGB(p->line); });
  parts.RaiseFirst();
}

}  // namespace nivarel::office
