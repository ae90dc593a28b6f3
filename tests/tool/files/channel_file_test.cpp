// Reading channel files: any path and any place will do, and what was read stays as it was.
#include <sys/stat.h>
#include <unistd.h>

#include "support/resource_limits.h"
#include "tool/chlist_host.h"

namespace {

using namespace tool_test;

class ChannelFile : public chlist_test {
 protected:
  void SetUp() override {
    const service_data news = {.service_id = 1, .name = "News"};
    channel_file file;
    write_file(path(), file.service(news).entry(VIEW_ALL, news, 7).entry(VIEW_TV, news, 7).data);
  }
};

// Everything that only reads, with what its output names.
const std::vector<std::vector<std::string>> readers = {{"list", "list.dat"},
                                                       {"show", "list.dat", "7"},
                                                       {"info", "list.dat"},
                                                       {"diff", "list.dat", "list.dat"},
                                                       {"check", "list.dat"},
                                                       {"export", "list.dat", "-o", "out.json"},
                                                       {"export", "list.dat", "-o", "out.csv"},
                                                       {"report", "list.dat", "-o", "out.html"}};

// As in a container that mounts none: nothing may go by /proc, as sanitizers do.
TEST_F(ChannelFile, IsReadWhereThereIsNoProc) {
  if (::geteuid() != 0 || !test_support::no_memory_of::is_possible()) {
    GTEST_SKIP() << "only root mounts, and sanitizers need /proc";
  }
  for (const std::vector<std::string> &arguments : readers) {
    std::string command = "mount -t tmpfs none /proc && exec '" CHLIST_PROGRAM "'";
    for (const std::string &argument : arguments) {
      command += " '" + argument + "'";
    }
    const program_result result = run_program({"/usr/bin/unshare", "--mount", "sh", "-c", command}, dir.path());
    if (result.err.find("unshare failed") != std::string::npos) {
      GTEST_SKIP() << result.err;
    }
    EXPECT_LT(result.exit_code, 2) << arguments.front() << ": " << result.err;
    EXPECT_EQ(result.err, "") << arguments.front();
  }
}

TEST_F(ChannelFile, IsNotTouchedByWhatOnlyReads) {
  ::chmod(path("list.dat").c_str(), 0444);
  struct stat before = {};
  ::stat(path("list.dat").c_str(), &before);
  for (const std::vector<std::string> &arguments : readers) {
    EXPECT_LT(run(arguments).exit_code, 2) << arguments.front();
  }
  struct stat after = {};
  ::stat(path("list.dat").c_str(), &after);
  EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
  EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
  EXPECT_EQ(after.st_ino, before.st_ino);
}

}  // namespace
