// Checking and salvaging any bytes: the input is the file, or a file that is damaged as the input says. What is
// salvaged is saved, is in frame, and holds what was reported when it is loaded.
#include <base/verbosity.h>
#include <channel/channel.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/check/findings.h"
#include "chlist/salvage/salvaging.h"
#include "harness.h"
#include "memory_files.h"
#include "support/channel_file.h"

namespace {

using bytes = std::vector<std::byte>;

constexpr std::size_t list_size = test_support::list_size;
constexpr int channel_list_module = 7;

// A small list, in full behind the input's control bytes: an input is much shorter than a file.
test_support::channel_file small_list() {
  test_support::channel_file file;
  for (std::uint16_t i = 0; i < 6; ++i) {
    test_support::service_data data;
    data.ts_id = static_cast<std::uint16_t>(100 + i / 3);
    data.frequency = 11'000'000 + i / 3 * 40'000;
    data.service_id = static_cast<std::uint16_t>(1 + i);
    file.service(data).entry(VIEW_ALL, data, i + 1).entry(VIEW_FAVOURITE, data, i + 1, i);
  }
  return file.group(GROUP_FAV, 0, "Best");
}

class damage {
 public:
  explicit damage(std::span<const std::uint8_t> input) : input_(input) {
    const test_support::bytes whole = small_list().data;
    const auto all = std::as_bytes(std::span(whole));
    file_.assign(all.begin(), all.end());
  }

  bytes file() {
    while (!input_.empty()) {
      step();
    }
    return std::move(file_);
  }

 private:
  std::size_t number(std::size_t width) {
    std::size_t value = 0;
    for (; width > 0 && !input_.empty(); --width) {
      value = value << 8U | input_.front();
      input_ = input_.subspan(1);
    }
    return value;
  }

  // Behind the list's own record, where the records are, or anywhere.
  std::size_t place() {
    const std::size_t at = number(3);
    return std::min(file_.size(), (at & 1U) != 0 ? list_size + at % 4096 : at % (file_.size() + 1));
  }

  void step() {
    enum { cut_end, cut_out, insert, overwrite };
    constexpr std::size_t long_ones = 4;
    const std::size_t chosen = number(1);
    const std::size_t kind = chosen % 4;
    const std::size_t at = place();
    const std::size_t unit = (chosen & long_ones) != 0 ? 1024 : 1;
    const std::size_t size = std::min((number(1) + 1) * unit, file_.size() - at);
    const auto begin = file_.begin() + static_cast<std::ptrdiff_t>(at);
    if (kind == cut_end) {
      file_.erase(begin, file_.end());
    } else if (kind == cut_out) {
      file_.erase(begin, begin + static_cast<std::ptrdiff_t>(size));
    } else {
      const auto value = static_cast<std::byte>(number(1));
      if (kind == insert) {
        file_.insert(begin, size, value);
      } else {
        std::fill_n(begin, size, value);
      }
    }
  }

  std::span<const std::uint8_t> input_;
  bytes file_;
};

bool concerns_frame(const chlist::finding &found) {
  constexpr std::string_view kinds[] = {"short-file",      "missing-record",  "bytes-behind-end",
                                        "unknown-version", "earlier-version", "count-outside-array"};
  return std::ranges::find(kinds, found.kind) != std::end(kinds);
}

// As many as were reported: those of a list without any service.
void require_frame(const std::string &file, const chlist::salvage_outcome &outcome) {
  const chlist::file_findings result = chlist::findings_in(std::as_bytes(std::span(file)));
  const auto unresolved =
      std::ranges::count(result.findings, std::string_view("unresolved-entry"), &chlist::finding::kind);
  fuzz::require(std::ranges::none_of(result.findings, concerns_frame), "what was salvaged is in frame");
  fuzz::require(static_cast<std::size_t>(unresolved) == outcome.list.entries_without_service,
                "entries without a service are those that were reported");
  fuzz::require(result.networks == outcome.recovered.networks &&
                    result.transponders == outcome.recovered.transponders &&
                    result.services == outcome.recovered.services,
                "the file has the records that were reported");
}

std::vector<std::size_t> sizes_of_views() {
  std::vector<std::size_t> sizes;
  for (const chlist::list_view &view : chlist::views_of(*get_channel_list())) {
    sizes.push_back(view.size());
  }
  return sizes;
}

void require_loads(const chlist::salvage_outcome &outcome, const std::vector<std::size_t> &sizes) {
  reset_channel_list();  // a load leaves the records that are linked to the host
  fuzz::require(load_channel("salvaged.dat", 255) == CHANNEL_LIST_VERSION, "what was salvaged is loaded");
  const chlist::hierarchy_counts counts = chlist::count_hierarchy(*get_channel_list());
  fuzz::require(counts.services == outcome.recovered.services && counts.networks == outcome.recovered.networks,
                "what is loaded is what was reported");
  fuzz::require(sizes_of_views() == sizes, "the views are as long as they were");
  fuzz::require_invariants(fuzz::of_any_file, "after loading what was salvaged");
}

// Salvaging opens files of the system; only what it made goes through the files in memory.
void save_and_load(const chlist::salvage_outcome &outcome) {
  fuzz::memory_files files;
  set_target_dir("/");
  const std::vector<std::size_t> sizes = sizes_of_views();
  fuzz::require(save_channel("salvaged.dat") == 1, "what was salvaged is saved");
  require_frame(files.at("/salvaged.dat"), outcome);
  require_loads(outcome, sizes);
}

void check_and_salvage(const bytes &file) {
  static_cast<void>(chlist::findings_in(file));
  try {
    const chlist::salvage_outcome outcome = chlist::salvage_to_memory(file);
    fuzz::require(outcome.recovered.services > 0 || outcome.list.is_of_a_list,
                  "a list that was salvaged holds something");
    for (const chlist::byte_range &range : outcome.unexplained) {
      fuzz::require(range.offset + range.size <= file.size(), "what is lost was there");
    }
    save_and_load(outcome);
  } catch (const std::runtime_error &) {
    fuzz::require(get_channel_list()->network_num == 0, "of what is refused nothing stays");
  }
  reset_channel_list();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  verbosity_map[channel_list_module] = -1;
  check_and_salvage(damage({data, size}).file());
  const auto raw = std::as_bytes(std::span(data, size));
  bytes behind_a_list(list_size + raw.size());
  behind_a_list.front() = std::byte{10};
  std::ranges::copy(raw, behind_a_list.end() - static_cast<std::ptrdiff_t>(raw.size()));
  check_and_salvage(behind_a_list);
  check_and_salvage({raw.begin(), raw.end()});
  return 0;
}
