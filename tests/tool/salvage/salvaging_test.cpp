// Files damaged behind the list's own record, and its counts and views, in every way that is known from the field.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "tool/salvage/salvaging_host.h"

namespace {

using namespace salvage_test;

TEST_F(Salvaging, AnUndamagedFileComesBackWhole) {
  const salvage_outcome outcome = expect_salvaged({"nothing", original.data, {}});

  EXPECT_FALSE(outcome.has_findings());
  EXPECT_EQ(outcome.recovered.networks, 2U);
  EXPECT_EQ(outcome.recovered.transponders, 4U);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_EQ(outcome.list.counts.size() + outcome.list.groups.counts.size(), 0U);
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
  std::vector<std::size_t> counts = {list_field::network_num};
  for (const record_place &record : original.records) {
    if (record.kind == record_kind::network) {
      counts.push_back(record.offset + network_field::tp_num);
    } else if (record.kind == record_kind::transponder) {
      counts.push_back(record.offset + transponder_field::rch_num);
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

      EXPECT_TRUE(outcome.list.lost_entries.empty()) << place.code << ' ' << wrong;
      // Less than no entry of a view without any is none.
      const bool is_none = right == 0 && (wrong & 0x8000U) != 0;
      EXPECT_EQ(outcome.has_findings(), wrong != right && !is_none) << place.code << ' ' << wrong;
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

      EXPECT_TRUE(outcome.list.groups.lost.empty()) << place.code << ' ' << wrong;
      EXPECT_TRUE(outcome.has_findings());
      ASSERT_EQ(outcome.list.groups.counts.size(), 1U) << place.code << ' ' << wrong;
      EXPECT_EQ(outcome.list.groups.counts[0].present, static_cast<int>(right)) << place.code << ' ' << wrong;
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
  for (std::size_t at = service_field::net_index; at <= service_field::polarisation; ++at) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{2}, std::size_t{4}}) {
      if (at == service_field::net_index || at >= service_field::frequency) {
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

TEST_F(Salvaging, LostRecordsAboveServicesAreMadeAnew) {
  const record_place &network = original.records[1];
  const salvage_outcome outcome =
      expect_salvaged(overwritten(network.offset, bytes(network.size + test_support::transponder_size, '\0')));

  ASSERT_EQ(outcome.made.size(), 2U);
  EXPECT_EQ(outcome.made[0].kind, chlist::identity_part::network);
  EXPECT_EQ(outcome.made[0].id.network_id, 0x0102);
  EXPECT_EQ(outcome.made[1].kind, chlist::identity_part::transponder);
  EXPECT_EQ(outcome.made[1].id.ts_id, 1000);
  EXPECT_EQ(outcome.recovered.services, 12U);
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

// Whatever the bytes are, nothing is read outside of them, and it takes time in proportion to them.
TEST_F(Salvaging, NoiseHoldsNothing) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, test_support::list_size - 1, test_support::list_size,
                                 test_support::list_size + test_support::service_size, std::size_t{2'000'000}}) {
    EXPECT_THROW(salvage(noise_of(size, 8)), std::runtime_error) << size;
    EXPECT_THROW(salvage(bytes(size, '\0')), std::runtime_error) << size;
    EXPECT_THROW(salvage(bytes(size, 'x')), std::runtime_error) << size;
    bytes with_version = noise_of(size, 9);
    with_version.replace(0, std::min<std::size_t>(size, 2), bytes("\x0A\0", 2), 0, std::min<std::size_t>(size, 2));
    EXPECT_THROW(salvage(with_version), std::runtime_error) << size;
  }
}

}  // namespace
