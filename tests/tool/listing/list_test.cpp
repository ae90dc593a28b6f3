// `chlist list`: which services it lists, in what order, columns and formats.
#include <fmt/format.h>

#include <algorithm>

#include "chlist/fields/view_rows.h"
#include "listing_host.h"

namespace {

using namespace listing_test;

class List : public listing_host {
 protected:
  [[nodiscard]] std::string list(std::vector<std::string> more) const {
    more.insert(more.begin(), {"list", "list.dat"});
    return output_of(more);
  }

  // The names that a listing has, in its order.
  [[nodiscard]] std::vector<std::string> names(std::vector<std::string> more) const {
    more.insert(more.end(), {"--columns", "name", "--json"});
    std::vector<std::string> found;
    const json report = json::parse(list(more));
    for (const json &entry : report["entries"].elements()) {
      found.push_back(entry["name"].is_null() ? "-" : entry["name"].as_string());
    }
    return found;
  }
};

using texts = std::vector<std::string>;
const std::string music_name = "Music, \"live\"";

TEST_F(List, IsATableOfTheAllView) {
  EXPECT_EQ(list({}),
            "number  name           type   provider  frequency  pol   ts  service  scrambled  locked  skipped\n"
            "   101  News           TV     BBC        11000000  H    100        1  no         no      no\n"
            "    12  Films          TV     Sky        11000000  H    100        2  yes        yes     no\n"
            "    13  Music, \"live\"  radio  BBC        11727480  V    101        5  no         no      no\n");
}

TEST_F(List, ShowsMinorNumbersWhereThereAreAny) {
  channel_file file = sample_list();
  write("list.dat", file.set(list_field::vch + entry_field::minor_ch_num, 2, 7));
  EXPECT_TRUE(list({}).starts_with("number  minor  name"));
  EXPECT_TRUE(list({"--view", "tv"}).starts_with("number  name"));
}

TEST_F(List, ListsEachView) {
  EXPECT_EQ(names({"--view", "tv"}), (texts{"News", "Films"}));
  EXPECT_EQ(names({"--view", "radio"}), (texts{music_name}));
  EXPECT_EQ(names({"--view", "user"}), (texts{}));
  EXPECT_EQ(names({"--view", "promo"}), (texts{}));
  EXPECT_EQ(names({"--view", "fav:best"}), (texts{"Films"}));
  EXPECT_EQ(names({"--view", "fav:1"}), (texts{"Films"}));
}

TEST_F(List, SortsAsTheReceiverDoes) {
  EXPECT_EQ(names({}), (texts{"News", "Films", music_name}));
  EXPECT_EQ(names({"--sort", "number"}), (texts{"Films", music_name, "News"}));
  EXPECT_EQ(names({"--sort", "name"}), (texts{"Films", music_name, "News"}));
  EXPECT_EQ(names({"--sort", "service_id"}), (texts{"News", "Films", music_name}));
  EXPECT_EQ(names({"--sort", "transponder"}), (texts{"News", "Films", music_name}));
}

TEST_F(List, SortsEachViewAndThePromotionView) {
  channel_file file = sample_list();
  file.entry(VIEW_PROMOTION, news, 9).entry(VIEW_PROMOTION, films, 3).entry(VIEW_FAVOURITE, news, 2, 0);
  write("list.dat", file);
  EXPECT_EQ(names({"--view", "promo", "--sort", "number"}), (texts{"Films", "News"}));
  EXPECT_EQ(names({"--view", "fav:1", "--sort", "favourite_key"}), (texts{"News", "Films"}));
  EXPECT_EQ(names({"--view", "tv", "--sort", "name"}), (texts{"Films", "News"}));
}

TEST_F(List, SortsByTheUsersOwnOrder) {
  channel_file file;
  file.service(news).set_last(record_kind::service, service_field::user_order_key, 2, 2);
  file.service(films).set_last(record_kind::service, service_field::user_order_key, 2, 1);
  file.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, films, 2);
  write("list.dat", file);
  EXPECT_EQ(names({"--sort", "order_key"}), (texts{"Films", "News"}));
}

TEST_F(List, SavesNothing) {
  const std::string before = test_support::read_file(path("list.dat"));
  EXPECT_NE(list({"--sort", "name"}), list({}));
  EXPECT_EQ(test_support::read_file(path("list.dat")), before);
}

TEST_F(List, FiltersByNameProviderOrNumber) {
  EXPECT_EQ(names({"--filter", "EWS"}), (texts{"News"}));
  EXPECT_EQ(names({"--filter", "bb"}), (texts{"News", music_name}));
  EXPECT_EQ(names({"--filter", "12"}), (texts{"Films"}));
  EXPECT_EQ(names({"--filter", "1"}), (texts{}));
  EXPECT_EQ(names({"--filter", ""}), (texts{"News", "Films", music_name}));
}

