// Files are read as they come; datagrams whole.
#include "chlist/scan/capture_input.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

#include "chlist/files/standard_streams.h"

namespace chlist {
namespace {

constexpr std::string_view schemes[] = {"udp://", "rtp://"};

class file_capture : public capture_input {
 public:
  explicit file_capture(const std::string &path) : file_(::open(opened_as(path).c_str(), O_RDONLY | O_CLOEXEC), path) {
    struct stat about = {};
    if (::fstat(file_.get(), &about) == 0 && S_ISDIR(about.st_mode)) {
      throw std::runtime_error(path + ": is a folder");
    }
    ::posix_fadvise(file_.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
  }

  std::size_t read(std::span<std::uint8_t> into) override {
    ssize_t size = 0;
    do {
      size = ::read(file_.get(), into.data(), into.size());
    } while (size < 0 && errno == EINTR);
    if (size < 0) {
      fail("capture");
    }
    return static_cast<std::size_t>(size);
  }

 private:
  descriptor file_;
};

struct address_list {
  explicit address_list(const network_address &address) {
    addrinfo hints = {};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_DGRAM;
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV | AI_PASSIVE;
    if (const int error = ::getaddrinfo(address.host.c_str(), address.port.c_str(), &hints, &first); error != 0) {
      throw std::runtime_error(fmt::format("{}:{}: {}", address.host, address.port, ::gai_strerror(error)));
    }
  }
  ~address_list() { ::freeaddrinfo(first); }
  address_list(const address_list &) = delete;
  address_list &operator=(const address_list &) = delete;

  addrinfo *first = nullptr;
};

void join_group(int fd, const sockaddr_in &group, const std::string &interface) {
  ip_mreq request = {};
  request.imr_multiaddr = group.sin_addr;
  if (!interface.empty() && ::inet_pton(AF_INET, interface.c_str(), &request.imr_interface) != 1) {
    throw std::runtime_error(interface + ": is no address of an interface");
  }
  if (::setsockopt(fd, IPPROTO_IP, IP_ADD_MEMBERSHIP, &request, sizeof request) != 0) {
    fail("joining the group");
  }
}

void join_group(int fd, const sockaddr_in6 &group) {
  ipv6_mreq request = {};
  request.ipv6mr_multiaddr = group.sin6_addr;
  request.ipv6mr_interface = group.sin6_scope_id;
  if (::setsockopt(fd, IPPROTO_IPV6, IPV6_JOIN_GROUP, &request, sizeof request) != 0) {
    fail("joining the group");
  }
}

void join_if_group(int fd, const sockaddr *address, const std::string &interface) {
  if (address->sa_family == AF_INET) {
    const auto &group = *reinterpret_cast<const sockaddr_in *>(address);
    if (IN_MULTICAST(ntohl(group.sin_addr.s_addr))) {
      join_group(fd, group, interface);
    }
  } else if (const auto &group = *reinterpret_cast<const sockaddr_in6 *>(address);
             IN6_IS_ADDR_MULTICAST(&group.sin6_addr)) {
    join_group(fd, group);
  }
}

// Datagrams of an address, for some time from the moment that it is opened.
class network_capture : public capture_input {
 public:
  network_capture(const network_address &address, std::chrono::seconds duration)
      : addresses_(address), socket_(::socket(addresses_.first->ai_family, SOCK_DGRAM | SOCK_CLOEXEC, 0), "socket"),
        end_(std::chrono::steady_clock::now() + duration) {
    constexpr int yes = 1;
    constexpr int buffer_size = 4 << 20;  // what comes while tables are decoded
    ::setsockopt(socket_.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    ::setsockopt(socket_.get(), SOL_SOCKET, SO_RCVBUF, &buffer_size, sizeof buffer_size);
    if (::bind(socket_.get(), addresses_.first->ai_addr, addresses_.first->ai_addrlen) != 0) {
      fail(address.host + ":" + address.port);
    }
    join_if_group(socket_.get(), addresses_.first->ai_addr, address.interface);
  }

  std::size_t read(std::span<std::uint8_t> into) override {
    while (wait()) {
      const ssize_t size = ::recv(socket_.get(), datagram_.data(), datagram_.size(), 0);
      if (size < 0 && errno != EINTR && errno != ECONNREFUSED) {
        fail("receiving");
      }
      const auto carried =
          without_rtp_header(std::span(datagram_).first(static_cast<std::size_t>(std::max<ssize_t>(size, 0))));
      if (!carried.empty()) {
        std::ranges::copy(carried.first(std::min(carried.size(), into.size())), into.begin());
        return std::min(carried.size(), into.size());
      }
    }
    return 0;
  }

 private:
  // Whether something came before the end.
  [[nodiscard]] bool wait() const {
    for (;;) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
      if (left.count() <= 0) {
        return false;
      }
      pollfd waiting = {socket_.get(), POLLIN, 0};
      const int came = ::poll(&waiting, 1, static_cast<int>(left.count()));
      if (came > 0) {
        return true;
      }
      if (came < 0 && errno != EINTR) {
        fail("waiting");
      }
    }
  }

  static constexpr std::size_t largest_datagram = 65536;

  address_list addresses_;
  descriptor socket_;
  std::chrono::steady_clock::time_point end_;
  std::array<std::uint8_t, largest_datagram> datagram_{};
};

}  // namespace

bool is_network_address(const std::string &capture) {
  return std::ranges::any_of(schemes, [&](std::string_view scheme) { return capture.starts_with(scheme); });
}

network_address read_network_address(const std::string &capture) {
  constexpr std::string_view option = "?localaddr=";
  network_address made;
  std::string rest = capture.substr(schemes[0].size());
  if (const std::size_t at = rest.find(option); at != std::string::npos) {
    made.interface = rest.substr(at + option.size());
    rest.resize(at);
  }
  rest.erase(0, rest.starts_with('@') ? 1 : 0);
  const std::size_t colon = rest.rfind(':');
  made.host = rest.substr(0, std::min(colon, rest.size()));
  made.port = colon != std::string::npos ? rest.substr(colon + 1) : "";
  if (made.host.starts_with('[') && made.host.ends_with(']')) {
    made.host = made.host.substr(1, made.host.size() - 2);
  }
  if (made.host.empty() || made.port.empty()) {
    throw std::runtime_error(capture + ": is not udp://ADDRESS:PORT or rtp://ADDRESS:PORT");
  }
  return made;
}

std::unique_ptr<capture_input> open_capture(const std::string &capture, std::chrono::seconds of_network) {
  if (is_network_address(capture)) {
    return std::make_unique<network_capture>(read_network_address(capture), of_network);
  }
  return std::make_unique<file_capture>(capture);
}

std::span<const std::uint8_t> without_rtp_header(std::span<const std::uint8_t> datagram) {
  constexpr std::size_t fixed_size = 12;
  constexpr unsigned version_2 = 2;
  if (datagram.size() < fixed_size || datagram[0] >> 6U != version_2) {
    return datagram;
  }
  const bool has_extension = (datagram[0] & 0x10U) != 0;
  std::size_t size = fixed_size + std::size_t{4} * (datagram[0] & 0x0FU);
  if (has_extension && datagram.size() >= size + 4) {
    const std::size_t words = std::size_t{datagram[size + 2]} << 8U | datagram[size + 3];
    size += 4 + 4 * words;
  }
  return datagram.subspan(std::min(size, datagram.size()));
}

}  // namespace chlist
