// chlist in a scratch directory that holds an input of every kind, and what the directory holds afterwards.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "chlist/files/companion.h"
#include "support/old_channel_file.h"
#include "tool/chlist_host.h"
#include "tool/exchange/enigma2/lamedb_folder.h"
#include "tool/exchange/vdr/service_line.h"

namespace tool_test {

// Contents and mode of every file in a directory, and below it; folders end with a slash.
using file_set = std::map<std::string, std::pair<std::string, std::filesystem::perms>>;

inline file_set files_in(const std::string &directory) {
  file_set found;
  for (const std::filesystem::directory_entry &entry : std::filesystem::recursive_directory_iterator(directory)) {
    const std::string name = entry.path().lexically_relative(directory);
    const bool is_folder = entry.is_directory();
    found[is_folder ? name + '/' : name] = {is_folder ? std::string() : read_file(entry.path()),
                                            entry.status().permissions()};
  }
  return found;
}

struct command {
  std::string name;
  std::vector<std::string> arguments;
};

inline void PrintTo(const command &tested, std::ostream *out) { *out << tested.name; }

// For names of parameterised tests.
constexpr auto name_of_command = [](const auto &tested) { return tested.param.name; };

// What stands beside a list, of one of its services.
inline std::string companion_text(const service_data &service) {
  const channel::identity id = {service.net_index,  service.network_id,
                                service.ts_id,      static_cast<std::uint32_t>(service.frequency),
                                service.service_id, service.polarisation};
  chlist::companion made;
  made.services.push_back({.id = id, .further = {.tuned = {{chlist::tuning_parameter::symbol_rate, "22000000"}}}});
  return chlist::text_of(made);
}

// An input of every kind, and an earlier output. The files that are replaced have a mode that new ones do not get.
inline file_set inputs() {
  constexpr auto mode = std::filesystem::perms(0640);
  const service_data news = {.service_id = 1, .name = "News"};
  const service_data films = {.service_id = 2, .name = "Films"};
  channel_file list;
  list.service(news).service(films).entry(VIEW_ALL, news, 1).entry(VIEW_TV, news, 1).entry(VIEW_ALL, films, 2);
  const service_data again = {.ts_id = 200, .frequency = 12'000'000, .service_id = 1, .name = "News"};
  channel_file twice;
  twice.service(news).service(again).entry(VIEW_ALL, news, 1).entry(VIEW_ALL, again, 2);
  file_set made = {
      {"list.dat", {list.data, mode}},
      {"sound.dat", {channel_file().service(news).entry(VIEW_ALL, news, 1).entry(VIEW_TV, news, 1).data, mode}},
      {"kept.dat", {list.data, mode}},
      {"kept.dat.more.json", {companion_text(news), mode}},
      {"scan.dat", {channel_file().service(news).service({.service_id = 5}).data, mode}},
      {"old.dat", {in_version(test_support::old_version_of(8), list).data, mode}},
      {"channels.conf", {service_line().text(), mode}},
      {"twice.dat", {twice.data, mode}},
      {"cut.dat", {list.data.substr(0, list.data.size() - 40), mode}},
      {"capture.ts", {read_file(CHANNEL_SAMPLES_DIR "/11306h-today.ts"), mode}},
      {"plan.txt", {"all from 10\n", mode}},
      {"edits.txt", {"merge scan.dat\norder --like channels.conf --rest hide\n", mode}},
      {"box/", {"", std::filesystem::perms(0750)}},
      {"out.dat", {"before", mode}}};
  for (const auto &[name, text] : written_folder(list_of({plain_service(1)}))) {
    made["box/" + name] = {text, mode};
  }
  return made;
}

// Whether a word of a command names the file, what it stands beside, or the folder that it is in.
inline bool names(const std::string &word, const std::string &file) {
  const std::string named = std::filesystem::path(word).lexically_normal();
  return file == named || file.starts_with(named + '/') || file.starts_with(named + ".more");
}

// Of the inputs those that a command works on, and one that it has nothing to do with. Each run compares all of them.
inline file_set inputs_of(std::vector<std::string> words) {
  words.emplace_back("plan.txt");
  if (std::ranges::find(words, "edits.txt") != words.end()) {
    words.insert(words.end(), {"scan.dat", "channels.conf"});
  }
  file_set chosen = inputs();
  std::erase_if(chosen, [&](const auto &file) {
    return std::ranges::none_of(words, [&](const std::string &word) { return names(word, file.first); });
  });
  return chosen;
}

// Inputs in a directory of their own, and what the directory holds.
class inputs_test : public chlist_test {
 protected:
  explicit inputs_test(file_set present) : before(std::move(present)) {}

  // Histories tell when an edit was made: runs are compared byte for byte.
  void SetUp() override {
    ::setenv("SOURCE_DATE_EPOCH", "0", 1);
    chlist_test::SetUp();
    put(before, {});
  }
  void TearDown() override {
    chlist_test::TearDown();
    ::unsetenv("SOURCE_DATE_EPOCH");
  }

  // The folder holds these files and no others. Those that are present as they are wanted are not written again.
  void put(const file_set &wanted, const file_set &present) const {
    for (const auto &[name, file] : present) {
      if (!wanted.contains(name)) {
        std::filesystem::remove_all(path(name));
      }
    }
    for (const auto &[name, file] : wanted) {
      if (const auto found = present.find(name); found == present.end() || found->second != file) {
        make(name, file.first);
        std::filesystem::permissions(path(name), file.second);
      }
    }
  }

  void make(const std::string &name, const std::string &contents) const {
    if (name.ends_with('/')) {
      std::filesystem::create_directory(path(name));
    } else {
      write_file(path(name), contents);
    }
  }

  [[nodiscard]] file_set folder() const { return files_in(dir.path()); }

  const file_set before;
};

class commands_test : public inputs_test, public ::testing::WithParamInterface<command> {
 protected:
  commands_test() : inputs_test(inputs_of(GetParam().arguments)) {}

  [[nodiscard]] program_result run() const { return chlist_test::run(GetParam().arguments); }
};

}  // namespace tool_test