TEST_F(List, FiltersByColumn) {
  EXPECT_EQ(names({"--filter", "provider=SK"}), (texts{"Films"}));
  EXPECT_EQ(names({"--filter", "locked=yes"}), (texts{"Films"}));
  EXPECT_EQ(names({"--filter", "locked=true"}), (texts{"Films"}));
  EXPECT_EQ(names({"--filter", "locked="}), (texts{}));
  EXPECT_EQ(names({"--filter", "video_pid=none"}), (texts{}));
  EXPECT_EQ(names({"--filter", "polarisation=v"}), (texts{music_name}));
  EXPECT_EQ(names({"--filter", "ts_id=100"}), (texts{"News", "Films"}));
  EXPECT_EQ(names({"--filter", "ts_id=10"}), (texts{}));
  EXPECT_EQ(names({"--filter", "favourites=best"}), (texts{"Films"}));
  EXPECT_EQ(names({"--filter", "video_pid="}), (texts{}));
  EXPECT_EQ(names({"--filter", "genre="}), (texts{"News", "Films", music_name}));
}

TEST_F(List, RefusesAFilterThatNoServiceCanPass) {
  expect_refused({"list", "list.dat", "--filter", "locked=ye"}, "locked=\"ye\": VALUE is yes or no");
  expect_refused({"list", "list.dat", "--filter", "video_pid=9000"}, "video_pid=\"9000\": VALUE is 0 to 8191, or none");
  expect_refused({"list", "list.dat", "--filter", "type=film"},
                 "type=\"film\": VALUE is a name as TV, radio or HD TV, or 0 to 255");
}

TEST_F(List, ChoosesByConditionsOfWholeValuesPatternsAndNumbers) {
  EXPECT_EQ(names({"--where", "provider=SK"}), (texts{}));
  EXPECT_EQ(names({"--where", "locked=no name~\"^n\""}), (texts{"News"}));
  EXPECT_EQ(names({"--where", "service_id>1 type=TV"}), (texts{"Films"}));
  EXPECT_EQ(names({"--where", "locked=yes or polarisation=V"}), (texts{"Films", music_name}));
  EXPECT_EQ(names({"--where", "locked=no", "--filter", "bb"}), (texts{"News", music_name}));
  EXPECT_EQ(names({"--where", "locked=no", "--where", "polarisation=H"}), (texts{"News"}));
}

TEST_F(List, RefusesAConditionThatCannotBeUnderstood) {
  expect_refused({"list", "list.dat", "--where", "name="}, "--where, character 6: a value is missing here");
}

TEST_F(List, AllFiltersMustMatch) { EXPECT_EQ(names({"--filter", "bbc", "--filter", "type=tv"}), (texts{"News"})); }

TEST_F(List, TakesColumnsInTheOrderGiven) {
  EXPECT_EQ(list({"--columns", "service_id,name"}), "service  name\n"
                                                    "      1  News\n"
                                                    "      2  Films\n"
                                                    "      5  Music, \"live\"\n");
}

TEST_F(List, WritesCsvWithAHeaderLine) {
  EXPECT_EQ(list({"--columns", "number,name,favourites", "--format", "csv"}),
            "number,name,favourites\r\n101,News,\r\n12,Films,Best\r\n13,\"Music, \"\"live\"\"\",\r\n");
}

// What the CSV says is what a list that is made of it says. Names are one line of plain text in every listing.
TEST_F(List, CsvComesBackFromAnImportAsItWas) {
  const std::vector<std::string> service_names = {"\"Quoted\" 'name'",
                                                  "One, two; three",
                                                  "A\tB\nC\rD\x1B[31mE",
                                                  "\x15"
                                                  "Caf\xC3\xA9 \xEF\xBF\xBD",
                                                  "=1+1",
                                                  " ",
                                                  ""};
  channel_file file;
  file.group(GROUP_FAV, 0, "Best").group(GROUP_FAV, 1, "News, Sport").group(GROUP_PROVIDER, 0, "Sky, \"UK\"");
  for (std::uint16_t i = 0; i < service_names.size(); ++i) {
    const service_data service = {.service_id = i, .name = service_names[i]};
    file.service(service).entry(VIEW_ALL, service, 10 + i).entry(VIEW_TV, service, 10 + i);
    file.entry(VIEW_FAVOURITE, service, 10 + i).entry(VIEW_FAVOURITE + 1, service, 10 + i);
  }
  write("list.dat", file);
  const std::string columns = "position,number,minor,name,short_name,type,provider,favourites,net_index,network_id,"
                              "ts_id,frequency,polarisation,service_id,pmt_pid,video_pid,flags,locked,order_key";
  const std::string csv = list({"--columns", columns, "--format", "csv"});
  write_file(path("list.csv"), csv);

  EXPECT_TRUE(has_line(output_of({"import", "list.csv", "-o", "list.dat"}, 0), "list.dat: 2 favourite groups"));
  EXPECT_EQ(list({"--columns", columns, "--format", "csv"}), csv);
}

