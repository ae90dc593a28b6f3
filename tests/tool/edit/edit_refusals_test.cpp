// What edits refuse, and what they leave beside the file.
#include <sys/stat.h>

#include "support/old_channel_file.h"
#include "tool/edit/edit_host.h"

namespace {

namespace fs = std::filesystem;

using namespace edit_test;

class EditRefusals : public edit_host {};

TEST_F(EditRefusals, ServicesThatAreNotThereOrCouldBeSeveral) {
  expect_refused({"lock", "list.dat", "Opera"}, "no service has the number, the name or the identity \"Opera\"");
  const auto ambiguous = run({"lock", "list.dat", "s"});
  EXPECT_EQ(ambiguous.exit_code, 2);
  EXPECT_TRUE(ambiguous.err.starts_with("chlist: lock: \"s\" could be any of 4 services:\n")) << ambiguous.err;
  expect_bytes(before.data);
}

TEST_F(EditRefusals, AServiceWhoseIdentityLeadsToAnother) {
  channel_file twice = own_list();
  twice.service({.ts_id = 200, .frequency = 12'000'000, .service_id = 3, .polarisation = 1, .name = "Copy"});
  before = twice;
  write_file(path(), before.data);

  const std::string error =
      "\"Copy\" (net 1, network 1, ts 200, 12000000 V, service 3) cannot be edited: its identity leads to another "
      "service or to none";

  expect_refused({"rename", "list.dat", "Copy", "X"}, error);
  expect_refused({"keep", "list.dat", "News", "--yes"}, error);
}

TEST_F(EditRefusals, ABackupInPlaceOfTheInput) {
  write_file(path() + ".bak", before.data);

  expect_refused({"lock", "list.dat.bak", "News", "-o", "list.dat"}, path() + ".bak: is the input itself");
}

TEST_F(EditRefusals, ABackupThatLeadsToTheFile) {
  fs::create_symlink("list.dat", path() + ".bak");

  expect_refused({"lock", "list.dat", "News"}, path() + ".bak: is the input itself");
}

TEST_F(EditRefusals, ServicesWithoutAFrequencyAreNeitherRemovedNorFiledAnew) {
  channel_file lost = own_list();
  lost.service({.ts_id = 300, .frequency = 0, .service_id = 8, .name = "Lost"});
  before = lost;
  write_file(path(), before.data);
  const std::string error =
      "\"Lost\" (net 1, network 1, ts 300, 0 H, service 8) cannot be removed or filed anew: it has no frequency";

  expect_refused({"remove", "list.dat", "Lost"}, error);
  expect_refused({"set", "list.dat", "Lost", "frequency=11306000"}, error);
}

TEST_F(EditRefusals, GroupsBeyondTheirTable) {
  expect_refused({"fav", "move", "list.dat", "Best", "--to", "65537"},
                 "position 65537 is not there: it can be 1 to 2 among the favourite groups");
}

TEST_F(EditRefusals, NamesWithoutAByte) {
  expect_refused({"rename", "list.dat", "News", ""}, "a name has one byte at least");
}

TEST_F(EditRefusals, NamesWithControlsOrOfNoUtf8) {
  expect_refused({"rename", "list.dat", "News", "A\x1B[31mB"}, "the name holds a control character, U+001B");
  expect_refused({"rename", "list.dat", "News", "A\nB"}, "the name holds a control character, U+000A");
  expect_refused({"rename", "list.dat", "News", "A\x7F", "--short"}, "the name holds a control character, U+007F");
  expect_refused({"rename", "list.dat", "News",
                  "\xC2\x86"
                  "A"},
                 "the name holds a control character, U+0086");
  expect_refused({"rename", "list.dat", "News", "A\xE9"}, "the name is not UTF-8");
  expect_refused({"set", "list.dat", "News", "provider=A\tB"}, "provider: the name holds a control character, U+0009");
  expect_refused({"set", "list.dat", "News", "provider=\xFF"}, "provider: the name is not UTF-8");
  expect_refused({"fav", "new", "list.dat", "A\rB"}, "the name holds a control character, U+000D");
  expect_bytes(before.data);
}

TEST_F(EditRefusals, PlacesThatAreNotThere) {
  expect_refused({"move", "list.dat", "News", "--to", "6"},
                 "position 6 is not there: it can be 1 to 5 in the ALL view");
  expect_refused({"move", "list.dat", "News", "--to", "0"},
                 "position 0 is not there: it can be 1 to 5 in the ALL view");
  expect_refused({"move", "list.dat", "News", "--to=-1"}, "position -1 is not there: it can be 1 to 5 in the ALL view");
  expect_refused({"move", "list.dat", "News", "Films", "--to", "5"},
                 "position 5 is not there: it can be 1 to 4 in the ALL view");
  expect_refused({"move", "list.dat", "News", "--before", "News"}, "\"News\" is itself to be moved");
  expect_refused({"move", "list.dat", "Music", "--to", "1", "--view", "tv"}, "\"Music\" has no entry in the TV view");
  expect_refused({"move", "list.dat", "News", "--after", "Music", "--view", "tv"},
                 "\"Music\" has no entry in the TV view");
  expect_refused({"sort", "list.dat", "--by", "name", "--view", "promo"}, "the promotion view cannot be sorted alone");
}

TEST_F(EditRefusals, UsageThatSaysTooLittleOrTooMuch) {
  for (const std::vector<std::string> &arguments :
       std::vector<std::vector<std::string>>{{"rename", "list.dat", "News"},
                                             {"move", "list.dat", "News"},
                                             {"move", "list.dat", "News", "--to", "1", "--before", "Films"},
                                             {"renumber", "list.dat", "News"},
                                             {"renumber", "list.dat"},
                                             {"renumber", "list.dat", "News", "7", "--from", "1"},
                                             {"renumber", "list.dat", "News", "7", "--swap", "--shift"},
                                             {"sort", "list.dat"},
                                             {"sort", "list.dat", "--by", "colour"},
                                             {"set", "list.dat", "News"},
                                             {"lock", "list.dat"},
                                             {"fav", "list.dat"},
                                             {"fav", "add", "list.dat", "Best"}}) {
    const auto result = run(arguments);

    EXPECT_EQ(result.exit_code, 2) << arguments[0];
    EXPECT_NE(result.err, "");
    expect_bytes(before.data);
  }
}

TEST_F(EditRefusals, AListWithoutServices) {
  before = channel_file();
  write_file(path(), before.data);

  expect_refused({"lock", "list.dat", "1"}, "no service has the number, the name or the identity \"1\"");
  EXPECT_EQ(run({"sort", "list.dat", "--by", "name"}).out, "list.dat: nothing to change\n");
  EXPECT_EQ(json::parse(run({"fav", "list", "list.dat", "--json"}).out)["groups"], json::array());
}

TEST_F(EditRefusals, FilesOfOtherVersions) {
  for (const int version : {7, 8, 9}) {
    write_file(path("old.dat"), in_version(test_support::old_version_of(version), before).data);

    const auto result = run({"lock", "old.dat", "News"});

    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: lock: old.dat: is of version " + std::to_string(version) +
                              ", not 10: `chlist convert` makes one of it\n");
  }
}

