// What goes to standard error. Each message begins with the program and the command that runs: in a script with ten of
// them it is known which one speaks.
#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/first_of_a_kind.h"

namespace chlist {

// Messages come from "chlist list" from now on.
void speak_as(std::string line);

// What a message says of a failure: of one to ask the file system, the path and the reason.
std::string reason_of(const std::exception &error);

// "chlist: list: channels.dat: No such file or directory". Controls, which names of files may have, are shown as
// question marks, but for the ends of lines. Standard error that cannot be written changes nothing.
void print_message(std::string_view text);

// What there is to say of a file again and again: a message for each record, the first ten of them unless all are asked
// for, and how many more there are.
//   "chlist: merge: list.dat: dropped, resolves to no service: the USER view, position 1: ..."
//   "chlist: merge: list.dat: and 2 more: dropped, resolves to no service (--all)"
template <class Record>
std::vector<std::string> messages_of(const std::filesystem::path &file, std::string_view kind,
                                     const std::vector<Record> &records, bool shows_all,
                                     const std::function<std::string(const Record &)> &text_of) {
  std::vector<std::string> messages;
  first_of_a_kind printed(shows_all);
  const std::string beginning = file.string() + ": ";
  for (const Record &record : records) {
    if (printed.takes(std::string(kind))) {
      messages.push_back(beginning + text_of(record));
    }
  }
  for (const auto &[of_kind, count] : printed.left_out()) {
    messages.push_back(beginning + "and " + std::to_string(count) + " more: " + of_kind + " (--all)");
  }
  return messages;
}

template <class Record>
void print_messages(const std::filesystem::path &file, std::string_view kind, const std::vector<Record> &records,
                    bool shows_all, const std::function<std::string(const Record &)> &text_of) {
  for (const std::string &message : messages_of(file, kind, records, shows_all, text_of)) {
    print_message(message);
  }
}

}  // namespace chlist
