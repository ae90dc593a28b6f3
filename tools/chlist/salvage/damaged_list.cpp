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

// Of the networks that are there, whatever is lost between them and the first service.
std::size_t first_network_of(const salvaged_records &records, std::size_t otherwise) {
  std::size_t first = otherwise;
  for (const salvaged_network &network : records.networks) {
    first = std::min(first, network.offset.value_or(first));
  }
  return first;
}

list_image find_list(byte_span file, const record_sizes &sizes, const witnesses &known,
                     const std::vector<found_service> &services) {
  std::vector<record_run> runs = runs_of(file, sizes, services);
  if (!services.empty()) {
    const std::size_t frame = std::min(sizes.list, services.front().offset);
    const std::size_t first = first_network_of(arrange(file, sizes, frame, known, services), file.size());
    if (first < runs.front().begin) {
      runs.insert(runs.begin(), {first, first, first});
    }
  }
  return repair_list_image(file, sizes, runs, witnesses_of(services));
}

damaged_list search(byte_span file, int version, const search_progress &progress) {
  damaged_list result;
  result.version = version;
  result.sizes = record_sizes_of(version);
  witnesses known;
  add_entries(known, file.first(std::min(file.size(), result.sizes.list)));
  std::vector<found_service> first = find_services(file, result.sizes, 0, known, progress);
  add_services(known, first);
  result.list = find_list(file, result.sizes, known, first);
  const std::size_t begin = result.list.end;
  std::erase_if(first, [=](const found_service &service) { return service.offset < begin; });
  add_entries(result.known, result.list.bytes);
  add_services(result.known, first);
  const std::vector<found_service> second =
      find_services(file, result.sizes, begin, result.known, [&](std::size_t bytes) { progress(file.size() + bytes); });
  result.records = arrange(file, result.sizes, begin, result.known, second);
  return result;
}

}  // namespace

std::size_t searches_of(byte_span file) {
  return is_known_version(version_in(file)) ? searches_of_a_version : 2 * searches_of_a_version;
}

damaged_list search_file(byte_span file, const search_progress &progress) {
  if (const int named = version_in(file); is_known_version(named)) {
    return search(file, named, progress);
  }
  damaged_list current = search(file, CHANNEL_LIST_VERSION, progress);
  damaged_list earlier = search(file, last_version_of_long_records,
                                [&](std::size_t bytes) { progress(searches_of_a_version * file.size() + bytes); });
  return earlier.records.services.size() > current.records.services.size() ? std::move(earlier) : std::move(current);
}

}  // namespace chlist
