// `chlist convert` as it is run: its report, what it refuses, and what it leaves of the files beside it.
#include <channel/channel.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "chlist/json/json.h"
#include "tool/convert/convert_host.h"

namespace {

using namespace convert_test;

TEST_F(Convert, AnEmptyListIsConverted) {
  EXPECT_EQ(convert(7, channel_file()).exit_code, 0);

  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.network_num, 0);
}

TEST_F(Convert, TheJsonReportHasEveryCountAndFinding) {
  channel_file file = plain_list();
  file.service({.service_id = 2, .name = "Copy"}).entry(VIEW_USER, {.service_id = 9}, 77);
  file.entry(VIEW_FAVOURITE, {.service_id = 8}, 6).set(test_support::view_place(VIEW_RADIO).count, 2, 1001);

  const program_result result = convert(8, file, {"--json"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "");
  const json report = json::parse(result.out);
  EXPECT_EQ(report["file"], "old.dat");
  EXPECT_EQ(report["output"], "new.dat");
  EXPECT_EQ(report["networks"], 1);
  EXPECT_EQ(report["transponders"], 1);
  EXPECT_EQ(report["views"].size(), 25U);
  EXPECT_EQ(report["views"][0], json::parse(R"({"view": "ALL", "count": 2})"));
  EXPECT_EQ(report["views"][5],
            json::parse(R"({"view": "favourites", "group": 1, "group_name": "Films", "count": 2})"));
  EXPECT_EQ(report["group_tables"], json::parse(R"([{"table": "providers", "count": 0}, {"table": "genres", "count": 0},
                           {"table": "countries", "count": 0}, {"table": "favourite groups", "count": 1}])"));
  EXPECT_EQ(report["duplicate_services"], json::parse(R"([{"name": "Copy", "net_index": 1, "network_id": 1,
      "ts_id": 100, "frequency": 11000000, "polarisation": "H", "service_id": 2}])"));
  EXPECT_EQ(report["counts_outside_arrays"], json::parse(R"([{"what": "radio", "counted": 1001, "present": 1000}])"));
  EXPECT_EQ(report["unresolved_entries"][0]["view"], "radio");
  EXPECT_EQ(report["unresolved_entries"].elements().back(),
            json::parse(R"({"view": "favourites", "group": 1, "group_name": "Films", "position": 2, "number": 6,
      "net_index": 1, "network_id": 1, "ts_id": 100, "frequency": 11000000, "polarisation": "H", "service_id": 8})"));
}

TEST_F(Convert, OfManyFindingsOfAKindTheFirstTenAreTold) {
  channel_file file = plain_list();
  for (int i = 0; i < 11; ++i) {
    file.service({.service_id = 2, .name = "Copy"}).entry(VIEW_USER, {.service_id = 9}, 77 + i);
  }

  const std::vector<std::string> first = lines_of(convert(8, file).err);
  ASSERT_EQ(first.size(), 22U);
  EXPECT_TRUE(first[9].starts_with("chlist: convert: old.dat: dropped, occurs twice: \"Copy\" (")) << first[9];
  EXPECT_EQ(first[10], "chlist: convert: old.dat: and 1 more: dropped, occurs twice (--all)");
  EXPECT_TRUE(first[20].starts_with("chlist: convert: old.dat: resolves to no service: the USER view, position 10:"));
  EXPECT_EQ(first[21], "chlist: convert: old.dat: and 1 more: resolves to no service (--all)");

  const std::vector<std::string> all = lines_of(convert(8, file, {"--all"}).err);
  ASSERT_EQ(all.size(), 22U);
  EXPECT_TRUE(all[21].starts_with("chlist: convert: old.dat: resolves to no service: the USER view, position 11:"));
  EXPECT_EQ(converted_json(8, file)["unresolved_entries"].size(), 11U);
}

TEST_F(Convert, NamesAreHarmlessOnATerminalAndInJson) {
  channel_file file = plain_list();
  file.service({.service_id = 2, .name = "A\x1B[2J\xC2\x9B\x7F\xC3\xA9\""});

  EXPECT_EQ(convert(9, file).err, "chlist: convert: old.dat: dropped, occurs twice: \"A [2J\xC3\xA9\\\"\" "
                                  "(net 1, network 1, ts 100, 11000000 H, service 2)\n");
  EXPECT_EQ(converted_json(9, file)["duplicate_services"][0]["name"], "A [2J\xC3\xA9\"");
}

TEST_F(Convert, AFileOfTodayNeedsNoConversion) {
  write_file(path("old.dat"), plain_list().data);

  expect_refused({"convert", "old.dat", "new.dat"}, "old.dat: is of version 10 already: there is nothing to convert");
}

TEST_F(Convert, OtherVersionsAreUnknown) {
  for (const int version : {0, 6, 11, -1}) {
    channel_file file = plain_list();
    file.set(list_field::version, 2, static_cast<std::uint16_t>(version));
    write_file(path("old.dat"), file.data);

    expect_refused({"convert", "old.dat", "new.dat"},
                   "old.dat: is of version " + std::to_string(version) + ": only 7, 8 and 9 can be converted");
  }
}

