#include "store_builder.h"

#include <base/verbosity.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace test_support {
namespace {

void empty_everything() {
  std::fill(std::begin(verbosity_map), std::end(verbosity_map), 0);
  verbosity_map[7] = -1;
  reset_channel_list();
  init_vindex(VIEW_WORK);
  init_return_channel();
  set_limited_channel_flag(0);
  set_target_dir("/");
  verbosity_map[7] = 0;
}

}  // namespace

std::vector<channel_st *> fill_view(std::int8_t view_type, int n, service_data data) {
  std::vector<channel_st *> services;
  for (int i = 0; i < n; ++i) {
    data.service_id = static_cast<std::uint16_t>(i + 1);
    services.push_back(file_service(data));
    append_entry(view_type, entry_of(*services.back(), static_cast<std::int16_t>(i + 1)));
  }
  return services;
}

std::vector<int> service_ids(std::int8_t view_type) {
  const virtual_channel_st *entries = get_virtual_channel_st(view_type);
  std::vector<int> ids;
  std::transform(entries, entries + *get_virtual_channel_vnumber(view_type), std::back_inserter(ids),
                 [](const virtual_channel_st &entry) { return entry.service_id; });
  return ids;
}

std::vector<int> majors(std::int8_t view_type) {
  const virtual_channel_st *entries = get_virtual_channel_st(view_type);
  std::vector<int> numbers;
  std::transform(entries, entries + *get_virtual_channel_vnumber(view_type), std::back_inserter(numbers),
                 [](const virtual_channel_st &entry) { return entry.major_ch_num; });
  return numbers;
}

bool slots_behind_count_are_zero(std::int8_t view_type, int capacity) {
  static const virtual_channel_st zero = {};
  const virtual_channel_st *entries = get_virtual_channel_st(view_type);
  return std::all_of(entries + *get_virtual_channel_vnumber(view_type), entries + capacity,
                     [](const virtual_channel_st &entry) { return std::memcmp(&entry, &zero, sizeof zero) == 0; });
}

void store_test::SetUp() { empty_everything(); }

void store_test::TearDown() { empty_everything(); }

}  // namespace test_support
