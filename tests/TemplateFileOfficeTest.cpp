// The template file reader on files that the office itself saves: a document
// whose title and custom properties the test writes in the office's flat
// document format, saved by Calc as an Excel template of both kinds.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "AddinFixture.h"
#include "TemplateFile.h"
#include "Workbook.h"
#include "Workbooks.h"

namespace nivarel {
namespace {

const char kFlatDocument[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<office:document xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
    "xmlns:meta=\"urn:oasis:names:tc:opendocument:xmlns:meta:1.0\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
    "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" office:version=\"1.3\" "
    "office:mimetype=\"application/vnd.oasis.opendocument.spreadsheet\">"
    "<office:meta><dc:title>Letter Vertical</dc:title>"
    "<meta:user-defined meta:name=\"NumberLanes\" meta:value-type=\"float\">4</meta:user-defined>"
    "<meta:user-defined meta:name=\"PageSize\" meta:value-type=\"string\">Letter</meta:user-defined>"
    "<meta:user-defined meta:name=\"StartLocation\" meta:value-type=\"string\">C4</meta:user-defined>"
    "</office:meta><office:body><office:spreadsheet><table:table table:name=\"Sheet1\">"
    "<table:table-row><table:table-cell/></table:table-row></table:table></office:spreadsheet></office:body>"
    "</office:document>\n";

class TemplateFileOfficeTest : public testing::AddinFixture {};

TEST_F(TemplateFileOfficeTest, BothTemplateKindsThatCalcSavesAreRead) {
  std::string folder = testing::ConfigHome() + "/saved-templates";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  std::ofstream(folder + "/source.fods") << kFlatDocument;
  {
    office::Workbook book = App().GetWorkbooks().Open(folder + "/source.fods");
    book.SaveAs(folder + "/Letter Vertical.xltx");
    book.SaveAs(folder + "/Letter Vertical.xlt");
    book.Close();
  }
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"NumberLanes", "4"}, {"PageSize", "Letter"}, {"StartLocation", "C4"}};
  for (const char* name : {"Letter Vertical.xltx", "Letter Vertical.xlt"}) {
    templates::TemplateFile file;
    ASSERT_TRUE(templates::ReadTemplateFile(folder + "/" + name, file)) << name;
    EXPECT_EQ("Letter Vertical", file.title) << name;
    EXPECT_EQ(expected, file.custom) << name;
  }
}

}  // namespace
}  // namespace nivarel
