// One function for each kind of field and direction.
#include "chlist/exchange/json/list_json_codec.h"

#include <fmt/format.h>

#include <algorithm>
#include <bitset>
#include <cstring>
#include <stdexcept>

#include "chlist/text/broadcast_text.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::string_view hex_digits = "0123456789abcdef";
constexpr const char *hex_key = "hex";
constexpr std::size_t most_fields = 64;

std::string_view field_of_text(const_record_bytes record, const json_field &field) {
  return {reinterpret_cast<const char *>(record.data() + field.offset), field.size};
}

// Where the text ends is a matter of its table of characters: some have zero bytes within their texts.
std::string_view text_in(const_record_bytes record, const json_field &field) {
  return encoded_text(field_of_text(record, field));
}

// All that stands in the field, the text and whatever somebody left behind it.
std::string_view bytes_of_text(const_record_bytes record, const json_field &field) {
  const std::string_view all = field_of_text(record, field);
  return all.substr(0, all.find_last_not_of('\0') + 1);
}

const_record_bytes bytes_in(const_record_bytes record, const json_field &field) {
  return record.subspan(field.offset, field.size);
}

bool is_zero(const_record_bytes bytes) {
  return std::ranges::all_of(bytes, [](std::byte byte) { return byte == std::byte{0}; });
}

// A text that can be typed, or else every byte: no patch lies over a field that somebody may change.
json json_of_text(std::string_view bytes) {
  if (is_utf8(bytes) && bytes.find('\0') == std::string_view::npos) {
    return bytes;
  }
  return {{hex_key, hex_of(std::as_bytes(std::span(bytes)))}};
}

// What a field has to say; null when that is nothing.
json json_of_field(const_record_bytes record, const json_field &field, std::string_view text_before) {
  switch (field.kind) {
    case field_kind::number: {
      const std::int64_t number = number_in(record, field);
      return field.is_needed || number != field.absent ? json(number) : json();
    }
    case field_kind::text: {
      const std::string_view bytes = bytes_of_text(record, field);
      return field.is_needed || !bytes.empty() ? json_of_text(bytes) : json();
    }
    case field_kind::length: {
      const std::int64_t length = number_in(record, field);
      return length != static_cast<std::int64_t>(text_before.size()) ? json(length) : json();
    }
    case field_kind::reserved:
      break;
  }
  return is_zero(bytes_in(record, field)) ? json() : json(hex_of(bytes_in(record, field)));
}

std::string text_of_json(const json &value, const std::string &path) {
  if (value.is_string()) {
    if (value.as_string().find('\0') != std::string::npos) {
      refuse_json(path, "holds a NUL byte");
    }
    return value.as_string();
  }
  if (!value.is_object() || value.size() != 1 || !value.contains(hex_key)) {
    refuse_json(path, "is neither text nor {\"hex\": ...}");
  }
  return bytes_of_hex(value[hex_key], path + '.' + hex_key);
}

void put_bytes(record_bytes record, const json_field &field, std::string_view bytes) {
  std::ranges::copy(std::as_bytes(std::span(bytes)), record.begin() + static_cast<std::ptrdiff_t>(field.offset));
}

void put_text(record_bytes record, const json_field &field, const json &value, const std::string &path) {
  const std::string text = text_of_json(value, path);
  if (text.size() > field.size) {
    refuse_json(path, fmt::format("is {} bytes long; the field holds {}", text.size(), field.size));
  }
  put_bytes(record, field, text);
}

void put_reserved(record_bytes record, const json_field &field, const json &value, const std::string &path) {
  const std::string bytes = bytes_of_hex(value, path);
  if (bytes.size() != field.size) {
    refuse_json(path, fmt::format("gives {} bytes instead of {}", bytes.size(), field.size));
  }
  put_bytes(record, field, bytes);
}

void put_field(record_bytes record, const json_field &field, const json &value, const std::string &path) {
  if (field.kind == field_kind::text) {
    put_text(record, field, value, path);
  } else if (field.kind == field_kind::reserved) {
    put_reserved(record, field, value, path);
  } else {
    put_number(record, field, integer_of(value, field.size, field.is_signed, path));
  }
}

