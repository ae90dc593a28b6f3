// `chlist report` as it is run: the page that it writes, the data in it, what it says, and what it refuses.
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/old_channel_file.h"
#include "tool/chlist_host.h"

namespace {

using namespace tool_test;

namespace fs = std::filesystem;

const service_data news = {.service_id = 1, .name = "News"};
const service_data music = {.service_id = 2, .service_type = SERVICE_TYPE_RADIO, .name = "Music", .flag = 0x04};

// A sound list of two services.
channel_file small_list() {
  channel_file file;
  file.service(news).service(music).group(GROUP_FAV, 0, "Best");
  file.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, music, 2).entry(VIEW_TV, news, 1).entry(VIEW_RADIO, music, 2);
  file.entry(VIEW_FAVOURITE, music, 2);
  return file;
}

class Report : public chlist_test {
 protected:
  program_result report(const bytes &contents, const std::vector<std::string> &more = {}) const {
    write_file(path(), contents);
    return run({"report", "list.dat", "-o", "page.html"}, more);
  }

  [[nodiscard]] std::string page() const { return read_file(path("page.html")); }

  // What stands between the tags of the data, as the browser reads it.
  [[nodiscard]] std::string data_text() const {
    const std::string begin = "<script id=\"data\" type=\"application/json\">";
    const std::string whole = page();
    const std::size_t from = whole.find(begin) + begin.size();
    return whole.substr(from, whole.find("</script", from) - from);
  }
  [[nodiscard]] json data() const { return json::parse(data_text()); }
};

TEST_F(Report, WritesAPageOfASoundList) {
  const program_result result = report(small_list().data);

  EXPECT_EQ(result.exit_code, 0) << result.out << result.err;
  EXPECT_EQ(result.out, "page.html: 2 services, 0 errors, 0 warnings\n");
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(page().starts_with("<!doctype html>\n"));
  EXPECT_TRUE(page().ends_with("</html>\n"));
  EXPECT_EQ(page().find("{{"), std::string::npos);
}

TEST_F(Report, PutsTheListIntoThePage) {
  report(small_list().data);

  const json found = data();
  EXPECT_EQ(found["file"], (json{{"name", "list.dat"}, {"version", 10}, {"size", small_list().data.size()}}));
  EXPECT_EQ(found["networks"].size(), 1U);
  EXPECT_EQ(found["transponders"], json::parse("[[0, 100, 11000000, 0]]"));
  EXPECT_EQ(found["services"][1], json::parse(R"(["Music", "", 0, [1, 1, 100, 11000000, 0, 2], 2, 1, 4, -1, -1, -1, 0,
                            [0, 0, 0, 0, 0], [0, 0]])"));
  EXPECT_EQ(found["views"].size(), 25U);
  EXPECT_EQ(found["views"][0]["entries"], json::parse("[[1, 0, 0], [2, 0, 1]]"));
  EXPECT_EQ(found["views"][5],
            json::parse(R"({"kind": "favourites", "group": 1, "name": "Best", "entries": [[2, 0, 1]]})"));
  EXPECT_EQ(found["findings"], json::array());
}

TEST_F(Report, NamesTheGroupsOfServices) {
  channel_file file;
  file.group(GROUP_PROVIDER, 7, "Other").group(GROUP_PROVIDER, 9, "Northlight").service(news);
  file.set_last(test_support::record_kind::service, service_field::provider_id, 2, 9)
      .entry(VIEW_ALL, news, 1)
      .entry(VIEW_TV, news, 1);

  report(file.data);

  EXPECT_EQ(data()["providers"], json::array({"Other", "Northlight"}));
  EXPECT_EQ(data()["services"][0][7], 1);
}

TEST_F(Report, NamesTheTypesOfServices) {
  channel_file file;
  file.service(news).service({.service_id = 3, .service_type = 0x19}).service({.service_id = 4, .service_type = 200});

  report(file.data);

  EXPECT_EQ(data()["service_types"], (json{{"1", "TV"}, {"25", "HD TV"}, {"200", "type 200"}}));
}

TEST_F(Report, TellsOfFindings) {
  const service_data missing = {.service_id = 3};
  channel_file file = small_list();
  file.entry(VIEW_TV, missing, 9);

  const program_result result = report(file.data);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(data()["views"][1]["entries"][1], json::parse("[9, 0, -1, [1, 1, 100, 11000000, 0, 3]]"));
  ASSERT_FALSE(data()["findings"].empty());
  EXPECT_EQ(data()["findings"][0]["kind"], "unresolved-entry");
}

TEST_F(Report, TellsWhichRowsFindingsAreAbout) {
  channel_file file;
  file.service(news).service({.service_id = 2, .name = ""}).entry(VIEW_ALL, news, 1).entry(VIEW_TV, news, 1);
  file.entry(VIEW_ALL, {.service_id = 3}, 9).entry(VIEW_PROMOTION, {.service_id = 3}, 1);
  file.group(GROUP_FAV, 0, "Best").entry(VIEW_FAVOURITE, {.service_id = 3}, 1);

  report(file.data);

  std::map<std::string, std::string> places;
  const json read = data();
  for (const json &found : read["findings"].elements()) {
    places[found["kind"].as_string()] += (found["entry"].is_null() ? found["service"] : found["entry"]).dump() + ' ';
  }
  EXPECT_EQ(places["unresolved-entry"], "[0,1] [5,0] [3,0] ");
  EXPECT_EQ(places["service-in-no-view"], "1 ");
  EXPECT_EQ(places["no-name"], "1 ");
}

