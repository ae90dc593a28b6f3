// One function for each kind of step; a step that has no place, such as an entry of a full view, does nothing.
#include "file_script.h"

#include <algorithm>
#include <array>
#include <vector>

namespace fuzz {
namespace {

namespace list_field = test_support::list_field;
namespace service_field = test_support::service_field;
using test_support::array_place;
using test_support::channel_file;
using test_support::get;
using test_support::group_places;
using test_support::put;
using test_support::record_kind;
using test_support::record_place;
using test_support::service_data;
using test_support::view_places;

// More records than any step needs to be wrong, and few enough for many inputs a second.
constexpr std::size_t most_records = 300;

struct field {
  std::size_t at;
  std::size_t width;
};

// Settings and counts of the list.
std::vector<field> make_settings() {
  std::vector<field> settings = {{list_field::version, 2},        {list_field::use_tuner, 1},
                                 {list_field::ch_type, 1},        {list_field::bouquet_id, 2},
                                 {list_field::use_group_list, 1}, {list_field::service_type, 1},
                                 {list_field::net_index, 1},      {list_field::sub_group_id, 2},
                                 {list_field::vch_type, 2},       {list_field::network_num, 2}};
  for (const auto *places : {&view_places(), &group_places()}) {
    for (const array_place &place : *places) {
      settings.push_back({place.count, 2});
    }
  }
  return settings;
}

template <class Values>
const auto &pick(const Values &values, std::size_t number) {
  return values[number % values.size()];
}

class script_reader {
 public:
  scripted_file read(byte_reader &input) {
    while (!input.is_at_end()) {
      byte_reader operands = input.part(step_size);
      const std::size_t step = operands.byte() % static_cast<std::size_t>(file_step::count);
      if (step == static_cast<std::size_t>(file_step::end)) {
        break;
      }
      (this->*readers[step])(operands);
    }
    return std::move(made_);
  }

 private:
  void no_more(byte_reader & /*operands*/) {}
  void network(byte_reader &operands);
  void transponder(byte_reader &operands);
  void service(byte_reader &operands);
  void services(byte_reader &operands);
  void entry(byte_reader &operands);
  void entries(byte_reader &operands);
  void group(byte_reader &operands);
  void groups(byte_reader &operands);
  void setting(byte_reader &operands);
  void list_bytes(byte_reader &operands);
  void record_bytes(byte_reader &operands);
  void record_filling(byte_reader &operands);
  void cut(byte_reader &operands) {
    made_.cut = operands.number(3);
    made_.cuts_header = operands.byte() != 0;
  }
  void tail(byte_reader &operands);

  static constexpr std::array readers = {
      &script_reader::no_more,        &script_reader::network,    &script_reader::transponder,
      &script_reader::service,        &script_reader::services,   &script_reader::entry,
      &script_reader::entries,        &script_reader::group,      &script_reader::groups,
      &script_reader::setting,        &script_reader::list_bytes, &script_reader::record_bytes,
      &script_reader::record_filling, &script_reader::cut,        &script_reader::tail};
  static_assert(readers.size() == static_cast<std::size_t>(file_step::count));

  [[nodiscard]] bool is_full() const { return made_.file.records.size() >= most_records; }
  [[nodiscard]] std::size_t room(const array_place &place) const;
  const record_place &record_from_end(std::uint8_t number);
  void add_service(const service_data &service);
  void add_entry(const array_place &view, std::size_t service, int number, int favorite_id);

