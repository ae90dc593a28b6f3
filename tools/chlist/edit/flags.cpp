// `chlist lock`, `unlock`, `skip` and `unskip`: flags of services.
#include <memory>

#include "chlist/edit/edits.h"
#include "chlist/edit/service_edits.h"

namespace chlist {
namespace {

struct flag_command {
  const char *name;
  const char *about;
  std::uint8_t bits;
  bool sets;  // without --off
  const char *example;
  const char *example_of_choice;
};

constexpr flag_command locking = {
    "lock", "Lock services: a receiver asks for its code", CHANNEL_FLAG_LOCKED,
    true,   "chlist lock channels.dat 7 \"Late Films\"",   "chlist lock channels.dat --where 'genre=Adult' --yes"};
constexpr flag_command unlocking = {"unlock",
                                    "Take the lock off services",
                                    CHANNEL_FLAG_LOCKED,
                                    false,
                                    "chlist unlock channels.dat 7 --dry-run",
                                    "chlist unlock channels.dat --where locked=yes"};
constexpr flag_command skipping = {"skip",
                                   "Pass over services when zapping",
                                   CHANNEL_FLAG_SKIP,
                                   true,
                                   "chlist skip channels.dat 7 \"Shopping\"",
                                   "chlist skip channels.dat --where 'scrambled=yes not provider=Sky'"};
constexpr flag_command unskipping = {
    "unskip", "Stop at services again when zapping",    CHANNEL_FLAG_SKIP,
    false,    "chlist unskip channels.dat 7 --dry-run", "chlist unskip channels.dat --where 'skipped=yes type=radio'"};

struct flag_options {
  service_choice services;
  bool is_off = false;

  void must_go_together() const { services.must_be_given(); }
};

void set_flags(const flag_options &options, const flag_command &which, edited_list &list) {
  const bool sets = which.sets && !options.is_off;
  for (const channel_st *service : list.services(options.services)) {
    set_flag(*service, which.bits, sets);
  }
}

edit_row row_for(const flag_command &which) {
  auto options = std::make_shared<flag_options>();
  edit_row edit = {.name = which.name,
                   .summary = which.about,
                   .details = {"The flag belongs to the service: it shows in all views."},
                   .sections = {section_of_conditions()},
                   .examples = {which.example, which.example_of_choice},
                   .options = options_of(options->services)};
  if (which.sets) {
    edit.examples.push_back(std::string("chlist ") + which.name + " channels.dat 7 --off");
    edit.options.push_back({.names = "--off", .target = &options->is_off, .about = "take the flag away instead"});
  }
  edit.take = taking<flag_options>(
      options, [&which](const flag_options &own, edited_list &list) { set_flags(own, which, list); });
  return edit;
}

}  // namespace

edit_row lock_edit() { return row_for(locking); }
edit_row unlock_edit() { return row_for(unlocking); }
edit_row skip_edit() { return row_for(skipping); }
edit_row unskip_edit() { return row_for(unskipping); }

}  // namespace chlist
