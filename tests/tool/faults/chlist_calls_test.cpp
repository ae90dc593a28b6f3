// chlist with its first call to the file system failing, its second, and so on until it succeeds: it ends with a
// message and nothing done, or with everything done. No input is ever lost, and no part of a file stays behind. Runs
// with a failing call are forks of the test that do what main() does; the one without is compared with the program's.
#include "chlist/program.h"

#include <set>
#include <string>

#include "tool/faults/commands.h"
#include "tool/faults/failing_call.h"
#include "tool/faults/failing_calls.h"

namespace {

namespace fs = std::filesystem;

using tool_test::command;
using tool_test::failing_call;
using tool_test::file_set;
using tool_test::json;
using tool_test::program_result;

class failing_commands : public tool_test::commands_test {
 protected:
  // Runs with every call failing once, one a run, each from the same files. Check: (result, files afterwards).
  template <class Check>
  void fail_every_call(const file_set &earlier, const Check &check) {
    put(earlier, folder());
    const program_result whole = run();
    file_set left = folder();
    const file_set after = left;
    for (int n = 1;; ++n) {
      put(earlier, left);
      const failing_call failing(n, told_.path() + "call");
      const program_result result = with_message(run_failing());
      if (failing.name().empty()) {
        RecordProperty("failed_calls", n - 1);
        EXPECT_EQ(result, with_message(whole));
        EXPECT_TRUE(folder() == after);
        return;
      }
      if (result.exit_code == 2) {
        refused_.insert(failing.name());
      }
      SCOPED_TRACE("call " + std::to_string(n) + ", " + failing.name() + ": " + result.err);
      left = folder();
      check(result, left);
      ASSERT_FALSE(HasFailure());
    }
  }

  // The same, when a command that says it is done has done everything. Check, of those that failed:
  // (what is said of it, result, files afterwards, files when all is done).
  template <class Check>
  void expect_done_or(const file_set &earlier, const Check &check) {
    const program_result whole = run();
    ASSERT_LT(whole.exit_code, 2) << whole.err;
    const file_set after = folder();
    fail_every_call(earlier, [&](const program_result &result, const file_set &left) {
      if (result.exit_code != whole.exit_code) {
        check(only_message(result, whole), result, left, after);
        return;
      }
      EXPECT_EQ(result.out, whole.out);
      EXPECT_EQ(result.err, whole.err);
      EXPECT_TRUE(left == after);
    });
  }

  // Whether a call of the name failed, and the command with it.
  [[nodiscard]] bool is_refused(const std::string &name) const { return refused_.contains(name); }

  [[nodiscard]] program_result run_failing() const {
    std::vector<const char *> words = {CHLIST_PROGRAM};
    std::ranges::transform(GetParam().arguments, std::back_inserter(words), &std::string::c_str);
    return tool_test::run_in_fork(
        [&words] {
          ::count_calls_from_here();
          return chlist::run_program(static_cast<int>(words.size()), words.data());
        },
        dir.path());
  }

  // With --json a failure is a document on standard output; it is looked at like the others.
  static program_result with_message(program_result result) {
    if (result.exit_code == 2 && result.out.starts_with("{\n  \"schema\": 1,\n  \"error\"")) {
      const json error = json::parse(result.out)["error"];
      EXPECT_EQ(result.err, "");
      result.err = "chlist: " + error["command"].as_string() + ": " + error["message"].as_string() + '\n';
      result.out.clear();
    }
    return result;
  }

  // What failed, behind what is said when nothing does.
  static std::string said_besides(const program_result &result, const program_result &whole) {
    const bool goes_on = result.err.starts_with(whole.err);
    return goes_on ? result.err.substr(whole.err.size()) : result.err;
  }

  [[nodiscard]] bool is_of_the_report(const std::string &error) const {
    return error == message(GetParam().arguments, "standard output: Input/output error");
  }

  static void expect_one_message(const std::string &error) {
    EXPECT_TRUE(error.starts_with("chlist: ")) << error;
    EXPECT_EQ(tool_test::lines_of(error).size(), 1U) << error;
    EXPECT_TRUE(error.ends_with(": Input/output error\n") || error.ends_with(": cannot be read\n") ||
                error.ends_with(": the channel file could not be written\n") ||
                error.ends_with(" early for a channel file of its version\n") ||
                error.ends_with(" early for a channel file of version 8\n") ||
                error.ends_with(": too short for a channel file\n"))
        << error;
  }

  // What a command that failed says of it, which is one line.
  static std::string only_message(const program_result &result, const program_result &whole) {
    EXPECT_EQ(result.exit_code, 2);
    std::string error = said_besides(result, whole);
    expect_one_message(error);
    return error;
  }

