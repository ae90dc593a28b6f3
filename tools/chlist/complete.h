// What a shell offers for the word that is being typed: commands, options, the words that an option or an argument
// takes, and the favourite groups and services of the file on the line. `chlist complete` prints it; the completions of
// the shells call that, so that they know what the program knows.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "chlist/command.h"

namespace chlist {

// For the last of the words behind the program's name, which is empty when nothing of it is typed yet. Nothing where a
// file is meant: shells know those.
std::vector<term> completions(const command &program, std::span<const std::string> words);

// The words of a line as a shell takes it apart: by blanks, with quotes and backslashes. The last one may be open.
std::vector<std::string> words_of_line(std::string_view line);

// `complete WORD...`, or `complete --line LINE` with the whole line: a line for each word, with what it means behind a
// tab. Whatever is wrong, it is quiet.
int print_completions(const command &program, std::span<const std::string> arguments);

}  // namespace chlist
