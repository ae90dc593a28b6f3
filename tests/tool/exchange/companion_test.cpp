// What stands beside a channel file: it goes out as it came in, edits change their own lines alone, and the two files
// stay in step.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "chlist/files/companion.h"
#include "chlist/line_up/selection.h"
#include "tool/exchange/import_host.h"
#include "tool/exchange/random_source.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using namespace tool_test;

class Companion : public tool_test::import_test {
 public:
  using file_texts = std::map<std::string, std::string>;

 protected:
  // Exit code 1 tells of lines that are skipped.
  void import_text(const std::string &text, const std::string &format = "vdr") {
    write_file(path("source"), text);
    const program_result result = run({"import", "source", "--from", format, "-o", "list.dat", "--no-backup"});
    ASSERT_LE(result.exit_code, 1) << result.err;
  }

  std::string exported(const std::string &format = "vdr", const std::vector<std::string> &more = {}) {
    const program_result result = run({"export", "list.dat", "-o", "out", "--to", format}, more);
    EXPECT_LE(result.exit_code, 1) << result.err;
    said = result.out;
    return read_file(path("out"));
  }

  void import_folder(const file_texts &files) {
    std::filesystem::remove_all(path("box"));
    std::filesystem::create_directory(path("box"));
    for (const auto &[name, text] : files) {
      write_file(path("box/" + name), text);
    }
    const program_result result = run({"import", "box", "-o", "list.dat", "--no-backup"});
    ASSERT_LE(result.exit_code, 1) << result.err;
  }

  file_texts exported_folder(const std::string &format) {
    std::filesystem::remove_all(path("out"));
    const program_result result = run({"export", "list.dat", "-o", "out", "--to", format});
    EXPECT_LE(result.exit_code, 1) << result.err;
    said = result.out;
    file_texts files;
    for (const auto &each : std::filesystem::directory_iterator(path("out"))) {
      files[each.path().filename().string()] = read_file(each.path().string());
    }
    return files;
  }

  // A list of VDR's stands for what was received.
  void merge_scan(const std::string &lines) {
    write_file(path("scan.conf"), lines);
    ASSERT_LE(run({"import", "scan.conf", "--like", "list.dat", "-o", "scan.dat", "--no-backup"}).exit_code, 1);
    ASSERT_LE(run({"merge", "list.dat", "scan.dat", "-o", "list.dat", "--keep-missing"}).exit_code, 1);
  }

  void edit(const std::vector<std::string> &arguments) {
    const program_result result = run(arguments);
    ASSERT_EQ(result.exit_code, 0) << result.err;
  }

  // The n-th service of a random source.
  [[nodiscard]] std::optional<channel::identity> id_of(int n, const std::string &in_front = "") const {
    const std::string name = in_front + "Service " + std::to_string(n) + " ";
    const chlist::companion kept = beside();
    for (const chlist::source_piece &piece : kept.source.files.front().pieces) {
      const std::size_t at = piece.text.find(name);
      if (at != std::string::npos && (at == 0 || !in_front.empty())) {
        return piece.service;
      }
    }
    return std::nullopt;
  }

  [[nodiscard]] chlist::companion beside() const { return *chlist::companion_beside(path("list.dat")); }

  std::string said;  // by the last export
};

std::vector<std::string> lines_of(const std::string &text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

bool begins_with_one_of(const std::string &line, const std::set<std::string> &beginnings) {
  return std::ranges::any_of(beginnings, [&](const std::string &each) { return line.starts_with(each); });
}

const std::string two_services =
    "First,F;One:11494:HC23M5O35P0S1:S19.2E:22000:101+99=27:102=deu@3,103=eng;104=deu@106:105;106=deu:1702:1:1:1:7:x\n"
    "# no line of a service\n"
    ":Films\n"
    "Second;Two:11494:HC23M5O35P0S1:S19.2E:22000:201:202:0:0:2:1:1:0\n";

TEST_F(Companion, AListGoesOutAsItCameIn) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    const std::string text = random_source(seed).channels_conf(12);
    import_text(text);
    EXPECT_EQ(exported(), text) << seed;
  }
}

TEST_F(Companion, SectionsGoOutAsTheyCameIn) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    const std::string text = random_source(seed).sections(12);
    import_text(text, "dvbv5");
    EXPECT_EQ(exported("dvbv5"), text) << seed;
  }
}

TEST_F(Companion, AFolderGoesOutAsItCameIn) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    const int version = seed % 2 == 0 ? 4 : 5;
    const auto folder = random_source(seed).folder(12, version);
    import_folder(folder);
    EXPECT_EQ(exported_folder("lamedb" + std::to_string(version)), folder) << seed;
  }
}

