// A channel file to damage, and what is held of every damage: each service whose own bytes are whole comes back as it
// was, with its entries; nothing comes back that was not there, unless it is told to be in doubt.
#pragma once

#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "channel/persist/image.h"
#include "chlist/salvage/salvaging.h"
#include "support/channel_file.h"

namespace salvage_test {

using chlist::salvage_outcome;
using chlist::salvage_to_memory;
using test_support::array_place;
using test_support::bytes;
using test_support::channel_file;
using test_support::record_kind;
using test_support::record_place;
using test_support::service_data;

using namespace test_support::record_fields;

inline constexpr const char *nothing_left = "nothing of a channel list is left in it: there is nothing to recover";

using identity_key = std::tuple<int, int, int, std::int64_t, int, int>;

// What of a list is compared: the images of services by identity, and the images of entries by view.
struct contents {
  std::map<identity_key, bytes> services;
  std::map<std::string, std::vector<bytes>> views;
};

// The frequencies of the list are far apart, and in the middle of their bands.
inline std::int64_t band_of(std::uint64_t frequency) { return static_cast<std::int64_t>((frequency + 1250) / 2500); }

inline identity_key key_of(const bytes &service) {
  const auto field = [&](std::size_t at, std::size_t width) {
    return static_cast<int>(test_support::get(service, at, width));
  };
  return {field(service_field::net_index, 1),  field(service_field::network_id, 2),
          field(service_field::ts_id, 2),      band_of(test_support::get(service, service_field::frequency, 4)),
          field(service_field::service_id, 2), field(service_field::polarisation, 1)};
}

inline identity_key key_of_entry(const bytes &entry) {
  const auto field = [&](std::size_t at, std::size_t width) {
    return static_cast<int>(test_support::get(entry, at, width));
  };
  return {field(entry_field::net_index, 1),  field(entry_field::network_id, 2),
          field(entry_field::ts_id, 2),      band_of(test_support::get(entry, entry_field::frequency, 4)),
          field(entry_field::service_id, 2), field(entry_field::polarisation, 1)};
}

inline bytes image_of(const channel_st &service) {
  channel::persist::image<channel_st> image{};
  channel::persist::to_image(service, image);
  return {reinterpret_cast<const char *>(image.data()), image.size()};
}

inline bytes image_of(const virtual_channel_st &entry) {
  bytes image(reinterpret_cast<const char *>(&entry), channel::entry_bytes);
  image.resize(test_support::entry_size);
  return image;
}

inline contents contents_in_memory() {
  contents found;
  for (const channel_st *service : chlist::services_of(*get_channel_list())) {
    const bytes image = image_of(*service);
    found.services.emplace(key_of(image), image);
  }
  for (const chlist::list_view &view : chlist::views_of(*get_channel_list())) {
    std::vector<bytes> &entries = found.views[std::string(view.name.kind) + std::to_string(view.name.group)];
    for (const virtual_channel_st &entry : view.entries()) {
      entries.push_back(image_of(entry));
    }
  }
  return found;
}

struct range {
  std::size_t begin;
  std::size_t end;
};

// A damaged file, and the bytes of the original that are not in it as they were.
struct damage {
  std::string name;
  bytes file;
  std::vector<range> hit;

  [[nodiscard]] bool hits(std::size_t begin, std::size_t end) const {
    return std::ranges::any_of(hit, [=](const range &each) { return each.begin < end && begin < each.end; });
  }
};

inline std::string code_of_view(int code) {
  static const std::map<int, std::string> names = {{VIEW_ALL, "ALL-1"},
                                                   {VIEW_TV, "TV-1"},
                                                   {VIEW_RADIO, "radio-1"},
                                                   {VIEW_USER, "USER-1"},
                                                   {VIEW_PROMOTION, "promotion-1"}};
  const auto found = names.find(code);
  return found != names.end() ? found->second : "favourites" + std::to_string(code - VIEW_FAVOURITE);
}

class Salvaging : public test_support::store_test {
 protected:
  // Two networks, four transponders, twelve services, all of them in views.
  void SetUp() override {
    store_test::SetUp();
    verbosity_map[7] = -1;
    for (int i = 0; i < 12; ++i) {
      add_service(i);
    }
    original.group(GROUP_PROVIDER, 1, "Free").group(GROUP_FAV, 0, "Best").group(GROUP_FAV, 1, "Second best");
    original.group(GROUP_GENRE, 0, "Films").group(GROUP_COUNTRY, 0, "Here");
    for (std::size_t i = 0; i < services.size(); ++i) {
      add_entries(i);
    }
  }

  void add_service(int number) {
    service_data data;
    data.net_index = static_cast<std::uint8_t>(1 + number / 6);
    data.network_id = static_cast<std::uint16_t>(0x0102 + number / 6);
    data.ts_id = static_cast<std::uint16_t>(1000 + number / 3);
    data.frequency = 10'700'000 + number / 3 * 40'000;
    data.polarisation = static_cast<std::uint8_t>(number / 3 % 2);
    data.service_id = static_cast<std::uint16_t>(500 + number);
    data.service_type = number % 4 == 3 ? SERVICE_TYPE_RADIO : SERVICE_TYPE_TV;
    data.name = "Service " + std::to_string(number);
    services.push_back(data);
    original.service(data);
    original.set_last(record_kind::service, service_field::provider_id, 2, 1)
        .set_last(record_kind::service, service_field::video_pid, 2, 0x200U + static_cast<unsigned>(number));
  }

