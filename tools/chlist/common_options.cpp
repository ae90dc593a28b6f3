#include "chlist/common_options.h"

namespace chlist {

option json_option(bool &as_json) { return {.names = "--json", .target = &as_json, .about = "report as JSON"}; }

option all_findings_option(bool &shows_all) {
  return {.names = "--all",
          .target = &shows_all,
          .about = "tell every finding, not only the first ten of each kind, as JSON does"};
}

option new_list_option(std::filesystem::path &output) {
  return {.names = "-o,--output",
          .target = &output,
          .about = "the channel file to write; - is standard output",
          .value = "OUTPUT",
          .is_required = true};
}

option no_backup_option(bool &leaves_no_backup) {
  return {.names = "--no-backup",
          .target = &leaves_no_backup,
          .about = "do not keep the channel file that OUTPUT was as OUTPUT.bak, nor in its history"};
}

}  // namespace chlist
