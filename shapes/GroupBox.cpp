#include "GroupBox.h"

#include "CShapeFormatter.h"
#include "Characters.h"
#include "Font.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "TextFrame.h"

namespace nivarel::shapes {

office::Shape DrawGroupBox(office::Worksheet& ws, double left, double top, double width, double height,
                           const GroupBoxChoices& c) {
  office::Shape box = ws.GetShapes().AddShape(
      c.rounded ? office::msoShapeFlowchartAlternateProcess : office::msoShapeFlowchartProcess, left, top, width,
      height);
  box.SetName("GROUP_BOX_" + box.Name());
  if (!c.label.empty()) {
    office::TextFrame frame = box.GetTextFrame();
    office::Characters text = frame.GetCharacters();
    text.SetText(c.label);
    office::Font font = text.GetFont();
    font.SetName(c.fontName);
    font.SetSize(c.fontSize);
    font.SetBold(c.bold);
    font.SetItalic(c.italic);
    frame.SetHorizontalAlignment(c.hAlign == 0 ? office::xlLeft : c.hAlign == 1 ? office::xlCenter : office::xlRight);
    frame.SetVerticalAlignment(c.vAlign == 0 ? office::xlTop : c.vAlign == 1 ? office::xlCenter : office::xlBottom);
  }
  if (c.dashed) box.Line().SetDashStyle(office::msoLineDash);
  box.SetPlacement(office::xlMove);
  CShapeFormatter().SetStyleOnly(box, static_cast<int16_t>(c.style));
  box.ZOrder(office::msoSendToBack);
  return box;
}

}  // namespace nivarel::shapes
