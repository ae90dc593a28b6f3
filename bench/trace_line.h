// What a log line costs that is not written: a function of one such line, called often, beside the same function
// without it.
#pragma once

namespace bench {

// How often a run calls one of them.
inline constexpr int lines_per_run = 1000;

// Logs at level 2 what an argument evaluates to. Whether that argument was ever evaluated.
void write_trace_line(int value);
bool was_argument_evaluated();

void do_nothing(int value);

}  // namespace bench
