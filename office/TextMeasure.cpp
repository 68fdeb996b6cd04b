#include "TextMeasure.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <tuple>
#include <unordered_map>

#include <com/sun/star/awt/FontDescriptor.hpp>
#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/awt/XFont.hpp>
#include <com/sun/star/awt/XToolkit2.hpp>
#include <com/sun/star/beans/XMultiPropertySet.hpp>

#include "Uno.h"

namespace nivarel::office {

bool TextLook::operator<(const TextLook& o) const {
  return std::tie(font, size, bold, italic, left, right, top, bottom) <
         std::tie(o.font, o.size, o.bold, o.italic, o.left, o.right, o.top, o.bottom);
}

// One font on the office's device, with the widths of the words measured in it.
struct TextMeasure::Face {
  Reference<css::awt::XFont> font;
  double pixelsPerPoint = 100;
  std::unordered_map<std::string, double> widths;  // points
  std::mutex mutex;

  double Width(const std::string& word) {
    std::lock_guard<std::mutex> lock(mutex);
    auto found = widths.find(word);
    if (found != widths.end()) return found->second;
    double w = font->getStringWidth(ToOu(word)) / pixelsPerPoint;
    widths.emplace(word, w);
    return w;
  }
};

namespace {

std::mutex facesMutex;
// The faces of the office last measured in: a device belongs to its office.
// Never destroyed: released at the process's exit, a remote office's objects
// would be released through a bridge already gone.
struct Faces {
  Reference<uno::XComponentContext> context;
  Reference<css::awt::XDevice> device;
  std::map<std::tuple<std::string, double, bool, bool>, std::shared_ptr<TextMeasure::Face>> byFont;
};
Faces* faces = nullptr;

}  // namespace

TextMeasure::TextMeasure(const TextFrame& frame) {
  const ShapeImpl& shape = *frame.shape_;
  Call("TextFrame.Look", [&] {
    Reference<css::beans::XMultiPropertySet> mp(shape.shape, uno::UNO_QUERY_THROW);
    // In the order of their names, as the office wants them.
    const OUString names[] = {"CharFontName",     "CharHeight",        "CharPosture",       "CharWeight",
                              "TextLeftDistance", "TextLowerDistance", "TextRightDistance", "TextUpperDistance"};
    uno::Sequence<uno::Any> values = mp->getPropertyValues(uno::Sequence<OUString>(names, 8));
    OUString name;
    float height = 0, weight = css::awt::FontWeight::NORMAL;
    css::awt::FontSlant slant = css::awt::FontSlant_NONE;
    sal_Int32 left = 0, lower = 0, right = 0, upper = 0;
    values[0] >>= name;
    values[1] >>= height;
    values[2] >>= slant;
    values[3] >>= weight;
    values[4] >>= left;
    values[5] >>= lower;
    values[6] >>= right;
    values[7] >>= upper;
    look_.font = ToUtf8(name);
    look_.size = height;
    look_.bold = weight > css::awt::FontWeight::SEMIBOLD;
    look_.italic = slant == css::awt::FontSlant_ITALIC || slant == css::awt::FontSlant_OBLIQUE;
    look_.left = HmmToPt(left);
    look_.right = HmmToPt(right);
    look_.top = HmmToPt(upper);
    look_.bottom = HmmToPt(lower);

    std::lock_guard<std::mutex> lock(facesMutex);
    Reference<uno::XComponentContext> context = shape.sheet->session->context;
    if (!faces) faces = new Faces();
    if (faces->context != context || !faces->device.is()) {
      faces->byFont.clear();
      faces->context = context;
      faces->device = css::awt::Toolkit::create(context)->createScreenCompatibleDevice(1, 1);
    }
    auto key = std::make_tuple(look_.font, look_.size, look_.bold, look_.italic);
    auto& face = faces->byFont[key];
    if (!face) {
      face = std::make_shared<Face>();
      // The device measures in whole pixels: a large font keeps the widths
      // exact to a hundredth of a point.
      double scale = look_.size > 0 ? std::min(100.0, 30000.0 / look_.size) : 100;
      css::awt::FontDescriptor d;
      d.Name = name;
      d.Height = static_cast<sal_Int16>(std::max(1.0, look_.size * scale + 0.5));
      face->pixelsPerPoint = look_.size > 0 ? d.Height / look_.size : scale;
      d.Weight = weight;
      d.Slant = slant;
      face->font = faces->device->getFont(d);
      if (!face->font.is()) throw HostError(HostError::kOfficeFailure, "TextFrame.Look: no font " + look_.font);
    }
    face_ = face;
  });
}

double TextMeasure::Width(const std::string& text) const {
  return Call("TextMeasure.Width", [&] {
    double width = 0;
    size_t blanks = 0;
    for (size_t at = 0; at <= text.size();) {
      size_t end = text.find(' ', at);
      if (end == std::string::npos) end = text.size();
      if (end > at) {
        width += face_->Width(text.substr(at, end - at));
      }
      if (end < text.size()) ++blanks;
      at = end + 1;
    }
    if (blanks) width += blanks * face_->Width(" ");
    return width;
  });
}

}  // namespace nivarel::office
