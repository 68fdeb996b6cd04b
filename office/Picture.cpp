#include "Picture.h"

#include <filesystem>

#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/graphic/XGraphic.hpp>

#include "Uno.h"

namespace nivarel::office {

std::optional<Picture> Picture::Load(const std::shared_ptr<HostSession>& session, const std::string& path) {
  std::error_code ec;
  if (path.empty() || !std::filesystem::is_regular_file(path, ec)) return std::nullopt;
  return Call("Picture.Load", [&]() -> std::optional<Picture> {
    auto provider = css::graphic::GraphicProvider::create(session->context);
    uno::Sequence<css::beans::PropertyValue> args(1);
    args.getArray()[0].Name = "URL";
    args.getArray()[0].Value <<= ToOu("file://" + std::filesystem::absolute(path).string());
    Reference<css::graphic::XGraphic> graphic;
    try {
      graphic = provider->queryGraphic(args);
    } catch (const uno::Exception&) {
      return std::nullopt;  // not a picture the office reads
    }
    if (!graphic.is()) return std::nullopt;
    auto impl = std::make_shared<PictureImpl>();
    impl->graphic = graphic;
    Picture picture(impl);
    if (picture.PixelWidth() <= 0 || picture.PixelHeight() <= 0) return std::nullopt;
    return picture;
  });
}

static css::awt::Size SizePixel(const PictureImpl& impl) {
  Reference<css::beans::XPropertySet> ps(impl.graphic, uno::UNO_QUERY_THROW);
  return GetProp<css::awt::Size>(ps, "SizePixel");
}

int Picture::PixelWidth() const {
  return Call("Picture.PixelWidth", [&] { return static_cast<int>(SizePixel(*impl_).Width); });
}

int Picture::PixelHeight() const {
  return Call("Picture.PixelHeight", [&] { return static_cast<int>(SizePixel(*impl_).Height); });
}

}  // namespace nivarel::office
