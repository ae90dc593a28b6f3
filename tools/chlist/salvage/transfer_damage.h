// What a transfer in text mode does to a file: it puts a carriage return in front of every line feed, takes every byte
// for a letter of ISO 8859-1 and writes it in UTF-8, or both. The file's own statistics tell, and nothing is lost.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "chlist/files/file_bytes.h"

namespace chlist {

struct undone_transfer {
  std::string_view what;  // "LF to CRLF"
  std::vector<std::byte> bytes;
};

// The bytes before the transfer, when it looks like one: a list that was never sent as text may do so by chance.
std::optional<undone_transfer> undo_transfer(byte_span file);

}  // namespace chlist
