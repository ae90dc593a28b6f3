// What a file was before it is replaced, kept beside it as FILE.bak.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "chlist/files/list_file.h"

namespace chlist {

// Copies the file, with its mode, to FILE.bak, which is replaced as a whole or not at all, and brings the copy to the
// disk. Of a symbolic link, the file that it points to is kept, beside that file. What is not there needs no backup.
// Throws when it cannot be kept.
void keep_backup(const std::filesystem::path &file);

// Both a channel file and what stands beside it get one.
void keep_backups(const std::filesystem::path &file);

// Where keep_backup() puts it.
std::filesystem::path backup_of(const std::filesystem::path &file);

// What is saved with a list, and what made it.
struct edited_files {
  companion_to_write beside;
  std::vector<std::string> lines;  // of edits
};

// Saves the channel list that was made of an input, and keeps what the target was before, as its backup and in its
// history; unless nothing is to be kept. No backup is made of what will not be replaced; it replaces neither the input
// nor, by way of a link, the file that it is made of. The same goes for the companion.
void save_edited_list(const std::filesystem::path &input, const std::filesystem::path &target, bool leaves_no_backup,
                      const edited_files &files);

}  // namespace chlist
