// Locked while it is replaced.
#include "chlist/exchange/new_list_file.h"

#include <channel/channel.h>
#include <fmt/format.h>

#include <system_error>
#include <utility>

#include "chlist/files/backup.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/history.h"
#include "chlist/files/input_file.h"
#include "chlist/files/list_file.h"
#include "chlist/files/replacement.h"
#include "chlist/files/standard_streams.h"
#include "chlist/text/shown.h"

namespace chlist {

namespace fs = std::filesystem;

new_list_file::new_list_file(const fs::path &output, bool keeps_backup, std::string made_by)
    : output_(output), made_by_(std::move(made_by)) {
  const bool is_list = fs::is_regular_file(output_) && is_channel_file(read_beginning(output_, 2));
  keeps_backup_ = is_list && !is_standard_stream(output_) && keeps_backup;
}

void new_list_file::write_list(const companion &beside) const {
  if (is_standard_stream(output_)) {
    write_standard_output(image_of(*get_channel_list()));
  } else {
    const edit_lock lock(output_);
    save_edited_list(output_, output_, !keeps_backup_, {beside, {made_by_}});
  }
}

void new_list_file::write_bytes(std::string_view bytes) const {
  if (is_standard_stream(output_)) {
    write_standard_output(bytes);
  } else {
    const edit_lock lock(output_);
    if (keeps_backup_) {
      must_be_replaceable(output_);
      keep_backups(output_);
      keep_history(output_, {{"", std::string(bytes)}}, {made_by_});
    }
    write_with(output_, companion(), [&](replacement &file) { file.write(bytes); });
  }
}

std::string new_list_file::note() const {
  return keeps_backup_
             ? fmt::format("{}: what it was is kept as {}\n", harmless(output_.string()), harmless(name_of_backup()))
             : "";
}

json new_list_file::backup() const { return keeps_backup_ ? json(name_of_backup()) : json(); }

// The list is written when somebody asks: a failure to look is none to write.
std::string new_list_file::name_of_backup() const {
  std::error_code unseen;
  return fs::is_symlink(output_, unseen) ? backup_of(output_).string() : output_.string() + ".bak";
}

bool has_companion(const fs::path &output, const companion &beside) {
  return !beside.is_empty() && !is_standard_stream(output);
}

std::string title_of_losses(const fs::path &output, bool are_kept) {
  return are_kept ? fmt::format("Not carried by the channel file, but kept in {}:", harmless(name_of_companion(output)))
                  : "Not carried by the channel file:";
}

json json_of_companion(const fs::path &output, const companion &beside) {
  return has_companion(output, beside) ? json(name_of_companion(output)) : json();
}

}  // namespace chlist
