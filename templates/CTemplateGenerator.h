// Turns the options of one template into a new one-sheet workbook and saves
// it as a template file: narrow grid columns, no gridlines, the chosen paper
// and orientation, and on each printed page (as the office breaks the pages)
// an optional title-block header and footer around a plain grid, vertical or
// horizontal swim lanes, or nothing. Title blocks and lanes are formatted
// cells, or shapes and lines named "TEMPLATE_..." and grouped per page as
// "TEMPLATE_GROUP_<page>". The document properties mark the file as a
// template for the selection dialog. Shows no message: each step logs its
// failure and the next step goes on.
#pragma once

#include <optional>
#include <string>

#include "CTemplateProperties.h"
#include "Workbook.h"
#include "Worksheet.h"

namespace nivarel::office {
class Shape;
}

namespace nivarel::templates {

class CTemplateGenerator {
 public:
  // Builds, marks and saves the workbook, which stays open as the active
  // workbook and is returned; nothing when no workbook could be made.
  std::optional<office::Workbook> CreateTemplate(CTemplateProperties& properties);
  // Whether the last CreateTemplate wrote its file.
  bool Saved() const { return saved_; }
  // Groups the sheet's shapes that are not yet in a page's group as
  // "TEMPLATE_GROUP_<page>"; fewer than two such shapes make no group.
  void GroupTemplateShapes(office::Worksheet& worksheet, short page);

  // The file the template is saved as: folder, name, and ".xltx" (".xlt"
  // below version 12) unless the name ends so already in any case; doubled
  // separators made single.
  static std::string TemplateFilePath(const CTemplateProperties& properties);
  // The span of section index (from 0) when total cells are shared among
  // count sections: the first sections take one more each until the
  // remainder is used up. A count of 0 or less gives total.
  static int GetSectionSpan(int index, int count, int total);
  // The cell border weight of a line style id: thin for 1 to 7 and for ids
  // outside 1 to 21, medium for 8 to 14, thick for 15 to 21.
  static int GetBorderWeight(int lineStyle);
  // The colour (red in the low byte) of a line style id; an id outside 1 to
  // 21 counts as 1.
  static long GetBorderColor(int lineStyle);

 private:
  void AddHeader(office::Worksheet& ws, const CTemplateProperties& p, int topRow, int firstColumn, int lastColumn);
  void AddFooter(office::Worksheet& ws, const CTemplateProperties& p, int firstColumn, int lastColumn, int topRow);
  void AddTitleBlockRows(office::Worksheet& ws, const CTemplateProperties& p, bool header, int topRow,
                         int firstColumn, int lastColumn);
  void AddCellSection(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address,
                      const std::string& label, bool rotate, bool centre);
  void AddShapeSection(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address,
                       const std::string& label, bool rotate, bool centre);
  void AddSection(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address,
                  const std::string& label, bool rotate, bool centre);
  void AddBody(office::Worksheet& ws, const CTemplateProperties& p, int topRow, int firstColumn, int lastColumn,
               int bottomRow);
  void AddGrid(office::Worksheet& ws, const std::string& address);
  void AddVerticalSwimLanes(office::Worksheet& ws, const CTemplateProperties& p, int firstColumn, int lastColumn,
                            int topRow, int bottomRow);
  void AddHorizontalSwimLanes(office::Worksheet& ws, const CTemplateProperties& p, int firstColumn,
                              int lastColumn, int topRow, int bottomRow);
  void AddCellLane(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address);
  void AddVerticalShapeLane(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address,
                            int lane);
  void AddHorizontalShapeLane(office::Worksheet& ws, const CTemplateProperties& p, const std::string& address,
                              bool isLast);
  void AddFormattedLine(office::Worksheet& ws, const CTemplateProperties& p, float x1, float y1, float x2, float y2);
  void SetLineStyle(office::Shape& shape, int lineStyle);
  void SetDocumentProperties(office::Workbook& book, const CTemplateProperties& p);
  std::string GetCustomPropertyValue(const office::DocumentProperties& properties, const std::string& name);
  void SaveTemplateFile(office::Workbook& book, const CTemplateProperties& p);

  bool saved_ = false;
};

}  // namespace nivarel::templates
