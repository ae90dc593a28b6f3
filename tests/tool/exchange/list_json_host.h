// A channel file as JSON and back, and what a JSON text is refused with.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "chlist/exchange/json/list_json.h"
#include "chlist/report.h"
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace tool_test::list_json {

using chlist::channel_file_of_json;
using chlist::json;
using test_support::bytes;
using test_support::channel_file;
using test_support::record_kind;
using test_support::service_data;

inline std::string text_of(const bytes &file) { return {file.begin(), file.end()}; }

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

}  // namespace tool_test::list_json
