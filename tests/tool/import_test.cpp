// `chlist import` as it is run: what it writes, loaded through the library; what it says; how it fails.
#include <channel/channel.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/temp_dir.h"
#include "tool/program.h"
#include "tool/service_line.h"

namespace {

namespace fs = std::filesystem;

using test_support::majors;
using test_support::read_file;
using test_support::service_ids;
using test_support::write_file;
using tool_test::has_line;
using tool_test::program_result;
using tool_test::run_program;
using tool_test::service_line;

const std::string sample = CHANNEL_SAMPLES_DIR "/channels.conf";

class Import : public test_support::store_test {
 protected:
  program_result import(const std::string &text, const std::string &output = "list.dat") {
    write_file(dir.path() + "channels.conf", text);
    return run({"channels.conf", "-o", output});
  }

  program_result run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {CHLIST_PROGRAM, "import"});
    return run_program(arguments, dir.path());
  }

  void load(const std::string &name = "list.dat") const {
    const test_support::log_capture quiet(-1);
    const test_support::fd_capture out(STDOUT_FILENO);
    set_target_dir(dir.path().c_str());
    ASSERT_EQ(load_channel(name.c_str(), 255), CHANNEL_LIST_VERSION);
  }

  // The files that are there, without the input.
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(dir.path())) {
      if (entry.path().filename() != "channels.conf") {
        names.push_back(entry.path().filename());
      }
    }
    return names;
  }

  test_support::temp_dir dir;
};

TEST_F(Import, TheSampleLineUpComesThroughWhole) {
  const program_result result = run({sample, "--output", "list.dat"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(has_line(result.out, "list.dat: 24 services (18 TV, 5 radio, 1 other) on 8 transponders of 2 sources, "
                                   "0 lines skipped"))
      << result.out;
  load();
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1,  2,  3,  4,  5,  6,  7,   8,   9,   50,  51,  52,
                                                53, 54, 55, 56, 57, 58, 900, 901, 902, 903, 904, 905}));
  EXPECT_EQ(list.tv_vnumber, 18);
  EXPECT_EQ(majors(VIEW_RADIO), (std::vector<int>{900, 901, 902, 903, 904}));
  EXPECT_EQ(list.network_num, 2);
}

TEST_F(Import, TheSampleServicesAreWhatTheirLinesSay) {
  run({sample, "-o", "list.dat"});
  load();

  const channel_st *harbour = get_channel(get_channel_index(5));
  ASSERT_NE(harbour, nullptr);
  EXPECT_STREQ(harbour->name[0].text, "Harbour 7");
  EXPECT_EQ(harbour->frequency, 11'345'000);
  EXPECT_EQ(harbour->polarisation, 1);
  EXPECT_EQ(harbour->video_pid, 521);
  EXPECT_EQ(harbour->pcr_pid, 520);
  EXPECT_EQ(harbour->audio_pid, 522);
  EXPECT_EQ(harbour->flag, 0);
  const channel_st *silverscreen = get_channel(get_channel_index(50));
  ASSERT_NE(silverscreen, nullptr);
  EXPECT_STREQ(silverscreen->name[0].text, "Silverscreen Premi\xC3\xA8re HD");
  EXPECT_STREQ(silverscreen->name[1].text, "Silver1 HD");
  EXPECT_EQ(silverscreen->audio_pid, 702);
  EXPECT_EQ(silverscreen->flag, CHANNEL_FLAG_FTA);
  const channel_st *polarstern = get_channel(get_channel_index(54));
  ASSERT_NE(polarstern, nullptr);
  EXPECT_EQ(polarstern->net_index, 2);
  EXPECT_STREQ(get_network_ch_info(2, 171)->network_name, "S31.0E");
}

