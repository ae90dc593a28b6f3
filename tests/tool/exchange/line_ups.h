// Line-ups for the tests of exchange: by hand, at random, and compared.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/order_of_all.h"
#include "chlist/exchange/round_trip.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/file_records.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/text/utf8.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace chlist {

// The line of a source is not part of what a list is.
inline bool operator==(const line_up_service &a, const line_up_service &b) {
  return a.name == b.name && a.short_name == b.short_name && a.provider == b.provider && a.genre == b.genre &&
         a.country == b.country && a.source == b.source && a.number == b.number && a.is_listed == b.is_listed &&
         std::memcmp(a.fields.name, b.fields.name, sizeof a.fields - offsetof(channel_st, name)) == 0;
}

// As formats have them.
inline bool operator==(const line_up_entry &a, const line_up_entry &b) {
  return a.service == b.service && a.number == b.number;
}

inline bool operator==(const favourite_group &a, const favourite_group &b) {
  return a.name == b.name && a.entries == b.entries;
}

inline bool operator==(const line_up &a, const line_up &b) {
  return a.services == b.services && a.favourites == b.favourites;
}

}  // namespace chlist

namespace tool_test {

inline chlist::line_up_service service_named(const std::string &name, int service_id) {
  chlist::line_up_service service;
  service.name = name;
  service.source = "S13.5E";
  service.fields.service_id = static_cast<std::uint16_t>(service_id);
  service.fields.network_id = 158;
  service.fields.ts_id = 2010;
  service.fields.frequency = 11'345'000;
  service.fields.service_type = SERVICE_TYPE_TV;
  service.fields.source_type = 1;
  return service;
}

inline chlist::line_up line_up_of(std::vector<chlist::line_up_service> services) {
  chlist::line_up list;
  list.services = std::move(services);
  return list;
}

using row_list = std::vector<std::string>;

inline row_list losses(const chlist::loss_counts &lost) {
  row_list rows;
  for (const auto &row : lost.rows()) {
    rows.push_back(row.what + ": " + std::to_string(row.count));
  }
  return rows;
}

inline row_list left_out(const chlist::loss_counts &lost) {
  row_list rows;
  for (const auto &row : lost.rows()) {
    if (row.is_left_out) {
      rows.push_back(row.what + ": " + std::to_string(row.count));
    }
  }
  return rows;
}

// A list as writers of formats are given it.
inline chlist::line_up taken(channel_list_st &list) { return chlist::in_order_of_all(chlist::line_up_of(list)).list; }

// An export of the list in memory, which is another one then.
inline chlist::exported_list export_of(channel_list_st &list, std::string_view format,
                                       const chlist::write_options &options = {}) {
  const std::string image = chlist::image_of(list);
  const chlist::file_records records(std::as_bytes(std::span(image)));
  return chlist::export_list({records.list(), chlist::line_up_of(records.list())}, {},
                             chlist::format_to_write(format, ""), options);
}

// Of the list that an import of a line-up makes.
inline chlist::exported_list export_of(const chlist::line_up &given, std::string_view format,
                                       const chlist::write_options &options = {}) {
  chlist::loss_counts of_filling;
  fill_list(given, of_filling);
  return export_of(*get_channel_list(), format, options);
}

// Values of everything that services and favourites can have, within what a list holds.
class line_up_source {
 public:
  explicit line_up_source(unsigned seed) : random_(seed) {}

  chlist::line_up list(int services) {
    chlist::line_up made;
    for (int n = 0; n < services; ++n) {
      made.services.push_back(service(n));
    }
    for (int n = 0; n < 3; ++n) {
      made.favourites.push_back(group("Group " + std::to_string(n), made.services.size()));
    }
    return made;
  }

  int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }

  std::string text() {
    static constexpr std::u32string_view characters = U"abc XYZ,;:|\"'\\{}<>&éŁ中=#-";
    std::string made;
    for (int left = below(12); left > 0; --left) {
      chlist::append_utf8(made, characters[static_cast<std::size_t>(below(static_cast<int>(characters.size())))]);
    }
    return made;
  }

 private:
  template <class Field>
  void fill(Field &field) {
    for (std::size_t at = 0; at < sizeof field; ++at) {
      reinterpret_cast<unsigned char *>(&field)[at] = static_cast<unsigned char>(below(256));
    }
  }

  std::uint16_t pid() { return static_cast<std::uint16_t>(below(4) == 0 ? 0xFFFF : below(0x2000)); }

  chlist::line_up_service service(int n) {
    chlist::line_up_service made;
    made.name = text();
    made.short_name = text();
    made.provider = below(2) == 0 ? "" : "Provider " + std::to_string(below(4));
    made.genre = below(2) == 0 ? "" : "Genre " + std::to_string(below(4));
    made.country = below(2) == 0 ? "" : "Country " + std::to_string(below(4));
    fill(made.fields.flag);
    made.fields.pmt_pid = pid();
    made.fields.pcr_pid = pid();
    made.fields.video_pid = pid();
    fill(made.fields.video_tag);
    made.fields.video_ecm_pid = pid();
    made.fields.audio_pid = pid();
    fill(made.fields.audio_tag);
    fill(made.fields.user_order_key);
    fill(made.fields.service_type);
    fill(made.fields.source_type);
    made.fields.net_index = static_cast<std::uint8_t>(1 + below(3));
    made.source = "Source " + std::to_string(made.fields.net_index);
    made.fields.network_id = static_cast<std::uint16_t>(below(2));
    made.fields.ts_id = static_cast<std::uint16_t>(below(3));
    made.fields.frequency = 10'700'000 + made.fields.ts_id * 40'000;
    made.fields.polarisation = static_cast<std::uint8_t>(below(2));
    made.fields.service_id = static_cast<std::uint16_t>(n);
    made.number = chlist::channel_number{n + 1 + below(2), below(3)};
    return made;
  }

  chlist::favourite_group group(const std::string &name, std::size_t services) {
    chlist::favourite_group made = {name, {}};
    for (std::size_t n = 0; n < services && made.entries.size() < 40; ++n) {
      if (below(3) == 0) {
        made.entries.push_back({n, {1 + below(900), below(2)}});
      }
    }
    return made;
  }

  std::mt19937 random_;
};

class line_up_test : public test_support::store_test {
 protected:
  test_support::log_capture quiet{-1};
  chlist::loss_counts lost;
};

}  // namespace tool_test
