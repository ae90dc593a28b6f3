// Channel files as JSON: every byte of any file comes back, and people can read it.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>

#include "chlist/exchange/json/list_json_codec.h"
#include "tool/exchange/json/list_json_host.h"

namespace {

using namespace tool_test::list_json;

namespace fs = std::filesystem;

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
    EXPECT_TRUE(channel_file_of_json(chlist::json_of_channel_file(chlist::channel_file(entry.path()))) == file) << name;
    ++carried;
  }
  EXPECT_GE(carried, 8U);
}

TEST_F(ListJson, WhatNoFieldSaysIsAPatch) {
  channel_file file = small();
  fill_pointer_slots(file.data, file.records, '\x7F');
  file.data.insert(file.data.end(), {'e', 'n', 'd'});

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_NE(json_of(file.data).find("\"patches\": [\n  [80104,\"7f7f7f7f7f7f7f7f\"],\n"), std::string::npos);
}

TEST_F(ListJson, ReservedBytesAndWrongLengthsAreFields) {
  channel_file file = small();
  file.set_last(record_kind::service, service_field::reserved_pid + 2, 1, 0xAB);
  file.set_last(record_kind::service, service_field::name_len, 2, 99);

  const std::string text = json_of(file.data);

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_EQ(text.find("patches"), std::string::npos) << text;
  EXPECT_NE(text.find("\"reserved_262\":\"ab0000"), std::string::npos) << text;
  EXPECT_NE(text.find("\"name\":\"News\",\"name_len\":99"), std::string::npos) << text;
}

TEST_F(ListJson, CountsOutsideTheirArraysAreSaid) {
  channel_file file = small();
  file.set(list_field::provider + test_support::group_size + group_field::id, 2, 33);  // behind the last one
  file.set(list_field::vnumber, 2, 0xFFFF);
  file.set(list_field::promo_vnumber, 2, 11);
  file.set(list_field::favorite_vnumber + (MAX_FAV - 1) * 2, 2, 41);

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
  file.set_last(record_kind::service, service_field::name, 1, 0xE9);

  const std::string text = json_of(file.data);

  EXPECT_NE(text.find("{\"name\":{\"hex\":\"e9657773\"},"), std::string::npos) << text;
  EXPECT_TRUE(is_carried(file.data));
}

// A patch over a field would be laid over what somebody writes there, too.
TEST_F(ListJson, WhatStandsBehindATextIsPartOfItsField) {
  channel_file file = small();
  file.set_last(record_kind::service, service_field::name + 6, 1, 'x');

  const std::string text = json_of(file.data);

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_EQ(text.find("patches"), std::string::npos) << text;
  EXPECT_NE(text.find("{\"name\":{\"hex\":\"4e657773000078\"},"), std::string::npos) << text;
}

// "Łódź" in ISO 8859-2, whose selector holds a byte of zero, and "МAB" in UCS-2, whose letters may.
TEST_F(ListJson, TextsWithZeroBytesInTheirTablesAreWhole) {
  for (const std::string_view name :
       {std::string_view("\x10\x00\x02\xA3\xF3\x64\xBC", 7), std::string_view("\x11\x04\x1C\x00\x41\x00\x42", 7)}) {
    channel_file file = small();
    for (std::size_t at = 0; at < name.size(); ++at) {
      file.set_last(record_kind::service, service_field::name + at, 1, static_cast<unsigned char>(name[at]));
    }
    file.set_last(record_kind::service, service_field::name_len, 2, name.size());

    json object = json::parse(json_of(file.data));
    json &service = object["networks"][0]["transponders"][0]["services"][0];

    EXPECT_TRUE(is_carried(file.data));
    EXPECT_FALSE(object.contains("patches"));
    EXPECT_EQ(service["name"]["hex"], chlist::hex_of(std::as_bytes(std::span(name))));
    EXPECT_FALSE(service.contains("name_len"));

    service["name"] = "Foo Television";
    channel_file renamed = small();
    for (std::size_t at = 0; at < 14; ++at) {
      renamed.set_last(record_kind::service, service_field::name + at, 1, "Foo Television"[at]);
    }
    renamed.set_last(record_kind::service, service_field::name_len, 2, 14);
    EXPECT_EQ(channel_file_of_json(object.dump()), text_of(renamed.data));
  }
}

TEST_F(ListJson, TextMayFillItsField) {
  channel_file file = small();
  for (std::size_t at = 0; at < 96; ++at) {
    file.set_last(record_kind::service, service_field::name + at, 1, 'n');
  }
  for (std::size_t at = 0; at < 64; ++at) {
    file.set_last(record_kind::network, network_field::network_name + at, 1, 'w');
  }

  EXPECT_TRUE(is_carried(file.data));
  EXPECT_EQ(json_of(file.data).find("patches"), std::string::npos);
}

// A byte of the version, or of a count of the records that follow.
bool is_framing(record_kind kind, std::size_t at) {
  const auto is_within = [at](std::size_t field) { return at == field || at == field + 1; };
  return (kind == record_kind::list && (is_within(list_field::version) || is_within(list_field::network_num))) ||
         (kind == record_kind::network && is_within(network_field::tp_num)) ||
         (kind == record_kind::transponder && is_within(transponder_field::rch_num));
}

TEST_F(ListJson, AnyBytesComeBack) {
  std::mt19937 random(7);
  const auto below = [&random](std::size_t end) { return random() % end; };
  for (int round = 0; round < 8; ++round) {
    channel_file file;
    for (std::size_t n = below(12); n > 0; --n) {
      file.service({.ts_id = static_cast<std::uint16_t>(below(3)), .service_id = static_cast<std::uint16_t>(n)});
    }
    // Anywhere but in what frames the records.
    for (std::size_t n = below(300); n > 0; --n) {
      const auto &record = file.records[below(file.records.size())];
      const std::size_t at = below(record.size);
      if (!is_framing(record.kind, at)) {
        file.data[record.offset + at] = static_cast<char>(random());
      }
    }
    for (std::size_t n = below(3) * 10; n > 0; --n) {
      file.data.push_back(static_cast<char>(random()));
    }
    EXPECT_TRUE(is_carried(file.data)) << round;
  }
}

}  // namespace
