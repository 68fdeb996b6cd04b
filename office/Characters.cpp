#include "Characters.h"

#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {

// A cursor over the run [start, start + length) of the shape's text.
Reference<css::text::XTextCursor> RunCursor(const ShapeImpl& shape, int start, int length) {
  Reference<css::text::XText> text(shape.shape, uno::UNO_QUERY_THROW);
  auto cursor = text->createTextCursor();
  cursor->gotoStart(false);
  sal_Int32 total = text->getString().getLength();
  sal_Int32 from = std::max(0, std::min<sal_Int32>(start - 1, total));
  sal_Int32 count = length < 0 ? total - from : std::min<sal_Int32>(length, total - from);
  // goRight takes a 16-bit count: walk in steps.
  for (sal_Int32 left = from; left > 0;) {
    sal_Int16 step = static_cast<sal_Int16>(std::min<sal_Int32>(left, 30000));
    cursor->goRight(step, false);
    left -= step;
  }
  for (sal_Int32 left = count; left > 0;) {
    sal_Int16 step = static_cast<sal_Int16>(std::min<sal_Int32>(left, 30000));
    cursor->goRight(step, true);
    left -= step;
  }
  return cursor;
}

}  // namespace

std::string Characters::Text() const {
  return Call("Characters.Text", [&] { return ToUtf8(RunCursor(*shape_, start_, length_)->getString()); });
}

void Characters::SetText(const std::string& text) {
  Call("Characters.Text", [&] {
    if (start_ <= 1 && length_ < 0) {
      Reference<css::text::XText> t(shape_->shape, uno::UNO_QUERY_THROW);
      t->setString(ToOu(text));
    } else {
      RunCursor(*shape_, start_, length_)->setString(ToOu(text));
    }
  });
}

void Characters::Insert(const std::string& text) { SetText(text); }

int Characters::Count() const {
  return Call("Characters.Count", [&] {
    return static_cast<int>(RunCursor(*shape_, start_, length_)->getString().getLength());
  });
}

Font Characters::GetFont() const {
  return Call("Characters.Font", [&] {
    Reference<css::beans::XPropertySet> ps;
    if (start_ <= 1 && length_ < 0)
      ps = shape_->Props();  // the whole text, also text written later
    else
      ps.set(RunCursor(*shape_, start_, length_), uno::UNO_QUERY_THROW);
    return Font(std::make_shared<PropsRef>(PropsRef{shape_->sheet->session, ps}));
  });
}

}  // namespace nivarel::office
