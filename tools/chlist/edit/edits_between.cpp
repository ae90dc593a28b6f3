// The list in memory is edited on the way. A line that the edits refuse is left out, and all of it is begun again: what
// it had done before it was refused stays in memory.
#include "chlist/edit/edits_between.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <stdexcept>

#include "chlist/edit/compared_lists.h"
#include "chlist/edit/edit_line.h"
#include "chlist/edit/service_lines.h"
#include "chlist/files/faithful_load.h"
#include "chlist/line_up/list_line_up.h"

namespace chlist {
namespace {

// Each goes by what those before it made of the list. Services get their identities first, by which all others name
// them, groups are there before something is in them, and numbers come last: a service that comes to a group brings
// that of ALL.
using find_lines = std::vector<std::string> (*)(const compared_lists &lists);
constexpr find_lines steps[] = {lines_of_identities,  lines_of_fields,  lines_of_group_names, lines_of_groups,
                                lines_of_group_order, lines_of_members, lines_of_order,       lines_of_numbers};

using refused_lines = std::set<std::string>;

class script_attempt {
 public:
  script_attempt(const channel_file &before, refused_lines &refused) : refused_(refused) { load_faithfully(before); }

  // False when a line was refused that was not known to be.
  bool finds_lines(const line_up &wanted) {
    const std::size_t known = refused_.size();
    for (const find_lines step : steps) {
      for (const std::string &line : step(compared_lists(line_up_in_memory(), wanted))) {
        if (!refused_.contains(line)) {
          apply(line);
        }
      }
    }
    return refused_.size() == known;
  }

  [[nodiscard]] std::vector<std::string> &lines() { return lines_; }

 private:
  void apply(const std::string &line) {
    try {
      reader_.read(line).apply(list_);
      lines_.push_back(line);
    } catch (const std::runtime_error &) {
      refused_.insert(line);
    }
  }

  refused_lines &refused_;
  edited_list list_;
  edit_line_reader reader_;
  std::vector<std::string> lines_;
};

}  // namespace

edit_script edits_between(const channel_file &before, const line_up &wanted) {
  refused_lines refused;
  for (;;) {
    script_attempt attempt(before, refused);
    if (attempt.finds_lines(wanted)) {
      return {std::move(attempt.lines()), differences(line_up_in_memory(), wanted)};
    }
  }
}

}  // namespace chlist
