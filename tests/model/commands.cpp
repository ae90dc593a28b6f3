#include "commands.h"

#include <channel/channel.h>

#include <ostream>
#include <utility>

#include "host.h"
#include "model.h"
#include "observe.h"

namespace model_tests {
namespace {

template <class Result, class... Arguments, std::size_t... Index>
int call(Result (*function)(Arguments...), const numbers &given, std::index_sequence<Index...> /*positions*/) {
  if constexpr (std::is_void_v<Result>) {
    function(static_cast<Arguments>(given[Index])...);
    return 0;
  } else {
    return static_cast<int>(function(static_cast<Arguments>(given[Index])...));
  }
}

template <class Result, class... Arguments>
auto in_library(Result (*function)(Arguments...)) {
  return [function](const numbers &given) { return call(function, given, std::index_sequence_for<Arguments...>{}); };
}

template <class... Arguments, std::size_t... Index>
int call(model &changed, int (model::*function)(Arguments...), const numbers &given,
         std::index_sequence<Index...> /*positions*/) {
  return (changed.*function)(given[Index]...);
}

template <class... Arguments>
auto in_model(int (model::*function)(Arguments...)) {
  return [function](model &changed, const numbers &given) {
    return call(changed, function, given, std::index_sequence_for<Arguments...>{});
  };
}

using arguments = std::vector<argument>;

arguments operator+(arguments first, const arguments &second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

const arguments network_key = {argument::net_index, argument::network_id};
const arguments transponder_key = {argument::net_index, argument::network_id, argument::ts_id, argument::frequency,
                                   argument::polarisation};
const arguments service_key = {argument::net_index, argument::network_id, argument::ts_id,
                               argument::frequency, argument::service_id, argument::polarisation};
const arguments tagged_key = arguments{argument::tag} + service_key;

// An operation of the interface, and one of the host.
#define CALL(weight, function, ...) \
  { which, weight, #function, __VA_ARGS__, in_library(::function), in_model(&model::function) }
#define HOST(weight, function, ...) \
  { which, weight, "host::" #function, __VA_ARGS__, in_library(host::function), in_model(&model::function) }

std::vector<operation> store_operations() {
  using enum argument;
  constexpr family which = family::store;
  return {
      HOST(12, file_service, service_key + arguments{service_type}),
      HOST(1, add_network, network_key),
      HOST(2, release_service, service_key),
      HOST(1, release_transponder, transponder_key),
      HOST(1, release_network, network_key),
      CALL(3, remove_channel_st, service_key),
      CALL(3, remove_virtual_channel_st, tagged_key),
      CALL(1, remove_channel_info_by_net_index, {net_index}),
      CALL(1, remove_channel_info_by_frequency, {net_index, frequency, polarisation}),
      CALL(2, remove_invalid_virtual_channel, {}),
      CALL(1, reset_channel_list, {}),
      HOST(1, save_and_load, {}),
      CALL(2, set_channel_flag, service_key + arguments{bits, truth}),
      HOST(2, rename_channel, service_key + arguments{name_slot, name, length}),
      HOST(2, set_user_order, service_key + arguments{key}),
  };
}

std::vector<operation> view_operations() {
  using enum argument;
  constexpr family which = family::views;
  return {
      HOST(14, append, arguments{plain_view} + service_key + arguments{number, tag}),
      HOST(3, insert, arguments{view, position} + service_key + arguments{number, tag}),
      CALL(3, insert_user_vch_vindex, {position}),
      CALL(1, init_vindex, {view}),
      CALL(3, create_vindex_type, {view, tag}),
      CALL(5, change_vindex_type, {view}),
      CALL(2, vtype_remove_by_vindex, {position, view}),
      CALL(1, vtype_remove_by_net_index, {net_index, view}),
      CALL(1, vtype_remove_vch, tagged_key + arguments{view}),
      CALL(1, vtype_remove_virtual_channel_st, tagged_key + arguments{view}),
      CALL(1, get_vch_index_by_ts_info, tagged_key),
      CALL(1, vtype_get_vch_index_by_ts_info, tagged_key + arguments{view}),
      CALL(2, set_channel_flag_by_bit, {bits}),
      CALL(1, clear_channel_flag_by_bit, {bits}),
      CALL(2, set_channel_flag_by_vindex, {position, bits, truth}),
      CALL(1, get_channel_flag_by_vindex, {position}),
      CALL(1, vtype_set_channel_flag_by_vindex, {position, bits, truth, view}),
      CALL(1, vtype_get_channel_flag_by_vindex, {position, view}),
      CALL(1, check_skip_channel_index, {position}),
      CALL(1, check_available_channel, {position}),
      CALL(1, get_dsmcc_channel, {}),
      HOST(2, rename_at, {position, name_slot, name, length, view}),
      HOST(4, set_group_id, {group_kind, view, position, group_id}),
  };
}

std::vector<operation> order_operations() {
  using enum argument;
  constexpr family which = family::order;
  return {
      CALL(4, sort_vch_type, {sort_type, view}),
      CALL(1, sort_vindex_ex, {sort_type}),
      CALL(1, sort_vindex_by_number, {view}),
      CALL(1, sort_vindex, {}),
      CALL(3, sort_vindex_by_flag, {view, flag_sort_type}),
      HOST(4, move_one, {position, position}),
      HOST(3, move_two, {position, position, position}),
      HOST(2, move_three, {position, position, position, position}),
      HOST(1, move_none, {position}),
  };
}

std::vector<operation> group_operations() {
  using enum argument;
  constexpr family which = family::groups;
  return {
      HOST(6, add_provider, {name}),
      CALL(2, remove_provider_index, {position}),
      CALL(1, remove_invalid_provider_info, {}),
      HOST(1, list_providers, {view}),
      CALL(4, create_service_by_group_list_id, {group_kind, group_id, view, truth}),
      CALL(1, remove_service_by_group_list_id, {group_kind, group_id, view}),
      CALL(2, add_fav_ch_group, {favourite_id, view, group_kind, group_id}),
  };
}

std::vector<operation> favourite_operations() {
  using enum argument;
  constexpr family which = family::favourites;
  return {
      HOST(4, add_fav_group, {name}),
      HOST(1, rename_fav_group, {favourite_id, name, length}),
      CALL(1, remove_fav_group, {favourite_id}),
      CALL(1, move_fav_ch_group, {favourite_index, favourite_index}),
      HOST(10, add_favourite, {favourite_id, plain_view, position}),
      CALL(2, remove_fav_virtual_channel, {favourite_id, position}),
      CALL(2, remove_fav_virtual_channel_by_ts_info,
           {tag, favourite_id, net_index, frequency, polarisation, network_id, ts_id, service_id}),
      HOST(2, move_favourite, {favourite_index, position, position}),
      HOST(2, move_two_favourites, {favourite_index, position, position, position}),
  };
}

std::vector<operation> history_operations() {
  constexpr family which = family::history;
  return {
      CALL(10, add_return_channel, tagged_key),
      CALL(2, check_same_return_channel, tagged_key),
      CALL(2, remove_return_channel, tagged_key),
      CALL(1, init_return_channel, {}),
  };
}

}  // namespace

const std::vector<operation> &operations() {
  static const std::vector<operation> all = [] {
    std::vector<operation> joined;
    for (const auto &made : {store_operations(), view_operations(), order_operations(), group_operations(),
                             favourite_operations(), history_operations()}) {
      joined.insert(joined.end(), made.begin(), made.end());
    }
    return joined;
  }();
  return all;
}

std::ostream &operator<<(std::ostream &out, const command &shown) {
  out << shown.called->name << '(';
  for (std::size_t i = 0; i < shown.arguments.size(); ++i) {
    out << (i == 0 ? "" : ", ") << shown.arguments[i];
  }
  return out << ");";
}

bool apply(const command &call, model &expected) {
  return call.called->in_model(expected, call.arguments) == call.called->in_library(call.arguments);
}

std::string run(const command &call, model &expected) {
  const int modelled = call.called->in_model(expected, call.arguments);
  const int result = call.called->in_library(call.arguments);
  const state found = observe();
  normalise(expected);
  std::string complaint = expected.accept_order(found);
  if (result != modelled) {
    complaint += "the result is " + std::to_string(result) + ", expected " + std::to_string(modelled) + '\n';
  }
  complaint += difference(expected, found);
  if (complaint.empty()) {
    complaint = test_support::broken_invariant(expected.kept);
  }
  return complaint;
}

}  // namespace model_tests
