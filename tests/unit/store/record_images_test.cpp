// The image of every record in the channel file: each field at its offset, in its width, pointer slots zero, and
// reserved bytes carried from a load to the next save.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>

#include "support/channel_file.h"
#include "support/hierarchy_walk.h"

namespace {

using namespace test_support;

// Gives each byte of a field another value and notes where the file must hold it.
class image_of_fields {
 public:
  explicit image_of_fields(std::size_t size) : expected_(size, '\0') {}

  template <class Field>
  void put(std::size_t offset, Field &field) {
    auto *bytes = reinterpret_cast<char *>(&field);
    for (std::size_t i = 0; i < sizeof field; ++i) {
      seed_ = seed_ % 251 + 1;
      bytes[i] = static_cast<char>(seed_);
    }
    EXPECT_EQ(expected_.substr(offset, sizeof field), bytes_of_zero(sizeof field)) << "two fields at " << offset;
    expected_.replace(offset, sizeof field, bytes, sizeof field);
  }
  [[nodiscard]] const bytes &expected() const { return expected_; }

 private:
  static bytes bytes_of_zero(std::size_t size) { return bytes(size, '\0'); }

  bytes expected_;
  int seed_ = 0;
};

void put_entry(image_of_fields &image, std::size_t at, virtual_channel_st &entry) {
  image.put(at, entry.vch_tag);
  image.put(at + 1, entry.favorite_id);
  image.put(at + 2, entry.major_ch_num);
  image.put(at + 4, entry.minor_ch_num);
  image.put(at + 6, entry.net_index);
  image.put(at + 7, entry.reserved_7);
  image.put(at + 8, entry.frequency);
  image.put(at + 12, entry.polarisation);
  image.put(at + 13, entry.reserved_13);
  image.put(at + 14, entry.service_id);
  image.put(at + 16, entry.network_id);
  image.put(at + 18, entry.ts_id);
}

void put_group(image_of_fields &image, std::size_t at, group_st &group) {
  image.put(at, group.reserved_0);
  image.put(at + 2, group.id);
  image.put(at + 4, group.name_len);
  image.put(at + 6, group.name);
}

void put_settings(image_of_fields &image, channel_list_st &list) {
  image.put(0, list.version);
  image.put(2, list.use_tuner);
  image.put(3, list.ch_type);
  image.put(4, list.bouquet_id);
  image.put(6, list.use_group_list);
  image.put(7, list.service_type);
  image.put(8, list.net_index);
  image.put(9, list.reserved_9);
  image.put(10, list.sub_group_id);
}

void put_groups(image_of_fields &image, channel_list_st &list) {
  put_group(image, 12, list.provider[0]);
  put_group(image, 12 + 104 * 499, list.provider[499]);
  image.put(52'012, list.provider_num);
  put_group(image, 52'014, list.genre[0]);
  put_group(image, 52'014 + 104 * 49, list.genre[49]);
  image.put(57'214, list.genre_num);
  put_group(image, 57'216, list.country[0]);
  put_group(image, 57'216 + 104 * 199, list.country[199]);
  image.put(78'016, list.country_num);
  put_group(image, 78'018, list.favorite_group[0]);
  put_group(image, 78'018 + 104 * 19, list.favorite_group[19]);
  image.put(80'098, list.favorite_group_num);
}

void put_views(image_of_fields &image, channel_list_st &list) {
  image.put(80'100, list.vch_type);
  image.put(80'102, list.reserved_80102);
  put_entry(image, 80'112, list.vch[0]);
  put_entry(image, 80'112 + 24 * 4999, list.vch[4999]);
  image.put(200'112, list.vnumber);
  image.put(200'114, list.reserved_200114);
  put_entry(image, 200'116, list.tv_vch[0]);
  put_entry(image, 200'116 + 24 * 3999, list.tv_vch[3999]);
  image.put(296'116, list.tv_vnumber);
  image.put(296'118, list.reserved_296118);
  put_entry(image, 296'120, list.radio_vch[0]);
  put_entry(image, 296'120 + 24 * 999, list.radio_vch[999]);
  image.put(320'120, list.radio_vnumber);
  image.put(320'122, list.reserved_320122);
  put_entry(image, 320'124, list.favorite_vch[0][0]);
  put_entry(image, 320'124 + 24 * 40, list.favorite_vch[1][0]);
  put_entry(image, 320'124 + 24 * 799, list.favorite_vch[19][39]);
  image.put(339'324, list.favorite_vnumber);
  put_entry(image, 339'364, list.user_vch[0]);
  put_entry(image, 339'364 + 24 * 4999, list.user_vch[4999]);
  image.put(459'364, list.user_vnumber);
  image.put(459'366, list.reserved_459366);
  put_entry(image, 459'368, list.promo_vch[0]);
  put_entry(image, 459'368 + 24 * 9, list.promo_vch[9]);
  image.put(459'608, list.promo_vnumber);
}

void put_rest_of_list(image_of_fields &image, channel_list_st &list) {
  image.put(459'610, list.network_num);
  image.put(459'612, list.reserved_459612);
  image.put(459'624, list.reserved_459624);
  image.put(459'704, list.reserved_459704);
  image.put(459'728, list.reserved_459728);
}

void put_network(image_of_fields &image, std::size_t at, network_ch_st &network) {
  image.put(at + 8, network.net_index);
  image.put(at + 9, network.reserved_9);
  image.put(at + 10, network.network_id);
  image.put(at + 12, network.network_name);
  image.put(at + 76, network.tp_num);
  image.put(at + 78, network.reserved_78);
  image.put(at + 88, network.reserved_88);
}

void put_transponder(image_of_fields &image, std::size_t at, tp_ch_st &transponder) {
  image.put(at + 8, transponder.ts_id);
  image.put(at + 10, transponder.reserved_10);
  image.put(at + 12, transponder.frequency);
  image.put(at + 16, transponder.polarisation);
  image.put(at + 17, transponder.reserved_17);
  image.put(at + 18, transponder.rch_num);
  image.put(at + 20, transponder.reserved_20);
  image.put(at + 32, transponder.reserved_32);
}

void put_name(image_of_fields &image, std::size_t at, name_slot_st &name) {
  image.put(at, name.reserved_0);
  image.put(at + 1, name.text);
  image.put(at + 97, name.reserved_97);
  image.put(at + 98, name.name_len);
}

void put_service(image_of_fields &image, std::size_t at, channel_st &service) {
  put_name(image, at + 8, service.name[0]);
  put_name(image, at + 108, service.name[1]);
  image.put(at + 208, service.reserved_208);
  image.put(at + 210, service.country_id);
  image.put(at + 212, service.genre_id);
  image.put(at + 214, service.provider_id);
  image.put(at + 216, service.net_index);
  image.put(at + 217, service.reserved_217);
  image.put(at + 224, service.frequency);
  image.put(at + 232, service.service_type);
  image.put(at + 233, service.source_type);
  image.put(at + 234, service.ts_id);
  image.put(at + 236, service.reserved_236);
  image.put(at + 240, service.network_id);
  image.put(at + 242, service.service_id);
  image.put(at + 244, service.polarisation);
  image.put(at + 245, service.reserved_245);
  image.put(at + 246, service.pmt_pid);
  image.put(at + 248, service.pcr_pid);
  image.put(at + 250, service.video_tag);
  image.put(at + 251, service.reserved_251);
  image.put(at + 252, service.video_pid);
  image.put(at + 254, service.video_ecm_pid);
  image.put(at + 256, service.audio_tag);
  image.put(at + 257, service.reserved_257);
  image.put(at + 258, service.audio_pid);
  image.put(at + 260, service.reserved_pid);
  image.put(at + 262, service.reserved_262);
  image.put(at + 286, service.reserved_id);
  image.put(at + 288, service.flag);
  image.put(at + 289, service.reserved_289);
  image.put(at + 298, service.user_order_key);
  image.put(at + 300, service.reserved_300);
}

class RecordImages : public file_test {};

TEST_F(RecordImages, EveryFieldOfTheListStandsAtItsOffsetAndPointersAreZero) {
  image_of_fields image(list_size);
  std::memset(&list, 0, sizeof list);
  put_settings(image, list);
  put_groups(image, list);
  put_views(image, list);
  put_rest_of_list(image, list);
  list.cur_vch = list.tv_vch;
  list.cur_vnumber = &list.tv_vnumber;
  for (virtual_channel_st *entry : {&list.vch[0], &list.tv_vch[3999], &list.favorite_vch[1][0], &list.promo_vch[9]}) {
    entry->rch = reinterpret_cast<channel_st *>(&list);
  }
  list.network_list = {&list.network_list, &list.network_list};

  const bytes file = save();

  expect_same_bytes(file, image.expected());
}

TEST_F(RecordImages, EveryFieldOfAChannelAndItsParentsStandsAtItsOffsetAndLinksAreZero) {
  channel_st *service = file_service({});
  network_ch_st *network = networks().at(0);
  tp_ch_st *transponder = transponders(*network).at(0);
  image_of_fields image(list_size + network_size + transponder_size + service_size);
  put_network(image, list_size, *network);
  put_transponder(image, list_size + network_size, *transponder);
  put_service(image, list_size + network_size + transponder_size, *service);

  const bytes file = save();

  expect_same_bytes(file.substr(list_size), image.expected().substr(list_size));
}

TEST_F(RecordImages, EveryByteButTheCountryComesBackFromALoad) {
  channel_st *service = file_service({});
  network_ch_st *network = networks().at(0);
  tp_ch_st *transponder = transponders(*network).at(0);
  image_of_fields ignored(list_size + network_size + transponder_size + service_size);
  put_settings(ignored, list);
  put_groups(ignored, list);
  put_views(ignored, list);
  put_rest_of_list(ignored, list);
  put_network(ignored, list_size, *network);
  put_transponder(ignored, list_size + network_size, *transponder);
  put_service(ignored, list_size + network_size + transponder_size, *service);
  list.version = 10;
  list.vch_type = 0;
  list.use_group_list = 0;
  list.ch_type = 0;
  list.provider_num = 500;
  list.genre_num = 50;
  list.country_num = 200;
  list.favorite_group_num = 20;
  list.vnumber = 1;
  list.tv_vnumber = 4000;
  list.radio_vnumber = 1000;
  list.user_vnumber = 5000;
  list.promo_vnumber = 10;
  for (std::int16_t &count : list.favorite_vnumber) {
    count = 40;
  }
  list.network_num = network->tp_num = transponder->rch_num = 1;
  service->country_id = 0;
  const bytes saved = save();
  reset_channel_list();

  EXPECT_EQ(load_named("saved.dat"), 10);

  expect_same_bytes(save(), saved);
}

}  // namespace
