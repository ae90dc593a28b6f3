// A plain list in files of earlier versions, and `chlist convert` run on them.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "chlist/json/json.h"
#include "support/old_channel_file.h"
#include "tool/program.h"

namespace convert_test {

using chlist::json;
using test_support::channel_file;
using test_support::in_version;
using test_support::majors;
using test_support::old_version_of;
using test_support::read_file;
using test_support::record_kind;
using test_support::service_data;
using test_support::service_ids;
using test_support::write_file;
using tool_test::has_line;
using tool_test::program_result;
using tool_test::run_program;

namespace fs = std::filesystem;

inline const service_data news = {.service_id = 1, .name = "News"};
inline const service_data music = {.service_id = 2, .service_type = SERVICE_TYPE_RADIO, .name = "Music"};

// Two services in three views and a favourite group, and nothing that version 10 has no place for.
inline channel_file plain_list() {
  channel_file file;
  file.service(news).service(music);
  file.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, music, 2).entry(VIEW_TV, news, 1).entry(VIEW_RADIO, music, 2);
  file.group(GROUP_FAV, 0, "Films").entry(VIEW_FAVOURITE, news, 1);
  return file;
}

class Convert : public test_support::file_test {
 protected:
  // Writes a file of an earlier version, its contents given as today's.
  void write_old(int version, const channel_file &file) const {
    write_file(path("old.dat"), in_version(old_version_of(version), file).data);
  }

  program_result convert(int version, const channel_file &file, const std::vector<std::string> &more = {}) const {
    write_old(version, file);
    std::vector<std::string> arguments = {"old.dat", "new.dat"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  program_result run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {CHLIST_PROGRAM, "convert"});
    return run_program(arguments, dir.path());
  }

  json converted_json(int version, const channel_file &file) const {
    return json::parse(convert(version, file, {"--json"}).out);
  }

  void expect_refused(const std::vector<std::string> &arguments, const std::string &error) const {
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: " + error + "\n");
    EXPECT_EQ(result.out, "");
    EXPECT_FALSE(fs::exists(path("new.dat")));
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

}  // namespace convert_test
