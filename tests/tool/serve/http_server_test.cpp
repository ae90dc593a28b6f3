// The server through real sockets: requests whole and cut, large and slow, many and hostile.
#include "chlist/serve/http.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tool/serve/http_client.h"

namespace server_test {

using chlist::http_answer;
using chlist::http_request;
using chlist::http_server;
using serve_test::client;

class HttpServer : public testing::Test {
 protected:
  void SetUp() override {
    server.start(
        {[](const http_request &head) -> std::optional<http_answer> {
           return head.target.starts_with("/in") ? std::nullopt
                                                 : std::optional(http_answer{403, "text/plain", "no", {}});
         },
         [this](const http_request &request) {
           ++answered;
           return http_answer{200, "text/plain", request.method + ' ' + request.target + ' ' + request.body, {}};
         }});
  }

  std::string asked(std::string_view request) const {
    const client one(server.port());
    one.send(request);
    return one.read();
  }
  static std::string first_line(const std::string &answer) { return answer.substr(0, answer.find('\r')); }
  static std::string body_of(const std::string &answer) { return answer.substr(answer.find("\r\n\r\n") + 4); }

  static constexpr std::chrono::milliseconds longest{1000};
  std::atomic<int> answered = 0;
  http_server server{0, longest};
};

constexpr std::string_view page = "GET /in HTTP/1.1\r\nHost: x\r\n\r\n";

TEST_F(HttpServer, AnswersOneRequestAConnection) {
  const std::string answer = asked(page);

  EXPECT_EQ(first_line(answer), "HTTP/1.1 200 OK");
  EXPECT_NE(answer.find("Connection: close\r\n"), std::string::npos);
  EXPECT_EQ(body_of(answer), "GET /in ");
  EXPECT_EQ(answered, 1);
}

bool has_version_6() {
  const sockaddr_in6 address = serve_test::version_6_address(0);
  const int socket = ::socket(AF_INET6, SOCK_STREAM, 0);
  const bool is_bound = ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
  ::close(socket);
  return is_bound;
}

TEST_F(HttpServer, AnswersOnBothAddressesOfTheMachine) {
  if (!has_version_6()) {
    GTEST_SKIP() << "this machine has no ::1";
  }
  const client one(serve_test::version_6_address(server.port()));
  one.send(page);

  EXPECT_EQ(first_line(one.read()), "HTTP/1.1 200 OK");
  EXPECT_EQ(first_line(asked(page)), "HTTP/1.1 200 OK");
}

// Takes a port of ::1; none when 127.0.0.1 has a user of it.
int taken_port_of_version_6(int of) {
  sockaddr_in6 address = serve_test::version_6_address(0);
  socklen_t size = sizeof address;
  EXPECT_EQ(::bind(of, reinterpret_cast<const sockaddr *>(&address), size), 0);
  EXPECT_EQ(::listen(of, 1), 0);
  EXPECT_EQ(::getsockname(of, reinterpret_cast<sockaddr *>(&address), &size), 0);
  const sockaddr_in same = serve_test::version_4_address(ntohs(address.sin6_port));
  const int probe = ::socket(AF_INET, SOCK_STREAM, 0);
  const bool is_free = ::bind(probe, reinterpret_cast<const sockaddr *>(&same), sizeof same) == 0;
  ::close(probe);
  return is_free ? ntohs(address.sin6_port) : 0;
}

// Whoever has it would get what browsers send to "localhost".
TEST_F(HttpServer, RefusesAPortThatSomebodyElseHasOnOneOfThem) {
  if (!has_version_6()) {
    GTEST_SKIP() << "this machine has no ::1";
  }
  int other = ::socket(AF_INET6, SOCK_STREAM, 0);
  int port = taken_port_of_version_6(other);
  while (port == 0) {
    ::close(other);
    other = ::socket(AF_INET6, SOCK_STREAM, 0);
    port = taken_port_of_version_6(other);
  }

  try {
    const http_server second(port);
    ADD_FAILURE() << "the port was had";
  } catch (const std::runtime_error &error) {
    EXPECT_EQ(std::string(error.what()), "port " + std::to_string(port) + " of ::1 cannot be had");
  }
  ::close(other);
}

// As ::1 is where there is no IPv6: an address that no machine has stands for it.
TEST_F(HttpServer, LeavesOutAnAddressThatTheMachineDoesNotHave) {
  constexpr std::array addresses = {"127.0.0.1", "2001:db8::1"};
  http_server other(0, longest, addresses);
  other.start({[](const http_request &) { return std::optional(http_answer{403, "text/plain", "no", {}}); }, {}});

  const client one(other.port());
  one.send(page);

  EXPECT_EQ(first_line(one.read()), "HTTP/1.1 403 Forbidden");
}

TEST_F(HttpServer, ReadsTheBodyOfARequest) {
  EXPECT_EQ(body_of(asked("POST /in HTTP/1.1\r\nHost: x\r\nContent-Length: 5\r\n\r\nhello")), "POST /in hello");
}

TEST_F(HttpServer, TurnsARequestAwayBeforeItsBodyIsRead) {
  const client one(server.port());
  one.send("POST /out HTTP/1.1\r\nHost: x\r\nContent-Length: 1000000\r\n\r\n");

  EXPECT_EQ(first_line(one.read()), "HTTP/1.1 403 Forbidden");
  EXPECT_EQ(answered, 0);
}

// What stands behind a request is none: it was sent by somebody who was turned away.
TEST_F(HttpServer, TakesNothingBehindARequestForAnotherOne) {
  const std::string answer = asked("POST /out HTTP/1.1\r\nHost: x\r\nContent-Length: 60\r\n\r\n" + std::string(page));

  EXPECT_EQ(first_line(answer), "HTTP/1.1 403 Forbidden");
  EXPECT_EQ(answer.find("200"), std::string::npos);
  EXPECT_EQ(answered, 0);
}

TEST_F(HttpServer, RefusesLargeBodies) {
  const client one(server.port());
  one.send("POST /in HTTP/1.1\r\nHost: x\r\nContent-Length: " + std::to_string(chlist::largest_request + 1) +
           "\r\n\r\n");
  one.send(std::string(100'000, 'x'));

  EXPECT_EQ(first_line(one.read()), "HTTP/1.1 413 Payload Too Large");
  EXPECT_EQ(answered, 0);
}

TEST_F(HttpServer, AnswersNothingToRequestsThatAreCut) {
  const std::string whole = "POST /in HTTP/1.1\r\nHost: x\r\nContent-Length: 5\r\n\r\nhello";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const client one(server.port());
    one.send(std::string_view(whole).substr(0, length));
    one.finish();
    EXPECT_EQ(one.read().find("HTTP/1.1 200"), std::string::npos) << length;
  }
  EXPECT_EQ(answered, 0);
  EXPECT_EQ(body_of(asked(whole)), "POST /in hello");
}

TEST_F(HttpServer, SurvivesWhatIsNoHttp) {
  const std::string many_headers = [] {
    std::string text = "GET /in HTTP/1.1\r\n";
    for (int i = 0; i < 100'000; ++i) {
      text += "X: y\r\n";
    }
    return text + "\r\n";
  }();
  for (const std::string &text : std::vector<std::string>{
           std::string(1000, '\0'), "\r\n\r\n\r\n\r\n", "GET\r\n\r\n", "GET /in\r\n\r\n", "GET /in HTTP/9.9\r\n\r\n",
           "GET " + std::string(100'000, 'a') + " HTTP/1.1\r\n\r\n",
           "GET /in HTTP/1.1\r\nX: " + std::string(100'000, 'a'),
           "GET /in HTTP/1.1\r\nRange: bytes=0-0,0-0,5-1,-\r\n\r\n", "GET /in HTTP/1.1\r\nContent-Length: -1\r\n\r\n",
           "\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", many_headers}) {
    const client one(server.port());
    one.send(text);
    one.finish();
    one.read();
  }

  EXPECT_EQ(body_of(asked(page)), "GET /in ");
}

TEST_F(HttpServer, IsNotHeldUpByClientsThatSayNothing) {
  std::vector<std::unique_ptr<client>> silent;
  for (int i = 0; i < 12; ++i) {
    silent.push_back(std::make_unique<client>(server.port()));
    silent.back()->send("POST /in HTTP/1.1\r\nHost: x\r\nContent-Len");
  }
  const auto start = std::chrono::steady_clock::now();

  EXPECT_EQ(body_of(asked(page)), "GET /in ");
  EXPECT_LT(std::chrono::steady_clock::now() - start, longest / 2);
}

// Each byte comes in time; the request does not.
TEST_F(HttpServer, EndsRequestsThatComeByteByByte) {
  const client slow(server.port());
  const auto start = std::chrono::steady_clock::now();
  std::atomic<bool> is_over = false;
  std::thread sender([&] {
    slow.send("GET /in HTTP/1.1\r\nX: ");
    while (!is_over) {
      slow.send("y");
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  });

  slow.read();

  is_over = true;
  sender.join();
  EXPECT_LT(std::chrono::steady_clock::now() - start, 3 * longest);
  EXPECT_EQ(answered, 0);
}

TEST_F(HttpServer, AnswersTenThousandRequests) {
  std::atomic<int> right = 0;
  std::vector<std::thread> clients;
  for (int i = 0; i < 4; ++i) {
    clients.emplace_back([&] {
      for (int k = 0; k < 2500; ++k) {
        right += body_of(asked(page)) == "GET /in " ? 1 : 0;
      }
    });
  }
  for (std::thread &each : clients) {
    each.join();
  }

  EXPECT_EQ(right, 10'000);
  EXPECT_EQ(answered, 10'000);
}

TEST_F(HttpServer, StopsAtOnceAlthoughSomebodyIsConnected) {
  http_server patient(0, std::chrono::minutes(1));
  patient.start({});
  const client silent(patient.port());
  silent.send("GET");
  const auto start = std::chrono::steady_clock::now();

  patient.stop();

  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_FALSE(client(patient.port()).is_connected());
}

TEST_F(HttpServer, SharesItsPortWithNobody) { EXPECT_THROW(http_server(server.port()), std::runtime_error); }

}  // namespace server_test
