// Conditions on services: what they take, and where they say that they cannot be understood.
#include "chlist/fields/where.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <tuple>

#include "chlist/text/pattern.h"

namespace {

using chlist::line_up;
using chlist::line_up_entry;
using chlist::line_up_service;
using chlist::replacing;
using chlist::service_row;
using chlist::where;

class Where : public testing::Test {
 protected:
  Where() {
    service.name = "Comédia HD";
    service.provider = "Sky North";
    service.fields.service_type = SERVICE_TYPE_RADIO;
    service.fields.frequency = 11'954'000;
    service.fields.flag = CHANNEL_FLAG_FTA;
    service.fields.video_pid = 0xFFFF;
    entry.number = {7, 0};
  }

  [[nodiscard]] bool takes(const std::string &condition) const {
    return where(condition).takes({.list = &list, .service = &service, .entry = &entry});
  }

  static std::string refusal_of(const std::string &condition) {
    try {
      const where read(condition);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "";
  }

  line_up list;
  line_up_service service;
  line_up_entry entry;
};

TEST_F(Where, ComparesTextsAsAWholeWithoutRegardToCaseAndAccents) {
  EXPECT_TRUE(takes("name='comedia hd'"));
  EXPECT_TRUE(takes("name=\"COMÉDIA HD\""));
  EXPECT_FALSE(takes("name=comedia"));
  EXPECT_TRUE(takes("name!=comedia"));
}

TEST_F(Where, ComparesValuesAsTheFieldsSpellThem) {
  EXPECT_TRUE(takes("type=radio"));
  EXPECT_TRUE(takes("type=2"));
  EXPECT_TRUE(takes("scrambled=yes"));
  EXPECT_TRUE(takes("locked=false"));
  EXPECT_TRUE(takes("video_pid=none"));
  EXPECT_FALSE(takes("video_pid!=none"));
  EXPECT_TRUE(takes("genre=none"));
  EXPECT_TRUE(takes("genre=\"\""));
  EXPECT_FALSE(takes("genre=Sport"));
  EXPECT_FALSE(takes("provider=none"));
}

TEST_F(Where, AFilterTakesAPartOfWhatIsShownAndEverySpellingOfAValue) {
  const auto has = [this](const std::string &text) {
    return where::has(text).takes({.list = &list, .service = &service, .entry = &entry});
  };
  EXPECT_TRUE(has("type=rad"));
  EXPECT_TRUE(has("type=2"));
  EXPECT_FALSE(has("type=1"));
  EXPECT_TRUE(has("polarisation=h"));
  EXPECT_TRUE(has("polarisation=L"));
  EXPECT_TRUE(has("polarisation=0"));
  EXPECT_FALSE(has("polarisation=R"));
  EXPECT_FALSE(has("polarisation=1"));
  service.fields.service_type = 0x11;
  EXPECT_TRUE(has("type=hd tv"));
  EXPECT_TRUE(has("type=17"));
  EXPECT_FALSE(has("type=2")) << "a number is the type, and no part of MPEG-2";
}

TEST_F(Where, NoneIsNoGroupAlsoWhereAGroupIsCalledSo) {
  service.provider = "none";
  EXPECT_FALSE(takes("provider=none"));
  EXPECT_TRUE(takes("provider!=None"));
  EXPECT_TRUE(takes("provider~^none$"));
  service.provider = "";
  EXPECT_TRUE(takes("provider=None"));
  EXPECT_TRUE(where::has("provider=none").takes({.list = &list, .service = &service, .entry = &entry}));
  service.name = "None";
  EXPECT_TRUE(takes("name=none"));
}

TEST_F(Where, InQuotesABackslashMakesACharacterOfTheQuoteAlone) {
  service.name = "The \"Late\" Show";
  EXPECT_TRUE(takes(R"(name="The \"Late\" Show" scrambled=yes)"));
  EXPECT_TRUE(takes(R"(name='The "Late" Show' scrambled=yes)"));
  service.name = "Day\\Night";
  EXPECT_TRUE(takes(R"(name="Day\Night")"));
  EXPECT_TRUE(takes(R"(name~"^Day\WNight$")"));
}

TEST_F(Where, FindsRegularExpressionsWithoutRegardToCaseAndAccents) {
  EXPECT_TRUE(takes("name~\"hd$\""));
  EXPECT_TRUE(takes("name~'^COME.IA\\b'"));
  EXPECT_TRUE(takes("name~\\D"));
  EXPECT_FALSE(takes("name~\\d"));
  EXPECT_TRUE(takes("name!~\"^hd\""));
}

TEST_F(Where, ComparesNumbersThatAreSet) {
  EXPECT_TRUE(takes("number<8"));
  EXPECT_FALSE(takes("number<7"));
  EXPECT_TRUE(takes("frequency>11953999"));
  EXPECT_FALSE(takes("frequency>11954000"));
  EXPECT_TRUE(takes("number>0"));
  EXPECT_TRUE(takes("number<40000"));
  entry.number = {-5, 0};
  EXPECT_TRUE(takes("number<1"));
  EXPECT_TRUE(takes("number>-6"));
  EXPECT_FALSE(takes("video_pid<8191"));
  EXPECT_FALSE(takes("video_pid>0"));
}

TEST_F(Where, AllThatStandsSideBySideMustBeMetAndOrBindsLess) {
  EXPECT_TRUE(takes("scrambled=yes type=radio"));
  EXPECT_FALSE(takes("scrambled=yes type=TV"));
  EXPECT_TRUE(takes("type=TV and locked=yes or scrambled=yes"));
  EXPECT_FALSE(takes("type=TV and (locked=yes or scrambled=yes)"));
  EXPECT_TRUE(takes("not type=TV not(locked=yes)"));
  EXPECT_TRUE(takes("NOT NOT type=radio"));
  EXPECT_TRUE(takes("provider = 'Sky North'"));
}

TEST_F(Where, ManySideBySideAreNotNested) {
  for (const std::string each : {"type=radio ", "(type=radio) ", "not type=TV "}) {
    std::string condition;
    for (int count = 0; count < 1000; ++count) {
      condition += each;
    }
    EXPECT_TRUE(takes(condition)) << each;
    EXPECT_FALSE(takes(condition + "type=TV")) << each;
  }
}

TEST_F(Where, AHundredMayBeNestedAndNoMore) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '(') + "type=radio" + std::string(depth, ')');
  };
  EXPECT_TRUE(takes(nested(99)));
  EXPECT_EQ(refusal_of(nested(100)), "--where, character 101: it is nested too deeply");
}

