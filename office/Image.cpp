#include "Image.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>

#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XBitmap.hpp>
#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/awt/XGraphics.hpp>
#include <com/sun/star/datatransfer/DataFlavor.hpp>
#include <com/sun/star/datatransfer/XTransferableSupplier.hpp>
#include <com/sun/star/drawing/GraphicExportFilter.hpp>
#include <com/sun/star/drawing/ShapeCollection.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/graphic/XGraphicRenderer.hpp>
#include <com/sun/star/io/SequenceInputStream.hpp>
#include <com/sun/star/io/SequenceOutputStream.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "Uno.h"

namespace nivarel::office {

struct ImageImpl {
  std::shared_ptr<HostSession> session;
  Reference<css::graphic::XGraphic> bitmap;  // what is shown and written
  Reference<css::graphic::XGraphic> drawing;  // the capture as vectors; null for a loaded file
  int width = 0, height = 0;
};

namespace {

uno::Sequence<css::beans::PropertyValue> Props(std::initializer_list<std::pair<const char*, uno::Any>> list) {
  uno::Sequence<css::beans::PropertyValue> out(static_cast<sal_Int32>(list.size()));
  sal_Int32 i = 0;
  for (const auto& [name, value] : list) {
    out.getArray()[i].Name = OUString::createFromAscii(name);
    out.getArray()[i].Value = value;
    ++i;
  }
  return out;
}

OUString FileUrl(const std::string& path) { return ToOu("file://" + std::filesystem::absolute(path).string()); }

// Draws graphic into the box of a white picture of width x height pixels
// (the whole of it when box is empty) and keeps the pixels as a new picture:
// the office's renderer on a device of the toolkit.
Reference<css::graphic::XGraphic> Render(const HostSession& s, const Reference<css::graphic::XGraphic>& graphic,
                                         int width, int height, css::awt::Rectangle box = {}) {
  if (box.Width <= 0 || box.Height <= 0) box = css::awt::Rectangle(0, 0, width, height);
  // The office's drawing surfaces end there.
  constexpr int kLargestSide = 32767;
  if (width > kLargestSide || height > kLargestSide)
    throw HostError(HostError::kInvalidArgument, "The picture would be " + std::to_string(width) + " x " +
                                                     std::to_string(height) + " pixels; the office draws at most " +
                                                     std::to_string(kLargestSide) + " pixels a side");
  auto toolkit = css::awt::Toolkit::create(s.context);
  Reference<css::awt::XDevice> device = toolkit->createScreenCompatibleDevice(width, height);
  if (!device.is()) throw HostError(HostError::kOfficeFailure, "The office has no device to draw the picture on");
  Reference<css::awt::XGraphics> paper = device->createGraphics();
  paper->setLineColor(0xFFFFFF);
  paper->setFillColor(0xFFFFFF);
  paper->drawRect(0, 0, width, height);
  Reference<css::graphic::XGraphicRenderer> renderer(
      s.context->getServiceManager()->createInstanceWithContext("com.sun.star.graphic.GraphicRendererVCL", s.context),
      uno::UNO_QUERY_THROW);
  Reference<css::beans::XPropertySet> props(renderer, uno::UNO_QUERY_THROW);
  props->setPropertyValue("Device", uno::Any(device));
  props->setPropertyValue("DestinationRect", uno::Any(box));
  renderer->render(graphic);
  Reference<css::awt::XBitmap> pixels = device->createBitmap(0, 0, width, height);
  auto provider = css::graphic::GraphicProvider::create(s.context);
  Reference<css::graphic::XGraphic> out = provider->queryGraphic(Props({{"Bitmap", uno::Any(pixels)}}));
  if (!out.is()) throw HostError(HostError::kOfficeFailure, "The office could not keep the drawn picture");
  return out;
}

// The picture that the view would put on the clipboard for what is selected
// in it now, as the office's metafile, which keeps the drawing as vectors.
Reference<css::graphic::XGraphic> SelectionDrawing(const HostSession& s, const Reference<css::frame::XController>& view) {
  Reference<css::datatransfer::XTransferableSupplier> supplier(view, uno::UNO_QUERY_THROW);
  Reference<css::datatransfer::XTransferable> copy = supplier->getTransferable();
  if (!copy.is()) throw HostError(HostError::kOfficeFailure, "The view gave no picture of the selection");
  css::datatransfer::DataFlavor flavor;
  flavor.MimeType = "application/x-openoffice-gdimetafile;windows_formatname=\"GDIMetaFile\"";
  flavor.HumanPresentableName = "GDIMetaFile";
  flavor.DataType = cppu::UnoType<uno::Sequence<sal_Int8>>::get();
  if (!copy->isDataFlavorSupported(flavor))
    throw HostError(HostError::kOfficeFailure, "The view gives no picture of the selection");
  uno::Sequence<sal_Int8> bytes;
  copy->getTransferData(flavor) >>= bytes;
  if (!bytes.hasElements()) throw HostError(HostError::kOfficeFailure, "The view's picture of the selection is empty");
  auto stream = css::io::SequenceInputStream::createStreamFromSequence(s.context, bytes);
  auto provider = css::graphic::GraphicProvider::create(s.context);
  Reference<css::graphic::XGraphic> drawing = provider->queryGraphic(Props({{"InputStream", uno::Any(stream)}}));
  if (!drawing.is()) throw HostError(HostError::kOfficeFailure, "The office could not read the view's picture");
  return drawing;
}

// The shapes drawn by the drawing layer itself, as the office's metafile:
// their text stays laid out as the sheet shows it (a copy of the selection
// lays text out afresh in a document of its own, where a label sized to its
// text may break its last word onto a new line).
Reference<css::graphic::XGraphic> ShapesDrawing(const HostSession& s, const Reference<css::drawing::XShapes>& shapes) {
  auto filter = css::drawing::GraphicExportFilter::create(s.context);
  filter->setSourceDocument(Reference<css::lang::XComponent>(shapes, uno::UNO_QUERY_THROW));
  auto out = css::io::SequenceOutputStream::create(s.context);
  filter->filter(Props({{"MediaType", uno::Any(OUString("image/x-svm"))},
                        {"OutputStream", uno::Any(Reference<css::io::XOutputStream>(out, uno::UNO_QUERY_THROW))}}));
  uno::Sequence<sal_Int8> bytes = out->getWrittenBytes();
  if (!bytes.hasElements()) throw HostError(HostError::kOfficeFailure, "The office drew no picture of the shapes");
  auto stream = css::io::SequenceInputStream::createStreamFromSequence(s.context, bytes);
  auto provider = css::graphic::GraphicProvider::create(s.context);
  Reference<css::graphic::XGraphic> drawing = provider->queryGraphic(Props({{"InputStream", uno::Any(stream)}}));
  if (!drawing.is()) throw HostError(HostError::kOfficeFailure, "The office could not read its picture of the shapes");
  return drawing;
}

css::awt::Size Size100thMm(const Reference<css::graphic::XGraphic>& graphic) {
  Reference<css::beans::XPropertySet> ps(graphic, uno::UNO_QUERY_THROW);
  return GetProp<css::awt::Size>(ps, "Size100thMM");
}

css::awt::Size SizePixel(const Reference<css::graphic::XGraphic>& graphic) {
  Reference<css::beans::XPropertySet> ps(graphic, uno::UNO_QUERY_THROW);
  return GetProp<css::awt::Size>(ps, "SizePixel");
}

int Pixels(sal_Int32 hmm, double pixelsPerPoint) {
  return std::max(1, static_cast<int>(std::lround(HmmToPt(hmm) * pixelsPerPoint)));
}

// The image of impl's drawing, drawn at pixelsPerPoint.
Image Drawn(const std::shared_ptr<ImageImpl>& impl, double pixelsPerPoint) {
  css::awt::Size size = Size100thMm(impl->drawing);
  impl->width = Pixels(size.Width, pixelsPerPoint);
  impl->height = Pixels(size.Height, pixelsPerPoint);
  impl->bitmap = Render(*impl->session, impl->drawing, impl->width, impl->height);
  return Image(impl);
}

void CheckScale(double pixelsPerPoint) {
  if (!(pixelsPerPoint > 0 && pixelsPerPoint <= 20))
    throw HostError(HostError::kInvalidArgument, "The picture's scale must lie between 0 and 20 pixels per point");
}

// Selects what in the sheet's view, takes the view's picture of it at
// pixelsPerPoint, and puts the view's sheet and selection back as they were.
Image Capture(const std::shared_ptr<SheetRef>& sheet, const uno::Any& what, double pixelsPerPoint) {
  CheckScale(pixelsPerPoint);
  Reference<css::frame::XModel> model(sheet->document, uno::UNO_QUERY_THROW);
  Reference<css::frame::XController> view = model->getCurrentController();
  if (!view.is()) throw HostError(HostError::kOfficeFailure, "The workbook has no window to take a picture in");
  Reference<css::view::XSelectionSupplier> selection(view, uno::UNO_QUERY_THROW);
  Reference<css::sheet::XSpreadsheetView> sheets(view, uno::UNO_QUERY_THROW);
  Reference<css::sheet::XSpreadsheet> shownSheet = sheets->getActiveSheet();
  uno::Any selected = selection->getSelection();
  auto putBack = [&] {
    try {
      if (shownSheet.is() && shownSheet != sheet->sheet) sheets->setActiveSheet(shownSheet);
      if (selected.hasValue()) selection->select(selected);
    } catch (const uno::Exception&) {
      // The view's selection is a courtesy; the picture is taken.
    }
  };
  auto impl = std::make_shared<ImageImpl>();
  impl->session = sheet->session;
  try {
    if (shownSheet != sheet->sheet) sheets->setActiveSheet(sheet->sheet);
    selection->select(what);
    impl->drawing = SelectionDrawing(*sheet->session, view);
  } catch (...) {
    putBack();
    throw;
  }
  putBack();
  return Drawn(impl, pixelsPerPoint);
}

const char* MediaTypeOf(int format) {
  switch (format) {
    case Image::kBmp: return "image/x-MS-bmp";
    case Image::kJpeg: return "image/jpeg";
    case Image::kPng: return "image/png";
    case Image::kTiff: return "image/tiff";
    case Image::kGif: return "image/gif";
    case Image::kEmf: return "image/x-emf";
    default: return nullptr;
  }
}

}  // namespace

Image Image::OfShapes(const ShapeRange& shapes, double pixelsPerPoint) {
  return Call("Image.OfShapes", [&] {
    if (shapes.Count() == 0) throw HostError(HostError::kOfficeFailure, "There are no shapes to take a picture of");
    std::shared_ptr<SheetRef> sheet = shapes.Item(1).Impl()->sheet;
    CheckScale(pixelsPerPoint);
    auto collection = css::drawing::ShapeCollection::create(sheet->session->context);
    for (const auto& s : shapes.Items()) collection->add(s.Impl()->shape);
    auto impl = std::make_shared<ImageImpl>();
    impl->session = sheet->session;
    impl->drawing = ShapesDrawing(*sheet->session, Reference<css::drawing::XShapes>(collection, uno::UNO_QUERY_THROW));
    return Drawn(impl, pixelsPerPoint);
  });
}

Image Image::OfRange(const Range& range, double pixelsPerPoint) {
  return Call("Image.OfRange", [&] {
    const std::shared_ptr<SheetRef>& sheet = range.SheetHandle();
    Reference<css::table::XCellRange> cells = sheet->sheet->getCellRangeByPosition(
        range.Column() - 1, range.Row() - 1, range.LastColumn() - 1, range.LastRow() - 1);
    return Capture(sheet, uno::Any(cells), pixelsPerPoint);
  });
}

std::optional<Image> Image::Load(const std::shared_ptr<HostSession>& session, const std::string& path) {
  std::error_code ec;
  if (path.empty() || !std::filesystem::is_regular_file(path, ec)) return std::nullopt;
  return Call("Image.Load", [&]() -> std::optional<Image> {
    auto provider = css::graphic::GraphicProvider::create(session->context);
    Reference<css::graphic::XGraphic> graphic;
    try {
      graphic = provider->queryGraphic(Props({{"URL", uno::Any(FileUrl(path))}}));
    } catch (const uno::Exception&) {
      return std::nullopt;  // not a picture the office reads
    }
    if (!graphic.is()) return std::nullopt;
    auto impl = std::make_shared<ImageImpl>();
    impl->session = session;
    impl->bitmap = graphic;
    css::awt::Size size = SizePixel(graphic);
    impl->width = size.Width;
    impl->height = size.Height;
    if (impl->width <= 0 || impl->height <= 0) return std::nullopt;
    return Image(impl);
  });
}

int Image::Width() const { return impl_->width; }
int Image::Height() const { return impl_->height; }

int Image::BitsPerPixel() const {
  return Call("Image.BitsPerPixel", [&] {
    Reference<css::beans::XPropertySet> ps(impl_->bitmap, uno::UNO_QUERY_THROW);
    return static_cast<int>(GetProp<sal_Int8>(ps, "BitsPerPixel")) & 0xFF;
  });
}

Image Image::Converted() const {
  return Call("Image.Converted", [&] {
    auto impl = std::make_shared<ImageImpl>(*impl_);
    impl->bitmap = Render(*impl_->session, impl_->bitmap, impl_->width, impl_->height);
    return Image(impl);
  });
}

Image Image::Thumbnail(int longestSide) const {
  return Call("Image.Thumbnail", [&] {
    if (longestSide < 1) throw HostError(HostError::kInvalidArgument, "A thumbnail needs a side of 1 pixel or more");
    double factor = static_cast<double>(longestSide) / std::max(impl_->width, impl_->height);
    auto impl = std::make_shared<ImageImpl>(*impl_);
    impl->width = std::max(1, static_cast<int>(std::lround(impl_->width * factor)));
    impl->height = std::max(1, static_cast<int>(std::lround(impl_->height * factor)));
    // From the drawing where there is one: sharper than the pixels shrunk.
    impl->bitmap = Render(*impl_->session, impl_->drawing.is() ? impl_->drawing : impl_->bitmap, impl->width,
                          impl->height);
    return Image(impl);
  });
}

Image Image::Placed(int width, int height, int left, int top, int boxWidth, int boxHeight) const {
  return Call("Image.Placed", [&] {
    if (width < 1 || height < 1 || boxWidth < 1 || boxHeight < 1)
      throw HostError(HostError::kInvalidArgument, "A picture needs a side of 1 pixel or more");
    auto impl = std::make_shared<ImageImpl>(*impl_);
    impl->width = width;
    impl->height = height;
    impl->drawing.clear();
    impl->bitmap = Render(*impl_->session, impl_->bitmap, width, height,
                          css::awt::Rectangle(left, top, boxWidth, boxHeight));
    return Image(impl);
  });
}

void Image::Save(const std::string& path, int format, int flags) const {
  const char* mediaType = MediaTypeOf(format);
  if (!mediaType) throw HostError(HostError::kInvalidArgument, "Unknown picture format " + std::to_string(format));
  Call("Image.Save", [&] {
    uno::Sequence<css::beans::PropertyValue> filterData;
    if (format == kJpeg && flags > 0 && flags <= 100) filterData = Props({{"Quality", uno::Any(sal_Int32(flags))}});
    auto provider = css::graphic::GraphicProvider::create(impl_->session->context);
    std::error_code gone;
    std::filesystem::remove(path, gone);
    provider->storeGraphic(impl_->bitmap, Props({{"URL", uno::Any(FileUrl(path))},
                                                 {"MimeType", uno::Any(OUString::createFromAscii(mediaType))},
                                                 {"FilterData", uno::Any(filterData)}}));
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec) || std::filesystem::file_size(path, ec) == 0)
      throw HostError(HostError::kOfficeFailure, "The file '" + path + "' could not be written");
  });
}

