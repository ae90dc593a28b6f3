// The list that an editor has open, as it stands on the disk: read into memory, watched, and written back in its own
// format.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "chlist/files/kept_in_step.h"

namespace chlist {

class edited_file {
 public:
  virtual ~edited_file() = default;

  // Takes what was read into memory. Returns what of it a save does not write again, one text for each.
  virtual std::vector<std::string> load() = 0;

  // Whether somebody else wrote it since it was read.
  [[nodiscard]] virtual bool is_changed() const = 0;

  // Replaces it by the list in memory, and keeps what it was as FILE.bak. Throws when it is not what was read; the list
  // in memory stays in any case. changes: of identities since load(), in their order;
  // lines: the edits since the last save, for the history.
  virtual void save(const std::vector<changed_identity> &changes, const std::vector<std::string> &lines) = 0;
};

// A channel file, or a list of any format that can be read and written, files and folders. The path is absolute: saving
// changes the working directory for a moment. Throws when it cannot be read.
std::unique_ptr<edited_file> open_to_edit(const std::filesystem::path &path);

// What somebody is told who would overwrite what another one wrote.
void must_not_be_changed(const std::filesystem::path &path, const edited_file &file);

}  // namespace chlist
