#include "tool/salvage/damage_kinds.h"

#include <channel/records.h>

#include <algorithm>
#include <random>
#include <utility>

namespace salvage_test {
namespace {

using test_support::bytes;
using test_support::entry_size;
using test_support::get;
using test_support::group_place;
using test_support::group_size;
using test_support::list_size;
using test_support::network_size;
using test_support::put;
using test_support::service_size;
using test_support::transponder_size;
using test_support::view_place;

using namespace test_support::record_fields;

constexpr std::size_t sector = 512;
constexpr std::size_t page_size = 4096;

bytes noise(std::size_t size) {
  std::mt19937 random(2);
  bytes made(size, '\0');
  std::ranges::generate(made, [&random] { return static_cast<char>(random()); });
  return made;
}

bytes cut_at(const sound_file &file, std::size_t at) { return file.data.substr(0, at); }

bytes without(bytes data, std::size_t at, std::size_t size) { return data.erase(at, size); }

bytes with(bytes data, std::size_t at, const bytes &run) { return data.insert(at, run); }

bytes over(bytes data, std::size_t at, const bytes &run) {
  const std::size_t size = std::min(run.size(), data.size() - at);
  return data.replace(at, size, run, 0, size);
}

bytes zeroed(const bytes &data, std::size_t at, std::size_t size) { return over(data, at, bytes(size, '\0')); }

bytes erased(const bytes &data, std::size_t at, std::size_t size) { return over(data, at, bytes(size, '\xFF')); }

bytes swapped(const bytes &data, std::size_t a, std::size_t a_end, std::size_t b, std::size_t b_end) {
  return data.substr(0, a) + data.substr(b, b_end - b) + data.substr(a_end, b - a_end) + data.substr(a, a_end - a) +
         data.substr(b_end);
}

bytes flipped(bytes data, std::size_t at, unsigned bit) {
  data[at] = static_cast<char>(static_cast<unsigned char>(data[at]) ^ 1U << bit);
  return data;
}

bytes replaced(const bytes &data, std::string_view what, std::string_view by) {
  bytes made;
  for (std::size_t at = 0; at < data.size();) {
    if (std::string_view(data).substr(at).starts_with(what)) {
      made += by;
      at += what.size();
    } else {
      made += data[at++];
    }
  }
  return made;
}

std::size_t sector_of(std::size_t at) { return at / sector * sector; }

std::size_t middle(const std::vector<std::size_t> &records) { return records[records.size() / 2]; }

// Where the first network ends with all that is below it.
std::size_t end_of_first_network(const sound_file &file) {
  return file.networks.size() > 1 ? file.networks[1] : file.data.size();
}

// A transponder with its services.
std::pair<std::size_t, std::size_t> transponder_run(const sound_file &file, std::size_t number) {
  const std::size_t at = file.transponders[number];
  return {at, at + transponder_size + get(file.data, at + transponder_field::rch_num, 2) * service_size};
}

const std::size_t all_view = view_place(VIEW_ALL).array;
const std::size_t provider_table = group_place(GROUP_PROVIDER).array;

constexpr std::string_view log_text =
    "Nov 22 03:14:07 receiver kernel: ubi0 warning: ubi_io_read: error -74 while reading 4096 bytes\n";

constexpr damage_kind kinds[] = {
    {"cut", "in the provider table", [](auto &f, auto &) { return cut_at(f, provider_table + 20 * group_size); }},
    {"cut", "in the ALL view", [](auto &f, auto &) { return cut_at(f, f.middle_entry(VIEW_ALL) + 7); }},
    {"cut", "in the favourites", [](auto &f, auto &) { return cut_at(f, list_field::favorite_vch + 30); }},
    {"cut", "behind the list's own record", [](auto &f, auto &) { return cut_at(f, f.first_record()); }},
    {"cut", "a third into the records", [](auto &f, auto &) { return cut_at(f, f.among_records(33)); }},
    {"cut", "two thirds into the records", [](auto &f, auto &) { return cut_at(f, f.among_records(67)); }},
    {"cut", "the last byte", [](auto &f, auto &) { return cut_at(f, f.data.size() - 1); }},
    {"cut", "the first sector", [](auto &f, auto &) { return without(f.data, 0, sector); }},
    {"cut", "the list's own record", [](auto &f, auto &) { return without(f.data, 0, f.first_record()); }},

    {"shifted", "1 byte more in the settings", [](auto &f, auto &) { return with(f.data, 8, bytes(1, '\0')); }},
    {"shifted", "3 bytes more in the provider table",
     [](auto &f, auto &) { return with(f.data, provider_table + 2 * group_size + 5, "abc"); }},
    {"shifted", "100 bytes more in ALL",
     [](auto &f, auto &) { return with(f.data, f.middle_entry(VIEW_ALL) + 3, noise(100)); }},
    {"shifted", "a sector more in front of the records",
     [](auto &f, auto &) { return with(f.data, f.first_record(), bytes(sector, '\0')); }},
    {"shifted", "1 byte more in a service", [](auto &f, auto &) { return with(f.data, middle(f.services) + 50, "x"); }},
    {"shifted", "a page more among the records",
     [](auto &f, auto &) { return with(f.data, f.among_records(40), bytes(page_size, '\xFF')); }},
    {"shifted", "1 byte less in ALL", [](auto &f, auto &) { return without(f.data, f.middle_entry(VIEW_ALL) + 9, 1); }},
    {"shifted", "an entry less in ALL", [](auto &f, auto &) { return without(f.data, f.middle_entry(VIEW_ALL), 24); }},
    {"shifted", "100 bytes less in the provider table",
     [](auto &f, auto &) { return without(f.data, provider_table + 150, 100); }},
    {"shifted", "a sector less among the records",
     [](auto &f, auto &) { return without(f.data, f.among_records(50), sector); }},
    {"shifted", "1 byte less at two places of ALL",
     [](auto &f, auto &) {
       return without(without(f.data, f.middle_entry(VIEW_ALL) + entry_size * 3 + 2, 1), all_view + entry_size + 10, 1);
     }},
    {"shifted", "7 bytes less in ALL, 5 in the favourites",
     [](auto &f, auto &) {
       return without(without(f.data, list_field::favorite_vch + 30, 5), f.middle_entry(VIEW_ALL) + 4, 7);
     }},
    {"shifted", "bytes less in the providers, ALL and TV",
     [](auto &f, auto &) {
       return without(without(without(f.data, f.middle_entry(VIEW_TV) + 11, 2), f.middle_entry(VIEW_ALL) + 4, 9),
                      provider_table + 40, 30);
     }},
    {"shifted", "10 bytes less in ALL, 10 more in TV",
     [](auto &f, auto &) {
       return without(with(f.data, f.middle_entry(VIEW_TV) + 5, bytes(10, '\0')), f.middle_entry(VIEW_ALL) + 4, 10);
     }},

    {"zeroed", "the first sector", [](auto &f, auto &) { return zeroed(f.data, 0, sector); }},
    {"zeroed", "the second sector", [](auto &f, auto &) { return zeroed(f.data, sector, sector); }},
    {"zeroed", "the first page", [](auto &f, auto &) { return zeroed(f.data, 0, page_size); }},
    {"zeroed", "the first entry of ALL", [](auto &f, auto &) { return zeroed(f.data, all_view, entry_size); }},
    {"zeroed", "a sector in ALL",
     [](auto &f, auto &) { return zeroed(f.data, sector_of(f.middle_entry(VIEW_ALL)), sector); }},
    {"zeroed", "the whole ALL view", [](auto &f, auto &) { return zeroed(f.data, all_view, 5000 * entry_size + 2); }},
    {"zeroed", "the counts of ALL and TV",
     [](auto &f, auto &) { return zeroed(zeroed(f.data, list_field::vnumber, 2), list_field::tv_vnumber, 2); }},
    {"zeroed", "the names of the favourites",
     [](auto &f, auto &) { return zeroed(f.data, list_field::favorite_group, 20 * group_size); }},
    {"zeroed", "the favourites",
     [](auto &f, auto &) { return zeroed(f.data, list_field::favorite_vch, 800 * entry_size + 40); }},
    {"zeroed", "the genres",
     [](auto &f, auto &) { return zeroed(f.data, group_place(GROUP_GENRE).array, 50 * group_size + 2); }},
    {"zeroed", "the list's own record", [](auto &f, auto &) { return zeroed(f.data, 0, f.first_record()); }},
    {"zeroed", "a network's record", [](auto &f, auto &) { return zeroed(f.data, middle(f.networks), network_size); }},
    {"zeroed", "a transponder's record",
     [](auto &f, auto &) { return zeroed(f.data, middle(f.transponders), transponder_size); }},
    {"zeroed", "a service", [](auto &f, auto &) { return zeroed(f.data, middle(f.services), service_size); }},
    {"zeroed", "a page among the records",
     [](auto &f, auto &) { return zeroed(f.data, f.among_records(60), page_size); }},
    {"zeroed", "the last sector", [](auto &f, auto &) { return zeroed(f.data, f.data.size() - sector, sector); }},

    {"overwritten", "the first sector, by noise", [](auto &f, auto &) { return over(f.data, 0, noise(sector)); }},
    {"overwritten", "the first lines, by a log", [](auto &f, auto &) { return over(f.data, 0, bytes(log_text)); }},
    {"overwritten", "a sector of ALL, by noise",
     [](auto &f, auto &) { return over(f.data, sector_of(f.middle_entry(VIEW_ALL)), noise(sector)); }},
    {"overwritten", "a sector of ALL, erased",
     [](auto &f, auto &) { return erased(f.data, sector_of(f.middle_entry(VIEW_ALL)), sector); }},
    {"overwritten", "a page among the records, erased",
     [](auto &f, auto &) { return erased(f.data, f.among_records(30), page_size); }},
    {"overwritten", "a page among the records, by noise",
     [](auto &f, auto &) { return over(f.data, f.among_records(70), noise(page_size)); }},
    {"overwritten", "a service's name, by a log",
     [](auto &f, auto &) { return over(f.data, middle(f.services) + service_field::name, bytes(log_text)); }},

    {"swapped", "two services of a transponder",
     [](auto &f, auto &) {
       const std::size_t a = transponder_run(f, 0).first + transponder_size;
       return swapped(f.data, a, a + service_size, a + service_size, a + 2 * service_size);
     }},
    {"swapped", "services of two transponders",
     [](auto &f, auto &) {
       const std::size_t a = f.services.front();
       const std::size_t b = f.services.back();
       return swapped(f.data, a, a + service_size, b, b + service_size);
     }},
    {"swapped", "two transponders with their services",
     [](auto &f, auto &) {
       const auto [a, a_end] = transponder_run(f, 0);
       const auto [b, b_end] = transponder_run(f, f.transponders.size() - 1);
       return swapped(f.data, a, a_end, b, b_end);
     }},
    {"swapped", "two networks with all below them",
     [](auto &f, auto &) {
       const std::size_t behind = f.networks.size() > 2 ? f.networks[2] : f.data.size();
       return swapped(f.data, f.first_record(), end_of_first_network(f), end_of_first_network(f), behind);
     }},
    {"swapped", "two sectors of ALL",
     [](auto &f, auto &) {
       const std::size_t a = sector_of(all_view + sector);
       return swapped(f.data, a, a + sector, a + sector, a + 2 * sector);
     }},
    {"swapped", "two pages among the records",
     [](auto &f, auto &) {
       const std::size_t a = f.among_records(10);
       const std::size_t b = f.data.size() - page_size;
       return a + page_size < b ? swapped(f.data, a, a + page_size, b, b + page_size)
                                : swapped(f.data, a, a + sector, b, b + sector);
     }},
    {"swapped", "the halves of the file",
     [](auto &f, auto &) { return f.data.substr(f.data.size() / 2) + f.data.substr(0, f.data.size() / 2); }},

    {"duplicated", "the whole file", [](auto &f, auto &) { return f.data + f.data; }},
    {"duplicated", "the records", [](auto &f, auto &) { return f.data + f.data.substr(f.first_record()); }},
    {"duplicated", "the list's own record",
     [](auto &f, auto &) { return f.data.substr(0, f.first_record()) + f.data; }},
    {"duplicated", "a network with all below it",
     [](auto &f, auto &) {
       const std::size_t end = end_of_first_network(f);
       return with(f.data, end, f.data.substr(f.first_record(), end - f.first_record()));
     }},
    {"duplicated", "a service",
     [](auto &f, auto &) { return with(f.data, middle(f.services), f.data.substr(middle(f.services), service_size)); }},
    {"duplicated", "a page among the records",
     [](auto &f, auto &) { return with(f.data, f.among_records(50), f.data.substr(f.among_records(50), page_size)); }},

    {"text mode", "LF to CRLF", [](auto &f, auto &) { return replaced(f.data, "\n", "\r\n"); }},
    {"text mode", "CRLF to LF", [](auto &f, auto &) { return replaced(f.data, "\r\n", "\n"); }},
    {"text mode", "Latin-1 to UTF-8", [](auto &f, auto &) { return in_utf8(f.data); }},
    {"text mode", "Latin-1 to UTF-8, LF to CRLF",
     [](auto &f, auto &) { return replaced(in_utf8(f.data), "\n", "\r\n"); }},
    {"text mode", "LF to CRLF, and cut",
     [](auto &f, auto &) { return replaced(cut_at(f, f.among_records(67)), "\n", "\r\n"); }},

    {"two files", "another list behind it", [](auto &f, auto &o) { return f.data + o.data; }},
    {"two files", "another list in front of it", [](auto &f, auto &o) { return o.data + f.data; }},
    {"two files", "the records of another behind it",
     [](auto &f, auto &o) { return f.data + o.data.substr(o.first_record()); }},
    {"two files", "the list's own record of another",
     [](auto &f, auto &o) { return o.data.substr(0, o.first_record()) + f.data.substr(f.first_record()); }},
    {"two files", "a page of another among the records",
     [](auto &f, auto &o) { return over(f.data, f.among_records(40), o.data.substr(o.first_record(), page_size)); }},

    {"one bit", "of the version", [](auto &f, auto &) { return flipped(f.data, 0, 1); }},
    {"one bit", "of the current view", [](auto &f, auto &) { return flipped(f.data, list_field::vch_type, 0); }, true},
    {"one bit", "of a provider's id",
     [](auto &f, auto &) { return flipped(f.data, provider_table + group_field::id, 3); }},
    {"one bit", "of ALL's count", [](auto &f, auto &) { return flipped(f.data, list_field::vnumber, 2); }},
    {"one bit", "of the count of providers",
     [](auto &f, auto &) { return flipped(f.data, group_place(GROUP_PROVIDER).count, 0); }},
    {"one bit", "of an entry's service id",
     [](auto &f, auto &) { return flipped(f.data, f.middle_entry(VIEW_ALL) + entry_field::service_id, 6); }},
    {"one bit", "of an entry's number",
     [](auto &f, auto &) { return flipped(f.data, f.middle_entry(VIEW_ALL) + entry_field::major_ch_num, 4); }},
    {"one bit", "of the count of networks",
     [](auto &f, auto &) { return flipped(f.data, list_field::network_num, 1); }},
    {"one bit", "of a count of transponders",
     [](auto &f, auto &) { return flipped(f.data, middle(f.networks) + network_field::tp_num, 1); }},
    {"one bit", "of a count of services",
     [](auto &f, auto &) { return flipped(f.data, middle(f.transponders) + transponder_field::rch_num, 0); }},
    {"one bit", "of a service's id",
     [](auto &f, auto &) { return flipped(f.data, middle(f.services) + service_field::service_id, 5); }},
    {"one bit", "of a service's frequency",
     [](auto &f, auto &) { return flipped(f.data, middle(f.services) + service_field::frequency + 2, 3); }},
    {"one bit", "of a service's provider id",
     [](auto &f, auto &) { return flipped(f.data, middle(f.services) + service_field::provider_id, 6); }},
    {"one bit", "of a name's length",
     [](auto &f, auto &) { return flipped(f.data, middle(f.services) + service_field::name_len, 1); }},
    {"one bit", "of a name's letter",
     [](auto &f, auto &) { return flipped(f.data, middle(f.services) + service_field::name, 1); }, true},
    {"one bit", "of a PID",
     [](auto &f, auto &) { return flipped(f.data, middle(f.services) + service_field::audio_pid, 4); }, true},
};

}  // namespace

bytes in_utf8(const bytes &data) {
  bytes made;
  for (const char c : data) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80U) {
      made += c;
    } else {
      made += static_cast<char>(0xC0U | byte >> 6U);
      made += static_cast<char>(0x80U | (byte & 0x3FU));
    }
  }
  return made;
}

sound_file::sound_file(bytes file) : data(std::move(file)) {
  std::size_t at = list_size;
  for (std::uint64_t n = get(data, list_field::network_num, 2); n > 0; --n) {
    networks.push_back(at);
    std::uint64_t below = get(data, at + network_field::tp_num, 2);
    for (at += network_size; below > 0; --below) {
      transponders.push_back(at);
      std::uint64_t count = get(data, at + transponder_field::rch_num, 2);
      for (at += transponder_size; count > 0; --count, at += service_size) {
        services.push_back(at);
      }
    }
  }
}

std::size_t sound_file::used_entries(int view) const { return get(data, view_place(view).count, 2); }

std::size_t sound_file::middle_entry(int view) const {
  return view_place(view).array + used_entries(view) / 2 * entry_size;
}

std::span<const damage_kind> damage_kinds() { return kinds; }

}  // namespace salvage_test
