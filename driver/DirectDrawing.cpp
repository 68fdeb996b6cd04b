#include "DirectDrawing.h"

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>

#include "Uno.h"

namespace nivarel::driver {

using namespace office;

void DrawRectangleDirectly(const Worksheet& sheet, const std::string& name, double left, double top) {
  Call("DrawRectangleDirectly", [&] {
    Reference<css::lang::XMultiServiceFactory> factory(sheet.Ref()->document, uno::UNO_QUERY_THROW);
    Reference<css::drawing::XShape> shape(factory->createInstance("com.sun.star.drawing.RectangleShape"),
                                          uno::UNO_QUERY_THROW);
    sheet.Ref()->Page()->add(shape);
    shape->setSize(css::awt::Size(PtToHmm(40), PtToHmm(20)));
    shape->setPosition(css::awt::Point(PtToHmm(left), PtToHmm(top)));
    if (!name.empty()) SetProp(Reference<css::beans::XPropertySet>(shape, uno::UNO_QUERY_THROW), "Name", ToOu(name));
  });
}

static Reference<css::drawing::XShape> At(const Worksheet& sheet, int index) {
  return Reference<css::drawing::XShape>(sheet.Ref()->Page()->getByIndex(index - 1), uno::UNO_QUERY_THROW);
}

void RemoveShapeDirectly(const Worksheet& sheet, int index) {
  Call("RemoveShapeDirectly", [&] {
    Reference<css::drawing::XShapes>(sheet.Ref()->Page(), uno::UNO_QUERY_THROW)->remove(At(sheet, index));
  });
}

void BringToFrontDirectly(const Worksheet& sheet, int index) {
  Call("BringToFrontDirectly", [&] {
    SetProp(Reference<css::beans::XPropertySet>(At(sheet, index), uno::UNO_QUERY_THROW), "ZOrder",
            sheet.Ref()->Page()->getCount() - 1);
  });
}

void RenameShapeDirectly(const Worksheet& sheet, int index, const std::string& name) {
  Call("RenameShapeDirectly", [&] {
    SetProp(Reference<css::beans::XPropertySet>(At(sheet, index), uno::UNO_QUERY_THROW), "Name", ToOu(name));
  });
}

}  // namespace nivarel::driver