 private:
  test_support::temp_dir told_;
  std::set<std::string> refused_;
};

class ChlistFaults : public failing_commands {};

TEST_P(ChlistFaults, LeaveEverythingDoneOrNothing) {
  expect_done_or(before, [this](const std::string &error, const program_result &result, const file_set &left,
                                const file_set &after) {
    EXPECT_TRUE(left == before || (is_of_the_report(error) && left == after));
    EXPECT_TRUE(is_of_the_report(error) || result.out.empty()) << result.out;
  });
  const bool writes = folder() != before;
  EXPECT_EQ(is_refused("fsync"), writes) << "what is not on the disk is not done";
}

INSTANTIATE_TEST_SUITE_P(
    Of, ChlistFaults,
    ::testing::Values(
        command{"import", {"import", "channels.conf", "-o", "out.dat"}},
        command{"export_vdr", {"export", "list.dat", "-o", "out.dat", "--to", "vdr"}},
        command{"export_csv", {"export", "list.dat", "-o", "out.dat", "--to", "csv", "--json"}},
        command{"export_json", {"export", "list.dat", "-o", "out.dat", "--to", "json"}},
        command{"convert", {"convert", "old.dat", "out.dat"}},
        command{"convert_json", {"convert", "old.dat", "out.dat", "--json"}},
        command{"merge", {"merge", "list.dat", "scan.dat", "-o", "out.dat", "--no-backup"}},
        command{"merge_in_place", {"merge", "list.dat", "scan.dat", "-o", "list.dat", "--no-backup"}},
        command{"merge_dry_run", {"merge", "list.dat", "scan.dat", "--dry-run", "--json"}},
        command{"edit_dry_run", {"lock", "list.dat", "News", "--dry-run"}},
        command{"edit_without_backup", {"lock", "list.dat", "News", "--no-backup"}},
        command{"edit_with_companion", {"set", "kept.dat", "News", "service_id=9", "--no-backup"}},
        command{"remove_with_companion", {"remove", "kept.dat", "News", "--no-backup"}},
        command{"import_over_companion", {"import", "channels.conf", "-o", "kept.dat", "--no-backup"}},
        command{"edit_to_another", {"remove", "list.dat", "News", "-o", "out.dat", "--no-backup"}},
        command{"favourites", {"fav", "list", "list.dat"}}, command{"report", {"report", "sound.dat", "-o", "out.dat"}},
        command{"report_with_companion", {"report", "kept.dat", "-o", "out.dat"}},
        command{"info", {"info", "kept.dat", "--json"}}, command{"list", {"list", "kept.dat"}},
        command{"show", {"show", "kept.dat", "News", "--json"}}, command{"diff", {"diff", "kept.dat", "scan.dat"}},
        command{"check", {"check", "kept.dat"}}, command{"scan", {"scan", "capture.ts", "-o", "out.dat"}},
        command{"salvage", {"salvage", "cut.dat", "-o", "out.dat"}},
        command{"import_folder", {"import", "box", "-o", "out.dat"}},
        command{"export_with_companion", {"export", "kept.dat", "-o", "out.dat", "--to", "vdr"}},
        command{"export_folder", {"export", "list.dat", "-o", "made", "--to", "lamedb4"}},
        command{"duplicates", {"duplicates", "twice.dat", "--remove", "--yes", "--no-backup"}},
        command{"order", {"order", "list.dat", "--like", "box", "--rest", "hide", "--yes", "--no-backup"}},
        command{"renumber_by_plan", {"renumber", "list.dat", "--plan", "plan.txt", "--yes", "--no-backup"}},
        command{"apply", {"apply", "list.dat", "edits.txt", "--yes", "--no-backup"}}),
    tool_test::name_of_command);

class ChlistRefusals : public failing_commands {};

// What is refused stays refused, whatever fails on the way to finding out.
TEST_P(ChlistRefusals, SaveTheInputWhateverFails) {
  ASSERT_EQ(run().exit_code, 2);

  fail_every_call(before, [&](const program_result &result, const file_set &left) {
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(tool_test::lines_of(result.err).size(), 1U) << result.err;
    EXPECT_TRUE(left == before);
  });
}

INSTANTIATE_TEST_SUITE_P(
    Of, ChlistRefusals,
    ::testing::Values(command{"import_onto_input", {"import", "channels.conf", "-o", "./channels.conf"}},
                      command{"export_onto_input", {"export", "list.dat", "-o", "./list.dat", "--to", "csv"}},
                      command{"convert_onto_input", {"convert", "old.dat", "./old.dat"}},
                      command{"merge_onto_scan", {"merge", "list.dat", "scan.dat", "-o", "./scan.dat"}},
                      command{"report_onto_input", {"report", "list.dat", "-o", "./list.dat"}}),
    tool_test::name_of_command);

class ChlistEditFaults : public failing_commands {
 protected:
  void expect_whole(const program_result &result, const file_set &left, const file_set &after, file_set earlier) const {
    if (result.exit_code == 0) {
      EXPECT_EQ(result.err, "");
      EXPECT_TRUE(left == after);
      return;
    }
    EXPECT_EQ(result.exit_code, 2);
    expect_one_message(result.err);
    if (left != after && left != earlier) {
      earlier["list.dat.bak"] = before.at("list.dat");
      const bool is_in_history = left.contains("list.dat.history");
      if (is_in_history) {
        earlier["list.dat.history"] = after.at("list.dat.history");
      }
      EXPECT_TRUE(left == earlier);
    }
  }
};

// The file is the old one or the new one, whole; its backup and its history are what they were, or whole as well, in
// that order; nothing else is left.
TEST_P(ChlistEditFaults, LeaveTheFileWholeAndKeepThePreviousOne) {
  ASSERT_EQ(run().exit_code, 0);
  const file_set after = folder();
  ASSERT_TRUE(after.at("list.dat.bak") == before.at("list.dat"));

  fail_every_call(
      before, [&](const program_result &result, const file_set &left) { expect_whole(result, left, after, before); });
}

TEST_P(ChlistEditFaults, LeaveAnEarlierBackupWholeUntilANewOneIs) {
  ASSERT_EQ(run().exit_code, 0);
  const file_set after = folder();
  file_set earlier = before;
  earlier["list.dat.bak"] = {"an earlier list", after.at("list.dat.bak").second};

  fail_every_call(
      earlier, [&](const program_result &result, const file_set &left) { expect_whole(result, left, after, earlier); });
}

INSTANTIATE_TEST_SUITE_P(Of, ChlistEditFaults,
                         ::testing::Values(command{"rename", {"rename", "list.dat", "News", "Today"}},
                                           command{"set_json",
                                                   {"set", "list.dat", "News", "frequency=13000000", "--json"}},
                                           command{"merge", {"merge", "list.dat", "scan.dat", "-o", "list.dat"}}),
                         tool_test::name_of_command);

// Files that are written one after the other, by the names of those that are written as one.
using file_order = std::vector<std::vector<std::string>>;

class ChlistKeptFaults : public failing_commands {
 protected:
  void SetUp() override {
    failing_commands::SetUp();
    for (const char *name : {"list.dat", "kept.dat"}) {
      if (!before.contains(name)) {
        continue;
      }
      ASSERT_EQ(tool_test::run_program({CHLIST_PROGRAM, "set", name, "Films", "service_id=7"}, dir.path()).exit_code,
                0);
      ASSERT_EQ(tool_test::run_program({CHLIST_PROGRAM, "set", name, "News", "service_id=9"}, dir.path()).exit_code, 0);
      ASSERT_EQ(tool_test::run_program({CHLIST_PROGRAM, "undo", name}, dir.path()).exit_code, 0);
    }
    earlier = folder();
  }

