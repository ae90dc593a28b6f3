// Writes the inputs that are made by hand into the folders of their harnesses: make_corpus FOLDER.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "seeds.h"

namespace {

namespace fs = std::filesystem;

bool write(const fs::path &folder, const fuzz::seed &seed) {
  const fs::path file = folder / seed.harness / seed.name;
  fs::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary);
  out.write(seed.input.data(), static_cast<std::streamsize>(seed.input.size()));
  return out.flush().good();
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  for (const auto &seeds : {fuzz::file_seeds(), fuzz::scan_seeds(), fuzz::group_seeds(), fuzz::call_seeds(),
                            fuzz::text_seeds(), fuzz::stream_seeds()}) {
    for (const fuzz::seed &seed : seeds) {
      if (!write(argv[1], seed)) {
        std::fprintf(stderr, "%s/%s cannot be written\n", seed.harness.c_str(), seed.name.c_str());
        return 1;
      }
    }
  }
  return 0;
}
