// An edit as data, and the road that every edit of a channel file takes: load, apply, compare, save, report.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "chlist/command.h"
#include "chlist/edit/edited_list.h"

namespace chlist {

// Changes the list in memory through the library's calls. Throws std::runtime_error when it cannot be done; nothing is
// saved then.
using list_edit = std::function<void(edited_list &list)>;

// What an edit has of its own: a command is made of it.
struct edit_row {
  std::string parent = {};  // the command that it stands below: "fav"
  std::string name;
  std::string summary;
  std::vector<std::string> details;
  std::vector<term_section> sections = {};
  std::vector<std::string> examples;
  std::vector<option> options;
  std::vector<option_group> groups = {};
  // What the options say, which are empty again afterwards. Throws usage_error when they do not go together.
  std::function<list_edit()> take = {};
  bool is_line = true;  // of `chlist apply`
};

// Takes the options out of where they are parsed to; those that have must_go_together() are asked.
template <class Options>
std::function<list_edit()> taking(std::shared_ptr<Options> options,
                                  std::function<void(const Options &options, edited_list &list)> apply) {
  return [options, apply = std::move(apply)]() -> list_edit {
    const Options taken = std::exchange(*options, Options());
    if constexpr (requires { taken.must_go_together(); }) {
      taken.must_go_together();
    }
    return [taken, apply](edited_list &list) { apply(taken, list); };
  };
}

// Its command: FILE comes first, what all edits have in common behind its own options. The help of every edit ends with
// the same exit codes, and with its own examples.
command edit_command(const edit_row &row);

}  // namespace chlist
