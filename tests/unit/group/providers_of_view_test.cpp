// The providers of a view's services, sorted by name.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

#include "support/grouped_services.h"
#include "support/log_capture.h"
#include "support/providers.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;
using ids = std::vector<int>;

constexpr std::int16_t untouched_id = 7777;

class ProvidersOfView : public store_test {
 protected:
  ProvidersOfView() { out_.fill(untouched_id); }

  // The ids found, and beyond them nothing but -1 to the end of the 500.
  ids providers_of(std::int8_t view_type) {
    const int count = get_provider_id_by_service_type(view_type, out_.data());
    EXPECT_TRUE(std::all_of(out_.begin() + count, out_.begin() + MAX_PROVIDER, [](int id) { return id == -1; }));
    EXPECT_EQ(out_.back(), untouched_id);
    return {out_.begin(), out_.begin() + count};
  }

  // TV entries of services that carry these ids.
  static void show_carriers(const ids &provider_ids) {
    for (std::size_t i = 0; i < provider_ids.size(); ++i) {
      show({.service_id = static_cast<int>(i) + 1, .provider = provider_ids[i]}, {VIEW_TV});
    }
  }

  [[nodiscard]] bool out_is_untouched() const {
    return std::all_of(out_.begin(), out_.end(), [](int id) { return id == untouched_id; });
  }

  // The writes of the call, at a level.
  static lines writes_of_call(int level, std::int8_t view_type) {
    std::array<std::int16_t, MAX_PROVIDER> out;
    return writes_at(level, [&] { return get_provider_id_by_service_type(view_type, out.data()); });
  }

 private:
  // One more than the call may write.
  std::array<std::int16_t, MAX_PROVIDER + 1> out_;
};

TEST_F(ProvidersOfView, EachProviderIsListedOnceSortedByName) {
  put_provider("Ant", 3);
  put_provider("Zed", 5);
  show_carriers({5, 3, 5});

  EXPECT_EQ(providers_of(VIEW_TV), (ids{3, 5}));
}

TEST_F(ProvidersOfView, CaseDoesNotMatterToTheOrder) {
  put_provider("b", 0);
  put_provider("C", 1);
  put_provider("A", 2);
  put_provider("d", 3);
  show_carriers({3, 1, 0, 2});

  EXPECT_EQ(providers_of(VIEW_TV), (ids{2, 0, 1, 3}));
}

TEST_F(ProvidersOfView, EveryOrderOfTheServicesGivesTheOrderOfTheNames) {
  ids order = {0, 1, 2, 3};
  do {
    reset_channel_list();
    add_providers({"a", "b", "c", "d"});
    show_carriers(order);

    EXPECT_EQ(providers_of(VIEW_TV), (ids{0, 1, 2, 3}));
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(ProvidersOfView, EqualNamesStandInTheOrderInWhichTheyAreMet) {
  add_providers({"abc", "ABC", "b", "Abc"});
  show_carriers({2, 3, 0, 1, 3});

  EXPECT_EQ(providers_of(VIEW_TV), (ids{3, 0, 1, 2}));
}

TEST_F(ProvidersOfView, Id0IsListed) {
  add_provider("a");
  show_carriers({0});

  EXPECT_EQ(providers_of(VIEW_TV), (ids{0}));
}

TEST_F(ProvidersOfView, EveryViewIsRead) {
  add_providers({"a", "b"});
  for (const view_case &view : every_view()) {
    init_vindex(view.code);
    show({.service_id = view.code + 1, .provider = 1}, {view.code});

    EXPECT_EQ(providers_of(view.code), (ids{1})) << int{view.code};
  }
}

TEST_F(ProvidersOfView, TheRealChannelOfTheEntryCounts) {
  add_providers({"a", "b"});
  show_carriers({0, 1});
  list.tv_vch[0].rch = list.tv_vch[1].rch;

  EXPECT_EQ(providers_of(VIEW_TV), (ids{1}));
}

TEST_F(ProvidersOfView, EntriesBehindTheCountDoNotCount) {
  add_providers({"a", "b"});
  show_carriers({0, 1});
  list.tv_vnumber = 1;

  EXPECT_EQ(providers_of(VIEW_TV), (ids{0}));
}

TEST_F(ProvidersOfView, AnEmptyViewLeavesTheArrayAlone) {
  for (const int count : {0, -1}) {
    list.tv_vnumber = static_cast<std::int16_t>(count);
    std::array<std::int16_t, MAX_PROVIDER> out;
    out.fill(untouched_id);

    EXPECT_EQ(get_provider_id_by_service_type(VIEW_TV, out.data()), 0);

    EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](int id) { return id == untouched_id; }));
    EXPECT_EQ(writes_of_call(5, VIEW_TV), lines{});
  }
  list.tv_vnumber = 0;
}

