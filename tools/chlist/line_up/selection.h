// Finds the service, or the view, that somebody names on a command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "channel/identity.h"
#include "chlist/line_up/line_up.h"
#include "chlist/text/term.h"

namespace chlist {

// Finds the services of a line-up that texts name, by their places; in the order of the list, each once. What was
// looked up once is found again at once, so that it can be asked for every service of a list.
//   "1:2:3:11727480H:5"    the identity: net index, network id, transport stream id, frequency and polarisation,
//                          service id; frequencies within the library's tolerance are the same
//   "7", "7-2"             the entry of the view with that number (major, minor); "7" is 7-0, or every 7 with a minor
//   "News"                 the name, without regard to case; else every name that contains the text
// A text that looks like an identity is a name when there is none such; a number, too, but then never a part of one.
class service_finder {
 public:
  explicit service_finder(const line_up &list) : list_(list) {}

  std::vector<std::size_t> named(std::string_view text, std::int8_t view = VIEW_ALL);

  // Throws std::runtime_error that says that there is none, or lists what it could be.
  std::size_t one_named(std::string_view text, std::int8_t view = VIEW_ALL);

  // Tells that the name at a place of the line-up is another one now.
  void was_renamed(std::size_t place);
  // Tells that a place is not to be found any more.
  void was_removed(std::size_t place);

 private:
  using places = std::vector<std::size_t>;

  void learn_names();
  void learn_ids();
  void forget_name(std::size_t place);
  places with_identity(std::string_view text);
  places with_name(std::string_view text);
  places with_part_of_name(std::string_view text);

  const line_up &list_;
  bool knows_ids_ = false;
  std::unordered_map<std::uint64_t, places> by_ids_;
  std::vector<std::optional<std::string>> names_;  // as they are compared; none of a service that is gone
  std::unordered_map<std::string, places> by_name_;
};

// The same, asked once.
std::vector<std::size_t> services_named(const line_up &list, std::string_view text, std::int8_t view = VIEW_ALL);
std::size_t service_named(const line_up &list, std::string_view text, std::int8_t view = VIEW_ALL);

// The code of a view by its name: "all", "tv", "radio", "user", "promo", "fav:NAME" or "fav:GROUP" (1 to 20);
// and the names that documents have. Throws std::runtime_error that names those that there are when it is none of them.
std::int8_t view_named(const line_up &list, std::string_view text);

// The index of a favourite group that there is, by its name or its position. Throws when there is none.
std::size_t favourite_group_named(const line_up &list, std::string_view text);

// The words that view_named() takes, for the help.
std::vector<term> terms_of_views();

// The name of a view by its code; none of a code that no view has.
std::optional<view_name> name_of_view(std::int8_t view);

// The entries of a view by its code; none of a favourite group that the line-up does not have.
const std::vector<line_up_entry> &entries_of(const line_up &list, std::int8_t view);

// Every entry of a view, with its service.
std::vector<service_row> rows_of(const line_up &list, std::int8_t view);

// "7", "7-2".
std::string text_of(const channel_number &number);

// "1:2:3:11727480H:5", as services_named() reads it; a polarisation other than 0 (H) and 1 (V) has its number: "V2".
std::string identity_text(const channel::identity &id);

// The identity that a text is, if it is one.
std::optional<channel::identity> read_identity(std::string_view text);

}  // namespace chlist