TEST_F(Convert, AFileWithoutAWholeVersionIsRefused) {
  for (const char *contents : {"", "\x08"}) {
    write_file(path("old.dat"), contents);

    expect_refused({"convert", "old.dat", "new.dat"}, "old.dat: too short for a channel file");
  }
  write_file(path("old.dat"), std::string("\x08\0", 2));
  expect_refused({"convert", "old.dat", "new.dat"}, "old.dat: ends too early for a channel file of version 8");
}

TEST_F(Convert, InputThatIsNoFileIsRefused) {
  fs::create_directory(path("folder"));
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);

  expect_refused({"convert", "missing.dat", "new.dat"}, "missing.dat: No such file or directory");
  expect_refused({"convert", "folder", "new.dat"}, "folder: not a regular file");
  expect_refused({"convert", "pipe", "new.dat"}, "pipe: not a regular file");
  expect_refused({"convert", "/dev/full", "new.dat"}, "/dev/full: not a regular file");
}

TEST_F(Convert, OutputThatCannotBeWrittenIsRefused) {
  write_old(8, plain_list());
  fs::create_directory(path("folder"));

  expect_refused({"convert", "old.dat", "/dev/full"}, "/dev/full: not a regular file");
  expect_refused({"convert", "old.dat", path("folder")}, path("folder") + ": not a regular file");
  EXPECT_EQ(run({"convert", "old.dat", "missing/new.dat"}).exit_code, 2);
  EXPECT_EQ(files(), (std::vector<std::string>{"folder", "old.dat"}));
}

TEST_F(Convert, AFailedWriteLeavesTheOldOutputAndNoOther) {
  write_old(8, plain_list());
  write_file(path("new.dat"), "before");

  const program_result result = run_program(
      {"/bin/sh", "-c", "trap '' XFSZ; ulimit -f 100; exec " CHLIST_PROGRAM " convert old.dat new.dat"}, dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: convert: new.dat: the channel file could not be written\n");
  EXPECT_EQ(read_file(path("new.dat")), "before");
  EXPECT_EQ(files(), (std::vector<std::string>{"new.dat", "old.dat"}));
}

TEST_F(Convert, TheInputIsNotReplaced) {
  write_old(8, plain_list());
  fs::create_symlink("old.dat", path("link.dat"));
  const std::string before = read_file(path("old.dat"));

  expect_refused({"convert", "old.dat", "./old.dat"}, "./old.dat: is the input itself");
  expect_refused({"convert", "old.dat", "link.dat"}, "link.dat: is the input itself");
  EXPECT_EQ(read_file(path("old.dat")), before);
}

TEST_F(Convert, AnOldOutputIsReplaced) {
  write_file(path("new.dat"), "before");

  EXPECT_EQ(convert(7, plain_list()).exit_code, 0);

  EXPECT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
}

TEST_F(Convert, AnOutputThatNobodyMayWriteStays) {
  write_file(path("protected.dat"), "before");
  fs::permissions(path("protected.dat"), fs::perms(0444));
  write_old(8, plain_list());

  expect_refused({"convert", "old.dat", path("protected.dat")}, path("protected.dat") + ": is read-only");
  EXPECT_EQ(read_file(path("protected.dat")), "before");
}

TEST_F(Convert, PathsMayBeLong) {
  const std::string deep = path(std::string(100, 'a') + "/" + std::string(100, 'b'));
  fs::create_directories(deep);
  write_old(8, plain_list());
  fs::rename(path("old.dat"), deep + "/old.dat");

  EXPECT_EQ(run({"convert", deep + "/old.dat", deep + "/new.dat"}).exit_code, 0);

  fs::rename(deep + "/new.dat", path("new.dat"));
  EXPECT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
}

TEST_F(Convert, AReportThatCannotBeWrittenIsAFailure) {
  write_old(8, plain_list());

  for (const std::string more : {"", " --json"}) {
    const program_result result = run_program(
        {"/bin/sh", "-c", "exec " CHLIST_PROGRAM " convert old.dat new.dat" + more + " >/dev/full"}, dir.path());

    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: convert: standard output: No space left on device\n");
  }
  EXPECT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
}

TEST_F(Convert, BadUsageIsRefused) {
  write_old(8, plain_list());

  EXPECT_EQ(run({"convert"}).exit_code, 2);
  EXPECT_EQ(run({"convert", "old.dat"}).exit_code, 2);
  EXPECT_EQ(run({"convert", "old.dat", "new.dat", "more"}).exit_code, 2);
  EXPECT_EQ(run({"convert", "old.dat", "new.dat", "--unknown"}).exit_code, 2);
  EXPECT_FALSE(fs::exists(path("new.dat")));
}

TEST_F(Convert, HelpNamesTheExitCodesAndAnExample) {
  const program_result result = run({"convert", "--help"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  0  converted")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  chlist convert backup/old.dat channels.dat")) << result.out;
}

}  // namespace
