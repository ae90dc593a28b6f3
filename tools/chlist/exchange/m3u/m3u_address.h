// Addresses of services in playlists: a text with fields in braces, "http://host/{network_id}:{service_id:x}", which is
// filled in for a service, and held against an address to learn what that says.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "chlist/fields/service_fields.h"

namespace chlist {

class address_template {
 public:
  // Throws std::runtime_error that names a field that there is not.
  explicit address_template(std::string_view text);

  // Any text may stand where "{}" does, which only addresses that are read can have: at most twice.
  static address_template of_any_host(std::string_view text);

  [[nodiscard]] std::string filled_in(const line_up &list, const line_up_service &service) const;

  // Sets what the address says; false, and nothing, when it does not fit.
  bool read(std::string_view address, line_up_service &service) const;

  [[nodiscard]] std::vector<const field *> fields() const;

 private:
  // Text, and what follows it.
  struct part {
    std::string text;
    const field *which = nullptr;  // null: any text, or nothing behind the last part
    bool is_hexadecimal = false;
  };
  struct told {
    const part &of;
    std::string_view text;

    [[nodiscard]] bool is_value() const;
    void set(line_up_service &service) const;
  };

  address_template() = default;
  static part part_of(std::string text, std::string_view named);
  bool fits(std::size_t at, std::string_view address, std::vector<told> &values) const;

  std::vector<part> parts_;
};

}  // namespace chlist
