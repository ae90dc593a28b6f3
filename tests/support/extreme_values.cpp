#include "extreme_values.h"

#include <cstring>
#include <numeric>
#include <string>

namespace extremes {
namespace {

template <class Number>
constexpr Number most = std::numeric_limits<Number>::max();
template <class Number>
constexpr Number least = std::numeric_limits<Number>::lowest();

constexpr std::size_t longest = most<std::int16_t>;

// Null, and an array on the heap of exactly a size, so that a sanitizer sees what goes past it.
template <class Value, std::size_t Size>
std::vector<Value *> null_and_array() {
  static std::vector<Value> array(Size);
  return {nullptr, array.data()};
}

template <class Value>
std::vector<const Value *> null_and_positions() {
  static const std::vector<Value> positions = [] {
    std::vector<Value> made(longest);
    std::iota(made.begin(), made.end(), Value{0});
    return made;
  }();
  return {nullptr, positions.data()};
}

template <class Record>
Record filled_with(unsigned char byte) {
  Record record;
  std::memset(static_cast<void *>(&record), byte, sizeof record);
  return record;
}

template <class Record>
Record *first_of(const list_head &head) {
  return head.next == nullptr || head.next == &head ? nullptr : reinterpret_cast<Record *>(head.next);
}

network_ch_st *first_network() { return first_of<network_ch_st>(get_channel_list()->network_list); }

tp_ch_st *first_transponder() {
  const network_ch_st *network = first_network();
  return network != nullptr ? first_of<tp_ch_st>(network->tp_list) : nullptr;
}

channel_st *first_service() {
  const tp_ch_st *transponder = first_transponder();
  return transponder != nullptr ? first_of<channel_st>(transponder->rch_list) : nullptr;
}

group_st named_group(std::int16_t name_length, const std::string &name) {
  group_st group = {};
  group.id = most<std::int16_t>;
  group.name_len = name_length;
  std::memcpy(group.name, name.data(), std::min(name.size(), sizeof group.name));
  return group;
}

}  // namespace

template <>
std::vector<std::int8_t> values_of() {
  return {least<std::int8_t>, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 29, 30, 98, 99, most<std::int8_t>};
}

template <>
std::vector<std::uint8_t> values_of() {
  return {0, 1, 2, 10, 127, 128, 254, 255};
}

template <>
std::vector<std::int16_t> values_of() {
  return {least<std::int16_t>,
          -1,
          0,
          1,
          2,
          9,
          10,
          11,
          19,
          20,
          21,
          39,
          40,
          41,
          49,
          50,
          51,
          95,
          96,
          97,
          98,
          199,
          200,
          201,
          499,
          500,
          501,
          999,
          1000,
          1001,
          3999,
          4000,
          4001,
          4999,
          5000,
          5001,
          most<std::int16_t>};
}

template <>
std::vector<std::uint16_t> values_of() {
  return {0, 1, 2, 4999, 5000, 5001, 0x7FFF, 0x8000, 0xFFFE, 0xFFFF};
}

template <>
std::vector<std::int32_t> values_of() {
  return {least<std::int32_t>, -1, 0, 1, 255, 256, 499, 500, 501, 0xFFFF, 0x10000, most<std::int32_t>};
}

template <>
std::vector<std::uint32_t> values_of() {
  return {0, 1, 2499, 2500, 2501, 0x7FFFFFFF, 0x80000000, most<std::uint32_t>};
}

template <>
std::vector<const char *> values_of() {
  static const std::vector<char> empty(64);
  static const std::string endless(longest, 'x');
  static const std::string name = "x" + std::string(63, '\0');
  return {nullptr, empty.data(), endless.c_str(), name.c_str()};
}

template <>
std::vector<channel_st *> values_of() {
  return {nullptr, first_service()};
}

template <>
std::vector<tp_ch_st *> values_of() {
  return {nullptr, first_transponder()};
}

template <>
std::vector<network_ch_st *> values_of() {
  return {nullptr, first_network()};
}

template <>
std::vector<virtual_channel_st *> values_of() {
  return {nullptr, get_channel_list()->vch};
}

template <>
std::vector<const channel_st *> values_of() {
  static const auto zeros = filled_with<channel_st>(0);
  static const auto ones = filled_with<channel_st>(0xFF);
  return {nullptr, &zeros, &ones, first_service()};
}

template <>
std::vector<const virtual_channel_st *> values_of() {
  static const auto zeros = filled_with<virtual_channel_st>(0);
  static const auto ones = [] {
    auto made = filled_with<virtual_channel_st>(0xFF);
    made.rch = nullptr;
    return made;
  }();
  return {nullptr, &zeros, &ones, get_channel_list()->vch};
}

template <>
std::vector<group_st> values_of() {
  const std::string whole(sizeof group_st::name, 'x');
  return {group_st{},
          named_group(least<std::int16_t>, "x"),
          named_group(-1, "x"),
          named_group(0, "x"),
          named_group(97, whole.substr(1)),
          named_group(98, whole),
          named_group(most<std::int16_t>, std::string(sizeof group_st::name, '\xFF')),
          named_group(1, "y")};
}

template <>
std::vector<const group_st *> values_of() {
  static const std::vector<group_st> table(MAX_PROVIDER, named_group(most<std::int16_t>, std::string(98, 'x')));
  return {nullptr, table.data()};
}

template <>
std::vector<std::int16_t *> values_of() {
  return null_and_array<std::int16_t, MAX_PROVIDER>();
}

template <>
std::vector<std::uint16_t *> values_of() {
  return null_and_array<std::uint16_t, MAX_PROMO_CHANNEL>();
}

template <>
std::vector<group_st *> values_of() {
  return null_and_array<group_st, MAX_PROVIDER>();
}

template <>
std::vector<virtual_channel_st **> values_of() {
  return null_and_array<virtual_channel_st *, 1>();
}

template <>
std::vector<const std::int16_t *> values_of() {
  return null_and_positions<std::int16_t>();
}

template <>
std::vector<const std::uint16_t *> values_of() {
  return null_and_positions<std::uint16_t>();
}

}  // namespace extremes
