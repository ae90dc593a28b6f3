// In place of the log's header when cppcheck reads the sources: release 2.10 cannot expand __VA_OPT__. The lines keep
// their arguments, so that what they read is still checked.
#pragma once

#include <base/verbosity.h>
#include <cstdint>

namespace channel {

inline constexpr int log_module = 7;
inline constexpr int log_module_scan = 1;
inline constexpr int log_module_source = 5;
inline constexpr int log_module_history = 106;

void write_log(const char *format, ...);

constexpr long as_long(std::uint32_t value) { return static_cast<std::int32_t>(value); }

}  // namespace channel

#define CHANNEL_LOG_ENTRY(entry, level, ...) \
  do {                                       \
    if (verbosity_map[entry] >= (level)) {   \
      ::channel::write_log(__VA_ARGS__);     \
    }                                        \
  } while (false)

#define LOG_PLAIN(level, ...) CHANNEL_LOG_ENTRY(::channel::log_module, level, __VA_ARGS__)
#define LOG_ERROR_AS(operation, ...) LOG_PLAIN(0, operation, __VA_ARGS__)
#define LOG_WARNING_AS(operation, ...) LOG_PLAIN(1, operation, __VA_ARGS__)
#define LOG_TRACE_AS(operation, level, ...) LOG_PLAIN(level, operation, __VA_ARGS__)
#define LOG_ERROR(...) LOG_PLAIN(0, __VA_ARGS__)
#define LOG_WARNING(...) LOG_PLAIN(1, __VA_ARGS__)
#define LOG_TRACE(level, ...) LOG_PLAIN(level, __VA_ARGS__)
