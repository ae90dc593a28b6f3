// A plain list in files of earlier versions, and `chlist convert` run on them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/old_channel_file.h"
#include "tool/chlist_host.h"

namespace convert_test {

using namespace tool_test;
using test_support::in_version;
using test_support::old_version_of;

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

class Convert : public chlist_test {
 protected:
  // Writes a file of an earlier version, its contents given as today's.
  void write_old(int version, const channel_file &file) const {
    write_file(path("old.dat"), in_version(old_version_of(version), file).data);
  }

  program_result convert(int version, const channel_file &file, const std::vector<std::string> &more = {}) const {
    write_old(version, file);
    return run({"convert", "old.dat", "new.dat"}, more);
  }

  json converted_json(int version, const channel_file &file) const {
    return json::parse(convert(version, file, {"--json"}).out);
  }
};

}  // namespace convert_test
