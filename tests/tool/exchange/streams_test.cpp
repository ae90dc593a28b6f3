// Lists that come and go through pipes: every format that is one file, read once and from its first byte.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "support/rounds.h"
#include "tool/exchange/import_host.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using namespace tool_test;

class Streams : public tool_test::import_test {
 protected:
  // More than what tells a format.
  void SetUp() override {
    import_test::SetUp();
    std::string text;
    for (int n = 1; n <= services; ++n) {
      text += service_line{.name = "Service " + std::to_string(n), .service_id = std::to_string(n)}.text();
    }
    write_file(path("channels.conf"), text);
    ASSERT_EQ(run({"import", "channels.conf", "-o", "box.dat"}).exit_code, 0);
  }

  [[nodiscard]] program_result shell(const std::string &line) const {
    return run_program({"/bin/bash", "-c", "chlist=" CHLIST_PROGRAM "; " + line}, dir.path());
  }
  [[nodiscard]] std::string read(const std::string &name) const { return read_file(path(name)); }

  static constexpr int services = 200;
  const std::vector<std::string> read_formats = {"json", "csv", "vdr", "dvbv5"};
};

TEST_F(Streams, EveryFormatOfOneFileIsReadFromAPipe) {
  for (const std::string &format : read_formats) {
    ASSERT_LT(run({"export", "box.dat", "-o", "list", "--to", format}).exit_code, 2);
    ASSERT_EQ(run({"import", "list", "-o", "file.dat", "--no-backup"}).exit_code, 0) << format;
    for (const char *line :
         {"cat list | $chlist import /dev/stdin -o piped.dat --no-backup",
          "cat list | $chlist import - -o piped.dat --no-backup", "$chlist import - -o piped.dat --no-backup < list",
          "$chlist import <(cat list) -o piped.dat --no-backup"}) {
      const program_result result = shell(line);

      EXPECT_EQ(result.exit_code, 0) << format << ": " << line << ": " << result.err;
      EXPECT_TRUE(read("piped.dat") == read("file.dat")) << format << ": " << line;
    }
  }
}

TEST_F(Streams, ALamedbIsReadFromAPipeWithoutItsFolder) {
  for (const char *format : {"lamedb3", "lamedb4", "lamedb5"}) {
    ASSERT_LT(run({"export", "box.dat", "-o", format, "--to", format}).exit_code, 2);
    const program_result result =
        shell("cat " + std::string(format) + "/lamedb* | $chlist import - -o piped.dat --no-backup");

    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_TRUE(result.out.starts_with("piped.dat: 200 services ")) << result.out;
  }
}

TEST_F(Streams, EveryFormatOfOneFileIsWrittenToStandardOutputAndItsReportToStandardError) {
  for (const char *format : {"json", "csv", "vdr", "dvbv5", "m3u"}) {
    const int exit_code = run({"export", "box.dat", "-o", "list", "--to", format}).exit_code;

    const program_result result = run({"export", "box.dat", "-o", "-", "--to", format});

    EXPECT_LT(exit_code, 2) << format;
    EXPECT_EQ(result.exit_code, exit_code) << format;
    EXPECT_TRUE(result.out == read("list")) << format;
    EXPECT_TRUE(result.err.starts_with("standard output: ")) << format << ": " << result.err;
  }
  EXPECT_EQ(files(), (std::vector<std::string>{"box.dat", "box.dat.more.json", "channels.conf", "list"}));
}

