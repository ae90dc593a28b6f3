// Values are those of the table of fields.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/csv/csv.h"
#include "chlist/exchange/csv/csv_columns.h"
#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/service_traits.h"

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

class writer {
 public:
  explicit writer(const line_up &list) : list_(list), groups_(list.services.size()), entries_(list.services.size()) {
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

// A minor number is read behind its major one only.
std::vector<trait> traits_carried(const columns &written) {
  std::vector<trait> carried;
  for (const field *each : written) {
    if (each->name != "minor" || is_among(written, "number")) {
      const std::vector<trait> traits = traits_of(*each);
      carried.insert(carried.end(), traits.begin(), traits.end());
    }
  }
  return carried;
}

// A list may hold values that no field takes: a PID of 9000, a frequency of 0.
bool has_refused_value(const service_row &row, const columns &written) {
  return std::ranges::any_of(written, [&row](const field *each) {
    const json value = each->set_number != nullptr ? each->get(row) : json();
    return value.is_integer() && !number_from(each->values, text_of_value(value));
  });
}

void count_services(const line_up &list, const columns &written, loss_counts &lost) {
  constexpr std::int64_t largest_frequency = std::numeric_limits<std::uint32_t>::max();
  for (const line_up_service &service : list.services) {
    const std::int64_t frequency = service.fields.frequency;
    lost.leave_out("services that an import refuses for a value outside its range",
                   has_refused_value({&list, &service}, written) ? 1 : 0);
    lost.add("frequencies outside 0..4294967295", frequency < 0 || frequency > largest_frequency ? 1 : 0);
    lost.add("network indexes of 0", service.fields.net_index == 0 ? 1 : 0);
  }
}

// Groups come up, and their entries follow each other, in the order of the services.
void count_favourites(const line_up &list, loss_counts &lost) {
  std::unordered_set<std::string_view> names;
  for (const favourite_group &group : list.favourites) {
    lost.add("favourite groups of one name, which become one", names.insert(group.name).second ? 0 : 1);
    lost.add("favourite groups without services", group.entries.empty() ? 1 : 0);
    lost.add("favourite groups without a name, or with ';' in it",
             group.name.empty() || group.name.find(csv_group_separator) != std::string::npos ? 1 : 0);
    lost.add("favourite groups in an order of their own",
             std::ranges::is_sorted(group.entries, {}, &line_up_entry::service) ? 0 : 1);
  }
  const auto first = [](const favourite_group &group) {
    return group.entries.empty() ? std::size_t{0} : group.entries.front().service;
  };
  lost.add("places of favourite groups among each other",
           std::ranges::is_sorted(list.favourites, {}, first) ? 0 : list.favourites.size());
}

}  // namespace

std::vector<made_file> write_csv(const line_up &list, const write_options &options, loss_counts &lost) {
  const columns written = chosen(options.columns);
  count_uncarried(list, traits_carried(written), lost);
  count_services(list, written, lost);
  if (is_among(written, favourites_column)) {
    count_favourites(list, lost);
  }
  return {{"", writer(list).write(written)}};
}

}  // namespace chlist
