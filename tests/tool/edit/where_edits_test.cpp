// Edits of services that a condition chooses: which ones change, and what is asked before.
#include "chlist/json/json.h"
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

class WhereEdits : public edit_host {
 protected:
  void SetUp() override {
    edit_host::SetUp();
    same_by_names = path("by_names.dat");
  }

  // The file that the same edit makes of services that are named.
  [[nodiscard]] bytes edited(std::vector<std::string> arguments) const {
    write_file(same_by_names, before.data);
    arguments.insert(arguments.begin() + (arguments.front() == "fav" ? 2 : 1), same_by_names);
    arguments.emplace_back("--no-backup");
    EXPECT_EQ(run(arguments).exit_code, 0);
    bytes made = read_file(same_by_names);
    std::filesystem::remove(same_by_names);
    return made;
  }

  std::string same_by_names;
};

TEST_F(WhereEdits, ChangeWhatTheyWouldChangeByName) {
  struct {
    std::vector<std::string> chosen;
    std::vector<std::string> named;
  } const edits[] = {
      {{"lock", "list.dat", "--where", "type=TV ts_id<200"}, {"lock", "News", "Films"}},
      {{"lock", "list.dat", "--off", "--where", "number>0"}, {"unlock", "News", "Films", "Music", "Sport"}},
      {{"unlock", "list.dat", "--where", "name~'^s'"}, {"unlock", "Sport"}},
      {{"skip", "list.dat", "--where", "type=radio or name=Films"}, {"skip", "Films", "Music"}},
      {{"remove", "list.dat", "--where", "favourites=Kids or type=radio"}, {"remove", "Sport", "Music"}},
      {{"keep", "list.dat", "--where", "ts_id=200"}, {"remove", "News", "Films", "Music"}},
      {{"keep", "list.dat", "Sport"}, {"remove", "News", "Films", "Music"}},
      {{"move", "list.dat", "--where", "name~[mp]", "--to", "1"}, {"move", "Films", "Music", "Sport", "--to", "1"}},
      {{"move", "list.dat", "--where", "number<5", "--view", "user", "--to", "1"},
       {"move", "News", "--view", "user", "--to", "1"}},
      {{"fav", "add", "list.dat", "Kids", "--where", "type=radio"}, {"fav", "add", "Kids", "Music"}},
      {{"fav", "remove", "list.dat", "Best", "--where", "number<4"}, {"fav", "remove", "Best", "News", "Films"}},
      {{"fav", "move", "list.dat", "Best", "--where", "number=4", "--to", "1"},
       {"fav", "move", "Best", "Sport", "--to", "1"}},
  };
  for (const auto &edit : edits) {
    SCOPED_TRACE(edit.chosen.front() + ' ' + edit.chosen.back());
    write_file(path(), before.data);

    const program_result result = run(edit.chosen, {"--yes"});

    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    expect_bytes(edited(edit.named));
  }
}

TEST_F(WhereEdits, SetFieldsOfSeveralServices) {
  ASSERT_EQ(run({"set", "list.dat", "--where", "type=TV", "video_pid=7", "pcr_pid=8", "--yes"}).exit_code, 0);

  for (const std::size_t service : {0U, 1U, 3U}) {
    EXPECT_EQ(get(read_file(path()), service_at(before, service) + service_field::video_pid, 2), 7U);
    EXPECT_EQ(get(read_file(path()), service_at(before, service) + service_field::pcr_pid, 2), 8U);
  }
  EXPECT_NE(get(read_file(path()), service_at(before, 2) + service_field::video_pid, 2), 7U);
}

TEST_F(WhereEdits, ReplaceAPartOfTheNames) {
  ASSERT_EQ(run({"rename", "list.dat", "--where", "type=TV", "--replace", "/S$/z/", "--yes"}).exit_code, 0);

  const program_result listed = run({"list", "list.dat", "--columns", "name"});
  EXPECT_TRUE(has_line(listed.out, "Newz"));
  EXPECT_TRUE(has_line(listed.out, "Filmz"));
  EXPECT_TRUE(has_line(listed.out, "Sport"));
  EXPECT_EQ(run({"rename", "list.dat", "Newz", "--replace", "/z/s HD/"}).exit_code, 0);
  EXPECT_TRUE(has_line(run({"list", "list.dat", "--columns", "name"}).out, "News HD"));
}

