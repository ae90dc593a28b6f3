// Where the bytes of a capture come from: a file, standard input, or the network for some seconds, as "udp://" and
// "rtp://" addresses. They come in pieces, so that a capture may be of any size.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "chlist/files/descriptor.h"

namespace chlist {

struct network_address {
  std::string host;
  std::string port;
  std::string interface;  // the address of the interface that a group is joined on; empty: the system's choice
};

bool is_network_address(const std::string &capture);

// "udp://239.1.1.1:5000", "rtp://@239.1.1.1:5000?localaddr=127.0.0.1". Throws std::runtime_error.
network_address read_network_address(const std::string &capture);

class capture_input {
 public:
  virtual ~capture_input() = default;
  // At least one byte; none when nothing more comes. Throws std::system_error.
  virtual std::size_t read(std::span<std::uint8_t> into) = 0;
};

// Throws std::runtime_error, or std::system_error, when it cannot be read.
std::unique_ptr<capture_input> open_capture(const std::string &capture, std::chrono::seconds of_network);

// What a datagram carries: itself, or what is behind the header of RTP (RFC 3550).
std::span<const std::uint8_t> without_rtp_header(std::span<const std::uint8_t> datagram);

}  // namespace chlist
