// A channel file with something in everything that an edit could touch by mistake, and the tool run on it.
#pragma once

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tool/chlist_host.h"

namespace edit_test {

using namespace tool_test;

const service_data news = {.service_id = 1, .name = "News"};
const service_data films = {.service_id = 2, .name = "Films"};
const service_data music = {.service_id = 5, .service_type = SERVICE_TYPE_RADIO, .name = "Music"};
const service_data sport = {
    .ts_id = 200, .frequency = 12'000'000, .service_id = 3, .polarisation = 1, .name = "Sport", .flag = 0x40};

constexpr int best = VIEW_FAVOURITE;
constexpr int kids = VIEW_FAVOURITE + 1;

// Reserved bytes of the list, and of a service.
constexpr std::size_t list_reserved = list_field::network_list + 8;
constexpr std::size_t service_reserved = service_field::user_order_key + 2;

inline std::size_t entry_at(int view, std::size_t position) {
  return view_place(view).array + position * test_support::entry_size;
}

inline std::size_t number_at(int view, std::size_t position) {
  return entry_at(view, position) + entry_field::major_ch_num;
}

// Where the n-th service stands in a file.
inline std::size_t service_at(const channel_file &file, std::size_t n) {
  for (const test_support::record_place &record : file.records) {
    if (record.kind == record_kind::service && n-- == 0) {
      return record.offset;
    }
  }
  throw std::out_of_range("no such service");
}

// Settings, countries and position keys are such as a load changes; reserved bytes and unused slots are not zero.
inline channel_file own_list() {
  channel_file file;
  for (const service_data &service : {news, films, music, sport}) {
    file.service(service).set_last(record_kind::service, service_field::country_id, 2, 77);
    file.set_last(record_kind::service, service_reserved, 8, 0x1122334455667788);
  }
  file.group(GROUP_PROVIDER, 3, "Free").group(GROUP_GENRE, 5, "Docu").group(GROUP_COUNTRY, 77, "Elbonia");
  file.group(GROUP_FAV, 0, "Best").group(GROUP_FAV, 1, "Kids");
  file.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, films, 2).entry(VIEW_ALL, music, 3).entry(VIEW_ALL, sport, 4);
  file.entry(VIEW_TV, news, 1).entry(VIEW_TV, films, 2).entry(VIEW_TV, sport, 4).entry(VIEW_RADIO, music, 3);
  file.entry(VIEW_USER, films, 20).entry(VIEW_USER, news, 1).entry(VIEW_PROMOTION, news, 1);
  file.entry(best, films, 2, 3).entry(best, news, 1, 3).entry(best, sport, 4, 9).entry(kids, sport, 9);
  file.entry(VIEW_ALL, {.service_id = 99}, 50);  // resolves to nothing
  file.set(list_field::ch_type, 1, best).set(list_field::use_group_list, 1, 2).set(list_field::service_type, 1, 2);
  file.set(list_field::net_index, 1, 3).set(list_field::sub_group_id, 2, 7).set(list_field::vch_type, 2, best);
  file.set(list_reserved, 8, 0x5A5A5A5A5A5A5A5A);
  file.set(number_at(VIEW_ALL, 5), 2, 1234).set(number_at(best, 3), 2, 4321);  // behind the count
  return file;
}

inline void remove_entry(bytes &file, int view, std::size_t position) {
  const test_support::array_place &place = view_place(view);
  const std::size_t count = get(file, place.count, 2);
  for (std::size_t i = position; i + 1 < count; ++i) {
    file.replace(entry_at(view, i), test_support::entry_size,
                 file.substr(entry_at(view, i + 1), test_support::entry_size));
  }
  file.replace(entry_at(view, count - 1), test_support::entry_size, test_support::entry_size, '\0');
  put(file, place.count, 2, count - 1);
}

// The entries of a view in another order: their former positions.
inline void reorder(bytes &file, int view, const std::vector<std::size_t> &positions) {
  const bytes before = file;
  for (std::size_t i = 0; i < positions.size(); ++i) {
    file.replace(entry_at(view, i), test_support::entry_size,
                 before.substr(entry_at(view, positions[i]), test_support::entry_size));
  }
}

// Where two files differ, for messages: the first offsets.
inline std::string differences_of(const bytes &a, const bytes &b) {
  std::string text = std::to_string(a.size()) + " and " + std::to_string(b.size()) + " bytes; at";
  int told = 0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()) && told < 20; ++i) {
    if (a[i] != b[i]) {
      text += ' ' + std::to_string(i);
      ++told;
    }
  }
  return text;
}

class edit_host : public chlist_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    write_file(path(), before.data);
  }

  // Runs an edit of list.dat that has nothing to tell: the file has the expected bytes afterwards.
  void expect_edit(const std::vector<std::string> &arguments, const bytes &expected) const {
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    expect_bytes(expected);
  }

  void expect_bytes(const bytes &expected, const std::string &name = "list.dat") const {
    const bytes written = read_file(path(name));
    EXPECT_TRUE(written == expected) << differences_of(written, expected);
  }

  void expect_refused(const std::vector<std::string> &arguments, const std::string &error) const {
    chlist_test::expect_refused(arguments, error);
    expect_bytes(before.data);
  }

  // The file's bytes with one field changed.
  [[nodiscard]] bytes with(std::size_t at, std::size_t width, std::uint64_t value) const {
    bytes changed = before.data;
    put(changed, at, width, value);
    return changed;
  }

  channel_file before = own_list();
};

}  // namespace edit_test
