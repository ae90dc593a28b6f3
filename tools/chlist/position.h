// Positions as people and programs know them, beside indexes.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace chlist {

// Where an element stands, in a view or among the favourite groups: people and programs count from 1, as they do with
// channel numbers, and arrays from 0.
template <std::integral Index>
constexpr Index position_of(Index index) {
  return index + 1;
}
constexpr std::optional<std::size_t> index_at(std::int64_t position, std::size_t count) {
  const bool is_there = position >= 1 && static_cast<std::uint64_t>(position) <= count;
  return is_there ? std::optional(static_cast<std::size_t>(position - 1)) : std::nullopt;
}

}  // namespace chlist
