#include "chlist/files/kept_in_step.h"

#include <fmt/format.h>

#include <optional>
#include <unordered_map>
#include <utility>

#include "chlist/line_up/places.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

// Where each identity led to in the end; a service may take the one that another gave up.
class identity_trail {
 public:
  explicit identity_trail(const std::vector<changed_identity> &changes) {
    for (const changed_identity &each : changes) {
      const std::string before = identity_text(each.before);
      const auto known = first_.find(before);
      const std::string first = known != first_.end() ? known->second : before;
      if (known != first_.end()) {
        first_.erase(known);
      }
      first_[identity_text(each.after)] = first;
      last_[first] = each.after;
    }
  }

  [[nodiscard]] channel::identity end_of(const channel::identity &id) const {
    const auto found = last_.find(identity_text(id));
    return found != last_.end() ? found->second : id;
  }

 private:
  std::unordered_map<std::string, std::string> first_;  // by what it is now
  std::unordered_map<std::string, channel::identity> last_;
};

}  // namespace

// Lines of other files that refer to a service keep its place among their numbers.
companion in_step(companion kept, const std::vector<changed_identity> &changes, const line_up &list) {
  const identity_trail trail(changes);
  const places_by_identity places(list);
  const auto is_gone = [&](const channel::identity &id) { return places.of(id) == nowhere; };
  for (companion_service &each : kept.services) {
    each.id = trail.end_of(each.id);
  }
  std::erase_if(kept.services, [&](const companion_service &each) { return is_gone(each.id); });
  for (source_file &file : kept.source.files) {
    for (source_piece &piece : file.pieces) {
      piece.service = piece.service ? std::optional(trail.end_of(*piece.service)) : std::nullopt;
    }
  }
  if (!kept.source.files.empty()) {
    std::erase_if(kept.source.files.front().pieces,
                  [&](const source_piece &each) { return each.service && is_gone(*each.service); });
  }
  return kept;
}

std::string note_out_of_step(const std::filesystem::path &file) {
  return fmt::format("{}: somebody wrote {} without it", name_of_companion(file), file.filename().string());
}

edited_companion::edited_companion(const std::filesystem::path &file) {
  try {
    kept_ = companion_beside(file).value_or(companion());
    note_ = kept_.is_out_of_step ? note_out_of_step(file) : std::string();
  } catch (const bad_companion &error) {
    is_readable_ = false;
    note_ = std::string(error.what()) + "; it stays as it is";
  }
}

companion_to_write edited_companion::beside(const std::filesystem::path &target,
                                            const std::vector<changed_identity> &changes, const line_up &list) const {
  return to_write(target, in_step(kept_, changes, list));
}

companion_to_write edited_companion::to_write(const std::filesystem::path &target, companion made) const {
  const bool is_none = made.is_empty() && !std::filesystem::exists(companion_of(target));
  return !is_readable_ || is_none ? std::nullopt : std::optional(std::move(made));
}

}  // namespace chlist
