// A small HTTP server for this machine alone. What requests ask and answers say is data; only http_server.cpp knows the
// library that brings them through sockets.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace chlist {

using http_headers = std::vector<std::pair<std::string, std::string>>;

struct http_request {
  std::string method;
  std::string target;  // path and query, as they were sent
  http_headers headers;
  std::string body;

  // How often a header is there, and its last value: empty when it is not there. Case does not count.
  [[nodiscard]] std::size_t count(std::string_view name) const;
  [[nodiscard]] std::string_view header(std::string_view name) const;
};

struct http_answer {
  int status = 200;
  std::string type = "text/plain; charset=utf-8";
  std::string body;
  http_headers headers = {};
};

struct http_site {
  // Asked before the body is read: an answer turns the request away.
  std::function<std::optional<http_answer>(const http_request &head)> refusal;
  std::function<http_answer(const http_request &request)> answer;
};

// Both are bounded, whoever sends them: bytes of a whole request, and the time that it may take to come in.
inline constexpr std::size_t largest_request = std::size_t{4} << 20U;
inline constexpr std::chrono::milliseconds longest_request(10'000);

// What this machine calls itself: browsers take either for "localhost".
inline constexpr std::array loopback_addresses = {"127.0.0.1", "::1"};

// Requests are answered in threads of the server's own, one request a connection.
class http_server {
 public:
  // Listens on one port of all these addresses; 0: one that is free. An address that the machine does not have is left
  // out, but for the first: ::1 where there is no IPv6. Throws when the port cannot be had.
  explicit http_server(int port, std::chrono::milliseconds longest = longest_request,
                       std::span<const char *const> addresses = loopback_addresses);
  ~http_server();
  http_server(const http_server &) = delete;
  http_server &operator=(const http_server &) = delete;

  [[nodiscard]] int port() const { return port_; }
  void start(const http_site &site);
  // Waits for the answers that are under way.
  void stop();

 private:
  class listener;
  void listen(int port, std::chrono::milliseconds longest, std::span<const char *const> addresses);

  std::vector<std::unique_ptr<listener>> listeners_;  // one an address
  int port_ = 0;
};

}  // namespace chlist