// A service that is gone keeps its number free for those behind it.
TEST_F(Companion, EditsOfAFolderChangeTheirOwnLines) {
  auto folder = random_source(2).folder(4, 5);
  folder["lamedb5"] = "eDVB services /5/\nt:00c0044c:0001:0001,s:11494000:22000000:0:2:192:2:0:1:2:0:2\n"
                      "s:0001:00c0044c:0001:0001:1:0:0,\"First\",p:One,c:050001\n"
                      "s:0002:00c0044c:0001:0001:25:7:0,\"Second\",p:One, Inc\n"
                      "s:0003:00c0044c:0001:0001:1:0:0,\"Third\",p:One\n";
  folder["userbouquet.a.tv"] = "#NAME A\n#SERVICE 1:0:1:1:1:1:C0044C:0:0:0:\n#SERVICE 1:0:19:2:1:1:C0044C:0:0:0:\n"
                               "#SERVICE 1:0:1:3:1:1:C0044C:0:0:0:\n";
  folder["userbouquet.b.tv"] = "#NAME B\n#SERVICE 1:0:19:2:1:1:C0044C:0:0:0:\n";
  folder["blacklist"] = "1:0:1:3:1:1:C0044C:0:0:0:\n";
  import_folder(folder);

  edit({"rename", "list.dat", "Second", "Zweites"});
  edit({"set", "list.dat", "Zweites", "service_id=9", "video_pid=17"});
  edit({"lock", "list.dat", "Zweites"});
  edit({"remove", "list.dat", "First"});

  folder["lamedb5"] = "eDVB services /5/\nt:00c0044c:0001:0001,s:11494000:22000000:0:2:192:2:0:1:2:0:2\n"
                      "s:0009:00c0044c:0001:0001:25:7:0,\"Zweites\",p:One, Inc,c:000011\n"
                      "s:0003:00c0044c:0001:0001:1:0:0,\"Third\",p:One\n";
  folder["userbouquet.a.tv"] = "#NAME A\n#SERVICE 1:832:D:0:0:0:0:0:0:0:\n#SERVICE 1:0:1:9:1:1:C0044C:0:0:0:\n"
                               "#SERVICE 1:0:1:3:1:1:C0044C:0:0:0:\n";
  folder["userbouquet.b.tv"] = "#NAME B\n#SERVICE 1:0:1:9:1:1:C0044C:0:0:0:\n";
  folder["blacklist"] += "1:0:1:9:1:1:C0044C:0:0:0:\n";
  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

// Five services, in two bouquets with a marker, a description, a stream and Windows line ends.
Companion::file_texts folder_of_five() {
  return {{"lamedb5", "eDVB services /5/\nt:00c0044c:0001:0001,s:11494000:22000000:0:2:192:2:0:1:2:0:2\n"
                      "s:0001:00c0044c:0001:0001:1:0:0,\"One\",p:P\ns:0002:00c0044c:0001:0001:1:0:0,\"Two\",p:P\n"
                      "s:0003:00c0044c:0001:0001:1:0:0,\"Three\",p:P\n"
                      "s:0004:00c0044c:0001:0001:1:0:0,\"Four\",p:P\n"
                      "s:0005:00c0044c:0001:0001:2:0:0,\"Five\",p:P\n"},
          {"bouquets.tv",
           "#NAME My bouquets\n#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.a.tv\" ORDER BY bouquet\n"
           "#SERVICE: 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.b.tv\" ORDER BY bouquet\n"},
          {"userbouquet.a.tv", "#NAME A\n#SERVICE 1:0:1:1:1:1:C0044C:0:0:0::First\n#DESCRIPTION First\n"
                               "#SERVICE 1:64:0:0:0:0:0:0:0:0::- marker -\n#DESCRIPTION - marker -\n"
                               "#SERVICE 1:0:1:2:1:1:C0044C:0:0:0:\n# a remark\n#SERVICE 1:0:1:3:1:1:C0044C:0:0:0:\n"},
          {"userbouquet.b.tv", "#NAME B\r\n#SERVICE: 1:0:1:2:1:1:C0044C:0:0:0:\r\n"
                               "#SERVICE 4097:0:1:0:0:0:0:0:0:0:http%3a//host/x:Stream\r\n"
                               "#SERVICE 1:0:1:4:1:1:C0044C:0:0:0:\r\n#SERVICE 1:0:2:5:1:1:C0044C:0:0:0:\r\n"}};
}

void replace_in(std::string &text, const std::string &what, const std::string &by) {
  const std::size_t at = text.find(what);
  ASSERT_NE(at, std::string::npos) << what << " is not in\n" << text;
  text.replace(at, what.size(), by);
}

TEST_F(Companion, AFavouriteThatIsAddedIsALineOfItsBouquet) {
  auto folder = folder_of_five();
  import_folder(folder);

  edit({"fav", "add", "list.dat", "B", "One"});

  folder["userbouquet.b.tv"] += "#SERVICE 1:0:1:1:1:1:C0044C:0:0:0:\r\n";
  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

// Its place keeps the numbers of those behind it.
TEST_F(Companion, AFavouriteThatIsRemovedLeavesItsBouquet) {
  auto folder = folder_of_five();
  import_folder(folder);

  edit({"fav", "remove", "list.dat", "B", "Two"});

  replace_in(folder["userbouquet.b.tv"], "#SERVICE: 1:0:1:2:1:1:C0044C:0:0:0:", "#SERVICE 1:832:D:0:0:0:0:0:0:0:");
  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

TEST_F(Companion, AFavouriteMovesWithItsDescription) {
  auto folder = folder_of_five();
  import_folder(folder);

  edit({"move", "list.dat", "One", "--view", "fav:A", "--to", "3"});

  const auto made = exported_folder("lamedb5");
  const std::string first = "#SERVICE 1:0:1:1:1:1:C0044C:0:0:0::First\n#DESCRIPTION First\n";
  replace_in(folder["userbouquet.a.tv"], first, "");
  EXPECT_EQ(made.at("userbouquet.a.tv"), folder["userbouquet.a.tv"] + first);
  EXPECT_EQ(made.at("userbouquet.b.tv"), folder["userbouquet.b.tv"]);
}

// One moved first: the numbers are told by a bouquet of all services, and that by one line of the index.
TEST_F(Companion, OtherNumbersAreABouquetOfTheirOwn) {
  auto folder = folder_of_five();
  import_folder(folder);

  edit({"renumber", "list.dat", "Five", "900"});

  auto made = exported_folder("lamedb5");
  EXPECT_NE(made["userbouquet.all_channels.tv"].find("#SERVICE 1:0:2:5:1:1:C0044C:0:0:0:\n"), std::string::npos);
  made.erase("userbouquet.all_channels.tv");
  replace_in(
      folder["bouquets.tv"], "#SERVICE 1:7",
      "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.all_channels.tv\" ORDER BY bouquet\n#SERVICE 1:7");
  EXPECT_EQ(made, folder);
  EXPECT_EQ(said.find(" number "), std::string::npos) << said;
}

TEST_F(Companion, ABouquetOfAllServicesChangesWhereNumbersDo) {
  auto folder = folder_of_five();
  replace_in(
      folder["bouquets.tv"], "#SERVICE 1:7",
      "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.all_channels.tv\" ORDER BY bouquet\n#SERVICE 1:7");
  std::string &all = folder["userbouquet.all_channels.tv"];
  all = "#NAME All\n#SERVICE 1:0:1:1:1:1:C0044C:0:0:0:\n#SERVICE 1:832:D:0:0:0:0:0:0:0:\n"
        "#SERVICE 1:0:1:2:1:1:C0044C:0:0:0:\n# kept\n#SERVICE 1:0:1:3:1:1:C0044C:0:0:0:\n"
        "#SERVICE 1:0:1:4:1:1:C0044C:0:0:0:\n#SERVICE 1:0:2:5:1:1:C0044C:0:0:0:\n";
  import_folder(folder);
  EXPECT_EQ(exported_folder("lamedb5"), folder);

  edit({"renumber", "list.dat", "Two", "2"});
  edit({"renumber", "list.dat", "Five", "8"});

  replace_in(all, "#SERVICE 1:832:D:0:0:0:0:0:0:0:\n#SERVICE 1:0:1:2:1:1:C0044C:0:0:0:\n# kept\n",
             "#SERVICE 1:0:1:2:1:1:C0044C:0:0:0:\n# kept\n#SERVICE 1:832:D:0:0:0:0:0:0:0:\n");
  replace_in(all, "#SERVICE 1:0:2:5",
             "#SERVICE 1:832:D:0:0:0:0:0:0:0:\n#SERVICE 1:832:D:0:0:0:0:0:0:0:\n#SERVICE 1:0:2:5");
  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

TEST_F(Companion, AGroupThatIsRenamedRenamesItsBouquet) {
  auto folder = folder_of_five();
  import_folder(folder);

  edit({"fav", "rename", "list.dat", "B", "Best of all"});

  replace_in(folder["userbouquet.b.tv"], "#NAME B", "#NAME Best of all");
  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

TEST_F(Companion, ANewGroupIsAFileAndALineOfTheIndex) {
  auto folder = folder_of_five();
  import_folder(folder);

  edit({"fav", "new", "list.dat", "Mine"});
  edit({"fav", "add", "list.dat", "Mine", "Five"});

  folder["userbouquet.favourites_01.radio"] = "#NAME Mine\n#SERVICE 1:0:2:5:1:1:C0044C:0:0:0:\n";
  folder["bouquets.radio"] = "#NAME Bouquets (Radio)\n#SERVICE 1:7:2:0:0:0:0:0:0:0:FROM BOUQUET "
                             "\"userbouquet.favourites_01.radio\" ORDER BY bouquet\n";
  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

TEST_F(Companion, AGroupThatIsGoneTakesItsFileAndItsLineAlong) {
  auto folder = folder_of_five();
  import_folder(folder);

  edit({"fav", "delete", "list.dat", "B"});

  auto made = exported_folder("lamedb5");
  EXPECT_FALSE(made.contains("userbouquet.b.tv"));
  EXPECT_EQ(made["bouquets.tv"].find("userbouquet.b.tv"), std::string::npos);
  EXPECT_EQ(made["userbouquet.a.tv"], folder["userbouquet.a.tv"]);
  EXPECT_NE(said.find("out: userbouquet.b.tv is left out: its favourite group is gone\n"), std::string::npos) << said;
}

// What no edit was about stays, line by line and in its order, and the list comes back.
TEST_F(Companion, EditsOfFavouritesLeaveAllOtherLinesAlone) {
  int done = 0;
  for (unsigned seed = 0; seed < 25; ++seed) {
    random_source random(seed);
    constexpr int services = 8;
    const auto folder = random.folder(services, 5);
    import_folder(folder);
    std::set<std::string> touched;  // as lines refer to them
    for (int n = 1; n <= services; ++n) {
      const std::string id = chlist::identity_text(*id_of(n, ",\""));
      const std::string group = random.below(2) == 0 ? "Favourites (TV)" : "Others";
      const int what = random.below(6);
      if (what < 3) {
        const std::vector<std::string> arguments =
            what == 0   ? std::vector<std::string>{"fav", "add", "list.dat", group, id}
            : what == 1 ? std::vector<std::string>{"fav", "remove", "list.dat", group, id}
                        : std::vector<std::string>{"move", "list.dat", id, "--view", "fav:" + group, "--to", "1"};
        done += run(arguments).exit_code == 0 ? 1 : 0;  // others are refused: it is there, or is not
        touched.insert(fmt::format(":{:X}:{}:", n, n % 2 == 0 ? "1:1:C00000" : "2:1:C0044C"));
      }
    }

    const auto made = exported_folder("lamedb5");

    EXPECT_EQ(said.find("favourite groups  "), std::string::npos) << seed << said;
    EXPECT_EQ(said.find("places in the"), std::string::npos) << seed << said;
    const auto untouched = [&](const std::string &text) {
      std::vector<std::string> lines = lines_of(text);
      std::erase_if(lines, [&](const std::string &line) {
        return line.find("all_channels") != std::string::npos || line.starts_with("#SERVICE 1:832:") ||
               line.starts_with("#DESCRIPTION Given") ||
               std::ranges::any_of(touched, [&](const auto &each) { return line.find(each) != std::string::npos; });
      });
      return lines;
    };
    for (const auto &[name, text] : folder) {
      EXPECT_EQ(untouched(made.at(name)), untouched(text)) << seed << name;
    }
  }
  EXPECT_GT(done, 25);
}

// Its transponder is none of those that are kept.
TEST_F(Companion, AServiceOnANewTransponderBringsItAlong) {
  for (const int version : {4, 5}) {
    auto folder = random_source(4).folder(6, version);
    import_folder(folder);
    edit({"set", "list.dat", "Service 1", "frequency=12000000"});

    const auto made = exported_folder("lamedb" + std::to_string(version));

    std::string &lamedb = folder[version == 5 ? "lamedb5" : "lamedb"];
    if (version == 5) {
      replace_in(lamedb, "s:0001:00c0044c:", "t:00c00000:0002:0001,s:12000000:22000000:1:5:192:2:0\ns:0001:00c00000:");
    } else {
      replace_in(lamedb, "/\nend\n", "/\n00c00000:0002:0001\n\ts 12000000:22000000:1:5:192:2:0\n/\nend\n");
      replace_in(lamedb, "\n0001:00c0044c:", "\n0001:00c00000:");
    }
    EXPECT_EQ(made.at(version == 5 ? "lamedb5" : "lamedb"), lamedb);
  }
}

// The lamedb calls its transponders otherwise than an export would.
TEST_F(Companion, AServiceOfAKnownTransponderIsALineOfTheLamedb) {
  auto folder = folder_of_five();
  folder["lamedb5"] += "t:00c01234:0001:0001,s:11538000:22000000:1:5:192:2:0\n";
  import_folder(folder);
  std::filesystem::rename(path("list.dat"), path("scan.dat"));
  std::filesystem::rename(path("list.dat.more.json"), path("scan.dat.more.json"));
  auto fewer = folder;
  replace_in(fewer["lamedb5"], "s:0005:00c0044c:0001:0001:2:0:0,\"Five\",p:P\n", "");
  import_folder(fewer);
  ASSERT_LE(run({"merge", "list.dat", "scan.dat", "-o", "list.dat"}).exit_code, 1);

  const auto made = exported_folder("lamedb5");

  EXPECT_EQ(made.at("lamedb5"), folder["lamedb5"]);
}

// Twenty-two bouquets of a service each, two more than a list has room for.
Companion::file_texts folder_of_many_bouquets() {
  Companion::file_texts folder;
  std::string &lamedb = folder["lamedb5"] = "eDVB services /5/\n# by hand\n"
                                            "t:00c0044c:0001:0001,s:11494000:22000000:0:2:192:0:0\n";
  std::string &index = folder["bouquets.tv"] = "#NAME My bouquets\n";
  for (int n = 1; n <= 22; ++n) {
    const std::string bouquet = fmt::format("userbouquet.{:02}.tv", n);
    lamedb += fmt::format("s:{:04x}:00c0044c:0001:0001:25:0:0,\"S{}\",p:P\n", n, n);
    index += fmt::format("#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"{}\" ORDER BY bouquet\n", bouquet);
    folder[bouquet] = fmt::format("#NAME B{}\n#SERVICE 1:0:19:{:X}:1:1:C0044C:0:0:0:\n", n, n);
  }
  return folder;
}

TEST_F(Companion, WhatALamedbHasNoPlaceForChangesNothing) {
  const auto folder = folder_of_many_bouquets();
  import_folder(folder);
  merge_scan("S1;P:11494:HC23M2S0:S19.2E:22000:0:0:0:0:1:1:1:0\n");

  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

TEST_F(Companion, ATransponderThatIsReceivedOtherwiseChangesItsLine) {
  auto folder = folder_of_many_bouquets();
  import_folder(folder);
  merge_scan("S1;P:11494:HC56M5S1:S19.2E:27500:0:0:0:0:1:1:1:0\n");

  replace_in(folder["lamedb5"], "11494000:22000000:0:2:192:0:0", "11494000:27500000:0:4:192:0:0:1:2:0:2");
  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

TEST_F(Companion, TheThreeLinesOfATransponderAreOneThatChanges) {
  auto folder = folder_of_many_bouquets();
  folder.erase("lamedb5");
  folder["lamedb"] = "eDVB services /4/\ntransponders\n00c0044c:0001:0001\n\ts 11494000:22000000:0:2:192:0:0\n/\nend\n"
                     "services\n0001:00c0044c:0001:0001:25:0\nS1\np:P\nend\nby hand\n";
  import_folder(folder);
  merge_scan("S1;P:11494:HC56M2S0:S19.2E:22000:0:0:0:0:1:1:1:0\n");

  replace_in(folder["lamedb"], "11494000:22000000:0:2:", "11494000:22000000:0:4:");
  EXPECT_EQ(exported_folder("lamedb4").at("lamedb"), folder["lamedb"]);
}

// Its transponder stands behind all services: nobody would read it.
TEST_F(Companion, ALamedbThatIsWrittenAnewIsToldAndKeepsTheBouquets) {
  auto folder = folder_of_many_bouquets();
  folder["lamedb5"] += "t:00c01234:0001:0001,s:11538000:22000000:0:5:192:2:0\n"
                       "s:0099:00c01234:0001:0001:25:0:0,\"Late\",p:P\n";
  import_folder(folder);
  edit({"set", "list.dat", "S1", "frequency=11538000"});

  const program_result result = run({"export", "list.dat", "-o", "out", "--to", "lamedb5"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: export: list.dat: left out: lines of lamedb5 as they were: 26 (written anew: services "
                        "would not come back from it otherwise)\n");
  EXPECT_EQ(read_file(path("out/bouquets.tv")), folder["bouquets.tv"]);
  EXPECT_EQ(read_file(path("out/userbouquet.22.tv")), "#NAME B22\n#SERVICE 1:0:1:16:1:1:C02CE6:0:0:0:\n");
}

TEST_F(Companion, LineEndsMarksAndOtherCharactersGoOutAsTheyCameIn) {
  for (const std::string &text : {std::string("\xEF\xBB\xBF") + two_services, "T\xE9l\xE9" + two_services,
                                  two_services + "\r\n:x\r\n", std::string(two_services, 0, two_services.size() - 1)}) {
    import_text(text);
    EXPECT_EQ(exported(), text);
  }
}

std::string in_utf_16(const std::string &ascii, bool is_little) {
  std::string text = is_little ? "\xFF\xFE" : "\xFE\xFF";
  for (const char c : ascii) {
    text += is_little ? std::string{c, '\0'} : std::string{'\0', c};
  }
  return text;
}

// Every format of text, in every way in which its bytes may be read.
TEST_F(Companion, TextsGoOutInTheEncodingThatTheyCameIn) {
  const std::string sections = "[One]\n\tSERVICE_ID = 1\n\tFREQUENCY = 11000000\n\tDELIVERY_SYSTEM = DVBS\n";
  const std::string playlist = "#EXTM3U\n#EXTINF:-1,One\nhttp://h/1:0:1:1:1:1:C00000:0:0:0:\n";
  for (const auto &[format, text] :
       {std::pair("vdr", two_services), std::pair("dvbv5", sections), std::pair("m3u", playlist)}) {
    for (const std::string &source : {in_utf_16(text, true), in_utf_16(text, false), "\xEF\xBB\xBF" + text}) {
      import_text(source, format);
      EXPECT_EQ(exported(format), source) << format;
      EXPECT_EQ(said.find("left out"), std::string::npos) << said;
    }
  }
}

TEST_F(Companion, ACharsetThatIsNamedIsWrittenAgain) {
  write_file(path("source"), "\xB1\xB6;P:11494:H:S19.2E:22000:101:102:0:0:1:1:1:0\n");
  ASSERT_EQ(run({"import", "source", "--from", "vdr", "--charset", "ISO-8859-2", "-o", "list.dat"}).exit_code, 0);
  EXPECT_EQ(exported(), read_file(path("source")));

  edit({"rename", "list.dat", "1", "\xC4\x85 Ω and \xC3\xA9"});
  const program_result result = run({"export", "list.dat", "-o", "out", "--to", "vdr"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_NE(result.err.find("left out: characters that ISO-8859-2 has not: 1"), std::string::npos) << result.err;
  EXPECT_TRUE(read_file(path("out")).starts_with("\xB1 ? and \xE9;P:")) << read_file(path("out"));
}

// What would be a mark in UTF-8 or UTF-16 is three or two characters of Latin-1.
TEST_F(Companion, BytesThatLookLikeAMarkAreCharactersOfTheCharsetThatIsNamed) {
  for (const std::string mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}) {
    write_file(path("source"), mark + "T\xE9l\xE9;P:11494:H:S19.2E:22000:101:102:0:0:1:1:1:0\n");
    ASSERT_EQ(run({"import", "source", "--from", "vdr", "--charset", "ISO-8859-1", "-o", "list.dat"}).exit_code, 0);

    EXPECT_EQ(exported(), read_file(path("source")));
    EXPECT_EQ(said.find("left out"), std::string::npos) << said;
  }
}

TEST_F(Companion, ACharsetThatThisSystemDoesNotKnowIsTold) {
  write_file(path("source"), "\xB1;P:11494:H:S19.2E:22000:101:102:0:0:1:1:1:0\n");
  ASSERT_EQ(run({"import", "source", "--from", "vdr", "--charset", "ISO-8859-2", "-o", "list.dat"}).exit_code, 0);
  std::string beside = read_file(path("list.dat.more.json"));
  replace_in(beside, "ISO-8859-2", "Klingon");
  write_file(path("list.dat.more.json"), beside);

  const program_result result = run({"export", "list.dat", "-o", "out", "--to", "vdr"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: export: list.dat: left out: files in Klingon: 1 (written in UTF-8: no such charset here)\n");
  EXPECT_EQ(read_file(path("out")), "\xC4\x85;P:11494:H:S19.2E:22000:101:102:0:0:1:1:1:0\n");
}

TEST_F(Companion, AKeptTextThatItsFormatCannotReadIsWrittenAnewAndTold) {
  import_folder(folder_of_five());
  std::string beside = read_file(path("list.dat.more.json"));
  replace_in(beside, "\"name\": \"lamedb5\"", "\"name\": \"services\"");
  write_file(path("list.dat.more.json"), beside);

  const program_result result = run({"export", "list.dat", "-o", "out", "--to", "lamedb5"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_NE(result.err.find("left out: files of lamedb5 as they were: "), std::string::npos) << result.err;
  EXPECT_NE(result.err.find(" (written anew: neither lamedb nor lamedb5 is in it)\n"), std::string::npos) << result.err;
  EXPECT_TRUE(read_file(path("out/lamedb5")).starts_with("eDVB services /5/\n"));
}

TEST_F(Companion, ATableGoesOutInItsEncoding) {
  write_file(path("list.csv"), in_utf_16("name,frequency,network_id,ts_id,service_id\nOne,11000000,1,1,1\n", true));
  ASSERT_EQ(run({"import", "list.csv", "-o", "list.dat"}).exit_code, 0);

  ASSERT_LE(run({"export", "list.dat", "-o", "out.csv", "--columns", "name"}).exit_code, 1);

  EXPECT_EQ(read_file(path("out.csv")), in_utf_16("name\r\nOne\r\n", true));
}

TEST_F(Companion, AFolderGoesOutInItsEncodings) {
  auto folder = folder_of_five();
  replace_in(folder["userbouquet.a.tv"], "First\n", "T\xE9l\xE9\n");
  folder["userbouquet.b.tv"] = in_utf_16(folder["userbouquet.b.tv"], true);
  import_folder(folder);

  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

// The line that is edited stays of the encoding of all the others.
TEST_F(Companion, ATextOfLatin1StaysOne) {
  import_text("T\xE9l\xE9;P:11494:H:S19.2E:22000:101:102:0:0:1:1:1:0\n");

  edit({"rename", "list.dat", "1", "Caf\xC3\xA9"});

  EXPECT_EQ(exported(), "Caf\xE9;P:11494:H:S19.2E:22000:101:102:0:0:1:1:1:0\n");
  EXPECT_EQ(said.find(" name "), std::string::npos) << said;
}

// Of separators the names: lines of numbers alone come and go.
std::vector<std::string> without_numbers(std::vector<std::string> lines) {
  for (std::string &line : lines) {
    if (line.starts_with(":@")) {
      line.erase(1, std::min(line.find_first_not_of("@0123456789", 1), line.size()) - 1);
    }
  }
  std::erase(lines, ":");
  return lines;
}

// What edits leave alone stays, byte for byte and in its order; only numbers that separators raise follow.
TEST_F(Companion, OnlyTheEditedLinesDiffer) {
  for (unsigned seed = 0; seed < 30; ++seed) {
    random_source random(seed);
    constexpr int services = 10;
    const std::string text = random.channels_conf(services);
    import_text(text);
    std::string edits;
    std::set<std::string> touched;
    std::set<std::string> removed;
    for (int n = 1; n <= services; ++n) {
      ASSERT_TRUE(id_of(n)) << seed << '\n' << n << text;
      const std::string id = chlist::identity_text(*id_of(n));
      const std::string prefix = "Service " + std::to_string(n) + " ";
      if (random.now_and_then()) {
        edits += "rename \"" + id + "\" \"Renamed " + std::to_string(n) + "\"\n";
        touched.insert(prefix);
      } else if (random.now_and_then()) {
        edits += "remove \"" + id + "\"\n";
        removed.insert(prefix);
      }
    }
    write_file(path("edits"), edits);
    edit({"apply", "list.dat", "edits", "--yes"});

    const std::vector<std::string> after = lines_of(exported());

    std::vector<std::string> expected = without_numbers(lines_of(text));
    std::erase_if(expected, [&](const std::string &line) { return begins_with_one_of(line, removed); });
    const std::vector<std::string> kept = without_numbers(after);
    ASSERT_EQ(kept.size(), expected.size()) << seed << '\n' << text << "\nbecame\n" << read_file(path("out"));
    for (std::size_t at = 0; at < kept.size(); ++at) {
      const bool is_there_again = at > 0 && expected[at] == expected[at - 1];
      if (is_there_again || !begins_with_one_of(expected[at], touched)) {
        EXPECT_EQ(kept[at], expected[at]) << seed;
      } else {
        EXPECT_TRUE(kept[at].starts_with("Renamed ")) << kept[at];
        EXPECT_EQ(kept[at].substr(kept[at].find(':')), expected[at].substr(expected[at].find(':'))) << seed;
      }
    }
  }
}

// Everything that a line says goes along when the service is called otherwise, by name and by ids.
TEST_F(Companion, AServiceKeepsWhatTheListDoesNotHold) {
  import_text(two_services);

  edit({"set", "list.dat", "First", "service_id=9", "video_pid=77", "provider=New"});
  edit({"rename", "list.dat", "Second", "2nd"});

  EXPECT_EQ(
      exported(),
      "First,F;New:11494:HC23M5O35P0S1:S19.2E:22000:77+99=27:102=deu@3,103=eng;104=deu@106:105;106=deu:1702:9:1:1:7:x\n"
      "# no line of a service\n"
      ":Films\n"
      "2nd;Two:11494:HC23M5O35P0S1:S19.2E:22000:201:202:0:0:2:1:1:0\n");
}

TEST_F(Companion, ServicesMoveWithTheirLines) {
  import_text(two_services);

  edit({"renumber", "list.dat", "Second", "1", "--swap"});

  const std::vector<std::string> lines = lines_of(exported());
  EXPECT_TRUE(lines.front().starts_with("Second;")) << lines.front();
}

std::string line_of_vdr(int n) { return fmt::format("S{0};P:11494:H:S19.2E:22000:{0}01:{0}02:0:0:{0}:1:1:0\n", n); }

std::string lines_of_vdr(int first, int last) {
  std::string text;
  for (int n = first; n <= last; ++n) {
    text += line_of_vdr(n);
  }
  return text;
}

// Two services in no group, two in News, two in Films.
const std::string six_in_groups =
    lines_of_vdr(1, 2) + ":@10 News\n" + lines_of_vdr(3, 4) + "# a remark\n:Films\n" + lines_of_vdr(5, 6);

TEST_F(Companion, AGroupThatIsRenamedRenamesItsSeparator) {
  import_text(six_in_groups);

  edit({"fav", "rename", "list.dat", "News", "Today: all"});

  EXPECT_EQ(exported(), lines_of_vdr(1, 2) + ":@10 Today| all\n" + lines_of_vdr(3, 4) + "# a remark\n:Films\n" +
                            lines_of_vdr(5, 6));
  EXPECT_EQ(said.find("favourite"), said.find("favourite groups as vdr")) << said;
}

TEST_F(Companion, AGroupThatIsGoneTakesItsSeparatorAlong) {
  import_text(six_in_groups);

  edit({"fav", "delete", "list.dat", "News"});

  EXPECT_EQ(exported(),
            lines_of_vdr(1, 2) + ":@10\n" + lines_of_vdr(3, 4) + "# a remark\n:Films\n" + lines_of_vdr(5, 6));
}

TEST_F(Companion, ASeparatorStandsInFrontOfTheFirstOfItsGroup) {
  import_text(six_in_groups);

  edit({"fav", "remove", "list.dat", "News", "S3"});

  EXPECT_EQ(exported(), lines_of_vdr(1, 2) + ":@10\n" + line_of_vdr(3) + ":News\n" + line_of_vdr(4) +
                            "# a remark\n:Films\n" + lines_of_vdr(5, 6));
}

TEST_F(Companion, AServiceOfAnotherGroupStandsBehindAnotherSeparator) {
  import_text(six_in_groups);

  edit({"fav", "remove", "list.dat", "News", "S4"});
  edit({"fav", "add", "list.dat", "Films", "S4"});

  EXPECT_EQ(exported(), lines_of_vdr(1, 2) + ":@10 News\n" + line_of_vdr(3) + ":Films\n" + line_of_vdr(4) +
                            "# a remark\n" + lines_of_vdr(5, 6));
}

TEST_F(Companion, ANewGroupIsASeparatorWhereItsServicesStandTogether) {
  import_text(six_in_groups);

  edit({"fav", "new", "list.dat", "Best"});
  edit({"fav", "add", "list.dat", "Best", "S1"});
  edit({"fav", "add", "list.dat", "Best", "S2"});

  EXPECT_EQ(exported(), ":Best\n" + six_in_groups);
}

// Behind a separator of Best, S2 would be in that group as well.
TEST_F(Companion, AGroupThatNoSeparatorCanSayIsToldAsALoss) {
  import_text(six_in_groups);

  edit({"fav", "new", "list.dat", "Best"});
  edit({"fav", "add", "list.dat", "Best", "S1"});

  EXPECT_EQ(exported(), six_in_groups);
  EXPECT_NE(said.find("favourite group  "), std::string::npos) << said;
}

TEST_F(Companion, AServiceMovesIntoItsGroup) {
  import_text(six_in_groups);

  edit({"renumber", "list.dat", "S1", "12", "--shift"});
  edit({"fav", "add", "list.dat", "News", "S1"});

  EXPECT_EQ(exported(), ":@2\n" + line_of_vdr(2) + ":@10 News\n" + lines_of_vdr(3, 4) + line_of_vdr(1) +
                            "# a remark\n:Films\n" + lines_of_vdr(5, 6));
}

TEST_F(Companion, ANumberChangesWhereItIsNeeded) {
  import_text(six_in_groups);

  edit({"renumber", "list.dat", "S3", "9"});
  EXPECT_EQ(exported(), lines_of_vdr(1, 2) + ":@9 News\n" + line_of_vdr(3) + ":@11\n" + line_of_vdr(4) +
                            "# a remark\n:Films\n" + lines_of_vdr(5, 6));
  edit({"renumber", "list.dat", "S3", "10"});
  EXPECT_EQ(exported(), six_in_groups);
  edit({"renumber", "list.dat", "--from", "20", "--where", "number>9", "--yes"});
  EXPECT_EQ(exported(),
            lines_of_vdr(1, 2) + ":@20 News\n" + lines_of_vdr(3, 4) + "# a remark\n:Films\n" + lines_of_vdr(5, 6));
}

// The lines of all services and all that is no separator stay; what the report tells is all that does not come back.
TEST_F(Companion, EditsOfGroupsLeaveAllOtherLinesAlone) {
  int done = 0;
  for (unsigned seed = 0; seed < 25; ++seed) {
    random_source random(seed);
    constexpr int services = 10;
    const std::string text = ":First\n" + random.channels_conf(services);
    import_text(text);
    const std::vector<std::string> groups = {"Group", "More", "First", "New"};
    run({"fav", "new", "list.dat", "New"});
    for (int n = 1; n <= services; ++n) {
      const std::string id = chlist::identity_text(*id_of(n));
      const std::string &group = groups[static_cast<std::size_t>(random.below(4))];
      const program_result result = run({"fav", random.below(2) == 0 ? "add" : "remove", "list.dat", group, id});
      done += result.exit_code == 0 ? 1 : 0;  // others are refused: there is no such group, or it is not in it
    }

    const std::string made = exported();

    const auto others = [](const std::string &all) {
      std::vector<std::string> lines = lines_of(all);
      std::erase_if(lines, [](const std::string &line) { return line.starts_with(':'); });
      return lines;
    };
    EXPECT_EQ(others(made), others(text)) << seed;
    EXPECT_EQ(said.find("number  "), std::string::npos) << seed << said;
  }
  EXPECT_GT(done, 25);
}

TEST_F(Companion, AnotherFormatGetsTheTuning) {
  import_text(two_services);

  const std::string sections = exported("dvbv5");

  for (const char *line : {"\tSYMBOL_RATE = 22000000\n", "\tINNER_FEC = 2/3\n", "\tMODULATION = PSK/8\n",
                           "\tDELIVERY_SYSTEM = DVBS2\n", "\tAUDIO_PID = 102 103 104\n"}) {
    EXPECT_NE(sections.find(line), std::string::npos) << line << sections;
  }
  EXPECT_EQ(said.find("symbol rate"), std::string::npos) << said;
}

TEST_F(Companion, AListWithoutOneSaysWhatIsMissing) {
  import_text(two_services);
  std::filesystem::remove(path("list.dat.more.json"));

  exported();

  EXPECT_NE(said.find("symbol rate and modulation            2"), std::string::npos) << said;
}

TEST_F(Companion, AnotherListLendsItsTuning) {
  import_text(two_services);
  std::filesystem::remove(path("list.dat.more.json"));
  write_file(path("other.conf"), "Else:11494:HC34M5O35S1:S19.2E:22000:1:2:0:0:77:1:1:0\n" + lines_of(two_services)[0]);

  const std::vector<std::string> lines = lines_of(exported("vdr", {"--tuning", "other.conf"}));

  EXPECT_EQ(lines[0], lines_of(two_services)[0].substr(0, lines_of(two_services)[0].find(":7:x")) + ":0");
  EXPECT_NE(lines[1].find("HC34M5O35S1:S19.2E:22000"), std::string::npos) << lines[1];
}

TEST_F(Companion, OneThatIsDamagedIsToldAndStays) {
  import_text(two_services);
  for (const char *text : {"", "{", "[]", "{}", "{\"schema\": 2}", "{\"schema\": 1, \"services\": [{}]}",
                           "{\"schema\": 1, \"services\": [{\"id\": \"x\"}]}", "{\"schema\": 1, \"source\": 7}",
                           "{\"schema\": 1, \"services\": [{\"id\": \"1:1:1:1H:1\", \"tuning\": {\"pilot\": 7}}]}"}) {
    write_file(path("list.dat.more.json"), text);

    const program_result exporting = run({"export", "list.dat", "-o", "out", "--to", "vdr"});
    const program_result renaming = run({"rename", "list.dat", "1", "F" + std::to_string(std::string(text).size())});

    EXPECT_EQ(exporting.exit_code, 1) << text;
    EXPECT_NE(exporting.err.find("list.dat.more.json: "), std::string::npos) << exporting.err;
    EXPECT_EQ(renaming.exit_code, 1) << text;
    EXPECT_EQ(read_file(path("list.dat.more.json")), text);
  }
}

TEST_F(Companion, OneThatIsTooLargeIsNotRead) {
  import_text(two_services);
  std::filesystem::resize_file(path("list.dat.more.json"), chlist::largest_companion + 1);

  const program_result result = run({"export", "list.dat", "-o", "out", "--to", "vdr"});

  EXPECT_NE(result.err.find("list.dat.more.json: is larger than 64 MiB"), std::string::npos) << result.err;
}

TEST_F(Companion, BothFilesHaveBackups) {
  import_text(two_services);
  const std::string before = read_file(path("list.dat.more.json"));

  edit({"set", "list.dat", "First", "service_id=9"});

  EXPECT_EQ(read_file(path("list.dat.more.json.bak")), before);
  EXPECT_NE(read_file(path("list.dat.more.json")), before);
}

TEST_F(Companion, AnotherOutputGetsItsOwn) {
  import_text(two_services);
  const std::string before = read_file(path("list.dat.more.json"));

  edit({"remove", "list.dat", "First", "-o", "new.dat"});

  EXPECT_EQ(read_file(path("list.dat.more.json")), before);
  EXPECT_EQ(chlist::companion_beside(path("new.dat"))->services.size(), 1U);
}

TEST_F(Companion, AnImportOfAnotherListLeavesNoneOfTheFormer) {
  import_text(two_services);
  write_file(path("list.csv"), "name,frequency,network_id,ts_id,service_id\nOne,11000000,1,1,1\n");

  EXPECT_EQ(run({"import", "list.csv", "-o", "list.dat", "--no-backup"}).exit_code, 0);

  EXPECT_FALSE(std::filesystem::exists(path("list.dat.more.json")));
}

TEST_F(Companion, AMergeTakesTheNewerTuning) {
  import_text(two_services);
  write_file(path("scan.conf"), "First;One:11494:HC56M2S0:S19.2E:27500:101:102:0:0:1:1:1:0\n"
                                "Third;One:11494:HC56M2S0:S19.2E:27500:301:302=deu:0:0:3:1:1:0\n");
  ASSERT_EQ(run({"import", "scan.conf", "-o", "scan.dat"}).exit_code, 0);
  ASSERT_LE(run({"merge", "list.dat", "scan.dat", "-o", "list.dat", "--keep-missing"}).exit_code, 1);

  const std::vector<std::string> lines = lines_of(exported());

  ASSERT_EQ(lines.size(), 5U);
  EXPECT_TRUE(lines[0].starts_with("First,F;One:11494:HC56M2S0:S19.2E:27500:101+99")) << lines[0];
  EXPECT_TRUE(lines[3].starts_with("Second;Two:11494:HC23M5O35P0S1:S19.2E:22000:")) << lines[3];
  EXPECT_TRUE(lines[4].starts_with("Third;One:11494:HC56M2S0:S19.2E:27500:301:302=deu:")) << lines[4];
}

TEST_F(Companion, AScanChangesHowAServiceIsReceivedAndNothingElse) {
  std::string text = "# by hand\nFirst;One:11494:HC23I0M2S0:S19.2E:22000:0:0:0:0:1:1:1:0\n"
                     "Second;One:11600:HC23I0M2S0:S19.2E:22000:0:0:0:0:2:1:2:0\n";
  import_text(text);
  merge_scan("First;One:11494:HC56M2S0:S19.2E:27500:0:0:0:0:1:1:1:0\n");

  replace_in(text, "HC23I0M2S0:S19.2E:22000", "HC56I0M2S0:S19.2E:27500");
  EXPECT_EQ(exported(), text);
}

TEST_F(Companion, AScanChangesTheLinesOfASectionThatTellHowItIsReceived) {
  std::string text = "# by hand\n[First]\n\tSERVICE_ID = 1\n\tNETWORK_ID = 1\n\tTRANSPORT_ID = 1\n"
                     "\tFREQUENCY = 11494000\n\tPOLARIZATION = HORIZONTAL\n\tSYMBOL_RATE = 22000000\n"
                     "\tINNER_FEC = 2/3\n\tINVERSION = OFF\n\tMY_KEY = 7\n\tDELIVERY_SYSTEM = DVBS\n";
  import_text(text, "dvbv5");
  merge_scan("First;One:11494:HC56M2S0:S19.2E:27500:0:0:0:0:1:1:1:0\n");

  const std::string made = exported("dvbv5");

  replace_in(text, "SYMBOL_RATE = 22000000", "SYMBOL_RATE = 27500000");
  replace_in(text, "INNER_FEC = 2/3", "INNER_FEC = 5/6");
  EXPECT_EQ(made, text);
}

// A guard interval of the one is none of the other.
TEST_F(Companion, AnotherDeliverySystemIsReceivedAsTheScanTellsAlone) {
  import_text("First;One:474000:B8C23G4M64S0T8Y0:T:27500:0:0:0:0:1:1:1:0\n");
  merge_scan("First;One:474000:B8M256S1:T:27500:0:0:0:0:1:1:1:0\n");

  EXPECT_EQ(exported(), "First;One:474000:B8M256S1:T:27500:0:0:0:0:1:1:1:0\n");
}

TEST_F(Companion, ACheckTellsOfOneThatIsOutOfStep) {
  import_text(two_services);
  EXPECT_EQ(run({"check", "list.dat"}).exit_code, 0);
  const std::string kept = read_file(path("list.dat.more.json"));

  edit({"remove", "list.dat", "Second"});
  EXPECT_EQ(run({"check", "list.dat"}).exit_code, 0);
  write_file(path("list.dat.more.json"), kept);

  const program_result result = run({"check", "list.dat"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_NE(result.out.find("1 service beside the file and not in it"), std::string::npos) << result.out;
}

TEST_F(Companion, ALamedbGetsTheTuning) {
  import_text(two_services);

  ASSERT_LE(run({"export", "list.dat", "-o", "box", "--to", "lamedb4"}).exit_code, 1);

  const std::string lamedb = read_file(path("box/lamedb"));
  EXPECT_NE(lamedb.find("\ts 11494000:22000000:0:2:192:2:0:1:2:0:2\n"), std::string::npos) << lamedb;
  EXPECT_NE(lamedb.find("p:One,c:000065,c:010066,c:020069,c:030063,c:040068,C:1702\n"), std::string::npos) << lamedb;
}

// One of the two files was replaced when the program ended.
TEST_F(Companion, OneOfAnotherFileIsTold) {
  import_text(two_services);
  const std::string file = read_file(path("list.dat"));
  const std::string kept = read_file(path("list.dat.more.json"));
  edit({"lock", "list.dat", "First"});
  edit({"check", "list.dat"});
  write_file(path("list.dat.more.json"), kept);

  const program_result exporting = run({"export", "list.dat", "-o", "out", "--to", "vdr"});
  const program_result checking = run({"check", "list.dat"});
  const program_result ordering = run({"order", "list.dat", "--like", "list.dat", "--dry-run"});
  const program_result editing = run({"unlock", "list.dat", "First"});

  EXPECT_EQ(exporting.exit_code, 1);
  EXPECT_NE(exporting.out.find("list.dat.more.json: somebody wrote list.dat without it\n"), std::string::npos)
      << exporting.out;
  EXPECT_EQ(checking.exit_code, 1);
  EXPECT_NE(checking.out.find("what stands beside the file was written with another one"), std::string::npos);
  EXPECT_EQ(ordering.exit_code, 1);
  EXPECT_EQ(editing.exit_code, 1);
  EXPECT_NE((editing.out + editing.err).find("somebody wrote list.dat without it"), std::string::npos) << editing.err;
  edit({"check", "list.dat"});
  EXPECT_EQ(read_file(path("list.dat")), file);
}

TEST_F(Companion, AnImportCanBeUndone) {
  import_text(two_services);
  edit({"rename", "list.dat", "First", "1st"});
  const std::string file = read_file(path("list.dat"));
  const std::string kept = read_file(path("list.dat.more.json"));
  write_file(path("list.csv"), "name,frequency,network_id,ts_id,service_id\nOne,11000000,1,1,1\n");
  ASSERT_EQ(run({"import", "list.csv", "-o", "list.dat"}).exit_code, 0);

  edit({"undo", "list.dat"});

  EXPECT_EQ(read_file(path("list.dat")), file);
  EXPECT_EQ(read_file(path("list.dat.more.json")), kept);
  EXPECT_NE(run({"history", "list.dat"}).out.find("import list.csv"), std::string::npos);
  edit({"redo", "list.dat"});
  EXPECT_FALSE(std::filesystem::exists(path("list.dat.more.json")));
}

TEST_F(Companion, AListWhoseGroupsBecameSomethingElseGoesOutAsItCameIn) {
  const std::string text = six_in_groups + ":Long\n" + lines_of_vdr(7, 60);
  write_file(path("source"), text);
  for (const std::vector<std::string> &options :
       {std::vector<std::string>{"--groups", "genres"}, {"--groups", "none"}, {"--bouquets", "Films"}, {"--split"}}) {
    ASSERT_LE(run({"import", "source", "--from", "vdr", "-o", "list.dat", "--no-backup"}, options).exit_code, 1);

    EXPECT_EQ(exported(), text) << options.front();
    EXPECT_EQ(said.find("Not carried"), std::string::npos) << options.front() << said;
  }
}

// The model has the last two of twenty-two, so that others have no room.
TEST_F(Companion, AFolderWhoseGroupsFollowAnotherListGoesOutAsItCameIn) {
  const auto folder = folder_of_many_bouquets();
  import_folder(folder);
  ASSERT_EQ(run({"import", "box", "-o", "model.dat", "--bouquets", "B22,B21"}).exit_code, 0);
  ASSERT_EQ(run({"import", "box", "-o", "list.dat", "--like", "model.dat"}).exit_code, 1);
  load("list.dat");
  EXPECT_STREQ(get_fav_group_info(0)->name, "B22");
  EXPECT_STREQ(get_fav_group_info(1)->name, "B21");
  EXPECT_STREQ(get_fav_group_info(2)->name, "B1");

  EXPECT_EQ(exported_folder("lamedb5"), folder);
}

TEST_F(Companion, AGroupThatIsNewIsWrittenWhereOthersWereChosen) {
  write_file(path("source"), six_in_groups);
  ASSERT_LE(run({"import", "source", "--from", "vdr", "-o", "list.dat", "--bouquets", "Films"}).exit_code, 1);
  edit({"fav", "new", "list.dat", "Best"});
  edit({"fav", "add", "list.dat", "Best", "S1"});
  edit({"fav", "add", "list.dat", "Best", "S2"});

  EXPECT_EQ(exported(), ":Best\n" + six_in_groups);
  EXPECT_EQ(said.find("Not carried"), std::string::npos) << said;
}

TEST_F(Companion, ServicesThatNobodyAskedForLoseNothing) {
  write_file(path("source"), lines_of(two_services)[0] + "\n" + lines_of(two_services)[3] + "\n");

  const program_result result = run({"import", "source", "--from", "vdr", "-o", "list.dat", "--where", "name=Second"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_NE(result.out.find("1 service not asked for"), std::string::npos) << result.out;
  EXPECT_EQ(result.out.find("teletext PIDs"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("symbol rates and modulation           1"), std::string::npos) << result.out;
}

// Its columns of what is told by others are no loss.
TEST_F(Companion, AListingIsImportedWhole) {
  import_text(two_services);
  write_file(path("listing.csv"), run({"list", "list.dat", "--format", "csv"}).out);

  const program_result result = run({"import", "listing.csv", "-o", "again.dat"});

  EXPECT_EQ(result.exit_code, 0) << result.out << result.err;
}

}  // namespace