TEST_F(Where, KnowsAServiceWithoutAnEntry) {
  const service_row alone = {.list = &list, .service = &service};

  EXPECT_TRUE(where("type=radio").takes(alone));
  EXPECT_FALSE(where("number>0").takes(alone));
}

TEST_F(Where, ToldWithThePlaceAndTheNearestField) {
  EXPECT_EQ(refusal_of("type=TV provder=Sky").substr(0, 71),
            "--where, character 9: no field \"provder\": did you mean \"provider\"? Ther");
  EXPECT_EQ(refusal_of("name='é' video_pid=9000"),
            "--where, character 20: video_pid=\"9000\": VALUE is 0 to 8191, or none");
  EXPECT_EQ(refusal_of(""), "--where, character 1: a field is missing here");
  EXPECT_EQ(refusal_of("name"), "--where, character 5: behind name one of = != ~ !~ < > is missing");
  EXPECT_EQ(refusal_of("name="), "--where, character 6: a value is missing here");
  EXPECT_EQ(refusal_of("name='News"), "--where, character 6: this quote is not closed");
  EXPECT_EQ(refusal_of("(name=News"), "--where, character 1: this bracket is not closed");
  EXPECT_EQ(refusal_of("name=News)"), "--where, character 10: this bracket closes none");
  EXPECT_EQ(refusal_of("name=News or"), "--where, character 13: a field is missing here");
  EXPECT_EQ(refusal_of("name<5"), "--where, character 6: name is no number: < compares numbers");
  EXPECT_EQ(refusal_of("name~'['"), "--where, character 6: \"[\" is not a regular expression");
  EXPECT_EQ(refusal_of(std::string(200, '(')), "--where, character 101: it is nested too deeply");
}

TEST(Replacing, ReplacesTheFirstOrEachAndKeepsTheRestAsItIs) {
  EXPECT_EQ(replacing("/ hd$//").apply("Comédia HD"), "Comédia");
  EXPECT_EQ(replacing("/e/-/").apply("Été élevé"), "-té élevé");
  EXPECT_EQ(replacing("/e/-/g").apply("Été élevé"), "-t- -l-v-");
  EXPECT_EQ(replacing("/^(.*) hd$/HD \\1/").apply("Comédia HD"), "HD Comédia");
  EXPECT_EQ(replacing("|/|\\||").apply("A/B"), "A|B");
  EXPECT_EQ(replacing("/ +/ /g").apply("A   B  C"), "A B C");
  EXPECT_EQ(replacing("/x*/-/g").apply("ab"), "-a-b-");
  EXPECT_EQ(replacing("/x/y/").apply("News"), "News");
}

TEST(Replacing, KnowsWhatRegularExpressionsCanSay) {
  EXPECT_EQ(replacing("/\\bD\\d+\\b/-/g").apply("D1 D22 DX"), "- - DX");
  EXPECT_EQ(replacing("/(?:uh)?d?$/./").apply("News UHD"), "News .");
  EXPECT_EQ(replacing("/^(.)(.)?.*$/\\2\\1/").apply("М"), "М");
  EXPECT_EQ(replacing("/мир/\\0 \\0/").apply("МИР HD"), "МИР МИР HD");
  EXPECT_EQ(replacing("/./-/g").apply("Ł漢é"), "---");
}

TEST(Replacing, EndsWhenAnExpressionWouldTakeTooLong) {
  EXPECT_THROW(std::ignore = replacing("/^(a|a)*$/x/").apply(std::string(40, 'a') + "!"), std::runtime_error);
}

TEST(Replacing, RefusesWhatHasNotBothParts) {
  for (const char *text : {"", "/", "/HD", "/HD/", "//x/", "/HD//x"}) {
    EXPECT_THROW(replacing{text}, std::runtime_error) << text;
  }
}

}  // namespace
