// One drawing object on a sheet, in the logic's terms: points, MsoShapeType
// and MsoAutoShapeType codes, connection sites numbered as the host numbers
// them (1-based, counter-clockwise from the top).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ConnectorFormat.h"
#include "FillFormat.h"
#include "LineFormat.h"
#include "ShadowFormat.h"
#include "TextFrame.h"
#include "TextFrame2.h"

namespace nivarel::office {

struct ShapeImpl;
class Range;
class Worksheet;

class Shape {
 public:
  explicit Shape(std::shared_ptr<ShapeImpl> impl) : impl_(std::move(impl)) {}

  std::string Name() const;
  // Raises HostError when another shape on the sheet has the name.
  void SetName(const std::string& name);

  int Type() const;           // msoAutoShape, msoGroup, msoLine, msoTextBox, msoPicture, ...
  int AutoShapeType() const;  // 1..137, or msoShapeMixed
  // Draws an auto shape as another type 1..137, keeping its place, size,
  // look and text; lines glued to it stay glued where the new type has the
  // same connection site.
  void SetAutoShapeType(int type);
  bool Connector() const;

  double Left() const;
  void SetLeft(double points);
  double Top() const;
  void SetTop(double points);
  double Width() const;
  void SetWidth(double points);
  double Height() const;
  void SetHeight(double points);

  Range TopLeftCell() const;
  Range BottomRightCell() const;
  int Placement() const;
  void SetPlacement(int placement);

  TextFrame GetTextFrame() const;
  // Only on the object model of version 12 and later; raises HostError below it.
  TextFrame2 GetTextFrame2() const;
  FillFormat Fill() const;
  LineFormat Line() const;
  ShadowFormat Shadow() const;
  // Themed style preset 1 to 42, or line style 10001 to 10021 (version 12
  // and later); 0 when none was set.
  int ShapeStyle() const;
  // Gives the shape the preset's look and keeps the id: a themed preset its
  // fill, outline, shadow and text colour; a line style, which only a line
  // or connector takes, its weight, colour and shadow (ShapeStylePresets.h).
  // Any other id raises HostError and changes nothing.
  void SetShapeStyle(int style);

  ConnectorFormat GetConnectorFormat() const;
  int ConnectionSiteCount() const;
  // Glues both ends of this connector to the pair of sites of their shapes
  // that gives the shortest line.
  void RerouteConnections();
  // The position of a connection site, in points.
  std::pair<double, double> ConnectionSitePosition(int site) const;

  std::vector<Shape> GroupItems() const;
  // Breaks up the group; returns its members.
  std::vector<Shape> Ungroup();
  // Makes again the group that Ungroup broke this shape out of, from those
  // of its members that are still top-level shapes of the sheet, under the
  // group's former name when no other shape has taken it; returns the group,
  // and every handle to the old group now stands for it. Raises HostError
  // when the shape came out of no group or fewer than two members are left.
  Shape Regroup();
  void Delete();
  void Select(bool replace = true) const;
  void ZOrder(int command);
  int ZOrderPosition() const;  // 1-based

  Worksheet Parent() const;
  // The same for every handle to this shape, and for its outline
  // (Shapes::Outlines).
  const void* Key() const;
  bool SameAs(const Shape& other) const;
  const std::shared_ptr<ShapeImpl>& Impl() const { return impl_; }

 private:
  std::shared_ptr<ShapeImpl> impl_;
};

}  // namespace nivarel::office