  void add_entries(std::size_t number) {
    const service_data &data = services[number];
    const int shown = static_cast<int>(number) + 1;
    original.entry(VIEW_ALL, data, shown);
    original.entry(data.service_type == SERVICE_TYPE_TV ? VIEW_TV : VIEW_RADIO, data, shown);
    original.entry(VIEW_FAVOURITE + static_cast<int>(number % 2), data, shown + 100, static_cast<int>(number / 2));
    if (number % 3 == 0) {
      original.entry(VIEW_USER, data, shown);
    }
  }

  static salvage_outcome salvage(const bytes &file) { return salvage_to_memory(std::as_bytes(std::span(file))); }

  [[nodiscard]] bytes original_of(const record_place &record) const {
    bytes image = original.data.substr(record.offset, record.size);
    return image;
  }

  static bool is_in_doubt(const salvage_outcome &outcome, int service_id) {
    const auto is_it = [=](const chlist::placed_service &service) { return service.known.id.service_id == service_id; };
    return std::ranges::any_of(outcome.contradicted, is_it) || std::ranges::any_of(outcome.of_another_list, is_it);
  }

  // Every service whose bytes are whole, and none that was not there.
  void expect_services(const damage &done, const contents &found, const salvage_outcome &outcome) const {
    std::set<identity_key> known;
    for (const record_place &record : original.records) {
      if (record.kind != record_kind::service) {
        continue;
      }
      const bytes image = original_of(record);
      known.insert(key_of(image));
      if (!done.hits(record.offset, record.offset + record.size)) {
        const auto back = found.services.find(key_of(image));
        ASSERT_NE(back, found.services.end()) << done.name << ": the service at " << record.offset << " is lost";
        EXPECT_EQ(back->second, image) << done.name << ": the service at " << record.offset << " is another";
      }
    }
    for (const auto &[key, image] : found.services) {
      EXPECT_TRUE(known.contains(key) || is_in_doubt(outcome, std::get<4>(key)))
          << done.name << ": a service that was not there: " << std::get<4>(key);
    }
  }

  // Every entry whose bytes are whole and whose service is back, in its order and with its numbers.
  void expect_entries(const damage &done, const contents &found) const {
    for (const array_place &place : test_support::view_places()) {
      const auto count = static_cast<std::size_t>(test_support::get(original.data, place.count, 2));
      std::vector<bytes> whole;
      std::set<bytes> all;
      for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = place.array + i * test_support::entry_size;
        const bytes image = original.data.substr(at, test_support::entry_size);
        all.insert(image);
        if (!done.hits(at, at + test_support::entry_size) && found.services.contains(key_of_entry(image))) {
          whole.push_back(image);
        }
      }
      const std::vector<bytes> &back = found.views.at(code_of_view(place.code));
      std::vector<bytes> back_whole;
      std::ranges::copy_if(back, std::back_inserter(back_whole),
                           [&](const bytes &image) { return std::ranges::find(whole, image) != whole.end(); });
      EXPECT_EQ(back_whole, whole) << done.name << ": entries of view " << place.code;
      EXPECT_LE(back.size(), count) << done.name << ": entries of view " << place.code << " that were not there";
    }
  }

  salvage_outcome expect_salvaged(const damage &done) const {
    SCOPED_TRACE(done.name);
    salvage_outcome outcome;
    const bool has_whole_service = std::ranges::any_of(original.records, [&](const record_place &record) {
      return record.kind == record_kind::service && !done.hits(record.offset, record.offset + record.size);
    });
    try {
      outcome = salvage(done.file);
    } catch (const std::runtime_error &error) {
      EXPECT_FALSE(has_whole_service) << error.what();
      EXPECT_STREQ(error.what(), nothing_left);
      return outcome;
    }
    const contents found = contents_in_memory();
    expect_services(done, found, outcome);
    expect_entries(done, found);
    return outcome;
  }

  // The borders of every record behind the list's own, and a place in its middle.
  [[nodiscard]] std::vector<std::size_t> borders() const {
    std::vector<std::size_t> places;
    for (const record_place &record : original.records) {
      if (record.kind != record_kind::list) {
        places.push_back(record.offset);
      }
    }
    return places;
  }
  [[nodiscard]] std::vector<std::size_t> places() const {
    std::vector<std::size_t> places = borders();
    for (const record_place &record : original.records) {
      if (record.kind != record_kind::list) {
        places.push_back(record.offset + record.size / 3);
      }
    }
    return places;
  }

  [[nodiscard]] damage truncated(std::size_t size) const {
    return {"cut at " + std::to_string(size), original.data.substr(0, size), {{size, original.data.size()}}};
  }

  [[nodiscard]] damage inserted(std::size_t at, const bytes &run) const {
    bytes file = original.data;
    file.insert(at, run);
    // Within a record the bytes are torn apart.
    return {std::to_string(run.size()) + " bytes inserted at " + std::to_string(at), file, {{at, at}}};
  }

  [[nodiscard]] damage cut_out(std::size_t at, std::size_t size) const {
    bytes file = original.data;
    file.erase(at, size);
    return {std::to_string(size) + " bytes cut out at " + std::to_string(at), file, {{at, at + size}}};
  }

  [[nodiscard]] damage overwritten(std::size_t at, const bytes &run) const {
    bytes file = original.data;
    const std::size_t size = std::min(run.size(), file.size() - at);
    file.replace(at, size, run.substr(0, size));
    return {std::to_string(run.size()) + " bytes overwritten at " + std::to_string(at), file, {{at, at + size}}};
  }

  channel_file original;
  std::vector<service_data> services;
};

inline bytes noise_of(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  bytes noise(size, '\0');
  std::ranges::generate(noise, [&random] { return static_cast<char>(random()); });
  return noise;
}

inline constexpr std::size_t run_sizes[] = {1, 4, 100, 312};

}  // namespace salvage_test
