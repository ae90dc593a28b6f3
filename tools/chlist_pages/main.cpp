// Writes the manual pages and the completions of chlist into a folder, from the commands themselves.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "chlist/commands.h"
#include "chlist/pages/command_help.h"
#include "chlist/pages/completion.h"
#include "chlist/pages/manual_page.h"

namespace {

namespace fs = std::filesystem;

void write(const fs::path &path, const std::string &text) {
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.exceptions(std::ios::badbit | std::ios::failbit);
  file << text;
  file.close();
}

void write_pages(const fs::path &folder, const chlist::command_help &command) {
  write(folder / (command.page_name() + ".1"), chlist::manual_page(command, CHANNEL_VERSION));
  for (const chlist::command_help &each : command.commands) {
    write_pages(folder, each);
  }
}

void write_all(const fs::path &folder) {
  int log_level = 0;
  const chlist::command_help program = chlist::help_of(chlist::whole_program(log_level));
  write_pages(folder / "man1", program);
  write(folder / "bash" / program.name, chlist::bash_completion(program));
  write(folder / "zsh" / ('_' + program.name), chlist::zsh_completion(program));
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 2) {
    static_cast<void>(std::fputs("Usage: chlist_pages FOLDER\n", stderr));
    return 2;
  }
  try {
    write_all(argv[1]);
    return 0;
  } catch (const std::exception &error) {
    static_cast<void>(std::fprintf(stderr, "chlist_pages: %s\n", error.what()));
    return 2;
  }
}
