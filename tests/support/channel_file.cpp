#include "channel_file.h"

#include <base/verbosity.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

#include "log_capture.h"

namespace test_support {
namespace {

const array_place &place_of(const std::vector<array_place> &places, int code) {
  const auto found = std::ranges::find(places, code, &array_place::code);
  if (found == places.end()) {
    throw std::out_of_range("no such array");
  }
  return *found;
}

std::vector<array_place> make_view_places() {
  std::vector<array_place> places = {{VIEW_ALL, list_field::vch, list_field::vnumber, 5000},
                                     {VIEW_TV, list_field::tv_vch, list_field::tv_vnumber, 4000},
                                     {VIEW_RADIO, list_field::radio_vch, list_field::radio_vnumber, 1000},
                                     {VIEW_USER, list_field::user_vch, list_field::user_vnumber, 5000},
                                     {VIEW_PROMOTION, list_field::promo_vch, list_field::promo_vnumber, 10}};
  for (int group = 0; group < 20; ++group) {
    const auto g = static_cast<std::size_t>(group);
    places.push_back(
        {10 + group, list_field::favorite_vch + g * 40 * entry_size, list_field::favorite_vnumber + g * 2, 40});
  }
  return places;
}

bytes entry_image(const service_data &data, int major, int favorite_id) {
  bytes image(entry_size, '\0');
  put(image, entry_field::favorite_id, 1, static_cast<std::uint64_t>(favorite_id));
  put(image, entry_field::major_ch_num, 2, static_cast<std::uint64_t>(major));
  put(image, entry_field::net_index, 1, data.net_index);
  put(image, entry_field::frequency, 4, static_cast<std::uint64_t>(data.frequency));
  put(image, entry_field::polarisation, 1, data.polarisation);
  put(image, entry_field::service_id, 2, data.service_id);
  put(image, entry_field::network_id, 2, data.network_id);
  put(image, entry_field::ts_id, 2, data.ts_id);
  return image;
}

void put_text(bytes &image, std::size_t at, const std::string &text) { image.replace(at, text.size(), text); }

bytes group_image(int id, const std::string &name) {
  bytes image(group_size, '\0');
  put(image, group_field::id, 2, static_cast<std::uint64_t>(id));
  put(image, group_field::name_len, 2, name.size());
  put_text(image, group_field::name, name);
  return image;
}

void fill_slot(bytes &file, std::size_t at, std::size_t size, char byte) { file.replace(at, size, size, byte); }

}  // namespace

void put(bytes &image, std::size_t at, std::size_t width, std::uint64_t value) {
  for (std::size_t i = 0; i < width; ++i) {
    image.at(at + i) = static_cast<char>(value >> 8 * i & 0xFF);
  }
}

std::uint64_t get(const bytes &image, std::size_t at, std::size_t width) {
  std::uint64_t value = 0;
  for (std::size_t i = width; i > 0; --i) {
    value = value << 8 | static_cast<std::uint8_t>(image.at(at + i - 1));
  }
  return value;
}

const std::vector<array_place> &view_places() {
  static const std::vector<array_place> places = make_view_places();
  return places;
}

const std::vector<array_place> &group_places() {
  static const std::vector<array_place> places = {
      {GROUP_PROVIDER, list_field::provider, list_field::provider_num, 500},
      {GROUP_GENRE, list_field::genre, list_field::genre_num, 50},
      {GROUP_COUNTRY, list_field::country, list_field::country_num, 200},
      {GROUP_FAV, list_field::favorite_group, list_field::favorite_group_num, 20}};
  return places;
}

const array_place &view_place(int code) { return place_of(view_places(), code); }

const array_place &group_place(int kind) { return place_of(group_places(), kind); }

channel_file::channel_file() {
  append(record_kind::list, list_size);
  set(list_field::version, 2, 10).set(list_field::use_tuner, 1, 0xFF).set(list_field::bouquet_id, 2, 0xFFFF);
  set(list_field::service_type, 1, 1).set(list_field::net_index, 1, 0xFF).set(list_field::sub_group_id, 2, 0xFFFF);
}

record_place &channel_file::append(record_kind kind, std::size_t size) {
  records.push_back({kind, data.size(), size});
  data.append(size, '\0');
  return records.back();
}

const record_place *channel_file::last(record_kind kind) const {
  const auto found =
      std::find_if(records.rbegin(), records.rend(), [=](const auto &each) { return each.kind == kind; });
  return found == records.rend() ? nullptr : &*found;
}

void channel_file::count_up(std::size_t at) { put(data, at, 2, get(data, at, 2) + 1); }

channel_file &channel_file::network(std::uint8_t net_index, std::uint16_t network_id, const std::string &name) {
  const std::size_t at = append(record_kind::network, network_size).offset;
  put(data, at + network_field::net_index, 1, net_index);
  put(data, at + network_field::network_id, 2, network_id);
  put_text(data, at + network_field::network_name, name);
  count_up(list_field::network_num);
  return *this;
}

channel_file &channel_file::transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation) {
  const std::size_t at = append(record_kind::transponder, transponder_size).offset;
  put(data, at + transponder_field::ts_id, 2, ts_id);
  put(data, at + transponder_field::frequency, 4, frequency);
  put(data, at + transponder_field::polarisation, 1, polarisation);
  count_up(last(record_kind::network)->offset + network_field::tp_num);
  return *this;
}

