// Reading channel files of versions 9, 8 and 7: the list that the host is handed, byte for byte what the file holds,
// and what it owns.
#include <cstddef>
#include <filesystem>

#include "support/channel_file.h"
#include "support/hierarchy_walk.h"
#include "support/old_channel_file.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace service_field = test_support::service_field;
namespace transponder_field = test_support::transponder_field;
using test_support::bytes;
using test_support::channel_file;
using test_support::in_version;
using test_support::name_of_version;
using test_support::old_file;
using test_support::old_version;
using test_support::owned_list;
using test_support::points_to_itself;
using test_support::read_old;
using test_support::record_kind;
using test_support::record_place;
using test_support::service_data;
using test_support::write_file;

class EarlierVersion : public test_support::file_test, public ::testing::WithParamInterface<old_version> {
 protected:
  // Two networks, of which the first has a transponder without services: eight records below the list.
  static channel_file small_file() {
    channel_file file;
    file.network(1, 0x102, "First").transponder(0x203, 11'000'000, 1).service(first).service(second);
    file.transponder(0x304, 12'000'000, 0);
    return file.network(2, 0x102, "Second").transponder(0x405, 10'000'000, 0).service(third);
  }

  owned_list read(const bytes &contents) {
    write_file(path(), contents);
    return read_old(GetParam(), path());
  }
  owned_list read(const channel_file &file) { return read(in_version(GetParam(), file).data); }

  static inline const service_data first = {.network_id = 0x102, .ts_id = 0x203, .service_id = 7, .polarisation = 1};
  static inline const service_data second = {.network_id = 0x102, .ts_id = 0x203, .service_id = 8, .polarisation = 1};
  static inline const service_data third = {
      .net_index = 2, .network_id = 0x102, .ts_id = 0x405, .frequency = 10'000'000, .service_id = 7};
};

// The records of a list in file order. Records in memory are their image but for links and padding in front of them.
struct memory_place {
  record_kind kind;
  const char *record;
};

std::vector<memory_place> records_of(const channel_list_st &list) {
  std::vector<memory_place> found;
  for (const auto *network : test_support::records_below<network_ch_st>(list.network_list)) {
    found.push_back({record_kind::network, reinterpret_cast<const char *>(network)});
    for (const auto *transponder : test_support::transponders(*network)) {
      found.push_back({record_kind::transponder, reinterpret_cast<const char *>(transponder)});
      for (const auto *service : test_support::services(*transponder)) {
        found.push_back({record_kind::service, reinterpret_cast<const char *>(service)});
      }
    }
  }
  return found;
}

// A run of bytes of a record, in memory and in its image.
struct run {
  std::size_t in_memory;
  std::size_t in_image;
  std::size_t size;
};

// Every byte of a record that is no link; the additional bytes follow the record of today.
std::vector<run> runs_of(record_kind kind, std::size_t extra) {
  switch (kind) {
    case record_kind::network:
      return {{offsetof(network_ch_st, net_index), 8, 72},
              {offsetof(network_ch_st, reserved_88), 88, 328},
              {sizeof(network_ch_st), 416, extra}};
    case record_kind::transponder:
      return {{offsetof(tp_ch_st, ts_id), 8, 16},
              {offsetof(tp_ch_st, reserved_32), 32, 304},
              {sizeof(tp_ch_st), 336, extra}};
    default:
      return {{offsetof(channel_st, name), 8, 304 + extra}};
  }
}

void expect_image(const char *record, const bytes &image, const std::vector<run> &runs) {
  for (const run &part : runs) {
    EXPECT_EQ(bytes(record + part.in_memory, part.size), image.substr(part.in_image, part.size)) << part.in_image;
  }
}

// Every byte of every record different from its neighbours; counts stay, and so do links, which no reader may look at.
void fill_with_pattern(old_file &file) {
  for (const record_place &record : file.records) {
    for (std::size_t i = record.offset; i < record.offset + record.size; ++i) {
      file.data[i] = static_cast<char>(1 + (record.offset * 3 + i * 11) % 255);
    }
  }
}

std::size_t count_at(record_kind kind) {
  constexpr std::size_t places[] = {list_field::network_num, network_field::tp_num, transponder_field::rch_num, 0};
  return places[static_cast<std::size_t>(kind)];
}

