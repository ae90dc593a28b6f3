// Sorting permutes whole entries inside a view. The comparisons are those that hosts see in the order: they are not
// total orders (a null channel equals every other, a frequency difference wraps at 32 bits), which entry_sort bears.
#include <channel/sorting.h>

#include <algorithm>
#include <array>
#include <channel/views.h>
#include <cstddef>
#include <cstring>
#include <span>
#include <strings.h>

#include "channel/log.h"
#include "channel/store/view.h"
#include "channel/vindex/entry_sort.h"
#include "channel/vindex/sorting.h"

namespace channel {
namespace {

int compare_service_id(const virtual_channel_st &a, const virtual_channel_st &b) { return a.service_id - b.service_id; }

int compare_transponder(const virtual_channel_st &a, const virtual_channel_st &b) {
  const auto difference = static_cast<std::int32_t>(a.frequency - b.frequency);
  return difference != 0 ? difference : compare_service_id(a, b);
}

int compare_number(const virtual_channel_st &a, const virtual_channel_st &b) {
  const int difference = a.major_ch_num - b.major_ch_num;
  return difference != 0 ? difference : a.minor_ch_num - b.minor_ch_num;
}

int compare_favourite_id(const virtual_channel_st &a, const virtual_channel_st &b) {
  const int difference = a.favorite_id - b.favorite_id;
  return difference != 0 ? difference : compare_service_id(a, b);
}

// The visible text of a name: a character-table selector byte that leads a broadcast text is passed over, and the 96
// bytes behind it count, the last of which is the slot's byte behind the text.
const char *visible_text(const name_slot_st &slot) {
  const char *text = reinterpret_cast<const char *>(&slot) + offsetof(name_slot_st, text);
  return static_cast<unsigned char>(*text) < 0x20 ? text + 1 : text;
}

int compare_name(const virtual_channel_st &a, const virtual_channel_st &b) {
  if (a.rch == nullptr || b.rch == nullptr) {
    return 0;
  }
  return strncasecmp(visible_text(a.rch->name[0]), visible_text(b.rch->name[0]), sizeof(name_slot_st::text));
}

int compare_user_order(const virtual_channel_st &a, const virtual_channel_st &b) {
  return a.rch == nullptr || b.rch == nullptr ? 0 : a.rch->user_order_key - b.rch->user_order_key;
}

// The bytes of an entry in memory order, pointer included, the same bytes on every target.
int compare_bytes(const virtual_channel_st &a, const virtual_channel_st &b) {
  const int difference = std::memcmp(&a, &b, entry_bytes);
  return difference != 0 ? difference : std::memcmp(&a.rch, &b.rch, sizeof(channel_st *));
}

template <int Compare(const virtual_channel_st &, const virtual_channel_st &)>
void sort_entries(std::span<virtual_channel_st> entries) {
  entry_sort<Compare>(entries).run();
}

struct view_sort {
  int type;
  const char *name;
  void (*sort)(std::span<virtual_channel_st> entries);
};

constexpr std::array view_sorts = {
    view_sort{SORT_CH_NAME, "SORT_CH_NAME", sort_entries<compare_name>},
    view_sort{SORT_TRANSPONDER, "SORT_TRANSPONDER", sort_entries<compare_transponder>},
    view_sort{SORT_NUMBER, "SORT_NUMBER", sort_entries<compare_number>},
    view_sort{SORT_BOUQUET, "SORT_BOUQUET", nullptr},
    view_sort{SORT_SERVICE_ID, "SORT_SERVICE_ID", sort_entries<compare_service_id>},
    view_sort{SORT_FAV_DEFAULT, "SORT_FAV_DEFAULT", sort_entries<compare_favourite_id>},
    view_sort{SORT_USER_TYPE, "SORT_USER_TYPE", sort_entries<compare_user_order>},
};

}  // namespace

int qsort_virtual_channel(std::span<virtual_channel_st> entries, int sort_type) {
  const auto *sort = std::find_if(view_sorts.begin(), view_sorts.end(),
                                  [sort_type](const view_sort &candidate) { return candidate.type == sort_type; });
  if (sort == view_sorts.end()) {
    LOG_ERROR("Unknown sort_type\n");
    return -1;
  }
  LOG_PLAIN(2, "%s\n", sort->name);
  if (sort->sort == nullptr) {
    return -1;
  }
  LOG_TRACE(2, "vnumber %d \n", static_cast<int>(entries.size()));
  sort->sort(entries);
  LOG_TRACE(2, "\n");
  return 0;
}

namespace {

bool is_sortable(int view_type) {
  return (view_type >= VIEW_ALL && view_type <= VIEW_USER) ||
         (view_type >= VIEW_FAVOURITE && view_type <= VIEW_FAVOURITE_LAST);
}

struct flag_sort {
  std::uint8_t mask;
  const char *name;
};

// The flag that a sort type partitions by; none (mask 0) for every other type.
flag_sort flag_of(int sort_type) {
  switch (sort_type) {
    case SORT_FTA:
      return {CHANNEL_FLAG_FTA, "SORT_FTA"};
    case SORT_LOCK:
      return {CHANNEL_FLAG_LOCKED, "SORT_LOCK"};
    default:
      return {0, nullptr};
  }
}

// Appends the entries of the source whose flag is set, or clear, behind the work area's end, in the source's order.
virtual_channel_st *append_by_flag(const view &source, std::uint8_t mask, bool set, virtual_channel_st *end) {
  return std::copy_if(source.begin(), source.end(), end, [=](const virtual_channel_st &entry) {
    return entry.rch != nullptr && ((entry.rch->flag & mask) != 0) == set;
  });
}

void report_missing_channels(const view &source, const char *operation) {
  for (const virtual_channel_st &entry : source) {
    if (entry.rch == nullptr) {
      LOG_ERROR_AS(operation, "r_ch == NULL\n");
    }
  }
}

// Makes the USER view hold the entries of the source, which may be that view itself: those whose flag is clear, then
// those whose flag is set.
void partition_into_user_view(const view &source, std::uint8_t mask) {
  // Slots at the end that no entry with a channel fills keep what a plain copy of the source puts there.
  std::array<virtual_channel_st, MAX_CHANNEL> work;
  std::copy(source.begin(), source.end(), work.begin());
  virtual_channel_st *end = append_by_flag(source, mask, false, work.data());
  append_by_flag(source, mask, true, end);

  const view user = find_view(VIEW_USER);
  const std::int16_t count = source.size();
  std::copy_n(work.begin(), count, user.entries);
  *user.count = count;
}

}  // namespace
}  // namespace channel

