// How often tests repeat what they do at random.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define CHANNEL_TESTS_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CHANNEL_TESTS_SANITIZED
#endif
#endif

namespace test_support {

#ifdef CHANNEL_TESTS_SANITIZED
inline constexpr bool is_sanitized = true;
#else
inline constexpr bool is_sanitized = false;
#endif

// Under a sanitizer, where each round takes five times as long, a quarter of them: whatever it looks for shows in one
// round as well as in many. All of them are run without.
constexpr int rounds(int whole) { return is_sanitized ? (whole + 3) / 4 : whole; }

}  // namespace test_support
