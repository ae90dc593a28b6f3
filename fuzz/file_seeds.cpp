// Channel files by the steps that make them, whole and damaged.
#include <utility>

#include "file_frame.h"
#include "seed_parts.h"
#include "seeds.h"

namespace fuzz {
namespace {

using script = std::string;

// Places in test_support::view_places() and group_places(), and in the settings of a script.
enum view_number { all, tv, radio, user, promotion, first_favourite };
enum table_number { providers, genres, countries, favourites };
enum setting_number { version, use_tuner, ch_type, bouquet, group_kind, service_type, net_index, sub_group, view_type };
constexpr int network_count = 9;
constexpr int view_count = 10;
constexpr int group_count = view_count + 25;

script network(int index, const std::string &name = "Astra") {
  return step(file_step::network, u8(index) + u16(1) + name);
}
script transponder(int ts_id, int frequency, int polarisation = 0) {
  return step(file_step::transponder, u16(ts_id) + u16(frequency) + u8(polarisation));
}
script service(int id, int type = 1, int flag = 0, int provider = 0, const std::string &name = "News") {
  return step(file_step::service, u16(id) + u8(type) + u8(1) + u8(flag) + u8(1) + u8(provider) + name);
}
script services(int count, int type = 1) { return step(file_step::services, u8(count) + u16(1) + u8(type)); }
script entry(int view, int service, int number, int favorite_id = 0) {
  return step(file_step::entry, u8(view) + u8(service) + u16(number) + u8(favorite_id));
}
script entries(int view, int count) { return step(file_step::entries, u8(view) + u16(count)); }
script group(int table, int id, const std::string &name) { return step(file_step::group, u8(table) + u16(id) + name); }
script groups(int table, int count) { return step(file_step::groups, u8(table) + u16(count)); }
script setting(int which, int value) { return step(file_step::setting, u8(which) + u16(value)); }
// A field of a record, counted from the last one.
script field(int record, int at, int value) {
  return step(file_step::record_bytes, u8(record) + u16(at) + u8(2) + u16(value));
}
script filling(int record, int at, int size, int byte) {
  return step(file_step::record_filling, u8(record) + u16(at) + u16(size) + u8(byte));
}
script cut(int size) { return step(file_step::cut, u24(size)); }
script cut_header(int size) { return step(file_step::cut, u24(size) + u8(1)); }
script list_bytes(int at, const std::string &bytes) {
  return step(file_step::list_bytes, u24(at) + u8(static_cast<int>(bytes.size())) + bytes);
}
script tail(int size) { return step(file_step::tail, u8(size) + u8('x')); }

const script small = network(1) + transponder(100, 9000) + service(1) + service(2, 2, 0x0E, 1, "Radio");
const script shown = small + entry(all, 0, 1) + entry(all, 1, 2) + entry(tv, 0, 1) + entry(radio, 1, 2) +
                     group(providers, 1, "Free") + group(genres, 1, "News") + group(countries, 1, "Malta");
// Where a header has the heads of its lists: in the file, and in the memory of a process with 64-bit pointers, which
// the promotion entries reach.
const script filled_links = entries(promotion, 10) + list_bytes(459'592, "AAAAAAAA") + list_bytes(459'616, "AAAAAAAA");
const script two_networks = shown + network(2, "Hot") + transponder(200, 9100, 1) + transponder(201, 9200) +
                            service(3) + service(4) + entry(all, 2, 3) + entry(all, 3, 4);

std::vector<std::pair<std::string, script>> whole_files() {
  return {
      {"empty", ""},
      {"shown", shown},
      {"two_networks", two_networks},
      {"empty_transponders", network(1) + transponder(1, 1) + transponder(2, 9) + network(2) + network(3)},
      {"twice_the_same_service", shown + service(1) + network(1) + transponder(100, 9000) + service(1)},
      {"frequencies_within_tolerance",
       shown + transponder(101, 9001) + service(1) + transponder(102, 9002) + service(1)},
      {"same_frequency_other_polarisation", shown + transponder(101, 9000, 1) + service(1) + entry(all, 2, 9)},
      {"frequency_0", network(1) + transponder(7, 0) + service(1) + transponder(8, 0) + service(2) + entries(all, 2)},
      {"entry_without_service", shown + entry(user, 0, 1) + field(0, 242, 99)},
      {"every_view", small + entries(all, 5) + entries(tv, 5) + entries(radio, 5) + entries(user, 5) +
                         entries(promotion, 10) + entries(first_favourite, 40) + groups(favourites, 20)},
      {"full_views", small + services(100) + entries(all, 5000) + entries(tv, 4000) + entries(radio, 1000)},
      {"full_tables",
       shown + groups(providers, 500) + groups(genres, 50) + groups(countries, 200) + groups(favourites, 20)},
      {"favourite_ids_twice", small + group(favourites, 0, "Mine") + entry(first_favourite, 0, 1, 7) +
                                  entry(first_favourite, 1, 2, 7) + setting(view_type, 10)},
      {"names_without_end", shown + filling(0, 8, 200, 'x') + filling(3, 12, 64, 0xE4) +
                                list_bytes(16, "\x7F\x7F"
                                               "abcdefghij")},
      {"unknown_view", shown + setting(view_type, 6)},
      {"empty_view", shown + setting(view_type, 3)},
      {"favourite_view_of_no_group", shown + setting(view_type, 29)},
      {"group_selection",
       shown + entries(user, 2) + setting(view_type, 3) + setting(group_kind, 3) + setting(sub_group, 1)},
      {"version_is_failure", shown + setting(version, -1)},
      {"counts_below_0", shown + setting(view_count + all, -1) + setting(view_count + tv, -32768) +
                             setting(group_count + providers, -1) + setting(group_count + favourites, -1)},
      {"counts_above_arrays", shown + setting(view_count + all, 5001) + setting(view_count + first_favourite, 32767) +
                                  setting(group_count + genres, 51) + setting(group_count + favourites, 21)},
      {"favourite_count_past_the_table", shown + setting(group_count + favourites, 20) + setting(view_type, 10)},
      {"bytes_behind", shown + tail(200)},
      {"network_read_as_service", two_networks + field(7, 18, 3)},
  };
}

std::vector<std::pair<std::string, script>> short_files() {
  return {
      {"cut_in_the_list", shown + cut_header(230'000)},
      {"cut_in_the_promotion_view", shown + entries(promotion, 10) + cut_header(432)},
      {"cut_behind_the_links", shown + filled_links + cut_header(1)},
      {"cut_in_the_links", shown + filled_links + cut_header(412)},
      {"nothing", shown + cut(0xFFFFFF)},
      {"cut_in_a_service", two_networks + cut(1)},
      {"cut_before_a_service", two_networks + cut(312)},
      {"cut_in_a_transponder", two_networks + cut(2 * 312 + 1)},
      {"cut_in_a_network", two_networks + cut(2 * 312 + 2 * 336 + 1)},
      {"claims_networks", shown + setting(network_count, 0xFFFF)},
      {"claims_transponders", network(1) + field(0, 76, 0xFFFF)},
      {"claims_services", shown + transponder(3, 3) + field(0, 18, 0xFFFF)},
  };
}

// A seed that does not make what its name says would go unnoticed.
void require_made(const std::string &name, const script &file, bool whole) {
  byte_reader input({reinterpret_cast<const std::uint8_t *>(file.data()), file.size()});
  require(is_whole(contents(read_script(input))) == whole, name + " is whole or short as it should be");
}

}  // namespace

std::vector<seed> file_seeds() {
  std::vector<seed> seeds;
  for (const bool whole : {true, false}) {
    for (const auto &[name, file] : whole ? whole_files() : short_files()) {
      require_made(name, file, whole);
      seeds.push_back({"load", name, options(3) + file});
      for (const char *harness : {"version_7", "version_8", "version_9"}) {
        seeds.push_back({harness, name, options(3) + file});
      }
    }
  }
  for (const int sort_type : {2, 3, 6, 7, 8, 10, 11}) {
    seeds.push_back({"load", "sorted_by_" + std::to_string(sort_type),
                     options(1, u8(sort_type + 1)) + two_networks + entries(user, 4) + entries(promotion, 3)});
  }
  seeds.push_back({"load", "side_files", options(3, u8(0) + u8(1) + u8(3) + u8(1) + u8(200)) + small});
  return seeds;
}

std::vector<seed> scan_seeds() {
  const std::string end = step(file_step::end, "");
  const std::vector<std::pair<std::string, script>> pairs = {
      {"unchanged", shown + end + shown},
      {"everything_is_new", end + two_networks},
      {"everything_is_gone", two_networks + end},
      {"one_more_one_less", shown + end + network(1) + transponder(100, 9000) + service(2, 2) + service(3)},
      {"moved_within_tolerance", shown + end + network(1) + transponder(100, 9001) + service(1) + service(2)},
      {"other_network_index", shown + end + network(9) + transponder(100, 9000) + service(1)},
      {"promotion_numbers", small + end + small + service(200) + service(202) + service(606, 2) + service(607, 3)},
      {"more_promotions_than_fit",
       small + entries(promotion, 10) + end + small + service(200) + service(202) + service(606)},
      {"number_0", small + end + small + service(0x4000) + service(0x8000, 2)},
      {"unlisted_types",
       small + end + small + service(9, 3) + service(10, 0x80) + service(11, 0x81) + service(12, 0x55)},
      {"full_views", small + entries(all, 5000) + entries(tv, 4000) + entries(radio, 1000) + end + small + service(7) +
                         service(8, 2)},
      {"twice_the_same_service",
       small + end + small + service(5) + service(5) + network(1) + transponder(1, 9000) + service(5)},
      {"frequency_0", network(1) + transponder(7, 0) + service(1) + end + network(1) + transponder(8, 0) + service(1)},
      {"frequency_0_behind_new_services", network(1) + transponder(100, 9000) + service(1) + end + network(1) +
                                              transponder(100, 9000) + services(20) + transponder(7, 0) + service(1)},
      {"short_scan", shown + end + two_networks + cut(1)},
      {"scan_cut_in_the_promotion_view", shown + end + shown + entries(promotion, 10) + cut_header(432)},
      {"scan_cut_behind_the_links", shown + end + shown + filled_links + cut_header(1)},
      {"scan_claims_networks", shown + end + small + setting(network_count, 0xFFFF)},
      {"short_list", shown + cut(1) + end + shown},
      {"names_without_end", shown + end + small + service(9) + filling(0, 8, 200, 'x') + filling(4, 12, 64, 'y')},
      {"stray_counts", shown + end + shown + setting(view_count + all, -1) + setting(group_count, 501)},
  };
  std::vector<seed> seeds;
  for (const auto &[name, files] : pairs) {
    seeds.push_back({"scan", name, options(3) + files});
  }
  return seeds;
}

}  // namespace fuzz
