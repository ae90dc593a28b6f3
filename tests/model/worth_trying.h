// The numbers worth trying for an argument, the likeliest several times: most calls should find what others have made.
#pragma once

#include <map>

#include "commands.h"

namespace model_tests {

const std::map<argument, numbers> &worth_trying();

}  // namespace model_tests
