// The passes over a whole list against the same steps taken one by one, every lookup a walk: the same hierarchy,
// entries and log lines at every level, whatever the lists.
#include <base/list.h>
#include <base/verbosity.h>

#include <algorithm>
#include <utility>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/dumps.h"
#include "channel/store/hierarchy.h"
#include "channel/store/links.h"
#include "merge_test.h"
#include "support/random_store.h"
#include "support/rounds.h"

namespace {

using namespace test_support;

channel_st *walk(const channel::identity &id) {
  return get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
}

bool is_view(int type) { return type <= VIEW_PROMOTION || (type >= VIEW_FAVOURITE && type <= VIEW_FAVOURITE_LAST); }

void sweep_by_walks() {
  LOG_TRACE_AS("remove_invalid_virtual_channel", 2, "\n");
  for (int type = VIEW_ALL; type <= VIEW_FAVOURITE_LAST; ++type) {
    for (std::int16_t i = 0; is_view(type) && type != VIEW_WORK;) {
      const auto view = static_cast<std::int8_t>(type);
      if (i >= *get_virtual_channel_vnumber(view)) {
        break;
      }
      if (walk(channel::identity_of(get_virtual_channel_st(view)[i])) != nullptr) {
        ++i;
      } else {
        const int level = std::exchange(verbosity_map[channel::log_module], -1);
        vtype_remove_by_vindex(i, view);
        verbosity_map[channel::log_module] = level;
      }
    }
  }
}

// The first favourite group and the one behind it: the table of groups is empty.
void link_by_walks() {
  LOG_TRACE_AS("link_rch_info", 2, "\n");
  for (const int type : {0, 1, 2, 3, 4, 5, 10}) {
    const auto view = static_cast<std::int8_t>(type);
    for (int i = 0; i < *get_virtual_channel_vnumber(view); ++i) {
      virtual_channel_st &entry = get_virtual_channel_st(view)[i];
      entry.rch = walk(channel::identity_of(entry));
      if (entry.rch == nullptr) {
        LOG_PLAIN(0, "ERROR: link...[%d][%d]-n_in %d, on %d, ts %d, freq %ld, sid %d, polr %d\n", type, i,
                  entry.net_index, entry.network_id, entry.ts_id, channel::as_long(entry.frequency), entry.service_id,
                  entry.polarisation);
      }
    }
  }
}

struct scanned_network {
  network_ch_st record;
  std::vector<channel_st> services;
};
using scanned_list = std::vector<scanned_network>;

scanned_list scan_of_the_store() {
  scanned_list scan;
  for (const network_ch_st *network : networks()) {
    scan.push_back({*network, {}});
    for (const tp_ch_st *transponder : transponders(*network)) {
      for (const channel_st *service : services(*transponder)) {
        scan.back().services.push_back(*service);
      }
    }
  }
  return scan;
}

channel_st *copy_of(const channel_st &service) {
  channel_st *copy = alloc_channel_info();
  *copy = service;
  channel::clear_link(copy->list);
  return copy;
}

void free_if_refused(channel_st *service) {
  if (points_to_itself(service->list)) {
    std::free(service);
  }
}

// The services of these tests are of a type that no view lists: none is numbered.
void add_by_walks(const channel_st &scanned) {
  const channel::identity id = channel::identity_of(scanned);
  channel_st *service = copy_of(scanned);
  add_rch_info(service, random_store::network_name);
  if (walk(id) == nullptr) {
    LOG_ERROR_AS("check_load_channel", " can't find channel  \n");
  }
  service->country_id = 1;
  free_if_refused(service);
}

int add_new_by_walks(const scanned_list &scan) {
  int added = 0;
  for (const scanned_network &network : scan) {
    for (const channel_st &scanned : network.services) {
      if (channel_st *known = walk(channel::identity_of(scanned)); known != nullptr) {
        known->country_id = 1;
      } else {
        add_by_walks(scanned);
        ++added;
      }
    }
  }
  return added;
}

int delete_by_walks() {
  int deleted = 0;
  for (const network_ch_st *network : networks()) {
    for (tp_ch_st *transponder : transponders(*network)) {
      for (channel_st *service : services(*transponder)) {
        if (service->country_id == 0) {
          LOG_TRACE_AS("check_load_channel", 2, "delete : %d, %d, %d, %lld, %d, %d, major_number %d \n",
                       service->net_index, service->network_id, service->ts_id,
                       static_cast<long long>(service->frequency), service->service_id, service->polarisation,
                       service->service_id);
          list_del_init(&service->list);
          std::free(service);
          --transponder->rch_num;
          ++deleted;
        }
      }
    }
  }
  return deleted;
}

int merge_by_walks(const scanned_list &scan) {
  const int added = add_new_by_walks(scan);
  const int deleted = delete_by_walks();
  sweep_by_walks();
  link_by_walks();
  LOG_TRACE_AS("check_load_channel", 2, "add_count %d , delete_count %d \n", added, deleted);
  return added + deleted;
}

int repair_by_walks(const scanned_list &scan) {
  for (const scanned_network &network : scan) {
    channel::print_network(network.record);
    for (const channel_st &scanned : network.services) {
      channel_st *service = copy_of(scanned);
      add_rch_info(service, network.record.network_name);
      free_if_refused(service);
    }
  }
  return 0;
}

// What lists of the same seed look like after a pass, and what the pass said.
struct outcome {
  int result = 0;
  lines log;
  lines hierarchy;
  lines entries;
};

void expect_same(const outcome &passed, const outcome &walked, unsigned seed) {
  EXPECT_EQ(passed.result, walked.result) << "seed " << seed;
  EXPECT_EQ(passed.log, walked.log) << "seed " << seed;
  EXPECT_EQ(passed.hierarchy, walked.hierarchy) << "seed " << seed;
  EXPECT_EQ(passed.entries, walked.entries) << "seed " << seed;
}

// The lines behind the last one that holds a text: what was said while a file was read.
lines behind_the_last(const lines &log, const std::string &text) {
  const auto last =
      std::find_if(log.rbegin(), log.rend(), [&](const std::string &line) { return line.find(text) != line.npos; });
  return {last.base(), log.end()};
}

class PlainWalksMerge : public merge_test {
 protected:
  static void empty_the_store() {
    reset_channel_list();
    init_vindex(VIEW_WORK);
  }

