// A sound channel file for tests to spoil, and what is found in a file.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <ostream>
#include <span>
#include <string_view>
#include <vector>

#include "chlist/check/findings.h"
#include "support/channel_file.h"

namespace chlist {

// For messages of failed tests.
inline void PrintTo(const finding &found, std::ostream *out) {
  *out << found.offset << ' ' << name_of(found.level) << ' ' << found.kind << ": " << found.what << " -> "
       << found.consequence;
}

inline bool operator==(const finding &a, const finding &b) {
  return a.offset == b.offset && a.level == b.level && a.kind == b.kind && a.what == b.what &&
         a.consequence == b.consequence;
}

}  // namespace chlist

namespace findings_test {

using chlist::file_findings;
using chlist::finding;
using chlist::findings_in;
using chlist::severity;
using test_support::bytes;
using test_support::channel_file;
using test_support::group_place;
using test_support::record_kind;
using test_support::service_data;
using test_support::view_place;

using namespace test_support::record_fields;

using findings = std::vector<finding>;

inline constexpr std::size_t first_network = test_support::list_size;
inline constexpr std::size_t first_transponder = first_network + test_support::network_size;
inline constexpr std::size_t first_service = first_transponder + test_support::transponder_size;
inline constexpr std::size_t second_service = first_service + test_support::service_size;

inline const service_data news = {.service_id = 1, .name = "News"};
inline const service_data films = {.service_id = 2, .name = "Films"};
inline constexpr const char *news_text = "\"News\" (net 1, network 1, ts 100, 11000000 H, service 1)";
inline constexpr const char *films_text = "\"Films\" (net 1, network 1, ts 100, 11000000 H, service 2)";

inline channel_file sound_file() {
  channel_file file;
  file.service(news).service(films).group(GROUP_FAV, 0, "Best").group(GROUP_PROVIDER, 1, "Free");
  file.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, films, 2).entry(VIEW_TV, news, 1).entry(VIEW_TV, films, 2);
  file.entry(VIEW_FAVOURITE, films, 2, 0).entry(VIEW_FAVOURITE, news, 1, 1);
  return file;
}

inline file_findings check(const bytes &file) { return findings_in(std::as_bytes(std::span(file))); }

inline findings found_in(const channel_file &file) { return check(file.data).findings; }

inline findings found_of_kind(const channel_file &file, std::string_view kind) {
  findings found = found_in(file);
  std::erase_if(found, [=](const finding &each) { return each.kind != kind; });
  return found;
}

}  // namespace findings_test
