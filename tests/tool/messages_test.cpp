// What the tool says when something is wrong: who says it, what was meant, what to do next, and as JSON.
#include <filesystem>

#include "chlist/commands.h"
#include "tool/chlist_host.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using tool_test::json;
using tool_test::program_result;

class Messages : public tool_test::chlist_test {
 protected:
  void SetUp() override {
    chlist_test::SetUp();
    const tool_test::service_data news = {.service_id = 1, .name = "News"};
    tool_test::channel_file file;
    file.service(news).entry(VIEW_ALL, news, 1).group(GROUP_FAV, 0, "Films");
    tool_test::write_file(path("list.dat"), file.data);
  }
};

TEST_F(Messages, NameTheProgramAndTheCommand) {
  expect_refused({"info", "none.dat"}, "none.dat: No such file or directory");
  expect_refused({"fav", "list", "none.dat"}, "none.dat: No such file or directory");
}

TEST_F(Messages, AskWhatWasMeant) {
  expect_refused({"list", "list.dat", "-x"}, "no option \"-x\": see `chlist help list`");
  expect_refused({"list", "list.dat", "--fliter", "x"}, "no option \"--fliter\": did you mean \"--filter\"?");
  expect_refused({"list", "list.dat", "--colums=x"}, "no option \"--colums\": did you mean \"--columns\"?");
  const program_result result = run({"lsit", "list.dat"});
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: no command \"lsit\": did you mean \"list\"?\n");
  EXPECT_EQ(run({"fav", "ad", "list.dat"}).err, "chlist: fav: no command \"ad\": did you mean \"add\"?\n");
}

TEST_F(Messages, SayWhereToLookWhenNothingIsNear) {
  EXPECT_EQ(run({"watch"}).err, "chlist: no command \"watch\": see `chlist help`\n");
  expect_refused({"info", "list.dat", "--colour"}, "no option \"--colour\": see `chlist help info`");
  expect_refused({"info", "list.dat", "more"}, "\"more\" is an argument too many: see `chlist help info`");
  expect_refused({"info"}, "FILE is required: see `chlist help info`");
  expect_refused({"fav", "new", "list.dat"}, "NAME is required: see `chlist help fav new`");
}

TEST_F(Messages, ProposeFieldsViewsAndFormats) {
  const auto expect_proposal = [this](const std::vector<std::string> &arguments, const std::string &proposal) {
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_NE(result.err.find(": did you mean \"" + proposal + "\"? There are "), std::string::npos) << result.err;
  };
  expect_proposal({"set", "list.dat", "News", "vido_pid=7"}, "video_pid");
  expect_proposal({"list", "list.dat", "--filter", "nmae=x"}, "name");
  expect_proposal({"list", "list.dat", "--columns", "number,nmae"}, "name");
  expect_proposal({"list", "list.dat", "--view", "fav:Flims"}, "fav:Films");
  expect_proposal({"list", "list.dat", "--sort", "nubmer"}, "number");
  expect_proposal({"export", "list.dat", "-o", "x", "--to", "lamdb4"}, "lamedb4");
}

TEST_F(Messages, AreJsonWhenJsonIsAskedFor) {
  const auto expect_error = [this](const std::vector<std::string> &arguments, const json &error) {
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(json::parse(result.out), (json{{"schema", 1}, {"error", error}}));
  };
  const json no_file = {{"command", "list"}, {"kind", "failure"}, {"message", "none.dat: No such file or directory"}};
  expect_error({"list", "none.dat", "--json"}, no_file);
  expect_error({"list", "none.dat", "--format", "json"}, no_file);
  expect_error({"list", "none.dat", "--format=json"}, no_file);
  expect_error({"fav", "new", "list.dat", "--json"},
               {{"command", "fav new"}, {"kind", "usage"}, {"message", "NAME is required: see `chlist help fav new`"}});
  expect_error({"info", "list.dat", "--jsom", "--json"},
               {{"command", "info"}, {"kind", "usage"}, {"message", "no option \"--jsom\": did you mean \"--json\"?"}});
  expect_error(
      {"list", "list.dat", "--json", "--format", "csv"},
      {{"command", "list"}, {"kind", "usage"}, {"message", "--format excludes --json: see `chlist help list`"}});
}

TEST_F(Messages, AreNotJsonBehindTheEndOfOptions) {
  EXPECT_EQ(run({"info", "--", "--json"}).err, "chlist: info: --json: No such file or directory\n");
}

class OtherLists : public Messages {
 protected:
  void expect_told(const std::string &file, const std::string &what) const {
    for (const char *command : {"info", "list", "check", "lock"}) {
      std::vector<std::string> arguments = {command, file};
      if (arguments[0] == "lock") {
        arguments.emplace_back("News");
      }
      expect_refused(arguments, file + ": is no channel file but " + what);
    }
  }
};

