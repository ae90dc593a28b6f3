// A rolling hash (Rabin and Karp) finds blocks of the former bytes wherever they went; what goes on as the last copy
// did is found without it. A delta is a row of steps: a length to copy, the place to copy from, a length of what is
// new, and that; all numbers have four bytes, the lowest first.
#include "chlist/files/byte_delta.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "chlist/files/fingerprint.h"

namespace chlist {
namespace {

constexpr std::size_t block_size = 32;
constexpr std::size_t bytes_of_number = 4;
constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;

std::uint64_t value_of(char c) { return static_cast<unsigned char>(c); }

// The hash is that of the block that a text begins with; the next one is that of the block a byte further.
std::uint64_t hash_of(std::string_view block) {
  std::uint64_t hash = 0;
  for (const char c : block.substr(0, block_size)) {
    hash = hash * factor + value_of(c);
  }
  return hash;
}

std::uint64_t rolled(std::uint64_t hash, char gone, char added) {
  constexpr std::uint64_t weight = power(factor, block_size);
  return hash * factor + value_of(added) - value_of(gone) * weight;
}

void append_number(std::string &text, std::size_t number) {
  for (std::size_t byte = 0; byte < bytes_of_number; ++byte) {
    text += static_cast<char>(number >> (8 * byte) & 0xFFU);
  }
}

std::size_t common_length(std::string_view a, std::string_view b) {
  const auto differing = std::ranges::mismatch(a, b).in1;
  return static_cast<std::size_t>(differing - a.begin());
}

class delta_writer {
 public:
  delta_writer(std::string_view before, std::string_view after) : before_(before), after_(after) {
    for (std::size_t place = 0; place + block_size <= before.size(); place += block_size) {
      const std::uint64_t hash = hash_of(before.substr(place));
      blocks_.try_emplace(hash, place);
      may_be_known_[hash >> unfiltered_bits] = true;
    }
  }

  std::string delta() {
    std::size_t at = 0;
    std::uint64_t hash = hash_of(after_);
    while (at + block_size <= after_.size()) {
      const std::size_t length = copied_at(at, hash);
      const std::size_t next = at + std::max<std::size_t>(length, 1);
      if (length > 0) {
        add_step(at, length);
        hash = hash_of(after_.substr(next));
      } else if (at + block_size < after_.size()) {
        hash = rolled(hash, after_[at], after_[at + block_size]);
      }
      at = next;
    }
    add_step(after_.size(), 0);
    return std::move(delta_);
  }

 private:
  // How much from here on is a copy, at source_.
  std::size_t copied_at(std::size_t at, std::uint64_t hash) {
    const std::size_t going_on = at + shift_;  // wraps around when it leads in front of the beginning
    if (const std::size_t length = length_of_copy(going_on, at); length >= block_size) {
      source_ = going_on;
      return length;
    }
    const auto found = may_be_known_[hash >> unfiltered_bits] ? blocks_.find(hash) : blocks_.end();
    const std::size_t length = found != blocks_.end() ? length_of_copy(found->second, at) : 0;
    source_ = found != blocks_.end() ? found->second : 0;
    return length >= block_size ? length : 0;
  }

  [[nodiscard]] std::size_t length_of_copy(std::size_t source, std::size_t at) const {
    return source < before_.size() ? common_length(before_.substr(source), after_.substr(at)) : 0;
  }

  // What is new since the last copy, and the copy behind it.
  void add_step(std::size_t at, std::size_t length) {
    append_number(delta_, at - copied_up_to_);
    delta_ += after_.substr(copied_up_to_, at - copied_up_to_);
    append_number(delta_, length);
    append_number(delta_, source_);
    shift_ = source_ - at;
    copied_up_to_ = at + length;
  }

  std::string_view before_;
  std::string_view after_;
  std::unordered_map<std::uint64_t, std::size_t> blocks_;
  // The high bits of a hash rule out most places of what is new, without a look into the table.
  static constexpr int unfiltered_bits = 42;
  std::vector<bool> may_be_known_ = std::vector<bool>(std::size_t{1} << (64 - unfiltered_bits));
  std::string delta_;
  std::size_t copied_up_to_ = 0;
  std::size_t source_ = 0;
  std::size_t shift_ = 0;  // from a place in what is to the place that it was copied from
};

// Once something is not there, nothing more is.
class delta_reader {
 public:
  explicit delta_reader(std::string_view delta) : rest_(delta) {}

  [[nodiscard]] bool is_at_end() const { return rest_.empty(); }
  [[nodiscard]] bool is_good() const { return is_good_; }

  std::size_t number() {
    std::size_t value = 0;
    const std::string_view text = bytes(bytes_of_number);
    for (std::size_t byte = text.size(); byte-- > 0;) {
      value = value << 8U | static_cast<unsigned char>(text[byte]);
    }
    return value;
  }

  std::string_view bytes(std::size_t count) {
    is_good_ = is_good_ && count <= rest_.size();
    const std::string_view taken = rest_.substr(0, is_good_ ? count : 0);
    rest_.remove_prefix(is_good_ ? count : rest_.size());
    return taken;
  }

 private:
  std::string_view rest_;
  bool is_good_ = true;
};

}  // namespace

std::string delta_between(std::string_view before, std::string_view after) {
  return delta_writer(before, after).delta();
}

std::optional<std::string> apply_delta(std::string_view before, std::string_view delta, std::size_t most) {
  std::string made;
  delta_reader reader(delta);
  while (!reader.is_at_end()) {
    made += reader.bytes(reader.number());
    const std::size_t length = reader.number();
    const std::size_t source = reader.number();
    const bool fits = source <= before.size() && length <= before.size() - source;
    if (!reader.is_good() || !fits || made.size() + length > most) {
      return std::nullopt;
    }
    made += before.substr(source, length);
  }
  return made.size() <= most ? std::optional(std::move(made)) : std::nullopt;
}

}  // namespace chlist
