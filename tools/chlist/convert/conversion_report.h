// What a conversion did not carry and what it found, as text and JSON: for every command that converts.
#pragma once

#include <cstdio>
#include <string>

#include "chlist/convert/conversion.h"
#include "chlist/json/json.h"

namespace chlist {

json json_of_losses(const conversion &result);

// With the keys "duplicate_services", "unresolved_entries" and "counts_outside_arrays".
json json_of_findings(const conversion &result);

std::string text_of_duplicate(const known_service &service);
std::string text_of_cut(const cut_array &cut);

void print_row(std::FILE *to, std::string_view what, std::size_t count);

// Nothing when everything was carried.
void print_losses(std::FILE *to, const conversion &result);

}  // namespace chlist