TEST_F(ProvidersOfView, AnUnknownViewLeavesTheArrayAloneAndIsWarnedOfByBothAccessors) {
  for (const std::int8_t code : unknown_codes) {
    const std::string text = "unknown vch_type=" + std::to_string(code) + "\n";
    std::array<std::int16_t, MAX_PROVIDER> out;
    out.fill(untouched_id);

    EXPECT_EQ(get_provider_id_by_service_type(code, out.data()), 0);

    EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](int id) { return id == untouched_id; }));
    EXPECT_EQ(writes_of_call(1, code),
              (lines{"WARNING: get_virtual_channel_st:# " + text, "WARNING: get_virtual_channel_vnumber:# " + text}));
    EXPECT_EQ(writes_of_call(0, code), lines{});
  }
}

TEST_F(ProvidersOfView, EntriesWithoutAChannelAreReportedAndPassedOver) {
  add_providers({"a", "b"});
  show_without_channel(VIEW_TV);
  show({.service_id = 1, .provider = 1}, {VIEW_TV});
  show_without_channel(VIEW_TV);
  show({.service_id = 2, .provider = 0}, {VIEW_TV});
  const std::string report = "ERROR: get_provider_id_by_service_type:# r_ch == NULL\n";

  EXPECT_EQ(providers_of(VIEW_TV), (ids{0, 1}));
  EXPECT_EQ(writes_of_call(0, VIEW_TV), (lines{report, report}));
  EXPECT_EQ(writes_of_call(-1, VIEW_TV), lines{});
}

TEST_F(ProvidersOfView, AViewWithoutAnyChannelClearsTheArray) {
  show_without_channel(VIEW_TV);

  EXPECT_EQ(providers_of(VIEW_TV), ids{});
  EXPECT_FALSE(out_is_untouched());
}

TEST_F(ProvidersOfView, AProviderThatTheTableLacksIsReportedAndPassedOver) {
  add_providers({"a", "b"});
  show_carriers({1, 9, 0, -1});

  EXPECT_EQ(providers_of(VIEW_TV), (ids{0, 1}));
  EXPECT_EQ(writes_of_call(0, VIEW_TV), (lines{"ERROR: get_provider_id_by_service_type:# provider id 9 unknown\n",
                                               "ERROR: get_provider_id_by_service_type:# provider id -1 unknown\n"}));
}

TEST_F(ProvidersOfView, IdsThatNoTableGivesAreListedLikeOthers) {
  put_provider("c", -1);
  put_provider("b", 32767);
  put_provider("a", -32768);
  show_carriers({-1, 32767, -32768, -1});

  EXPECT_EQ(providers_of(VIEW_TV), (ids{-32768, 32767, -1}));
}

TEST_F(ProvidersOfView, NamesThatFillTheirFieldCompareWithinIt) {
  const std::string front(97, 'x');
  put_provider(front + "b", 0);
  put_provider(front + "a", 1);
  put_provider(front + "B", 2);
  // What lies behind the first name would put it last.
  list.provider[1].reserved_0 = 0x7A7A;
  show_carriers({0, 2, 1});

  EXPECT_EQ(providers_of(VIEW_TV), (ids{1, 0, 2}));
}

TEST_F(ProvidersOfView, AllProvidersOfAFullTableAreListed) {
  for (const int count : {1, 499, 500}) {
    reset_channel_list();
    fill_providers(count);
    ids expected(static_cast<std::size_t>(count));
    std::iota(expected.begin(), expected.end(), 0);
    // Carried in the reverse order, and then once more.
    ids carried(expected.rbegin(), expected.rend());
    carried.insert(carried.end(), expected.begin(), expected.end());
    show_carriers(carried);

    EXPECT_EQ(providers_of(VIEW_TV), expected);
  }
}

TEST_F(ProvidersOfView, AFullViewIsReadToItsEnd) {
  add_providers({"a", "b"});
  channel_st &first = file_grouped({.service_id = 1, .provider = 0});
  repeat_entry(VIEW_ALL, first, MAX_CHANNEL);
  list.vch[MAX_CHANNEL - 1].rch = &file_grouped({.service_id = 2, .provider = 1});

  EXPECT_EQ(providers_of(VIEW_ALL), (ids{0, 1}));
}

TEST_F(ProvidersOfView, ANullArrayIsRefused) {
  add_provider("a");
  show_carriers({0});

  EXPECT_EQ(get_provider_id_by_service_type(VIEW_TV, nullptr), 0);
  EXPECT_EQ(writes_at(0, [] { return get_provider_id_by_service_type(VIEW_TV, nullptr); }),
            lines{"ERROR: get_provider_id_by_service_type:# out is null\n"});
  EXPECT_EQ(get_provider_id_by_service_type(VIEW_RADIO, nullptr), 0);
}

TEST_F(ProvidersOfView, TheViewAndTheTableAreNotChanged) {
  add_providers({"b", "a"});
  show_carriers({0, 1, 0});
  const std::string before = provider_table_image();

  EXPECT_EQ(writes_of_call(5, VIEW_TV), lines{});

  EXPECT_EQ(provider_table_image(), before);
  EXPECT_EQ(service_ids(VIEW_TV), (ids{1, 2, 3}));
}

}  // namespace