TEST_F(Streams, AnImportIsWrittenToStandardOutputWithNothingBesideIt) {
  const program_result result = run({"import", "channels.conf", "-o", "-"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(result.out == read("box.dat"));
  EXPECT_TRUE(result.err.starts_with("standard output: 200 services ")) << result.err;
}

TEST_F(Streams, WhatCannotBeOneStreamIsRefused) {
  expect_refused({"export", "box.dat", "-o", "-", "--to", "lamedb4"},
                 "standard output: lamedb4 is a folder of several files; -o names it");
  const json refused = json::parse(run({"export", "box.dat", "-o", "-", "--to", "csv", "--json"}).out);
  EXPECT_EQ(refused["error"]["message"], "--json: standard output takes the list already: see `chlist help export`");
  const std::string unnamed = run({"export", "box.dat", "-o", "-"}).err;
  EXPECT_TRUE(unnamed.starts_with("chlist: export: standard output: its name tells no format; --to names it: json"))
      << unnamed;
}

TEST_F(Streams, AnOutputThatIsTheInputIsRefusedThroughStandardInputToo) {
  const program_result result = shell("$chlist import - -o channels.conf < channels.conf");

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: import: channels.conf: is the input itself\n");
}

TEST_F(Streams, AFullDeviceIsAFailure) {
  const program_result result = shell("$chlist export box.dat -o - --to csv > /dev/full");

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: export: standard output: No space left on device\n");
}

TEST_F(Streams, MessagesNameStandardInput) {
  const program_result result = shell("(cat channels.conf; echo broken) | $chlist import - -o piped.dat");

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(result.err.starts_with("chlist: import: standard input:201: skipped: has 1 field ")) << result.err;
}

TEST_F(Streams, APipeThatNobodyWritesIsRefusedAfterAWhile) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);

  expect_refused({"import", "pipe", "-o", "out.dat"}, "pipe: is a pipe that nobody writes");
}

TEST_F(Streams, APipeWhoseWriterComesLateIsRead) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);

  const program_result result = shell("(sleep 0.3; cat channels.conf > pipe) & $chlist import pipe -o out.dat");

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_TRUE(read("out.dat") == read("box.dat"));
}

// A sanitizer reserves more addresses than any limit leaves: under one the refusal alone is looked at.
TEST_F(Streams, WhatIsTooLargeIsRefusedAsAnyFormatInLittleMemory) {
  const std::string limit = test_support::is_sanitized ? "" : "ulimit -v 400000; ";
  ASSERT_EQ(run_program({"/bin/bash", "-c", "truncate -s 2G huge"}, dir.path()).exit_code, 0);
  for (const std::string format : {"json", "csv", "vdr", "dvbv5", "lamedb3", "lamedb4", "lamedb5"}) {
    for (const std::string input : {"/dev/zero", "huge"}) {
      const program_result result = shell(limit + "$chlist import " + input + " --from " + format + " -o out.dat");

      EXPECT_EQ(result.exit_code, 2) << format;
      EXPECT_EQ(result.err, "chlist: import: " + input + ": is larger than 16 MiB, too large for a list\n") << format;
    }
  }
}

TEST_F(Streams, WhatIsNotThereIsSaidToBeNotThere) {
  std::filesystem::create_directory(path("folder"));
  write_file(path("empty"), "");

  expect_refused({"import", "missing", "-o", "out.dat"}, "missing: No such file or directory");
  expect_refused({"import", "folder", "-o", "out.dat"}, "folder: is a folder without a lamedb or a lamedb5, no list");
  expect_refused({"import", "empty", "-o", "out.dat"}, "empty: is empty");
}

TEST_F(Streams, AChannelFileThatIsReplacedIsKept) {
  const std::string before = read("box.dat");
  write_file(path("channels.conf"), service_line().text());

  const program_result first = run({"import", "channels.conf", "-o", "new.dat"});
  const program_result again = run({"import", "channels.conf", "-o", "box.dat"});
  const program_result quiet = run({"import", "channels.conf", "-o", "new.dat", "--no-backup", "--json"});

  EXPECT_EQ(first.out.find("is kept as"), std::string::npos) << first.out;
  EXPECT_TRUE(has_line(again.out, "box.dat: what it was is kept as box.dat.bak")) << again.out;
  EXPECT_TRUE(read("box.dat.bak") == before);
  EXPECT_TRUE(json::parse(quiet.out)["backup"].is_null());
  EXPECT_EQ(files(),
            (std::vector<std::string>{"box.dat", "box.dat.bak", "box.dat.history", "box.dat.more.json",
                                      "box.dat.more.json.bak", "channels.conf", "new.dat", "new.dat.more.json"}));
}

TEST_F(Streams, AFolderIsImportedAgainOverWhatItMade) {
  ASSERT_LT(run({"export", "box.dat", "-o", "folder", "--to", "lamedb4"}).exit_code, 2);

  EXPECT_EQ(run({"import", "folder", "-o", "folder/list.dat"}).exit_code, 0);
  const program_result again = run({"import", "folder", "-o", "folder/list.dat"});

  EXPECT_EQ(again.exit_code, 0) << again.err;
  EXPECT_TRUE(has_line(again.out, "folder/list.dat: what it was is kept as folder/list.dat.bak")) << again.out;
}

}  // namespace
