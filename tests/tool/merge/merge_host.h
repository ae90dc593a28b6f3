// A list of a receiver and what a channel search found, and `chlist merge` run on both.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tool/chlist_host.h"

namespace merge_test {

using namespace tool_test;

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

class MergeTool : public chlist_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    write_list(own_list());
    write_scan(scan_of({news, music}));
  }

  void write_list(const channel_file &file) const { write_file(path("list.dat"), file.data); }
  void write_scan(const channel_file &file) const { write_file(path("scan.dat"), file.data); }

  program_result merge(const std::vector<std::string> &more = {}) const {
    return run({"merge", "list.dat", "scan.dat", "-o", "out.dat"}, more);
  }

  json merged_json(std::vector<std::string> more = {}) const {
    more.emplace_back("--json");
    return json::parse(merge(more).out);
  }
};

}  // namespace merge_test