TEST_F(Report, LeavesOutRowsOfFindingsThatAreAboutNone) {
  report(channel_file().data);

  EXPECT_TRUE(data()["findings"][0]["entry"].is_null());
  EXPECT_TRUE(data()["findings"][0]["service"].is_null());
}

TEST_F(Report, SumsUpAsJson) {
  const program_result result = report(small_list().data, {"--json"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(json::parse(result.out), (json{{"schema", 1},
                                           {"file", "list.dat"},
                                           {"output", "page.html"},
                                           {"bytes", page().size()},
                                           {"services", 2},
                                           {"error_count", 0},
                                           {"warning_count", 0},
                                           {"note_count", 0}}));
}

TEST_F(Report, KeepsHostileTextsWithinTheData) {
  const std::string hostile = "</script><script>alert(1)</script><!-- \xE2\x80\xA8 {{page.js}}";
  channel_file file;
  file.service({.service_id = 1, .name = hostile}).group(GROUP_PROVIDER, 1, hostile);

  report(file.data);

  EXPECT_EQ(data()["services"][0][0], hostile);
  EXPECT_EQ(data()["providers"][0], hostile);
  for (const char *part : {"<", "\xE2\x80\xA8"}) {
    EXPECT_EQ(data_text().find(part), std::string::npos) << part;
  }
}

TEST_F(Report, ShowsNamesOfEveryTableAndReplacesWhatHasNoMeaning) {
  channel_file file;
  file.service({.service_id = 1,
                .name = "\x15"
                        "a\xFF"
                        "b"})
      .service({.service_id = 2, .name = "\x05K\xFDrm\xFDz\xFD"});

  report(file.data);

  EXPECT_EQ(data()["services"][0][0], "a\xEF\xBF\xBD"
                                      "b");
  EXPECT_EQ(data()["services"][1][0], "Kırmızı");
}

TEST_F(Report, ShowsAnEmptyList) {
  report(channel_file().data);

  EXPECT_EQ(data()["services"], json::array());
  EXPECT_EQ(data()["transponders"], json::array());
}

TEST_F(Report, ShowsTheLargestList) {
  test_support::fill_everything();

  const program_result result = report(save());

  EXPECT_NE(result.exit_code, 2) << result.err;
  EXPECT_EQ(data()["services"].size(), static_cast<std::size_t>(MAX_CHANNEL));
  EXPECT_EQ(data()["views"][4]["entries"].size(), static_cast<std::size_t>(MAX_CHANNEL));
  EXPECT_EQ(data()["views"][24]["entries"].size(), static_cast<std::size_t>(MAX_FAV_NUM));
  EXPECT_LT(page().size(), 2'000'000U);
}

TEST_F(Report, CountsOutsideTheArraysDoNoHarm) {
  channel_file file = small_list();
  for (const auto &place : test_support::view_places()) {
    file.set(place.count, 2, 0x7FFF);
  }
  for (const auto &place : test_support::group_places()) {
    file.set(place.count, 2, 0xFFFF);
  }

  EXPECT_EQ(report(file.data).exit_code, 1);
  EXPECT_EQ(data()["views"][0]["entries"].size(), static_cast<std::size_t>(MAX_CHANNEL));
  EXPECT_EQ(data()["providers"], json::array());
}

TEST_F(Report, RefusesWhatItCannotRead) {
  const std::string whole = small_list().data;
  write_file(path(), whole.substr(0, whole.size() - 1));
  write_file(path("empty.dat"), "");
  write_file(path("old.dat"), in_version(test_support::old_version_of(8), small_list()).data);

  expect_refused({"report", "none.dat", "-o", "page.html"}, "none.dat: No such file or directory");
  expect_refused({"report", ".", "-o", "page.html"}, ".: not a regular file");
  expect_refused({"report", "empty.dat", "-o", "page.html"}, "empty.dat: too short for a channel file");
  expect_refused({"report", "old.dat", "-o", "page.html"},
                 "old.dat: is of version 8, not 10: `chlist convert` makes one of it");
  expect_refused({"report", "list.dat", "-o", "page.html"},
                 "list.dat: ends too early for a channel file of version 10");
}

TEST_F(Report, RefusesToReplaceItsInput) {
  write_file(path(), small_list().data);

  expect_refused({"report", "list.dat", "-o", "./list.dat"}, "./list.dat: is the input itself");
  EXPECT_TRUE(read_file(path()) == small_list().data);
}

TEST_F(Report, RefusesAPageThatCannotBeWritten) {
  write_file(path(), small_list().data);

  expect_refused({"report", "list.dat", "-o", "none/page.html"},
                 (fs::canonical(dir.path()) / "none").string() + ": No such file or directory");
}

TEST_F(Report, RefusesBadUsage) {
  write_file(path(), small_list().data);

  EXPECT_EQ(run({"report"}).exit_code, 2);
  EXPECT_EQ(run({"report", "list.dat"}).exit_code, 2);
  EXPECT_EQ(run({"report", "list.dat", "more.dat", "-o", "page.html"}).exit_code, 2);
  EXPECT_FALSE(fs::exists(path("page.html")));
}

}  // namespace
