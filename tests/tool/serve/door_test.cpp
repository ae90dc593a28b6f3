// Who comes in, and who does not: hosts, origins, tokens, methods, bodies and rates.
#include "chlist/serve/door.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using chlist::http_answer;
using chlist::http_request;
using chlist::largest_request;
using chlist::request_rate;
using chlist::site_door;

const std::string token = "0123456789abcdef0123456789abcdef";

http_request page_request() { return {"GET", "/" + token + "/", {{"Host", "127.0.0.1:8080"}}, ""}; }

http_request call_request() {
  return {"POST",
          "/" + token + "/edit",
          {{"Host", "127.0.0.1:8080"},
           {"Origin", "http://127.0.0.1:8080"},
           {"Content-Type", "application/json"},
           {"Content-Length", "2"}},
          "{}"};
}

void set_header(http_request &request, const std::string &name, const std::string &value) {
  std::erase_if(request.headers, [&](const auto &each) { return each.first == name; });
  if (!value.empty()) {
    request.headers.emplace_back(name, value);
  }
}

// 0: it came in.
int status_of(const http_request &request) {
  site_door door(token, 8080);
  const std::optional<http_answer> refused = door.refusal(request, {});
  return refused ? refused->status : 0;
}

int status_with(http_request request, const std::string &name, const std::string &value) {
  set_header(request, name, value);
  return status_of(request);
}

TEST(SiteDoor, LetsThePageAndItsCallsIn) {
  EXPECT_EQ(status_of(page_request()), 0);
  EXPECT_EQ(status_of(call_request()), 0);
  EXPECT_EQ(status_with(page_request(), "Host", "localhost:8080"), 0);
  EXPECT_EQ(status_with(page_request(), "Host", "[::1]:8080"), 0);
}

TEST(SiteDoor, KnowsWhatIsAskedFor) {
  const site_door door(token, 8080);

  EXPECT_EQ(door.asked(page_request()), "");
  EXPECT_EQ(door.asked(call_request()), "edit");
  EXPECT_EQ(door.address(), "http://127.0.0.1:8080/" + token + "/");
}

TEST(SiteDoor, RefusesEveryOtherToken) {
  for (const std::string &target : std::vector<std::string>{
           "/", "", "/" + token, token + "/", "/" + token.substr(1) + "/", "/" + token.substr(1) + "0/",
           "/" + token + "0/", "//" + token + "/", "/x/../" + token + "/", "http://127.0.0.1:8080/" + token + "/",
           "/0123456789ABCDEF0123456789ABCDEF/", "/" + token + "%2f"}) {
    http_request request = page_request();
    request.target = target;
    EXPECT_EQ(status_of(request), 403) << target;
  }
}

TEST(SiteDoor, RefusesNamesThatAreNotItsOwn) {
  for (const char *host : {"", "127.0.0.1", "127.0.0.1:8081", "evil.example:8080", "127.0.0.1.evil.example:8080",
                           "127.0.0.1:8080.evil.example", "::1:8080", "LOCALHOST:8080"}) {
    EXPECT_EQ(status_with(page_request(), "Host", host), 403) << host;
  }
}

TEST(SiteDoor, RefusesTwoHosts) {
  http_request request = page_request();
  request.headers.emplace_back("host", "127.0.0.1:8080");

  EXPECT_EQ(status_of(request), 403);
}

TEST(SiteDoor, RefusesOtherOrigins) {
  for (const char *origin : {"null", "http://evil.example", "https://127.0.0.1:8080", "http://127.0.0.1:8081",
                             "http://localhost:8080", "http://127.0.0.1:8080/", "file://"}) {
    EXPECT_EQ(status_with(call_request(), "Origin", origin), 403) << origin;
    EXPECT_EQ(status_with(page_request(), "Origin", origin), 403) << origin;
  }
}

TEST(SiteDoor, RefusesCallsThatDoNotTellTheirOrigin) { EXPECT_EQ(status_with(call_request(), "Origin", ""), 403); }

TEST(SiteDoor, TakesNoOtherMethods) {
  for (const char *method : {"PUT", "DELETE", "OPTIONS", "HEAD", "PATCH", "CONNECT", "TRACE"}) {
    http_request request = call_request();
    request.method = method;
    EXPECT_EQ(status_of(request), 405) << method;
  }
}

TEST(SiteDoor, BoundsBodies) {
  EXPECT_EQ(status_with(call_request(), "Content-Length", std::to_string(largest_request - 1)), 0);
  EXPECT_EQ(status_with(call_request(), "Content-Length", std::to_string(largest_request)), 413);
  for (const char *length : {"", "-1", "2x", "99999999999999999999999"}) {
    EXPECT_EQ(status_with(call_request(), "Content-Length", length), 411) << length;
  }
}

TEST(SiteDoor, TakesPlainJsonAlone) {
  EXPECT_EQ(status_with(call_request(), "Content-Type", "text/plain"), 415);
  EXPECT_EQ(status_with(call_request(), "Content-Type", "multipart/form-data; boundary=x"), 415);
  EXPECT_EQ(status_with(call_request(), "Content-Type", ""), 415);
  EXPECT_EQ(status_with(call_request(), "Content-Encoding", "gzip"), 415);
  EXPECT_EQ(status_with(call_request(), "Transfer-Encoding", "chunked"), 415);
}

TEST(SiteDoor, TellsBrowsersToLoadNothingFromElsewhere) {
  const http_answer answer = chlist::plain_answer(404, "nothing");
  http_request headers;
  headers.headers = answer.headers;

  EXPECT_TRUE(headers.header("Content-Security-Policy").starts_with("default-src 'none'; script-src 'self'; "));
  EXPECT_EQ(headers.header("X-Content-Type-Options"), "nosniff");
  EXPECT_EQ(headers.header("Referrer-Policy"), "no-referrer");
  EXPECT_EQ(headers.header("Cache-Control"), "no-store");
}

TEST(SiteDoor, RefusesTooManyRequests) {
  site_door door(token, 8080);
  int let_in = 0;
  while (!door.refusal(page_request(), {})) {
    ++let_in;
  }

  EXPECT_EQ(let_in, 400);
  EXPECT_EQ(door.refusal(page_request(), {})->status, 429);
}

TEST(SiteDoor, CountsNoStrangers) {
  site_door door(token, 8080);
  http_request stranger = page_request();
  stranger.target = "/";
  for (int i = 0; i < 1000; ++i) {
    door.refusal(stranger, {});
  }

  EXPECT_FALSE(door.refusal(page_request(), {}));
}

TEST(RequestRate, TakesSoManyAtOnceAndThenSoManyASecond) {
  using std::chrono::milliseconds;
  const request_rate::time_point start;
  request_rate rate(2, 10);

  EXPECT_TRUE(rate.takes(start));
  EXPECT_TRUE(rate.takes(start));
  EXPECT_FALSE(rate.takes(start));
  EXPECT_FALSE(rate.takes(start + milliseconds(50)));
  EXPECT_TRUE(rate.takes(start + milliseconds(150)));
  EXPECT_FALSE(rate.takes(start + milliseconds(150)));
  EXPECT_TRUE(rate.takes(start + milliseconds(9000)));
  EXPECT_TRUE(rate.takes(start + milliseconds(9000)));
  EXPECT_FALSE(rate.takes(start + milliseconds(9000)));
}

TEST(RandomToken, IsOf32DigitsAndAnotherOneEachTime) {
  const std::string one = chlist::random_token();

  EXPECT_EQ(one.size(), 32U);
  EXPECT_EQ(one.find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_NE(one, chlist::random_token());
}

}  // namespace
