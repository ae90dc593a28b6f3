// How the text of a format falls apart into the pieces that its services stand in, and how such a piece is changed as
// little as can be. A format has no second reader for it: pieces are read and written by its own.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

// The texts of one service, without the ends of their last lines.
struct piece_versions {
  std::string_view kept;    // as somebody wrote it
  std::string_view before;  // as the format's writer writes what that says
  std::string_view now;     // as it writes what the list says
};

// A line between services.
struct separator {
  std::optional<int> number{};  // that it raises the next one to
  std::string group{};          // the name of the group that it begins; empty: none
};

struct separator_layout {
  // Takes a line without its end, and gives nothing of one that is no separator.
  std::optional<separator> (*read)(std::string_view line);
  // Empty when it says nothing.
  std::string (*written)(const separator &line);
};

struct folder_layout;

struct source_layout {
  // Where the pieces of a text begin, lines and all; the first is 0 unless the text is empty.
  std::vector<std::size_t> (*cut)(std::string_view text);
  // Whether a piece that the format's writer made is that of a service.
  bool (*is_service)(std::string_view piece);
  // What is kept, with the differences of the others: without any it is kept as it is.
  std::string (*merge)(const piece_versions &versions);
  // Of formats that do not number each service, and whose groups are what stands between two lines. Null: services have
  // their numbers and groups themselves.
  const separator_layout *separators = nullptr;
  // The name of the format that a text is of, where one reader takes several; empty: that of the format.
  std::string (*format_of)(std::string_view text) = nullptr;
  // Of formats that are a folder: the files beside the one that the services stand in. Null: there are none.
  const folder_layout *folder = nullptr;
};

}  // namespace chlist
