// The provider table: sorted by name, ids that stay with their providers, and the removal of those no service carries.
#include <channel/providers.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/hierarchy.h"
#include "channel/store/view.h"
#include "channel/text.h"

namespace channel {
namespace {

id_set carried_ids() {
  id_set carried;
  for (const filed_service &filed : all_services_of(channel_list.network_list)) {
    carried.add(filed.service.provider_id);
  }
  return carried;
}

// The first provider that no service carries, or the end. Of two with one id, services carry the first.
group_st *first_unused(const group_table &providers) {
  id_set carried = carried_ids();
  return std::find_if(providers.begin(), providers.end(),
                      [&carried](const group_st &provider) { return !carried.remove(provider.id); });
}

// Cuts the table at a place and zeroes what stood behind.
void keep_until(const group_table &table, const group_st *new_end) {
  std::fill(table.groups + (new_end - table.groups), table.end(), group_st{});
  *table.count = static_cast<std::int16_t>(new_end - table.groups);
}

// Providers in the order of their names, those of equal names in the order of their insertion.
class sorted_providers {
 public:
  void insert(const group_st &provider) {
    const group_st **end = providers_.data() + count_;
    const group_st **place = std::upper_bound(providers_.data(), end, &provider, is_before);
    std::move_backward(place, end, end + 1);
    *place = &provider;
    ++count_;
  }

  [[nodiscard]] int count() const { return count_; }

  void write_ids(std::int16_t *out) const {
    std::int16_t *behind =
        std::transform(providers_.data(), providers_.data() + count_, out, [](const group_st *p) { return p->id; });
    std::fill(behind, out + MAX_PROVIDER, std::int16_t{-1});
  }

 private:
  static bool is_before(const group_st *a, const group_st *b) { return compare_group_name(*a, *b) < 0; }

  std::array<const group_st *, MAX_PROVIDER> providers_;
  int count_ = 0;
};

// The providers of a view's services, each once. What has none is reported in the operation's name.
sorted_providers providers_in(const view &listed, const char *operation) {
  sorted_providers found;
  id_set listed_ids;
  for (const virtual_channel_st &entry : listed) {
    if (entry.rch == nullptr) {
      LOG_ERROR_AS(operation, "r_ch == NULL\n");
      continue;
    }
    const std::int16_t id = entry.rch->provider_id;
    if (listed_ids.holds(id)) {
      continue;
    }
    if (const group_st *provider = find_provider_id(id); provider != nullptr) {
      listed_ids.add(id);
      found.insert(*provider);
    } else {
      LOG_ERROR_AS(operation, "provider id %d unknown\n", id);
    }
  }
  return found;
}

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
  provider.id = providers.free_id();
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

// Compatibility: the place behind the last provider is answered as well; hosts find an empty record there.
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
  if (index > providers.size()) {
    return -1;
  }
  if (index < 0 || index == providers.size()) {
    LOG_ERROR("index %ld outside the provider table\n", static_cast<long>(index));
    return -1;
  }
  channel::keep_until(providers, std::move(providers.groups + index + 1, providers.end(), providers.groups + index));
  return 0;
}

// Compatibility: marks are kept by place and do not move with the records, so that everything behind the first unused
// provider goes with it; hosts register the providers of a scan anew.
int remove_invalid_provider_info(void) {
  LOG_TRACE(2, "\n");
  if (channel::channel_list.network_num == 0) {
    return 0;
  }
  const group_table providers = provider_table();
  const group_st *new_end = channel::first_unused(providers);
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
  const channel::sorted_providers found = channel::providers_in(listed, __func__);
  found.write_ids(out);
  return found.count();
}
}
