// How the tool shows services, entries and counts: as text that is harmless on a terminal, and as JSON.
#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "chlist/json/json.h"
#include "chlist/list_contents.h"
#include "chlist/text/shown.h"

namespace chlist {

// "TV", "favourites 1 \"Films\"".
std::string label_of(const view_name &view);

// "\"News\" (net 1, network 2, ts 3, 11000000 H, service 5)".
std::string describe(const known_service &service);

// "the TV view, position 1: number 5 (net 1, network 2, ts 3, 11000000 H, service 5)".
std::string describe(const placed_entry &entry);

char polarisation_letter(const channel::identity &id);

json json_of(const view_name &view);
json json_of(const known_service &service);
json json_of(const placed_entry &entry);

// The views of the list in memory, with the number of entries in use.
json json_of_views();

template <class Record>
json array_of(const std::vector<Record> &records, json (*json_of_one)(const Record &record)) {
  json array = json::array();
  for (const Record &record : records) {
    array.push_back(json_of_one(record));
  }
  return array;
}

// Every document of the tool: "schema" comes first, the number of the form that documents have.
void print_json(const json &report);

// What was printed did not come through; nothing more is to be printed.
struct report_lost : std::system_error {
  using std::system_error::system_error;
};

// What a report prints, as text: plain, as files get it.
std::string text_of_report(const std::function<void(std::FILE *to)> &print);

// Prints a report on standard output, and throws report_lost when something of it did not come through.
void print_report(const std::function<void()> &print);

}  // namespace chlist
