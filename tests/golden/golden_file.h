// The channel file that every build must read and write bit for bit, put together at documented offsets. This writer
// knows nothing of the library: it shares neither records nor code with it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace golden {

using bytes = std::string;

inline void put(bytes &image, std::size_t at, std::size_t width, std::uint64_t value) {
  bytes field(width, '\0');
  for (std::size_t i = 0; i < width; ++i) {
    field[i] = static_cast<char>(value >> 8 * i & 0xFF);
  }
  image.replace(at, width, field);
}

// A text and the zero behind it; what follows in the field stays as it is.
inline void put_text(bytes &image, std::size_t at, std::string_view text) {
  image.replace(at, text.size(), text);
  image.at(at + text.size()) = '\0';
}

// Bytes from 1 to 255, no two alike within 255. Every byte that no field is put over keeps its own.
inline bytes pattern(std::size_t size, std::size_t seed) {
  bytes image(size, '\0');
  for (std::size_t i = 0; i < size; ++i) {
    image[i] = static_cast<char>(1 + (seed * 29 + i * 11) % 255);
  }
  return image;
}

inline void put_pattern(bytes &image, std::size_t at, std::size_t size, std::size_t seed) {
  image.replace(at, size, pattern(size, seed));
}

inline void clear(bytes &image, std::size_t at, std::size_t size) { image.replace(at, size, size, '\0'); }

// A service, and with it what identifies its transponder and network.
struct service {
  std::uint8_t net_index;
  std::uint16_t network_id;
  std::uint16_t ts_id;
  std::uint32_t frequency;
  std::uint8_t polarisation;
  std::uint16_t service_id;
  std::uint8_t type;
  std::uint8_t source;
  std::string_view name;
};

