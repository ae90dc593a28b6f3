// Dumps and the log level: nothing is printed below level 2, each line tests the level again, and nothing is changed.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

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
void print_favourites() { print_fav_list(1); }
void print_all_view() { print_virtual_channel_list(VIEW_ALL); }

class EveryDump : public store_test, public ::testing::WithParamInterface<named_dump> {
 protected:
  void SetUp() override {
    store_test::SetUp();
    fill_view(VIEW_ALL, 2);
    list.provider_num = 2;
    list.favorite_group_num = 1;
    list.favorite_group[0].name_len = 4;
    append_entry(VIEW_FAVOURITE, list.vch[1]);
    append_entry(VIEW_WORK, list.vch[1]);
    add_return_channel(0, 1, 1, 100, 11'000'000, 2, 0);
  }

  // The list, every record that hangs from it, and what lives beside it.
  static std::string everything() {
    std::string all = image_of(get_channel_list());
    for (const network_ch_st *network : networks()) {
      all += image_of(network);
      for (const tp_ch_st *transponder : transponders(*network)) {
        all += image_of(transponder);
        for (const channel_st *service : services(*transponder)) {
          all += image_of(service);
        }
      }
    }
    return all + image_of(get_virtual_channel_st(VIEW_WORK), MAX_CHANNEL) +
           image_of(get_virtual_channel_vnumber(VIEW_WORK)) + image_of(get_return_channel(), MAX_RETURN_CHANNEL) +
           std::to_string(get_return_channel_num()) + ' ' + std::to_string(get_limited_channel_flag());
  }

 private:
  template <class Record>
  static std::string image_of(const Record *records, std::size_t count = 1) {
    return {reinterpret_cast<const char *>(records), count * sizeof *records};
  }
};

TEST_P(EveryDump, IsSilentBelowLevel2) {
  EXPECT_EQ(writes_at(2, GetParam().print).size(), GetParam().writes);
  EXPECT_EQ(writes_at(1, GetParam().print), lines{});
}

TEST_P(EveryDump, IsCutShortWhenTheLevelFalls) {
  for (std::size_t cut = 1; cut < GetParam().writes; ++cut) {
    const lowering_stderr target(cut);

    GetParam().print();

    EXPECT_EQ(target.taken(), cut);
  }
}

TEST_P(EveryDump, ChangesNothing) {
  const std::string before = everything();

  writes_at(9, GetParam().print);

  EXPECT_TRUE(everything() == before);
}

INSTANTIATE_TEST_SUITE_P(
    OfThe, EveryDump,
    ::testing::Values(named_dump{"Limits", channel_version_info, 6}, named_dump{"List", print_channel_list, 16},
                      named_dump{"Channel", print_first_channel, 14}, named_dump{"Status", print_channel_status, 13},
                      named_dump{"View", print_all_view, 15}, named_dump{"Groups", print_two_providers_as_groups, 2},
                      named_dump{"Providers", print_provider_info, 3}, named_dump{"Favourites", print_favourites, 10}),
    [](const auto &tested) { return std::string(tested.param.name); });

}  // namespace
