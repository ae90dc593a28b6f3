// Files damaged in every way that is known from the field, with the undamaged file as the measure: every service whose
// own bytes are whole comes back as it was, with its entries; nothing comes back that was not there, unless it is told
// to be in doubt.
#include "chlist/salvage/salvaging.h"

#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "channel/persist/image.h"
#include "support/channel_file.h"

namespace {

using chlist::all_view;
using chlist::salvage_outcome;
using chlist::salvage_to_memory;
using test_support::array_place;
using test_support::bytes;
using test_support::channel_file;
using test_support::record_kind;
using test_support::record_place;
using test_support::service_data;

constexpr const char *nothing_left = "nothing of a channel list is left in it: there is nothing to recover";

using identity_key = std::tuple<int, int, int, std::int64_t, int, int>;

// What of a list is compared: the images of services by identity, and the images of entries by view.
struct contents {
  std::map<identity_key, bytes> services;
  std::map<std::string, std::vector<bytes>> views;
};

// The frequencies of the list are far apart, and in the middle of their bands.
std::int64_t band_of(std::uint64_t frequency) { return static_cast<std::int64_t>((frequency + 1250) / 2500); }

identity_key key_of(const bytes &service) {
  using test_support::get;
  return {static_cast<int>(get(service, 216, 1)), static_cast<int>(get(service, 240, 2)),
          static_cast<int>(get(service, 234, 2)), band_of(get(service, 224, 4)),
          static_cast<int>(get(service, 242, 2)), static_cast<int>(get(service, 244, 1))};
}

identity_key key_of_entry(const bytes &entry) {
  using test_support::get;
  return {static_cast<int>(get(entry, 6, 1)), static_cast<int>(get(entry, 16, 2)), static_cast<int>(get(entry, 18, 2)),
          band_of(get(entry, 8, 4)),          static_cast<int>(get(entry, 14, 2)), static_cast<int>(get(entry, 12, 1))};
}

bytes image_of(const channel_st &service) {
  channel::persist::image<channel_st> image{};
  channel::persist::to_image(service, image);
  return {reinterpret_cast<const char *>(image.data()), image.size()};
}

bytes image_of(const virtual_channel_st &entry) {
  bytes image(reinterpret_cast<const char *>(&entry), channel::persist::entry_bytes);
  image.resize(test_support::entry_size);
  return image;
}

contents contents_in_memory() {
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

std::string code_of_view(int code) {
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
    original.set_last(record_kind::service, 214, 2, 1)
        .set_last(record_kind::service, 252, 2, 0x200U + static_cast<unsigned>(number));
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
    return std::ranges::any_of(outcome.contradicted, [=](const chlist::placed_service &service) {
      return service.known.id.service_id == service_id;
    });
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

bytes noise_of(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  bytes noise(size, '\0');
  std::ranges::generate(noise, [&random] { return static_cast<char>(random()); });
  return noise;
}

constexpr std::size_t run_sizes[] = {1, 4, 100, 312};

TEST_F(Salvaging, AnUndamagedFileComesBackWhole) {
  const salvage_outcome outcome = expect_salvaged({"nothing", original.data, {}});

  EXPECT_FALSE(outcome.has_findings());
  EXPECT_EQ(outcome.recovered.networks, 2U);
  EXPECT_EQ(outcome.recovered.transponders, 4U);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_EQ(outcome.list.counts.size(), 0U);
}

TEST_F(Salvaging, ATruncatedFileKeepsEveryWholeService) {
  for (const std::size_t border : places()) {
    for (const std::size_t size : {border - 1, border, border + 1}) {
      const salvage_outcome outcome = expect_salvaged(truncated(size));

      EXPECT_TRUE(outcome.recovered.services == 0 || outcome.has_findings()) << size;
    }
  }
}

TEST_F(Salvaging, WrongCountsOfRecordsLoseNothing) {
  std::vector<std::size_t> counts = {459'610};
  for (const record_place &record : original.records) {
    if (record.kind == record_kind::network) {
      counts.push_back(record.offset + 76);
    } else if (record.kind == record_kind::transponder) {
      counts.push_back(record.offset + 18);
    }
  }
  for (const std::size_t at : counts) {
    const std::uint64_t right = test_support::get(original.data, at, 2);
    for (const std::uint64_t wrong : {right - 1, right + 1, std::uint64_t{0}, std::uint64_t{65535}}) {
      bytes file = original.data;
      test_support::put(file, at, 2, wrong);

      const salvage_outcome outcome =
          expect_salvaged({"count " + std::to_string(wrong) + " at " + std::to_string(at), file, {}});

      EXPECT_EQ(outcome.has_findings(), wrong > right) << at << ' ' << wrong;
      EXPECT_EQ(outcome.missing.networks + outcome.missing.transponders + outcome.missing.services,
                wrong > right ? wrong - right : 0U);
      EXPECT_EQ(outcome.recovered.transponders, 4U) << at << ' ' << wrong;
    }
  }
}

TEST_F(Salvaging, WrongCountsOfViewsLoseNothing) {
  for (const array_place &place : test_support::view_places()) {
    const std::uint64_t right = test_support::get(original.data, place.count, 2);
    for (const std::uint64_t wrong : {right - 1, right + 1, std::uint64_t{0}, std::uint64_t{65535}}) {
      bytes file = original.data;
      test_support::put(file, place.count, 2, wrong);

      const salvage_outcome outcome =
          expect_salvaged({"view " + std::to_string(place.code) + " counts " + std::to_string(wrong), file, {}});

      EXPECT_FALSE(outcome.has_findings()) << place.code << ' ' << wrong;
    }
  }
}

TEST_F(Salvaging, WrongCountsOfGroupsLoseNothing) {
  for (const array_place &place : test_support::group_places()) {
    const std::uint64_t right = test_support::get(original.data, place.count, 2);
    for (const std::uint64_t wrong :
         {right - 1, right + 1, std::uint64_t{0}, std::uint64_t{65535}, std::uint64_t{32767}}) {
      bytes file = original.data;
      test_support::put(file, place.count, 2, wrong);

      const salvage_outcome outcome = expect_salvaged({"groups " + std::to_string(place.code), file, {}});

      EXPECT_FALSE(outcome.has_findings());
      ASSERT_EQ(outcome.list.counts.size(), 1U) << place.code << ' ' << wrong;
      EXPECT_EQ(outcome.list.counts[0].present, static_cast<int>(right)) << place.code << ' ' << wrong;
    }
  }
}

TEST_F(Salvaging, InsertedRunsLoseOnlyTheRecordTheyTear) {
  for (const std::size_t at : places()) {
    for (const std::size_t size : run_sizes) {
      expect_salvaged(inserted(at, bytes(size, '\0')));
      expect_salvaged(inserted(at, noise_of(size, 1)));
    }
  }
}

TEST_F(Salvaging, RunsThatAreCutOutLoseOnlyTheirRecords) {
  for (const std::size_t at : places()) {
    for (const std::size_t size : run_sizes) {
      if (at + size <= original.data.size()) {
        expect_salvaged(cut_out(at, size));
      }
    }
  }
}

TEST_F(Salvaging, OverwrittenRunsLoseOnlyTheirRecords) {
  for (const std::size_t at : places()) {
    for (const std::size_t size : run_sizes) {
      expect_salvaged(overwritten(at, bytes(size, '\0')));
      expect_salvaged(overwritten(at, noise_of(size, 2)));
      expect_salvaged(overwritten(at, bytes(size, '\xFF')));
    }
  }
}

// The identity is where damage does most: every byte of it is hit, alone and with what is behind it.
TEST_F(Salvaging, AServiceWithADamagedIdentityIsNotTakenForAnother) {
  const record_place &record = original.records[5];
  ASSERT_EQ(record.kind, record_kind::service);
  for (std::size_t at = 216; at < 245; ++at) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{2}, std::size_t{4}}) {
      if (at < 217 || at >= 224) {
        expect_salvaged(overwritten(record.offset + at, bytes(size, '\0')));
        expect_salvaged(overwritten(record.offset + at, noise_of(size, 3)));
      }
    }
  }
}

TEST_F(Salvaging, RecordsThatChangedPlacesAreAllFound) {
  for (std::size_t first = 1; first < original.records.size(); ++first) {
    for (std::size_t second = first + 1; second < original.records.size(); ++second) {
      const record_place &a = original.records[first];
      const record_place &b = original.records[second];
      if (second > first + 4 && second % 3 != 0) {
        continue;
      }
      const bytes between = original.data.substr(a.offset + a.size, b.offset - a.offset - a.size);
      const bytes file = original.data.substr(0, a.offset) + original_of(b) + between + original_of(a) +
                         original.data.substr(b.offset + b.size);

      expect_salvaged({"swapped " + std::to_string(first) + " and " + std::to_string(second), file, {}});
    }
  }
}

TEST_F(Salvaging, DamagedViewsKeepTheEntriesThatAreWhole) {
  for (const array_place &place : test_support::view_places()) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{24}, std::size_t{70}}) {
      for (const std::size_t offset : {std::size_t{0}, std::size_t{24}, std::size_t{37}}) {
        damage zeros = overwritten(place.array + offset, bytes(size, '\0'));
        damage noise = overwritten(place.array + offset, noise_of(size, 4));
        expect_salvaged(zeros);
        expect_salvaged(noise);
      }
    }
  }
}

