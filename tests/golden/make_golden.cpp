// Writes the golden files: make_golden tests/golden/*.dat. What is written follows from a file's name. They are checked
// in; tests compare them with what this program writes.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "golden_file.h"
#include "golden_old_versions.h"
#include "golden_scans.h"

namespace {

struct golden_file {
  std::string_view name;
  golden::bytes (*contents)();
};

constexpr golden_file golden_files[] = {
    {"channel_v10.dat", golden::channel_file},
    {"scan_unchanged.dat", golden::scan_unchanged},
    {"merged_unchanged.dat", golden::merged_unchanged},
    {"scan_changed.dat", golden::scan_changed},
    {"merged_changed.dat", golden::merged_changed},
    {"scan_hostile.dat", golden::scan_hostile},
    {"merged_hostile.dat", golden::merged_hostile},
    {"channel_v9.dat", golden::old_versions::channel_file<9>},
    {"channel_v8.dat", golden::old_versions::channel_file<8>},
    {"channel_v7.dat", golden::old_versions::channel_file<7>},
    {"repaired_v9.dat", golden::old_versions::repaired_file<9>},
    {"repaired_v8.dat", golden::old_versions::repaired_file<8>},
    {"repaired_v7.dat", golden::old_versions::repaired_file<7>},
};

bool write_golden(const std::filesystem::path &path) {
  for (const auto &[name, contents] : golden_files) {
    if (path.filename() == name) {
      const golden::bytes file = contents();
      std::ofstream out(path, std::ios::binary);
      out.write(file.data(), static_cast<std::streamsize>(file.size()));
      out.close();
      return !out.fail();
    }
  }
  return false;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 2) {
    std::fputs("usage: make_golden FILE...\n", stderr);
    return 2;
  }
  for (int i = 1; i < argc; ++i) {
    if (!write_golden(argv[i])) {
      std::fprintf(stderr, "make_golden: cannot write '%s'\n", argv[i]);
      return 1;
    }
  }
  return 0;
}