void Image::SaveDrawing(const std::string& path) const {
  std::string type = std::filesystem::path(path).extension().string();
  std::transform(type.begin(), type.end(), type.begin(), [](unsigned char c) { return std::tolower(c); });
  if (type != ".svg" && type != ".pdf")
    throw HostError(HostError::kInvalidArgument, "A drawing is written as .svg or .pdf, not as '" + type + "'");
  if (!impl_->drawing.is()) throw HostError(HostError::kOfficeFailure, "A picture read from a file has no drawing");
  Call("Image.SaveDrawing", [&] {
    const HostSession& s = *impl_->session;
    std::error_code gone;
    std::filesystem::remove(path, gone);
    if (type == ".svg") {
      auto provider = css::graphic::GraphicProvider::create(s.context);
      provider->storeGraphic(impl_->drawing, Props({{"URL", uno::Any(FileUrl(path))},
                                                    {"MimeType", uno::Any(OUString("image/svg+xml"))}}));
      std::error_code ec;
      if (!std::filesystem::is_regular_file(path, ec) || std::filesystem::file_size(path, ec) == 0) {
        std::filesystem::remove(path, ec);
        throw HostError(HostError::kOfficeFailure,
                        "This office cannot write SVG pictures: its SVG filter, which comes with LibreOffice "
                        "Draw, is not installed");
      }
    } else {
      // A PDF page of the picture's own size holding the drawing alone: a
      // hidden spreadsheet made for it, whose first cell and page are the
      // picture's size, printed and closed again.
      Reference<css::frame::XComponentLoader> loader(s.desktop, uno::UNO_QUERY_THROW);
      Reference<css::lang::XComponent> doc = loader->loadComponentFromURL(
          "private:factory/scalc", "_blank", 0, Props({{"Hidden", uno::Any(true)}}));
      auto close = [&] { Reference<css::util::XCloseable>(doc, uno::UNO_QUERY_THROW)->close(true); };
      try {
        css::awt::Size size = Size100thMm(impl_->drawing);
        Reference<css::sheet::XSpreadsheetDocument> book(doc, uno::UNO_QUERY_THROW);
        Reference<css::container::XIndexAccess> sheets(book->getSheets(), uno::UNO_QUERY_THROW);
        Reference<css::sheet::XSpreadsheet> sheet(sheets->getByIndex(0), uno::UNO_QUERY_THROW);
        Reference<css::table::XColumnRowRange> cell(sheet->getCellRangeByPosition(0, 0, 0, 0), uno::UNO_QUERY_THROW);
        Reference<css::beans::XPropertySet>(cell->getColumns()->getByIndex(0), uno::UNO_QUERY_THROW)
            ->setPropertyValue("Width", uno::Any(size.Width));
        Reference<css::beans::XPropertySet>(cell->getRows()->getByIndex(0), uno::UNO_QUERY_THROW)
            ->setPropertyValue("Height", uno::Any(size.Height));
        OUString styleName = GetProp<OUString>(Reference<css::beans::XPropertySet>(sheet, uno::UNO_QUERY_THROW), "PageStyle");
        Reference<css::style::XStyleFamiliesSupplier> families(doc, uno::UNO_QUERY_THROW);
        Reference<css::container::XNameAccess> pageStyles(families->getStyleFamilies()->getByName("PageStyles"),
                                                          uno::UNO_QUERY_THROW);
        Reference<css::beans::XPropertySet> style(pageStyles->getByName(styleName), uno::UNO_QUERY_THROW);
        style->setPropertyValue("HeaderIsOn", uno::Any(false));
        style->setPropertyValue("FooterIsOn", uno::Any(false));
        for (const char* margin : {"LeftMargin", "RightMargin", "TopMargin", "BottomMargin"})
          style->setPropertyValue(OUString::createFromAscii(margin), uno::Any(sal_Int32(0)));
        style->setPropertyValue("IsLandscape", uno::Any(size.Width > size.Height));
        style->setPropertyValue("Width", uno::Any(size.Width));
        style->setPropertyValue("Height", uno::Any(size.Height));
        style->setPropertyValue("ScaleToPages", uno::Any(sal_Int16(1)));
        Reference<css::lang::XMultiServiceFactory> factory(doc, uno::UNO_QUERY_THROW);
        Reference<css::drawing::XShape> picture(factory->createInstance("com.sun.star.drawing.GraphicObjectShape"),
                                                uno::UNO_QUERY_THROW);
        Reference<css::drawing::XDrawPageSupplier> page(sheet, uno::UNO_QUERY_THROW);
        page->getDrawPage()->add(picture);
        picture->setPosition(css::awt::Point(0, 0));
        picture->setSize(size);
        Reference<css::beans::XPropertySet>(picture, uno::UNO_QUERY_THROW)
            ->setPropertyValue("Graphic", uno::Any(impl_->drawing));
        Reference<css::frame::XStorable>(doc, uno::UNO_QUERY_THROW)
            ->storeToURL(FileUrl(path), Props({{"FilterName", uno::Any(OUString("calc_pdf_Export"))}}));
      } catch (...) {
        close();
        throw;
      }
      close();
    }
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec) || std::filesystem::file_size(path, ec) == 0)
      throw HostError(HostError::kOfficeFailure, "The file '" + path + "' could not be written");
  });
}

}  // namespace nivarel::office
