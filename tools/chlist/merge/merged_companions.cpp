#include "chlist/merge/merged_companions.h"

#include <unordered_map>
#include <utility>

#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/messages.h"

namespace chlist {
namespace {

// Finds the services of the merged list as the receiver would: frequencies differ a little from scan to scan.
class fact_merge {
 public:
  fact_merge(companion kept, const line_up &list) : made_(std::move(kept)), list_(list), finder_(list) {
    for (std::size_t at = 0; at < made_.services.size(); ++at) {
      places_.emplace(identity_text(made_.services[at].id), at);
    }
  }

  void take(companion_service scanned, const std::vector<paired_source> &sources) {
    scanned.id.net_index = renumbered(scanned.id.net_index, sources);
    const std::vector<std::size_t> found = finder_.named(identity_text(scanned.id));
    if (found.empty()) {
      return;
    }
    scanned.id = list_.services[found.front()].id();
    const auto [known, is_new] = places_.emplace(identity_text(scanned.id), made_.services.size());
    if (is_new) {
      made_.services.push_back(std::move(scanned));
    } else {
      take_further(made_.services[known->second].further, scanned.further);
    }
  }

  companion made() { return std::move(made_); }

 private:
  companion made_;
  const line_up &list_;
  service_finder finder_;
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

std::vector<changed_identity> identities_in(const merge_outcome &outcome) {
  std::vector<changed_identity> changes;
  for (const moved_service &each : outcome.moved) {
    changes.push_back({each.before.id, each.after.id});
  }
  for (const renamed_service &each : outcome.renamed) {
    changes.push_back({each.before.id, each.after.id});
  }
  return changes;
}

merged_companions::merged_companions(const std::filesystem::path &list, const std::filesystem::path &scan)
    : list_(list), scan_(scan) {}

companion_to_write merged_companions::of(const merge_outcome &outcome, const std::filesystem::path &output) const {
  const line_up list = line_up_in_memory();
  fact_merge merge(in_step(list_.kept(), identities_in(outcome), list), list);
  for (const companion_service &each : scan_.kept().services) {
    merge.take(each, outcome.sources);
  }
  return list_.to_write(output, merge.made());
}

void merged_companions::print_notes() const {
  for (const edited_companion *each : {&list_, &scan_}) {
    if (!each->note().empty()) {
      print_message(each->note());
    }
  }
}

}  // namespace chlist
