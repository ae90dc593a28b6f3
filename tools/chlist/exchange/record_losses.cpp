// Records are held against each other by the tables of their fields.
#include "chlist/exchange/record_losses.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "channel/store/hierarchy.h"
#include "chlist/exchange/json/list_json_fields.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

// Fields that this library does not interpret are called so.
bool is_reserved(const json_field &field) { return field.name.starts_with("reserved_"); }

template <class Record>
bool has_same_reserved(const Record &was, const Record &is, std::span<const json_field> fields) {
  const auto before = std::as_bytes(std::span(&was, 1));
  const auto after = std::as_bytes(std::span(&is, 1));
  return std::ranges::all_of(fields, [&](const json_field &field) {
    return !is_reserved(field) ||
           std::ranges::equal(before.subspan(field.offset, field.size), after.subspan(field.offset, field.size));
  });
}

bool is_whole(std::span<const char> text) { return decode_text(encoded_text(text)).is_whole; }

template <class Record>
bool has_own_length(const Record &record, std::span<const char> text) {
  return record.name_len == static_cast<int>(encoded_text(text).size());
}

// The records of a list in its order, each with the one that it hangs from.
struct placed_records_of {
  explicit placed_records_of(channel_list_st &list) {
    for (network_ch_st &network : channel::networks_of(list.network_list)) {
      for (tp_ch_st &transponder : channel::transponders_of(network)) {
        for (const channel_st &service : channel::services_of(transponder)) {
          services.push_back(&service);
        }
        transponders.push_back(&transponder);
      }
      networks.push_back(&network);
    }
    for (const group_table &table : groups_of(list)) {
      for (const group_st &group : table.used()) {
        groups.push_back(&group);
      }
    }
  }

  std::vector<const network_ch_st *> networks;
  std::vector<const tp_ch_st *> transponders;
  std::vector<const channel_st *> services;
  std::vector<const group_st *> groups;
};

class comparison {
 public:
  comparison(const records_of_list &before, const records_of_list &after, const paired_records &pairs,
             loss_counts &lost)
      : before_(before), after_(after), pairs_(pairs), lost_(lost), was_(before.records), is_(after.records) {}

  void count() {
    count_reserved(before_.records, after_.records, fields_of_list());
    compare(pairs_.networks, was_.networks, is_.networks, [&](const network_ch_st &was, const network_ch_st &is) {
      count_reserved(was, is, fields_of_network());
      count_text(was.network_name, is.network_name);
    });
    compare(pairs_.transponders, was_.transponders, is_.transponders,
            [&](const tp_ch_st &was, const tp_ch_st &is) { count_reserved(was, is, fields_of_transponder()); });
    compare(pairs_.groups, was_.groups, is_.groups, [&](const group_st &was, const group_st &is) {
      count_reserved(was, is, fields_of_group());
      count_name(was, is, was.name, is.name);
    });
    compare(pairs_.services, was_.services, is_.services, [&](const channel_st &was, const channel_st &is) {
      count_reserved(was, is, fields_of_service());
      for (std::size_t slot = 0; slot < std::size(was.name); ++slot) {
        count_name(was.name[slot], is.name[slot], was.name[slot].text, is.name[slot].text);
      }
    });
    count_parents();
    count_entries();
  }

 private:
  template <class Record, class Function>
  static void compare(const pairing &pairs, const std::vector<const Record *> &before,
                      const std::vector<const Record *> &after, const Function &function) {
    for (const auto &[was, is] : pairs.both) {
      function(*before[was], *after[is]);
    }
  }

  template <class Record>
  void count_reserved(const Record &was, const Record &is, std::span<const json_field> fields) {
    lost_.add("records with values that only the receiver knows", has_same_reserved(was, is, fields) ? 0 : 1);
  }

  template <class Record>
  void count_name(const Record &was, const Record &is, std::span<const char> text, std::span<const char> text_after) {
    lost_.add("lengths that are not those of their texts",
              has_own_length(was, text) == has_own_length(is, text_after) ? 0 : 1);
    count_text(text, text_after);
  }

  void count_text(std::span<const char> was, std::span<const char> is) {
    lost_.add("texts with characters that their table does not have", is_whole(was) == is_whole(is) ? 0 : 1);
  }

  // A service may hang from a transponder of which it says something else.
  void count_parents() {
    for (const auto &[was, is] : pairs_.services.both) {
      count_identity(is_as_parents(before_.list, was), is_as_parents(after_.list, is));
    }
  }

  static bool is_as_parents(const line_up &list, std::size_t place) {
    const line_up_service &service = list.services[place];
    const line_up_transponder &transponder = list.transponders[service.transponder];
    const line_up_network &network = list.networks[transponder.network];
    const channel::identity id = service.id();
    return id == channel::identity{network.net_index,     network.network_id, transponder.ts_id,
                                   transponder.frequency, id.service_id,      transponder.polarisation};
  }

  void count_identity(bool was_same, bool is_same) {
    lost_.add("entries, transponders and networks that name a service otherwise than it does",
              was_same == is_same ? 0 : 1);
  }

  // The first entry of a service stands for it in its view.
  void count_entries() {
    const std::vector<list_view> views_before = chlist::views_of(std::as_const(before_.records));
    const std::vector<list_view> views_after = chlist::views_of(std::as_const(after_.records));
    std::vector<std::size_t> partners(before_.list.services.size(), nowhere);
    for (const auto &[was, is] : pairs_.services.both) {
      partners[was] = is;
    }
    const std::vector<named_view> entries_before = chlist::views_of(before_.list);
    const std::vector<named_view> entries_after = chlist::views_of(after_.list);
    for (const auto &[was, is] : pairs_.views.both) {
      const std::vector<std::size_t> first = first_entries(entries_after[is], after_.list.services.size());
      for (std::size_t at = 0; at < entries_before[was].entries.size(); ++at) {
        const std::size_t service = entries_before[was].entries[at].service;
        const std::size_t partner = service != nowhere ? partners[service] : nowhere;
        if (partner != nowhere && first[partner] != nowhere) {
          count_reserved(views_before[was].slots[at], views_after[is].slots[first[partner]], fields_of_entry());
          count_identity(entries_before[was].entries[at].id == before_.list.services[service].id(),
                         entries_after[is].entries[first[partner]].id == after_.list.services[partner].id());
        }
      }
    }
  }

  static std::vector<std::size_t> first_entries(const named_view &view, std::size_t services) {
    std::vector<std::size_t> first(services, nowhere);
    for (std::size_t at = view.entries.size(); at-- > 0;) {
      if (view.entries[at].service != nowhere) {
        first[view.entries[at].service] = at;
      }
    }
    return first;
  }

  const records_of_list &before_;
  const records_of_list &after_;
  const paired_records &pairs_;
  loss_counts &lost_;
  placed_records_of was_;
  placed_records_of is_;
};

}  // namespace

void count_record_losses(const records_of_list &before, const records_of_list &after, const paired_records &pairs,
                         loss_counts &lost) {
  comparison(before, after, pairs, lost).count();
}

}  // namespace chlist
