// Reports on standard output: as text, and as JSON documents.
#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "chlist/json/json.h"

namespace chlist {

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
