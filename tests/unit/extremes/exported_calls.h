// A table of everything that the library exports, and how each function is called with its arguments at their extremes:
// one after the other goes through its values while the others keep a base value.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "extreme_values.h"
#include "support/invariants.h"

namespace extremes {

using bases = std::span<const base>;

// What a pointer answers can be read, first byte to last.
template <class Result>
void look_at(Result &&result) {
  if constexpr (std::is_pointer_v<std::remove_cvref_t<Result>>) {
    const auto *bytes = reinterpret_cast<const volatile unsigned char *>(result);
    for (std::size_t i = 0; result != nullptr && i < sizeof *result; ++i) {
      static_cast<void>(bytes[i]);
    }
  }
}

template <class Function, class Arguments>
void call_once(const Function &function, Arguments &&arguments) {
  if constexpr (std::is_void_v<decltype(std::apply(function, arguments))>) {
    std::apply(function, arguments);
  } else {
    look_at(std::apply(function, arguments));
  }
}

template <class Result, class... Arguments>
void call_with(Result (*function)(Arguments...), bases tried) {
  if constexpr (sizeof...(Arguments) == 0) {
    call_once(function, std::tuple<>{});
  } else {
    const auto vary = [&]<std::size_t Varied>(base others, std::integral_constant<std::size_t, Varied>) {
      using varied = std::tuple_element_t<Varied, std::tuple<Arguments...>>;
      const std::size_t count = values_of<varied>().size();
      for (std::size_t i = 0; i < count; ++i) {
        std::tuple<Arguments...> arguments(value_at<Arguments>(others)...);
        std::get<Varied>(arguments) = values_of<varied>()[i];
        call_once(function, arguments);
      }
    };
    // Alone, an argument has no others.
    for (const base others : sizeof...(Arguments) == 1 ? tried.first(1) : tried) {
      [&]<std::size_t... Varied>(std::index_sequence<Varied...>) {
        (vary(others, std::integral_constant<std::size_t, Varied>{}), ...);
      }
      (std::index_sequence_for<Arguments...>{});
    }
  }
}

enum class effect { none, changes_list };

struct exported_call {
  std::string name;
  effect has;
  std::function<void(bases)> run;
  // What is still promised when the calls are over.
  test_support::promises kept = {};
};

// What gtest prints of a parameter.
inline void PrintTo(const exported_call &shown, std::ostream *out) { *out << shown.name; }

// The functions of the interface by what they do.
std::vector<exported_call> store_calls();
std::vector<exported_call> view_calls();
std::vector<exported_call> group_calls();

const std::vector<exported_call> &exported_calls();

// QUERY: a function that leaves the channel list as it is. EDIT: one that may change it. HOSTED: one that a host calls
// with some care, which its stand-in takes.
#define QUERY(function)                                                        \
  {                                                                            \
#function, effect::none, [](bases tried) { call_with(::function, tried); } \
  }
#define EDIT(function)                                                                 \
  {                                                                                    \
#function, effect::changes_list, [](bases tried) { call_with(::function, tried); } \
  }
#define EDIT_KEEPING(function, ...)                                                                 \
  {                                                                                                 \
#function, effect::changes_list, [](bases tried) { call_with(::function, tried); }, __VA_ARGS__ \
  }
#define HOSTED(function, stand_in)                                                   \
  {                                                                                  \
#function, effect::changes_list, [](bases tried) { call_with(stand_in, tried); } \
  }

}  // namespace extremes
