// Writes the manual pages and the completions of chlist into a folder, from the commands themselves.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "chlist/command_table.h"
#include "chlist/manual/completion.h"
#include "chlist/manual/manual_page.h"

namespace {

namespace fs = std::filesystem;

void write(const fs::path &path, const std::string &text) {
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.exceptions(std::ios::badbit | std::ios::failbit);
  file << text;
  file.close();
}

void write_all(const fs::path &folder) {
  int log_level = 0;
  const chlist::command program = chlist::whole_program(log_level);
  for (const chlist::called_command &each : chlist::every_command(program)) {
    write(folder / "man1" / (chlist::page_name(each.line) + ".1"), chlist::manual_page(each, CHANNEL_VERSION));
  }
  write(folder / "bash" / program.name, chlist::bash_completion(program.name));
  write(folder / "zsh" / ('_' + program.name), chlist::zsh_completion(program.name));
  write(folder / "fish" / (program.name + ".fish"), chlist::fish_completion(program.name));
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
