// Maps Office AutoShape type ids (MsoAutoShapeType 1..137) to LibreOffice
// custom shape types and to the host's connection sites. A shape's sites are
// its last siteCount glue points: the office shape's own (ids 4 and up) when
// addedSites is nullptr, otherwise the points added in the given order.

#pragma once

#include <string>

namespace nivarel::office {

struct SitePoint {
  double x;  // fraction of the bounding box width, 0 at the left edge
  double y;  // fraction of the bounding box height, 0 at the top edge
};

struct AutoShapeTypeInfo {
  int id;                       // MsoAutoShapeType
  const char* name;             // display name, as in the symbol names table
  const char* officeType;       // CustomShapeGeometry "Type"
  const char* drawingMlPreset;  // the preset name used when saved as xlsx (empty if unknown)
  int siteCount;                // Excel's ConnectionSiteCount
  const SitePoint* addedSites;  // nullptr when the office shape carries the sites itself (glue ids 4..)
};

// Returns the entry for id 1..137, or nullptr.
const AutoShapeTypeInfo* FindAutoShapeType(int id);

// Returns the id whose officeType equals type, or whose preset a shape read
// from an xlsx file names ("ooxml-<preset>"); 0 for none.
int AutoShapeTypeFromOfficeType(const std::string& type);

}  // namespace nivarel::office
