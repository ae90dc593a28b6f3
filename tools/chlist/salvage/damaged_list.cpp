// Twice through the file: what the first search finds tells how the list's own record is shifted and where it ends, and
// bears witness in the second.
#include "chlist/salvage/damaged_list.h"

#include <algorithm>
#include <utility>

#include "chlist/salvage/list_arrays.h"
#include "chlist/salvage/record_bytes.h"

namespace chlist {
namespace {

constexpr int last_version_of_long_records = 8;
constexpr std::size_t searches_of_a_version = 2;

// Each costs a comparison with the whole of the list's own record.
constexpr std::size_t most_runs = 16;

void add_entries(witnesses &known, byte_span list) {
  for_each_entry(list, [&known](const virtual_channel_st &entry) { known.add_entry(channel::identity_of(entry)); });
}

void add_services(witnesses &known, const std::vector<found_service> &services) {
  for (const found_service &service : services) {
    known.add_service(service.id);
  }
}

// Goes up from a service over what a list has in front of it: its transponder, transponders without services, its
// network, networks without transponders.
class way_up {
 public:
  way_up(byte_span file, const record_sizes &sizes, const found_service &service)
      : file_(file), sizes_(sizes), id_(service.id), at_(service.offset) {}

  record_run begin_run() {
    const std::size_t service = at_;
    const std::size_t above = at_ - std::min(at_, sizes_.transponder + sizes_.network);
    if (!has_above(sizes_.transponder) || !same_transponder(transponder_at(file_, at_ - sizes_.transponder), id_)) {
      return {service, service, above};
    }
    at_ -= sizes_.transponder;
    const std::size_t transponder = at_;
    while (!is_below_network() && is_below_empty_transponder()) {
      at_ -= sizes_.transponder;
    }
    if (!is_below_network()) {
      return {transponder, service, above};
    }
    do {
      at_ -= sizes_.network;
    } while (is_below_empty_network());
    return {at_, service, at_};
  }

 private:
  [[nodiscard]] bool has_above(std::size_t size) const { return at_ >= size; }

  [[nodiscard]] bool is_below_network() const {
    return has_above(sizes_.network) && same_network(network_at(file_, at_ - sizes_.network), id_);
  }
  [[nodiscard]] bool is_below_empty_transponder() const {
    return has_above(sizes_.transponder) && is_empty_transponder(file_, at_ - sizes_.transponder);
  }
  [[nodiscard]] bool is_below_empty_network() const {
    return has_above(sizes_.network) && is_empty_network(file_, at_ - sizes_.network);
  }

