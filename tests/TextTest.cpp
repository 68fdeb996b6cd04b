// Trimming and case of UTF-8 text, as names, keys and typed steps use them.
#include <gtest/gtest.h>

#include "Text.h"

namespace nivarel {
namespace {

using namespace rules;

TEST(TextTest, TrimTakesOnlyTheCharactersAskedFor) {
  EXPECT_EQ("a b", Trim("  a b  "));
  EXPECT_EQ("\ta\t", Trim(" \ta\t "));
  EXPECT_EQ("a", Trim(" \ta\t ", kBlankOrTab));
  EXPECT_EQ("a", Trim("\r\n a \r\n", kWhiteSpace));
  EXPECT_EQ("", Trim("   "));
  EXPECT_EQ("", Trim(""));
  EXPECT_EQ("a  ", TrimLeft("  a  "));
  EXPECT_EQ("", TrimLeft(" "));
}

TEST(TextTest, UpperCaseCoversTheAlphabets) {
  EXPECT_EQ(UpperCase("AddFlowLine = true;"), "ADDFLOWLINE = TRUE;");
  EXPECT_EQ(UpperCase("straße café ÿ ÷"), "STRAßE CAFÉ Ÿ ÷");
  EXPECT_EQ(UpperCase("žluťoučký ĺ ŀ ł œ ş ā"), "ŽLUŤOUČKÝ Ĺ Ŀ Ł Œ Ş Ā");
  EXPECT_EQ(UpperCase("ключ ёж σοφός άς"), "КЛЮЧ ЁЖ ΣΟΦΌΣ ΆΣ");
  EXPECT_EQ(UpperCase("a\xFF" "b\xC3"), "A\xFF" "B\xC3");
}

TEST(TextTest, LowerCaseIsUpperCaseTakenBack) {
  EXPECT_EQ(LowerCase("ADDFLOWLINE = TRUE;"), "addflowline = true;");
  EXPECT_EQ(LowerCase("STRAßE CAFÉ Ÿ × Þ"), "straße café ÿ × þ");
  EXPECT_EQ(LowerCase("ŽLUŤOUČKÝ Ĺ Ŀ Ł Œ Ş Ā İ"), "žluťoučký ĺ ŀ ł œ ş ā İ");
  EXPECT_EQ(LowerCase("КЛЮЧ ЁЖ Ђ ΣΟΦΌΣ ΆΈΉΊΎΏ"), "ключ ёж ђ σοφόσ άέήίύώ");
  EXPECT_EQ(LowerCase("A\xFF" "B\xC3"), "a\xFF" "b\xC3");
  // Every small letter that has a capital comes back from it; the final
  // sigma comes back as the plain one.
  for (const char* small : {"àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ", "āăąćĉċčďđēĕėęěĝğġģĥħĩīĭįĳĵķ",
                            "ĺļľŀłńņňŋōŏőœŕŗřśŝşšţťŧũūŭůűųŵŷźżž", "άέήίαβγδεζηθικλμνξοπρστυφχψωϊϋόύώ",
                            "абвгдежзийклмнопрстуфхцчшщъыьэюяѐёђѓєѕіїјљњћќѝўџ"})
    EXPECT_EQ(small, LowerCase(UpperCase(small)));
  EXPECT_EQ("σ", LowerCase(UpperCase("ς")));
}

TEST(TextTest, CapitalizeFirstTouchesTheFirstCharacterOnly) {
  EXPECT_EQ("Check stock", CapitalizeFirst("check stock"));
  EXPECT_EQ("Élan vital", CapitalizeFirst("élan vital"));
  EXPECT_EQ("Жд", CapitalizeFirst("жд"));
  EXPECT_EQ("1abc", CapitalizeFirst("1abc"));
  EXPECT_EQ("", CapitalizeFirst(""));
}

}  // namespace
}  // namespace nivarel
