// Rows become services by the columns that their header names. Cells that are empty set nothing.
#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/csv/csv.h"
#include "chlist/exchange/csv/csv_columns.h"
#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/fields/pids.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr std::string_view type_column = "type";
constexpr std::string_view type_id_column = "service_type";

// A service with audio alone is radio; of one without PIDs nothing else is known than that most are television.
void guess_type(line_up_service &service) {
  const bool is_radio = service.fields.video_pid == unset_pid && service.fields.audio_pid != unset_pid;
  service.fields.service_type = is_radio ? SERVICE_TYPE_RADIO : SERVICE_TYPE_TV;
}

class row_reader {
 public:
  row_reader(const std::vector<csv_row> &rows, loss_counts &lost) : rows_(rows), lost_(lost) {}

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
    refuse_repeated();
    for (const csv_column &column : csv_columns()) {
      const auto found = std::ranges::find(header(), column.name);
      if (found != header().end()) {
        places_.emplace_back(&column, static_cast<std::size_t>(found - header().begin()));
      } else if (column.is_needed) {
        throw std::runtime_error(fmt::format("line 1: has no column {}; network_id, ts_id, frequency and service_id "
                                             "are what a service is known by",
                                             column.name));
      }
    }
  }

  void refuse_repeated() const {
    std::unordered_set<std::string_view> names;
    for (const std::string &name : header()) {
      if (!names.insert(name).second) {
        throw std::runtime_error(fmt::format("line 1: has two columns {}", chlist::quoted(name)));
      }
    }
  }

  void count_unknown() {
    std::vector<std::size_t> used(header().size(), 0);
    for (auto row = rows_.begin() + 1; row != rows_.end(); ++row) {
      for (std::size_t at = 0; at < std::min(row->cells.size(), used.size()); ++at) {
        used[at] += says_something(header()[at], row->cells[at]) ? 1 : 0;
      }
    }
    for (const auto &[column, at] : places_) {
      used[at] = 0;
    }
    for (std::size_t at = 0; at < used.size(); ++at) {
      lost_.add("cells of the column " + chlist::quoted(header()[at]), used[at]);
    }
  }

  // A listing has all fields of all services, set or not.
  static bool says_something(std::string_view column, std::string_view cell) {
    const bool is_unset = cell.empty() || (cell == "0" && find_field(column) != nullptr);
    return !is_unset && !is_told_by_other_columns(column);
  }

  void read_row(const csv_row &row) {
    try {
      if (row.cells.size() != header().size()) {
        throw bad_line(fmt::format("has {} cells instead of {}", row.cells.size(), header().size()));
      }
      line_up_service service = service_of(row);
      count_losses(row);
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
    line_up_service service = broadcast_service(row.line);
    bool has_type = false;
    for (const auto &[column, at] : places_) {
      const std::string &cell = row.cells[at];
      if (cell.find('\0') != std::string::npos) {
        throw bad_line("holds a NUL byte");
      }
      if (!cell.empty()) {
        set_column(service, *column, cell);
        has_type = has_type || column->name == type_column || column->name == type_id_column;
      } else if (column->is_needed) {
        throw bad_line(fmt::format("has no {}", column->name));
      }
    }
    if (!has_type) {
      guess_type(service);
    }
    must_be_one_type(row, service);
    return service;
  }

  // Which of two columns somebody edited cannot be told; a service has the type of the one that is set last.
  void must_be_one_type(const csv_row &row, const line_up_service &service) const {
    const std::string_view name = cell_of(row, type_column);
    if (!name.empty() && number_for(field_named(type_column), name) != service.fields.service_type) {
      throw bad_line(fmt::format("{}={} and {}={} are two types", type_column, shown(name), type_id_column,
                                 shown(cell_of(row, type_id_column))));
    }
  }

  [[nodiscard]] std::string_view cell_of(const csv_row &row, std::string_view column) const {
    const std::size_t place = place_of(column);
    return place < row.cells.size() ? std::string_view(row.cells[place]) : std::string_view();
  }

  // Only rows that are read lose something.
  void count_losses(const csv_row &row) {
    const std::string_view number = cell_of(row, "number");
    const std::string_view minor = cell_of(row, "minor");
    const bool is_lonely = (number.empty() || number == csv_unlisted) && minor.find_first_not_of("-0") < minor.size();
    lost_.add("minor numbers without a channel number", is_lonely ? 1 : 0);
    const bool is_circular = cell_of(row, "polarisation").find_first_of("LRlr") != std::string_view::npos;
    lost_.add(circular_polarisations, is_circular ? 1 : 0);
  }

  // In the order in which the groups come up. The service is the next one.
  void add_favourites(std::string_view names) {
    for (const std::string_view name : split(names, csv_group_separator)) {
      if (!name.empty()) {
        group_named(name).entries.push_back({read_.services.size(), {}});
      }
    }
  }

  favourite_group &group_named(std::string_view name) {
    const auto [place, is_new] = groups_.try_emplace(std::string(name), read_.favourites.size());
    return is_new ? read_.favourites.emplace_back(favourite_group{place->first, {}}) : read_.favourites[place->second];
  }

  const std::vector<csv_row> &rows_;
  loss_counts &lost_;
  line_up read_;
  std::unordered_map<std::string, std::size_t> groups_;  // by name, their place among the favourites
  std::vector<std::pair<const csv_column *, std::size_t>> places_;
};

}  // namespace

line_up line_up_of_csv(std::string_view text, loss_counts &lost) {
  const std::vector<csv_row> rows = parse_csv(text);
  return row_reader(rows, lost).read();
}

line_up read_csv(const list_source &from, loss_counts &lost) { return line_up_of_csv(from.text, lost); }

// A header that names what services are known by, or a name that says so.
bool is_like_csv(const std::filesystem::path &path, std::string_view beginning) {
  constexpr std::string_view name = "service_id";
  text_lines lines(beginning);
  std::string_view header = lines.next().value_or(std::string_view());
  header = header.starts_with("sep=") ? lines.next().value_or(std::string_view()) : header;
  const std::size_t behind = header.find(name) + name.size();
  const bool is_named = header.find(name) != std::string_view::npos &&
                        (behind == header.size() || std::string_view(",;\t\"").find(header[behind]) < 4);
  return is_named || path.extension() == ".csv";
}

}  // namespace chlist
