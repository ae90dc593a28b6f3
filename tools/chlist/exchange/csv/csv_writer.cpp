// Values are those of the table of fields.
#include <algorithm>
#include <iterator>
#include <numeric>
#include <string>
#include <utility>

#include "chlist/exchange/csv/csv.h"
#include "chlist/exchange/csv/csv_columns.h"
#include "chlist/exchange/csv/csv_line_up.h"

namespace chlist {
namespace {

using columns = std::vector<const field *>;

bool is_among(const columns &written, std::string_view name) {
  return std::ranges::find(written, name, &field::name) != written.end();
}

// All that an import takes, unless some are named.
columns chosen(const std::string &names) {
  if (!names.empty()) {
    return fields_named(names);
  }
  columns all;
  for (const field &each : service_fields()) {
    if (std::ranges::find(csv_columns(), each.name, &csv_column::name) != csv_columns().end()) {
      all.push_back(&each);
    }
  }
  return all;
}

class row_writer {
 public:
  explicit row_writer(const line_up &list)
      : list_(list), groups_(list.services.size()), entries_(list.services.size()) {
    for (const favourite_group &group : list.favourites) {
      for (const line_up_entry &entry : group.entries) {
        std::string &names = groups_[entry.service];
        names += (names.empty() ? "" : std::string(1, csv_group_separator)) + group.name;
      }
    }
    std::size_t position = 0;
    for (const line_up_entry &entry : list.view(view_kind::all).entries) {
      if (entry.service != nowhere && entries_[entry.service].entry == nullptr) {
        entries_[entry.service] = {&entry, position};
      }
      ++position;
    }
  }

  std::string write(const columns &shown) {
    std::vector<std::string> cells;
    std::ranges::transform(shown, std::back_inserter(cells), [](const field *each) { return std::string(each->name); });
    std::string text = csv_line(cells);
    for (std::size_t at = 0; at < list_.services.size(); ++at) {
      cells.clear();
      for (const field *each : shown) {
        cells.push_back(cell_of(*each, at));
      }
      text += csv_line(cells);
    }
    return text;
  }

 private:
  struct placed {
    const line_up_entry *entry = nullptr;
    std::size_t position = 0;
  };

  [[nodiscard]] std::string cell_of(const field &shown, std::size_t at) const {
    const line_up_service &service = list_.services[at];
    if (shown.name == favourites_column) {
      return groups_[at];
    }
    if (shown.name == "number" || shown.name == "minor") {
      return number_cell(service, shown.name == "minor");
    }
    return text_of_value(shown.get({&list_, &service, entries_[at].entry, entries_[at].position}));
  }

  static std::string number_cell(const line_up_service &service, bool is_minor) {
    if (!service.is_listed) {
      return std::string(is_minor ? std::string_view() : csv_unlisted);
    }
    return service.number ? std::to_string(is_minor ? service.number->minor : service.number->major) : "";
  }

  const line_up &list_;
  std::vector<std::string> groups_;
  std::vector<placed> entries_;  // of ALL, by service
};

// Whether the columns tell what services are known by, so that an import takes them.
bool can_be_read(const columns &written) {
  return std::ranges::all_of(csv_columns(),
                             [&](const csv_column &each) { return !each.is_needed || is_among(written, each.name); });
}

}  // namespace

written_list write_csv(const line_up &list, const write_options &options) {
  const columns shown = chosen(options.columns);
  written_list result;
  result.files = {{"", row_writer(list).write(shown)}};
  result.services.resize(list.services.size());
  std::iota(result.services.begin(), result.services.end(), std::size_t{0});
  if (!can_be_read(shown)) {
    result.carried = shown;
  }
  return result;
}

}  // namespace chlist