int digit_of(char c) {
  const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
  const std::size_t at = hex_digits.find(lower);
  return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

// What is not said: numbers that are not zero then, and lengths, which follow their text.
void complete(record_bytes record, std::span<const json_field> fields, const std::bitset<most_fields> &said) {
  std::string_view text;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const json_field &field = fields[i];
    if (field.kind == field_kind::text) {
      text = text_in(record, field);
    } else if (!said[i] && field.kind == field_kind::length) {
      put_number(record, field, static_cast<std::int64_t>(text.size()));
    } else if (!said[i] && field.kind == field_kind::number) {
      put_number(record, field, field.absent);
    }
  }
}

}  // namespace

void refuse_json(const std::string &path, const std::string &why) { throw std::runtime_error(path + ": " + why); }

std::string hex_of(const_record_bytes bytes) {
  std::string text;
  for (const std::byte byte : bytes) {
    text += hex_digits[std::to_integer<std::size_t>(byte) >> 4U];
    text += hex_digits[std::to_integer<std::size_t>(byte) & 15U];
  }
  return text;
}

std::string bytes_of_hex(const json &value, const std::string &path) {
  if (!value.is_string()) {
    refuse_json(path, "is no text of hexadecimal digits");
  }
  const auto &text = value.as_string();
  if (text.size() % 2 != 0 || !std::ranges::all_of(text, [](char c) { return digit_of(c) >= 0; })) {
    refuse_json(path, "is no text of two hexadecimal digits for each byte");
  }
  std::string bytes;
  for (std::size_t at = 0; at < text.size(); at += 2) {
    bytes += static_cast<char>(digit_of(text[at]) << 4 | digit_of(text[at + 1]));
  }
  return bytes;
}

std::int64_t number_in(const_record_bytes record, const json_field &field) {
  std::uint64_t bits = 0;
  for (std::size_t at = field.size; at-- > 0;) {
    bits = bits << 8U | std::to_integer<std::uint64_t>(record[field.offset + at]);
  }
  const std::size_t unused = 8 * (sizeof bits - field.size);
  const auto value = static_cast<std::int64_t>(bits << unused);
  return field.is_signed ? value >> unused : static_cast<std::int64_t>(bits);
}

void put_number(record_bytes record, const json_field &field, std::int64_t value) {
  for (std::size_t at = 0; at < field.size; ++at) {
    record[field.offset + at] = static_cast<std::byte>(static_cast<std::uint64_t>(value) >> 8U * at);
  }
}

std::int64_t integer_of(const json &value, std::size_t size, bool is_signed, const std::string &path) {
  const std::size_t value_bits = 8 * size - (is_signed ? 1 : 0);
  const std::int64_t most = static_cast<std::int64_t>((std::uint64_t{1} << value_bits) - 1);
  const std::int64_t least = is_signed ? -most - 1 : 0;
  if (!value.is_integer() || value.as_integer() < least || value.as_integer() > most) {
    refuse_json(path, fmt::format("is no whole number within {}..{}", least, most));
  }
  return value.as_integer();
}

json json_of_record(const_record_bytes record, std::span<const json_field> fields) {
  json object = json::object();
  std::string_view text;
  for (const json_field &field : fields) {
    json value = json_of_field(record, field, text);
    if (field.kind == field_kind::text) {
      text = text_in(record, field);
    }
    if (!value.is_null()) {
      object.put(std::string(field.name), std::move(value));
    }
  }
  return object;
}

void fill_record(record_bytes record, const json &object, std::span<const json_field> fields, const std::string &path,
                 std::span<const std::string_view> others) {
  if (!object.is_object()) {
    refuse_json(path, "is no object");
  }
  std::bitset<most_fields> said;
  for (const auto &[key, value] : object.members()) {
    const auto field = std::ranges::find(fields, key, &json_field::name);
    if (field != fields.end()) {
      put_field(record, *field, value, fmt::format("{}.{}", path, key));
      said.set(static_cast<std::size_t>(field - fields.begin()));
    } else if (std::ranges::find(others, key) == others.end()) {
      refuse_json(fmt::format("{}.{}", path, key), "is no field");
    }
  }
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].is_needed && !said[i]) {
      refuse_json(path, fmt::format("has no {}", fields[i].name));
    }
  }
  complete(record, fields, said);
}

}  // namespace chlist
