// A stranger learns nothing: whatever is wrong with a request, as long as the token is, the answer is the same.
#include "chlist/serve/door.h"

#include <fmt/format.h>
#include <sys/random.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "chlist/files/descriptor.h"

namespace chlist {
namespace {

// What browsers call this machine, as they write it in front of a port.
constexpr std::array own_names = {"127.0.0.1", "localhost", "[::1]"};

bool has_readable_body(const http_request &head) {
  return head.count("Transfer-Encoding") == 0 && head.count("Content-Encoding") == 0 &&
         head.header("Content-Type").starts_with("application/json");
}

// The length that the request tells; none when it tells none or no number.
std::optional<std::size_t> length_of_body(const http_request &head) {
  const std::string_view text = head.header("Content-Length");
  std::size_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  const bool is_number = error == std::errc() && end == text.data() + text.size();
  return is_number && head.count("Content-Length") == 1 ? std::optional(length) : std::nullopt;
}

std::optional<http_answer> refusal_of_body(const http_request &head) {
  const std::optional<std::size_t> length = length_of_body(head);
  if (!length) {
    return plain_answer(411, "Content-Length is required");
  }
  if (*length >= largest_request) {
    return plain_answer(413, "too large");
  }
  return has_readable_body(head) ? std::nullopt : std::optional(plain_answer(415, "JSON is required"));
}

}  // namespace

std::string random_token() {
  std::array<std::uint8_t, 16> bytes = {};
  if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    fail("random numbers");
  }
  std::string token;
  for (const std::uint8_t byte : bytes) {
    token += fmt::format("{:02x}", byte);
  }
  return token;
}

bool request_rate::takes(time_point now) {
  const std::chrono::duration<double> passed = now - last_.value_or(now);
  last_ = now;
  left_ = std::min(most_, left_ + std::max(passed.count(), 0.0) * rate_);
  if (left_ < 1) {
    return false;
  }
  left_ -= 1;
  return true;
}

http_answer plain_answer(int status, std::string_view text) {
  http_answer answer;
  answer.status = status;
  answer.body = std::string(text) + '\n';
  return secured(std::move(answer));
}

http_answer secured(http_answer answer) {
  answer.headers.insert(answer.headers.end(),
                        {{"Content-Security-Policy",
                          "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src data:; "
                          "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
                         {"X-Content-Type-Options", "nosniff"},
                         {"X-Frame-Options", "DENY"},
                         {"Referrer-Policy", "no-referrer"},
                         {"Cross-Origin-Resource-Policy", "same-origin"},
                         {"Cross-Origin-Opener-Policy", "same-origin"},
                         {"Cache-Control", "no-store"}});
  return answer;
}

std::string site_door::address() const { return fmt::format("http://{}:{}/{}/", own_names.front(), port_, token_); }

// How long it takes does not depend on how much of the token is right.
bool site_door::knows_token(std::string_view target) const {
  if (target.size() < token_.size() + 2 || target.front() != '/' || target[token_.size() + 1] != '/') {
    return false;
  }
  unsigned difference = 0;
  for (std::size_t i = 0; i < token_.size(); ++i) {
    difference |= static_cast<unsigned char>(target[i + 1]) ^ static_cast<unsigned char>(token_[i]);
  }
  return difference == 0;
}

bool site_door::is_own_host(std::string_view host) const {
  return std::ranges::any_of(own_names, [&](const char *name) { return host == fmt::format("{}:{}", name, port_); });
}

std::string_view site_door::asked(const http_request &head) const {
  return std::string_view(head.target).substr(token_.size() + 2);
}

std::optional<http_answer> site_door::refusal(const http_request &head, request_rate::time_point now) {
  const std::string_view host = head.header("Host");
  const std::string own_origin = fmt::format("http://{}", host);
  const bool is_known = knows_token(head.target) && head.count("Host") == 1 && is_own_host(host);
  const bool is_own_page = head.count("Origin") == 0 ? head.method == "GET" : head.header("Origin") == own_origin;
  if (!is_known || !is_own_page || head.count("Origin") > 1) {
    return plain_answer(403, "forbidden");
  }
  if (!rate_.takes(now)) {
    return plain_answer(429, "too many requests");
  }
  if (head.method != "GET" && head.method != "POST") {
    return plain_answer(405, "GET or POST");
  }
  return head.method == "POST" ? refusal_of_body(head) : std::nullopt;
}

}  // namespace chlist
