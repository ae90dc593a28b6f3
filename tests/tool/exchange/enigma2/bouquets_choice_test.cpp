// Bouquets of other receivers: indexes of older forms, titles between bouquets, and more than a list has room for.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tool/exchange/enigma2/bouquets_list.h"
#include "tool/exchange/import_host.h"

namespace {

using namespace tool_test::enigma2;
using tool_test::has_line;
using tool_test::json;
using tool_test::program_result;

constexpr const char *index_line = "#SERVICE 1:7:1:0:0:0:0:0:0:0:";
constexpr const char *marker = "#SERVICE 1:64:0:0:0:0:0:0:0:0:----TOP----\n";

std::string entry_for(int service_id) {
  return "#SERVICE 1:0:1:" + std::to_string(service_id) + ":7DA:9E:C00000:0:0:0:\n";
}

// A folder with these services, and the bouquets that are put in.
folder folder_of(int services) {
  std::vector<line_up_service> all;
  for (int n = 1; n <= services; ++n) {
    all.push_back(plain_service(n));
    all.back().fields.service_id = static_cast<std::uint16_t>(std::stoi(std::to_string(n), nullptr, 16));
  }
  folder made = written_folder(list_of(all));
  made.erase("userbouquet.all_channels.tv");
  made["bouquets.tv"] = "#NAME Bouquets\n";
  return made;
}

void add_bouquet(folder &into, const std::string &name, const std::string &lines) {
  const std::string file = "userbouquet." + name + ".tv";
  into["bouquets.tv"] += index_line + ("FROM BOUQUET \"" + file) + "\" ORDER BY bouquet\n";
  into[file] = "#NAME " + name + "\n" + lines;
}

std::string entries_for(int first, int last) {
  std::string lines;
  for (int n = first; n <= last; ++n) {
    lines += entry_for(n);
  }
  return lines;
}

TEST(BouquetsOfOtherReceivers, AnIndexMayNameTheFileAlone) {
  folder files = folder_of(2);
  files["bouquets.tv"] += index_line + std::string("userbouquet.mine.tv\n") + index_line + "/etc/userbouquet.mine.tv\n";
  files["userbouquet.mine.tv"] = "#NAME Mine\n" + entry_for(2);

  const line_up read = read_folder(files);

  EXPECT_EQ(favourites_of(read), (texts{"Mine: A2"}));
  EXPECT_EQ(skipped_in(read), (texts{"3: bouquets.tv: names no bouquet of this folder"}));
}

TEST(BouquetsOfOtherReceivers, TitlesBetweenBouquetsAreNoGroups) {
  folder files = folder_of(2);
  files["bouquets.tv"] += marker;
  add_bouquet(files, "----TOP----", "");
  add_bouquet(files, "Titles", marker);
  add_bouquet(files, "News", marker + entry_for(1));
  add_bouquet(files, "Empty", "");
  loss_counts lost;

  const line_up read = read_folder(files, lost);

  EXPECT_EQ(favourites_of(read), (texts{"News: A1", "Empty:"}));
  EXPECT_EQ(skipped_in(read), texts());
  EXPECT_EQ(count_of(lost, "markers"), 3U);
  EXPECT_EQ(count_of(lost, "bouquets without a service"), 2U);
}

TEST(BouquetsOfOtherReceivers, TheOrderOfAllServicesIsOneOfTelevisionAlone) {
  folder files = folder_of(1);
  files["bouquets.radio"] = "#NAME Bouquets\n" + (index_line + std::string("userbouquet.all_channels.tv\n"));
  files["userbouquet.all_channels.tv"] = "#NAME *\n";
  loss_counts lost;

  const line_up read = read_folder(files, lost);

  EXPECT_EQ(favourites_of(read), texts());
  EXPECT_EQ(count_of(lost, "bouquets without a service"), 1U);
}

class BouquetChoice : public tool_test::import_test {
 protected:
  // 22 bouquets: "Long" of 90 services, and 21 of one.
  void SetUp() override {
    import_test::SetUp();
    folder files = folder_of(90);
    add_bouquet(files, "Long", entries_for(1, 90));
    for (int n = 1; n <= 21; ++n) {
      add_bouquet(files, "B" + std::to_string(n), entry_for(n));
    }
    std::filesystem::create_directory(path("box"));
    for (const auto &[name, text] : files) {
      test_support::write_file(path("box/" + name), text);
    }
  }

  [[nodiscard]] program_result imported(const std::vector<std::string> &options) const {
    return run({"import", "box", "-o", "list.dat", "--no-backup"}, options);
  }
  [[nodiscard]] texts groups() const {
    load();
    texts names;
    for (std::int16_t group = 0; group < get_fav_group_number(); ++group) {
      names.emplace_back(get_fav_group_info(group)->name);
    }
    return names;
  }
};

TEST_F(BouquetChoice, WhatHasNoRoomIsNamed) {
  const program_result result = imported({});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: import: box: the list of favourite groups is full: it holds 20, 2 more are left out\n"
            "chlist: import: box: favourite groups are full: each holds 40, 50 more favourites are left out\n"
            "chlist: import: box: left out: favourite group \"Long\": 50 of 90 services\n"
            "chlist: import: box: left out: favourite group \"B20\": 1 service\n"
            "chlist: import: box: left out: favourite group \"B21\": 1 service\n"
            "chlist: import: box: --bouquets chooses among groups; --groups genres makes genres of them instead\n"
            "chlist: import: box: --split makes several groups of one that is too long\n");
  EXPECT_EQ(json::parse(imported({"--json"}).out)["groups_left_out"][0],
            (json{{"group_name", "Long"}, {"services", 90}, {"count", 50}}));
}

TEST_F(BouquetChoice, BouquetsAreChosenByNameInTheirOrder) {
  const program_result result = imported({"--bouquets", "b21,B3", "--bouquets", "b2"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(groups(), (texts{"B21", "B3", "B2"}));
  EXPECT_TRUE(imported({"--bouquets", "B33"}).err.starts_with("chlist: import: --bouquets: no group \"B33\": did you"));
}

TEST_F(BouquetChoice, ALongBouquetIsSplit) {
  const program_result result = imported({"--bouquets", "Long,B1", "--split"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(groups(), (texts{"Long 1", "Long 2", "Long 3", "B1"}));
}

}  // namespace