  static file_order order_of(const std::string &name) {
    return {{name + ".bak"}, {name + ".more.json.bak"}, {name + ".history"}, {name, name + ".more.json"}};
  }

  static void take(file_set &files, const std::vector<std::string> &names, const file_set &from) {
    for (const std::string &name : names) {
      files.erase(name);
      if (const auto found = from.find(name); found != from.end()) {
        files.insert(*found);
      }
    }
  }

  // As after the first of these, or after none of them.
  [[nodiscard]] bool is_on_the_way(const file_set &left, const file_set &after, const std::string &name) const {
    bool is_found = left == earlier;
    file_set reached = is_found ? file_set() : earlier;
    for (const std::vector<std::string> &names : order_of(name)) {
      const bool is_last = names.front() == name;
      take(reached, names, after);
      is_found = is_found || (!is_last && left == reached);
    }
    return is_found;
  }

  file_set earlier;
};

// The list and what stands beside it are the old ones or the new ones, both; what they were is kept before they change.
TEST_P(ChlistKeptFaults, LeaveTheListAndItsCompanionTogether) {
  expect_done_or(earlier, [this](const std::string &error, const program_result & /*result*/, const file_set &left,
                                 const file_set &after) {
    const std::string name = before.contains("kept.dat") ? "kept.dat" : "list.dat";
    EXPECT_TRUE(is_of_the_report(error) ? left == after : is_on_the_way(left, after, name));
  });
}

INSTANTIATE_TEST_SUITE_P(Of, ChlistKeptFaults,
                         ::testing::Values(command{"undo", {"undo", "kept.dat"}}, command{"redo", {"redo", "list.dat"}},
                                           command{"restore", {"restore", "list.dat", "1", "--json"}},
                                           command{"history", {"history", "list.dat"}},
                                           command{"import", {"import", "channels.conf", "-o", "kept.dat"}},
                                           command{"merge", {"merge", "kept.dat", "scan.dat", "-o", "kept.dat"}},
                                           command{"apply", {"apply", "kept.dat", "edits.txt", "--yes"}}),
                         tool_test::name_of_command);

}  // namespace