  template <class Pass>
  static outcome outcome_of_pass(unsigned seed, const Pass &pass) {
    outcome seen;
    const log_capture log(static_cast<int>(seed % 7) - 1);
    seen.result = pass();
    seen.log = log.writes();
    seen.hierarchy = hierarchy_listing();
    seen.entries = entry_listing();
    return seen;
  }

  // The outcome over the list of a seed.
  template <class Pass>
  static outcome outcome_of(unsigned seed, const Pass &pass) {
    empty_the_store();
    random_store some(seed);
    some.build_hierarchy();
    some.fill_views();
    return outcome_of_pass(seed, pass);
  }

  // Another list in a file of a version.
  scanned_list write_scan(unsigned seed, char version) {
    empty_the_store();
    random_store(seed + 1'000).build_hierarchy();
    bytes contents = save();
    contents[0] = version;
    write_file(new_path(), contents);
    return scan_of_the_store();
  }
};

TEST_F(PlainWalksMerge, TheSweepIsOneLookupAfterAnother) {
  for (unsigned seed = 0; seed < unsigned{test_support::rounds(140)}; ++seed) {
    const outcome walked = outcome_of(seed, [] { return sweep_by_walks(), 0; });

    expect_same(outcome_of(seed, remove_invalid_virtual_channel), walked, seed);
  }
}

TEST_F(PlainWalksMerge, LinkingIsOneLookupAfterAnother) {
  for (unsigned seed = 0; seed < unsigned{test_support::rounds(140)}; ++seed) {
    const outcome walked = outcome_of(seed, [] { return link_by_walks(), 0; });

    expect_same(outcome_of(seed, channel::link_rch_info), walked, seed);
  }
}

TEST_F(PlainWalksMerge, AMergeIsOneLookupAfterAnother) {
  int changed = 0;
  for (unsigned seed = 0; seed < unsigned{test_support::rounds(280)}; ++seed) {
    const scanned_list scan = write_scan(seed, CHANNEL_LIST_VERSION);
    const outcome walked = outcome_of(seed, [&scan] { return merge_by_walks(scan); });

    outcome merged = outcome_of(seed, [this] { return channel::persist::merge_new_list(new_path().c_str()); });

    merged.log = behind_the_last(merged.log, "new_load_channel");
    expect_same(merged, walked, seed);
    changed += walked.result;
  }
  EXPECT_GT(changed, test_support::rounds(1'000));
}

TEST_F(PlainWalksMerge, ARepairFilesOneServiceAfterAnother) {
  for (unsigned seed = 0; seed < unsigned{test_support::rounds(280)}; ++seed) {
    const scanned_list scan = write_scan(seed, 9);
    empty_the_store();
    const outcome walked = outcome_of_pass(seed, [&scan] { return repair_by_walks(scan); });

    empty_the_store();
    outcome repaired = outcome_of_pass(seed, [this] { return repair_channel(9, new_path().c_str()); });

    repaired.log = behind_the_last(repaired.log, "*****");
    expect_same(repaired, walked, seed);
  }
}

}  // namespace
