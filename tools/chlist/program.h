// The tool as a whole, from its first line to its exit code.
#pragma once

namespace chlist {

int run_program(int argc, const char *const *argv);

}  // namespace chlist
