// Mermaid text in files: saved ending with a line break, read back in the
// settings files' encodings with plain line breaks, a Markdown text's
// mermaid block taken out of it, and files that are no text refused; the
// name the save dialog's answer stands for.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "CMermaidCopy.h"
#include "MermaidFile.h"

namespace nivarel {
namespace {

using tools::MermaidFile;
namespace fs = std::filesystem;

class MermaidFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("nivarel-mermaid-file-" + std::to_string(getpid()));
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }
  static std::string Bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  fs::path folder_;
};

TEST_F(MermaidFileTest, SavedTextEndsWithOneLineBreakAndReplacesTheFile) {
  std::string problem;
  const std::string path = Write("chart.mmd", "an older and longer chart that was here before\n");
  ASSERT_TRUE(MermaidFile::Save(path, "flowchart TD\n    A --> B\n", problem)) << problem;
  EXPECT_EQ("flowchart TD\n    A --> B\n", Bytes(path));
  ASSERT_TRUE(MermaidFile::Save(path, "flowchart TD\n    G[\"Gr\xC3\xBC\xC3\x9F" "e\"]", problem));
  EXPECT_EQ("flowchart TD\n    G[\"Gr\xC3\xBC\xC3\x9F" "e\"]\n", Bytes(path)) << "UTF-8 as it is, a line break added";

  EXPECT_FALSE(MermaidFile::Save(Path("no-such-folder/chart.mmd"), "flowchart TD\n", problem));
  EXPECT_EQ("The file could not be written:\r\n" + Path("no-such-folder/chart.mmd"), problem);
}

TEST_F(MermaidFileTest, LoadedTextHasPlainLineBreaksInUtf8) {
  std::string text = "untouched", problem;
  ASSERT_TRUE(MermaidFile::Load(Write("crlf.mmd", "\xEF\xBB\xBF" "flowchart TD\r\n    A --> B\r\n"), text, problem));
  EXPECT_EQ("flowchart TD\n    A --> B\n", text) << "no byte order mark, no CR";
  // A file from Windows in its own code page: "é" is 0xE9 there.
  ASSERT_TRUE(MermaidFile::Load(Write("cp1252.txt", "A[\"Caf\xE9\"]"), text, problem));
  EXPECT_EQ("A[\"Caf\xC3\xA9\"]\n", text);
}

TEST_F(MermaidFileTest, AMarkdownTextGivesItsFirstMermaidBlock) {
  EXPECT_EQ("flowchart LR\n    A --> B\n",
            MermaidFile::MermaidPart("# Notes\n\n```js\nlet a;\n```\n\n```mermaid\nflowchart LR\n    A --> B\n```\n"
                                     "\n```mermaid\ngraph TD\n```\n"));
  // Fences of tildes, longer fences, indented ones; a shorter fence inside
  // does not close a longer one; an unclosed block runs to the end.
  EXPECT_EQ("graph TD\n  X --> Y\n", MermaidFile::MermaidPart("  ~~~ mermaid\ngraph TD\n  X --> Y\n  ~~~\n"));
  EXPECT_EQ("graph TD\n```\nA\n", MermaidFile::MermaidPart("````mermaid\ngraph TD\n```\nA\n````\n"));
  EXPECT_EQ("graph TD\nA\n", MermaidFile::MermaidPart("```mermaid\ngraph TD\nA"));
  // Without a mermaid block the text stands, whatever else is fenced.
  EXPECT_EQ("```\ngraph TD\n```\n", MermaidFile::MermaidPart("```\ngraph TD\n```"));

  std::string text, problem;
  ASSERT_TRUE(MermaidFile::Load(Write("notes.md", "Intro\r\n```mermaid\r\nflowchart TD\r\n  A\r\n```\r\n"), text, problem));
  EXPECT_EQ("flowchart TD\n  A\n", text);
}

TEST_F(MermaidFileTest, FilesThatAreNoTextAreRefusedAndTheTextStays) {
  std::string text = "as typed", problem;
  EXPECT_FALSE(MermaidFile::Load(Path("missing.mmd"), text, problem));
  EXPECT_EQ("The file could not be read:\r\n" + Path("missing.mmd"), problem);
  EXPECT_FALSE(MermaidFile::Load(folder_.string(), text, problem)) << "a folder";
  EXPECT_EQ(0u, problem.find("The file could not be read:"));
  EXPECT_FALSE(MermaidFile::Load(Write("picture.png", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16)), text, problem));
  EXPECT_EQ("The file is not a text file:\r\n" + Path("picture.png"), problem);
  EXPECT_TRUE(MermaidFile::Load(Write("largest.mmd", std::string(MermaidFile::kLargest, 'a')), text, problem));
  text = "as typed";
  EXPECT_FALSE(MermaidFile::Load(Write("large.mmd", std::string(MermaidFile::kLargest + 1, 'a')), text, problem));
  EXPECT_EQ("The file is too large to be Mermaid text (over 1 MB):\r\n" + Path("large.mmd"), problem);
  EXPECT_EQ("as typed", text);
}

TEST(MermaidCopyTest, TheChosenTypesExtensionIsAddedUnlessTheNameEndsInIt) {
  using output::CMermaidCopy;
  ASSERT_EQ(2u, CMermaidCopy::SaveFilters().size());
  EXPECT_EQ("/tmp/order.mmd", CMermaidCopy::FileNameOf("/tmp/order", 1));
  EXPECT_EQ("/tmp/order.mmd", CMermaidCopy::FileNameOf(" /tmp/order.mmd ", 1));
  EXPECT_EQ("/tmp/order.txt", CMermaidCopy::FileNameOf("/tmp/order.", 2)) << "one point, not two";
  EXPECT_EQ("/tmp/order.mmd.txt", CMermaidCopy::FileNameOf("/tmp/order.mmd", 2));
  EXPECT_EQ("/tmp/order.MMD.mmd", CMermaidCopy::FileNameOf("/tmp/order.MMD", 1)) << "as the picture export: case counts";
  EXPECT_EQ("/tmp/order", CMermaidCopy::FileNameOf("/tmp/order", 0)) << "no type chosen";
}

}  // namespace
}  // namespace nivarel
