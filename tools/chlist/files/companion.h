// FILE.more.json: what a channel file cannot hold, beside it and by the identities of its services. The channel file is
// complete without it; docs/companion-file.md tells what it holds.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "channel/identity.h"
#include "chlist/line_up/group_options.h"
#include "chlist/line_up/line_up.h"
#include "chlist/text/charset.h"

namespace chlist {

// A text that a channel file has no room for.
struct shortened_text {
  std::string whole;
  std::string kept;  // as the list has it: an edit makes another one of it, and the whole text is out of date

  bool operator==(const shortened_text &) const = default;
};

struct companion_service {
  channel::identity id = {};
  further_facts further{};
  std::optional<shortened_text> name{};
  std::optional<shortened_text> short_name{};
  std::optional<shortened_text> provider{};
  std::optional<shortened_text> source{};  // what the source calls it that the list calls otherwise

  [[nodiscard]] bool is_empty() const { return further.is_empty() && !name && !short_name && !provider && !source; }
};

// Some lines of a source, with their ends: those of a service, or what stands between services.
struct source_piece {
  std::string text;                            // UTF-8
  bool is_latin_1 = false;                     // in the source
  std::optional<channel::identity> service{};  // none: comments, groups, and lines that the list did not take
  bool is_again = false;                       // an earlier piece is of the same service
};

struct source_file {
  std::string name;                    // within a folder; empty: the source is one file
  std::vector<source_piece> pieces{};  // none: the text is not kept
  text_encoding encoding{};            // lines of Latin-1 are told by their pieces
};

// The list of another format that a channel file was made of, as it was.
struct source_text {
  std::string format;      // empty: there is none
  std::string url{};       // of M3U: how its addresses hold ids; empty: as usual
  group_options groups{};  // what became of its groups
  std::vector<source_file> files;

  [[nodiscard]] bool has_text() const { return !files.empty() && !files.front().pieces.empty(); }
};

struct companion {
  std::vector<companion_service> services;
  source_text source;
  std::string file_sum{};       // fingerprint of the channel file that it was written with; empty: nobody knows
  bool is_out_of_step = false;  // the channel file is another one

  [[nodiscard]] bool is_empty() const { return services.empty() && source.files.empty(); }
};

// What is no companion: damaged, foreign, of another schema, or too large to be one.
class bad_companion : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr std::size_t largest_companion = std::size_t{64} << 20U;

// A companion's path is that of the channel file with this behind it.
inline constexpr const char *companion_ending = ".more.json";

// Where it stands: of a link, beside the file that it leads to.
std::filesystem::path companion_of(const std::filesystem::path &file);

// Beside the file as somebody named it, for messages.
std::string name_of_companion(const std::filesystem::path &file);

// Nothing when there is none. Throws bad_companion, whose text begins with the companion's path.
std::optional<companion> companion_beside(const std::filesystem::path &file);

// Throws bad_companion.
companion companion_from(std::string_view text);
std::string text_of(const companion &of);

// The text of one that is written with a channel file of these bytes: an end between the two of them is told by it.
std::string text_beside(companion of, std::string_view channel_file);

// The text of a file that is kept.
std::string text_of(const source_file &file);

}  // namespace chlist
