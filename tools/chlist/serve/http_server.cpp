// The HTTP library behind our own streams: it bounds single reads, not what a client that sends a byte a second holds
// up.
#include <fmt/format.h>
#include <httplib.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <utility>

#include "chlist/serve/http.h"

namespace chlist {
namespace {

using clock = std::chrono::steady_clock;

constexpr std::size_t answering_threads = 16;
constexpr int waiting_connections = 128;
constexpr int slice_ms = 50;  // after which it is seen that the server stops
constexpr std::chrono::milliseconds time_to_linger(500);
constexpr int attempts = 16;  // to find a port that is free on every address

// A connection that ends when its time is over, or the server stops.
class timed_stream : public httplib::Stream {
 public:
  timed_stream(int socket, const char *address, std::chrono::milliseconds time, const std::atomic<bool> &is_stopping)
      : socket_(socket), address_(address), time_(time), is_stopping_(is_stopping), end_(clock::now() + time) {}
  timed_stream(const timed_stream &) = delete;
  timed_stream &operator=(const timed_stream &) = delete;

  [[nodiscard]] bool is_readable() const override { return is_ready(POLLIN); }
  [[nodiscard]] bool is_writable() const override { return is_ready(POLLOUT); }

  ssize_t read(char *to, std::size_t size) override {
    const std::size_t wanted = std::min(size, largest_request - read_);
    if (wanted == 0 || !is_readable()) {
      return -1;
    }
    const ssize_t length = ::recv(socket_, to, wanted, 0);
    read_ += length > 0 ? static_cast<std::size_t>(length) : 0;
    return length;
  }

  // An answer has as much time again.
  ssize_t write(const char *from, std::size_t size) override {
    if (!std::exchange(is_answering_, true)) {
      end_ = clock::now() + time_;
    }
    return is_writable() ? ::send(socket_, from, size, MSG_NOSIGNAL) : -1;
  }

  void get_remote_ip_and_port(std::string &ip, int &port) const override {
    ip = address_;
    port = 0;
  }
  void get_local_ip_and_port(std::string &ip, int &port) const override { get_remote_ip_and_port(ip, port); }
  [[nodiscard]] socket_t socket() const override { return socket_; }

  // An answer is lost when its socket is closed while something stands there unread.
  void linger() {
    end_ = std::min(end_, clock::now() + time_to_linger);
    ::shutdown(socket_, SHUT_WR);
    char unread[4096];
    while (read(unread, sizeof unread) > 0) {
    }
  }

 private:
  [[nodiscard]] bool is_ready(short wanted) const {
    pollfd asked = {socket_, wanted, 0};
    while (clock::now() < end_ && !is_stopping_) {
      if (const int found = ::poll(&asked, 1, slice_ms); found != 0) {
        return found > 0;
      }
    }
    return false;
  }

  int socket_;
  const char *address_;
  std::chrono::milliseconds time_;
  const std::atomic<bool> &is_stopping_;
  clock::time_point end_;
  std::size_t read_ = 0;
  bool is_answering_ = false;
};

http_request request_of(const httplib::Request &from) {
  return {from.method, from.target, {from.headers.begin(), from.headers.end()}, from.body};
}

void set_answer(const http_answer &answer, httplib::Response &to) {
  to.status = answer.status;
  for (const auto &[name, value] : answer.headers) {
    to.set_header(name, value);
  }
  to.set_content(answer.body, answer.type);
}

// Not the library's: with its SO_REUSEPORT a second server would share the port.
void reuse_address(int socket) {
  const int yes = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

// Whether sockets can be bound to an address, whatever their port.
bool has_address(const char *address) {
  addrinfo asked = {};
  asked.ai_flags = AI_NUMERICHOST;
  asked.ai_socktype = SOCK_STREAM;
  addrinfo *found = nullptr;
  if (::getaddrinfo(address, nullptr, &asked, &found) != 0) {
    return false;
  }
  const int socket = ::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool is_bound = socket >= 0 && ::bind(socket, found->ai_addr, found->ai_addrlen) == 0;
  ::freeaddrinfo(found);
  if (socket >= 0) {
    ::close(socket);
  }
  return is_bound;
}

}  // namespace

class http_server::listener : public httplib::Server {
 public:
  listener(const char *address, std::chrono::milliseconds longest) : address_(address), longest_(longest) {
    set_socket_options(reuse_address);
    set_payload_max_length(largest_request);
    new_task_queue = [] { return new httplib::ThreadPool(answering_threads); };
  }
  listener(const listener &) = delete;
  listener &operator=(const listener &) = delete;
  ~listener() override { finish(); }

  // Returns the port, or -1. The library lets five connections wait; a browser opens more at once, and each that finds
  // no room comes a second later.
  int bind(int port) {
    const int bound = port == 0 ? bind_to_any_port(address_) : bind_to_port(address_, port) ? port : -1;
    return bound > 0 && ::listen(svr_sock_, waiting_connections) == 0 ? bound : -1;
  }

  void serve(const http_site &site) {
    set_pre_routing_handler([site](const httplib::Request &request, httplib::Response &response) {
      const std::optional<http_answer> refusal = site.refusal(request_of(request));
      if (refusal) {
        set_answer(*refusal, response);
      }
      return refusal ? HandlerResponse::Handled : HandlerResponse::Unhandled;
    });
    const auto answer = [site](const httplib::Request &request, httplib::Response &response) {
      set_answer(site.answer(request_of(request)), response);
    };
    Get(".*", answer);
    Post(".*", answer);
    thread_ = std::thread([this] {
      listen_after_bind();
      has_ended_ = true;
    });
  }

  void finish() {
    is_stopping_ = true;
    while (thread_.joinable() && !has_ended_) {
      stop();  // does nothing before it listens
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (thread_.joinable()) {
      thread_.join();
    }
  }

 private:
  bool process_and_close_socket(socket_t socket) override {
    timed_stream stream(socket, address_, longest_, is_stopping_);
    bool is_closed = false;
    const bool is_answered = process_request(stream, true, is_closed, [](httplib::Request & /*request*/) {});
    stream.linger();
    ::close(socket);
    return is_answered;
  }

  const char *address_;
  std::chrono::milliseconds longest_;
  std::atomic<bool> is_stopping_ = false;
  std::atomic<bool> has_ended_ = false;
  std::thread thread_;
};

// A free port of one address may be somebody else's on the next one.
http_server::http_server(int port, std::chrono::milliseconds longest, std::span<const char *const> addresses) {
  for (int left = port == 0 ? attempts : 1; listeners_.empty(); --left) {
    try {
      listen(port, longest, addresses);
    } catch (const std::runtime_error &) {
      listeners_.clear();
      if (left == 1) {
        throw;
      }
    }
  }
}

void http_server::listen(int port, std::chrono::milliseconds longest, std::span<const char *const> addresses) {
  port_ = port;
  for (const char *address : addresses) {
    if (address == addresses.front() || has_address(address)) {
      listeners_.push_back(std::make_unique<listener>(address, longest));
      const int bound = listeners_.back()->bind(port_);
      if (bound <= 0) {
        throw std::runtime_error(fmt::format("port {} of {} cannot be had", port_, address));
      }
      port_ = bound;
    }
  }
}

http_server::~http_server() = default;

void http_server::start(const http_site &site) {
  for (const std::unique_ptr<listener> &each : listeners_) {
    each->serve(site);
  }
}

void http_server::stop() {
  for (const std::unique_ptr<listener> &each : listeners_) {
    each->finish();
  }
}

}  // namespace chlist
