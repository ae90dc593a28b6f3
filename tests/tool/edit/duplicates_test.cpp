// `chlist duplicates`: which services are the same, which of them stays, and what becomes of the others.
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

const service_data films_hd = {
    .ts_id = 200, .frequency = 12'000'000, .service_id = 22, .polarisation = 1, .name = "FILMS HD", .flag = 0x04};
const service_data news_again = {
    .ts_id = 200, .frequency = 12'000'000, .service_id = 1, .polarisation = 1, .name = "News"};
const service_data music_on_tv = {
    .ts_id = 200, .frequency = 12'000'000, .service_id = 9, .polarisation = 1, .name = "Music"};

class Duplicates : public edit_host {
 protected:
  void SetUp() override {
    before.service(films_hd).service(news_again).service(music_on_tv);
    before.entry(VIEW_ALL, films_hd, 60).entry(VIEW_ALL, news_again, 61).entry(VIEW_TV, films_hd, 60);
    edit_host::SetUp();
  }

  // Each group as "what stays: the others", by names and service ids.
  [[nodiscard]] std::vector<std::string> groups(const std::vector<std::string> &options) const {
    std::vector<std::string> texts;
    const json document = json::parse(run({"duplicates", "list.dat", "--json"}, options).out);
    for (const json &group : document["tables"].elements().front()["duplicate_groups"].elements()) {
      std::string text = text_of(group["stays"]) + ":";
      for (const json &other : group["duplicates"].elements()) {
        text += ' ' + text_of(other);
      }
      texts.push_back(text);
    }
    return texts;
  }

 private:
  static std::string text_of(const json &service) {
    return service["name"].as_string() + '/' + std::to_string(service["ts_id"].as_integer());
  }
};

using texts = std::vector<std::string>;

TEST_F(Duplicates, AreTheSameByIdsOrByNameWithOrWithoutQuality) {
  EXPECT_EQ(groups({}), (texts{"News/100: News/200"}));
  EXPECT_EQ(groups({"--by", "name"}), (texts{"News/100: News/200", "FILMS HD/200: Films/100"}));
  EXPECT_EQ(groups({"--by", "name+quality"}), (texts{"News/100: News/200"}));
}

TEST_F(Duplicates, WhatIsPreferredStays) {
  EXPECT_EQ(groups({"--by", "name", "--prefer", "free,hd"}), (texts{"News/100: News/200", "Films/100: FILMS HD/200"}));
  EXPECT_EQ(groups({"--by", "name", "--prefer", "lower-number"}),
            (texts{"News/100: News/200", "Films/100: FILMS HD/200"}));
  ASSERT_EQ(run({"renumber", "list.dat", "61", "1", "--swap", "--view", "all"}).exit_code, 0);
  EXPECT_EQ(groups({"--prefer", "lower-number"}), (texts{"News/200: News/100"}));
}

TEST_F(Duplicates, NothingIsWrittenUnlessItIsAskedFor) {
  const auto result = run({"duplicates", "list.dat"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.out, "1 group of the same service, by ids: 1 service besides those that stay\n"
                        "group             number  name  identity             scrambled\n"
                        "    1  stays           1  News  1:1:100:11000000H:1  no\n"
                        "    1  duplicate      61  News  1:1:200:12000000V:1  no\n"
                        "list.dat: nothing to change\n");
  expect_bytes(before.data);
}

TEST_F(Duplicates, TheOthersArePassedOver) {
  ASSERT_EQ(run({"skip", "list.dat", "61", "-o", "expected.dat"}).exit_code, 0);

  expect_edit({"duplicates", "list.dat", "--yes", "--skip"}, read_file(path("expected.dat")));
}

TEST_F(Duplicates, TheTableTellsWhatBecomesOfThem) {
  const auto tells = [this](const std::string &option, const std::string &word) {
    return run({"duplicates", "list.dat", "--dry-run", option}).out.find("  " + word + "  ") != std::string::npos;
  };
  EXPECT_TRUE(tells("--skip", "skipped"));
  EXPECT_TRUE(tells("--remove", "removed"));
  EXPECT_TRUE(tells("--order", "behind it"));
}

TEST_F(Duplicates, OnlyThoseThatMeetACondition) {
  EXPECT_EQ(groups({"--by", "name", "--where", "frequency=12000000"}), texts());
  EXPECT_EQ(groups({"--by", "name", "--where", "name~films"}), (texts{"FILMS HD/200: Films/100"}));
  EXPECT_EQ(groups({"--by", "name", "--where", "name~news"}), (texts{"News/100: News/200"}));
}

TEST_F(Duplicates, SeveralAreShownFirst) {
  const auto result = run({"duplicates", "list.dat", "--by", "name", "--remove"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_NE(result.out.find("preview: 2 services chosen, changed\n"), std::string::npos) << result.out;
  expect_bytes(before.data);
}

TEST_F(Duplicates, AreALineOfApply) {
  const std::string line = run({"duplicates", "none.dat", "--by", "name", "--order", "--print-edits"}).out;
  EXPECT_EQ(line, "duplicates --by name --prefer hd,free,lower-number --order\n");
  ASSERT_EQ(run({"duplicates", "list.dat", "--by", "name", "--order", "--yes", "-o", "expected.dat"}).exit_code, 0);
  write_file(path("a.edits"), line);

  expect_edit({"apply", "list.dat", "a.edits", "--yes"}, read_file(path("expected.dat")));
}

TEST_F(Duplicates, TheOthersGo) {
  ASSERT_EQ(run({"remove", "list.dat", "61", "2", "-o", "expected.dat"}).exit_code, 0);

  expect_edit({"duplicates", "list.dat", "--yes", "--by", "name", "--remove"}, read_file(path("expected.dat")));
}

TEST_F(Duplicates, TheOthersComeBehindWhatStays) {
  bytes expected = before.data;
  reorder(expected, VIEW_ALL, {0, 5, 2, 3, 4, 1, 6});
  reorder(expected, VIEW_TV, {0, 3, 2, 1});

  expect_edit({"duplicates", "list.dat", "--yes", "--by", "name", "--order"}, expected);
}

TEST_F(Duplicates, AServiceThatItsIdentityDoesNotLeadToStaysWithANote) {
  before.service(music_on_tv).service(music_on_tv);
  write_file(path(), before.data);

  const auto result = run({"duplicates", "list.dat", "--remove", "--dry-run"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_NE(result.err.find("stays as it is: its identity leads to another service or to none"), std::string::npos)
      << result.err;
}

TEST_F(Duplicates, RefusesWordsThatItDoesNotKnow) {
  expect_refused({"duplicates", "list.dat", "--prefer", "hd,fre"},
                 "no preference \"fre\": did you mean \"free\"? There are hd, free, lower-number");
  EXPECT_EQ(run({"duplicates", "list.dat", "--by", "looks"}).exit_code, 2);
  EXPECT_EQ(run({"duplicates", "list.dat", "--skip", "--remove"}).exit_code, 2);
  expect_bytes(before.data);
}

}  // namespace
