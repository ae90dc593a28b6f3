// chlist in a scratch directory: what it says, which files it leaves, what it refuses.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/json/json.h"
#include "support/channel_file.h"
#include "tool/program.h"

namespace tool_test {

// What the tests of commands call by short names.
using chlist::json;
using test_support::bytes;
using test_support::channel_file;
using test_support::get;
using test_support::majors;
using test_support::put;
using test_support::read_file;
using test_support::record_kind;
using test_support::service_data;
using test_support::service_ids;
using test_support::view_place;
using test_support::write_file;

using namespace test_support::record_fields;

class chlist_test : public test_support::file_test {
 protected:
  // chlist with these arguments, and more behind them.
  program_result run(std::vector<std::string> arguments, const std::vector<std::string> &more = {}) const;

  // A message on standard error, of the command that these arguments name.
  static std::string message(const std::vector<std::string> &arguments, const std::string &text);

  // One message and nothing else: no output, no file that comes or goes.
  void expect_refused(const std::vector<std::string> &arguments, const std::string &error) const;

  // The names of all files, in their order.
  [[nodiscard]] std::vector<std::string> files() const;
};

}  // namespace tool_test
