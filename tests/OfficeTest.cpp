#include "OfficeTest.h"

#include <filesystem>

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <thread>

#include "HostError.h"

namespace nivarel::testing {

namespace {

std::unique_ptr<driver::OfficeProcess> g_office;
std::atomic<int> g_officePid{-1};

// Kills the office and leaves: used on a hung test and on signals.
[[noreturn]] void Abandon(const char* why) {
  int pid = g_officePid.load();
  if (pid > 0) kill(pid, SIGKILL);
  ::write(2, why, std::strlen(why));
  _exit(1);
}

void OnSignal(int) { Abandon("test binary interrupted: office ended\n"); }

// Ends the process when a test outlives its time bound.
class Watchdog {
 public:
  Watchdog() : thread_([this] { Run(); }) { thread_.detach(); }
  void Arm(int seconds) {
    std::lock_guard<std::mutex> lock(mutex_);
    deadline_ = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    armed_ = true;
    cv_.notify_all();
  }
  void Disarm() {
    std::lock_guard<std::mutex> lock(mutex_);
    armed_ = false;
  }

 private:
  void Run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
      if (!armed_) {
        cv_.wait(lock);
        continue;
      }
      if (cv_.wait_until(lock, deadline_) == std::cv_status::timeout && armed_ &&
          std::chrono::steady_clock::now() >= deadline_)
        Abandon("test timed out: office ended\n");
    }
  }
  std::mutex mutex_;
  std::condition_variable cv_;
  std::chrono::steady_clock::time_point deadline_;
  bool armed_ = false;
  std::thread thread_;
};

Watchdog& Dog() {
  static Watchdog* dog = new Watchdog();
  return *dog;
}

driver::OfficeProcess::Options DefaultOptions() {
  driver::OfficeProcess::Options o;
  const char* oxt = std::getenv("NIVAREL_OXT");
  o.extension = oxt ? oxt : NIVAREL_OXT;
  return o;
}

class OfficeEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    Dog().Arm(300);
    g_office = driver::OfficeProcess::Start(DefaultOptions());
    g_officePid = g_office->Pid();
    Dog().Disarm();
  }
  void TearDown() override {
    Dog().Arm(60);
    g_office.reset();
    g_officePid = -1;
    Dog().Disarm();
  }
};

// Helper modes: the harness's own tests run this binary as a child that
// starts an office and then hangs, to be killed or to time out.
int ChildMode(const std::string& mode) {
  Dog();
  auto office = driver::OfficeProcess::Start(DefaultOptions());
  g_officePid = office->Pid();
  std::printf("%d\n", office->Pid());
  std::fflush(stdout);
  if (mode == "--hang-with-time-limit") Dog().Arm(2);
  for (;;) pause();
}

}  // namespace

driver::OfficeProcess& Office() { return *g_office; }

namespace {
std::string g_configHome;
}

const std::string& ConfigHome() { return g_configHome; }

int RunTests(int argc, char** argv) {
  if (argc > 1 && std::strncmp(argv[1], "--hang", 6) == 0) return ChildMode(argv[1]);
  signal(SIGTERM, OnSignal);
  signal(SIGINT, OnSignal);
  signal(SIGHUP, OnSignal);
  // The add-in's settings folder, shared by this binary and its office.
  char dir[] = "/tmp/nivarel-config-XXXXXX";
  if (!mkdtemp(dir)) return 2;
  g_configHome = dir;
  setenv("XDG_CONFIG_HOME", dir, 1);
  // A home of the tests' own too: what the add-in keeps beside the user's
  // documents (the flowcharts folder, its templates) stays out of the real one.
  const std::string home = g_configHome + "/home";
  mkdir(home.c_str(), 0700);
  setenv("HOME", home.c_str(), 1);
  ::testing::InitGoogleTest(&argc, argv);
  ::testing::AddGlobalTestEnvironment(new OfficeEnvironment());
  int rc = RUN_ALL_TESTS();
  std::error_code ec;
  std::filesystem::remove_all(g_configHome, ec);
  return rc;
}

void OfficeTest::SetUp() {
  ASSERT_TRUE(g_office) << "the office did not start";
  Dog().Arm(kTestTimeLimitSeconds);
  book_ = App().GetWorkbooks().Add();
  sheet_ = book_->Sheet(1);
  // The add-in works on the active sheet: wait until the new one is it, so
  // that nothing lands on the document of the test before.
  for (int i = 0; i < 100; ++i) {
    auto active = App().ActiveSheet();
    if (active && active->SameAs(*sheet_)) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

void OfficeTest::TearDown() {
  ui_.reset();
  if (book_) {
    try {
      book_->Close();
    } catch (const office::HostError&) {
    }
  }
  Dog().Disarm();
}

driver::UiDriver& OfficeTest::Ui() {
  if (!ui_) ui_ = std::make_unique<driver::UiDriver>(App());
  return *ui_;
}

}  // namespace nivarel::testing
