// chlist in a scratch directory that holds an input of every kind, and what the directory holds afterwards.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/old_channel_file.h"
#include "tool/exchange/vdr/service_line.h"
#include "tool/program.h"

namespace tool_test {

// Contents and mode of every file in a directory.
using files = std::map<std::string, std::pair<std::string, std::filesystem::perms>>;

inline files files_in(const std::string &directory) {
  files found;
  for (const std::filesystem::directory_entry &entry : std::filesystem::directory_iterator(directory)) {
    found[entry.path().filename()] = {test_support::read_file(entry.path()), entry.status().permissions()};
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

// An input of every kind, and an earlier output. The files that are replaced have a mode that new ones do not get.
inline files inputs() {
  using test_support::channel_file;
  constexpr auto mode = std::filesystem::perms(0640);
  const test_support::service_data news = {.service_id = 1, .name = "News"};
  const test_support::service_data films = {.service_id = 2, .name = "Films"};
  channel_file list;
  list.service(news).service(films).entry(VIEW_ALL, news, 1).entry(VIEW_TV, news, 1).entry(VIEW_ALL, films, 2);
  return {{"list.dat", {list.data, mode}},
          {"sound.dat", {channel_file().service(news).entry(VIEW_ALL, news, 1).entry(VIEW_TV, news, 1).data, mode}},
          {"scan.dat", {channel_file().service(news).service({.service_id = 5}).data, mode}},
          {"old.dat", {in_version(test_support::old_version_of(8), list).data, mode}},
          {"channels.conf", {service_line().text(), mode}},
          {"out.dat", {"before", mode}}};
}

class commands_test : public ::testing::TestWithParam<command> {
 protected:
  void SetUp() override { put(before, {}); }

  // The folder holds these files and no others. Those that are present as they are wanted are not written again.
  void put(const files &wanted, const files &present) const {
    for (const auto &[name, file] : present) {
      if (!wanted.contains(name)) {
        std::filesystem::remove(dir() + name);
      }
    }
    for (const auto &[name, file] : wanted) {
      if (const auto found = present.find(name); found == present.end() || found->second != file) {
        test_support::write_file(dir() + name, file.first);
        std::filesystem::permissions(dir() + name, file.second);
      }
    }
  }

  [[nodiscard]] const std::string &dir() const { return dir_.path(); }
  [[nodiscard]] files folder() const { return files_in(dir()); }

  [[nodiscard]] program_result run() const {
    std::vector<std::string> arguments = GetParam().arguments;
    arguments.insert(arguments.begin(), CHLIST_PROGRAM);
    return run_program(arguments, dir());
  }

  const files before = inputs();

 private:
  test_support::temp_dir dir_;
};

}  // namespace tool_test
