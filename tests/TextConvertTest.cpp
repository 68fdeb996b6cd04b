// Numbers and booleans as the settings files and cell texts write them.
#include <gtest/gtest.h>

#include "HostError.h"
#include "TextConvert.h"

namespace nivarel {
namespace {

using namespace rules;

TEST(TextConvertTest, NumericTextsAsUsersWriteThem) {
  for (const char* yes : {"12", " 12 ", "-3", "+3", "3-", "1,234.5", "1.5e3", "2D2", ".5", "$12", "-$12", "(12)",
                          "&H1F", "&o17", "0"})
    EXPECT_TRUE(IsNumeric(yes)) << yes;
  for (const char* no : {"", " ", "-", ".", "1.2.3", "e5", "12a", "1e", "&H", "&HG", "--1", "(1", ",5", "1 2"})
    EXPECT_FALSE(IsNumeric(no)) << no;
  EXPECT_DOUBLE_EQ(-12, ToDouble("(12)"));
  EXPECT_DOUBLE_EQ(1234.5, ToDouble("1,234.5"));
  EXPECT_DOUBLE_EQ(31, ToDouble("&H1F"));
}

TEST(TextConvertTest, TypedValuesRoundHalvesToEvenAndRefuseBadText) {
  EXPECT_EQ(2, ToInt16("2.5"));
  EXPECT_EQ(4, ToInt16("3.5"));
  EXPECT_EQ(-4108, ToInt32("-4108"));
  EXPECT_TRUE(ToBool("true"));
  EXPECT_FALSE(ToBool(" False "));
  EXPECT_TRUE(ToBool("-1"));
  EXPECT_FALSE(ToBool("0"));
  EXPECT_FLOAT_EQ(8.5f, ToSingle("8.5"));
  auto number = [](auto f, const char* text) {
    try {
      f(text);
    } catch (const office::HostError& e) {
      return e.Number();
    }
    return 0;
  };
  EXPECT_EQ(13, number(ToInt16, "abc"));
  EXPECT_EQ(13, number(ToBool, "yes"));
  EXPECT_EQ(13, number(ToInt32, ""));
  EXPECT_EQ(6, number(ToInt16, "32768"));
  EXPECT_EQ(0, number(ToInt16, "-32768"));
  EXPECT_EQ(6, number(ToInt32, "3e10"));
  EXPECT_EQ("10.5", FromNumber(10.5));
  EXPECT_EQ("8", FromNumber(8.0f));
  EXPECT_EQ("True", FromBool(true));
}

}  // namespace
}  // namespace nivarel
