// Twice through the file: what the first search finds tells how the list's own record is shifted, and bears witness in
// the second.
#include "chlist/salvage/salvaging.h"

#include <channel/views.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <unordered_set>

#include "chlist/check/frame.h"
#include "chlist/convert/conversion.h"
#include "chlist/files/channel_input.h"
#include "chlist/files/faithful_load.h"
#include "chlist/salvage/list_image.h"
#include "chlist/salvage/rebuilt_file.h"
#include "chlist/salvage/record_bytes.h"
#include "chlist/salvage/service_search.h"
#include "chlist/salvage/witnesses.h"

namespace chlist {
namespace {

constexpr int first_known_version = 7;
constexpr int last_version_of_long_records = 8;

// Records may stand that much in front of their place when bytes were cut out of the list's own record.
constexpr std::size_t farthest_shift = 65536;

struct search_result {
  int version = CHANNEL_LIST_VERSION;
  record_sizes sizes;
  witnesses known;
  list_image list;
  salvaged_records records;
};

void add_entries(witnesses &known, byte_span list) {
  for_each_entry(list, [&known](const virtual_channel_st &entry) { known.add_entry(channel::identity_of(entry)); });
}

witnesses witnesses_of(const std::vector<found_service> &services) {
  witnesses found;
  for (const found_service &service : services) {
    found.add_entry(service.id);
  }
  return found;
}

void add_services(witnesses &known, const std::vector<found_service> &services) {
  for (const found_service &service : services) {
    known.add_service(service.id);
  }
}

// Where the first network stands, or would stand above the first record that was found.
std::size_t first_record_of(const salvaged_records &records, const record_sizes &sizes) {
  const found_service &service = records.services.front();
  std::size_t first = service.offset - std::min(service.offset, sizes.transponder + sizes.network);
  for (const salvaged_transponder &transponder : records.transponders) {
    if (transponder.offset) {
      first = std::min(first, *transponder.offset - std::min(*transponder.offset, sizes.network));
    }
  }
  for (const salvaged_network &network : records.networks) {
    first = std::min(first, network.offset.value_or(first));
  }
  return first;
}

search_result search(byte_span file, int version) {
  search_result result;
  result.version = version;
  result.sizes = record_sizes_of(version);
  const std::size_t list_size = result.sizes.list;
  if (file.size() < list_size) {
    return result;
  }
  add_entries(result.known, file.first(list_size));
  const std::vector<found_service> first = find_services(file, result.sizes, list_size - farthest_shift, result.known);
  if (first.empty()) {
    return result;
  }
  add_services(result.known, first);
  const std::size_t frame = std::min(list_size, first.front().offset);
  const salvaged_records arranged = arrange(file, result.sizes, frame, result.known, first);
  result.list = repair_list_image(file, result.sizes, first_record_of(arranged, result.sizes), witnesses_of(first));
  result.known = {};
  add_entries(result.known, result.list.bytes);
  add_services(result.known, first);
  const auto begin = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(list_size) + result.list.shift);
  result.records =
      arrange(file, result.sizes, begin, result.known, find_services(file, result.sizes, begin, result.known));
  return result;
}

// The version that the file names; when that is none, the one that finds more.
search_result search(byte_span file) {
  const int named = file.size() < sizeof(std::int16_t) ? 0 : value_at<std::int16_t>(file, 0);
  if (named >= first_known_version && named <= CHANNEL_LIST_VERSION) {
    return search(file, named);
  }
  search_result current = search(file, CHANNEL_LIST_VERSION);
  search_result earlier = search(file, last_version_of_long_records);
  return earlier.records.services.size() > current.records.services.size() ? std::move(earlier) : std::move(current);
}

// A service that no view names, on a transponder that has all its services, one of which the views name and it does
// not have: its own service id is damaged.
class contradictions {
 public:
  explicit contradictions(const search_result &result)
      : result_(result), services_(witnesses_of(result.records.services)) {
    for_each_counted_entry(result.list.bytes, [this](const virtual_channel_st &entry) {
      if (const channel::identity id = channel::identity_of(entry); !services_.list(id)) {
        unresolved_.add_entry(id);
      }
    });
  }

