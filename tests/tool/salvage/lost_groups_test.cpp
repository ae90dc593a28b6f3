// Groups, settings and names of networks that are lost: what of it is told, and what other copies of the list still
// have.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "tool/salvage/salvaging_host.h"

namespace {

using chlist::group_loss;
using chlist::salvage_outcome;
using salvage_test::noise_of;
using salvage_test::Salvaging;
using test_support::bytes;
using test_support::channel_file;
using test_support::group_place;
using test_support::group_size;

using namespace test_support::record_fields;

class LostGroups : public Salvaging {
 protected:
  void SetUp() override {
    Salvaging::SetUp();
    original.group(GROUP_PROVIDER, 2, "Paid").group(GROUP_PROVIDER, 3, "Foreign");
    for (const auto &record : original.records) {
      if (record.kind == test_support::record_kind::service) {
        test_support::put(original.data, record.offset + service_field::provider_id, 2, 1 + services_++ % 3);
      }
    }
  }

  static std::size_t provider(std::size_t position) {
    return group_place(GROUP_PROVIDER).array + position * group_size;
  }

  static salvage_outcome salvage_beside(const bytes &damaged, const bytes &copy) {
    chlist::list_copies copies;
    copies.emplace_back("copy.dat", chlist::file_records(std::as_bytes(std::span(copy))));
    return chlist::salvage_to_memory(std::as_bytes(std::span(damaged)), std::move(copies));
  }

  static std::string provider_of(std::size_t service) {
    const std::int16_t id = chlist::services_of(*get_channel_list())[service]->provider_id;
    for (const group_st &group : chlist::groups_of(*get_channel_list()).front().used()) {
      if (group.id == id) {
        return group.name;
      }
    }
    return "";
  }

