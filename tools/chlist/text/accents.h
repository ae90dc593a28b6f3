// Letters without their accents, by Unicode's canonical decomposition.
#pragma once

namespace chlist {

// Whether a character is a mark that belongs to the one in front of it.
bool is_mark(char32_t character);

// The letter that an accented one is made of; another character is itself.
char32_t without_accents(char32_t letter);

}  // namespace chlist
