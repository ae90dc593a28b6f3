// Many random calls on one list, with merges and files of any contents among them: after each call every count is the
// length of its list, and what is saved is what comes back.
//
// The words have one exception. A release counts down the first transponder that matches the channel by transport
// stream id, frequency and polarisation, in every network of the channel's identity, and that may be another than the
// one that holds it: where two networks share an identity, or where a channel lies within the tolerance of two
// transponders. A list in which a channel is misled in this way makes no promise for the next call.
//
// CHANNEL_MODEL_CALLS=1000000 makes a million calls.
#include <base/verbosity.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <sstream>

#include "commands.h"
#include "host.h"
#include "observe.h"
#include "support/invariants.h"
#include "support/log_capture.h"
#include "support/new_list_folder.h"
#include "support/old_channel_file.h"
#include "worth_trying.h"

namespace model_tests {
namespace {

using test_support::bytes;
using test_support::channel_file;
using test_support::service_data;

template <class Action>
void for_each_service(const Action &action) {
  for_each_below<network_ch_st>(get_channel_list()->network_list, [&](network_ch_st &network) {
    for_each_below<tp_ch_st>(network.tp_list, [&](tp_ch_st &transponder) {
      for_each_below<channel_st>(transponder.rch_list, [&](channel_st &service) { action(transponder, service); });
    });
  });
}

template <class Record>
int length_of(const list_head &head) {
  int length = 0;
  for_each_below<Record>(head, [&length](const Record &) { ++length; });
  return length;
}

bool every_count_is_the_length_of_its_list() {
  const channel_list_st &list = *get_channel_list();
  bool equal = list.network_num == length_of<network_ch_st>(list.network_list);
  for_each_below<network_ch_st>(list.network_list, [&equal](const network_ch_st &network) {
    equal = equal && network.tp_num == length_of<tp_ch_st>(network.tp_list);
    for_each_below<tp_ch_st>(network.tp_list, [&equal](const tp_ch_st &transponder) {
      equal = equal && transponder.rch_num == length_of<channel_st>(transponder.rch_list);
    });
  });
  return equal;
}

bool matches(const tp_ch_st &transponder, const channel_st &service) {
  const std::int64_t apart = std::int64_t{transponder.frequency} - service.frequency;
  return transponder.ts_id == service.ts_id && std::abs(apart) < 2500 &&
         transponder.polarisation == service.polarisation;
}

// Whether a channel's release would count down another transponder than its own.
bool is_misled(const tp_ch_st &its_own, const channel_st &service) {
  bool misled = false;
  for_each_below<network_ch_st>(get_channel_list()->network_list, [&](const network_ch_st &network) {
    if (network.net_index == service.net_index && network.network_id == service.network_id) {
      const tp_ch_st *first = nullptr;
      for_each_below<tp_ch_st>(network.tp_list, [&](const tp_ch_st &transponder) {
        first = first == nullptr && matches(transponder, service) ? &transponder : first;
      });
      misled = misled || (first != nullptr && first != &its_own);
    }
  });
  return misled;
}

bool is_any_misled() {
  bool any = false;
  for_each_service(
      [&any](const tp_ch_st &transponder, const channel_st &service) { any = any || is_misled(transponder, service); });
  return any;
}

class random_numbers {
 public:
  explicit random_numbers(unsigned seed) : engine_(seed) {}
  int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(engine_); }
  bool once_in(int n) { return below(n) == 0; }
  template <class Values>
  const auto &of(const Values &values) {
    return values[static_cast<std::size_t>(below(static_cast<int>(std::size(values))))];
  }

