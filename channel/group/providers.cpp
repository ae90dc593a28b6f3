// The provider table: sorted by name, ids that stay with their providers, and the removal of those no service carries.
#include <channel/providers.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cstring>

#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/hierarchy.h"
#include "channel/store/view.h"
#include "channel/text.h"

namespace channel {
namespace {

std::int16_t get_provider_new_id() {
  const std::int16_t id = provider_table().free_id();
  if (id < 0) {
    LOG_ERROR("\n");
  }
  return id;
}

// Which places of the table hold a provider that a service carries: the first with the service's id.
std::bitset<MAX_PROVIDER> places_in_use(const group_table &providers) {
  std::bitset<MAX_PROVIDER> in_use;
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    for (tp_ch_st &transponder : transponders_of(network)) {
      for (const channel_st &service : services_of(transponder)) {
        if (const group_st *provider = providers.find(service.provider_id); provider != nullptr) {
          in_use.set(static_cast<std::size_t>(provider - providers.groups));
        }
      }
    }
  }
  return in_use;
}

// Cuts the table at a place and zeroes what stood behind.
void keep_until(const group_table &table, const group_st *new_end) {
  std::fill(table.groups + (new_end - table.groups), table.end(), group_st{});
  *table.count = static_cast<std::int16_t>(new_end - table.groups);
}

// Ids of providers in the order of their names.
class sorted_ids {
 public:
  explicit sorted_ids(std::int16_t *ids) : ids_(ids) { std::fill_n(ids, MAX_PROVIDER, std::int16_t{-1}); }

  [[nodiscard]] bool holds(std::int16_t id) const { return std::find(ids_, ids_ + count_, id) != ids_ + count_; }

  void insert(const group_st &provider) {
    std::int16_t *place = std::find_if(ids_, ids_ + count_, [&provider](std::int16_t id) {
      return compare_group_name(*provider_table().find(id), provider) > 0;
    });
    std::move_backward(place, ids_ + count_, ids_ + count_ + 1);
    *place = provider.id;
    ++count_;
  }

  [[nodiscard]] int count() const { return count_; }

 private:
  std::int16_t *ids_;
  int count_ = 0;
};

}  // namespace
}  // namespace channel

using channel::group_table;
using channel::provider_table;

extern "C" {

int add_provider_info(group_st provider) {
  if (provider.name_len < 0) {
    return -1;
  }
  const group_table providers = provider_table();
  if (providers.size() >= providers.capacity) {
    LOG_ERROR("can't insert provider: exceed max\n");
    return -1;
  }
  group_st *place = std::find_if(providers.begin(), providers.end(), [&provider](const group_st &other) {
    return channel::compare_group_name(other, provider) > 0;
  });
  LOG_PLAIN(3, "add index %d provider : %s \n", static_cast<int>(place - providers.groups),
            channel::name_of(provider).c_str());
  provider.id = channel::get_provider_new_id();
  std::move_backward(place, providers.end(), providers.end() + 1);
  *place = provider;
  *providers.count = static_cast<int16_t>(providers.size() + 1);
  return provider.id;
}

group_st *find_provider_info(const char *name, int8_t length) {
  if (name == nullptr) {
    LOG_ERROR("name is null\n");
    return nullptr;
  }
  if (length < 0 || length > static_cast<int>(sizeof(group_st::name))) {
    return nullptr;
  }
  const group_table providers = provider_table();
  group_st *found = std::find_if(providers.begin(), providers.end(), [=](const group_st &provider) {
    return provider.name_len == length && std::memcmp(provider.name, name, static_cast<std::size_t>(length)) == 0;
  });
  return found != providers.end() ? found : nullptr;
}

group_st *find_provider_id(int16_t id) { return provider_table().find(id); }

// Kept: the place behind the last provider is answered as well; hosts find an empty record there.
group_st *get_provider_info_by_index(int16_t index) {
  const group_table providers = provider_table();
  if (index > providers.size()) {
    return nullptr;
  }
  if (index < 0 || index >= providers.capacity) {
    LOG_ERROR("index %d outside the provider table\n", index);
    return nullptr;
  }
  return providers.groups + index;
}

int16_t get_provider_number(void) { return channel::channel_list.provider_num; }

int remove_provider_index(int32_t index) {
  const group_table providers = provider_table();
  if (index < 0 || index >= providers.size()) {
    LOG_ERROR("index %ld outside the provider table\n", static_cast<long>(index));
    return -1;
  }
  channel::keep_until(providers, std::move(providers.groups + index + 1, providers.end(), providers.groups + index));
  return 0;
}

// Kept: marks are kept by place and do not move with the records, so that everything behind the first unused provider
// goes with it; hosts register the providers of a scan anew.
int remove_invalid_provider_info(void) {
  LOG_TRACE(2, "\n");
  if (channel::channel_list.network_num == 0) {
    return 0;
  }
  const group_table providers = provider_table();
  const auto in_use = channel::places_in_use(providers);
  int first_unused = 0;
  while (first_unused < providers.size() && in_use.test(static_cast<std::size_t>(first_unused))) {
    ++first_unused;
  }
  const group_st *new_end = providers.groups + first_unused;
  for (const group_st *removed = new_end; removed != providers.end(); ++removed) {
    LOG_TRACE(2, "delete provider : %s \n", channel::name_of(*removed).c_str());
  }
  channel::keep_until(providers, new_end);
  return 0;
}

int get_provider_id_by_service_type(int8_t view_type, int16_t *out) {
  const channel::view listed = channel::fetch_view(view_type);
  if (!listed || listed.size() == 0) {
    return 0;
  }
  if (out == nullptr) {
    LOG_ERROR("out is null\n");
    return 0;
  }
  channel::sorted_ids ids(out);
  for (const virtual_channel_st &entry : listed) {
    if (entry.rch == nullptr) {
      LOG_ERROR("r_ch == NULL\n");
      continue;
    }
    if (ids.holds(entry.rch->provider_id)) {
      continue;
    }
    if (const group_st *provider = find_provider_id(entry.rch->provider_id); provider != nullptr) {
      ids.insert(*provider);
    } else {
      LOG_ERROR("provider id %d unknown\n", entry.rch->provider_id);
    }
  }
  return ids.count();
}
}