TEST_F(Import, TheSummarySaysWhatIsNotCarried) {
  const program_result result = import(":Group\n" + service_line{.name = "A;Provider",
                                                                 .parameters = "H",
                                                                 .symbol_rate = "0",
                                                                 .audio = "102,103;104",
                                                                 .teletext = "105",
                                                                 .ca_ids = "B21",
                                                                 .radio_id = "3"}
                                                        .text());

  EXPECT_EQ(result.out, "list.dat: 1 service (1 TV, 0 radio, 0 other) on 1 transponder of 1 source, 0 lines skipped\n"
                        "Not carried by the channel file:\n"
                        "  provider names                        1 of the services\n"
                        "  further audio PIDs                    1 of the services\n"
                        "  Dolby PIDs                            1 of the services\n"
                        "  teletext PIDs                         1 of the services\n"
                        "  CA ids (but marked as scrambled)      1 of the services\n"
                        "  RIDs                                  1 of the services\n"
                        "  group names                           1\n");
}

TEST_F(Import, AListThatIsCarriedWholeHasAShortSummary) {
  const program_result result = import(service_line{.parameters = "H", .symbol_rate = "0"}.text());

  EXPECT_EQ(result.out, "list.dat: 1 service (1 TV, 0 radio, 0 other) on 1 transponder of 1 source, 0 lines skipped\n");
}

TEST_F(Import, SkippedLinesAreReportedInOrderAndTheRestIsImported) {
  const program_result result =
      import(service_line{.service_id = "1"}.text() + service_line{.service_id = "1"}.text() + "broken\n" +
             service_line{.service_id = "x"}.text() + service_line{.service_id = "2"}.text());

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "channels.conf:2: skipped: is the same service as line 1\n"
                        "channels.conf:3: skipped: has 1 field instead of 13\n"
                        "channels.conf:4: skipped: SID 'x' is not a number\n");
  EXPECT_NE(result.out.find("2 services (2 TV, 0 radio, 0 other)"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("3 lines skipped"), std::string::npos) << result.out;
  load();
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2}));
}

TEST_F(Import, AViewThatIsTooSmallIsAFinding) {
  std::string text;
  for (int n = 0; n <= MAX_RADIO_CHANNEL; ++n) {
    text += service_line{.video = "0", .service_id = std::to_string(n)}.text();
  }

  const program_result result = import(text);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "channels.conf: the radio view is full: it holds 1000, 1 more services are in the ALL view only\n");
  load();
  EXPECT_EQ(list.vnumber, MAX_RADIO_CHANNEL + 1);
  EXPECT_EQ(list.radio_vnumber, MAX_RADIO_CHANNEL);
}

TEST_F(Import, TheSameInputGivesTheSameBytes) {
  run({sample, "-o", "first.dat"});
  run({sample, "-o", "second.dat"});

  EXPECT_FALSE(read_file(dir.path() + "first.dat").empty());
  EXPECT_EQ(read_file(dir.path() + "first.dat"), read_file(dir.path() + "second.dat"));
}

TEST_F(Import, TheOutputMayLieDeep) {
  const std::string deep = dir.path() + std::string(60, 'a') + "/" + std::string(60, 'b') + "/";
  fs::create_directories(deep);

  EXPECT_EQ(run({sample, "-o", deep + std::string(80, 'c')}).exit_code, 0);

  fs::rename(deep + std::string(80, 'c'), dir.path() + "list.dat");
  load();
  EXPECT_EQ(list.vnumber, 24);
}

