// Every operation that touches files, in one table: how it is called, and what it does when its calls to the file
// system fail. Whoever loops over the table forgets none.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "faults/documented_run.h"
#include "faults/receiver.h"

namespace test_support {

struct operation {
  std::string name;
  std::function<int(const receiver &own)> run;
  // The documented steps; the result.
  std::function<int(documented_run &run, const receiver &own)> document;
  std::string output = {};  // the file that it writes, if any
};

inline void PrintTo(const operation &tested, std::ostream *out) { *out << tested.name; }

const std::vector<operation> &operations();

// For names of parameterised tests.
constexpr auto name_of_operation = [](const auto &tested) { return tested.param.name; };

}  // namespace test_support