  byte_span file_;
  record_sizes sizes_;
  channel::identity id_;
  std::size_t at_;
};

// A run ends where more than a transponder and a network is between two services: what seems to be a service within the
// list's own record is none.
std::vector<record_run> runs_of(byte_span file, const record_sizes &sizes, const std::vector<found_service> &services) {
  std::vector<record_run> runs;
  for (const found_service &service : services) {
    const bool is_apart = runs.empty() || service.offset > runs.back().end + sizes.transponder + sizes.network;
    if (is_apart && runs.size() == most_runs) {
      break;
    }
    if (is_apart) {
      runs.push_back(way_up(file, sizes, service).begin_run());
    }
    runs.back().end = service.offset + sizes.service;
  }
  return runs;
}

// Whether a list's own record begins at a place: it has a version, networks, and no count beyond its array.
bool begins_list(byte_span file, std::size_t at, const record_sizes &sizes) {
  if (!fits(file, at, sizes.list) || !is_known_version(version_in(file.subspan(at)))) {
    return false;
  }
  const byte_span list = file.subspan(at, sizes.list);
  return CHLIST_FIELD(list, 0, channel_list_st, network_num) > 0 &&
         std::ranges::all_of(arrays_of_list(), [&](const array_place &array) {
           const int count = value_at<std::int16_t>(list, array.count);
           return count >= 0 && count <= static_cast<int>(array.capacity);
         });
}

// Files are found with a list twice, or with two of them one behind the other. The first one is the file's; what stands
// in front of the records of the others is neither a part of it, moved, nor a stretch without a meaning.
std::vector<std::size_t> other_lists_in(byte_span file, const record_sizes &sizes,
                                        const std::vector<record_run> &runs) {
  std::vector<std::size_t> lists;
  for (const record_run &run : runs) {
    if (run.network >= 2 * sizes.list && begins_list(file, run.network - sizes.list, sizes)) {
      lists.push_back(run.network - sizes.list);
    }
  }
  return lists;
}

// Networks that are there count, whatever is lost between them and the first service.
std::size_t first_network_of(const salvaged_records &records, std::size_t otherwise) {
  std::size_t first = otherwise;
  for (const salvaged_network &network : records.networks) {
    first = std::min(first, network.offset.value_or(first));
  }
  return first;
}

void add_first_network(std::vector<record_run> &runs, byte_span file, const record_sizes &sizes, const witnesses &known,
                       const std::vector<found_service> &services) {
  if (!services.empty()) {
    const record_area area = {std::min(sizes.list, services.front().offset)};
    const std::size_t first = first_network_of(arrange(file, sizes, area, known, services), file.size());
    if (first < runs.front().begin) {
      runs.insert(runs.begin(), {first, first, first});
    }
  }
}

// The own record of the file's first list, and where the others begin.
void find_lists(damaged_list &result, byte_span file, const witnesses &known,
                const std::vector<found_service> &services) {
  std::vector<record_run> runs = runs_of(file, result.sizes, services);
  add_first_network(runs, file, result.sizes, known, services);
  result.other_lists = other_lists_in(file, result.sizes, runs);
  if (!result.other_lists.empty()) {
    std::erase_if(runs, [&](const record_run &run) { return run.begin >= result.other_lists.front(); });
  }
  result.list = repair_list_image(file, result.sizes, runs, witnesses_of(services));
}

bool is_within_list(const damaged_list &result, const found_service &service) {
  return service.offset < result.list.end || std::ranges::any_of(result.other_lists, [&](std::size_t list) {
           return service.offset + result.sizes.service > list && service.offset < list + result.sizes.list;
         });
}

damaged_list search(byte_span file, int version, const search_progress &progress) {
  damaged_list result;
  result.version = version;
  result.sizes = record_sizes_of(version);
  witnesses known;
  add_entries(known, file.first(std::min(file.size(), result.sizes.list)));
  const std::vector<found_service> first = find_services(file, result.sizes, 0, known, progress);
  add_services(known, first);
  find_lists(result, file, known, first);
  add_entries(result.known, result.list.bytes);
  for (const found_service &service : first) {
    if (!is_within_list(result, service)) {
      result.known.add_service(service.id);
    }
  }
  std::vector<found_service> second = find_services(file, result.sizes, result.list.end, result.known,
                                                    [&](std::size_t bytes) { progress(file.size() + bytes); });
  std::erase_if(second, [&](const found_service &service) { return is_within_list(result, service); });
  result.records = arrange(file, result.sizes, {result.list.end, result.other_lists}, result.known, second);
  return result;
}

// One bit makes version 8 of version 10, whose records are shorter: a file that is not in frame as the version that it
// names may be of another.
bool has_doubtful_version(byte_span file) {
  const int named = version_in(file);
  if (!has_long_records(named)) {
    return !is_known_version(named);
  }
  const file_records records(file);
  return !records.is_whole() || records.end() != file.size();
}

}  // namespace

std::size_t searches_of(byte_span file) {
  return has_doubtful_version(file) ? 2 * searches_of_a_version : searches_of_a_version;
}

damaged_list search_file(byte_span file, const search_progress &progress) {
  const int named = version_in(file);
  if (!has_doubtful_version(file)) {
    return search(file, named, progress);
  }
  damaged_list current = search(file, CHANNEL_LIST_VERSION, progress);
  damaged_list earlier = search(file, has_long_records(named) ? named : last_version_of_long_records,
                                [&](std::size_t bytes) { progress(searches_of_a_version * file.size() + bytes); });
  return earlier.records.services.size() > current.records.services.size() ? std::move(earlier) : std::move(current);
}

}  // namespace chlist
