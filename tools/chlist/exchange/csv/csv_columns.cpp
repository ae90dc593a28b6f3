// One table says which columns there are, and the table of fields what they mean.
#include "chlist/exchange/csv/csv_columns.h"

#include <algorithm>
#include <stdexcept>

#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/field_reading.h"

namespace chlist {
namespace {

constexpr std::string_view number_column = "number";
constexpr std::string_view minor_column = "minor";

// A number comes before its minor one, the whole byte of flags before its bits.
constexpr csv_column column_table[] = {
    {number_column},
    {minor_column},
    {"name"},
    {"short_name"},
    {"type"},
    {"service_type"},
    {"provider"},
    {"genre"},
    {"country"},
    {"favourites"},
    {"network_name"},
    {"net_index"},
    {"network_id", true},
    {"ts_id", true},
    {"frequency", true},
    {"polarisation"},
    {"service_id", true},
    {"pmt_pid"},
    {"pcr_pid"},
    {"video_pid"},
    {"video_tag"},
    {"video_ecm_pid"},
    {"audio_pid"},
    {"audio_tag"},
    {"flags"},
    {"locked"},
    {"skipped"},
    {"scrambled"},
    {"data"},
    {"source_type"},
    {"order_key"},
};

// Spreadsheets write 1 as "1.0" or "1,00". With three digits behind it, the mark could part thousands.
std::string_view without_fraction(std::string_view text) {
  constexpr std::string_view fractions[] = {".0", ".00", ",0", ",00"};
  for (const std::string_view fraction : fractions) {
    if (text.size() > fraction.size() && text.ends_with(fraction)) {
      return text.substr(0, text.size() - fraction.size());
    }
  }
  return text;
}

int part_of_number(std::string_view column, std::string_view text) {
  return static_cast<int>(number_for(field_named(column), text));
}

void set(line_up_service &service, std::string_view column, std::string_view cell) {
  const std::string_view text = field_named(column).is_number() ? without_fraction(cell) : cell;
  if (column == number_column && text == csv_unlisted) {
    service.is_listed = false;
  } else if (column == number_column) {
    service.number = channel_number{part_of_number(column, text), 0};
  } else if (column == minor_column) {
    const int minor = part_of_number(column, text);
    if (service.number) {
      service.number->minor = minor;
    }
  } else if (column != favourites_column) {
    set_field(service, field_named(column), text);
  }
}

}  // namespace

bool is_told_by_other_columns(std::string_view name) {
  constexpr std::string_view names[] = {"position",    "name_table", "short_name_table",
                                        "provider_id", "genre_id",   "country_id"};
  return std::ranges::find(names, name) != std::end(names);
}

std::span<const csv_column> csv_columns() { return column_table; }

void set_column(line_up_service &service, const csv_column &column, std::string_view text) {
  try {
    set(service, column.name, text);
  } catch (const std::runtime_error &error) {
    throw bad_line(error.what());
  }
}

}  // namespace chlist
