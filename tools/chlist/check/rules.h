// The rules behind the findings, by what they look at.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "chlist/check/findings.h"
#include "chlist/files/file_records.h"

namespace chlist {

using finding_list = std::vector<finding>;

// The version, the file's size against its counts, and records that are not there.
void check_frame(const file_records &framed, finding_list &findings);

// Counts of views and group tables, ids of groups, the current view.
void check_settings(const file_records &framed, finding_list &findings);

// Entries of views: their services, identities, numbers and position keys.
void check_entries(const file_records &framed, finding_list &findings);

// Networks, transponders and services among each other, and the groups that services name.
void check_hierarchy(const file_records &framed, finding_list &findings);

// Names of services, groups and networks.
void check_texts(const file_records &framed, finding_list &findings);

// What stands beside a channel file, which may be damaged or of another list.
void check_companion(const std::filesystem::path &file, byte_span bytes, finding_list &findings);

}  // namespace chlist