channel_file &channel_file::service(const service_data &service) {
  const record_place *its_network = last(record_kind::network);
  if (its_network == nullptr || get(data, its_network->offset + network_field::net_index, 1) != service.net_index ||
      get(data, its_network->offset + network_field::network_id, 2) != service.network_id) {
    network(service.net_index, service.network_id, "Network");
  }
  const record_place *its_transponder = last(record_kind::transponder);
  const auto frequency = static_cast<std::uint32_t>(service.frequency);
  if (its_transponder == nullptr || its_transponder->offset < last(record_kind::network)->offset ||
      get(data, its_transponder->offset + transponder_field::frequency, 4) != frequency ||
      get(data, its_transponder->offset + transponder_field::polarisation, 1) != service.polarisation) {
    transponder(service.ts_id, frequency, service.polarisation);
  }
  const std::size_t at = append(record_kind::service, service_size).offset;
  put_text(data, at + service_field::name, service.name);
  put(data, at + service_field::name_len, 2, service.name.size());
  put(data, at + service_field::net_index, 1, service.net_index);
  put(data, at + service_field::frequency, 8, static_cast<std::uint64_t>(service.frequency));
  put(data, at + service_field::service_type, 1, service.service_type);
  put(data, at + service_field::source_type, 1, service.source_type);
  put(data, at + service_field::ts_id, 2, service.ts_id);
  put(data, at + service_field::network_id, 2, service.network_id);
  put(data, at + service_field::service_id, 2, service.service_id);
  put(data, at + service_field::polarisation, 1, service.polarisation);
  put(data, at + service_field::flag, 1, service.flag);
  count_up(last(record_kind::transponder)->offset + transponder_field::rch_num);
  return *this;
}

channel_file &channel_file::entry(int view, const service_data &service, int major, int favorite_id) {
  const array_place &place = view_place(view);
  const auto position = static_cast<std::size_t>(get(data, place.count, 2));
  data.replace(place.array + position * entry_size, entry_size, entry_image(service, major, favorite_id));
  count_up(place.count);
  return *this;
}

channel_file &channel_file::group(int kind, int id, const std::string &name) {
  const array_place &place = group_place(kind);
  const auto position = static_cast<std::size_t>(get(data, place.count, 2));
  data.replace(place.array + position * group_size, group_size, group_image(id, name));
  count_up(place.count);
  return *this;
}

channel_file &channel_file::set(std::size_t at, std::size_t width, std::uint64_t value) {
  put(data, at, width, value);
  return *this;
}

channel_file &channel_file::set_last(record_kind kind, std::size_t at, std::size_t width, std::uint64_t value) {
  put(data, last(kind)->offset + at, width, value);
  return *this;
}

void fill_pointer_slots(bytes &file, const std::vector<record_place> &records, char byte) {
  for (const record_place &record : records) {
    if (record.kind != record_kind::list) {
      fill_slot(file, record.offset, 8, byte);
    }
    if (record.kind == record_kind::network) {
      fill_slot(file, record.offset + network_field::tp_list, 8, byte);
    }
    if (record.kind == record_kind::transponder) {
      fill_slot(file, record.offset + transponder_field::rch_list, 8, byte);
    }
  }
  for (const std::size_t pair :
       {list_field::cur_vch, list_field::network_list, list_field::spare_list_a, list_field::spare_list_b}) {
    fill_slot(file, pair, 8, byte);
  }
  for (const array_place &view : view_places()) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(view.capacity); ++i) {
      fill_slot(file, view.array + i * entry_size + entry_field::rch, 4, byte);
    }
  }
}

bytes side_file(int capacity, int count, const std::string &kind) {
  bytes file(2, '\0');
  put(file, 0, 2, static_cast<std::uint64_t>(count));
  for (int i = 0; i < capacity; ++i) {
    file += i < count ? group_image(100 + i, kind + ' ' + std::to_string(i)) : bytes(group_size, '\0');
  }
  return file;
}

void file_test::SetUp() {
  store_test::SetUp();
  set_target_dir(dir.path().c_str());
  verbosity_map[7] = -1;
}

int file_test::load(const bytes &contents, int sort_mode) {
  write_file(path(), contents);
  return load_named("list.dat", sort_mode);
}

int file_test::load_named(const char *name, int sort_mode) {
  const fd_capture standard_output(STDOUT_FILENO);
  return load_channel(name, static_cast<std::uint8_t>(sort_mode));
}

bytes file_test::save() {
  EXPECT_EQ(save_channel("saved.dat"), 1);
  return read_file(path("saved.dat"));
}

void expect_same_bytes(const bytes &actual, const bytes &expected) {
  ASSERT_EQ(actual.size(), expected.size());
  const auto [a, e] = std::ranges::mismatch(actual, expected);
  EXPECT_TRUE(a == actual.end()) << "first difference at offset " << a - actual.begin() << ": "
                                 << static_cast<unsigned>(static_cast<std::uint8_t>(*a)) << " instead of "
                                 << static_cast<unsigned>(static_cast<std::uint8_t>(*e));
}

bytes list_in_memory() { return {reinterpret_cast<const char *>(get_channel_list()), sizeof(channel_list_st)}; }

bytes initialised_list() {
  init_channel_list();
  return list_in_memory();
}

}  // namespace test_support
