// What the library calls a stream is a place in a file's contents here: it never looks inside.
#include "memory_files.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace fuzz {
namespace {

struct open_file {
  std::string *contents;
  std::size_t position = 0;
};

open_file &opened(std::FILE *file) { return *reinterpret_cast<open_file *>(file); }

memory_files *current = nullptr;

std::vector<std::string> &spare_files() {
  static std::vector<std::string> spare;
  return spare;
}

std::string take_spare_file() {
  if (spare_files().empty()) {
    return {};
  }
  std::string taken = std::move(spare_files().back());
  spare_files().pop_back();
  return taken;
}

}  // namespace

constinit const channel::persist::file_door memory_files::functions = {open, read, write, flush, close, sync};

memory_files::memory_files() : before_(channel::persist::door) {
  current = this;
  channel::persist::door = &functions;
}

memory_files::~memory_files() {
  channel::persist::door = before_;
  current = nullptr;
  remove_all();
}

void memory_files::remove_all() {
  for (auto &[path, file] : contents_) {
    file.clear();
    spare_files().push_back(std::move(file));
  }
  contents_.clear();
}

std::string &memory_files::at(const std::string &path) {
  const auto found = contents_.find(path);
  return found != contents_.end() ? found->second : contents_.emplace(path, take_spare_file()).first->second;
}

std::FILE *memory_files::open(const char *path, const char *mode, std::span<char> /*buffer*/) {
  if (mode[0] == 'w') {
    current->at(path).clear();
  }
  const auto found = current->contents_.find(path);
  if (found == current->contents_.end()) {
    return nullptr;
  }
  ++current->open_files_;
  return reinterpret_cast<std::FILE *>(new open_file{&found->second});
}

std::size_t memory_files::read(void *data, std::size_t size, std::size_t items, std::FILE *file) {
  open_file &source = opened(file);
  const std::size_t wanted = size * items;
  const std::size_t taken = std::min(wanted, source.contents->size() - source.position);
  std::memcpy(data, source.contents->data() + source.position, taken);
  source.position += taken;
  return taken / size;
}

std::size_t memory_files::write(const void *data, std::size_t size, std::size_t items, std::FILE *file) {
  opened(file).contents->append(static_cast<const char *>(data), size * items);
  return items;
}

int memory_files::flush(std::FILE * /*file*/) { return 0; }

int memory_files::close(std::FILE *file) {
  --current->open_files_;
  delete &opened(file);
  return 0;
}

void memory_files::sync() {}

}  // namespace fuzz
