// Sequences of calls of everything that the library exports, on lists of any kind, and what a host writes in between.
// After each step the invariants hold, less what the calls so far are documented to give up.
#include <channel/channel.h>

#include <algorithm>
#include <vector>

#include "file_script.h"
#include "harness.h"
#include "support/exported_calls.h"
#include "support/extreme_lists.h"
#include "support/hierarchy_walk.h"

namespace {

using extremes::chosen;
using extremes::effect;
using extremes::exported_call;
using fuzz::byte_reader;
using fuzz::promises;

constexpr int most_steps = 256;

// Both promise it.
promises both(const promises &a, const promises &b) {
  return {.counts = a.counts && b.counts,
          .zeros_behind_counts = a.zeros_behind_counts && b.zeros_behind_counts,
          .distinct_favourites = a.distinct_favourites && b.distinct_favourites,
          .distinct_history = a.distinct_history && b.distinct_history,
          .well_kept_groups = a.well_kept_groups && b.well_kept_groups};
}

struct listed_network {
  const network_ch_st *network;
  std::vector<tp_ch_st *> transponders;
};

bool is_counted_by(const tp_ch_st &transponder, const channel_st &service) {
  constexpr std::int64_t tolerance = 2500;
  const std::int64_t apart = static_cast<std::int64_t>(transponder.frequency) - service.frequency;
  return transponder.ts_id == service.ts_id && apart < tolerance && -apart < tolerance &&
         transponder.polarisation == service.polarisation;
}

// A release counts down the first matching transponder of every network with the channel's identity, and the channel's
// own where none matches: the right one unless another matches.
bool is_counted_by_its_own(const std::vector<listed_network> &all, const channel_st &service, const tp_ch_st &its_own) {
  return std::ranges::all_of(all, [&](const listed_network &listed) {
    if (listed.network->net_index != service.net_index || listed.network->network_id != service.network_id) {
      return true;
    }
    const auto first = std::ranges::find_if(
        listed.transponders, [&](const tp_ch_st *transponder) { return is_counted_by(*transponder, service); });
    return first == listed.transponders.end() || *first == &its_own;
  });
}

bool is_every_service_counted_by_its_own() {
  std::vector<listed_network> all;
  for (const network_ch_st *network : test_support::networks()) {
    all.push_back({network, test_support::transponders(*network)});
  }
  return std::ranges::all_of(all, [&all](const listed_network &listed) {
    return std::ranges::all_of(listed.transponders, [&all](const tp_ch_st *transponder) {
      return std::ranges::all_of(test_support::services(*transponder), [&](const channel_st *service) {
        return is_counted_by_its_own(all, *service, *transponder);
      });
    });
  });
}

// Any change that hosts make in place: an entry at the end of a view.
void append_any_entry(byte_reader &from) {
  const auto *written = chosen<const virtual_channel_st *>(from);
  const auto view_type = static_cast<std::int8_t>(from.byte() % 2 == 0 ? from.byte() % 4 : VIEW_FAVOURITE);
  std::int16_t &count = *get_virtual_channel_vnumber(view_type);
  if (written != nullptr && count < (view_type == VIEW_FAVOURITE ? MAX_FAV_NUM : MAX_RADIO_CHANNEL)) {
    get_virtual_channel_st(view_type)[count++] = *written;
  }
}

// The fields of a channel that are a host's to write.
void write_service(byte_reader &from) {
  if (auto *written = chosen<channel_st *>(from); written != nullptr) {
    written->genre_id = chosen<std::int16_t>(from);
    written->provider_id = chosen<std::int16_t>(from);
    written->country_id = chosen<std::int16_t>(from);
    written->service_type = from.byte();
    written->user_order_key = chosen<std::int16_t>(from);
    std::ranges::fill(written->name[0].text, static_cast<char>(from.byte()));
    written->name[0].name_len = static_cast<std::uint16_t>(from.number(2));
  }
}

const std::vector<exported_call> &steps() {
  static const std::vector<exported_call> all = [] {
    std::vector<exported_call> joined = extremes::exported_calls();
    constexpr promises may_repeat = {.distinct_favourites = false};
    joined.push_back({"a host's entry", effect::changes_list, {}, append_any_entry, may_repeat});
    joined.push_back({"a host's changes to a channel", effect::changes_list, {}, write_service});
    return joined;
  }();
  return all;
}

promises kept_by(const exported_call &step, const promises &promised) {
  promises kept = step.kept;
  if (step.has == effect::releases_channels && promised.counts) {
    kept.counts = is_every_service_counted_by_its_own();
  }
  return kept;
}

// A promise is given up by the step that breaks it, if that step may, and stays so.
void take(const exported_call &step, byte_reader &operands, promises &promised) {
  const promises kept = kept_by(step, promised);
  step.run_chosen(operands);
  if (!test_support::broken_invariant(promised).empty()) {
    promised = both(promised, kept);
    fuzz::require_invariants(promised, "after " + step.name);
  }
}

void load_any_file(fuzz::run &run) {
  run.files.at("/list.dat") = contents(fuzz::read_script(run.input));
  load_channel("list.dat", 255);
}

// The largest list takes a thousand times as long as the others: it stands at the beginning of an input only. A file
// may fill every array with a few channels.
constexpr std::uint8_t largest_list = 0xFF;

// A list to begin with, its kind chosen by a byte, and what it promises.
promises make_list(fuzz::run &run, std::uint8_t kind) {
  switch (kind % 4) {
    case 0:
      return {};
    case 1:
      extremes::make_small();
      return {};
    case 2:
      extremes::make_destroyed();
      return {};
    default:
      load_any_file(run);
      return fuzz::of_any_file;
  }
}

// The files go too: one that was saved before may hold a list that promises less than this one.
promises begin(fuzz::run &run, std::uint8_t kind) {
  run.empty();
  run.files.remove_all();
  promises promised;
  if (kind == largest_list) {
    extremes::make_full();
  } else {
    promised = make_list(run, kind);
  }
  fuzz::require_invariants(promised, "before the first call");
  run.log();
  return promised;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::run run(data, size);
  promises promised = begin(run, run.options.byte());
  for (int i = 0; i < most_steps && !run.input.is_at_end(); ++i) {
    byte_reader operands = run.input.part(fuzz::step_size);
    const std::size_t step = operands.byte() % (steps().size() + 1);
    if (step < steps().size()) {
      take(steps()[step], operands, promised);
    } else {
      promised = begin(run, operands.byte() % largest_list);
    }
  }
  return 0;
}
