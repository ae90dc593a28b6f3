#include "chlist/json/json.h"

#include <algorithm>
#include <utility>

namespace chlist {

json::json() = default;
json::json(std::nullptr_t) {}
json::json(scalar value) {
  std::visit([this](auto each) { value_ = each; }, value);
}
json::json(double value) : value_(value) {}
json::json(std::string text) : value_(std::move(text)) {}
json::json(std::string_view text) : value_(std::string(text)) {}
json::json(const char *text) : value_(std::string(text)) {}
json::json(std::initializer_list<member> members) : value_(object_type(members)) {}

json json::object() {
  json value;
  value.value_ = object_type();
  return value;
}

json json::array(std::initializer_list<json> elements) {
  json value;
  value.value_ = array_type(elements);
  return value;
}

json::json(const json &) = default;
json::json(json &&) noexcept = default;
json &json::operator=(const json &) = default;
json &json::operator=(json &&) noexcept = default;
json::~json() = default;

bool json::is_null() const { return std::holds_alternative<std::nullptr_t>(value_); }
bool json::is_bool() const { return std::holds_alternative<bool>(value_); }
bool json::is_integer() const { return std::holds_alternative<std::int64_t>(value_); }
bool json::is_string() const { return std::holds_alternative<std::string>(value_); }
bool json::is_array() const { return std::holds_alternative<array_type>(value_); }
bool json::is_object() const { return std::holds_alternative<object_type>(value_); }

bool json::as_bool() const { return std::get<bool>(value_); }
std::int64_t json::as_integer() const { return std::get<std::int64_t>(value_); }
const std::string &json::as_string() const { return std::get<std::string>(value_); }

std::size_t json::size() const {
  if (is_object() || is_array()) {
    return members().size() + elements().size();
  }
  return is_null() ? 0 : 1;
}

std::span<const json> json::elements() const {
  const auto *all = std::get_if<array_type>(&value_);
  return all != nullptr ? std::span<const json>(*all) : std::span<const json>();
}

const json &json::operator[](std::size_t at) const { return std::get<array_type>(value_).at(at); }
json &json::operator[](std::size_t at) { return std::get<array_type>(value_).at(at); }

void json::push_back(json element) {
  if (is_null()) {
    value_ = array_type();
  }
  std::get<array_type>(value_).push_back(std::move(element));
}

void json::pop_back() { std::get<array_type>(value_).pop_back(); }

std::span<const json::member> json::members() const {
  const auto *all = std::get_if<object_type>(&value_);
  return all != nullptr ? std::span<const member>(*all) : std::span<const member>();
}

const json *json::find(std::string_view key) const {
  const auto all = members();
  const auto found = std::ranges::find(all, key, &member::key);
  return found != all.end() ? &found->value : nullptr;
}

const json &json::operator[](std::string_view key) const {
  const json *found = find(key);
  if (found == nullptr) {
    throw std::out_of_range("no member '" + std::string(key) + "'");
  }
  return *found;
}

json &json::operator[](std::string_view key) {
  if (!contains(key)) {
    put(std::string(key), nullptr);
  }
  return std::ranges::find(std::get<object_type>(value_), key, &member::key)->value;
}

void json::put(std::string key, json value) {
  if (is_null()) {
    value_ = object_type();
  }
  std::get<object_type>(value_).push_back({std::move(key), std::move(value)});
}

void json::put(const json &object) {
  for (const member &each : object.members()) {
    put(each.key, each.value);
  }
}

void json::erase(std::string_view key) {
  std::erase_if(std::get<object_type>(value_), [key](const member &each) { return each.key == key; });
}

bool operator==(const json &a, const json &b) { return a.value_ == b.value_; }

}  // namespace chlist