old_file patterned(const old_version &version, const channel_file &source) {
  old_file file = in_version(version, source);
  const old_file counted = file;
  fill_with_pattern(file);
  for (const record_place &record : file.records) {
    if (record.kind != record_kind::service) {
      const std::size_t at = record.offset + count_at(record.kind);
      file.data.replace(at, 2, counted.data, at, 2);
    }
  }
  return file;
}

TEST_P(EarlierVersion, GivesEveryNetworkTransponderAndServiceInFileOrder) {
  const owned_list read_list = read(small_file());

  ASSERT_NE(read_list, nullptr);
  EXPECT_EQ(read_list->network_num, 2);
  const auto networks = test_support::records_below<network_ch_st>(read_list->network_list);
  ASSERT_EQ(networks.size(), 2U);
  EXPECT_STREQ(networks[0]->network_name, "First");
  EXPECT_STREQ(networks[1]->network_name, "Second");
  const auto transponders = test_support::transponders(*networks[0]);
  ASSERT_EQ(transponders.size(), 2U);
  const auto services = test_support::services(*transponders[0]);
  ASSERT_EQ(services.size(), 2U);
  EXPECT_EQ(services[0]->service_id, 7);
  EXPECT_EQ(services[1]->service_id, 8);
  EXPECT_TRUE(points_to_itself(transponders[1]->rch_list));
  EXPECT_EQ(test_support::transponders(*networks[1]).size(), 1U);
}

TEST_P(EarlierVersion, GivesEveryByteOfEveryRecord) {
  const old_file file = patterned(GetParam(), small_file());

  const owned_list read_list = read(file.data);

  ASSERT_NE(read_list, nullptr);
  const std::vector<memory_place> found = records_of(*read_list);
  ASSERT_EQ(found.size() + 1, file.records.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    const record_place &place = file.records[i + 1];
    ASSERT_EQ(found[i].kind, place.kind) << i;
    expect_image(found[i].record, file.data.substr(place.offset, place.size), runs_of(place.kind, GetParam().extra));
  }
}

