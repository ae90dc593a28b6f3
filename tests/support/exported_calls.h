// A table of everything that the library exports, and how each function is called: with its arguments at their
// extremes, where one after the other goes through its values while the others keep a base value, and with arguments
// that bytes choose.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "chosen_values.h"
#include "extreme_values.h"
#include "invariants.h"

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

// Where the arguments name a service: net_index, network_id, ts_id, frequency, service_id, polarisation. None: their
// number.
template <class Arguments>
constexpr std::size_t identity_in() {
  using identity = std::tuple<std::uint8_t, std::uint16_t, std::uint16_t, std::uint32_t, std::uint16_t, std::uint8_t>;
  constexpr std::size_t fields = std::tuple_size_v<identity>;
  constexpr std::size_t count = std::tuple_size_v<Arguments>;
  const auto begins_at =
      []<std::size_t At, std::size_t... Field>(std::integral_constant<std::size_t, At>, std::index_sequence<Field...>) {
    return (std::is_same_v<std::tuple_element_t<At + Field, Arguments>, std::tuple_element_t<Field, identity>> && ...);
  };
  std::size_t found = count;
  if constexpr (count >= fields) {
    [&]<std::size_t... At>(std::index_sequence<At...>) {
      ((found =
            found == count && begins_at(std::integral_constant<std::size_t, At>{}, std::make_index_sequence<fields>{})
                ? At
                : found),
       ...);
    }
    (std::make_index_sequence<count - fields + 1>{});
  }
  return found;
}

// Arguments chosen one by one hardly ever name a service of the list: most choices take an entry's identity, with its
// tag when one stands in front.
template <class Arguments>
void name_chosen_service(Arguments &arguments, test_support::byte_reader &from) {
  constexpr std::size_t at = identity_in<Arguments>();
  if constexpr (at < std::tuple_size_v<Arguments>) {
    if (const auto *entry = chosen<virtual_channel_st *>(from); entry != nullptr) {
      std::get<at>(arguments) = entry->net_index;
      std::get<at + 1>(arguments) = entry->network_id;
      std::get<at + 2>(arguments) = entry->ts_id;
      std::get<at + 3>(arguments) = entry->frequency;
      std::get<at + 4>(arguments) = entry->service_id;
      std::get<at + 5>(arguments) = entry->polarisation;
      if constexpr (at > 0 && std::is_same_v<std::tuple_element_t<(at > 0 ? at - 1 : 0), Arguments>, std::int8_t>) {
        std::get<at - 1>(arguments) = entry->vch_tag;
      }
    }
  }
}

template <class Result, class... Arguments>
void call_chosen(Result (*function)(Arguments...), test_support::byte_reader &from) {
  std::tuple<Arguments...> arguments{chosen<Arguments>(from)...};
  name_chosen_service(arguments, from);
  call_once(function, arguments);
}

enum class effect { none, changes_list, releases_channels };

struct exported_call {
  std::string name;
  effect has;
  // Goes through the extremes of every argument.
  void (*run)(bases);
  // Calls once, with arguments that bytes choose.
  void (*run_chosen)(test_support::byte_reader &);
  // What is still promised when the calls are over.
  test_support::promises kept = {};
};

// What gtest prints of a parameter.
inline void PrintTo(const exported_call &shown, std::ostream *out) { *out << shown.name; }

// The functions of the interface by what they do.
std::vector<exported_call> store_calls();
std::vector<exported_call> view_calls();
std::vector<exported_call> group_calls();

// All of them.
const std::vector<exported_call> &exported_calls();

template <auto function>
exported_call call_of(const char *name, effect has, test_support::promises kept = {}) {
  return {name, has, [](bases tried) { call_with(function, tried); },
          [](test_support::byte_reader &from) { call_chosen(function, from); }, kept};
}

// The same call with a choice of extremes of its own.
inline exported_call at_extremes(exported_call call, void (*run)(bases)) {
  call.run = run;
  return call;
}

// QUERY: a function that leaves the channel list as it is. EDIT: one that may change it. RELEASE: one that releases
// single channels. HOSTED: one that a host calls with some care, which its stand-in takes.
#define QUERY(function) call_of<::function>(#function, effect::none)
#define EDIT(function) call_of<::function>(#function, effect::changes_list)
#define EDIT_KEEPING(function, ...) call_of<::function>(#function, effect::changes_list, __VA_ARGS__)
#define RELEASE(function) call_of<::function>(#function, effect::releases_channels)
#define HOSTED(function, stand_in) call_of<stand_in>(#function, effect::changes_list)

}  // namespace extremes