using channel::view;

extern "C" {

int sort_vch_type(int8_t sort_type, int8_t view_type) {
  LOG_TRACE(2, "sort_type %d : vch_type %d \n", sort_type, view_type);
  std::span<virtual_channel_st> entries;
  if (channel::is_sortable(view_type)) {
    entries = channel::find_view(view_type).used();
  } else {
    LOG_ERROR("unknown vch_type=%d\n", view_type);
  }
  // Without a view nothing is sorted, but an unknown sort type is still reported.
  static_cast<void>(channel::qsort_virtual_channel(entries, sort_type));
  return 0;
}

int sort_vindex_ex(int8_t sort_type) {
  int result = -1;
  for (const int type : {VIEW_ALL, VIEW_USER, VIEW_PROMOTION, VIEW_TV, VIEW_RADIO}) {
    result = channel::qsort_virtual_channel(channel::find_view(type).used(), sort_type);
  }
  return result;
}

int sort_vindex_by_number(int8_t view_type) {
  const view sorted = channel::fetch_view(view_type);
  if (!sorted) {
    return -1;
  }
  channel::sort_entries<channel::compare_bytes>(sorted.used());
  return 0;
}

int sort_vindex(void) {
  for (const int type : {VIEW_ALL, VIEW_PROMOTION, VIEW_TV, VIEW_RADIO}) {
    channel::sort_entries<channel::compare_bytes>(channel::find_view(type).used());
  }
  return 0;
}

int sort_vindex_by_flag(int8_t view_type, int8_t sort_type) {
  const view source = channel::fetch_view(view_type);
  if (!source) {
    return -1;
  }
  const channel::flag_sort sort = channel::flag_of(sort_type);
  if (sort.mask == 0) {
    LOG_ERROR("Unknown sort_type\n");
    return -1;
  }
  LOG_PLAIN(2, "%s\n", sort.name);
  LOG_PLAIN(2, "vch_number %d \n", source.size());
  channel::report_missing_channels(source, __func__);
  channel::partition_into_user_view(source, sort.mask);
  change_vindex_type(VIEW_USER);
  return 0;
}
}
