// A list of a receiver and what a channel search found, and `chlist merge` run on both.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "chlist/json/json.h"
#include "support/channel_file.h"
#include "tool/program.h"

namespace merge_test {

using chlist::json;
using test_support::channel_file;
using test_support::majors;
using test_support::read_file;
using test_support::service_data;
using test_support::service_ids;
using test_support::write_file;
using tool_test::has_line;
using tool_test::lines_of;
using tool_test::program_result;
using tool_test::run_program;

namespace fs = std::filesystem;

inline const service_data news = {.service_id = 1, .name = "News"};
inline const service_data films = {.service_id = 2, .name = "Films"};
inline const service_data music = {.service_id = 5, .service_type = SERVICE_TYPE_RADIO, .name = "Music"};
inline const service_data data = {.service_id = 6, .service_type = 12, .name = "Data"};

// News and films with numbers of their own, films a favourite.
inline channel_file own_list() {
  channel_file file;
  file.service(news).service(films).group(GROUP_FAV, 0, "Best");
  file.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, films, 102).entry(VIEW_TV, news, 101).entry(VIEW_TV, films, 102);
  file.entry(VIEW_FAVOURITE, films, 102);
  return file;
}

// As a channel search leaves it; its views do not matter.
inline channel_file scan_of(const std::vector<service_data> &services) {
  channel_file file;
  for (const service_data &service : services) {
    file.service(service);
  }
  return file;
}

class MergeTool : public test_support::file_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    write_list(own_list());
    write_scan(scan_of({news, music}));
  }

  void write_list(const channel_file &file) const { write_file(path("list.dat"), file.data); }
  void write_scan(const channel_file &file) const { write_file(path("scan.dat"), file.data); }

  program_result run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {CHLIST_PROGRAM, "merge"});
    return run_program(arguments, dir.path());
  }

  program_result merge(const std::vector<std::string> &more = {}) const {
    std::vector<std::string> arguments = {"list.dat", "scan.dat", "-o", "out.dat"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  json merged_json() const { return json::parse(merge({"--json"}).out); }

  void expect_refused(const std::vector<std::string> &arguments, const std::string &error) const {
    const std::vector<std::string> before = files();
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: " + error + "\n");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(files(), before);
  }

  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(dir.path())) {
      names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
  }
};

}  // namespace merge_test
