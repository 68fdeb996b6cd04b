#include "TextFrame2.h"

#include <com/sun/star/drawing/TextHorizontalAdjust.hpp>
#include <com/sun/star/text/XText.hpp>

#include "MsoConstants.h"
#include "Uno.h"

namespace nivarel::office {

int TextFrame2::HorizontalAnchor() const {
  return Call("TextFrame2.HorizontalAnchor", [&] {
    switch (GetProp<css::drawing::TextHorizontalAdjust>(shape_->Props(), "TextHorizontalAdjust")) {
      case css::drawing::TextHorizontalAdjust_BLOCK: return msoAnchorNone;
      case css::drawing::TextHorizontalAdjust_CENTER: return msoAnchorCenter;
      default: return msoAnchorLeft;
    }
  });
}

int TextFrame2::WordWrap() const {
  return Call("TextFrame2.WordWrap", [&] { return GetProp<bool>(shape_->Props(), "TextWordWrap") ? msoTrue : msoFalse; });
}

void TextFrame2::SetWordWrap(int value) {
  Call("TextFrame2.WordWrap", [&] { SetProp(shape_->Props(), "TextWordWrap", value != msoFalse); });
}

int TextFrame2::AutoSize() const {
  return Call("TextFrame2.AutoSize", [&] {
    return GetProp<bool>(shape_->Props(), "TextAutoGrowHeight") ? msoAutoSizeShapeToFitText : msoAutoSizeNone;
  });
}

void TextFrame2::SetAutoSize(int value) {
  Call("TextFrame2.AutoSize", [&] { FitShapeToText(*shape_, value == msoAutoSizeShapeToFitText); });
}

std::string TextFrame2::Text() const {
  return Call("TextFrame2.TextRange", [&] {
    Reference<css::text::XText> t(shape_->shape, uno::UNO_QUERY_THROW);
    return ToUtf8(t->getString());
  });
}

void TextFrame2::SetText(const std::string& text) {
  Call("TextFrame2.TextRange", [&] {
    Reference<css::text::XText> t(shape_->shape, uno::UNO_QUERY_THROW);
    t->setString(ToOu(text));
  });
}

}  // namespace nivarel::office
