// Regular expressions over names: a text and a pattern are held against each other without regard to case and accents,
// character by character, as names are everywhere.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace chlist {

class pattern {
 public:
  // Regular expressions as Perl has them. Throws std::runtime_error that shows the text when it is none.
  explicit pattern(std::string_view text);

  // Whether it is found anywhere in the text. This and replace throw std::runtime_error when that would take too long:
  // the time that some expressions take doubles with each character.
  [[nodiscard]] bool is_in(std::string_view text) const;

  // The text with the first place where it is found, or each, replaced; what is left keeps its case and its accents.
  // "\1" to "\9" in the replacement are what the brackets took, "\0" is all of it, "\\" a backslash.
  [[nodiscard]] std::string replace(std::string_view text, std::string_view replacement, bool replaces_all) const;

 private:
  struct compiled;
  std::shared_ptr<const compiled> compiled_;
};

// "/ HD$//", "/^(.*) HD$/HD \1/", "/ +/ /g": a pattern and what takes its place, between the character that comes first
// three times, and g to replace it everywhere.
class replacing {
 public:
  // Throws std::runtime_error that says what is missing.
  explicit replacing(std::string_view text);

  [[nodiscard]] std::string apply(std::string_view text) const;

 private:
  struct parts;
  explicit replacing(const parts &of);

  pattern pattern_;
  std::string replacement_;
  bool replaces_all_;
};

}  // namespace chlist
