// The system takes a lock back when its program ends, however it ends.
#include "chlist/files/edit_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "chlist/files/replacement.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds longest_wait(30);
constexpr std::chrono::milliseconds pause(5);

bool is_locked_by_another() { return errno == EWOULDBLOCK || errno == EINTR; }

// Some file systems, and some of the network, have no locks, or none for a folder that is open for reading.
bool can_have_no_lock() {
  return errno == ENOLCK || errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL || errno == EBADF;
}

}  // namespace

edit_lock::~edit_lock() { ::flock(folder_.get(), LOCK_UN); }

edit_lock::edit_lock(const fs::path &target)
    : folder_name_(behind_links(target).parent_path()),
      folder_(::open(folder_name_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), folder_name_) {
  const auto end = std::chrono::steady_clock::now() + longest_wait;
  while (::flock(folder_.get(), LOCK_EX | LOCK_NB) != 0 && !can_have_no_lock()) {
    if (!is_locked_by_another()) {
      fail(folder_name_);
    }
    if (std::chrono::steady_clock::now() > end) {
      throw std::runtime_error(target.string() + ": another edit is not done yet; try again");
    }
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace chlist