 private:
  unsigned services_ = 0;
};

TEST_F(LostGroups, ASoundFileHasNone) { EXPECT_FALSE(salvage(original.data).has_findings()); }

TEST_F(LostGroups, AnEmptyRecordWithinACountedTableIsOne) {
  const salvage_outcome outcome = salvage(overwritten(provider(1), bytes(group_size, '\0')).file);

  ASSERT_EQ(outcome.list.groups.lost.size(), 2U);
  EXPECT_EQ(outcome.list.groups.lost[0].loss, group_loss::empty);
  EXPECT_EQ(outcome.list.groups.lost[0].table, "provider");
  EXPECT_EQ(outcome.list.groups.lost[0].position, 1);
  EXPECT_EQ(outcome.list.groups.lost[1].loss, group_loss::unknown);
  EXPECT_EQ(outcome.list.groups.lost[1].id, 2);
  EXPECT_EQ(outcome.list.groups.lost[1].services, 4U);
  EXPECT_TRUE(outcome.has_findings());
  EXPECT_EQ(get_channel_list()->provider_num, 2);
}

TEST_F(LostGroups, AnIdThatIsThereTwiceIsOne) {
  bytes file = original.data;
  test_support::put(file, provider(2) + group_field::id, 2, 1);

  const salvage_outcome outcome = salvage(file);

  ASSERT_EQ(outcome.list.groups.lost.size(), 2U);
  EXPECT_EQ(outcome.list.groups.lost[0].loss, group_loss::repeated);
  EXPECT_EQ(outcome.list.groups.lost[0].id, 1);
  EXPECT_EQ(outcome.list.groups.lost[1].loss, group_loss::unknown);
  EXPECT_EQ(outcome.list.groups.lost[1].id, 3);
}

TEST_F(LostGroups, ARecordWithANameOfNoiseIsOne) {
  const salvage_outcome outcome = salvage(overwritten(provider(0), noise_of(group_size, 12)).file);

  ASSERT_FALSE(outcome.list.groups.lost.empty());
  EXPECT_EQ(outcome.list.groups.lost[0].loss, group_loss::unreadable);
  EXPECT_EQ(outcome.list.groups.lost[0].position, 0);
}

TEST_F(LostGroups, WithTheFirstSectorTheyAreToldAndFoundInACopy) {
  const bytes damaged = overwritten(0, bytes(512, '\0')).file;
  const salvage_outcome alone = salvage(damaged);

  EXPECT_TRUE(alone.has_wrong_version);
  EXPECT_TRUE(alone.has_lost_settings);
  EXPECT_EQ(alone.list.groups.lost.size(), 3U);
  ASSERT_EQ(alone.list.groups.counts.size(), 1U);
  EXPECT_EQ(alone.list.groups.counts[0].counted, 3);
  EXPECT_EQ(alone.list.groups.counts[0].present, 0);
  EXPECT_EQ(alone.recovered.services, 12U);
  EXPECT_EQ(get_channel_list()->provider_num, 0);
  EXPECT_EQ(get_channel_list()->sub_group_id, -1);

  bytes copy = original.data;
  test_support::put(copy, list_field::bouquet_id, 2, 77);
  const salvage_outcome beside = salvage_beside(damaged, copy);

  EXPECT_TRUE(beside.has_findings());
  ASSERT_EQ(beside.list.groups.found.size(), 4U);
  EXPECT_EQ(beside.list.groups.found[0].what, "provider");
  EXPECT_EQ(beside.list.groups.found[0].id, 1);
  EXPECT_EQ(beside.list.groups.found[0].name, "Free");
  EXPECT_EQ(beside.list.groups.found[0].source, "copy.dat");
  EXPECT_EQ(beside.list.groups.found[3].what, "settings");
  EXPECT_EQ(get_channel_list()->bouquet_id, 77);
  EXPECT_EQ(get_channel_list()->provider_num, 3);
  EXPECT_EQ(provider_of(0), "Free");
  EXPECT_EQ(provider_of(1), "Paid");
  EXPECT_EQ(provider_of(2), "Foreign");
}

// A list of the same services that gives its providers other ids.
TEST_F(LostGroups, TheyAreFoundByTheServicesThatBelongToThem) {
  channel_file like;
  like.group(GROUP_PROVIDER, 40, "Foreign").group(GROUP_PROVIDER, 41, "Free").group(GROUP_PROVIDER, 42, "Paid");
  for (std::size_t i = 0; i < services.size(); ++i) {
    like.service(services[i])
        .set_last(test_support::record_kind::service, service_field::provider_id, 2, 40 + (i + 1) % 3);
  }

  const salvage_outcome outcome = salvage_beside(overwritten(provider(0), bytes(3 * group_size, '\0')).file, like.data);

  EXPECT_EQ(outcome.list.groups.found.size(), 3U);
  EXPECT_EQ(provider_of(0), "Free");
  EXPECT_EQ(provider_of(1), "Paid");
  EXPECT_EQ(provider_of(2), "Foreign");
}

TEST_F(LostGroups, FavouritesKeepTheirPlacesAndGetTheirNamesFromACopy) {
  const bytes damaged = overwritten(list_field::favorite_group, bytes(group_size, '\0')).file;

  EXPECT_EQ(salvage(damaged).list.groups.named_favourites, 1U);
  EXPECT_STREQ(get_channel_list()->favorite_group[0].name, "Favourites 1");
  EXPECT_EQ(salvage_beside(damaged, original.data).list.groups.named_favourites, 0U);
  EXPECT_STREQ(get_channel_list()->favorite_group[0].name, "Best");
}

TEST_F(LostGroups, OnesThatNoServiceNamesComeFromTheSamePlaceOfACopy) {
  original.group(GROUP_PROVIDER, 9, "Of nobody");
  const bytes damaged = overwritten(provider(3), bytes(group_size, '\0')).file;

  const salvage_outcome outcome = salvage_beside(damaged, original.data);

  ASSERT_EQ(outcome.list.groups.found.size(), 1U);
  EXPECT_EQ(outcome.list.groups.found[0].name, "Of nobody");
  EXPECT_EQ(get_channel_list()->provider_num, 4);
  EXPECT_STREQ(get_channel_list()->provider[3].name, "Of nobody");
}

TEST_F(LostGroups, TheNameOfANetworkThatWasMadeAnewIsFoundInACopy) {
  const auto &network = original.records[1];
  const bytes damaged = overwritten(network.offset, bytes(network.size, '\0')).file;

  const salvage_outcome outcome = salvage_beside(damaged, original.data);

  ASSERT_EQ(outcome.list.groups.found.size(), 1U);
  EXPECT_EQ(outcome.list.groups.found[0].what, "network");
  EXPECT_EQ(outcome.list.groups.found[0].id, 0x0102);
  EXPECT_EQ(outcome.list.groups.found[0].name, "Network");
}

TEST_F(LostGroups, FavouritesWithoutAnyEntryAreInDoubt) {
  const salvage_outcome outcome =
      salvage(overwritten(list_field::favorite_vch, bytes(list_field::user_vch - list_field::favorite_vch, '\0')).file);

  EXPECT_TRUE(outcome.list.has_empty_favourites);
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(LostGroups, AnotherNumberThanTheOneInAllIsInDoubtWhereAllOthersAreTheSame) {
  channel_file file;
  for (std::size_t i = 0; i < services.size(); ++i) {
    file.service(services[i]).entry(VIEW_ALL, services[i], static_cast<int>(i) + 1);
    file.entry(VIEW_USER, services[i], static_cast<int>(i) + 1);
  }
  EXPECT_FALSE(salvage(file.data).has_findings());
  file.data[list_field::vch + 5 * test_support::entry_size + entry_field::major_ch_num] ^= 16;

  const salvage_outcome outcome = salvage(file.data);

  ASSERT_EQ(outcome.list.other_numbers.size(), 1U);
  EXPECT_EQ(outcome.list.other_numbers[0].view.kind, "USER");
  EXPECT_EQ(outcome.list.other_numbers[0].number, 6);
  EXPECT_TRUE(outcome.has_findings());
}

}  // namespace
