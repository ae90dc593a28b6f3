// JSON values: what they are made of, and how they come from a text and become one.
#include "chlist/json/json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using chlist::json;
using chlist::json_error;

std::string refusal_of(const std::string &text) {
  try {
    static_cast<void>(json::parse(text));
  } catch (const json_error &error) {
    return error.what();
  }
  return "";
}

TEST(Json, MembersKeepTheirOrder) {
  json object = {{"b", 1}, {"a", "text"}};
  object["c"] = nullptr;
  object.put("d", json::array({true, 2}));

  EXPECT_EQ(object.dump(), R"({"b":1,"a":"text","c":null,"d":[true,2]})");
}

TEST(Json, AMemberThatIsThereIsReplacedAndErased) {
  json object = {{"a", 1}, {"b", 2}};
  object["a"] = 3;
  EXPECT_EQ(object, (json{{"a", 3}, {"b", 2}}));

  object.erase("a");

  EXPECT_EQ(object, (json{{"b", 2}}));
  EXPECT_FALSE(object.contains("a"));
}

TEST(Json, HasAsManyPartsAsItHoldsAndAScalarOne) {
  EXPECT_EQ(json().size(), 0U);
  EXPECT_EQ(json("").size(), 1U);
  EXPECT_EQ(json(0).size(), 1U);
  EXPECT_EQ(json::array({1, 2}).size(), 2U);
  EXPECT_EQ((json{{"a", 1}}).size(), 1U);
  EXPECT_TRUE(json::array().empty());
  EXPECT_TRUE(json::object().empty());
}

TEST(Json, IsIndentedByLevels) {
  const json value = {{"list", json::array({1, json::array()})}, {"none", json::object()}};

  EXPECT_EQ(value.dump(2), "{\n  \"list\": [\n    1,\n    []\n  ],\n  \"none\": {}\n}");
}

TEST(Json, WhatIsReadIsWrittenAgain) {
  for (const std::string text :
       {"null", "true", "false", "0", "-1", "9223372036854775807", "-9223372036854775808", "1.5", "\"\"",
        "\"a\\\"b\\\\\"", "\"\\u0007\"", "\"\xC3\xA9\"", "[]", "{}", "[[1],{\"a\":{\"b\":[]}}]"}) {
    EXPECT_EQ(json::parse(text).dump(), text);
  }
}

TEST(Json, IntegersBeyondThoseWithASignAreNone) {
  EXPECT_TRUE(json::parse("9223372036854775807").is_integer());
  EXPECT_FALSE(json::parse("9223372036854775808").is_integer());
  EXPECT_FALSE(json::parse("-9223372036854775809").is_integer());
  EXPECT_EQ(json(std::numeric_limits<std::uint32_t>::max()).as_integer(), 4'294'967'295);
}

TEST(Json, BytesThatAreNotUtf8AreReplaced) {
  EXPECT_EQ(json("a\xFF").dump(), "\"a\xEF\xBF\xBD\"");
  EXPECT_EQ(json("\xC3\xA9\xFF\x7F").dump_ascii(), "\"\\u00e9\\ufffd\\u007f\"");
}

TEST(Json, AKeyThatStandsTwiceIsRefused) {
  EXPECT_EQ(refusal_of(R"({"a": 1, "b": 2, "a": 3})"), "an object has two members 'a'");
  EXPECT_EQ(refusal_of(R"([{"a": 1}, {"a": 1}])"), "");
}

TEST(Json, NestsAsDeepAsItSaysAndNoDeeper) {
  const auto nested = [](std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); };

  EXPECT_EQ(refusal_of(nested(63)), "");
  EXPECT_EQ(refusal_of(nested(64)), "");
  EXPECT_EQ(refusal_of(nested(65)), "it nests more than 64 levels");
  EXPECT_EQ(refusal_of(std::string(1'000'000, '[')), "it nests more than 64 levels");
}

TEST(Json, ATextThatIsNoneSaysWhere) {
  EXPECT_TRUE(refusal_of("[1,\n x]").starts_with("parse error at line 2, column 2: syntax error"));
  EXPECT_TRUE(refusal_of("").starts_with("parse error at line 1, column 1: "));
  EXPECT_TRUE(refusal_of("1 2").starts_with("parse error at line 1, column 3: "));
}

}  // namespace