TEST_P(EarlierVersion, GivesEveryByteOfTheList) {
  const bytes file = patterned(GetParam(), channel_file()).data;

  const owned_list read_list = read(file);

  ASSERT_NE(read_list, nullptr);
  expect_image(reinterpret_cast<const char *>(read_list.get()), file,
               {{0, 0, 80'104},
                {offsetof(channel_list_st, vnumber), 200'112, 4},
                {offsetof(channel_list_st, tv_vnumber), 296'116, 4},
                {offsetof(channel_list_st, radio_vnumber), 320'120, 4},
                {offsetof(channel_list_st, favorite_vnumber), 339'324, 40},
                {offsetof(channel_list_st, user_vnumber), 459'364, 4},
                {offsetof(channel_list_st, promo_vnumber), 459'608, 8},
                {offsetof(channel_list_st, reserved_459624), 459'624, 72},
                {offsetof(channel_list_st, reserved_459704), 459'704, 16},
                {offsetof(channel_list_st, reserved_459728), 459'728, 304},
                {sizeof(channel_list_st), 460'032, GetParam().extra}});
}

TEST_P(EarlierVersion, GivesEveryEntryOfEveryView) {
  const bytes file = patterned(GetParam(), channel_file()).data;

  const owned_list read_list = read(file);

  ASSERT_NE(read_list, nullptr);
  const std::pair<const virtual_channel_st *, std::size_t> views[] = {
      {read_list->vch, 80'112},       {read_list->tv_vch, 200'116},          {read_list->radio_vch, 296'120},
      {read_list->user_vch, 339'364}, {read_list->favorite_vch[0], 320'124}, {read_list->promo_vch, 459'368}};
  constexpr std::size_t capacities[] = {5000, 4000, 1000, 5000, 800, 10};
  for (std::size_t view = 0; view < std::size(views); ++view) {
    for (std::size_t i = 0; i < capacities[view]; ++i) {
      const virtual_channel_st &entry = views[view].first[i];
      ASSERT_EQ(bytes(reinterpret_cast<const char *>(&entry), 20), file.substr(views[view].second + i * 24, 20)) << i;
      ASSERT_EQ(entry.rch, nullptr) << "taken from the file";
    }
  }
}

TEST_P(EarlierVersion, KeepsTheCountryOfEveryService) {
  channel_file file = small_file();
  file.set_last(record_kind::service, service_field::country_id, 2, 77);

  const owned_list read_list = read(file);

  ASSERT_NE(read_list, nullptr);
  EXPECT_EQ(reinterpret_cast<const channel_st *>(records_of(*read_list).back().record)->country_id, 77);
}

TEST_P(EarlierVersion, GivesAnEmptyListForAFileWithoutNetworks) {
  const bytes file = in_version(GetParam(), channel_file()).data;

  const owned_list read_list = read(file);

  ASSERT_NE(read_list, nullptr);
  EXPECT_EQ(file.size(), GetParam().size_of(record_kind::list));
  EXPECT_EQ(read_list->network_num, 0);
  EXPECT_TRUE(points_to_itself(read_list->network_list));
}

TEST_P(EarlierVersion, TrustsNoPointerOfTheFile) {
  old_file file = in_version(GetParam(), small_file());
  test_support::fill_pointer_slots(file.data, file.records, '\xA5');

  const owned_list read_list = read(file.data);

  ASSERT_NE(read_list, nullptr);
  EXPECT_EQ(records_of(*read_list).size(), 8U);
  EXPECT_EQ(read_list->cur_vch, nullptr);
  EXPECT_EQ(read_list->cur_vnumber, nullptr);
  EXPECT_EQ(read_list->vch[0].rch, nullptr);
  EXPECT_TRUE(points_to_itself(read_list->spare_list_a));
  EXPECT_TRUE(points_to_itself(read_list->spare_list_b));
}

TEST_P(EarlierVersion, IsNotLookedForInTheFile) {
  for (const int number : {7, 8, 9, 10, 0, -1, 32'767, -32'768}) {
    old_file file = in_version(GetParam(), small_file());
    test_support::put(file.data, list_field::version, 2, static_cast<std::uint64_t>(number));

    const owned_list read_list = read(file.data);

    ASSERT_NE(read_list, nullptr) << number;
    EXPECT_EQ(read_list->version, number);
    EXPECT_EQ(records_of(*read_list).size(), 8U);
  }
}

TEST_P(EarlierVersion, LeavesCountsOutsideTheirArraysAsTheyAre) {
  channel_file file;
  file.set(list_field::provider_num, 2, 501)
      .set(list_field::favorite_group_num, 2, 0x8000)
      .set(list_field::vnumber, 2, 0xFFFF)
      .set(list_field::promo_vnumber, 2, 11)
      .set(list_field::favorite_vnumber, 2, 32'767);

  const owned_list read_list = read(file);

  ASSERT_NE(read_list, nullptr);
  EXPECT_EQ(read_list->provider_num, 501);
  EXPECT_EQ(read_list->favorite_group_num, -32'768);
  EXPECT_EQ(read_list->vnumber, -1);
  EXPECT_EQ(read_list->promo_vnumber, 11);
  EXPECT_EQ(read_list->favorite_vnumber[0], 32'767);
}

TEST_P(EarlierVersion, IgnoresWhatFollowsTheLastRecord) {
  const owned_list read_list = read(in_version(GetParam(), small_file()).data + bytes(1000, '\x55'));

  ASSERT_NE(read_list, nullptr);
  EXPECT_EQ(records_of(*read_list).size(), 8U);
}

TEST_P(EarlierVersion, IsReadFromAWholePathOfAnyLength) {
  const std::string deep = path(std::string(100, 'd')) + '/';
  std::filesystem::create_directory(deep);
  write_file(deep + "list.dat", in_version(GetParam(), small_file()).data);

  EXPECT_NE(read_old(GetParam(), deep + "list.dat"), nullptr);
}

TEST_P(EarlierVersion, IsNotLookedForInTheTargetDirectory) {
  write_file(path("in_target_dir.dat"), in_version(GetParam(), small_file()).data);

  EXPECT_EQ(read_old(GetParam(), "in_target_dir.dat"), nullptr);
}

TEST_P(EarlierVersion, GivesListsThatShareNothing) {
  owned_list one = read(small_file());
  const owned_list other = read(small_file());
  ASSERT_NE(one, nullptr);
  ASSERT_NE(other, nullptr);

  one.reset();

  EXPECT_EQ(records_of(*other).size(), 8U);
}

INSTANTIATE_TEST_SUITE_P(Readers, EarlierVersion, ::testing::ValuesIn(test_support::old_versions()), name_of_version);

}  // namespace
