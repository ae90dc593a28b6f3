// The edits that make one list of another, as far as edits can.
#pragma once

#include <string>
#include <vector>

#include "chlist/compare/difference.h"
#include "chlist/files/channel_file.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

struct edit_script {
  std::vector<std::string> lines;  // of `chlist apply`
  std::vector<change> left;        // between what they make and what is wanted
};

// Each line was applied, and what it left is what the next one was found from: what no edit can do is told by holding
// the result against what is wanted. Services are named by identity, since names may be there twice. The list in memory
// is lost.
edit_script edits_between(const channel_file &before, const line_up &wanted);

}  // namespace chlist
