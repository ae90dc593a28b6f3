// Which services are listed, and in what order.
#include "chlist/fields/view_rows.h"

#include <channel/sorting.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <stdexcept>
#include <utility>

#include "channel/store/service_index.h"
#include "channel/vindex/sorting.h"
#include "chlist/closest.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

constexpr view_sort sorts[] = {
    {"number", SORT_NUMBER, "the channel number, then the minor one"},
    {"name", SORT_CH_NAME, "the name, without regard to case"},
    {"transponder", SORT_TRANSPONDER, "the frequency, then the service id"},
    {"service_id", SORT_SERVICE_ID, "the service id"},
    {"favourite_key", SORT_FAV_DEFAULT, "the position key of the entry"},
    {"order_key", SORT_USER_TYPE, "the key of the user's own order (`chlist set FILE SERVICE order_key=N`)"}};

// The list is the caller's to change, through a view of it as well.
std::span<virtual_channel_st> entries_in(channel_list_st & /*list*/, const list_view &view) {
  return {const_cast<virtual_channel_st *>(view.slots.data()), view.size()};
}

}  // namespace

std::span<const view_sort> all_sorts() { return sorts; }

std::vector<term> terms_of_sorts() {
  std::vector<term> terms;
  for (const view_sort &each : sorts) {
    terms.push_back({std::string(each.name), std::string(each.about)});
  }
  return terms;
}

void sort_view(channel_list_st &list, std::int8_t view, std::string_view sort) {
  const auto *const found = std::ranges::find(sorts, sort, &view_sort::name);
  if (found == std::end(sorts)) {
    throw std::runtime_error(unknown_name("sort", sort, words_of(terms_of_sorts())));
  }
  channel::service_index index(list);
  const std::vector<list_view> views = views_of(std::as_const(list));
  const list_view &sorted = *std::ranges::find(views, view, &list_view::code);
  const std::span<virtual_channel_st> entries = entries_in(list, sorted);
  for (virtual_channel_st &entry : entries) {
    entry.rch = index.look_up(channel::identity_of(entry));
  }
  channel::qsort_virtual_channel(entries, found->type);
}

std::vector<service_row> filtered(const line_up &list, std::int8_t view, const std::vector<where> &conditions) {
  std::vector<service_row> rows = rows_of(list, view);
  std::erase_if(rows, [&conditions](const service_row &row) {
    return !std::ranges::all_of(conditions, [&row](const where &condition) { return condition.takes(row); });
  });
  return rows;
}

}  // namespace chlist
