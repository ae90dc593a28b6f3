// The two functions, compiled as the library is: position independent, the log levels in another library.
#include "trace_line.h"

#include "channel/log.h"

namespace bench {
namespace {

bool evaluated = false;

[[gnu::noinline]] int evaluate(int value) {
  evaluated = true;
  return value;
}

}  // namespace

void write_trace_line(int value) { LOG_TRACE(2, "value %d\n", evaluate(value)); }

void do_nothing(int value) { static_cast<void>(value); }

bool was_argument_evaluated() { return evaluated; }

}  // namespace bench
