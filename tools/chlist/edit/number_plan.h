// Numbers by plan: a text that says from where on which services are numbered, and which numbers nobody touches.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/edit/edited_list.h"
#include "chlist/fields/where.h"
#include "chlist/text/term.h"

namespace chlist {

// Which services a line is about: all of them when it does not say.
struct plan_selection {
  std::optional<where> condition;
  std::optional<std::string> favourites;  // a group's services, in its order
};

struct plan_line {
  std::size_t line = 0;
  plan_selection services;
  int from = 0;
  int step = 1;
  bool keeps_gaps = false;
};

// Numbers that stay with whoever has them: a range, or those of services.
struct plan_lock {
  std::optional<plan_selection> services;
  int first = 0;
  int last = 0;
};

struct number_plan {
  std::vector<plan_line> lines;
  std::vector<plan_lock> locks;
};

// Throws std::runtime_error that names the line.
number_plan read_number_plan(std::string_view text);

// Numbers the services in ALL; the other views follow. Throws, and names the line or the services, when a group is not
// there, when numbers run out, and when a number would belong to two.
void renumber_by_plan(const number_plan &plan, edited_list &list);

// For the help: what a line can be.
std::vector<term> forms_of_plan_lines();

}  // namespace chlist
