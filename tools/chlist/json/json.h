// A JSON value: what reports, the page and channel files as JSON are made of. The members of an object keep the order
// in which they were put there. Only json_text.cpp knows the library that reads and writes the text.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iosfwd>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace chlist {

// A text that is no JSON, and where.
struct json_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class json {
 public:
  struct member;

  json();
  json(std::nullptr_t);
  template <std::integral Value>
  json(Value value)
      : json(scalar(std::in_place_type<std::conditional_t<std::same_as<Value, bool>, bool, std::int64_t>>, value)) {}
  json(double value);
  json(std::string text);
  json(std::string_view text);
  json(const char *text);
  template <class Element>
  json(const std::vector<Element> &elements) : json(array()) {
    for (const Element &element : elements) {
      push_back(element);
    }
  }
  // An object: {{"name", "News"}, {"number", 7}}.
  json(std::initializer_list<member> members);
  static json object();
  static json array(std::initializer_list<json> elements = {});

  json(const json &);
  json(json &&) noexcept;
  json &operator=(const json &);
  json &operator=(json &&) noexcept;
  ~json();

  [[nodiscard]] bool is_null() const;
  [[nodiscard]] bool is_bool() const;
  [[nodiscard]] bool is_integer() const;
  [[nodiscard]] bool is_string() const;
  [[nodiscard]] bool is_array() const;
  [[nodiscard]] bool is_object() const;

  // The value as what it is; another kind throws std::bad_variant_access.
  [[nodiscard]] bool as_bool() const;
  [[nodiscard]] std::int64_t as_integer() const;
  [[nodiscard]] const std::string &as_string() const;

  // How many elements or members; 0 of a null, 1 of anything else.
  [[nodiscard]] std::size_t size() const;
  [[nodiscard]] bool empty() const { return size() == 0; }

  // An array's elements, none of anything else. A null becomes an array with what is put there.
  [[nodiscard]] std::span<const json> elements() const;
  [[nodiscard]] const json &operator[](std::size_t at) const;
  json &operator[](std::size_t at);
  void push_back(json element);
  void pop_back();

  // An object's members, none of anything else. A null becomes an object with what is put there.
  [[nodiscard]] std::span<const member> members() const;
  [[nodiscard]] bool contains(std::string_view key) const { return find(key) != nullptr; }
  [[nodiscard]] const json *find(std::string_view key) const;
  [[nodiscard]] const json &operator[](std::string_view key) const;  // throws std::out_of_range when there is none
  json &operator[](std::string_view key);                            // null when there was none
  void put(std::string key, json value);                             // of a key that is not there yet
  void put(const json &object);                                      // all members of another
  void erase(std::string_view key);

  // Throws json_error.
  static json parse(std::string_view text);
  // In one line, or indented by so many blanks a level. Bytes that are not UTF-8 become U+FFFD.
  static constexpr int in_one_line = -1;
  [[nodiscard]] std::string dump(int indentation = in_one_line) const;
  // The value in one line; every character beyond ASCII is escaped.
  [[nodiscard]] std::string dump_ascii() const;

  friend bool operator==(const json &a, const json &b);
  friend std::ostream &operator<<(std::ostream &out, const json &value);

 private:
  using array_type = std::vector<json>;
  using object_type = std::vector<member>;
  using scalar = std::variant<bool, std::int64_t>;
  explicit json(scalar value);

  // A number that is read and fits no std::int64_t is a double.
  std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, array_type, object_type> value_;

  friend class json_printer;
};

struct json::member {
  std::string key;
  json value;

  friend bool operator==(const member &, const member &) = default;
};

}  // namespace chlist
