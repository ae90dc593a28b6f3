// Channel files as JSON: every byte of any file comes back, people can read it, and what is wrong says where.
#include "chlist/exchange/json/list_json.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "chlist/report.h"
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

namespace fs = std::filesystem;

using chlist::channel_file_of_json;
using chlist::json;
using test_support::bytes;
using test_support::channel_file;
using test_support::record_kind;
using test_support::service_data;

std::string text_of(const bytes &file) { return {file.begin(), file.end()}; }

class ListJson : public ::testing::Test {
 protected:
  std::string json_of(const bytes &file) {
    test_support::write_file(path(), file);
    return chlist::json_of_channel_file(path());
  }

  // Whether a file comes through JSON with every byte.
  bool is_carried(const bytes &file) { return channel_file_of_json(json_of(file)) == text_of(file); }

  // What a JSON text is refused with.
  static std::string refusal(const std::string &text) {
    try {
      channel_file_of_json(text);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "";
  }

  // The same with one value of a small list's JSON changed, or taken away.
  std::string refusal_of(const std::string &pointer, const json &value) {
    json object = json::parse(json_of(small().data));
    object[json::json_pointer(pointer)] = value;
    return refusal(object.dump());
  }
  std::string refusal_without(const std::string &parent, const std::string &key) {
    json object = json::parse(json_of(small().data));
    object[json::json_pointer(parent)].erase(key);
    return refusal(object.dump());
  }

  static channel_file small() {
    const service_data news = {.service_id = 0x1001, .name = "News"};
    channel_file file;
    file.service(news).entry(VIEW_ALL, news, 7).entry(VIEW_TV, news, 7).entry(VIEW_FAVOURITE, news, 7);
    file.group(GROUP_PROVIDER, 1, "Free").group(GROUP_FAV, 0, "Films");
    return file;
  }

  [[nodiscard]] std::string path() const { return dir_.path() + "list.dat"; }

 private:
  test_support::temp_dir dir_;
  test_support::log_capture quiet_{-1};
};

TEST_F(ListJson, RecordsAreLinesOfNamedFields) {
  const std::string text = json_of(small().data);

  EXPECT_TRUE(text.starts_with("{\n \"format\": \"channel file\",\n \"version\": 10,\n")) << text;
  EXPECT_NE(text.find("\n  {\"id\":1,\"name\":\"Free\"}\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\n  {\"major_ch_num\":7,\"net_index\":1,\"network_id\":1,\"ts_id\":100,\"frequency\":11000000,"
                      "\"polarisation\":0,\"service_id\":4097}\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("{\"name\":\"News\",\"net_index\":1,\"network_id\":1,\"ts_id\":100,\"frequency\":11000000,"
                      "\"polarisation\":0,\"service_id\":4097,\"service_type\":1,\"source_type\":1"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find("patches"), std::string::npos) << text;
}

TEST_F(ListJson, AnEmptyListAndASmallOneComeBack) {
  EXPECT_TRUE(is_carried(channel_file().data));
  EXPECT_TRUE(is_carried(small().data));
}

TEST_F(ListJson, EveryGoldenFileOfThisLayoutComesBack) {
  std::size_t carried = 0;
  for (const fs::directory_entry &entry : fs::directory_iterator(CHANNEL_TESTS_DIR "/golden")) {
    const std::string name = entry.path().filename();
    if (!name.ends_with(".dat") || name.starts_with("channel_v7") || name.starts_with("channel_v8")) {
      continue;
    }
    const std::string file = test_support::read_file(entry.path());
    EXPECT_TRUE(channel_file_of_json(chlist::json_of_channel_file(entry.path())) == file) << name;
    ++carried;
  }
  EXPECT_GE(carried, 8U);
}

TEST_F(ListJson, WhatNoFieldSaysIsAPatch) {
  channel_file file = small();
  fill_pointer_slots(file.data, file.records, '\x7F');
  file.set_last(record_kind::service, 9 + 20, 1, 'x');  // behind the name's end
  file.data.insert(file.data.end(), {'e', 'n', 'd'});

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_NE(json_of(file.data).find("\"patches\": [\n  [80104,\"7f7f7f7f7f7f7f7f\"],\n"), std::string::npos);
}

TEST_F(ListJson, ReservedBytesAndWrongLengthsAreFields) {
  channel_file file = small();
  file.set_last(record_kind::service, 262, 1, 0xAB);
  file.set_last(record_kind::service, 106, 2, 99);  // name_len

  const std::string text = json_of(file.data);

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_EQ(text.find("patches"), std::string::npos) << text;
  EXPECT_NE(text.find("\"reserved_262\":\"ab0000"), std::string::npos) << text;
  EXPECT_NE(text.find("\"name\":\"News\",\"name_len\":99"), std::string::npos) << text;
}

TEST_F(ListJson, CountsOutsideTheirArraysAreSaid) {
  channel_file file = small();
  file.set(12 + 104 + 2, 2, 33);  // the provider behind the last one
  file.set(200'112, 2, 0xFFFF);   // vnumber -1
  file.set(459'608, 2, 11);       // promo_vnumber
  file.set(339'324 + 38, 2, 41);  // of the last favourite group

  const std::string text = json_of(file.data);

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_EQ(text.find("provider_num"), std::string::npos) << text;
  EXPECT_NE(text.find("\"vch\": [],\n \"vnumber\": -1"), std::string::npos) << text;
  EXPECT_NE(text.find("\"promo_vnumber\": 11"), std::string::npos) << text;
  EXPECT_NE(text.find("\"favorite_vnumber\": [1,0,"), std::string::npos) << text;
  EXPECT_NE(text.find("[118,\"21\"]"), std::string::npos) << text;
}

TEST_F(ListJson, TextThatIsNotUtf8IsHexadecimal) {
  channel_file file = small();
  file.set_last(record_kind::service, 9, 1, 0xE9);

  const std::string text = json_of(file.data);

  EXPECT_NE(text.find("{\"name\":{\"hex\":\"e9657773\"},"), std::string::npos) << text;
  EXPECT_TRUE(is_carried(file.data));
}

TEST_F(ListJson, TextMayFillItsField) {
  channel_file file = small();
  for (std::size_t at = 0; at < 96; ++at) {
    file.set_last(record_kind::service, 9 + at, 1, 'n');
  }
  for (std::size_t at = 0; at < 64; ++at) {
    file.set_last(record_kind::network, 12 + at, 1, 'w');
  }

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_EQ(json_of(file.data).find("patches"), std::string::npos);
}

TEST_F(ListJson, AnyBytesComeBack) {
  std::mt19937 random(7);
  const auto below = [&random](std::size_t end) { return random() % end; };
  for (int round = 0; round < 8; ++round) {
    channel_file file;
    for (std::size_t n = below(12); n > 0; --n) {
      file.service({.ts_id = static_cast<std::uint16_t>(below(3)), .service_id = static_cast<std::uint16_t>(n)});
    }
    // Anywhere but in the counts that frame the records.
    for (std::size_t n = below(300); n > 0; --n) {
      const auto &record = file.records[below(file.records.size())];
      const std::size_t at = below(record.size);
      const bool is_count = (record.kind == record_kind::list && at >= 459'610 && at < 459'612) ||
                            (record.kind == record_kind::network && at >= 76 && at < 78) ||
                            (record.kind == record_kind::transponder && at >= 18 && at < 20);
      if (!is_count && !(record.kind == record_kind::list && at < 2)) {
        file.data[record.offset + at] = static_cast<char>(random());
      }
    }
    for (std::size_t n = below(3) * 10; n > 0; --n) {
      file.data.push_back(static_cast<char>(random()));
    }
    EXPECT_TRUE(is_carried(file.data)) << round;
  }
}

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
      EXPECT_EQ(error.what(), "is of version " + std::to_string(version) + ": convert it first");
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
  EXPECT_EQ(refusal_of(service + "/frequency", std::uint64_t{1} << 63U),
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
  for (const std::size_t size : {MAX_PROMO_CHANNEL - 1, +MAX_PROMO_CHANNEL}) {
    object["promo_vch"] = json::array_t(size, entry);
    EXPECT_EQ(refusal(object.dump()), "");
  }
  object["promo_vch"] = json::array_t(MAX_PROMO_CHANNEL + 1, entry);
  EXPECT_EQ(refusal(object.dump()), "$.promo_vch: has 11 elements; the file holds 10");
  object["promo_vch"] = json::array();
  object["favorite_vch"] = json::array_t(MAX_FAV + 1, json::array());
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
  object["patches"] = {{file.size(), "ff"}};
  EXPECT_EQ(channel_file_of_json(object.dump()), text_of(file) + '\xFF');

  object["patches"] = {{file.size() + 1, "ff"}};
  EXPECT_EQ(refusal(object.dump()), "$.patches[0]: begins at " + std::to_string(file.size() + 1) +
                                        ", behind the file's end at " + std::to_string(file.size()));
  object["patches"] = {{-1, "ff"}};
  EXPECT_EQ(refusal(object.dump()), "$.patches[0][0]: is no whole number within 0..4294967295");
  object["patches"] = {{0, "f"}};
  EXPECT_EQ(refusal(object.dump()), "$.patches[0][1]: is no text of two hexadecimal digits for each byte");
  object["patches"] = json::array({1});
  EXPECT_EQ(refusal(object.dump()), "$.patches[0]: is no pair of an offset and hexadecimal bytes");
}

}  // namespace