TEST_F(Salvaging, RunsInsertedIntoTheListsRecordShiftItBack) {
  for (const std::size_t at : {std::size_t{8}, std::size_t{30'000}, std::size_t{79'000}, std::size_t{80'112},
                               std::size_t{80'112 + 50}, std::size_t{150'000}, std::size_t{250'000},
                               std::size_t{320'124 + 24}, std::size_t{400'000}, std::size_t{459'900}}) {
    for (const std::size_t size : run_sizes) {
      const salvage_outcome outcome = expect_salvaged(inserted(at, bytes(size, '\0')));

      // Behind the last entry that is in use nothing tells: the bytes are found in front of the first network.
      EXPECT_EQ(outcome.shift, at < 400'000 ? static_cast<std::ptrdiff_t>(size) : 0) << at;
      EXPECT_EQ(outcome.unexplained.size(), at < 400'000 ? 0U : 1U) << at;
    }
  }
}

TEST_F(Salvaging, RunsCutOutOfTheListsRecordShiftItBack) {
  for (const std::size_t at : {std::size_t{30'000}, std::size_t{80'112}, std::size_t{80'112 + 50}, std::size_t{150'000},
                               std::size_t{250'000}, std::size_t{320'124 + 24}, std::size_t{400'000}}) {
    for (const std::size_t size : run_sizes) {
      expect_salvaged(cut_out(at, size));
    }
  }
}

TEST_F(Salvaging, WithoutAnyViewTheServicesAreNumberedAnew) {
  const salvage_outcome outcome = salvage(overwritten(0, noise_of(test_support::list_size, 5)).file);

  EXPECT_TRUE(outcome.has_lost_settings);
  EXPECT_EQ(outcome.list.all, all_view::numbered_anew);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_EQ(get_channel_list()->vnumber, 12);
  EXPECT_EQ(get_channel_list()->vch[11].major_ch_num, 12);
  EXPECT_EQ(get_channel_list()->tv_vnumber, 9);
  EXPECT_EQ(get_channel_list()->radio_vnumber, 3);
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, LostRecordsAboveServicesAreMadeAnew) {
  const record_place &network = original.records[1];
  const salvage_outcome outcome =
      expect_salvaged(overwritten(network.offset, bytes(network.size + test_support::transponder_size, '\0')));

  ASSERT_EQ(outcome.made.size(), 2U);
  EXPECT_EQ(outcome.made[0].kind, "network");
  EXPECT_EQ(outcome.made[0].id.network_id, 0x0102);
  EXPECT_EQ(outcome.made[1].kind, "transponder");
  EXPECT_EQ(outcome.made[1].id.ts_id, 1000);
  EXPECT_EQ(outcome.recovered.services, 12U);
}

TEST_F(Salvaging, WhatIsLostIsTold) {
  const record_place &service = original.records[4];
  ASSERT_EQ(service.kind, record_kind::service);

  const salvage_outcome outcome = expect_salvaged(overwritten(service.offset, bytes(service.size, '\0')));

  EXPECT_EQ(outcome.missing.services, 1U);
  ASSERT_EQ(outcome.unexplained.size(), 1U);
  EXPECT_EQ(outcome.unexplained[0].offset, service.offset);
  EXPECT_EQ(outcome.unexplained[0].size, service.size);
  ASSERT_EQ(outcome.list.lost_entries.size(), 3U);
  EXPECT_EQ(outcome.list.lost_entries[0].view.kind, "ALL");
  EXPECT_EQ(outcome.list.lost_entries[0].number, 2);
}

TEST_F(Salvaging, EmptyTranspondersAndNetworksStay) {
  original.transponder(2000, 12'000'000, 1).network(9, 9, "Nobody there");

  const salvage_outcome outcome = salvage(original.data);

  EXPECT_FALSE(outcome.has_findings());
  EXPECT_EQ(outcome.recovered.networks, 3U);
  EXPECT_EQ(outcome.recovered.transponders, 5U);
}

TEST_F(Salvaging, ServicesInNoViewAreFoundByTheirSurroundings) {
  channel_file file;
  for (const service_data &data : services) {
    file.service(data);
  }
  for (const std::size_t size : run_sizes) {
    bytes torn = file.data;
    torn.insert(file.records[4].offset, noise_of(size, 6));

    const salvage_outcome outcome = salvage(torn);

    EXPECT_EQ(outcome.recovered.services, 12U) << size;
  }
}

// Services that no view lists are claimed by counts alone.
TEST_F(Salvaging, WhatCountsClaimBehindTheEndOfTheFileIsMissing) {
  channel_file file;
  for (const service_data &data : services) {
    file.service(data);
  }
  file.entry(VIEW_ALL, services[0], 1);
  const auto cut_in_front_of = [&file](std::size_t record) {
    const chlist::missing_records missing = salvage(file.data.substr(0, file.records[record].offset)).missing;
    return std::vector<std::size_t>{missing.networks, missing.transponders, missing.services};
  };

  // The list, a network, a transponder, three services, a transponder, three services, and the same again.
  EXPECT_EQ(cut_in_front_of(15), (std::vector<std::size_t>{0, 1, 0}));
  EXPECT_EQ(cut_in_front_of(10), (std::vector<std::size_t>{1, 0, 0}));
  EXPECT_EQ(cut_in_front_of(8), (std::vector<std::size_t>{1, 0, 2}));
  EXPECT_EQ(cut_in_front_of(6), (std::vector<std::size_t>{1, 1, 0}));
  EXPECT_TRUE(salvage(file.data.substr(0, file.records[15].offset)).has_findings());
  EXPECT_FALSE(salvage(file.data).has_findings());
}

TEST_F(Salvaging, ATransponderWithoutItsServicesCountsThem) {
  const salvage_outcome outcome = expect_salvaged(truncated(original.records[7].offset));

  ASSERT_EQ(original.records[6].kind, record_kind::transponder);
  ASSERT_EQ(outcome.forsaken.size(), 1U);
  EXPECT_EQ(outcome.forsaken[0].kind, "transponder");
  EXPECT_EQ(outcome.forsaken[0].offset, original.records[6].offset);
  EXPECT_EQ(outcome.missing.services, 3U);
}

TEST_F(Salvaging, ANetworkThatIsThereTwiceIsNotMissing) {
  original.network(1, 0x0102, "Network").transponder(3000, 12'500'000, 1);

  EXPECT_TRUE(salvage(original.data).missing.is_none());
}

TEST_F(Salvaging, AnUnlistedServiceBesideAStaleEntryComesBack) {
  service_data unlisted = services.back();
  unlisted.service_id = 900;
  service_data gone = services.back();
  gone.service_id = 901;
  original.service(unlisted).entry(VIEW_ALL, gone, 13);

  const salvage_outcome outcome = salvage(original.data);

  EXPECT_EQ(outcome.recovered.services, 13U);
  ASSERT_EQ(outcome.contradicted.size(), 1U);
  EXPECT_EQ(outcome.contradicted[0].known.id.service_id, 900);
  EXPECT_EQ(outcome.list.lost_entries.size(), 1U);
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, LongRunsCutOutOfTheListsRecordLoseOnlyTheirArrays) {
  for (const std::size_t at : {std::size_t{8}, std::size_t{1'000}, std::size_t{80'112}, std::size_t{80'112 + 60}}) {
    for (const std::size_t size :
         {std::size_t{65'536}, std::size_t{65'537}, std::size_t{120'000}, std::size_t{300'001}, std::size_t{379'000}}) {
      const damage done = cut_out(at, size);
      const salvage_outcome outcome = expect_salvaged(done);

      EXPECT_EQ(outcome.recovered.services, 12U) << done.name;
      EXPECT_EQ(outcome.recovered.transponders, 4U) << done.name;
      EXPECT_EQ(get_channel_list()->vnumber, 12) << done.name;
      EXPECT_TRUE(outcome.has_findings()) << done.name;
    }
  }
}

TEST_F(Salvaging, ServicesComeBackWithoutTheListsRecord) {
  for (const std::size_t left :
       {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{12}, std::size_t{50'000}}) {
    const salvage_outcome outcome = expect_salvaged(cut_out(left, test_support::list_size - left));

    EXPECT_EQ(outcome.recovered.services, 12U) << left;
    EXPECT_EQ(outcome.list_bytes_missing, test_support::list_size - left);
    EXPECT_EQ(outcome.list.all, all_view::numbered_anew) << left;
    EXPECT_EQ(get_channel_list()->vch[11].major_ch_num, 12) << left;
  }
}

TEST_F(Salvaging, TheEndOfTheListsRecordMayBeCutOutWithTheFirstRecords) {
  const record_place &service = original.records[3];
  ASSERT_EQ(service.kind, record_kind::service);
  for (const std::size_t left : {std::size_t{400'000}, std::size_t{459'700}, std::size_t{460'031}}) {
    const salvage_outcome outcome = expect_salvaged(cut_out(left, service.offset - left));

    EXPECT_EQ(outcome.recovered.services, 12U) << left;
    EXPECT_EQ(outcome.list_bytes_missing, test_support::list_size - left);
    EXPECT_TRUE(outcome.missing.networks == 0) << left;
  }
}

TEST_F(Salvaging, TheAllViewIsBuiltAnewWithTheNumbersOfOtherViews) {
  const salvage_outcome outcome =
      expect_salvaged(overwritten(80'112, bytes(test_support::entry_size * services.size(), '\0')));

  EXPECT_EQ(outcome.list.all, all_view::filled);
  EXPECT_EQ(outcome.list.counts.size(), 1U);
  ASSERT_EQ(get_channel_list()->vnumber, 12);
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(get_channel_list()->vch[i].major_ch_num, i + 1);
    EXPECT_EQ(get_channel_list()->vch[i].service_id, 500 + i);
  }
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, FavouritesWhoseGroupsAreCutOutGetAName) {
  const salvage_outcome outcome = expect_salvaged(cut_out(78'018, 104 * 20));

  EXPECT_EQ(outcome.list.named_groups, 2U);
  EXPECT_EQ(get_channel_list()->favorite_group_num, 2);
  EXPECT_STREQ(get_channel_list()->favorite_group[1].name, "Favourites 1");
  EXPECT_EQ(get_channel_list()->favorite_vnumber[1], 6);
}

// A file that ends within the list's own record has no services behind it.
TEST_F(Salvaging, WithoutServicesGroupsAndEntriesStay) {
  for (const std::size_t size : {std::size_t{80'112 + 5 * 24 + 23}, std::size_t{200'112}, std::size_t{296'122},
                                 std::size_t{320'124}, std::size_t{460'031}, std::size_t{460'032}}) {
    const salvage_outcome outcome = salvage(original.data.substr(0, size));

    const int entries = size < 200'000 ? 5 : 12;
    EXPECT_EQ(get_channel_list()->vnumber, entries) << size;
    EXPECT_EQ(get_channel_list()->vch[4].major_ch_num, 5) << size;
    EXPECT_EQ(get_channel_list()->provider_num, 1) << size;
    EXPECT_STREQ(get_channel_list()->favorite_group[1].name, "Second best") << size;
    EXPECT_EQ(outcome.recovered.services, 0U) << size;
    EXPECT_GE(outcome.list.entries_without_service, static_cast<std::size_t>(entries)) << size;
    EXPECT_EQ(outcome.list_bytes_missing, test_support::list_size - size);
    EXPECT_EQ(outcome.missing.networks, size == test_support::list_size ? 2U : 0U);
    EXPECT_TRUE(outcome.has_findings());
  }
}

TEST_F(Salvaging, WithoutServicesGroupsAloneAreSomething) {
  const salvage_outcome outcome = salvage(original.data.substr(0, 300));

  EXPECT_EQ(get_channel_list()->provider_num, 1);
  EXPECT_EQ(outcome.list.entries_without_service, 0U);
}

TEST_F(Salvaging, WithoutServicesNothingIsLeftWithoutAVersion) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{12}, std::size_t{115}}) {
    EXPECT_THROW(salvage(original.data.substr(0, size)), std::runtime_error) << size;
  }
  bytes file = original.data.substr(0, test_support::list_size);
  test_support::put(file, 0, 2, 0);
  EXPECT_THROW(salvage(file), std::runtime_error);
}

TEST_F(Salvaging, WhatAConversionFindsIsTold) {
  original.set(0, 2, 9).service(services.back());

  const salvage_outcome outcome = salvage(original.data);

  ASSERT_TRUE(outcome.converted.has_value());
  ASSERT_EQ(outcome.converted->duplicates.size(), 1U);
  EXPECT_EQ(outcome.converted->duplicates[0].id.service_id, 511);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_TRUE(outcome.has_findings());
  EXPECT_FALSE(salvage(channel_file(original).set(0, 2, 10).data).converted.has_value());
}

TEST_F(Salvaging, ProgressGoesUpToItsTotal) {
  std::vector<std::size_t> steps;
  std::size_t of = 0;

  salvage_to_memory(std::as_bytes(std::span(original.data)), [&](std::size_t done, std::size_t total) {
    steps.push_back(done);
    of = total;
  });

  EXPECT_EQ(of, 2 * original.data.size());
  EXPECT_TRUE(std::ranges::is_sorted(steps));
  ASSERT_FALSE(steps.empty());
  EXPECT_LE(steps.back(), of);
}

// Whatever the bytes are, nothing is read outside of them, and it takes time in proportion to them.
TEST_F(Salvaging, NoiseHoldsNothing) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{460'031}, std::size_t{460'032},
                                 std::size_t{460'344}, std::size_t{2'000'000}}) {
    EXPECT_THROW(salvage(noise_of(size, 8)), std::runtime_error) << size;
    EXPECT_THROW(salvage(bytes(size, '\0')), std::runtime_error) << size;
    EXPECT_THROW(salvage(bytes(size, 'x')), std::runtime_error) << size;
    bytes with_version = noise_of(size, 9);
    with_version.replace(0, std::min<std::size_t>(size, 2), bytes("\x0A\0", 2), 0, std::min<std::size_t>(size, 2));
    EXPECT_THROW(salvage(with_version), std::runtime_error) << size;
  }
}

}  // namespace
