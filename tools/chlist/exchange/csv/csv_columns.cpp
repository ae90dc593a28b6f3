// One table says what each column sets.
#include "chlist/exchange/csv/csv_columns.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/service/service_types.h"

namespace chlist {
namespace {

template <class Number>
Number read_signed(std::string_view text, std::string_view what) {
  const bool is_negative = text.starts_with('-');
  const auto most = std::int64_t{std::numeric_limits<Number>::max()};
  const auto value = read_number<std::int64_t>(text.substr(is_negative ? 1 : 0), what, 0, most + (is_negative ? 1 : 0));
  return static_cast<Number>(is_negative ? -value : value);
}

void set_number(line_up_service &service, std::string_view text, std::string_view what) {
  if (text == csv_unlisted) {
    service.is_listed = false;
  } else {
    service.number = channel_number{read_signed<std::int16_t>(text, what), 0};
  }
}

void set_minor(line_up_service &service, std::string_view text, std::string_view what) {
  const int minor = read_signed<std::int16_t>(text, what);
  if (service.number) {
    service.number = channel_number{service.number->major, minor};
  }
}

template <auto Text>
void set_text(line_up_service &service, std::string_view text, std::string_view /*what*/) {
  service.*Text = text;
}

template <auto Field>
void set_field(line_up_service &service, std::string_view text, std::string_view what) {
  using number = std::remove_reference_t<decltype(service.fields.*Field)>;
  service.fields.*Field = read_number<number>(text, what);
}

void set_order_key(line_up_service &service, std::string_view text, std::string_view what) {
  service.fields.user_order_key = read_signed<std::int16_t>(text, what);
}

void set_frequency(line_up_service &service, std::string_view text, std::string_view what) {
  service.fields.frequency =
      read_number<std::int64_t>(text, what, 0, std::int64_t{std::numeric_limits<std::uint32_t>::max()});
}

void set_polarisation(line_up_service &service, std::string_view text, std::string_view what) {
  static constexpr std::string_view letters = "HLVRhlvr";
  const std::size_t at = text.size() == 1 ? letters.find(text.front()) : std::string_view::npos;
  if (at == std::string_view::npos) {
    throw bad_line(fmt::format("{} {} is none of H, V, L and R", what, quoted(text)));
  }
  service.fields.polarisation = at % 4 >= 2 ? 1 : 0;
}

void set_type(line_up_service &service, std::string_view text, std::string_view what) {
  for (int type = 0; type <= std::numeric_limits<std::uint8_t>::max(); ++type) {
    if (service_type_name(static_cast<std::uint8_t>(type)) == text) {
      service.fields.service_type = static_cast<std::uint8_t>(type);
      return;
    }
  }
  throw bad_line(fmt::format("{} {} is unknown", what, quoted(text)));
}

template <int Bit>
void set_flag(line_up_service &service, std::string_view text, std::string_view what) {
  static constexpr std::array<std::string_view, 6> words = {"yes", "true", "1", "no", "false", "0"};
  const auto *const word = std::ranges::find(words, text);
  if (word == words.end()) {
    throw bad_line(fmt::format("{} {} is neither yes nor no", what, quoted(text)));
  }
  service.set_flag(Bit, word - words.begin() < 3);
}

// Favourites are collected when the services stand.
void pass(line_up_service & /*service*/, std::string_view /*text*/, std::string_view /*what*/) {}

using fields = channel_st;

// In the order of setting: a number before its minor one, the whole byte of flags before its bits.
constexpr csv_column table[] = {
    {"number", set_number},
    {"minor", set_minor},
    {"name", set_text<&line_up_service::name>},
    {"short_name", set_text<&line_up_service::short_name>},
    {"type", set_type},
    {"service_type", set_field<&fields::service_type>},
    {"provider", set_text<&line_up_service::provider>},
    {"genre", set_text<&line_up_service::genre>},
    {"country", set_text<&line_up_service::country>},
    {favourites_column, pass},
    {"network_name", set_text<&line_up_service::source>},
    {"net_index", set_field<&fields::net_index>},
    {"network_id", set_field<&fields::network_id>, true},
    {"ts_id", set_field<&fields::ts_id>, true},
    {"frequency", set_frequency, true},
    {"polarisation", set_polarisation},
    {"service_id", set_field<&fields::service_id>, true},
    {"pmt_pid", set_field<&fields::pmt_pid>},
    {"pcr_pid", set_field<&fields::pcr_pid>},
    {"video_pid", set_field<&fields::video_pid>},
    {"video_tag", set_field<&fields::video_tag>},
    {"video_ecm_pid", set_field<&fields::video_ecm_pid>},
    {"audio_pid", set_field<&fields::audio_pid>},
    {"audio_tag", set_field<&fields::audio_tag>},
    {"flags", set_field<&fields::flag>},
    {"locked", set_flag<CHANNEL_FLAG_LOCKED>},
    {"skipped", set_flag<CHANNEL_FLAG_SKIP>},
    {"scrambled", set_flag<CHANNEL_FLAG_FTA>},
    {"data", set_flag<CHANNEL_FLAG_DSMCC>},
    {"source_type", set_field<&fields::source_type>},
    {"order_key", set_order_key},
};

}  // namespace

std::span<const csv_column> csv_columns() { return table; }

}  // namespace chlist
