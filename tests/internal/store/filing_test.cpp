// Filing through the index of a pass against add_rch_info: the same hierarchy, result and log, whatever is filed into
// whatever hierarchy.
#include "channel/store/filing.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include "channel/store/service_index.h"
#include "support/log_capture.h"
#include "support/random_store.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

constexpr int filed_services = 40;

class Filing : public store_test {
 protected:
  struct outcome {
    lines log;
    lines hierarchy;
    std::vector<int> results;
  };

  // Files the same services into the same hierarchy for the same seed, looking each up before and after.
  template <class File, class Resolve>
  static outcome file_some(random_store some, int level, const File &file, const Resolve &resolve) {
    outcome seen;
    const log_capture log(level);
    for (int i = 0; i < filed_services; ++i) {
      channel_st *service = some.make_service();
      const channel::identity id = channel::identity_of(*service);
      seen.results.push_back(resolve(some.some_identity()) != nullptr);
      seen.results.push_back(file(*service));
      const channel_st *found = resolve(id);
      seen.results.push_back(found == service ? 2 : found != nullptr);
      if (points_to_itself(service->list)) {
        std::free(service);
      }
    }
    seen.log = log.writes();
    seen.hierarchy = hierarchy_listing();
    return seen;
  }

  static random_store build(unsigned seed) {
    random_store some(seed);
    reset_channel_list();
    some.build_hierarchy();
    return some;
  }
};

TEST_F(Filing, ThroughAnIndexIsFilingByWalksAtEveryLevel) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    const int level = static_cast<int>(seed % 7) - 1;
    const outcome walked = file_some(
        build(seed), level, [](channel_st &service) { return add_rch_info(&service, random_store::network_name); },
        [](const channel::identity &id) {
          return get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
        });
    const random_store some = build(seed);
    channel::service_index index(filed_services);

    const outcome indexed = file_some(
        some, level,
        [&index](channel_st &service) {
          return channel::file_service(index, service, random_store::network_name) != nullptr ? 0 : -1;
        },
        [&index](const channel::identity &id) { return index.resolve(id); });

    ASSERT_EQ(indexed.log, walked.log) << "seed " << seed;
    ASSERT_EQ(indexed.hierarchy, walked.hierarchy) << "seed " << seed;
    ASSERT_EQ(indexed.results, walked.results) << "seed " << seed;
  }
}

TEST_F(Filing, GivesTheServiceThatTheFinderFindsThen) {
  int new_services = 0;
  for (unsigned seed = 0; seed < 60; ++seed) {
    random_store some = build(seed);
    channel::service_index index(filed_services);
    for (int i = 0; i < filed_services; ++i) {
      channel_st *service = some.make_service();
      const channel::identity id = channel::identity_of(*service);
      const bool is_new = index.resolve(id) == nullptr;

      const channel_st *filed = channel::file_service(index, *service, random_store::network_name);

      if (is_new) {
        ++new_services;
        ASSERT_EQ(filed, service) << "seed " << seed;
        ASSERT_EQ(index.resolve(id), filed) << "seed " << seed;
      } else if (id.frequency != 0) {
        ASSERT_EQ(filed, index.resolve(id)) << "seed " << seed;
      }
      if (filed != service) {
        std::free(service);
      }
    }
  }
  EXPECT_GT(new_services, 1'000);
}

TEST_F(Filing, AServiceFiledBeforeOthersOfItsIdIsFoundFirstWithoutAFrequency) {
  file_service({.frequency = 11'000'000, .service_id = 1});
  channel_st *behind = file_service({.frequency = 12'000'000, .service_id = 5});
  channel::service_index index(1);
  const channel::identity any = {1, 1, 100, 0, 5, 0};
  ASSERT_EQ(index.resolve(any), behind);

  channel_st *before = make_service({.frequency = 11'000'000, .service_id = 5});
  channel::file_service(index, *before, nullptr);

  EXPECT_EQ(index.resolve(any), before);
  EXPECT_EQ(get_channel_st(1, 1, 100, 0, 5, 0), before);
}

TEST_F(Filing, AnIndexOfAnEmptyListTakesAsManyServicesAsWereAnnounced) {
  constexpr int services = 3'000;
  channel::service_index index(services);
  for (int i = 0; i < services; ++i) {
    channel_st *service = make_service({.net_index = static_cast<std::uint8_t>(i % 200),
                                        .ts_id = static_cast<std::uint16_t>(i),
                                        .frequency = 10'000 * i,
                                        .service_id = static_cast<std::uint16_t>(i)});
    ASSERT_EQ(channel::file_service(index, *service, random_store::network_name), service);
    ASSERT_EQ(index.resolve(channel::identity_of(*service)), service);
  }

  EXPECT_EQ(networks().size(), 200U);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(Filing, AFullListTakesNoMore) {
  channel_st *first = file_service({.service_id = 1});
  channel::service_index index(1);
  networks().at(0)->tp_num = UINT16_MAX;
  channel_st *refused = make_service({.frequency = 12'000'000, .service_id = 2});

  EXPECT_EQ(writes_at(0, [&] { return channel::file_service(index, *refused, nullptr); }),
            lines{"ERROR: add_rch_info:# list is full, 65535 records\n"});
  EXPECT_EQ(channel::file_service(index, *refused, nullptr), nullptr);
  EXPECT_EQ(index.resolve(channel::identity_of(*first)), first);

  networks().at(0)->tp_num = 1;
  std::free(refused);
}

}  // namespace