TEST_F(WhereEdits, SeveralServicesAreShownAndNotChangedWithoutYes) {
  const program_result result = run({"lock", "list.dat", "--where", "type=TV"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: lock: list.dat: 3 services are chosen, and none is changed without --yes\n");
  EXPECT_EQ(tool_test::lines_of(result.out).front(), "preview: 3 services chosen, changed");
  for (const char *name : {"News", "Films", "Sport"}) {
    EXPECT_NE(result.out.find(name), std::string::npos) << result.out;
  }
  expect_bytes(before.data);
  EXPECT_EQ(files(), std::vector<std::string>{"list.dat"});
}

TEST_F(WhereEdits, ServicesThatAreNotKeptAreShownFirst) {
  const program_result result = run({"keep", "list.dat", "Sport", "News"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: keep: list.dat: 2 services are chosen, and none is changed without --yes\n");
  expect_bytes(before.data);
}

TEST_F(WhereEdits, OneServiceADryRunAndNothingToChangeNeedNoYes) {
  EXPECT_EQ(run({"lock", "list.dat", "--where", "type=TV", "--dry-run"}).out.substr(0, 35),
            "dry run: 3 services chosen, changed");
  expect_bytes(before.data);
  EXPECT_EQ(run({"unlock", "list.dat", "--where", "type=TV"}).out, "list.dat: 3 services chosen, nothing to change\n");
  EXPECT_EQ(run({"lock", "list.dat", "--where", "name=Nobody"}).out,
            "list.dat: 0 services chosen, nothing to change\n");
  EXPECT_EQ(run({"lock", "list.dat", "--where", "type=radio"}).exit_code, 0);
  EXPECT_EQ(get(read_file(path()), service_at(before, 2) + service_field::flag, 1) & 2U, 2U);
}

TEST_F(WhereEdits, AreAskedAboutOnATerminal) {
  const std::pair<const char *, bool> answers[] = {{"yes\n", true}, {"Y\n", true}, {"\n", false}, {"no\n", false}};
  for (const auto &[answer, agrees] : answers) {
    SCOPED_TRACE(answer);
    write_file(path(), before.data);
    tool_test::terminal terminal({CHLIST_PROGRAM, "lock", path(), "--where", "type=TV"});

    terminal.wait_for("preview: 3 services chosen, changed");
    terminal.wait_for("\nChange " + path() + "? [y/N] ");
    terminal.type(answer);

    EXPECT_EQ(terminal.exit_code(), agrees ? 0 : 2);
    EXPECT_EQ(read_file(path()) == before.data, !agrees);
  }
}

TEST_F(WhereEdits, TellHowManyWereChosenInJson) {
  EXPECT_EQ(json::parse(run({"lock", "list.dat", "--where", "type=TV", "--yes", "--json"}).out)["chosen"], 3);
  EXPECT_TRUE(json::parse(run({"lock", "list.dat", "News", "--json"}).out)["chosen"].is_null());
  const json refused = json::parse(run({"unlock", "list.dat", "--where", "type=TV", "--json"}).out);
  EXPECT_EQ(refused["error"]["message"], "list.dat: 3 services are chosen, and none is changed without --yes");
}

TEST_F(WhereEdits, RefuseWhatDoesNotGoTogether) {
  expect_refused({"lock", "list.dat"}, "SERVICE or --where is required: see `chlist help lock`");
  expect_refused({"rename", "list.dat", "--where", "type=TV"}, "--where needs --replace: see `chlist help rename`");
  expect_refused({"rename", "list.dat", "News"},
                 "SERVICE and NAME (or --replace) is required: see `chlist help rename`");
  expect_refused({"set", "list.dat", "--where", "type=TV"}, "FIELD=VALUE is required: see `chlist help set`");
  expect_refused({"keep", "list.dat", "--where", "name=Nobody"},
                 "no service is chosen: nothing would be left of the list");
  expect_refused({"rename", "list.dat", "News", "--replace", "/.*//"}, "nothing would be left of the name \"News\"");
  expect_refused({"lock", "list.dat", "--where", "name"},
                 "--where, character 5: behind name one of = != ~ !~ < > is missing");
}

}  // namespace
