// One table says what each column sets. Cells that are empty set nothing.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "chlist/exchange/csv.h"
#include "chlist/exchange/csv_columns.h"
#include "chlist/exchange/csv_line_up.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/vdr_fields.h"
#include "chlist/files/input_file.h"
#include "chlist/service/service_types.h"

namespace chlist {
namespace {

constexpr std::uint16_t unset_pid = 0xFFFF;

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

// A service with audio alone is radio; of one without PIDs nothing else is known than that most are television.
void guess_type(line_up_service &service) {
  const bool is_radio = service.fields.video_pid == unset_pid && service.fields.audio_pid != unset_pid;
  service.fields.service_type = is_radio ? SERVICE_TYPE_RADIO : SERVICE_TYPE_TV;
}

class reader {
 public:
  reader(const std::vector<csv_row> &rows, loss_counts &lost) : rows_(rows), lost_(lost) {}

  line_up read() {
    if (rows_.empty()) {
      return {};
    }
    find_columns();
    count_unknown();
    for (std::size_t i = 1; i < rows_.size(); ++i) {
      read_row(rows_[i]);
    }
    return std::move(read_);
  }

 private:
  [[nodiscard]] const std::vector<std::string> &header() const { return rows_.front().cells; }

  void find_columns() {
    for (const csv_column &column : table) {
      const auto found = std::ranges::find(header(), column.name);
      if (found != header().end()) {
        places_.emplace_back(&column, static_cast<std::size_t>(found - header().begin()));
      } else if (column.is_needed) {
        throw std::runtime_error(fmt::format("line 1: has no column {}; network_id, ts_id, frequency and service_id "
                                             "are what a service is known by",
                                             column.name));
      }
    }
    for (auto name = header().begin(); name != header().end(); ++name) {
      if (std::find(header().begin(), name, *name) != name) {
        throw std::runtime_error(fmt::format("line 1: has two columns {}", chlist::quoted(*name)));
      }
    }
  }

  void count_unknown() {
    for (std::size_t at = 0; at < header().size(); ++at) {
      if (std::ranges::none_of(places_, [at](const auto &place) { return place.second == at; })) {
        const auto is_used = [at](const csv_row &row) { return at < row.cells.size() && !row.cells[at].empty(); };
        lost_.add("cells of the column " + chlist::quoted(header()[at]),
                  static_cast<std::size_t>(std::count_if(rows_.begin() + 1, rows_.end(), is_used)));
      }
    }
  }

  void read_row(const csv_row &row) {
    try {
      if (row.cells.size() != header().size()) {
        throw bad_line(fmt::format("has {} cells instead of {}", row.cells.size(), header().size()));
      }
      line_up_service service = service_of(row);
      const std::size_t favourites = place_of(favourites_column);
      if (favourites < row.cells.size()) {
        add_favourites(row.cells[favourites]);
      }
      read_.services.push_back(std::move(service));
    } catch (const bad_line &bad) {
      read_.skipped.push_back({row.line, bad.reason});
    }
  }

  [[nodiscard]] std::size_t place_of(std::string_view name) const {
    const auto found = std::ranges::find_if(places_, [name](const auto &place) { return place.first->name == name; });
    return found != places_.end() ? found->second : header().size();
  }

  [[nodiscard]] line_up_service service_of(const csv_row &row) const {
    line_up_service service;
    service.line = row.line;
    service.fields.source_type = broadcast_source;
    bool has_type = false;
    for (const auto &[column, at] : places_) {
      const std::string &cell = row.cells[at];
      if (cell.find('\0') != std::string::npos) {
        throw bad_line("holds a NUL byte");
      }
      if (!cell.empty()) {
        column->set(service, cell, column->name);
        has_type = has_type || column->name == "type" || column->name == "service_type";
      } else if (column->is_needed) {
        throw bad_line(fmt::format("has no {}", column->name));
      }
    }
    if (!has_type) {
      guess_type(service);
    }
    return service;
  }

  // In the order in which the groups come up. The service is the next one.
  void add_favourites(std::string_view names) {
    std::optional<std::string_view> rest = names;
    while (rest) {
      const auto [name, tail] = split_at_first(*rest, csv_group_separator);
      if (!name.empty()) {
        group_named(name).entries.push_back({read_.services.size(), {}});
      }
      rest = tail;
    }
  }

  favourite_group &group_named(std::string_view name) {
    const auto known = std::ranges::find(read_.favourites, name, &favourite_group::name);
    return known != read_.favourites.end() ? *known
                                           : read_.favourites.emplace_back(favourite_group{std::string(name), {}});
  }

  const std::vector<csv_row> &rows_;
  loss_counts &lost_;
  line_up read_;
  std::vector<std::pair<const csv_column *, std::size_t>> places_;
};

}  // namespace

std::span<const csv_column> csv_columns() { return table; }

line_up line_up_of_csv(std::string_view text, loss_counts &lost) {
  const std::vector<csv_row> rows = parse_csv(text);
  return reader(rows, lost).read();
}

line_up read_csv(const std::filesystem::path &path, loss_counts &lost) {
  try {
    return line_up_of_csv(read_input_file(path), lost);
  } catch (const std::runtime_error &error) {
    const std::string_view why = error.what();
    throw std::runtime_error(why.starts_with(path.string()) ? std::string(why)
                                                            : fmt::format("{}: {}", path.string(), why));
  }
}

// A header that names what services are known by, or a name that says so.
bool is_like_csv(const std::filesystem::path &path, std::string_view beginning) {
  const std::string_view header = beginning.substr(0, beginning.find_first_of("\r\n"));
  return header.find("service_id,") != std::string_view::npos || header.ends_with("service_id") ||
         header.find("service_id\"") != std::string_view::npos || path.extension() == ".csv";
}

}  // namespace chlist
