// `chlist export` and `chlist import` as they are run: formats by name and by option, what they say, and how they fail.
#include <string>
#include <vector>

#include "tool/exchange/import_host.h"

namespace {

using namespace tool_test;

class Export : public tool_test::import_test {
 protected:
  void SetUp() override {
    import_test::SetUp();
    const service_data news = {.service_id = 1, .name = "News"};
    const service_data films = {.service_id = 2, .name = "Films", .flag = CHANNEL_FLAG_LOCKED};
    channel_file file;
    file.network(1, 1, "Net").service(news).service(films).entry(VIEW_ALL, news, 1).entry(VIEW_ALL, films, 2);
    file.entry(VIEW_TV, news, 1).entry(VIEW_TV, films, 2).group(GROUP_PROVIDER, 0, "Meridian");
    write_file(dir.path() + "box.dat", file.data);
  }

  program_result exported(const std::string &output, const std::vector<std::string> &options = {}) const {
    return run({"export", "box.dat", "-o", output}, options);
  }
  [[nodiscard]] std::string read(const std::string &name) const { return read_file(dir.path() + name); }
};

// Nobody, not even root, makes a file there.
TEST_F(Export, AFolderThatTakesNoFileIsNamed) {
  EXPECT_EQ(exported("/proc/box.csv").err, "chlist: export: temporary file in /proc: No such file or directory\n");
}

TEST_F(Export, TheNameTellsTheFormat) {
  EXPECT_EQ(exported("box.json").exit_code, 0);
  EXPECT_EQ(exported("box.csv").exit_code, 1);
  EXPECT_EQ(exported("box.conf").exit_code, 1);
  EXPECT_EQ(exported("box.m3u").exit_code, 1);
  EXPECT_EQ(exported("box.m3u8").exit_code, 1);
  EXPECT_EQ(exported("other.csv", {"--to", "json"}).exit_code, 0);

  EXPECT_EQ(read("box.json"), read("other.csv"));
  EXPECT_EQ(read("box.m3u"), read("box.m3u8"));
  EXPECT_TRUE(read("box.csv").starts_with("number,minor,name,"));
  EXPECT_TRUE(read("box.conf").starts_with("News"));
}

TEST_F(Export, AFolderIsWrittenAsAWhole) {
  const std::filesystem::path folder = dir.path() + "box";
  for (const char *output : {"box", "box/"}) {
    const program_result result = exported(output, {"--to", "lamedb4"});

    EXPECT_EQ(result.exit_code, 1) << result.err;
    EXPECT_TRUE(std::filesystem::exists(folder / "lamedb"));
    EXPECT_TRUE(std::filesystem::exists(folder / "userbouquet.all_channels.tv"));
    EXPECT_EQ(files(), (std::vector<std::string>{"box", "box.dat"}));
    std::filesystem::remove_all(folder);
  }
}

TEST_F(Export, AFolderIsReadBackButNotInto) {
  ASSERT_EQ(exported("box", {"--to", "lamedb4"}).exit_code, 1);
  const std::string lamedb = read("box/lamedb");

  for (const char *input : {"box", "box/lamedb"}) {
    const program_result result = run({"import", input, "-o", "box/userbouquet.all_channels.tv"});

    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: import: box/userbouquet.all_channels.tv: is a part of the input\n");
  }
  EXPECT_EQ(read("box/lamedb"), lamedb);
  EXPECT_EQ(run({"import", "box", "-o", "back.dat"}).exit_code, 0);
}

TEST_F(Export, NamesOfPicturesAreThoseThatEnigma2LooksFor) {
  exported("four", {"--to", "lamedb4", "--picons"});
  exported("five", {"--to", "lamedb5", "--picons"});

  EXPECT_EQ(read("four/picons.csv"), "picon,name\r\n1_0_1_1_64_1_10000_0_0_0.png,News\r\n"
                                     "1_0_1_2_64_1_10000_0_0_0.png,Films\r\n");
  EXPECT_EQ(read("five/picons.csv"), read("four/picons.csv"));
  EXPECT_LT(run({"import", "four", "-o", "back.dat"}).exit_code, 2);
  EXPECT_EQ(exported("box.conf", {"--picons"}).err,
            "chlist: export: --picons: vdr has no pictures; a folder of Enigma2 has: see `chlist help export`\n");
}

TEST_F(Export, AnEmptyFolderMakesPlace) {
  std::filesystem::create_directory(dir.path() + "box");

  EXPECT_EQ(exported("box", {"--to", "lamedb4"}).exit_code, 1);

  EXPECT_TRUE(std::filesystem::exists(dir.path() + "box/lamedb"));
}

TEST_F(Export, AFolderThatHoldsSomethingIsRefused) {
  std::filesystem::create_directory(dir.path() + "box");
  write_file(dir.path() + "box/blacklist", "1");

  const program_result result = exported("box", {"--to", "lamedb4"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: export: " + dir.path() +
                            "box: the folder is not empty, and what is in it would be taken for a part of the list\n");
  EXPECT_EQ(read("box/blacklist"), "1");
  EXPECT_FALSE(std::filesystem::exists(dir.path() + "box/lamedb"));
  EXPECT_EQ(files(), (std::vector<std::string>{"box", "box.dat"}));
}

TEST_F(Export, AFileIsNoFolder) {
  const program_result result = exported("box.dat.copy", {"--to", "json"});
  ASSERT_EQ(result.exit_code, 0) << result.err;

  const program_result refused = exported("box.dat.copy", {"--to", "lamedb4"});

  EXPECT_EQ(refused.exit_code, 2);
  EXPECT_EQ(refused.err, "chlist: export: " + dir.path() + "box.dat.copy: not a folder\n");
}

// A receiver forgets it whenever it loads a list.
TEST_F(Export, TheCountryIsWhatTheFileSays) {
  const service_data news = {.service_id = 1, .name = "News"};
  channel_file file;
  file.group(GROUP_COUNTRY, 77, "Elbonia").network(1, 1, "Net").service(news).entry(VIEW_ALL, news, 1);
  write_file(dir.path() + "box.dat",
             file.set_last(test_support::record_kind::service, service_field::country_id, 2, 77).data);

  EXPECT_EQ(exported("box.csv", {"--columns", "name,country"}).exit_code, 1);

  EXPECT_EQ(read("box.csv"), "name,country\r\nNews,Elbonia\r\n");
}

TEST_F(Export, WhatAFormatHasNoPlaceForIsCounted) {
  const program_result result = exported("box.conf");

  EXPECT_EQ(result.exit_code, 1) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "box.conf: 2 services and 0 favourite groups as vdr\n"
            "Not carried by vdr:\n"
            "  symbol rate and modulation                          2  VDR cannot tune without them, until a scan "
            "or somebody fills them in\n"
            "  type                                                2  \"TV\" becomes \"data\"\n"
            "  pmt_pid                                             2  found anew when the service is tuned\n"
            "  pcr_pid                                             2  found anew when the service is tuned\n"
            "  video_pid                                           2  found anew when the service is tuned\n"
            "  video_tag                                           2  0 becomes none\n"
            "  video_ecm_pid                                       2  found anew when the service is tuned\n"
            "  audio_pid                                           2  found anew when the service is tuned\n"
            "  audio_tag                                           2  0 becomes none\n"
            "  entries of the TV view                              2\n"
            "  locked                                              1  no code is asked for any more\n"
            "  name of a network                                   1  \"Net\" becomes \"S0.0E\"\n"
            "  records with values that only the receiver knows    2\n");
}

TEST_F(Export, WhatALoadCannotKeepIsCounted) {
  write_file(dir.path() + "box.dat", read("box.dat") + "end");

  for (const char *output : {"box.csv", "box.conf", "box.m3u"}) {
    const std::string out = exported(output).out;

    EXPECT_NE(out.find("  3 bytes behind the last record "), std::string::npos) << out;
  }
}

TEST_F(Export, SourcesMayBeNamed) {
  EXPECT_EQ(exported("box.conf", {"--source", "Net=S13.5E"}).exit_code, 1);

  EXPECT_NE(read("box.conf").find(":S13.5E:"), std::string::npos) << read("box.conf");
}

TEST_F(Export, BadOptionsAreRefused) {
  EXPECT_EQ(exported("box.conf", {"--source", "Net"}).err,
            "chlist: export: --source: \"Net\" is not NAME=SOURCE: see `chlist help export`\n");
  EXPECT_EQ(exported("box.conf", {"--source", "Net=S1"}).exit_code, 2);
  EXPECT_EQ(exported("box.conf", {"--source", "M=S1E"}).err,
            "chlist: export: --source: no network is named \"M\": see `chlist help export`\n");
  EXPECT_EQ(exported("box.csv", {"--columns", "nome"}).exit_code, 2);
  EXPECT_EQ(exported("box.m3u", {"--url", "{"}).err, "chlist: export: --url: \"{\" is not closed\n");
  EXPECT_TRUE(files() == (std::vector<std::string>{"box.dat"}));
}

TEST_F(Export, UnknownFormatsAreRefused) {
  EXPECT_TRUE(
      exported("box.xyz").err.starts_with("chlist: export: box.xyz: its name tells no format; --to names it: json"));
  EXPECT_TRUE(exported("box.xyz", {"--to", "xyz"})
                  .err.starts_with("chlist: export: no format to write \"xyz\": there are json"));
  write_file(dir.path() + "box.txt", "nothing known");
  EXPECT_TRUE(run({"import", "box.txt", "-o", "out.dat"})
                  .err.starts_with("chlist: import: box.txt: is of no known format; --from names it: json"));
  EXPECT_TRUE(run({"import", "box.dat", "-o", "out.dat", "--from", "xyz"})
                  .err.starts_with("chlist: import: no format to read \"xyz\": there are json"));
  EXPECT_TRUE(files() == (std::vector<std::string>{"box.dat", "box.txt"}));
}

TEST_F(Export, JsonComesBackByteForByte) {
  exported("box.json");

  const program_result result = run({"import", "box.json", "-o", "again.dat"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(result.out, "again.dat: the whole channel file from json\n");
  EXPECT_TRUE(read("box.dat") == read("again.dat"));
}

TEST_F(Export, JsonThatIsWrongIsToldWithItsFile) {
  write_file(dir.path() + "bad.json", "{\"format\": 3}");

  const program_result result = run({"import", "bad.json", "-o", "out.dat"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: import: bad.json: $: is no object with \"format\": \"channel file\"\n");
}

TEST_F(Export, CsvIsFoundByItsHeaderAndSkippedRowsAreFindings) {
  write_file(dir.path() + "list.txt", "name,network_id,ts_id,frequency,service_id\nA,1,2,3,4\nB,1,2,3,x\n");

  const program_result result = run({"import", "list.txt", "-o", "out.dat"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: import: list.txt:3: skipped: service_id=\"x\": VALUE is 0 to 65535\n");
  load("out.dat");
  EXPECT_EQ(list.vnumber, 1);
}

TEST_F(Export, ReportsAreJsonToo) {
  const json of_export = json::parse(exported("box.conf", {"--json"}).out);
  EXPECT_EQ(of_export["format"], "vdr");
  EXPECT_EQ(of_export["services"], 2);
  EXPECT_EQ(of_export["not_carried"][1], (json{{"what", "type"}, {"count", 2}, {"note", "\"TV\" becomes \"data\""}}));
  EXPECT_EQ(of_export["left_out"], json::array());

  const program_result result = run({"import", "box.conf", "-o", "out.dat", "--json"});
  const json of_import = json::parse(result.out);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(of_import["format"], "vdr");
  EXPECT_EQ(of_import["services"], 2);
  EXPECT_EQ(of_import["skipped_lines"], json::array());
}

TEST_F(Export, TheInputIsNotOverwrittenAndOtherFilesAreRefused) {
  EXPECT_EQ(exported("./box.dat", {"--to", "csv"}).err, "chlist: export: ./box.dat: is the input itself\n");
  write_file(dir.path() + "short.dat", "x");
  EXPECT_EQ(run({"export", "short.dat", "-o", "out.csv"}).err,
            "chlist: export: short.dat: too short for a channel file\n");
  EXPECT_EQ(run({"export", "missing.dat", "-o", "out.csv"}).exit_code, 2);
}

}  // namespace
