// Captures that come over the network: datagrams on the loopback interface.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "chlist/scan/capture_input.h"
#include "tool/scan/scan_host.h"

namespace {

using namespace scan_test;
using tool_test::program_result;

// Sends datagrams again and again while it lives: seven packets each, as senders do.
class sender {
 public:
  sender(const char *address, std::uint16_t port, const transport_stream &stream, const std::string &header = "")
      : packets_(stream.packets()), header_(header) {
    to_.sin_family = AF_INET;
    to_.sin_port = htons(port);
    ::inet_pton(AF_INET, address, &to_.sin_addr);
    const in_addr loopback = {htonl(INADDR_LOOPBACK)};
    ::setsockopt(socket_, IPPROTO_IP, IP_MULTICAST_IF, &loopback, sizeof loopback);
    thread_ = std::thread([this] { send(); });
  }
  ~sender() {
    is_done_ = true;
    thread_.join();
    ::close(socket_);
  }
  sender(const sender &) = delete;
  sender &operator=(const sender &) = delete;

 private:
  void send() const {
    constexpr std::size_t packets_in_one = 7;
    while (!is_done_) {
      for (std::size_t at = 0; at < packets_.size(); at += packets_in_one) {
        std::string datagram = header_;
        for (std::size_t one = at; one < std::min(at + packets_in_one, packets_.size()); ++one) {
          datagram += packets_[one];
        }
        ::sendto(socket_, datagram.data(), datagram.size(), 0, reinterpret_cast<const sockaddr *>(&to_), sizeof to_);
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
  }

  const std::vector<std::string> &packets_;
  std::string header_;
  sockaddr_in to_ = {};
  int socket_ = ::socket(AF_INET, SOCK_DGRAM, 0);
  std::atomic<bool> is_done_ = false;
  std::thread thread_;
};

// One that nothing listens on, most likely.
std::uint16_t some_port() { return static_cast<std::uint16_t>(20'000 + ::getpid() % 20'000); }

class NetworkCapture : public scan_test::scan_host {
 protected:
  [[nodiscard]] program_result scan_address(const std::string &address) const {
    return run({"scan", address, "--seconds", "1", "-o", "list.dat"});
  }

  transport_stream stream_ = astra{}.capture();
};

TEST_F(NetworkCapture, DatagramsAreACapture) {
  const sender sending("127.0.0.1", some_port(), stream_);
  const program_result result = scan_address("udp://127.0.0.1:" + std::to_string(some_port()));
  EXPECT_EQ(result.exit_code, 0) << result.err;
  load();
  EXPECT_EQ(names().size(), 3U);
}

TEST_F(NetworkCapture, TheHeaderOfRtpIsNoPartOfThePackets) {
  const sender sending("127.0.0.1", some_port(), stream_, "\x80\x21" + std::string(10, 'G'));
  const program_result result = scan_address("rtp://127.0.0.1:" + std::to_string(some_port()));
  EXPECT_EQ(result.exit_code, 0) << result.err;
}

TEST_F(NetworkCapture, AGroupIsJoinedOnTheInterfaceThatIsSaid) {
  const sender sending("239.255.77.1", some_port(), stream_);
  const program_result result =
      scan_address("udp://@239.255.77.1:" + std::to_string(some_port()) + "?localaddr=127.0.0.1");
  EXPECT_EQ(result.exit_code, 0) << result.err;
}

TEST_F(NetworkCapture, NothingThatComesIsNoCapture) {
  const program_result result = scan_address("udp://127.0.0.1:" + std::to_string(some_port()));
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_TRUE(result.err.ends_with("chlist: scan: no service was found\n")) << result.err;
}

TEST_F(NetworkCapture, AddressesThatAreNoneAreRefused) {
  for (const char *address : {"udp://", "udp://239.1.1.1", "udp://:5000", "udp://nowhere:5000", "rtp://127.0.0.1:x"}) {
    EXPECT_EQ(scan_address(address).exit_code, 2) << address;
  }
}

TEST(NetworkAddress, IsReadWithItsInterface) {
  const chlist::network_address group = chlist::read_network_address("rtp://@239.1.1.1:5000?localaddr=10.0.0.1");
  EXPECT_EQ(group.host, "239.1.1.1");
  EXPECT_EQ(group.port, "5000");
  EXPECT_EQ(group.interface, "10.0.0.1");
  EXPECT_EQ(chlist::read_network_address("udp://[ff05::1]:5000").host, "ff05::1");
}

TEST(RtpHeader, IsAsLongAsItSays) {
  const auto carried = [](const std::string &datagram) {
    return chlist::without_rtp_header({reinterpret_cast<const std::uint8_t *>(datagram.data()), datagram.size()})
        .size();
  };
  const std::string fixed(11, '\0');
  EXPECT_EQ(carried("\x80" + fixed + "G"), 1U);
  EXPECT_EQ(carried("\x82" + fixed + std::string(8, 's') + "G"), 1U);
  EXPECT_EQ(carried("\x90" + fixed + std::string("\0\0\0\1eeee", 8) + "G"), 1U);
  EXPECT_EQ(carried("\x90" + fixed + std::string("\0\0\xFF\xFF", 4)), 0U);
  EXPECT_EQ(carried("G" + fixed), 12U);
  EXPECT_EQ(carried(""), 0U);
}

}  // namespace
