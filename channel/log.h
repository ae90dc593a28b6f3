// Log lines: the gate, the colour codes and the three prefixes. The level is tested before any argument is evaluated;
// the format is checked by the compiler. Lines carry the documented name of the operation: __func__ inside the exported
// function, or the name handed on (the _AS variants) where shared code does the work.
#pragma once

#include <base/verbosity.h>
#include <cstdint>

namespace channel {

// The entry of verbosity_map that gates this module.
inline constexpr int log_module = 7;

// Entries that gate a few single lines instead; hosts turn those on with the modules that the lines speak of.
inline constexpr int log_module_scan = 1;
inline constexpr int log_module_source = 5;
inline constexpr int log_module_history = 106;

[[gnu::format(printf, 1, 2)]] void write_log(const char *format, ...);

// Frequencies print as a 32-bit long prints them, on every target: 0xFFFFFFFF is -1.
constexpr long as_long(std::uint32_t value) { return static_cast<std::int32_t>(value); }

}  // namespace channel

#define CHANNEL_LOG_ENTRY(entry, level, format, ...)                                \
  do {                                                                              \
    if (verbosity_map[entry] >= (level)) {                                          \
      ::channel::write_log("\033[32m" format "\033[0m" __VA_OPT__(, ) __VA_ARGS__); \
    }                                                                               \
  } while (false)

// A line without prefix.
#define LOG_PLAIN(level, format, ...) CHANNEL_LOG_ENTRY(::channel::log_module, level, format __VA_OPT__(, ) __VA_ARGS__)

#define LOG_ERROR_AS(operation, format, ...) \
  LOG_PLAIN(0, "ERROR: %s:%d " format, operation, __LINE__ __VA_OPT__(, ) __VA_ARGS__)
#define LOG_WARNING_AS(operation, format, ...) \
  LOG_PLAIN(1, "WARNING: %s:%d " format, operation, __LINE__ __VA_OPT__(, ) __VA_ARGS__)
#define LOG_TRACE_AS(operation, level, format, ...) \
  LOG_PLAIN(level, "ChannelAPI %s:%d " format, operation, __LINE__ __VA_OPT__(, ) __VA_ARGS__)

#define LOG_ERROR(format, ...) LOG_ERROR_AS(__func__, format __VA_OPT__(, ) __VA_ARGS__)
#define LOG_WARNING(format, ...) LOG_WARNING_AS(__func__, format __VA_OPT__(, ) __VA_ARGS__)
#define LOG_TRACE(level, format, ...) LOG_TRACE_AS(__func__, level, format __VA_OPT__(, ) __VA_ARGS__)
