// The documented steps of the operations that touch files, and what each does, says and leaves when a step fails.
#pragma once

#include <cstddef>
#include <string>

#include "faults/documented_run.h"
#include "faults/receiver.h"
#include "support/old_channel_file.h"

namespace test_support {

// One of the tables that have a file of their own.
struct side_table {
  int kind;
  std::size_t capacity;
  const char *name;
  const char *saved_name;  // that of genres ends in a newline character

  [[nodiscard]] std::string file_name() const { return std::string(name) + ".dat"; }
  [[nodiscard]] std::size_t size() const { return capacity * group_size; }
};

inline constexpr side_table genre_table = {GROUP_GENRE, MAX_GENRE, "genre", "genre.dat\n"};
inline constexpr side_table country_table = {GROUP_COUNTRY, MAX_COUNTRY, "country", "country.dat"};

// Puts a table and its count, as a side file has them, into the image of the list.
void put_table(bytes &list, const side_table &table, const bytes &contents);

// Each returns the result of its operation.
int document_load(documented_run &run, const receiver &own, const std::string &name, const channel_file &file);
int document_save(documented_run &run, const receiver &own);
int document_merge(documented_run &run, const receiver &own);
int document_group_load(documented_run &run, const receiver &own, const side_table &table);
int document_group_save(documented_run &run, const receiver &own, const side_table &table);

// True when an earlier version's file is read.
bool document_old_reading(documented_run &run, const receiver &own, const old_version &version);

}  // namespace test_support
