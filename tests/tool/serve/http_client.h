// A connection to a server on this machine.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace serve_test {

// The port of 127.0.0.1.
inline sockaddr_in version_4_address(int port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// The port of ::1.
inline sockaddr_in6 version_6_address(int port) {
  sockaddr_in6 address = {};
  address.sin6_family = AF_INET6;
  address.sin6_port = htons(static_cast<std::uint16_t>(port));
  address.sin6_addr = in6addr_loopback;
  return address;
}

// A client that says what a test wants, byte by byte.
class client {
 public:
  explicit client(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    connect(version_4_address(port));
  }
  explicit client(const sockaddr_in6 &address) : socket_(::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    connect(address);
  }
  ~client() { ::close(socket_); }
  client(const client &) = delete;
  client &operator=(const client &) = delete;

  [[nodiscard]] bool is_connected() const { return is_connected_; }
  void send(std::string_view text) const { static_cast<void>(::send(socket_, text.data(), text.size(), MSG_NOSIGNAL)); }
  void finish() const { ::shutdown(socket_, SHUT_WR); }
  // Everything up to the end of the connection.
  std::string read() const {
    std::string all;
    char part[4096];
    for (ssize_t length = 0; (length = ::recv(socket_, part, sizeof part, 0)) > 0;) {
      all.append(part, static_cast<std::size_t>(length));
    }
    return all;
  }

 private:
  template <class Address>
  void connect(const Address &address) {
    is_connected_ = ::connect(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    const timeval longest = {.tv_sec = 20, .tv_usec = 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
  }

  int socket_;
  bool is_connected_ = false;
};

}  // namespace serve_test