TEST_F(OtherLists, AreToldForWhatTheyAre) {
  tool_test::write_file(path("channels.conf"), tool_test::service_line().text() + "\n");
  expect_told("channels.conf",
              "vdr (channels.conf of VDR): `chlist import channels.conf -o channels.dat` makes one of it");
  tool_test::write_file(path("dvb.txt"), "[News]\n\tSERVICE_ID = 1\n");
  expect_told("dvb.txt",
              "dvbv5 (sections of libdvbv5 and its tools): `chlist import dvb.txt -o dvb.dat` makes one of it");
  tool_test::write_file(path("table.csv"), "name,service_id\nNews,1\n");
  expect_told("table.csv", "csv (comma-separated values with a header line that names the columns): "
                           "`chlist import table.csv -o table.dat` makes one of it");
  tool_test::write_file(path("it's mine.m3u"), "#EXTM3U\n");
  expect_told("it's mine.m3u",
              "m3u (extended M3U playlist): `chlist import 'it'\\''s mine.m3u' -o 'it'\\''s mine.dat'` makes "
              "one of it");
  tool_test::write_file(path("play.m3u"), "#EXTM3U\n");
  expect_told("play.m3u", "m3u (extended M3U playlist): `chlist import play.m3u -o play.dat` makes one of it");
}

// Whoever does what the message says replaces no list.
TEST_F(OtherLists, AreToBecomeAFileThatIsNotThereYet) {
  const std::string conf = "vdr (channels.conf of VDR): `chlist import ";
  tool_test::write_file(path("list.conf"), tool_test::service_line().text() + "\n");
  tool_test::write_file(path("list.dat"), tool_test::service_line().text() + "\n");
  expect_told("list.conf", conf + "list.conf -o list-2.dat` makes one of it");
  expect_told("list.dat", conf + "list.dat -o list-2.dat` makes one of it");
  tool_test::write_file(path("list-2.dat"), "");
  expect_told("list.conf", conf + "list.conf -o list-3.dat` makes one of it");
}

TEST_F(OtherLists, InFoldersAreToldForWhatTheyAre) {
  std::filesystem::create_directory(path("box"));
  tool_test::write_file(path("box/lamedb"), "eDVB services /4/\ntransponders\nend\nservices\nend\n");
  expect_refused({"list", "box"}, "box: is no channel file but lamedb4 (folder of Enigma2: lamedb (version 4) and "
                                  "bouquets; any version is read): `chlist import box -o box.dat` makes one of it");
}

TEST_F(OtherLists, AreToldBySalvageAndConvert) {
  tool_test::write_file(path("channels.conf"), tool_test::service_line().text() + "\n");
  const std::string told = "channels.conf: is no channel file but vdr (channels.conf of VDR): "
                           "`chlist import channels.conf -o channels.dat` makes one of it";
  expect_refused({"salvage", "channels.conf", "-o", "out.dat"}, told);
  expect_refused({"convert", "channels.conf", "out.dat"}, told);
}

TEST_F(OtherLists, OfNoKnownFormatAreRefusedForTheirVersion) {
  tool_test::write_file(path("noise"), "\x07\x07 noise");
  expect_refused({"list", "noise"}, "noise: is of version 1799, not 10");
}

TEST_F(OtherLists, AChannelFileIsNotImported) {
  expect_refused({"import", "list.dat", "-o", "out.dat"},
                 "list.dat: is a channel file already; `chlist export` makes other lists of it");
}

// A folder may hold what somebody else named.
TEST_F(Messages, ShowNoNameOfAFileThatATerminalWouldObey) {
  const std::string bad = "\x1B[7mred\nline";
  tool_test::write_file(path(bad + ".dat"), tool_test::read_file(path("list.dat")));
  tool_test::write_file(path(bad + ".conf"), tool_test::service_line().text() + "nonsense\n");
  const std::string file = bad + ".dat";
  const std::string made = bad + ".made";
  for (const std::vector<std::string> &line :
       std::vector<std::vector<std::string>>{{"import", bad + ".conf", "-o", made, "--from", "vdr"},
                                             {"info", file},
                                             {"show", file, "News"},
                                             {"list", bad},
                                             {"check", file},
                                             {"diff", file, made},
                                             {"report", file, "-o", bad + ".html"},
                                             {"export", file, "-o", bad + ".conf", "--to", "vdr"},
                                             {"convert", file, made},
                                             {"salvage", file, "-o", made},
                                             {"merge", file, made, "-o", file},
                                             {"order", file, "--like", made},
                                             {"lock", file, "News", "--yes"},
                                             {"undo", file},
                                             {"redo", file},
                                             {"history", file},
                                             {"restore", file, "1"},
                                             {"scan", bad + ".conf", "-o", made},
                                             {"apply", file, bad + ".conf"}}) {
    const program_result result = run(line);
    EXPECT_EQ((result.out + result.err).find('\x1B'), std::string::npos) << result.out << result.err;
    EXPECT_EQ(result.out.find("\nline"), std::string::npos) << result.out;
  }
}

}  // namespace
