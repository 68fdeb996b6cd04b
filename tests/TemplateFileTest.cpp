// Reading a template file's title and custom properties without the office:
// a package written as a spreadsheet program writes one, a binary workbook's
// property sets written by an OLE2 writer, and files that cannot be read,
// which give nothing.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <zip.h>

#include "TemplateFile.h"
#include "TemplateFileWriter.h"
#include "UnitEnvironment.h"

namespace nivarel::testing {
namespace {

using templates::ReadTemplateFile;
using templates::TemplateFile;
using Properties = std::vector<std::pair<std::string, std::string>>;

class TemplateFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = UnitConfigHome() + "/template-files";
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }

  std::string Path(const std::string& name) const { return folder_ + "/" + name; }

  std::string Write(const std::string& name, const std::string& bytes) {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }

  std::string Bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }

  std::string folder_;
};

TEST_F(TemplateFileTest, PackageGivesItsTitleAndTypedCustomPropertiesInTheirOrder) {
  WriteTemplatePackage(Path("Letter Vertical.xltx"), "Letter Vertical",
                       {{"NumberLanes", "i4", "4"},
                        {"PageSize", "lpwstr", "Letter"},
                        {"Orientation", "lpwstr", "Portrait"},
                        {"SwimLanes", "i4", "6"},
                        {"Reviewed", "bool", "true"},
                        {"Scale", "r8", "0.75"}});
  TemplateFile file;
  ASSERT_TRUE(ReadTemplateFile(Path("Letter Vertical.xltx"), file));
  EXPECT_EQ(file.title, "Letter Vertical");
  EXPECT_EQ(file.custom, (Properties{{"NumberLanes", "4"},
                                     {"PageSize", "Letter"},
                                     {"Orientation", "Portrait"},
                                     {"SwimLanes", "6"},
                                     {"Reviewed", "True"},
                                     {"Scale", "0.75"}}));
  EXPECT_EQ(file.Custom("PageSize"), "Letter");
  EXPECT_EQ(file.Custom("pagesize"), "");  // names are matched with their case
}

TEST_F(TemplateFileTest, PackageWithoutPropertyPartsIsReadEmpty) {
  TemplateFile file;
  WritePackage(Path("Bare.xltx"), {{"xl/workbook.xml", "<workbook/>"}});
  ASSERT_TRUE(ReadTemplateFile(Path("Bare.xltx"), file));
  EXPECT_EQ(file.title, "");
  EXPECT_TRUE(file.custom.empty());
  WritePackage(Path("Titled.xltx"), {{"docProps/core.xml", CorePart("Only a title")}});
  ASSERT_TRUE(ReadTemplateFile(Path("Titled.xltx"), file));
  EXPECT_EQ(file.title, "Only a title");
  EXPECT_TRUE(file.custom.empty());
}

TEST_F(TemplateFileTest, BinaryWorkbookGivesItsSummaryTitleAndTheUsersOwnProperties) {
  WriteTemplateCompoundFile(Path("A4 Grid.xlt"), "A4 Grid", {{"PageSize", "lpwstr", "A4"}, {"NumberLanes", "i4", "3"}});
  TemplateFile file;
  ASSERT_TRUE(ReadTemplateFile(Path("A4 Grid.xlt"), file));
  EXPECT_EQ(file.title, "A4 Grid");
  // The sets' own entries (their code page) are not the user's; the reader
  // gives the user's by name.
  EXPECT_EQ(file.custom, (Properties{{"NumberLanes", "3"}, {"PageSize", "A4"}}));
}

TEST_F(TemplateFileTest, FilesThatCannotBeReadGiveNothing) {
  WriteTemplateCompoundFile(Path("Good.xlt"), "Good", {{"PageSize", "lpwstr", "Letter"}});
  WriteTemplatePackage(Path("Whole.xltx"), "Whole", {{"PageSize", "lpwstr", "Letter"}});
  std::string ole = Bytes(Path("Good.xlt")), package = Bytes(Path("Whole.xltx"));
  WritePackage(Path("broken.xltx"), {{"docProps/core.xml", "<cp:coreProperties><dc:title>Half"}});
  {
    // A zip that is no package: it lacks the content types.
    int error = 0;
    zip_t* zip = zip_open(Path("plain.xltx").c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    ASSERT_NE(zip, nullptr);
    zip_file_add(zip, "readme.txt", zip_source_buffer(zip, "hello", 5, 0), 0);
    ASSERT_EQ(zip_close(zip), 0);
  }
  const std::vector<std::string> bad = {
      Path("missing.xltx"),
      Write("empty.xlt", ""),
      Write("text.xltx", "not a template at all\n"),
      Write("cut.xlt", ole.substr(0, 600)),                     // the compound file's header and no more
      Write("cut.xltx", package.substr(0, package.size() / 2)),  // a package without its directory
      Path("broken.xltx"),
      Path("plain.xltx"),
  };
  for (const std::string& path : bad) {
    TemplateFile file;
    file.title = "left from before";
    file.custom = {{"PageSize", "A3"}};
    EXPECT_FALSE(ReadTemplateFile(path, file)) << path;
    EXPECT_EQ(file.title, "") << path;
    EXPECT_TRUE(file.custom.empty()) << path;
  }
}

}  // namespace
}  // namespace nivarel::testing
