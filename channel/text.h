// Text in fixed fields: names and directories that fill their field need not be terminated. Nothing here reads past the
// end of a field.
#pragma once

#include <channel/records.h>
#include <cstddef>
#include <cstring>

namespace channel {

// A terminated copy of a field, for formats that print "%s".
template <std::size_t Size>
class field_text {
 public:
  explicit field_text(const char (&field)[Size]) {
    std::memcpy(text_, field, Size);
    text_[Size] = '\0';
  }
  [[nodiscard]] const char *c_str() const { return text_; }

 private:
  char text_[Size + 1];
};

inline auto name_of(const channel_st &service) { return field_text(service.name[0].text); }
inline auto name_of(const network_ch_st &network) { return field_text(network.network_name); }
inline auto name_of(const group_st &group) { return field_text(group.name); }

}  // namespace channel
