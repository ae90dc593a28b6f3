// What a file was before it is replaced, kept beside it as FILE.bak.
#pragma once

#include <filesystem>

namespace chlist {

// Copies the file, with its mode, to FILE.bak, which is replaced as a whole or not at all, and brings the copy to the
// disk. Of a symbolic link, the file that it points to is kept, beside that file. What is not there needs no backup.
// Throws when it cannot be kept.
void keep_backup(const std::filesystem::path &file);

// Where keep_backup() puts it.
std::filesystem::path backup_of(const std::filesystem::path &file);

}  // namespace chlist
