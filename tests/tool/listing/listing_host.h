// Runs the commands that look at channel files, on files that a test writes.
#pragma once

#include <string>
#include <vector>

#include "tool/chlist_host.h"

namespace listing_test {

using namespace tool_test;

inline const service_data news = {.service_id = 1, .name = "News"};
inline const service_data films = {.service_id = 2, .name = "Films", .flag = CHANNEL_FLAG_LOCKED | CHANNEL_FLAG_FTA};
inline const service_data music = {.ts_id = 101,
                                   .frequency = 11'727'480,
                                   .service_id = 5,
                                   .polarisation = 1,
                                   .service_type = SERVICE_TYPE_RADIO,
                                   .name = "Music, \"live\""};

// Two television services on one transponder, a radio service on another, in views and a favourite group.
inline channel_file sample_list() {
  channel_file file;
  file.network(1, 1, "Astra").service(news).service(films);
  file.set_last(record_kind::service, service_field::provider_id, 2, 3);
  file.service(music).group(GROUP_PROVIDER, 0, "BBC").group(GROUP_PROVIDER, 3, "Sky").group(GROUP_FAV, 0, "Best");
  file.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, films, 12).entry(VIEW_ALL, music, 13);
  file.entry(VIEW_TV, news, 101).entry(VIEW_TV, films, 12).entry(VIEW_RADIO, music, 1);
  file.entry(VIEW_FAVOURITE, films, 12, 1);
  return file;
}

class listing_host : public chlist_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    write("list.dat", sample_list());
  }

  void write(const std::string &name, const channel_file &file) const { write_file(path(name), file.data); }

  // The report of a run without complaints.
  [[nodiscard]] std::string output_of(const std::vector<std::string> &arguments, int exit_code = 0) const {
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, exit_code);
    EXPECT_EQ(result.err, "");
    return result.out;
  }

  [[nodiscard]] json json_of(const std::vector<std::string> &arguments, int exit_code = 0) const {
    return json::parse(output_of(arguments, exit_code));
  }

  // Every way in which a file is not a channel file of the current version.
  void expect_bad_files_refused(const std::string &command, const std::vector<std::string> &more) const {
    const auto arguments = [&](const std::string &file) {
      std::vector<std::string> all = {command, file};
      all.insert(all.end(), more.begin(), more.end());
      return all;
    };
    channel_file other = sample_list();
    expect_refused(arguments("missing.dat"), "missing.dat: No such file or directory");
    expect_refused(arguments("."), ".: not a regular file");
    write_file(path("bad.dat"), "\n");
    expect_refused(arguments("bad.dat"), "bad.dat: too short for a channel file");
    write_file(path("bad.dat"), other.data.substr(0, other.data.size() - 1));
    expect_refused(arguments("bad.dat"), "bad.dat: ends too early for a channel file of version 10");
    write("bad.dat", other.set(list_field::version, 2, 9));
    expect_refused(arguments("bad.dat"), "bad.dat: is of version 9, not 10: `chlist convert` makes one of it");
    write("bad.dat", other.set(list_field::version, 2, 11));
    expect_refused(arguments("bad.dat"), "bad.dat: is of version 11, not 10");
  }
};

}  // namespace listing_test
