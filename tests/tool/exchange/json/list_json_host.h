// A channel file as JSON and back, and what a JSON text is refused with.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>

#include "chlist/exchange/json/list_json.h"
#include "chlist/fields/described.h"
#include "chlist/json/json.h"
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace tool_test::list_json {

using chlist::channel_file_of_json;
using chlist::json;
using test_support::bytes;
using test_support::channel_file;
using test_support::record_kind;
using test_support::service_data;

using namespace test_support::record_fields;

inline std::string text_of(const bytes &file) { return {file.begin(), file.end()}; }

class ListJson : public ::testing::Test {
 protected:
  std::string json_of(const bytes &file) {
    const std::span<const std::byte> whole = std::as_bytes(std::span(file));
    return chlist::json_of_channel_file(chlist::channel_file("list.dat", {whole.begin(), whole.end()}));
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

  // The same with one value of a small list's JSON changed, or taken away. Its place is given as "/networks/0".
  std::string refusal_of(const std::string &place, const json &value) {
    json object = json::parse(json_of(small().data));
    value_at(object, place) = value;
    return refusal(object.dump());
  }
  std::string refusal_without(const std::string &parent, const std::string &key) {
    json object = json::parse(json_of(small().data));
    value_at(object, parent).erase(key);
    return refusal(object.dump());
  }

  static channel_file small() {
    const service_data news = {.service_id = 0x1001, .name = "News"};
    channel_file file;
    file.service(news).entry(VIEW_ALL, news, 7).entry(VIEW_TV, news, 7).entry(VIEW_FAVOURITE, news, 7);
    file.group(GROUP_PROVIDER, 1, "Free").group(GROUP_FAV, 0, "Films");
    return file;
  }

 private:
  static json &value_at(json &object, const std::string &place) {
    json *value = &object;
    std::istringstream steps(place.substr(std::min<std::size_t>(place.size(), 1)));
    for (std::string step; std::getline(steps, step, '/');) {
      value = value->is_array() ? &(*value)[std::stoul(step)] : &(*value)[step];
    }
    return *value;
  }

  test_support::log_capture quiet_{-1};
};

}  // namespace tool_test::list_json
