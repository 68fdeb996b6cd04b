#include "PageSetup.h"

#include <cstdlib>

#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {

struct Paper {
  int code;
  sal_Int32 width, height;  // portrait, 1/100 mm
};
const Paper kPapers[] = {{PageSetup::kPaperLetter, 21590, 27940},
                         {PageSetup::kPaper11x17, 27940, 43180},
                         {PageSetup::kPaperA3, 29700, 42000},
                         {PageSetup::kPaperA4, 21000, 29700}};

Reference<css::beans::XPropertySet> PageStyle(const SheetRef& s) {
  Reference<css::beans::XPropertySet> sheet(s.sheet, uno::UNO_QUERY_THROW);
  OUString name = GetProp<OUString>(sheet, "PageStyle");
  Reference<css::style::XStyleFamiliesSupplier> sup(s.document, uno::UNO_QUERY_THROW);
  Reference<css::container::XNameAccess> pages(sup->getStyleFamilies()->getByName("PageStyles"), uno::UNO_QUERY_THROW);
  return Reference<css::beans::XPropertySet>(pages->getByName(name), uno::UNO_QUERY_THROW);
}

double Margin(const SheetRef& s, const char* name) {
  return Call("PageSetup", [&] { return HmmToPt(GetProp<sal_Int32>(PageStyle(s), name)); });
}
void SetMargin(const SheetRef& s, const char* name, double pt) {
  Call("PageSetup", [&] { SetProp(PageStyle(s), name, PtToHmm(pt)); });
}

}  // namespace

int PageSetup::PaperSize() const {
  return Call("PageSetup.PaperSize", [&] {
    auto size = GetProp<css::awt::Size>(PageStyle(*sheet_), "Size");
    sal_Int32 w = std::min(size.Width, size.Height), h = std::max(size.Width, size.Height);
    for (const auto& p : kPapers)
      if (std::abs(p.width - w) < 100 && std::abs(p.height - h) < 100) return p.code;
    return 0;
  });
}

void PageSetup::SetPaperSize(int code) {
  Call("PageSetup.PaperSize", [&] {
    for (const auto& p : kPapers) {
      if (p.code != code) continue;
      auto ps = PageStyle(*sheet_);
      bool landscape = GetProp<bool>(ps, "IsLandscape");
      css::awt::Size size(landscape ? p.height : p.width, landscape ? p.width : p.height);
      SetProp(ps, "Size", size);
      return;
    }
    throw HostError(HostError::kOfficeFailure, "Unable to set the PaperSize property of the PageSetup class");
  });
}

int PageSetup::Orientation() const {
  return Call("PageSetup.Orientation", [&] {
    return GetProp<bool>(PageStyle(*sheet_), "IsLandscape") ? kLandscape : kPortrait;
  });
}

void PageSetup::SetOrientation(int orientation) {
  Call("PageSetup.Orientation", [&] {
    auto ps = PageStyle(*sheet_);
    bool landscape = orientation == kLandscape;
    auto size = GetProp<css::awt::Size>(ps, "Size");
    bool wide = size.Width > size.Height;
    if (wide != landscape) std::swap(size.Width, size.Height);
    SetProp(ps, "IsLandscape", landscape);
    SetProp(ps, "Size", size);
  });
}

double PageSetup::LeftMargin() const { return Margin(*sheet_, "LeftMargin"); }
void PageSetup::SetLeftMargin(double pt) { SetMargin(*sheet_, "LeftMargin", pt); }
double PageSetup::RightMargin() const { return Margin(*sheet_, "RightMargin"); }
void PageSetup::SetRightMargin(double pt) { SetMargin(*sheet_, "RightMargin", pt); }
double PageSetup::TopMargin() const { return Margin(*sheet_, "TopMargin"); }
void PageSetup::SetTopMargin(double pt) { SetMargin(*sheet_, "TopMargin", pt); }
double PageSetup::BottomMargin() const { return Margin(*sheet_, "BottomMargin"); }
void PageSetup::SetBottomMargin(double pt) { SetMargin(*sheet_, "BottomMargin", pt); }

}  // namespace nivarel::office
