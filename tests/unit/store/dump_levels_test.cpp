// Dumps and the log level: nothing is printed below level 2, each line tests the level again, and nothing is changed.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

lines writes_of(void (*dump)(), int level) {
  return writes_at(level, [dump] {
    dump();
    return 0;
  });
}

// Standard error that lowers the log level when it has taken a number of writes.
class lowering_stderr {
 public:
  explicit lowering_stderr(std::size_t writes_left) : writes_left_(writes_left), saved_(stderr) {
    stderr = fopencookie(this, "w", {nullptr, take, nullptr, nullptr});
    std::setvbuf(stderr, nullptr, _IONBF, 0);
    verbosity_map[7] = 2;
  }
  ~lowering_stderr() {
    std::fclose(stderr);
    stderr = saved_;
    verbosity_map[7] = 0;
  }
  lowering_stderr(const lowering_stderr &) = delete;
  lowering_stderr &operator=(const lowering_stderr &) = delete;
  [[nodiscard]] std::size_t taken() const { return taken_; }

 private:
  static ssize_t take(void *self, const char *, std::size_t size) {
    auto &target = *static_cast<lowering_stderr *>(self);
    if (++target.taken_ == target.writes_left_) {
      verbosity_map[7] = 1;
    }
    return static_cast<ssize_t>(size);
  }

  std::size_t writes_left_;
  std::size_t taken_ = 0;
  std::FILE *saved_;
};

struct named_dump {
  const char *name;
  void (*print)();
  std::size_t writes;
};

void print_two_providers_as_groups() { print_group_info(get_channel_list()->provider, 2); }
void print_first_channel() { print_channel_info(get_channel_list()->vch[0].rch); }
void print_all_view() { print_virtual_channel_list(VIEW_ALL); }

class EveryDump : public store_test, public ::testing::WithParamInterface<named_dump> {
 protected:
  void SetUp() override {
    store_test::SetUp();
    fill_view(VIEW_ALL, 2);
    list.provider_num = 2;
  }
};

TEST_P(EveryDump, IsSilentBelowLevel2) {
  EXPECT_EQ(writes_of(GetParam().print, 2).size(), GetParam().writes);
  EXPECT_EQ(writes_of(GetParam().print, 1), lines{});
}

TEST_P(EveryDump, IsCutShortWhenTheLevelFalls) {
  for (std::size_t cut = 1; cut < GetParam().writes; ++cut) {
    const lowering_stderr target(cut);

    GetParam().print();

    EXPECT_EQ(target.taken(), cut);
  }
}

TEST_P(EveryDump, ChangesNothing) {
  const auto before = std::string(reinterpret_cast<const char *>(&list), sizeof list);

  writes_of(GetParam().print, 9);

  EXPECT_EQ(std::memcmp(&list, before.data(), sizeof list), 0);
}

INSTANTIATE_TEST_SUITE_P(
    OfThe, EveryDump,
    ::testing::Values(named_dump{"Limits", channel_version_info, 6}, named_dump{"List", print_channel_list, 16},
                      named_dump{"Channel", print_first_channel, 14}, named_dump{"Status", print_channel_status, 13},
                      named_dump{"View", print_all_view, 15}, named_dump{"Groups", print_two_providers_as_groups, 2},
                      named_dump{"Providers", print_provider_info, 3}),
    [](const auto &tested) { return std::string(tested.param.name); });

}  // namespace
