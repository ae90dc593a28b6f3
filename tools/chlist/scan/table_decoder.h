// Tables of sections, through libdvbpsi: table_decoder.cpp alone includes it. Sections come in any order and as often
// as they are sent; a table that came whole takes the place of the one of an earlier version.
#pragma once

#include <memory>
#include <vector>

#include "chlist/scan/sections.h"
#include "chlist/scan/tables.h"

namespace chlist {

// A table of which sections are missing.
struct incomplete_table {
  std::uint8_t table_id = 0;
  std::uint16_t extension = 0;
};

class table_decoder {
 public:
  table_decoder();
  ~table_decoder();
  table_decoder(const table_decoder &) = delete;
  table_decoder &operator=(const table_decoder &) = delete;

  // Sections of tables that are not read are passed over. False: there was no room to keep it.
  bool take(const section &sound);

  [[nodiscard]] const broadcast_tables &tables() const;
  // Hands the tables over when all sections were taken.
  broadcast_tables take_tables();
  [[nodiscard]] std::vector<incomplete_table> incomplete() const;

 private:
  class state;
  std::unique_ptr<state> state_;
};

}  // namespace chlist
