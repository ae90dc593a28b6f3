// Side files, sequences of calls and texts.
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "seed_parts.h"
#include "seeds.h"
#include "support/exported_calls.h"

namespace fuzz {
namespace {

// A call by its name; each argument takes a byte, as chosen_values.h has it.
std::string call(const std::string &name, const std::string &arguments = {}) {
  const auto &calls = extremes::exported_calls();
  const auto found = std::ranges::find(calls, name, &extremes::exported_call::name);
  if (found == calls.end()) {
    throw std::out_of_range(name);
  }
  return step(u8(found - calls.begin()) + arguments);
}

std::string repeated(int times, const std::string &steps) {
  std::string all;
  for (int i = 0; i < times; ++i) {
    all += steps;
  }
  return all;
}

// The kinds of lists that a sequence may begin with.
enum list_number { nothing, small, destroyed, loaded, full = 0xFF };

// Names that bytes choose.
constexpr int list_name = 4;
constexpr int list_path = 5;
constexpr int new_list_name = 6;

// The identity of a service of the small list, and with its tag.
std::string service_of_the_small_list(int id) { return u8(1) + u8(1) + u8(1) + u8(1) + u8(id) + u8(1); }

std::string tagged_service(int id) { return u8(1) + service_of_the_small_list(id); }

// Every query on one list, with one byte for all arguments, and then with another. The last argument bytes name no
// entry of a view, or one.
std::string queries(int list, std::initializer_list<int> arguments) {
  std::string made = options(3, u8(list));
  for (const int argument : arguments) {
    for (const extremes::exported_call &each : extremes::exported_calls()) {
      if (each.has == extremes::effect::none) {
        made += call(each.name, std::string(step_size, static_cast<char>(argument)));
      }
    }
  }
  return made;
}

// Every edit, a few on each list.
std::vector<std::string> edits(int list, int argument) {
  constexpr std::size_t edits_on_a_list = 12;
  std::vector<std::string> made;
  std::size_t count = 0;
  for (const extremes::exported_call &each : extremes::exported_calls()) {
    if (each.has != extremes::effect::none) {
      if (count++ % edits_on_a_list == 0) {
        made.push_back(options(3, u8(list)));
      }
      made.back() += call(each.name, std::string(step_size, static_cast<char>(argument)));
    }
  }
  return made;
}

std::vector<seed> calls_of_everything() {
  std::vector<seed> seeds = {{"calls", "every_query_of_a_small_list", queries(small, {1, 2})},
                             {"calls", "every_query_by_group", queries(small, {4, 5})},
                             {"calls", "every_query_of_nothing", queries(nothing, {0, 0xFF})}};
  for (const int argument : {0, 1, 2, 3}) {
    for (const std::string &some : edits(small, argument)) {
      const std::string number = std::to_string(argument) + "_" + std::to_string(seeds.size());
      seeds.push_back({"calls", "edits_with_" + number, some});
    }
  }
  return seeds;
}

}  // namespace

std::vector<seed> group_seeds() {
  const auto count = [](int value) { return step(u8(0) + u16(value)); };
  const auto group = [](int slot, int id, int length, const std::string &name) {
    return step(u8(1) + u8(slot) + u16(id) + u16(length) + name);
  };
  const auto cut = [](int size) { return step(u8(3) + u16(size)); };
  const std::string two = count(2) + group(0, 1, 4, "News") + group(1, 2, 5, "Sport");
  const std::vector<std::pair<std::string, std::string>> files = {
      {"empty", ""},
      {"two", two},
      {"count_below_0", two + count(-1)},
      {"count_above_the_table", two + count(32767)},
      {"name_without_end", count(1) + group(0, 1, 98, "x")},
      {"length_beyond_the_name", count(1) + group(0, 1, 32767, "x")},
      {"length_below_0", count(1) + group(0, 1, -1, "x")},
      {"same_id_twice", two + group(2, 2, 1, "A") + count(3)},
      {"cut_in_the_table", two + cut(1)},
      {"cut_behind_the_count", two + cut(20'800)},
      {"cut_in_the_count", two + cut(20'801)},
      {"nothing", two + cut(0xFFFF)},
  };
  std::vector<seed> seeds;
  for (const auto &[name, file] : files) {
    seeds.push_back({"genre", name, options(3) + file});
    seeds.push_back({"country", name, options(3) + file});
  }
  return seeds;
}

std::vector<seed> call_seeds() {
  const std::string save_load = call("save_channel", u8(list_name)) + call("load_channel", u8(list_name) + u8(255));
  const std::string merge_saved = call("save_channel", u8(new_list_name)) + call("check_load_channel");
  const std::vector<std::pair<std::string, std::string>> sequences = {
      {"zapping", options(3, u8(small)) + call("change_vindex_type", u8(1)) + call("get_channel_index", u8(1)) +
                      call("check_skip_channel_index", u8(0)) + call("check_available_channel", u8(0)) +
                      call("get_channel", u8(0)) + call("add_return_channel", tagged_service(3))},
      {"save_and_load", options(3, u8(small)) + save_load + save_load},
      {"save_and_load_full", options(1, u8(full)) + save_load},
      {"merge_what_was_saved", options(3, u8(small)) + call("save_channel", u8(new_list_name)) +
                                   call("release_rch_info", u8(1)) + call("check_load_channel") +
                                   call("remove_channel_st", service_of_the_small_list(2)) + merge_saved},
      {"repair_what_was_saved", options(3, u8(small)) + call("save_channel", u8(list_name)) +
                                    call("repair_channel", u8(9) + u8(list_path)) + save_load},
      {"read_earlier_versions", options(3, u8(small)) + call("save_channel", u8(list_name)) +
                                    call("v9_load_channel", u8(list_path)) + call("v8_load_channel", u8(list_path)) +
                                    call("v7_load_channel", u8(list_path))},
      {"remove_everything", options(3, u8(small)) + repeated(3, call("vtype_remove_by_vindex", u8(0) + u8(0))) +
                                call("remove_virtual_channel_st", tagged_service(4)) +
                                call("remove_channel_info_by_net_index", u8(1))},
      {"release_and_reuse",
       options(3, u8(small)) + call("release_tp_ch_info", u8(1)) + call("remove_invalid_virtual_channel") +
           call("release_network_ch_info", u8(1)) + call("add_rch_info", service_of_the_small_list(1) + u8(7)) +
           call("reset_channel_list") + call("add_rch_info", service_of_the_small_list(1) + u8(7))},
      {"favourites", options(3, u8(small)) + call("add_fav_group_info", u8(8)) +
                         call("add_fav_virtual_channel", u8(2) + u8(4) + u8(0)) +
                         call("move_fav_ch_group", u8(0) + u8(2)) + call("remove_fav_group", u8(1)) +
                         call("add_fav_ch_group", u8(0) + u8(0) + u8(3) + u8(1))},
      {"favourites_of_a_full_list", options(1, u8(full)) + call("move_fav_ch_group", u8(19) + u8(0)) +
                                        call("add_fav_group_info", u8(8)) + call("remove_fav_group", u8(19))},
      {"providers", options(3, u8(small)) + call("add_provider_info", u8(8)) + call("add_provider_info", u8(9)) +
                        call("remove_provider_index", u8(0)) + call("remove_invalid_provider_info") +
                        call("get_provider_id_by_service_type", u8(0) + u8(1))},
      {"service_lists", options(3, u8(small)) + call("create_service_by_group_list_id", u8(3) + u8(1) + u8(0) + u8(1)) +
                            call("create_service_by_group_list_id", u8(6) + u8(0) + u8(0) + u8(0)) +
                            call("remove_service_by_group_list_id", u8(1) + u8(1) + u8(0))},
      {"moves", options(3, u8(small)) + call("move_channel", u8(1) + u8(2) + u8(2) + u8(0) + u8(2)) +
                    call("move_channel", u8(0) + u8(1) + u8(1)) + call("move_fav_channel", u8(0) + u8(1) + u8(2))},
      {"sorts", options(3, u8(small)) + call("sort_vindex_ex", u8(2)) + call("sort_vch_type", u8(6) + u8(0)) +
                    call("sort_vindex_by_flag", u8(0) + u8(5)) + call("sort_vindex_by_number")},
      {"destroyed", options(3, u8(destroyed)) + call("add_rch_info", service_of_the_small_list(1) + u8(7)) +
                        call("print_channel_list") + call("save_channel", u8(list_name))},
      {"group_lists", options(3, u8(small)) + call("set_group_list", u8(2) + u8(1) + u8(50)) +
                          call("set_group_list", u8(4) + u8(1) + u8(200)) + call("load_group_list", u8(4)) +
                          call("save_group_list", u8(2))},
  };
  std::vector<seed> seeds = calls_of_everything();
  for (const auto &[name, sequence] : sequences) {
    seeds.push_back({"calls", name, sequence});
  }
  return seeds;
}

std::vector<seed> text_seeds() {
  const std::string one =
      "One HD,One;Media:11306:HC23M5O35P0S1:S13.5E:22000:401=27:402=eng@3;404=eng@106:405;406=eng:0:"
      "3001:158:2010:0\n";
  const std::vector<std::pair<std::string, std::string>> texts = {
      {"one", one},
      {"separators", ":General\n:@7\n:@100 Films\n" + one + "::@1\n:@99999\n"},
      {"twice", one + one},
      {"carriage_returns", "\xEF\xBB\xBF" + one.substr(0, one.size() - 1) + "\r\n\r\n# remark\r\n"},
      {"radio", "Voice;Media:11306:hC23:S13.5E:22000:0:77=deu,78=eng@4:0:1702,100:12:158:2010:0\n"},
      {"cable_and_terrestrial",
       "C;M:386000:C0M64:C:6900:1:2:3:0:4:5:6:0\nT;M:474000000:B8C23D12:T:0:1:2:3:0:4:5:6:0\n"},
      {"bad_fields", "a\n1:2\nx:x:x:x:x:x:x:x:x:x:x:x:x\nn:70000000000:H:S1E:0:8192:0:0:0:65536:-1:0:0\n"},
      {"names_of_any_bytes", "\xC3\xA9\xFF|;\x01:11306:V:S0.8W:22000:1+2:0;3:0:0:0:0:0:0\n"},
      {"no_end_of_line", one.substr(0, one.size() / 2)},
  };
  std::vector<seed> seeds;
  for (const auto &[name, text] : texts) {
    seeds.push_back({"channels_conf", name, text});
  }
  return seeds;
}

}  // namespace fuzz
