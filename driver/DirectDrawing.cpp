#include "DirectDrawing.h"

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>

#include <vector>

#include "Uno.h"

namespace nivarel::driver {

using namespace office;

namespace {

// The shapes drawn here stay held for the life of the process, as the office
// holds a shape a person draws. Let go through the bridge right after being
// drawn, a shape's object could be asked for again while the office is still
// letting the first one go, and answer as a detached copy. Never released at
// exit: the bridge may be gone by then.
std::vector<Reference<css::drawing::XShape>>& Held() {
  static auto* held = new std::vector<Reference<css::drawing::XShape>>;
  return *held;
}

}  // namespace

void DrawRectangleDirectly(const Worksheet& sheet, const std::string& name, double left, double top) {
  Call("DrawRectangleDirectly", [&] {
    Reference<css::lang::XMultiServiceFactory> factory(sheet.Ref()->document, uno::UNO_QUERY_THROW);
    Reference<css::drawing::XShape> shape(factory->createInstance("com.sun.star.drawing.RectangleShape"),
                                          uno::UNO_QUERY_THROW);
    sheet.Ref()->Page()->add(shape);
    shape->setSize(css::awt::Size(PtToHmm(40), PtToHmm(20)));
    shape->setPosition(css::awt::Point(PtToHmm(left), PtToHmm(top)));
    if (!name.empty()) SetProp(Reference<css::beans::XPropertySet>(shape, uno::UNO_QUERY_THROW), "Name", ToOu(name));
    Held().push_back(shape);
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
