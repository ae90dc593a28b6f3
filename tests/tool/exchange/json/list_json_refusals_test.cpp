// Channel files that no JSON is made of, and JSON that no channel file is made of: what is wrong says where. Values at
// the ends of their ranges are taken.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <limits>
#include <stdexcept>
#include <string>

#include "chlist/json/json.h"
#include "tool/exchange/json/list_json_host.h"

namespace {

using namespace tool_test::list_json;

TEST_F(ListJson, AFileThatEndsEarlyOrIsOfAnotherLayoutIsRefused) {
  bytes file = small().data;
  file.pop_back();
  EXPECT_THROW(json_of(file), std::runtime_error);
  file = small().data;
  for (const int version : {7, 8}) {
    file[0] = static_cast<char>(version);
    try {
      json_of(file);
      FAIL();
    } catch (const std::runtime_error &error) {
      EXPECT_EQ(error.what(),
                "list.dat: is of version " + std::to_string(version) + ", not 10: `chlist convert` makes one of it");
    }
  }
}

TEST_F(ListJson, TextThatIsNoJsonSaysWhere) {
  EXPECT_TRUE(refusal("{\n\"format\": ").starts_with("is no JSON: parse error at line 2, column ")) << refusal("{\n\"");
  EXPECT_EQ(refusal("{\"version\": 1e999}"), "is no JSON: number overflow parsing '1e999'");
  EXPECT_EQ(refusal("[]"), "$: is no object with \"format\": \"channel file\"");
  EXPECT_EQ(refusal("{\"format\": 1}"), "$: is no object with \"format\": \"channel file\"");
}

TEST_F(ListJson, MissingFieldsAreNamed) {
  EXPECT_EQ(refusal_without("", "version"), "$: has no version");
  EXPECT_EQ(refusal_without("", "vch"), "$: has no vch");
  EXPECT_EQ(refusal_without("", "networks"), "$: has no networks");
  EXPECT_EQ(refusal_without("/networks/0", "transponders"), "$.networks[0]: has no transponders");
  EXPECT_EQ(refusal_without("/networks/0/transponders/0/services/0", "service_id"),
            "$.networks[0].transponders[0].services[0]: has no service_id");
}

TEST_F(ListJson, ValuesOfWrongTypesAndRangesAreNamed) {
  const std::string service = "/networks/0/transponders/0/services/0";
  const std::string at = "$.networks[0].transponders[0].services[0]";
  EXPECT_EQ(refusal_of("/sort", 1), "$.sort: is no field");
  EXPECT_EQ(refusal_of("/version", "10"), "$.version: is no whole number within -32768..32767");
  EXPECT_EQ(refusal_of("/version", 10.5), "$.version: is no whole number within -32768..32767");
  EXPECT_EQ(refusal_of("/version", 32768), "$.version: is no whole number within -32768..32767");
  EXPECT_EQ(refusal_of("/version", -32769), "$.version: is no whole number within -32768..32767");
  EXPECT_EQ(refusal_of("/bouquet_id", -1), "$.bouquet_id: is no whole number within 0..65535");
  EXPECT_EQ(refusal_of("/bouquet_id", 65536), "$.bouquet_id: is no whole number within 0..65535");
  EXPECT_EQ(refusal_of(service + "/frequency", json::parse("9223372036854775808")),
            at + ".frequency: is no whole number within -9223372036854775808..9223372036854775807");
  EXPECT_EQ(refusal_of(service + "/name", 5), at + ".name: is neither text nor {\"hex\": ...}");
  EXPECT_EQ(refusal_of(service + "/name", {{"hex", "0"}}),
            at + ".name.hex: is no text of two hexadecimal digits for each byte");
  EXPECT_EQ(refusal_of(service + "/name", {{"hex", 0}}), at + ".name.hex: is no text of hexadecimal digits");
  EXPECT_EQ(refusal_of(service + "/name", std::string(97, 'n')), at + ".name: is 97 bytes long; the field holds 96");
  EXPECT_EQ(refusal_of(service + "/name", std::string("a\0b", 3)), at + ".name: holds a NUL byte");
  EXPECT_EQ(refusal_of(service + "/reserved_262", "00"), at + ".reserved_262: gives 1 bytes instead of 24");
  EXPECT_EQ(refusal_of(service, 1), at + ": is no object");
  EXPECT_EQ(refusal_of("/networks", 1), "$.networks: is no array");
  EXPECT_EQ(refusal_of("/vnumber", "x"), "$.vnumber: is no whole number within -32768..32767");
  EXPECT_EQ(refusal_of("/favorite_vch/0", 1), "$.favorite_vch[0]: is no array of at most 40 elements");
}

TEST_F(ListJson, ValuesAtTheEndsOfTheirRangesAreTaken) {
  const std::string service = "/networks/0/transponders/0/services/0";
  for (const int version : {-32768, 32767}) {
    EXPECT_EQ(refusal_of("/version", version), "");
  }
  EXPECT_EQ(refusal_of(service + "/frequency", std::numeric_limits<std::int64_t>::min()), "");
  EXPECT_EQ(refusal_of(service + "/frequency", std::numeric_limits<std::int64_t>::max()), "");
  EXPECT_EQ(refusal_of(service + "/name", std::string(96, 'n')), "");
  EXPECT_EQ(refusal_of(service + "/name", ""), "");
}

TEST_F(ListJson, ArraysEndAtTheirCapacity) {
  json object = json::parse(json_of(small().data));
  const json entry = object["vch"][0];
  const auto entries = [&entry](std::size_t size) { return json(std::vector<json>(size, entry)); };
  constexpr std::size_t capacity = MAX_PROMO_CHANNEL;
  for (const std::size_t size : {capacity - 1, capacity}) {
    object["promo_vch"] = entries(size);
    EXPECT_EQ(refusal(object.dump()), "");
  }
  object["promo_vch"] = entries(capacity + 1);
  EXPECT_EQ(refusal(object.dump()), "$.promo_vch: has 11 elements; the file holds 10");
  object["promo_vch"] = json::array();
  object["favorite_vch"] = std::vector<json>(MAX_FAV + 1, json::array());
  EXPECT_EQ(refusal(object.dump()), "$.favorite_vch: has 21 elements; the file holds 20");
}

// Takes several seconds when a member is sought among all others.
TEST_F(ListJson, AnObjectOfManyMembersTakesLittleTime) {
  std::string text = "{\"format\": \"channel file\"";
  for (int n = 0; n < 50'000; ++n) {
    text += ", \"x" + std::to_string(n) + "\": 1";
  }
  const std::clock_t begin = std::clock();

  EXPECT_EQ(refusal(text + "}"), "$.x0: is no field");

  EXPECT_LT(std::clock() - begin, 5 * CLOCKS_PER_SEC);
}

TEST_F(ListJson, PatchesStayWithinTheFile) {
  const bytes file = small().data;
  json object = json::parse(json_of(file));
  object["patches"] = json::array({json::array({file.size(), "ff"})});
  EXPECT_EQ(channel_file_of_json(object.dump()), text_of(file) + '\xFF');

  object["patches"] = json::array({json::array({file.size() + 1, "ff"})});
  EXPECT_EQ(refusal(object.dump()), "$.patches[0]: begins at " + std::to_string(file.size() + 1) +
                                        ", behind the file's end at " + std::to_string(file.size()));
  object["patches"] = json::array({json::array({-1, "ff"})});
  EXPECT_EQ(refusal(object.dump()), "$.patches[0][0]: is no whole number within 0..4294967295");
  object["patches"] = json::array({json::array({0, "f"})});
  EXPECT_EQ(refusal(object.dump()), "$.patches[0][1]: is no text of two hexadecimal digits for each byte");
  object["patches"] = json::array({1});
  EXPECT_EQ(refusal(object.dump()), "$.patches[0]: is no pair of an offset and hexadecimal bytes");
}

}  // namespace
