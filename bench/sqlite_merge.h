// Merging a scan into the database: service by service, as a scan supplies them, and with set operations when the scan
// is a database as well. Services that only the scan has are filed, services that it lacks are deleted with their
// entries. The views are full, so that the new services get none. merge() is one transaction and gives how many
// services were filed and deleted.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <string>
#include <vector>

#include "sqlite_database.h"

namespace bench::sqlite {

class record_merger {
 public:
  explicit record_merger(const std::string &list);
  int merge(const std::vector<channel_st> &scan);

 private:
  // The key of a service, filed if the list lacks it.
  std::int64_t file(const channel_st &service);

  database list_;
  int filed_ = 0;
  statement begin_, find_, insert_, note_, delete_entries_, delete_services_, forget_, commit_;
};

class set_merger {
 public:
  set_merger(const std::string &list, const std::string &scan);
  int merge();

 private:
  database list_;
  statement begin_, pair_, file_new_, note_gone_, delete_entries_, delete_services_, forget_pairs_, forget_gone_,
      commit_;
};

}  // namespace bench::sqlite
