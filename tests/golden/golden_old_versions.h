// Channel files of the versions 7, 8 and 9, and the files of today that they become when they are repaired and saved.
// Like the golden file of today they are put together at documented offsets, without the library: what is carried over
// is stated here a second time, image by image.
#pragma once

#include <algorithm>
#include <vector>

#include "golden_file.h"

namespace golden::old_versions {

// Versions 7 and 8 have 168 bytes more behind every record.
inline std::size_t extra_of(int version) { return version < 9 ? 168 : 0; }

// Where a service has its reserved id, flag and the byte behind the flag.
inline std::size_t tail_of(int version) { return version < 9 ? 460 : 286; }

// Keeps the files of the versions apart.
inline std::size_t seed_of(int version) { return static_cast<std::size_t>(version) * 20; }

// The third one is the first one's twin, which no list takes in.
inline constexpr std::array<service, 6> services = {{
    {240, 0x0301, 0x0501, 10'714'250, 0, 0x3001, 1, 1, "Alpha Television"},
    {240, 0x0301, 0x0501, 10'714'250, 0, 0x3002, 2, 1, "Beta Radio"},
    {240, 0x0301, 0x0501, 10'714'250, 0, 0x3001, 25, 6, "Alpha again"},
    {239, 0x0302, 0x0502, 474'000'000, 0, 0x3003, 1, 3, "\x05Gamma"},
    {239, 0x0302, 0x0503, 482'000'000, 1, 0x3004, 2, 4, "Delta Radio"},
    {239, 0x0302, 0x0503, 482'000'000, 1, 0x0000, 12, 9, ""},
}};

// A service in today's places, no two fields alike. Its links hold what the writer's memory held.
inline bytes service_in_todays_places(int version, std::size_t number) {
  const service &data = services.at(number);
  const std::size_t seed = seed_of(version) + number;
  bytes image = pattern(312, seed);
  put_names(image, data, number);
  put(image, 210, 2, 0x4000 + seed);
  put(image, 212, 2, 0x4100 + seed);
  put(image, 214, 2, 0x4200 + seed);
  put_identity(image, data);
  put(image, 288, 1, 1U << number);
  return image;
}

// Versions 7 and 8 have the fields behind the PIDs at the end of the longer record.
inline bytes service_image(int version, std::size_t number) {
  const bytes today = service_in_todays_places(version, number);
  if (extra_of(version) == 0) {
    return today;
  }
  const std::size_t seed = seed_of(version) + 10 + number;
  return today.substr(0, 286) + pattern(174, seed) + today.substr(286, 4) + pattern(16, seed + 1);
}

inline bytes transponder_image(int version, std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation,
                               const std::vector<std::size_t> &numbers) {
  bytes image = pattern(336 + extra_of(version), ts_id);
  put(image, 8, 2, ts_id);
  put(image, 12, 4, frequency);
  put(image, 16, 1, polarisation);
  put(image, 18, 2, numbers.size());
  for (const std::size_t number : numbers) {
    image += service_image(version, number);
  }
  return image;
}

inline bytes network_image(int version, std::uint8_t net_index, std::uint16_t network_id, std::string_view name,
                           std::size_t transponders) {
  bytes image = pattern(416 + extra_of(version), net_index);
  put(image, 8, 1, net_index);
  put(image, 10, 2, network_id);
  put_text(image, 12, name);
  put(image, 76, 2, transponders);
  return image;
}

inline bytes hierarchy(int version) {
  return network_image(version, 240, 0x0301, "Satellite", 2) +
         transponder_image(version, 0x0501, 10'714'250, 0, {0, 1, 2}) +
         transponder_image(version, 0x0999, 11'900'000, 1, {}) + network_image(version, 17, 0x0303, "Empty", 0) +
         network_image(version, 239, 0x0302, "Cable", 2) + transponder_image(version, 0x0502, 474'000'000, 0, {3}) +
         transponder_image(version, 0x0503, 482'000'000, 1, {4, 5});
}

struct view {
  std::size_t array;
  std::size_t count;
  std::vector<std::size_t> numbers;
};

// ALL, TV, radio, USER, promotion and the first, second and last favourite group.
inline std::vector<view> views() {
  return {{80'112, 200'112, {0, 1, 3, 4, 5}}, {200'116, 296'116, {3, 0}},
          {296'120, 320'120, {4, 1}},         {339'364, 459'364, {5, 0, 4}},
          {459'368, 459'608, {1, 3}},         {320'124, 339'324, {0, 3, 1}},
          {320'124 + 960, 339'326, {4}},      {320'124 + 19 * 960, 339'324 + 38, {5, 1}}};
}

inline bytes entry_image(int version, const service &data, std::size_t number) {
  bytes image = pattern(24, seed_of(version) + number);
  put(image, 2, 2, number);
  put(image, 4, 2, 0x8000 + number);
  put_entry_identity(image, data);
  return image;
}

struct table {
  std::size_t array;
  std::size_t count;
  std::string_view kind;
  std::size_t groups;
};

inline constexpr std::array<table, 4> tables = {{{12, 52'012, "Provider", 5},
                                                 {52'014, 57'214, "Genre", 4},
                                                 {57'216, 78'016, "Country", 3},
                                                 {78'018, 80'098, "Favourites", 2}}};

// The settings of the list, each with a value of its own; the USER view is current.
inline void put_settings(bytes &list, int version) {
  const std::size_t seed = seed_of(version);
  golden::put_settings(list);
  put(list, 0, 2, static_cast<std::uint64_t>(version));
  put(list, 2, 1, seed);
  put(list, 7, 1, seed + 1);
  put(list, 8, 1, seed + 2);
  put(list, 10, 2, 0x8800 + seed);
  put(list, 459'610, 2, 3);
}

inline bytes list_image(int version) {
  bytes list(460'032, '\0');
  put_settings(list, version);
  put_reserved_bytes(list);
  for (const table &each : tables) {
    put_groups(list, each.array, each.count, seed_of(version) + each.groups, each.kind, each.groups);
  }
  std::size_t seed = 100;
  for (const view &each : views()) {
    for (std::size_t i = 0; i < each.numbers.size(); ++i) {
      list.replace(each.array + i * 24, 24, entry_image(version, services.at(each.numbers[i]), seed++));
    }
    put(list, each.count, 2, each.numbers.size());
  }
  return list + pattern(extra_of(version), seed_of(version));
}

inline bytes channel_file(int version) { return list_image(version) + hierarchy(version); }

// Bytes carried from one image to the same place of another.
inline void carry(bytes &image, const bytes &old, std::size_t at, std::size_t size) {
  std::copy_n(old.data() + at, size, image.data() + at);
}

inline void carry_entry(bytes &image, const bytes &old, std::size_t at) {
  put(image, at, 1, static_cast<std::uint8_t>(old.at(at + 6)) > 239 ? 1 : 0);
  carry(image, old, at + 2, 5);
  carry(image, old, at + 8, 5);
  carry(image, old, at + 14, 6);
}

inline void carry_group(bytes &image, const bytes &old, std::size_t at) {
  carry(image, old, at, 1);
  carry(image, old, at + 2, 4 + 97);
}

inline bytes repaired_list(int version) {
  const bytes old = list_image(version);
  bytes list(460'032, '\0');
  put(list, 0, 2, 10);
  put(list, 2, 1, version == 9 ? static_cast<std::uint8_t>(old.at(2)) : 255);
  put(list, 4, 2, 0xFFFF);
  carry(list, old, 6, 3);
  carry(list, old, 10, 2);
  carry(list, old, 80'100, 2);
  for (const table &each : tables) {
    carry(list, old, each.count, 2);
    for (std::size_t i = 0; i < each.groups; ++i) {
      carry_group(list, old, each.array + i * 104);
    }
  }
  for (const view &each : views()) {
    carry(list, old, each.count, 2);
    for (std::size_t i = 0; i < each.numbers.size(); ++i) {
      carry_entry(list, old, each.array + i * 24);
    }
  }
  put(list, 459'610, 2, 2);
  return list;
}

// The provider is the genre, and the fields behind the PIDs come from the record's end where it is longer.
inline bytes repaired_service(int version, std::size_t number) {
  const bytes old = service_image(version, number);
  bytes image(312, '\0');
  carry(image, old, 8, 206);
  image.replace(214, 2, old, 212, 2);
  carry(image, old, 216, 1);
  carry(image, old, 224, 21);
  carry(image, old, 246, 5);
  carry(image, old, 252, 5);
  carry(image, old, 258, 8);
  return image.replace(286, 4, old, tail_of(version), 4);
}

inline bytes repaired_transponder(int version, std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation,
                                  const std::vector<std::size_t> &numbers) {
  bytes image(336, '\0');
  put(image, 8, 2, ts_id);
  put(image, 12, 4, frequency);
  put(image, 16, 1, polarisation);
  put(image, 18, 2, numbers.size());
  for (const std::size_t number : numbers) {
    image += repaired_service(version, number);
  }
  return image;
}

// The whole field of the name is carried, what stands behind its terminator included.
inline bytes repaired_network(std::uint8_t net_index, std::uint16_t network_id, std::string_view name,
                              std::size_t transponders) {
  bytes image(416, '\0');
  put(image, 8, 1, net_index);
  put(image, 10, 2, network_id);
  carry(image, network_image(9, net_index, network_id, name, transponders), 12, 64);
  put(image, 76, 2, transponders);
  return image;
}

// Neither the transponder without services, nor the network without transponders, nor the twin.
inline bytes repaired_file(int version) {
  return repaired_list(version) + repaired_network(240, 0x0301, "Satellite", 1) +
         repaired_transponder(version, 0x0501, 10'714'250, 0, {0, 1}) + repaired_network(239, 0x0302, "Cable", 2) +
         repaired_transponder(version, 0x0502, 474'000'000, 0, {3}) +
         repaired_transponder(version, 0x0503, 482'000'000, 1, {4, 5});
}

// As functions of no argument, for tables of files.
template <int Version>
bytes channel_file() {
  return channel_file(Version);
}

template <int Version>
bytes repaired_file() {
  return repaired_file(Version);
}

}  // namespace golden::old_versions
