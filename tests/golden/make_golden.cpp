// Writes the golden channel file: make_golden tests/golden/channel_v10.dat. It is checked in; a test compares it with
// what this program writes.
#include <cstdio>
#include <fstream>

#include "golden_file.h"

int main(int argc, char **argv) {
  if (argc != 2) {
    std::fputs("usage: make_golden FILE\n", stderr);
    return 2;
  }
  const golden::bytes file = golden::channel_file();
  std::ofstream out(argv[1], std::ios::binary);
  out.write(file.data(), static_cast<std::streamsize>(file.size()));
  out.close();
  if (!out) {
    std::fprintf(stderr, "make_golden: cannot write '%s'\n", argv[1]);
    return 1;
  }
  return 0;
}
