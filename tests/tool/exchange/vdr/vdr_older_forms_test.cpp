// Lines of older channels.conf files, and the groups that their separators make.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/exchange/vdr/vdr.h"
#include "tool/exchange/import_host.h"
#include "tool/exchange/line_ups.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using namespace tool_test;
using chlist::line_up;

line_up parsed(std::string_view text, chlist::loss_counts &lost) {
  return chlist::line_up_of(chlist::parse_vdr_channels_conf(text), lost);
}

chlist::line_up_service only_service(std::string_view text) {
  chlist::loss_counts lost;
  const line_up read = parsed(text, lost);
  EXPECT_TRUE(read.skipped.empty()) << text << ": " << read.skipped.front().reason;
  EXPECT_EQ(read.services.size(), 1U);
  return read.services.size() == 1 ? read.services.front() : chlist::line_up_service{};
}

TEST(VdrOlderForms, LinesMayEndAtTheServiceIdAndWithoutATeletextPid) {
  for (const char *line :
       {"News:12188:h:S19.2E:27500:163:104:105:0:12003", "News:12188:h:S19.2E:27500:163:104:0:12003",
        "News:12188:h:S19.2E:27500:163:104:105:0:12003:0", "News:12188:h:S19.2E:27500:163:104:105:0:12003:0:0"}) {
    const chlist::line_up_service news = only_service(line);

    EXPECT_EQ(news.fields.service_id, 12003) << line;
    EXPECT_EQ(news.fields.video_pid, 163) << line;
    EXPECT_EQ(news.fields.audio_pid, 104) << line;
    EXPECT_EQ(news.fields.network_id, 0) << line;
    EXPECT_EQ(news.source, "S19.2E") << line;
  }
}

TEST(VdrOlderForms, NineFieldsHaveTheCaIdInFrontOfTheServiceId) {
  EXPECT_TRUE(only_service("News:12188:h:1:27500:163:104:B00:12003").has_flag(CHANNEL_FLAG_FTA));
}

TEST(VdrOlderForms, FieldsBehindTheLastAreCountedAndPassedOver) {
  chlist::loss_counts lost;

  const line_up read = parsed("Erste:177500:I999B7C34D34M16T8G8Y0:T:27500:513:514:0:0:14:8468:769:0:0:0", lost);

  ASSERT_EQ(read.services.size(), 1U);
  EXPECT_EQ(read.services.front().source, "T");
  EXPECT_EQ(read.services.front().fields.frequency, 177'500);
  EXPECT_EQ(read.services.front().fields.ts_id, 769);
  EXPECT_EQ(losses(lost), (row_list{"symbol rates and modulation: 1", "fields behind the RID: 1"}));
}

TEST(VdrOlderForms, TooFewFieldsAreRefused) {
  chlist::loss_counts lost;

  EXPECT_EQ(parsed("News:12188:h:1:27500:163:104:12003", lost).skipped.front().reason,
            "has 8 fields instead of 9 to 13");
}

TEST(VdrOlderForms, SourcesWithoutAPositionAreKnownByTheirNumber) {
  EXPECT_EQ(only_service("News:12188:h:1:27500:163:104:105:0:12003").source, "S#1");
  EXPECT_EQ(only_service("News:12188:h:S:27500:163:104:105:0:12003").source, "S");
  EXPECT_EQ(only_service("News:394:h:0:6900:163:104:105:0:12003").source, "C");
}

class VdrGroups : public tool_test::import_test {
 protected:
  [[nodiscard]] std::vector<std::string> groups() const {
    std::vector<std::string> names;
    for (std::int16_t group = 0; group < get_fav_group_number(); ++group) {
      names.push_back(std::string(get_fav_group_info(group)->name) + ": " + std::to_string(get_fav_vch_number(group)));
    }
    return names;
  }
  [[nodiscard]] static std::string service(int id, const std::string &source = "S13.5E") {
    return service_line{.name = "Service " + std::to_string(id), .source = source, .service_id = std::to_string(id)}
        .text();
  }
  const std::string text = service(1) + ":News\n" + service(2) + service(3) + ":@100 Sport|Films\n" + service(4) +
                           ":Nothing\n:@200\n:News\n" + service(5);
};

TEST_F(VdrGroups, SeparatorsBecomeFavouriteGroupsAndNumbers) {
  EXPECT_EQ(import(text).exit_code, 0);

  load();
  EXPECT_EQ(groups(), (std::vector<std::string>{"News: 3", "Sport:Films: 1"}));
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2, 3, 100, 200}));
}

TEST_F(VdrGroups, SeparatorsBecomeGenresOnWish) {
  write_file(path("channels.conf"), text);

  EXPECT_EQ(run({"import", "channels.conf", "-o", "list.dat", "--groups", "genres"}).exit_code, 0);

  load();
  EXPECT_TRUE(groups().empty());
  const std::string listed = run({"list", "list.dat", "--columns", "name,genre", "--format", "csv"}).out;
  EXPECT_EQ(listed, "name,genre\r\nService 1,\r\nService 2,News\r\nService 3,News\r\nService 4,Sport:Films\r\n"
                    "Service 5,News\r\n");
}

TEST_F(VdrGroups, SeparatorsBecomeNothingOnWishAndAreCounted) {
  write_file(path("channels.conf"), text);

  const program_result result = run({"import", "channels.conf", "-o", "list.dat", "--groups", "none"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  groups                                2")) << result.out;
}

TEST_F(VdrGroups, SourcesWithoutAPositionAreNamed) {
  write_file(path("channels.conf"), service(1, "S") + service(2, "1") + service(3, "S19.2E"));

  const program_result result =
      run({"import", "channels.conf", "-o", "list.dat", "--source", "S=S13.0E", "--source", "S#1=s19.2e"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(run({"list", "list.dat", "--columns", "network_name,net_index", "--format", "csv"}).out,
            "network_name,net_index\r\nS13.0E,1\r\nS19.2E,2\r\nS19.2E,2\r\n");
  expect_refused({"import", "channels.conf", "-o", "out.dat", "--source", "S#2=S13.0E"},
                 "--source: no source is named \"S#2\": see `chlist help import`");
  expect_refused({"import", "channels.conf", "-o", "out.dat", "--source", "S"},
                 "--source: \"S\" is not NAME=SOURCE: see `chlist help import`");
}

TEST_F(VdrGroups, SourcesOfDvbv5AreNamedAlike) {
  write_file(path("scan.conf"), "[News]\n\tSERVICE_ID = 1\n\tFREQUENCY = 11362000\n\tPOLARIZATION = HORIZONTAL\n"
                                "\tSAT_NUMBER = 1\n\tDELIVERY_SYSTEM = DVBS\n");

  EXPECT_EQ(run({"import", "scan.conf", "-o", "list.dat", "--source", "S#1=S19.2E"}).exit_code, 0);

  EXPECT_EQ(run({"list", "list.dat", "--columns", "network_name", "--format", "csv"}).out,
            "network_name\r\nS19.2E\r\n");
}

}  // namespace