TEST_F(List, CsvAndJsonHaveAllColumns) {
  const std::string csv = list({"--format", "csv"});
  EXPECT_TRUE(csv.starts_with("position,number,minor,name,short_name,")) << csv;
  const json report = json::parse(list({"--format", "json"}));
  EXPECT_EQ(report["file"], "list.dat");
  EXPECT_EQ(report["view"], "ALL");
  const json &entry = report["entries"][2];
  EXPECT_EQ(entry["position"], 3);
  EXPECT_EQ(entry["name"], music_name);
  EXPECT_EQ(entry["frequency"], 11'727'480);
  EXPECT_EQ(entry["locked"], false);
  EXPECT_EQ(entry["genre"], nullptr);
  EXPECT_EQ(entry.size(), static_cast<std::size_t>(std::ranges::count(csv.substr(0, csv.find('\r')), ',')) + 1);
  EXPECT_EQ(list({"--json"}), list({"--format", "json"}));
}

TEST_F(List, JsonNamesTheViewAsOtherDocumentsDo) {
  const json promotion = json::parse(list({"--view", "promotion", "--columns", "name", "--json"}));
  EXPECT_EQ(promotion, (json{{"schema", 1}, {"file", "list.dat"}, {"view", "promotion"}, {"entries", json::array()}}));
  const json favourites = json::parse(list({"--view", "fav:1", "--columns", "name", "--json"}));
  EXPECT_EQ(favourites, (json{{"schema", 1},
                              {"file", "list.dat"},
                              {"view", "favourites"},
                              {"group", 1},
                              {"group_name", "Best"},
                              {"entries", json::array({json{{"name", "Films"}}})}}));
}

TEST_F(List, AnEntryWithoutAServiceHasItsIdentity) {
  channel_file file = sample_list();
  write("list.dat", file.entry(VIEW_TV, {.service_id = 77}, 9));
  EXPECT_EQ(list({"--view", "tv", "--columns", "number,name,service_id", "--filter", "service_id=77"}),
            "number  name  service\n"
            "     9             77\n");
}

TEST_F(List, TextsOfTheFileAreHarmless) {
  channel_file file;
  file.service({.name = "\x15"
                        "a\x1B[31mb\xFF"})
      .entry(VIEW_ALL, {}, 1);
  write("list.dat", file);
  EXPECT_EQ(list({"--columns", "name"}), "name\na [31mb\xEF\xBF\xBD\n");
  EXPECT_EQ(list({"--columns", "name", "--format", "csv"}), "name\r\na [31mb\xEF\xBF\xBD\r\n");
}

TEST_F(List, NamesAllColumns) {
  const std::string columns = output_of({"list", "--columns", "help"});
  EXPECT_TRUE(has_line(columns, "column            what it is")) << columns;
  EXPECT_TRUE(has_line(columns, "video_pid         PID of the video")) << columns;
}

TEST_F(List, TheHelpNamesAllSorts) {
  const std::string help = output_of({"list", "--help"});
  for (const chlist::view_sort &sort : chlist::all_sorts()) {
    EXPECT_NE(help.find(fmt::format("\n  {:<13}  {}", sort.name, sort.about.substr(0, 20))), std::string::npos) << help;
  }
}

TEST_F(List, RefusesWhatThereIsNot) {
  expect_refused({"list", "list.dat", "--view", "fav:Worst"},
                 "no view \"fav:Worst\": there are all, tv, radio, user, promo, fav:1 to fav:20, fav:Best");
  expect_refused({"list", "list.dat", "--sort", "colour"},
                 "no sort \"colour\": there are number, name, transponder, service_id, favourite_key, order_key");
  for (const char *option : {"--columns", "--filter"}) {
    const program_result result = run({"list", "list.dat", option, "colour=x"});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_TRUE(result.err.starts_with("chlist: list: no column \"colour")) << result.err;
  }
}

TEST_F(List, RefusesBadUsage) {
  expect_refused({"list"}, "FILE is required: see `chlist help list`");
  expect_refused({"list", "list.dat", "--format", "xml"},
                 "--format: \"xml\" is none of table, csv, json: see `chlist help list`");
  expect_refused({"list", "list.dat", "--format", "cvs"}, "--format: \"cvs\": did you mean \"csv\"?");
}

TEST_F(List, RefusesBadFiles) { expect_bad_files_refused("list", {}); }

}  // namespace
