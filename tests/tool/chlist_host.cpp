#include "tool/chlist_host.h"

#include <algorithm>
#include <filesystem>

namespace tool_test {

program_result chlist_test::run(std::vector<std::string> arguments, const std::vector<std::string> &more) const {
  arguments.insert(arguments.begin(), CHLIST_PROGRAM);
  arguments.insert(arguments.end(), more.begin(), more.end());
  return run_program(arguments, dir.path());
}

std::string chlist_test::message(const std::vector<std::string> &arguments, const std::string &text) {
  const bool is_of_two_words = arguments.front() == "fav";
  return "chlist: " + arguments[0] + (is_of_two_words ? ' ' + arguments[1] : "") + ": " + text + '\n';
}

void chlist_test::expect_refused(const std::vector<std::string> &arguments, const std::string &error) const {
  const std::vector<std::string> before = files();
  const program_result result = run(arguments);
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, message(arguments, error));
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(files(), before);
}

std::vector<std::string> chlist_test::files() const {
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(dir.path())) {
    names.push_back(entry.path().filename());
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace tool_test
