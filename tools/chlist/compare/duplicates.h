// Services of a list that are the same to a viewer, and which of them is the best.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "chlist/line_up/line_up.h"
#include "chlist/text/term.h"

namespace chlist {

// The places of services that are the same, the one that is preferred first.
using duplicate_group = std::vector<std::size_t>;

// What services that are the same have in common.
enum class sameness : std::uint8_t { ids, name, name_and_quality };
// Throws std::runtime_error that names the unknown word and those that there are.
sameness sameness_named(std::string_view word);
std::vector<term> kinds_of_sameness();

// What a service has that is preferred.
enum class merit : std::uint8_t { high_definition, free_to_air, lower_number };
// "hd,free". Throws as sameness_named() does.
std::vector<merit> merits_named(std::string_view words);
std::vector<term> kinds_of_merit();

// Among the candidates, which are told by their places. In the order of the services that are preferred. Of services
// that are equally good the first in ALL is preferred, and then the first in the list.
std::vector<duplicate_group> find_duplicates(const line_up &list, sameness by, const std::vector<merit> &merits,
                                             const std::vector<bool> &is_candidate);

}  // namespace chlist
