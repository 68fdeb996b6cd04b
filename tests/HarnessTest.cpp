// The harness never leaves an office behind: not when its test binary is
// killed, and not when a test outlives its time bound.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "OfficeTest.h"

namespace nivarel::testing {
namespace {

// True while pid names a live process (a zombie counts as gone).
bool Alive(int pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  if (!stat) return false;
  std::string ignore, state;
  stat >> ignore >> ignore >> state;
  return state != "Z" && state != "X";
}

bool GoneWithin(int pid, int seconds) {
  for (int i = 0; i < seconds * 10; ++i) {
    if (!Alive(pid)) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

// Starts this binary in a helper mode and reads the pid of its office.
int StartChild(const char* mode, int* officePid) {
  int fds[2];
  if (pipe(fds) != 0) return -1;
  int child = fork();
  if (child == 0) {
    dup2(fds[1], 1);
    close(fds[0]);
    execl("/proc/self/exe", "host_tests", mode, static_cast<char*>(nullptr));
    _exit(127);
  }
  close(fds[1]);
  FILE* in = fdopen(fds[0], "r");
  *officePid = -1;
  if (std::fscanf(in, "%d", officePid) != 1) *officePid = -1;
  std::fclose(in);
  return child;
}

TEST(HarnessTest, KillingTheTestBinaryEndsItsOffice) {
  int office = -1;
  int child = StartChild("--hang", &office);
  ASSERT_GT(office, 0);
  ASSERT_TRUE(Alive(office));
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_TRUE(GoneWithin(office, 10));
}

TEST(HarnessTest, ATestOverItsTimeBoundEndsItsOffice) {
  int office = -1;
  int child = StartChild("--hang-with-time-limit", &office);
  ASSERT_GT(office, 0);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) != 0);
  EXPECT_TRUE(GoneWithin(office, 10));
}

}  // namespace
}  // namespace nivarel::testing
