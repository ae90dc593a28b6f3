// A host in C++20: the views of a list as ranges, and the list released at the end of its scope.
#include <algorithm>
#include <channel/channel.h>
#include <cstdint>
#include <cstdio>
#include <span>

namespace {

// The process's one list, loaded for a scope.
class loaded_list {
 public:
  explicit loaded_list(const char *name) : version_(load_channel(name, 255)) {}
  loaded_list(const loaded_list &) = delete;
  loaded_list &operator=(const loaded_list &) = delete;
  ~loaded_list() { reset_channel_list(); }
  [[nodiscard]] bool is_current() const { return version_ == CHANNEL_LIST_VERSION; }

 private:
  int version_;
};

std::span<virtual_channel_st> entries_of(std::int8_t view) {
  return {get_virtual_channel_st(view), static_cast<std::size_t>(*get_virtual_channel_vnumber(view))};
}

}  // namespace

int main() {
  set_target_dir("./");
  const loaded_list list("channels.dat");
  if (!list.is_current()) {
    return 1;
  }
  for (const virtual_channel_st &entry : entries_of(VIEW_ALL)) {
    std::printf("%4d %.96s\n", entry.major_ch_num, entry.rch != nullptr ? entry.rch->name[0].text : "(gone)");
  }
  const auto radio = entries_of(VIEW_RADIO);
  const auto free_services = std::ranges::count_if(radio, [](const virtual_channel_st &entry) {
    return entry.rch != nullptr && (entry.rch->flag & CHANNEL_FLAG_FTA) == 0;
  });
  std::printf("%zu radio, %td of it free\n", radio.size(), free_services);
  return 0;
}
