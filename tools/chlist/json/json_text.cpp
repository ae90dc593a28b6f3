// Text to JSON values and back, by a library for it: what its parser finds becomes values of our own, and it says how a
// string is written.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

#include "chlist/json/json.h"

namespace chlist {
namespace {

using library = nlohmann::json;

// Values are built and destroyed level by level; a hostile text must not take the stack for it.
constexpr std::size_t deepest = 64;

class reader : public nlohmann::json_sax<library> {
 public:
  bool null() override { return put(nullptr); }
  bool boolean(bool value) override { return put(value); }
  bool number_integer(std::int64_t value) override { return put(value); }
  bool number_unsigned(std::uint64_t value) override {
    return std::in_range<std::int64_t>(value) ? put(value) : put(static_cast<double>(value));
  }
  bool number_float(double value, const std::string & /*text*/) override { return put(value); }
  bool string(std::string &value) override { return put(std::move(value)); }
  bool binary(library::binary_t & /*value*/) override { return false; }
  bool start_object(std::size_t /*size*/) override { return open(json::object()); }
  bool end_object() override {
    must_have_each_key_once();
    return close();
  }
  bool start_array(std::size_t /*size*/) override { return open(json::array()); }
  bool end_array() override { return close(); }
  bool key(std::string &key) override {
    keys_.back() = std::move(key);
    return true;
  }
  bool parse_error(std::size_t /*position*/, const std::string & /*token*/,
                   const nlohmann::detail::exception &error) override {
    // Behind "[json.exception.parse_error.101] ".
    const std::string_view what = error.what();
    throw json_error(std::string(what.substr(std::min(what.find("] ") + 2, what.size()))));
  }

  json take() { return std::move(whole_); }

 private:
  bool put(json value) {
    if (open_.empty()) {
      whole_ = std::move(value);
    } else if (open_.back().is_array()) {
      open_.back().push_back(std::move(value));
    } else {
      open_.back().put(std::move(keys_.back()), std::move(value));
    }
    return true;
  }

  bool open(json container) {
    if (open_.size() == deepest) {
      throw json_error("it nests more than " + std::to_string(deepest) + " levels");
    }
    open_.push_back(std::move(container));
    keys_.emplace_back();
    return true;
  }

  bool close() {
    json closed = std::move(open_.back());
    open_.pop_back();
    keys_.pop_back();
    return put(std::move(closed));
  }

  // Readers disagree on which of two members with one name counts.
  void must_have_each_key_once() const {
    std::vector<std::string_view> keys;
    std::ranges::transform(open_.back().members(), std::back_inserter(keys), &json::member::key);
    std::ranges::sort(keys);
    if (const auto twice = std::ranges::adjacent_find(keys); twice != keys.end()) {
      throw json_error("an object has two members '" + std::string(*twice) + "'");
    }
  }

  json whole_;
  std::vector<json> open_;         // from the outermost to the innermost
  std::vector<std::string> keys_;  // of the member that comes next in each
};

bool is_plain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; });
}

void append_quoted(std::string &out, const std::string &text, bool is_ascii) {
  if (is_plain(text)) {
    (out += '"').append(text) += '"';
  } else {
    out += library(text).dump(-1, ' ', is_ascii, library::error_handler_t::replace);
  }
}

}  // namespace

class json_printer {
 public:
  json_printer(int indentation, bool is_ascii) : indentation_(indentation), is_ascii_(is_ascii) {}

  void append(const json &value, int depth = 0) {
    std::visit([&](const auto &each) { append_one(each, depth); }, value.value_);
  }

  std::string take() { return std::move(out_); }

 private:
  void append_one(std::nullptr_t, int /*depth*/) { out_ += "null"; }
  void append_one(bool value, int /*depth*/) { out_ += value ? "true" : "false"; }
  void append_one(std::int64_t value, int /*depth*/) { out_ += std::to_string(value); }
  void append_one(double value, int /*depth*/) { out_ += library(value).dump(); }
  void append_one(const std::string &value, int /*depth*/) { append_quoted(out_, value, is_ascii_); }
  void append_one(const json::array_type &elements, int depth) {
    append_all('[', elements, ']', depth, [&](const json &each) { append(each, depth + 1); });
  }
  void append_one(const json::object_type &members, int depth) {
    append_all('{', members, '}', depth, [&](const json::member &each) {
      append_quoted(out_, each.key, is_ascii_);
      out_ += is_in_one_line() ? ":" : ": ";
      append(each.value, depth + 1);
    });
  }

  template <class All, class Append>
  void append_all(char opening, const All &all, char closing, int depth, const Append &append_each) {
    out_ += opening;
    for (const auto &each : all) {
      out_ += &each == all.data() ? "" : ",";
      break_line(depth + 1);
      append_each(each);
    }
    if (!all.empty()) {
      break_line(depth);
    }
    out_ += closing;
  }

  [[nodiscard]] bool is_in_one_line() const { return indentation_ == json::in_one_line; }
  void break_line(int depth) {
    if (!is_in_one_line()) {
      out_ += '\n';
      out_.append(static_cast<std::size_t>(depth * indentation_), ' ');
    }
  }

  int indentation_;
  bool is_ascii_;
  std::string out_;
};

json json::parse(std::string_view text) {
  reader values;
  library::sax_parse(text, &values);
  return values.take();
}

std::string json::dump(int indentation) const {
  json_printer printer(indentation, false);
  printer.append(*this);
  return printer.take();
}

std::string json::dump_ascii() const {
  json_printer printer(in_one_line, true);
  printer.append(*this);
  return printer.take();
}

std::ostream &operator<<(std::ostream &out, const json &value) { return out << value.dump(); }

}  // namespace chlist