TEST_F(Import, ANewOutputHasTheModeOfNewFilesAndStandsAlone) {
  EXPECT_EQ(run({sample, "-o", "list.dat"}).exit_code, 0);

  const mode_t mask = ::umask(0);
  ::umask(mask);
  struct stat found = {};
  ASSERT_EQ(::stat((dir.path() + "list.dat").c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777U, 0666U & ~mask);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat"}));
}

TEST_F(Import, AnOldOutputIsReplacedAndKeepsItsMode) {
  write_file(dir.path() + "list.dat", "old");
  ::chmod((dir.path() + "list.dat").c_str(), 0640);

  EXPECT_EQ(run({sample, "-o", "list.dat"}).exit_code, 0);

  struct stat found = {};
  ASSERT_EQ(::stat((dir.path() + "list.dat").c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777U, 0640U);
  load();
  EXPECT_EQ(list.vnumber, 24);
}

TEST_F(Import, ASymbolicLinkStaysOne) {
  write_file(dir.path() + "real.dat", "old");
  fs::create_symlink("real.dat", dir.path() + "list.dat");

  EXPECT_EQ(run({sample, "-o", "list.dat"}).exit_code, 0);

  EXPECT_TRUE(fs::is_symlink(dir.path() + "list.dat"));
  load("real.dat");
  EXPECT_EQ(list.vnumber, 24);
}

TEST_F(Import, WithoutAServiceNothingIsWritten) {
  write_file(dir.path() + "list.dat", "old");

  const program_result result = import("broken\n");

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "channels.conf:1: skipped: has 1 field instead of 13\n"
                        "chlist: channels.conf: no service to import\n");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(read_file(dir.path() + "list.dat"), "old");
}

TEST_F(Import, AnEmptyInputIsRefused) {
  EXPECT_EQ(import("").exit_code, 2);
  EXPECT_TRUE(files().empty());
}

TEST_F(Import, AFailedWriteLeavesTheOldOutputAndNoOther) {
  write_file(dir.path() + "list.dat", "old");
  const std::string limited = "trap '' XFSZ; ulimit -f 100; exec " CHLIST_PROGRAM " import " + sample + " -o list.dat";

  const program_result result = run_program({"/bin/sh", "-c", limited}, dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: list.dat: the channel file could not be written\n");
  EXPECT_EQ(read_file(dir.path() + "list.dat"), "old");
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat"}));
}

TEST_F(Import, InputThatCannotBeReadIsRefused) {
  EXPECT_EQ(run({"missing.conf", "-o", "list.dat"}).err, "chlist: missing.conf: cannot be read\n");
  EXPECT_EQ(run({"missing.conf", "-o", "list.dat"}).exit_code, 2);
  EXPECT_EQ(run({"/tmp", "-o", "list.dat"}).err, "chlist: /tmp: cannot be read\n");
  EXPECT_TRUE(files().empty());
}

TEST_F(Import, OutputThatCannotBeWrittenIsRefused) {
  EXPECT_EQ(run({sample, "-o", "missing/list.dat"}).exit_code, 2);
  EXPECT_EQ(run({sample, "-o", dir.path()}).exit_code, 2);
  EXPECT_EQ(run({sample, "-o", "/dev/null"}).err, "chlist: /dev/null: not a regular file\n");
  EXPECT_TRUE(files().empty());
}

TEST_F(Import, TheInputIsNotOverwritten) {
  const std::string text = service_line().text();

  const program_result result = import(text, "./channels.conf");

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: ./channels.conf: is the input itself\n");
  EXPECT_EQ(read_file(dir.path() + "channels.conf"), text);
}

TEST_F(Import, BadUsageIsRefused) {
  EXPECT_EQ(run_program({CHLIST_PROGRAM}).exit_code, 2);
  EXPECT_EQ(run_program({CHLIST_PROGRAM, "unknown"}).exit_code, 2);
  EXPECT_EQ(run({}).exit_code, 2);
  EXPECT_EQ(run({sample}).exit_code, 2);
  EXPECT_EQ(run({sample, "-o", "list.dat", "more"}).exit_code, 2);
  EXPECT_EQ(run_program({CHLIST_PROGRAM, "--log-level", "6", "import", sample, "-o", "list.dat"}).exit_code, 2);
}

TEST_F(Import, HelpNamesTheExitCodes) {
  const program_result result = run({"--help"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  0  everything was imported")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  1  imported, but lines were skipped or a view was too small")) << result.out;
}

TEST_F(Import, TheLogLevelLetsTheLibrarySpeak) {
  write_file(dir.path() + "channels.conf", service_line().text() + service_line().text());

  const program_result result =
      run_program({CHLIST_PROGRAM, "--log-level", "1", "import", "channels.conf", "-o", "list.dat"}, dir.path());

  EXPECT_NE(result.err.find("WARNING: add_rch_info:"), std::string::npos) << result.err;
}

}  // namespace
