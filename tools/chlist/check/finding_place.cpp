// Entries stand in the list's own record, in front of all services.
#include "chlist/check/finding_place.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "chlist/line_up/list_contents.h"

namespace chlist {
namespace {

finding_place place_of_entry_at(std::size_t offset, const file_records &framed) {
  const std::vector<list_view> views = views_of(framed.list());
  for (std::size_t i = 0; i < views.size(); ++i) {
    const std::size_t begin = framed.offset_of(views[i].slots.data());
    const std::size_t each = framed.offset_of(views[i].slots.data() + 1) - begin;
    if (offset >= begin && offset < begin + each * views[i].size()) {
      return {.view = i, .entry = (offset - begin) / each};
    }
  }
  return {};
}

}  // namespace

finding_place place_at(std::size_t offset, const file_records &framed) {
  const auto &services = framed.services();
  const auto behind = std::ranges::upper_bound(services, offset, {}, &framed_record<channel_st>::offset);
  if (behind == services.begin()) {
    return framed.has_list() ? place_of_entry_at(offset, framed) : finding_place();
  }
  const auto found = std::prev(behind);
  if (offset >= found->offset + framed.sizes().service) {
    return {};
  }
  return {.service = static_cast<std::size_t>(found - services.begin())};
}

}  // namespace chlist
