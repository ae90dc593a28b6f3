// Calls that both the library and the model can make, by name and with numbers for arguments.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace model_tests {

class model;

// What an argument is, and so which numbers are worth trying.
enum class argument {
  net_index,
  network_id,
  ts_id,
  frequency,
  service_id,
  polarisation,
  tag,
  service_type,
  view,
  plain_view,  // not a favourite group's
  position,
  number,
  bits,
  truth,
  name,
  name_slot,
  length,
  key,
  group_kind,
  group_id,
  favourite_id,
  favourite_index,
  sort_type,
  flag_sort_type
};

using numbers = std::vector<int>;

enum class family { store, views, order, groups, favourites, history };

struct operation {
  family belongs_to;
  int weight;
  std::string name;
  std::vector<argument> arguments;
  std::function<int(const numbers &)> in_library;
  std::function<int(model &, const numbers &)> in_model;
};

const std::vector<operation> &operations();

struct command {
  const operation *called = nullptr;
  numbers arguments;
};

// The call as a line of C.
std::ostream &operator<<(std::ostream &out, const command &shown);

// Makes a call on both sides and compares nothing but the result.
bool apply(const command &call, model &expected);

// Makes a call on both sides. What differs between them then, or which invariant no longer holds; empty when all is
// well.
std::string run(const command &call, model &expected);

}  // namespace model_tests
