// What of a list an import takes: by the fields of services, by what they are, and by the room that there is.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/command.h"
#include "tool/exchange/import_host.h"
#include "tool/exchange/line_ups.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using namespace tool_test;

class ServiceChoice : public tool_test::import_test {
 protected:
  void SetUp() override {
    import_test::SetUp();
    write_file(path("channels.conf"),
               ":News\n" + service_line{.name = "A;North, Ltd", .source = "S19.2E", .service_id = "1"}.text() +
                   service_line{.name = "B;South", .source = "S19.2E", .ca_ids = "B00", .service_id = "2"}.text() +
                   ":Radio\n" +
                   service_line{.name = "C;South", .source = "S13.0E", .video = "0", .service_id = "3"}.text() +
                   service_line{.name = "D", .source = "C", .service_id = "4"}.text());
  }

  [[nodiscard]] std::string names_taken(const std::vector<std::string> &options) const {
    const program_result result = run({"import", "channels.conf", "-o", "list.dat", "--no-backup"}, options);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    std::string names;
    for (const std::string &line : lines_of(run({"list", "list.dat", "--columns", "name", "--format", "csv"}).out)) {
      names += line.substr(0, 1);
    }
    return names.substr(1);
  }
};

TEST_F(ServiceChoice, ConditionsAreThoseOfEdits) {
  EXPECT_EQ(names_taken({"--where", "scrambled=no"}), "ACD");
  EXPECT_EQ(names_taken({"--where", "scrambled=no", "--where", "network_name~^s1"}), "AC");
  EXPECT_EQ(names_taken({"--where", "service_id=4"}), "D");
  EXPECT_EQ(names_taken({"--where", "favourites~radio"}), "CD");
  expect_refused({"import", "channels.conf", "-o", "out.dat", "--where", "scrambled=perhaps"},
                 "--where, character 11: scrambled=\"perhaps\": VALUE is yes or no");
}

TEST_F(ServiceChoice, SourcesProvidersAndTypesAreNamed) {
  EXPECT_EQ(names_taken({"--only", "s19.2e"}), "AB");
  EXPECT_EQ(names_taken({"--only", "S19.2E,C"}), "ABD");
  EXPECT_EQ(names_taken({"--only", "South", "--only", "TV"}), "B");
  EXPECT_EQ(names_taken({"--without", "North, Ltd"}), "BCD");
  EXPECT_EQ(names_taken({"--without", "radio", "--without", "C,teletext"}), "AB");
  const std::string unknown = run({"import", "channels.conf", "-o", "out.dat", "--only", "S19.3E"}).err;
  EXPECT_TRUE(
      unknown.starts_with("chlist: import: --only: no source, provider or type \"S19.3E\": did you mean \"S19.2E\"?"))
      << unknown;
}

TEST_F(ServiceChoice, GroupsFollowAndWhatIsLeftOutIsCounted) {
  const program_result result = run({"import", "channels.conf", "-o", "list.dat", "--only", "S19.2E"});

  EXPECT_TRUE(has_line(result.out, "list.dat: 1 favourite group")) << result.out;
  EXPECT_TRUE(has_line(result.out, "list.dat: 2 services not asked for")) << result.out;
}

chlist::line_up many(int services) {
  std::vector<chlist::line_up_service> all;
  for (int n = 1; n <= services; ++n) {
    all.push_back(service_named("S" + std::to_string(n), n));
    all.back().fields.frequency = 10'700'000 + n / 100 * 10'000;
    all.back().fields.ts_id = static_cast<std::uint16_t>(n / 100);
    all.back().set_flag(CHANNEL_FLAG_FTA, true);
  }
  return line_up_of(std::move(all));
}

class ServiceRoom : public line_up_test {
 protected:
  [[nodiscard]] static std::vector<std::string> names_in(std::int8_t view) {
    std::vector<std::string> names;
    for (const int id : test_support::service_ids(view)) {
      names.push_back("S" + std::to_string(id));
    }
    return names;
  }
};

TEST_F(ServiceRoom, FavouritesNumberedAndFreeServicesComeFirstAndWhatIsLeftOutIsSaidOnce) {
  chlist::line_up given = many(MAX_CHANNEL + 3);
  const std::size_t last = given.services.size() - 1;
  given.services[last].set_flag(CHANNEL_FLAG_FTA, false);
  given.services[last - 1].number = chlist::channel_number{9000};
  given.favourites = {{.name = "Mine", .entries = {{last - 2, {}}}}};

  const chlist::filled_list filled = fill_list(given, lost);

  const auto &fifth = filled.filed;
  EXPECT_EQ(std::ranges::count(fifth, nullptr), 3);
  EXPECT_NE(fifth[last], nullptr);
  EXPECT_NE(fifth[last - 1], nullptr);
  EXPECT_NE(fifth[last - 2], nullptr);
  EXPECT_EQ(fifth[last - 3], nullptr);
  EXPECT_TRUE(filled.skipped.empty());
  EXPECT_EQ(filled.left_out,
            (row_list{"the list is full: it holds 5000 services, 3 more are left out",
                      "the TV view is full: it holds 4000, 1000 more services are in the ALL view only",
                      "first come favourites, numbered, free (--prefer)"}));
}

TEST_F(ServiceRoom, TheOrderCanBeTold) {
  chlist::line_up given = many(MAX_CHANNEL + 1);
  given.services.back().number = chlist::channel_number{9000};
  given.services[MAX_CHANNEL - 1].set_flag(CHANNEL_FLAG_FTA, false);

  const auto filed = fill_list(given, lost, {.preferred = chlist::preferences_named("free")}).filed;

  EXPECT_EQ(filed[MAX_CHANNEL - 2], nullptr);
  EXPECT_NE(filed[MAX_CHANNEL - 1], nullptr);
  EXPECT_THROW(chlist::preferences_named("best"), chlist::usage_error);
}

TEST_F(ServiceRoom, TheTvViewShowsThoseThatComeFirstInTheOrderOfAll) {
  chlist::line_up given = many(MAX_TV_CHANNEL + 2);
  given.services.back().set_flag(CHANNEL_FLAG_FTA, false);

  fill_list(given, lost);

  EXPECT_EQ(list.vnumber, MAX_TV_CHANNEL + 2);
  EXPECT_EQ(list.tv_vnumber, MAX_TV_CHANNEL);
  EXPECT_EQ(test_support::service_ids(VIEW_TV).back(), MAX_TV_CHANNEL + 2);
  EXPECT_EQ(test_support::service_ids(VIEW_TV)[MAX_TV_CHANNEL - 2], MAX_TV_CHANNEL - 1);
}

TEST_F(ServiceRoom, ServicesThatAreTwiceTakeOnePlace) {
  chlist::line_up given = many(MAX_CHANNEL);
  given.services.insert(given.services.begin(), given.services.front());

  const chlist::filled_list filled = fill_list(given, lost);

  EXPECT_EQ(list.vnumber, MAX_CHANNEL);
  EXPECT_EQ(filled.skipped.size(), 1U);
}

}  // namespace
