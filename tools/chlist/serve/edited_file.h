// The list that an editor has open, as it stands on the disk: read into memory, watched, and written back in its own
// format.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "chlist/files/kept_in_step.h"

namespace chlist {

// What a save is told of the edits that made the list.
struct saved_edits {
  std::vector<changed_identity> identities;  // since load(), in their order
  std::vector<std::string> lines;            // since the last save
};

class edited_file {
 public:
  virtual ~edited_file() = default;

  // Takes what was read into memory. Returns what of it a save does not write again, one text for each.
  virtual std::vector<std::string> load() = 0;

  // Why nothing of it could be taken, as of a damaged channel file: the list in memory is an empty one then. Empty when
  // it was read.
  [[nodiscard]] virtual std::string damage() const { return {}; }

  // Whether somebody else wrote it since it was read.
  [[nodiscard]] virtual bool is_changed() const = 0;

  // Replaces it by the list in memory, and keeps what it was. Throws when it is not what was read; the list in memory
  // stays in any case.
  virtual void save(const saved_edits &edits) = 0;

  // Takes what was saved for what was read. When this throws, everything is saved, and counts as changed by somebody
  // else.
  virtual void look_again() = 0;
};

// A channel file, or a list of any format that can be read and written, files and folders. The path is absolute: saving
// changes the working directory for a moment. Throws when it cannot be read.
std::unique_ptr<edited_file> open_to_edit(const std::filesystem::path &path);

// What somebody is told who would overwrite what another one wrote.
void must_not_be_changed(const std::filesystem::path &path, const edited_file &file);

}  // namespace chlist
