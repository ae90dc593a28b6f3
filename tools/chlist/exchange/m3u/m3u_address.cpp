// What stands for a field ends where the text behind it begins for the first time; only any text may end later.
#include "chlist/exchange/m3u/m3u_address.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <utility>

#include "chlist/json/json.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr int base_of_hexadecimal = 16;
constexpr std::size_t digits_of_byte = 2;

bool is_letter_or_digit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string percent_encoded(std::string_view text) {
  constexpr std::string_view kept = "-._~";
  std::string encoded;
  for (const char c : text) {
    encoded += is_letter_or_digit(c) || kept.find(c) != std::string_view::npos
                   ? std::string(1, c)
                   : fmt::format("%{:02X}", static_cast<unsigned>(static_cast<unsigned char>(c)));
  }
  return encoded;
}

std::optional<std::int64_t> whole_number(std::string_view text, int base) {
  std::int64_t value = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

std::string percent_decoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte =
        text[i] == '%' ? whole_number(text.substr(i + 1, digits_of_byte), base_of_hexadecimal) : std::nullopt;
    const bool is_encoded = byte && *byte >= 0 && i + digits_of_byte < text.size();
    decoded += is_encoded ? static_cast<char>(*byte) : text[i];
    i += is_encoded ? digits_of_byte : 0;
  }
  return decoded;
}

// All fields but those that only an entry of a view has.
bool is_of_service(const field &each) {
  return each.owner != field_owner::entry || each.name == "number" || each.name == "minor";
}

std::string names_of_fields_of_services() {
  std::string names;
  for (const field &each : service_fields()) {
    names += is_of_service(each) ? fmt::format("{}{}", names.empty() ? "" : ", ", each.name) : "";
  }
  return names;
}

json value_of(const line_up &list, const line_up_service &service, const field &which) {
  const channel_number number = service.number.value_or(channel_number{});
  if (which.name == "number" || which.name == "minor") {
    return which.name == "number" ? number.major : number.minor;
  }
  return which.get({&list, &service});
}

std::optional<std::int64_t> number_told(const field &which, std::string_view text, bool is_hexadecimal) {
  if (!is_hexadecimal) {
    return number_from(which.values, text);
  }
  const auto number = whole_number(text, base_of_hexadecimal);
  return number ? number_from(which.values, std::to_string(*number)) : std::nullopt;
}

}  // namespace

// Identities are whole; of other fields nothing may be said.
bool address_template::field_value::is_value() const {
  if (of.which == nullptr || of.which->text != nullptr || of.which->set_number == nullptr) {
    return true;
  }
  return text.empty() ? of.which->owner != field_owner::identity
                      : number_told(*of.which, text, of.is_hexadecimal).has_value();
}

void address_template::field_value::set(line_up_service &service) const {
  if (of.which == nullptr || text.empty()) {
    return;
  }
  if (of.which->text != nullptr) {
    service.*of.which->text = percent_decoded(text);
  } else if (of.which->set_number != nullptr) {
    of.which->set_number(service, *number_told(*of.which, text, of.is_hexadecimal));
  }
}

address_template::part address_template::part_of(std::string text, std::string_view named) {
  constexpr std::string_view hexadecimal = ":x";
  part made;
  made.text = std::move(text);
  made.is_hexadecimal = named.ends_with(hexadecimal);
  made.which = find_field(named.substr(0, named.size() - (made.is_hexadecimal ? hexadecimal.size() : 0)));
  const bool is_known = made.which != nullptr && is_of_service(*made.which);
  if (!is_known || (made.is_hexadecimal && !made.which->is_number())) {
    throw std::runtime_error(fmt::format("--url: no field {}: there are {}, and numbers with :x in hexadecimal digits",
                                         shown(named), names_of_fields_of_services()));
  }
  return made;
}

address_template::address_template(std::string_view text) {
  for (;;) {
    const std::size_t open = text.find('{');
    if (open == std::string_view::npos) {
      parts_.push_back({std::string(text)});
      return;
    }
    const std::size_t close = text.find('}', open);
    if (close == std::string_view::npos) {
      throw std::runtime_error(fmt::format("--url: {} is not closed", shown(text.substr(open))));
    }
    parts_.push_back(part_of(std::string(text.substr(0, open)), text.substr(open + 1, close - open - 1)));
    text.remove_prefix(close + 1);
  }
}

address_template address_template::of_any_host(std::string_view text) {
  constexpr std::string_view any = "{}";
  constexpr std::size_t most = 2;
  address_template made;
  for (std::size_t at = text.find(any); at != std::string_view::npos; at = text.find(any)) {
    const address_template before(text.substr(0, at));
    made.parts_.insert(made.parts_.end(), before.parts_.begin(), before.parts_.end());
    text.remove_prefix(at + any.size());
  }
  if (std::ranges::count(made.parts_, nullptr, &part::which) > static_cast<std::ptrdiff_t>(most)) {
    throw std::runtime_error("--url: {} stands more than twice");
  }
  const address_template last(text);
  made.parts_.insert(made.parts_.end(), last.parts_.begin(), last.parts_.end());
  return made;
}

std::string address_template::filled_in(const line_up &list, const line_up_service &service) const {
  std::string address;
  for (const part &each : parts_) {
    address += each.text;
    const json value = each.which != nullptr ? value_of(list, service, *each.which) : json();
    if (value.is_integer()) {
      address += fmt::format(fmt::runtime(each.is_hexadecimal ? "{:x}" : "{}"), value.as_integer());
    } else {
      address += percent_encoded(text_of_value(value));
    }
  }
  return address;
}

bool address_template::fits(std::size_t at, std::string_view address, std::vector<field_value> &values) const {
  const part &each = parts_[at];
  if (!address.starts_with(each.text)) {
    return false;
  }
  address.remove_prefix(each.text.size());
  if (at + 1 == parts_.size()) {
    return address.empty();
  }
  const std::string &behind = parts_[at + 1].text;
  const bool is_last = at + 2 == parts_.size() && behind.empty();
  for (std::size_t end = is_last ? address.size() : address.find(behind); end != std::string_view::npos;
       end = address.find(behind, end + 1)) {
    values.push_back({each, address.substr(0, end)});
    if (values.back().is_value() && fits(at + 1, address.substr(end), values)) {
      return true;
    }
    values.pop_back();
    if (each.which != nullptr) {
      return false;
    }
  }
  return false;
}

bool address_template::read(std::string_view address, line_up_service &service) const {
  std::vector<field_value> values;
  if (!fits(0, address, values)) {
    return false;
  }
  std::ranges::for_each(values, [&service](const field_value &each) { each.set(service); });
  return true;
}

std::vector<const field *> address_template::fields() const {
  std::vector<const field *> fields;
  for (const part &each : parts_) {
    if (each.which != nullptr) {
      fields.push_back(each.which);
    }
  }
  return fields;
}

}  // namespace chlist