 private:
  std::mt19937 engine_;
};

// What stands in files, and what their records may say: doubled networks, transponders within the tolerance, channels
// that contradict the record they hang from.
constexpr std::int64_t frequencies_in_files[] = {11'000'000, 11'002'499, 11'002'500, 12'000'000, 0};

service_data any_service(random_numbers &random) {
  service_data made;
  made.net_index = static_cast<std::uint8_t>(1 + random.below(2));
  made.ts_id = static_cast<std::uint16_t>(100 + random.below(2));
  made.frequency = random.of(frequencies_in_files);
  made.service_id = static_cast<std::uint16_t>(1 + random.below(6));
  made.polarisation = static_cast<std::uint8_t>(random.once_in(5) ? 1 : 0);
  made.service_type = static_cast<std::uint8_t>(1 + random.below(3));
  return made;
}

void contradict(channel_file &file, random_numbers &random) {
  const auto of_service = test_support::record_kind::service;
  switch (random.below(6)) {
    case 0:
      file.set_last(of_service, 234, 2, static_cast<unsigned>(100 + random.below(3)));
      break;
    case 1:
      file.set_last(of_service, 224, 8, static_cast<std::uint64_t>(random.of(frequencies_in_files)));
      break;
    case 2:
      file.set_last(of_service, 216, 1, static_cast<unsigned>(1 + random.below(3)));
      break;
    default:
      break;
  }
}

// Bytes where a header has its counts, or anywhere in its last part; an end anywhere.
void damage(channel_file &file, random_numbers &random) {
  if (random.once_in(4)) {
    const auto &place = random.of(random.once_in(2) ? test_support::view_places() : test_support::group_places());
    file.set(place.count, 2, static_cast<unsigned>(random.below(0x10000)));
  }
  if (random.once_in(4)) {
    for (std::size_t at = test_support::list_size - 700; at < test_support::list_size; ++at) {
      file.set(at, 1, static_cast<unsigned>(random.below(256)));
    }
    file.set(459'610, 2, static_cast<unsigned>(random.below(4)));
  }
  if (random.once_in(4)) {
    const int most = static_cast<int>(file.data.size() - test_support::list_size) + 700;
    file.data.resize(file.data.size() - static_cast<std::size_t>(random.below(most)));
    file.records.clear();
  }
}

channel_file any_file(random_numbers &random) {
  channel_file file;
  for (int services = random.below(20); services > 0; --services) {
    const service_data service = any_service(random);
    file.service(service);
    contradict(file, random);
    const auto &view = random.of(test_support::view_places());
    if (test_support::get(file.data, view.count, 2) < static_cast<unsigned>(view.capacity)) {
      file.entry(view.code, service, service.service_id);
    }
  }
  return file;
}

class ManyCallsAndMerges : public test_support::new_list_test {
 protected:
  void SetUp() override {
    new_list_test::SetUp();
    if (!IsSkipped()) {
      std::fill(std::begin(verbosity_map), std::end(verbosity_map), -1);
      host::start(dir.path().c_str());
    }
  }

  static int calls_to_make() {
    const char *wanted = std::getenv("CHANNEL_MODEL_CALLS");
    return wanted != nullptr ? std::atoi(wanted) : 40'000;
  }

  // Makes one call of the interface and gives it as a line of C, or does something with a file and tells what.
  std::string call_anything() {
    switch (random_.below(800)) {
      case 0:
      case 1:
        return load_any_file();
      case 2:
        return repair_any_file();
      case 3:
      case 4:
        return merge_any_file();
      default:
        return call_any_operation();
    }
  }

  // What is saved comes back: the same networks, transponders and channels, and from then on the same bytes.
  void expect_to_come_back() {
    for_each_service([](const tp_ch_st &, channel_st &service) { service.country_id = 0; });
    const bytes first = save();
    ASSERT_EQ(reload("saved.dat"), static_cast<std::int16_t>(test_support::get(first, 0, 2)));
    const bytes second = save();
    test_support::expect_same_bytes(second.substr(test_support::list_size), first.substr(test_support::list_size));
    reload("saved.dat");
    test_support::expect_same_bytes(save(), second);
  }

 private:
  int reload(const char *name) {
    reset_channel_list();
    return load_named(name);
  }

  std::string load_any_file() {
    channel_file file = any_file(random_);
    damage(file, random_);
    reset_channel_list();
    load(file.data, random_.once_in(2) ? SORT_NUMBER : 255);
    return "a load";
  }

  std::string repair_any_file() {
    const auto &version = random_.of(test_support::old_versions());
    bytes file = in_version(version, any_file(random_)).data;
    file.resize(file.size() - static_cast<std::size_t>(random_.once_in(3) ? random_.below(700) : 0));
    test_support::write_file(path("old.dat"), file);
    reset_channel_list();
    repair_channel(version.number, path("old.dat").c_str());
    return "a repair";
  }

  std::string merge_any_file() {
    channel_file file = any_file(random_);
    damage(file, random_);
    merge(file);
    return "a merge";
  }

  std::string call_any_operation() {
    static const std::vector<const operation *> chosen = [] {
      std::vector<const operation *> made;
      for (const operation &each : operations()) {
        made.insert(made.end(), static_cast<std::size_t>(each.weight), &each);
      }
      return made;
    }();
    command call = {random_.of(chosen), {}};
    for (const argument each : call.called->arguments) {
      call.arguments.push_back(random_.of(worth_trying().at(each)));
    }
    call.called->in_library(call.arguments);
    std::ostringstream out;
    out << call;
    return out.str();
  }

  random_numbers random_{20};
};

TEST_F(ManyCallsAndMerges, LeaveEveryCountTheLengthOfItsList) {
  constexpr int between_thorough_looks = 500;
  const int calls = calls_to_make();
  int promised_calls = 0;
  for (int made = 1; made <= calls; ++made) {
    const bool promised = !is_any_misled();
    const std::string call = call_anything();
    if (promised) {
      ++promised_calls;
      ASSERT_TRUE(every_count_is_the_length_of_its_list()) << "call " << made << ", " << call;
    } else if (!every_count_is_the_length_of_its_list()) {
      reset_channel_list();
    }
    if (made % between_thorough_looks == 0) {
      ASSERT_EQ(test_support::broken_invariant({.zeros_behind_counts = false,
                                                .distinct_favourites = false,
                                                .distinct_history = false,
                                                .well_kept_groups = false}),
                "")
          << "call " << made << ", " << call;
      ASSERT_NO_FATAL_FAILURE(expect_to_come_back()) << "call " << made;
    }
  }
  EXPECT_GT(promised_calls, calls / 2);
}

}  // namespace
}  // namespace model_tests