TEST_F(EditRefusals, FilesThatAreNotWhole) {
  before.data.resize(before.data.size() - 1);
  write_file(path(), before.data);

  expect_refused({"lock", "list.dat", "News"}, "list.dat: ends too early for a channel file of version 10");
  expect_refused({"lock", "none.dat", "News"}, "none.dat: No such file or directory");
}

TEST_F(EditRefusals, FilesThatNobodyMayWrite) {
  fs::permissions(path(), fs::perms(0444));

  expect_refused({"lock", "list.dat", "News"}, "list.dat: is read-only");
  EXPECT_EQ(run({"lock", "list.dat", "News", "-o", "out.dat"}).exit_code, 0);
}

class EditBackups : public edit_host {};

TEST_F(EditBackups, ThePreviousFileIsKeptWithItsMode) {
  fs::permissions(path(), fs::perms(0640));

  EXPECT_EQ(run({"lock", "list.dat", "News"}).exit_code, 0);

  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.history"}));
  expect_bytes(before.data, "list.dat.bak");
  EXPECT_EQ(fs::status(path("list.dat.bak")).permissions(), fs::perms(0640));
  EXPECT_EQ(fs::status(path()).permissions(), fs::perms(0640));
}

TEST_F(EditBackups, AnEarlierBackupIsReplaced) {
  EXPECT_EQ(run({"lock", "list.dat", "News"}).exit_code, 0);
  const bytes locked = read_file(path());
  EXPECT_EQ(run({"skip", "list.dat", "News"}).exit_code, 0);

  expect_bytes(locked, "list.dat.bak");
}

TEST_F(EditBackups, CanBeLeftOut) {
  EXPECT_EQ(run({"lock", "list.dat", "News", "--no-backup"}).exit_code, 0);

  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat"}));
}

TEST_F(EditBackups, AreKeptOfAnotherOutputThatWasThere) {
  write_file(path("out.dat"), "before");

  EXPECT_EQ(run({"lock", "list.dat", "News", "-o", "out.dat"}).exit_code, 0);

  expect_bytes("before", "out.dat.bak");
}

TEST_F(EditBackups, ALinkStaysOneAndTheBackupIsBesideItsFile) {
  fs::create_directory(path("real"));
  fs::rename(path(), path("real/channels.dat"));
  fs::create_symlink("real/channels.dat", path());

  EXPECT_EQ(run({"lock", "list.dat", "News"}).exit_code, 0);

  EXPECT_TRUE(fs::is_symlink(path()));
  expect_bytes(before.data, "real/channels.dat.bak");
  expect_bytes(with(service_at(before, 0) + service_field::flag, 1, 2));
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "real"}));
}

TEST_F(EditBackups, WhatCannotBeKeptIsNotReplaced) {
  fs::create_directory(path("list.dat.bak"));

  expect_refused({"lock", "list.dat", "News"},
                 fs::canonical(dir.path()).string() + "/list.dat.bak: not a regular file");
}

}  // namespace
