// Three lists, each damaged in every way there is: how much comes back, as the table of docs/damaged-files.md has it,
// and whether a run that finds nothing amiss is right.
#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "chlist/compare/difference.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/salvage/salvaging.h"
#include "tool/chlist_host.h"
#include "tool/salvage/damage_kinds.h"

namespace {

using namespace tool_test;
using salvage_test::damage_kind;
using salvage_test::sound_file;

const std::string page_of_damage = std::string(CHANNEL_SAMPLES_DIR) + "/../docs/damaged-files.md";
constexpr const char *table_heading = "| Damage | |";

// A line-up of a broadcaster's size: names with and without accents, providers, genres and favourites.
bytes csv_of(int services, int networks, int providers) {
  bytes text = "number,name,type,provider,genre,favourites,network_name,net_index,network_id,ts_id,frequency,"
               "polarisation,service_id,pmt_pid,pcr_pid,video_pid,audio_pid\n";
  const char *accents[] = {"", "é", "ö", "ñ"};
  for (int i = 0; i < services; ++i) {
    const int transponder = i / 12;
    const int network = 1 + transponder * networks / ((services + 11) / 12);
    const bool is_radio = i % 9 == 8;
    text +=
        fmt::format("{},Channel{} {},{},Provider {},Genre {},{},Position {},{},{},{},{},{},{},{},{},{},{}\n",
                    1 + i + i / 100, accents[i % 4], i, is_radio ? "radio" : "TV", i * 7 % providers, i % 5,
                    i % 17 == 0 && i < 1000 ? fmt::format("Group {}", i / 17 % 4) : "", network, network, 300 + network,
                    1000 + transponder, 10'700'000 + transponder * 9'500, "HV"[transponder % 2], 3000 + i, 100 + i % 50,
                    200 + i % 50, is_radio ? "" : std::to_string(200 + i % 50), 700 + i % 50);
  }
  return text;
}

using key = std::tuple<int, int, int, int, int>;

key key_of(const channel::identity &id) {
  return {id.net_index, id.network_id, static_cast<int>((id.frequency + 1250) / 2500), id.service_id, id.polarisation};
}

// What of a list is counted.
struct counted_list {
  explicit counted_list(const chlist::line_up &list) {
    for (const chlist::line_up_service &service : list.services) {
      names.emplace(key_of(service.id()), service.name);
    }
    for (const chlist::line_up_entry &entry : list.view(chlist::view_kind::all).entries) {
      numbers.emplace(key_of(entry.id), entry.number.major);
    }
    for (std::size_t group = 0; group < list.favourites.size(); ++group) {
      for (const chlist::line_up_entry &entry : list.favourites[group].entries) {
        favourites.emplace(key_of(entry.id), group);
      }
    }
  }

  std::set<std::pair<key, std::string>> names;
  std::set<std::pair<key, int>> numbers;
  std::set<std::pair<key, std::size_t>> favourites;
};

template <class Set>
std::size_t common(const Set &a, const Set &b) {
  return static_cast<std::size_t>(std::ranges::count_if(a, [&](const auto &each) { return b.contains(each); }));
}

struct recovery {
  std::size_t services = 0;
  std::size_t numbers = 0;
  std::size_t favourites = 0;
  bool says_all = false;
  std::size_t differences = 0;
};

class SalvageMeasure : public chlist_test {
 protected:
  void SetUp() override {
    chlist_test::SetUp();
    add("sample", read_file(std::string(CHANNEL_SAMPLES_DIR) + "/channels.conf"), "sample.conf");
    EXPECT_EQ(run({"fav", "new", path("0.dat"), "Family", "--no-backup"}).exit_code, 0);
    EXPECT_EQ(run({"fav", "add", path("0.dat"), "Family", "1", "5", "7", "--no-backup"}).exit_code, 0);
    add("cable", csv_of(360, 1, 12), "cable.csv");
    add("satellites", csv_of(2600, 3, 40), "satellites.csv");
    for (std::size_t i = 0; i < names.size(); ++i) {
      files.emplace_back(read_file(path(std::to_string(i) + ".dat")));
    }
  }

  void add(const std::string &name, const bytes &text, const std::string &file) {
    write_file(path(file), text);
    const program_result made = run({"import", path(file), "-o", path(std::to_string(names.size()) + ".dat")});
    ASSERT_LT(made.exit_code, 2) << made.err;
    names.push_back(name);
  }

  static chlist::line_up line_up_of(const bytes &file) {
    const auto all = std::as_bytes(std::span(file));
    return chlist::line_up_in(chlist::channel_file("the original", {all.begin(), all.end()}));
  }

  static recovery recover(const bytes &damaged, const chlist::line_up &original) {
    recovery result;
    try {
      result.says_all = !chlist::salvage_to_memory(std::as_bytes(std::span(damaged))).has_findings();
    } catch (const std::runtime_error &) {
      return result;
    }
    const chlist::line_up back = chlist::line_up_in_memory();
    const counted_list was(original);
    const counted_list is(back);
    result.services = common(was.names, is.names);
    result.numbers = common(was.numbers, is.numbers);
    result.favourites = common(was.favourites, is.favourites);
    result.differences = result.says_all ? chlist::differences(original, back).size() : 1;
    return result;
  }

  std::vector<std::string> names;
  std::vector<sound_file> files;
};

std::string cell_of(const recovery &result) {
  return fmt::format(" {}, {}, {}{} |", result.services, result.numbers, result.favourites,
                     !result.says_all         ? ""
                     : result.differences > 0 ? " ="
                                              : " ✓");
}

std::string table_in(const std::string &text) {
  const std::size_t begin = text.find(table_heading);
  const std::size_t end = text.find("\n\n", begin);
  return begin == std::string::npos ? "" : text.substr(begin, end + 1 - begin);
}

TEST_F(SalvageMeasure, TheTableOfThePageIsWhatIsMeasured) {
  ASSERT_EQ(files.size(), 3U);
  std::vector<chlist::line_up> originals;
  std::string table =
      fmt::format("{} {} | {} | {} |\n|---|---|---|---|---|\n", table_heading, names[0], names[1], names[2]);
  table += "| none | |";
  for (const sound_file &file : files) {
    originals.push_back(line_up_of(file.data));
    table += cell_of(recover(file.data, originals.back()));
  }
  table += '\n';
  for (const damage_kind &kind : salvage_test::damage_kinds()) {
    table += fmt::format("| {} | {} |", kind.group, kind.name);
    for (std::size_t i = 0; i < files.size(); ++i) {
      const recovery result = recover(kind.damaged(files[i], files[(i + 1) % files.size()]), originals[i]);
      EXPECT_EQ(result.says_all && result.differences > 0, kind.leaves_a_sound_file)
          << names[i] << ", " << kind.group << ", " << kind.name;
      table += cell_of(result);
    }
    table += '\n';
  }
  const std::string text = read_file(page_of_damage);
  const std::string before = table_in(text);

  if (const char *update = std::getenv("CHANNEL_UPDATE_TABLES"); update != nullptr && before != "") {
    write_file(page_of_damage, bytes(text).replace(text.find(before), before.size(), table));
  } else {
    EXPECT_EQ(table, before) << "CHANNEL_UPDATE_TABLES=1 writes the page's table anew";
  }
}

}  // namespace
