// Lookups that edits share.
#include "chlist/edit/edited_services.h"

#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "channel/store/group_table.h"
#include "channel/store/hierarchy.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/report.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {

namespace {

// The records of the list in memory by the texts that name them.
class named_records {
 public:
  explicit named_records(std::int8_t view) : view_(view), list_(line_up_in_memory()) {
    for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
      records_.push_back(&filed.service);
    }
  }

  [[nodiscard]] channel_st *of(std::string_view text) const { return records_[service_named(list_, text, view_)]; }

 private:
  std::int8_t view_;
  line_up list_;
  std::vector<channel_st *> records_;
};

channel_st *editable(const named_records &records, std::string_view text) {
  channel_st *service = records.of(text);
  const channel::identity id = channel::identity_of(*service);
  if (get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation) != service) {
    throw std::runtime_error(fmt::format("{} cannot be edited: its identity leads to another service or to none",
                                         describe(known_as(*service))));
  }
  return service;
}

}  // namespace

channel_st &editable_service(std::string_view text, std::int8_t view) { return *editable(named_records(view), text); }

std::vector<channel_st *> editable_services(const std::vector<std::string> &texts, edit_notes &notes,
                                            std::int8_t view) {
  const named_records records(view);
  std::vector<channel_st *> services;
  for (const std::string &text : texts) {
    channel_st *service = editable(records, text);
    if (std::ranges::find(services, service) == services.end()) {
      services.push_back(service);
    } else {
      notes.push_back(fmt::format("{} is named twice: taken once", name_for_message(*service)));
    }
  }
  return services;
}

void must_have_frequency(const channel_st &service) {
  if (service.frequency == 0) {
    throw std::runtime_error(
        fmt::format("{} cannot be removed or filed anew: it has no frequency", describe(known_as(service))));
  }
}

std::vector<std::int8_t> views_in_use() {
  std::vector<std::int8_t> codes = saved_views();
  codes.resize(codes.size() - MAX_FAV + static_cast<std::size_t>(channel::favourite_table().size()));
  return codes;
}

std::vector<std::int8_t> saved_views() {
  std::vector<std::int8_t> codes = {VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_USER, VIEW_PROMOTION};
  for (int code = VIEW_FAVOURITE; code <= VIEW_FAVOURITE_LAST; ++code) {
    codes.push_back(static_cast<std::int8_t>(code));
  }
  return codes;
}

std::string title_of(std::int8_t view) {
  const virtual_channel_st *entries = channel::find_view(view).entries;
  for (const list_view &each : views_of(*get_channel_list())) {
    if (each.slots.data() == entries) {
      return fmt::format("the {} view", label_of(each.name));
    }
  }
  return fmt::format("view {}", view);
}

int index_of(const channel::view &view, const channel_st &service) {
  const auto entries = view.used();
  const auto found = std::ranges::find(entries, &service, &virtual_channel_st::rch);
  return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
}

std::string name_for_message(const channel_st &service) { return shown(name_in(service.name[0].text)); }

}  // namespace chlist