inline constexpr std::array<service, 8> services = {{
    {85, 0x0102, 0x0405, 11'727'480, 0, 0x1001, 1, 1, "First Television"},
    {85, 0x0102, 0x0405, 11'727'480, 0, 0x1002, 2, 1, "First Radio"},
    {85, 0x0102, 0x0506, 12'015'000, 1, 0x1003, 1, 2, "\x05Zweites Programm"},
    {17, 0x0203, 0x0607, 562'000'000, 0, 0x2001, 1, 3, "Cable One"},
    {17, 0x0203, 0x0607, 562'000'000, 0, 0x2002, 1, 3, "Cable Two"},
    {17, 0x0203, 0x0607, 562'000'000, 0, 0x2003, 12, 9, "Data Service"},
    {17, 0x0203, 0x0708, 4'294'967'295, 1, 0x2004, 2, 4, "Last Radio"},
    {17, 0x0203, 0x0708, 4'294'967'295, 1, 0x0000, 25, 5, ""},
}};

// The names of a service, the second one made of its number.
inline void put_names(bytes &image, const service &data, std::size_t number) {
  put_text(image, 9, data.name);
  put(image, 106, 2, data.name.size());
  put_text(image, 109, "Second name of " + std::to_string(number));
  put(image, 206, 2, 16);
}

// What identifies a service, and its type and source.
inline void put_identity(bytes &image, const service &data) {
  put(image, 216, 1, data.net_index);
  put(image, 224, 8, data.frequency);
  put(image, 232, 1, data.type);
  put(image, 233, 1, data.source);
  put(image, 234, 2, data.ts_id);
  put(image, 240, 2, data.network_id);
  put(image, 242, 2, data.service_id);
  put(image, 244, 1, data.polarisation);
}

// What identifies the service of an entry.
inline void put_entry_identity(bytes &image, const service &data) {
  put(image, 6, 1, data.net_index);
  put(image, 8, 4, data.frequency);
  put(image, 12, 1, data.polarisation);
  put(image, 14, 2, data.service_id);
  put(image, 16, 2, data.network_id);
  put(image, 18, 2, data.ts_id);
}

// A service with a value in every field; the number tells it from the others.
inline bytes service_image(const service &data, std::size_t number) {
  bytes image = pattern(312, 100 + number);
  clear(image, 0, 8);
  put_names(image, data, number);
  put(image, 210, 2, 0);
  put(image, 212, 2, 300 + number);
  put(image, 214, 2, 200 + number);
  put_identity(image, data);
  put(image, 246, 2, 0x0100 + number);
  put(image, 248, 2, 0x0200 + number);
  put(image, 250, 1, 0x10 + number);
  put(image, 252, 2, 0x0300 + number);
  put(image, 254, 2, 0x0400 + number);
  put(image, 256, 1, 0x20 + number);
  put(image, 258, 2, 0x0500 + number);
  put(image, 260, 2, 0x0600 + number);
  put(image, 286, 2, 0x0700 + number);
  put(image, 288, 1, 1U << number % 8);
  put(image, 298, 2, 0xFF00 + number);
  return image;
}

inline bytes service_image(std::size_t number) { return service_image(services.at(number), number); }

// A transponder, empty or with services first to first + count - 1.
inline bytes transponder_image(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation,
                               std::size_t first, std::size_t count) {
  bytes image = pattern(336, ts_id);
  clear(image, 0, 8);
  put(image, 8, 2, ts_id);
  put(image, 12, 4, frequency);
  put(image, 16, 1, polarisation);
  put(image, 18, 2, count);
  clear(image, 24, 8);
  for (std::size_t number = first; number < first + count; ++number) {
    image += service_image(number);
  }
  return image;
}

inline bytes network_image(std::uint8_t net_index, std::uint16_t network_id, std::string_view name,
                           std::size_t transponders) {
  bytes image = pattern(416, net_index);
  clear(image, 0, 8);
  put(image, 8, 1, net_index);
  put(image, 10, 2, network_id);
  put_text(image, 12, name);
  put(image, 76, 2, transponders);
  clear(image, 80, 8);
  return image;
}

inline bytes hierarchy() {
  return network_image(85, 0x0102, "Satellite", 3) + transponder_image(0x0405, 11'727'480, 0, 0, 2) +
         transponder_image(0x0999, 11'900'000, 1, 0, 0) + transponder_image(0x0506, 12'015'000, 1, 2, 1) +
         network_image(17, 0x0203, "Cable", 2) + transponder_image(0x0607, 562'000'000, 0, 3, 3) +
         transponder_image(0x0708, 4'294'967'295, 1, 6, 2);
}

// An entry of a view for a service; what distinguishes views from one another is the seed.
inline bytes entry_image(std::size_t number, std::size_t seed) {
  const service &data = services.at(number);
  bytes image = pattern(24, seed * 8 + number);
  put(image, 0, 1, 0xF0 + number);
  put(image, 1, 1, 0x40 + number);
  put(image, 2, 2, 100 * seed + number);
  put(image, 4, 2, 0x8000 + seed);
  put_entry_identity(image, data);
  clear(image, 20, 4);
  return image;
}

template <std::size_t Size>
void put_view(bytes &list, std::size_t array, std::size_t count, std::size_t seed,
              const std::array<std::size_t, Size> &numbers) {
  for (std::size_t i = 0; i < Size; ++i) {
    list.replace(array + i * 24, 24, entry_image(numbers[i], seed));
  }
  put(list, count, 2, Size);
}

template <std::size_t Size>
void put_favourites(bytes &list, std::size_t group, const std::array<std::size_t, Size> &numbers) {
  put_view(list, 320'124 + group * 40 * 24, 339'324 + group * 2, 10 + group, numbers);
}

inline void put_groups(bytes &list, std::size_t array, std::size_t count, std::size_t first_id, std::string_view kind,
                       std::size_t groups) {
  for (std::size_t i = 0; i < groups; ++i) {
    bytes image = pattern(104, first_id + i);
    put(image, 2, 2, first_id + i);
    const bytes name = bytes(kind) + ' ' + std::to_string(i);
    put(image, 4, 2, name.size());
    put_text(image, 6, name);
    list.replace(array + i * 104, 104, image);
  }
  put(list, count, 2, groups);
}

inline void put_settings(bytes &list) {
  put(list, 0, 2, 10);
  put(list, 2, 1, 0x81);
  put(list, 3, 1, 0x82);
  put(list, 4, 2, 0x8384);
  put(list, 6, 1, 2);
  put(list, 7, 1, 0x85);
  put(list, 8, 1, 0x86);
  put(list, 10, 2, 0x8788);
  // The USER view is the one that becomes current without a change to any setting.
  put(list, 80'100, 2, 3);
  put(list, 459'610, 2, 2);
}

inline void put_reserved_bytes(bytes &list) {
  struct {
    std::size_t at, size;
  } const reserved[] = {{9, 1},       {80'102, 2},  {200'114, 2},  {296'118, 2},  {320'122, 2},
                        {459'366, 2}, {459'612, 4}, {459'624, 72}, {459'704, 16}, {459'728, 304}};
  for (const auto &[at, size] : reserved) {
    put_pattern(list, at, size, at);
  }
}

inline bytes list_image() {
  bytes list(460'032, '\0');
  put_settings(list);
  put_reserved_bytes(list);
  put_groups(list, 12, 52'012, 200, "Provider", 8);
  put_groups(list, 52'014, 57'214, 300, "Genre", 8);
  put_groups(list, 57'216, 78'016, 400, "Country", 3);
  put_groups(list, 78'018, 80'098, 500, "Favourites", 3);
  put_view(list, 80'112, 200'112, 1, std::to_array<std::size_t>({0, 1, 2, 3, 4, 5, 6, 7}));
  put_view(list, 200'116, 296'116, 2, std::to_array<std::size_t>({4, 3, 2, 0}));
  put_view(list, 296'120, 320'120, 3, std::to_array<std::size_t>({6, 1}));
  put_view(list, 339'364, 459'364, 4, std::to_array<std::size_t>({7, 0, 5}));
  put_view(list, 459'368, 459'608, 5, std::to_array<std::size_t>({5, 3}));
  put_favourites(list, 0, std::to_array<std::size_t>({0, 2, 1}));
  put_favourites(list, 1, std::to_array<std::size_t>({6}));
  put_favourites(list, 2, std::to_array<std::size_t>({3, 4, 5, 7}));
  put_favourites(list, 19, std::to_array<std::size_t>({1, 6}));
  return list;
}

inline bytes channel_file() { return list_image() + hierarchy(); }

}  // namespace golden
