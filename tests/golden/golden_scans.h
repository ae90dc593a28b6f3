// New channel lists for the golden channel file, and what merging each must give. Both are put together by hand, field
// by field: no merging is done here. Headers of new lists are empty but for what is looked at, so that the files stay
// small in the history.
#pragma once

#include <initializer_list>
#include <vector>

#include "golden_file.h"

namespace golden {

inline constexpr std::size_t network_name_at = 12;
inline constexpr std::size_t network_name_size = 64;
inline constexpr std::size_t tp_num_at = 76;
inline constexpr std::size_t rch_num_at = 18;
inline constexpr std::size_t country_id_at = 210;

inline bytes scan_header(std::size_t networks) {
  bytes list(460'032, '\0');
  put(list, 0, 2, 10);
  put(list, 459'610, 2, networks);
  return list;
}

// A transponder and the services on it.
inline bytes transponder_with(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation,
                              std::initializer_list<bytes> services_on_it) {
  bytes image = transponder_image(ts_id, frequency, polarisation, 0, 0);
  put(image, rch_num_at, 2, services_on_it.size());
  for (const bytes &each : services_on_it) {
    image += each;
  }
  return image;
}

// What a merge keeps or adds carries the mark of presence.
inline bytes marked(bytes image) {
  put(image, country_id_at, 2, 1);
  return image;
}

inline bytes marked(std::size_t number) { return marked(service_image(number)); }

// A transponder and a network that a merge created: nothing but what identifies them, the name and the counts.
inline bytes created_transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation,
                                 std::size_t services_on_it) {
  bytes image(336, '\0');
  put(image, 8, 2, ts_id);
  put(image, 12, 4, frequency);
  put(image, 16, 1, polarisation);
  put(image, rch_num_at, 2, services_on_it);
  return image;
}

inline bytes created_network(std::uint8_t net_index, std::uint16_t network_id, const bytes &network_of_scan) {
  bytes image(416, '\0');
  put(image, 8, 1, net_index);
  put(image, 10, 2, network_id);
  image.replace(network_name_at, network_name_size, network_of_scan, network_name_at, network_name_size);
  put(image, tp_num_at, 2, 1);
  return image;
}

// An entry that a merge appended to a slot that was zero.
inline bytes appended_entry(const service &data, std::size_t major) {
  bytes image(24, '\0');
  put(image, 2, 2, major);
  put_entry_identity(image, data);
  return image;
}

struct place {
  std::size_t array, count, seed;
};

inline constexpr place all_view = {80'112, 200'112, 1};
inline constexpr place tv_view = {200'116, 296'116, 2};
inline constexpr place radio_view = {296'120, 320'120, 3};
inline constexpr place promotion_view = {459'368, 459'608, 5};
inline constexpr place favourite_view(std::size_t group) {
  return {320'124 + group * 40 * 24, 339'324 + group * 2, 10 + group};
}

// A view after a merge: the entries of some old services, and new ones behind them.
inline void put_merged(bytes &list, const place &view, const std::vector<std::size_t> &kept,
                       const std::vector<bytes> &appended) {
  constexpr std::size_t more_than_any_view_holds = 10;
  clear(list, view.array, more_than_any_view_holds * 24);
  std::size_t at = view.array;
  for (const std::size_t number : kept) {
    list.replace(at, 24, entry_image(number, view.seed));
    at += 24;
  }
  for (const bytes &entry : appended) {
    list.replace(at, 24, entry);
    at += 24;
  }
  put(list, view.count, 2, kept.size() + appended.size());
}

// --- The same list again: nothing changes but the marks.

inline bytes scan_unchanged() { return scan_header(2) + hierarchy(); }

inline bytes merged_unchanged() {
  bytes file = channel_file();
  // What stands in front of each service: networks and transponders, or nothing but the service before it.
  std::size_t at = 460'032;
  for (const std::size_t records_before : {416U + 336U, 0U, 336U + 336U, 416U + 336U, 0U, 0U, 336U, 0U}) {
    at += records_before;
    put(file, at + country_id_at, 2, 1);
    at += 312;
  }
  return file;
}

// --- A list that changed. Gone: the second transponder's service, Cable Two, and the last radio, whose transponder
// moved by exactly the tolerance. The first transponder moved by less and has another transport stream id.

inline constexpr service new_television = {85, 0x0102, 0x0A05, 11'729'979, 0, 0x1005, 0x80, 1, "New Television"};
inline constexpr service new_radio = {17, 0x0203, 0x0607, 562'000'000, 0, 0xC0C8, 2, 3, "Promoted Radio"};
inline constexpr service moved_radio = {17, 0x0203, 0x0708, 4'294'964'795, 1, 0x2004, 2, 4, "Moved Radio"};
inline constexpr service numbered = {40, 0x0304, 0x0901, 474'000'000, 0, 0xC005, 1, 4, "Number Five"};
inline constexpr service counted = {40, 0x0304, 0x0901, 474'000'000, 0, 0x0000, 1, 4, "Counted"};
inline constexpr service counted_radio = {40, 0x0304, 0x0901, 474'000'000, 0, 0x4000, 2, 4, "Counted Radio"};
inline constexpr service promoted_data = {40, 0x0304, 0x0901, 474'000'000, 0, 202, 0x0C, 4, "Promoted Data"};
inline constexpr service promoted_tv = {40, 0x0304, 0x0901, 474'000'000, 0, 606, 0x81, 4, "Promoted Television"};
inline constexpr service third_kind = {40, 0x0304, 0x0901, 474'000'000, 0, 300, 3, 9, "Third Kind"};
inline constexpr service third_kind_elsewhere = {40, 0x0304, 0x0901, 474'000'000, 0, 301, 3, 4, "Unlisted"};
inline constexpr service no_kind = {40, 0x0304, 0x0901, 474'000'000, 0, 302, 0, 9, "No Kind"};

// What a new list says of a service that is known: nothing of it is taken over.
inline bytes said_of(std::size_t number, std::uint16_t ts_id, std::uint32_t frequency) {
  service data = services.at(number);
  data.ts_id = ts_id;
  data.frequency = frequency;
  data.type = 2;
  data.source = 9;
  data.name = "Another Name";
  return service_image(data, 50 + number);
}

inline bytes terrestrial() { return network_image(40, 0x0304, "Terrestrial", 2); }

inline bytes scan_changed() {
  const bytes satellite = network_image(85, 0x0102, "Renamed", 1) +
                          transponder_with(0x0A05, 11'729'979, 0,
                                           {said_of(0, 0x0A05, 11'729'979), service_image(new_television, 20),
                                            said_of(1, 0x0A05, 11'729'979)});
  const bytes cable = network_image(17, 0x0203, "Cable", 3) +
                      transponder_with(0x0607, 562'000'000, 0,
                                       {service_image(3), service_image(new_radio, 21), service_image(5),
                                        said_of(3, 0x0607, 562'000'000)}) +
                      transponder_with(0x0708, 4'294'964'795, 1, {service_image(moved_radio, 22)}) +
                      transponder_with(0x0708, 4'294'967'295, 1, {service_image(7)});
  const bytes new_network =
      terrestrial() +
      transponder_with(0x0901, 474'000'000, 0,
                       {service_image(numbered, 23), service_image(counted, 24), service_image(counted_radio, 25),
                        service_image(promoted_data, 26), service_image(promoted_tv, 27), service_image(third_kind, 28),
                        service_image(third_kind_elsewhere, 29), service_image(no_kind, 30)}) +
      transponder_with(0x0902, 482'000'000, 0, {});
  return scan_header(4) + satellite + cable + new_network + network_image(41, 0x0405, "Empty", 0);
}

inline bytes merged_changed_list() {
  bytes list = list_image();
  put(list, 459'610, 2, 3);
  put_merged(list, all_view, {0, 1, 3, 5, 7},
             {appended_entry(new_television, 0x1005), appended_entry(new_radio, 200),
              appended_entry(moved_radio, 0x2004), appended_entry(numbered, 5), appended_entry(counted, 13),
              appended_entry(counted_radio, 14), appended_entry(promoted_tv, 606), appended_entry(third_kind, 300)});
  put_merged(list, tv_view, {3, 0},
             {appended_entry(new_television, 0x1005), appended_entry(numbered, 5), appended_entry(counted, 7),
              appended_entry(promoted_tv, 606)});
  put_merged(list, radio_view, {1},
             {appended_entry(new_radio, 200), appended_entry(moved_radio, 0x2004), appended_entry(counted_radio, 5)});
  put_merged(list, promotion_view, {5, 3},
             {appended_entry(new_radio, 200), appended_entry(promoted_data, 202), appended_entry(promoted_tv, 606)});
  put_merged(list, favourite_view(0), {0, 1}, {});
  put_merged(list, favourite_view(1), {}, {});
  put_merged(list, favourite_view(2), {3, 5, 7}, {});
  put_merged(list, favourite_view(19), {1}, {});
  return list;
}

inline bytes merged_changed() {
  bytes first = transponder_image(0x0405, 11'727'480, 0, 0, 0);
  put(first, rch_num_at, 2, 3);
  bytes cable_one = transponder_image(0x0607, 562'000'000, 0, 0, 0);
  put(cable_one, rch_num_at, 2, 3);
  bytes cable_two = transponder_image(0x0708, 4'294'967'295, 1, 0, 0);
  put(cable_two, rch_num_at, 2, 1);
  const bytes satellite = network_image(85, 0x0102, "Satellite", 3) + first + marked(0) + marked(1) +
                          marked(service_image(new_television, 20)) + transponder_image(0x0999, 11'900'000, 1, 0, 0) +
                          transponder_image(0x0506, 12'015'000, 1, 0, 0);
  const bytes cable = network_image(17, 0x0203, "Cable", 3) + cable_one + marked(3) + marked(5) +
                      marked(service_image(new_radio, 21)) + cable_two + marked(7) +
                      created_transponder(0x0708, 4'294'964'795, 1, 1) + marked(service_image(moved_radio, 22));
  return merged_changed_list() + satellite + cable + created_network(40, 0x0304, terrestrial()) +
         created_transponder(0x0901, 474'000'000, 0, 8) + marked(service_image(numbered, 23)) +
         marked(service_image(counted, 24)) + marked(service_image(counted_radio, 25)) +
         marked(service_image(promoted_data, 26)) + marked(service_image(promoted_tv, 27)) +
         marked(service_image(third_kind, 28)) + marked(service_image(third_kind_elsewhere, 29)) +
         marked(service_image(no_kind, 30));
}

// --- A list made to hurt: every byte that is not looked at is garbage, pointers and counts of views included; services
// hang from transponders and networks that are not theirs; texts fill their fields; marks are set; the file goes on
// behind its last record.

inline constexpr service strange = {85, 0x0102, 0x0999, 11'902'499, 1, 0x8000 | 607, 0xFF, 0xFF, ""};
inline constexpr service stranger = {0, 0, 0x4242, 0, 0, 0xFFFF, 1, 0, ""};

// A service of a new list without any pointer or text in order.
inline bytes hostile_service(const service &data, std::size_t number, std::uint64_t high_half = 0) {
  bytes image = service_image(data, number);
  put_pattern(image, 0, 210, number);
  put(image, country_id_at, 2, 0x8000 + number);
  put(image, 228, 4, high_half);
  return image;
}

// A network or a transponder of which nothing is in order but the count of what follows.
inline bytes hostile_record(std::size_t size, std::size_t seed, std::size_t count_at, std::size_t count) {
  bytes image = pattern(size, seed);
  put(image, count_at, 2, count);
  return image;
}

inline bytes hostile_network() { return hostile_record(416, 33, tp_num_at, 2); }

inline bytes scan_hostile() {
  bytes list = pattern(460'032, 31);
  put(list, 459'610, 2, 2);
  service without_frequency = services[6];
  without_frequency.frequency = 0;
  service on_the_strangers = stranger;
  on_the_strangers.frequency = 1;
  const bytes first = hostile_record(416, 32, tp_num_at, 2) + hostile_record(336, 41, rch_num_at, 4) +
                      hostile_service(services[5], 61) + hostile_service(services[0], 62) +
                      hostile_service(strange, 63, 0x7FFFFFFF) + hostile_service(services[2], 64) +
                      hostile_record(336, 42, rch_num_at, 2) + hostile_service(services[1], 65) +
                      hostile_service(services[4], 66, 0x80000000);
  const bytes second =
      hostile_network() + hostile_record(336, 43, rch_num_at, 3) + hostile_service(without_frequency, 67) +
      hostile_service(stranger, 68) + hostile_service(stranger, 69) + hostile_record(336, 44, rch_num_at, 3) +
      hostile_service(on_the_strangers, 70) + hostile_service(services[7], 71, 5) + hostile_service(services[3], 72);
  return list + first + second + pattern(100, 45);
}

// The merged record: the new list's, without its pointers.
inline bytes kept_of(bytes hostile_image) {
  clear(hostile_image, 0, 8);
  return marked(std::move(hostile_image));
}

inline bytes merged_hostile() {
  bytes list = list_image();
  put(list, 459'610, 2, 3);
  put_merged(list, all_view, {0, 1, 2, 3, 4, 5, 6, 7}, {appended_entry(stranger, 0x3FFF)});
  put_merged(list, tv_view, {4, 3, 2, 0}, {appended_entry(stranger, 0x3FFF)});
  put_merged(list, promotion_view, {5, 3}, {appended_entry(strange, 607)});
  const bytes unchanged = merged_unchanged();
  // Behind the first network, its first transponder and two services, and its second, empty transponder.
  constexpr std::size_t second_transponder = 460'032 + 416 + 336 + 2 * 312;
  bytes receiving = unchanged.substr(second_transponder, 336);
  put(receiving, rch_num_at, 2, 1);
  return list + unchanged.substr(460'032, second_transponder - 460'032) + receiving +
         kept_of(hostile_service(strange, 63, 0x7FFFFFFF)) + unchanged.substr(second_transponder + 336) +
         created_network(0, 0, hostile_network()) + created_transponder(0x4242, 0, 0, 1) +
         kept_of(hostile_service(stranger, 68));
}

}  // namespace golden
