// The JSON writer carries unit replies (any bytes) and panel texts into dumps
// that other programs parse.
#include <gtest/gtest.h>

#include "basic/json.h"

namespace amp {
namespace {

TEST(Json, QuotesEveryByteIntoValidText) {
  EXPECT_EQ(JsonQuote("a\"b\\c"), "\"a\\\"b\\\\c\"");
  EXPECT_EQ(JsonQuote("\r\n\t"), "\"\\r\\n\\t\"");
  // Frame bytes of the protocol become escapes.
  EXPECT_EQ(JsonQuote(std::string("\002A1\003", 4)), "\"\\u0002A1\\u0003\"");
  EXPECT_EQ(JsonQuote("\x7f"), "\"\\u007f\"");
  // Well-formed UTF-8 passes whole; a stray or cut-off byte is escaped alone.
  EXPECT_EQ(JsonQuote("25 \302\260C"), "\"25 \302\260C\"");
  EXPECT_EQ(JsonQuote("\260C"), "\"\\u00b0C\"");
  EXPECT_EQ(JsonQuote("x\xe2\x82"), "\"x\\u00e2\\u0082\"");
  EXPECT_EQ(JsonQuote("\xc0\x80"), "\"\\u00c0\\u0080\"");  // overlong form
}

TEST(Json, WriterPlacesCommasAndKeys) {
  JsonWriter w;
  w.BeginObject();
  w.Key("a").Int(-3);
  w.Key("b").BeginArray().String("x").Bool(true).Null().BeginObject().EndObject().EndArray();
  w.Key("c").Number(2.5);
  w.Key("d").Raw("{\"e\":1}");
  w.EndObject();
  EXPECT_EQ(w.str(), R"({"a":-3,"b":["x",true,null,{}],"c":2.5,"d":{"e":1}})");
}

TEST(Json, NumbersIgnoreTheLocaleAndNonFiniteBecomesNull) {
  JsonWriter w;
  w.BeginArray().Number(0.1).Number(1e300 * 1e300).Number(-0.0).EndArray();
  EXPECT_EQ(w.str(), "[0.1,null,-0]");
}

}  // namespace
}  // namespace amp
