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
#include "chlist/fields/pids.h"

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

bool has_odd_pid(const channel_st &fields) {
  const auto is_beyond = [](std::uint16_t pid) { return pid != unset_pid && pid > largest_pid; };
  return is_beyond(fields.pmt_pid) || is_beyond(fields.pcr_pid) || is_beyond(fields.video_pid) ||
         is_beyond(fields.video_ecm_pid) || is_beyond(fields.audio_pid);
}

void count_services(const line_up &list, loss_counts &lost) {
  constexpr std::int64_t largest_frequency = std::numeric_limits<std::uint32_t>::max();
  for (const line_up_service &service : list.services) {
    const std::int64_t frequency = service.fields.frequency;
    lost.add("frequencies outside 1..4294967295", frequency < 1 || frequency > largest_frequency ? 1 : 0);
    lost.add("PIDs beyond 8191, which are not read again", has_odd_pid(service.fields) ? 1 : 0);
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
  count_services(list, lost);
  if (is_among(written, favourites_column)) {
    count_favourites(list, lost);
  }
  return {{"", writer(list).write(written)}};
}

}  // namespace chlist