  [[nodiscard]] bool concern(const salvaged_transponder &transponder, std::size_t service) const {
    const channel::identity &id = result_.records.services[service].id;
    return transponder.offset && transponder.services.size() >= transponder.counted && !result_.known.list(id) &&
           unresolved_.know_transponder(id);
  }

 private:
  const search_result &result_;
  witnesses services_;
  witnesses unresolved_;
};

placed_service placed(byte_span file, const found_service &service) {
  channel_st record = {};
  read_image(file, service.offset, record);
  return {service.offset, known_as(record)};
}

void drop_contradicted(byte_span file, search_result &result, salvage_outcome &outcome) {
  const contradictions contradicted(result);
  for (salvaged_transponder &transponder : result.records.transponders) {
    std::vector<std::size_t> kept;
    for (const std::size_t service : transponder.services) {
      if (contradicted.concern(transponder, service)) {
        outcome.contradicted.push_back(placed(file, result.records.services[service]));
      } else {
        kept.push_back(service);
      }
    }
    transponder.services = std::move(kept);
  }
}

void note_records(byte_span file, const search_result &result, salvage_outcome &outcome) {
  for (const salvaged_network &network : result.records.networks) {
    if (!network.offset && is_kept(result.records, network)) {
      outcome.made.push_back({"network", network.id});
    }
  }
  for (const salvaged_transponder &transponder : result.records.transponders) {
    if (!transponder.offset && is_kept(transponder)) {
      outcome.made.push_back({"transponder", transponder.id});
    }
    const std::size_t found = transponder.services.size();
    outcome.missing_services += transponder.counted > found ? transponder.counted - found : 0;
    for (const std::size_t service : transponder.services) {
      if (const found_service &taken = result.records.services[service]; taken.is_doubtful) {
        outcome.doubtful.push_back(placed(file, taken));
      }
    }
  }
}

// By the library's own reader, or its conversion.
void load(const search_result &result, byte_span damaged) {
  const memory_file rebuilt(rebuilt_bytes(damaged, result.sizes, result.version, result.list, result.records));
  const channel_input input(rebuilt.path());
  if (result.version == CHANNEL_LIST_VERSION) {
    load_faithfully(input);
  } else {
    convert_to_memory(input);
  }
}

// A load leaves a view whose count was damaged.
void restore_current_view(const list_image &list) {
  const auto type =
      value_at<std::int16_t>(list.bytes, image_place<channel_list_st>(offsetof(channel_list_st, vch_type)));
  if (type != get_vindex_type() && type >= VIEW_ALL && type <= VIEW_FAVOURITE_LAST && type != VIEW_WORK) {
    const std::int16_t *count = get_virtual_channel_vnumber(static_cast<std::int8_t>(type));
    if (count != nullptr && *count > 0) {
      change_vindex_type(static_cast<std::int8_t>(type));
    }
  }
}

}  // namespace

bool salvage_outcome::has_losses() const {
  return !doubtful.empty() || !contradicted.empty() || !made.empty() || !forsaken.empty() || !unexplained.empty() ||
         (missing_services > 0 && list.unlisted_services > 0) || shift != 0 || has_lost_settings ||
         !list.lost_entries.empty() || list.is_numbered_anew;
}

salvage_outcome salvage_to_memory(byte_span damaged) {
  search_result result = search(damaged);
  if (result.records.services.empty()) {
    throw std::runtime_error("no service is left in it: there is nothing to recover");
  }
  salvage_outcome outcome;
  outcome.size = damaged.size();
  outcome.version = result.version;
  drop_contradicted(damaged, result, outcome);
  note_records(damaged, result, outcome);
  outcome.forsaken = result.records.forsaken;
  outcome.unexplained = result.records.unexplained;
  outcome.shift = result.list.shift;
  outcome.shifted_from = result.list.shifted_from;
  outcome.has_lost_settings = result.list.is_lost;
  load(result, damaged);
  outcome.list = repair_list_in_memory();
  restore_current_view(result.list);
  outcome.recovered = count_hierarchy(*get_channel_list());
  return outcome;
}

}  // namespace chlist
