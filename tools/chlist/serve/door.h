// Who may come in. A page of another site reaches this server through the browser of its user, by a name that leads
// here or by a form that it sends; another user of the machine reaches it directly. Neither knows the token.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "chlist/serve/http.h"

namespace chlist {

// 128 random bits in hexadecimal digits.
std::string random_token();

// So many at once, and so many a second from then on.
class request_rate {
 public:
  using time_point = std::chrono::steady_clock::time_point;

  request_rate(double most_at_once, double each_second)
      : most_(most_at_once), left_(most_at_once), rate_(each_second) {}
  bool takes(time_point now);

 private:
  double most_;
  double left_;
  double rate_;
  std::optional<time_point> last_;
};

class site_door {
 public:
  site_door(std::string token, int port) : token_(std::move(token)), port_(port) {}

  // What the page is called by: "http://127.0.0.1:8080/TOKEN/".
  [[nodiscard]] std::string address() const;

  // The answer to a request that may not come in; none when it may.
  std::optional<http_answer> refusal(const http_request &head, request_rate::time_point now);

  // The part of a request's target behind the token: what it asks for.
  [[nodiscard]] std::string_view asked(const http_request &head) const;

 private:
  [[nodiscard]] bool knows_token(std::string_view target) const;
  [[nodiscard]] bool is_own_host(std::string_view host) const;

  std::string token_;
  int port_;
  request_rate rate_{400, 100};
};

http_answer plain_answer(int status, std::string_view text);

// Adds what browsers are told of every answer: to load nothing from elsewhere, to show it nowhere else, to keep
// nothing.
http_answer secured(http_answer answer);

}  // namespace chlist
