// The one place that writes log text: a line is one write to standard error, which is not buffered.
#include "channel/log.h"

#include <cstdarg>
#include <cstdio>

namespace channel {

void write_log(const char *format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  static_cast<void>(std::vfprintf(stderr, format, arguments));
  va_end(arguments);
}

}  // namespace channel