  scripted_file made_;
  std::vector<service_data> services_;
  service_data place_;  // the network and the transponder that the next service belongs to
};

void script_reader::network(byte_reader &operands) {
  if (is_full()) {
    return;
  }
  place_.net_index = operands.byte();
  place_.network_id = static_cast<std::uint16_t>(operands.number(2));
  made_.file.network(place_.net_index, place_.network_id, operands.rest());
}

// Neighbouring frequencies are within the tolerance of each other, the next ones are not.
void script_reader::transponder(byte_reader &operands) {
  constexpr std::uint32_t half_the_tolerance = 1250;
  if (is_full()) {
    return;
  }
  if (made_.file.records.size() == 1) {
    made_.file.network(place_.net_index, place_.network_id, "");
  }
  place_.ts_id = static_cast<std::uint16_t>(operands.number(2));
  const std::uint32_t frequency = operands.number(2) * half_the_tolerance;
  place_.frequency = frequency;
  place_.polarisation = operands.byte();
  made_.file.transponder(place_.ts_id, frequency, place_.polarisation);
}

void script_reader::add_service(const service_data &service) {
  if (!is_full()) {
    made_.file.service(service);
    services_.push_back(service);
  }
}

void script_reader::service(byte_reader &operands) {
  if (is_full()) {
    return;
  }
  service_data service = place_;
  service.service_id = static_cast<std::uint16_t>(operands.number(2));
  service.service_type = operands.byte();
  service.source_type = operands.byte();
  service.flag = operands.byte();
  const std::uint8_t genre = operands.byte();
  const std::uint8_t provider = operands.byte();
  service.name = operands.rest();
  add_service(service);
  made_.file.set_last(record_kind::service, service_field::genre_id, 2, genre);
  made_.file.set_last(record_kind::service, service_field::provider_id, 2, provider);
}

void script_reader::services(byte_reader &operands) {
  service_data service = place_;
  const std::uint8_t count = operands.byte();
  service.service_id = static_cast<std::uint16_t>(operands.number(2));
  service.service_type = operands.byte();
  for (int i = 0; i < count; ++i, ++service.service_id) {
    add_service(service);
  }
}

// How many more an array takes; none when its count was damaged.
std::size_t script_reader::room(const array_place &place) const {
  const auto count = static_cast<std::size_t>(get(made_.file.data, place.count, 2));
  const auto capacity = static_cast<std::size_t>(place.capacity);
  return count < capacity ? capacity - count : 0;
}

void script_reader::add_entry(const array_place &view, std::size_t service, int number, int favorite_id) {
  const service_data shown = services_.empty() ? place_ : pick(services_, service);
  made_.file.entry(view.code, shown, number, favorite_id);
}

void script_reader::entry(byte_reader &operands) {
  const array_place &view = pick(view_places(), operands.byte());
  const std::uint8_t service = operands.byte();
  const auto number = static_cast<int>(operands.number(2));
  const std::uint8_t favorite_id = operands.byte();
  if (room(view) > 0) {
    const auto position = static_cast<std::size_t>(get(made_.file.data, view.count, 2));
    add_entry(view, service, number, favorite_id);
    made_.file.set(view.array + position * test_support::entry_size, 1, operands.byte());
  }
}

void script_reader::entries(byte_reader &operands) {
  const array_place &view = pick(view_places(), operands.byte());
  const std::size_t count = std::min<std::size_t>(operands.number(2), room(view));
  for (std::size_t i = 0; i < count; ++i) {
    add_entry(view, i, static_cast<int>(i + 1), static_cast<int>(i));
  }
}

void script_reader::group(byte_reader &operands) {
  const array_place &table = pick(group_places(), operands.byte());
  const auto id = static_cast<int>(operands.number(2));
  if (room(table) > 0) {
    made_.file.group(table.code, id, operands.rest());
  }
}

void script_reader::groups(byte_reader &operands) {
  const array_place &table = pick(group_places(), operands.byte());
  const std::size_t count = std::min<std::size_t>(operands.number(2), room(table));
  for (std::size_t i = 0; i < count; ++i) {
    made_.file.group(table.code, static_cast<int>(i), "Group " + std::to_string(i));
  }
}

void script_reader::setting(byte_reader &operands) {
  static const std::vector<field> settings = make_settings();
  const field &set = pick(settings, operands.byte());
  made_.file.set(set.at, set.width, operands.number(2));
}

void script_reader::list_bytes(byte_reader &operands) {
  const std::size_t at = operands.number(3) % (test_support::list_size - step_size);
  const std::size_t count = operands.byte() % step_size;
  for (std::size_t i = 0; i < count; ++i) {
    made_.file.set(at + i, 1, operands.byte());
  }
}

const record_place &script_reader::record_from_end(std::uint8_t number) {
  const auto &records = made_.file.records;
  return records[records.size() - 1 - number % records.size()];
}

void script_reader::record_bytes(byte_reader &operands) {
  const record_place &record = record_from_end(operands.byte());
  const std::size_t at = operands.number(2) % record.size;
  const std::size_t count = std::min<std::size_t>(operands.byte(), record.size - at);
  for (std::size_t i = 0; i < std::min(count, step_size); ++i) {
    put(made_.file.data, record.offset + at + i, 1, operands.byte());
  }
}

void script_reader::record_filling(byte_reader &operands) {
  const record_place &record = record_from_end(operands.byte());
  const std::size_t at = operands.number(2) % record.size;
  const std::size_t count = std::min<std::size_t>(operands.number(2), record.size - at);
  std::fill_n(made_.file.data.begin() + static_cast<std::ptrdiff_t>(record.offset + at), count,
              static_cast<char>(operands.byte()));
}

void script_reader::tail(byte_reader &operands) {
  const std::uint8_t count = operands.byte();
  made_.tail.append(count, static_cast<char>(operands.byte()));
}

void damage(bytes &file, const scripted_file &scripted, std::size_t header_size) {
  const std::size_t end = scripted.cuts_header ? header_size : file.size();
  file.resize(end - std::min(scripted.cut, end));
  file += scripted.tail;
}

}  // namespace

scripted_file read_script(byte_reader &input) { return script_reader().read(input); }

bytes contents(scripted_file scripted) {
  damage(scripted.file.data, scripted, test_support::list_size);
  return std::move(scripted.file.data);
}

bytes contents(const scripted_file &scripted, const test_support::old_version &version) {
  bytes file = in_version(version, scripted.file).data;
  damage(file, scripted, version.size_of(record_kind::list));
  return file;
}

}  // namespace fuzz
