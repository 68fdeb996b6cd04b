#include "Clipboard.h"

#include <com/sun/star/datatransfer/UnsupportedFlavorException.hpp>
#include <com/sun/star/datatransfer/XTransferable.hpp>
#include <com/sun/star/datatransfer/clipboard/SystemClipboard.hpp>
#include <cppuhelper/implbase1.hxx>

#include "Uno.h"

namespace nivarel::office {

namespace {

namespace dt = css::datatransfer;

dt::DataFlavor TextFlavor() {
  return dt::DataFlavor("text/plain;charset=utf-16", "Unicode-Text", cppu::UnoType<OUString>::get());
}

// Plain text offered in the one flavour that every part of the office reads.
class TextTransferable : public cppu::WeakImplHelper1<dt::XTransferable> {
 public:
  explicit TextTransferable(OUString text) : text_(std::move(text)), flavor_(TextFlavor()) {}
  uno::Any SAL_CALL getTransferData(const dt::DataFlavor& flavor) override {
    if (!isDataFlavorSupported(flavor)) throw dt::UnsupportedFlavorException();
    return uno::Any(text_);
  }
  uno::Sequence<dt::DataFlavor> SAL_CALL getTransferDataFlavors() override {
    return uno::Sequence<dt::DataFlavor>(&flavor_, 1);
  }
  sal_Bool SAL_CALL isDataFlavorSupported(const dt::DataFlavor& flavor) override {
    return flavor.MimeType.equalsIgnoreAsciiCase(flavor_.MimeType);
  }

 private:
  OUString text_;
  dt::DataFlavor flavor_;
};

}  // namespace

void Clipboard::SetText(const std::string& text) {
  Call("Clipboard.SetText", [&] {
    auto clipboard = dt::clipboard::SystemClipboard::create(app_.Session()->context);
    clipboard->setContents(new TextTransferable(ToOu(text)), nullptr);
  });
}

std::string Clipboard::Text() const {
  return Call("Clipboard.Text", [&] {
    auto clipboard = dt::clipboard::SystemClipboard::create(app_.Session()->context);
    auto contents = clipboard->getContents();
    if (!contents.is()) return std::string();
    for (const dt::DataFlavor& flavor : contents->getTransferDataFlavors()) {
      if (!flavor.MimeType.startsWithIgnoreAsciiCase("text/plain")) continue;
      uno::Any data = contents->getTransferData(flavor);
      OUString text;
      if (data >>= text) return ToUtf8(text);
      uno::Sequence<sal_Int8> bytes;
      if (data >>= bytes) return std::string(reinterpret_cast<const char*>(bytes.getConstArray()), bytes.getLength());
    }
    return std::string();
  });
}

}  // namespace nivarel::office
