#include "OfficeProcess.h"

#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/util/XModifiable.hpp>

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>
#include <vector>

#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/deployment/ExtensionManager.hpp>
#include <com/sun/star/task/XAbortChannel.hpp>
#include <com/sun/star/task/XInteractionApprove.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <com/sun/star/task/XInteractionRequest.hpp>
#include <com/sun/star/ucb/XProgressHandler.hpp>
#include <cppuhelper/implbase2.hxx>
#include <com/sun/star/ucb/XCommandEnvironment.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <cppuhelper/bootstrap.hxx>

#include "Uno.h"

namespace nivarel::driver {

using namespace office;

namespace {

using Clock = std::chrono::steady_clock;

// The office restarts itself with this exit code (a fresh profile may ask for it).
constexpr int kRestartExitCode = 81;

std::vector<char*> Argv(std::vector<std::string>& args) {
  std::vector<char*> v;
  for (auto& a : args) v.push_back(a.data());
  v.push_back(nullptr);
  return v;
}

// Waits for pid for at most the given time; returns its exit status or -1.
int WaitFor(int pid, double seconds) {
  auto end = Clock::now() + std::chrono::duration<double>(seconds);
  for (;;) {
    int status = 0;
    int r = waitpid(pid, &status, WNOHANG);
    if (r == pid) return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    if (r < 0) return -2;
    if (Clock::now() > end) return -1;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

std::string FileUrl(const std::string& path) { return "file://" + path; }

}  // namespace

std::string OfficeProgramDir() {
  const char* home = getenv("NIVAREL_OFFICE_PROGRAM");
  return home && *home ? home : "/usr/lib/libreoffice/program";
}

int OfficeProcess::RunProgram(const std::string& program, const std::string& args,
                              int timeoutSeconds, std::string* output) {
  std::string out = output ? std::filesystem::temp_directory_path() / ("nivarel-run-" + std::to_string(getpid()))
                           : "/dev/null";
  int pid = fork();
  if (pid < 0) return -2;
  if (pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    int fd = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (fd >= 0) {
      dup2(fd, 1);
      dup2(fd, 2);
    }
    int in = open("/dev/null", O_RDONLY);
    if (in >= 0) dup2(in, 0);
    std::string cmd = "exec '" + program + "' " + args;
    execl("/bin/sh", "sh", "-c", cmd.c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  int rc = WaitFor(pid, timeoutSeconds);
  if (rc == -1) {
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
  }
  if (output) {
    FILE* f = fopen(out.c_str(), "r");
    output->clear();
    if (f) {
      char buf[4096];
      size_t n;
      while ((n = fread(buf, 1, sizeof buf, f)) > 0) output->append(buf, n);
      fclose(f);
    }
    unlink(out.c_str());
  }
  return rc;
}

std::unique_ptr<OfficeProcess> OfficeProcess::Start(const Options& options) {
  // Talking to an office that has just ended (its pipe closed while it
  // quits) must give an error, not end this program with SIGPIPE.
  signal(SIGPIPE, SIG_IGN);
  std::unique_ptr<OfficeProcess> p(new OfficeProcess());
  if (options.profileDir.empty()) {
    std::string tmpl = (std::filesystem::temp_directory_path() / "nivarel-office-XXXXXX").string();
    if (!mkdtemp(tmpl.data())) throw HostError(HostError::kOfficeFailure, "Cannot create an office profile folder");
    p->profile_ = tmpl;
    p->ownProfile_ = true;
  } else {
    p->profile_ = std::filesystem::absolute(options.profileDir).string();
    std::filesystem::create_directories(p->profile_);
  }
  p->pipe_ = "nivarel" + std::to_string(getpid()) + "_" +
             std::to_string(Clock::now().time_since_epoch().count() % 1000000);

  std::string extension =
      options.extension.empty() ? std::string() : std::filesystem::absolute(options.extension).string();
  if (!extension.empty() && options.install == Install::kByTheRunningOffice) {
    p->Launch();
    p->Connect(options.startTimeoutSeconds);
    p->InstallExtension(extension);
    return p;
  }
  if (!extension.empty() && options.install != Install::kByTheOffice) {
    if (options.install == Install::kWithUnopkgAfterFirstStart) {
      p->Launch();
      p->Connect(options.startTimeoutSeconds);
      if (!p->Terminate(30)) throw HostError(HostError::kOfficeFailure, "The office did not stop after its first start");
    }
    p->InstallWithUnopkg(extension);
    p->Launch();
    p->Connect(options.startTimeoutSeconds);
    return p;
  }
  p->Launch();
  p->Connect(options.startTimeoutSeconds);
  if (!extension.empty()) {
    // The office installs the extension into the profile itself (the office's
    // command-line installer refuses to run as root), then starts afresh so
    // that the extension starts up as it would for a user.
    p->InstallExtension(extension);
    if (!p->Terminate(30)) throw HostError(HostError::kOfficeFailure, "The office did not stop after installing the extension");
    p->Launch();
    p->Connect(options.startTimeoutSeconds);
  }
  return p;
}

void OfficeProcess::Launch() {
  std::vector<std::string> args = {
      OfficeProgramDir() + "/soffice.bin",
      "--invisible", "--nologo", "--norestore", "--nodefault", "--nolockcheck",
      "-env:UserInstallation=" + FileUrl(profile_),
      "--accept=pipe,name=" + pipe_ + ";urp;StarOffice.ComponentContext"};
  std::string log = profile_ + "/office.log";
  // The office's temporary files (the add-in's among them) go with its profile.
  std::string temporary = profile_ + "/tmp";
  std::filesystem::create_directories(temporary);
  int pid = fork();
  if (pid < 0) throw HostError(HostError::kOfficeFailure, "Cannot start the office");
  if (pid == 0) {
    // The office must not outlive whoever started it.
    // Not headless: a headless office cancels every modal dialog unseen. The
    // svp plugin draws without a display, in a session of its own.
    setsid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setenv("SAL_USE_VCLPLUGIN", "svp", 1);
    setenv("TMPDIR", temporary.c_str(), 1);
    int fd = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    if (fd >= 0) {
      dup2(fd, 1);
      dup2(fd, 2);
    }
    int in = open("/dev/null", O_RDONLY);
    if (in >= 0) dup2(in, 0);
    auto argv = Argv(args);
    execv(argv[0], argv.data());
    _exit(127);
  }
  pid_ = pid;
}

void OfficeProcess::Connect(int timeoutSeconds) {
  static Reference<uno::XComponentContext> local;
  if (!local.is()) {
    // The office's own bootstrap file names all of its type libraries, which
    // the bridge needs to talk the office API.
    std::string rc = "vnd.sun.star.pathname:" + OfficeProgramDir() + "/fundamentalrc";
    setenv("URE_BOOTSTRAP", rc.c_str(), 0);
    local = Call("Bootstrap", [] { return cppu::defaultBootstrap_InitialComponentContext(); });
  }
  auto resolver = css::bridge::UnoUrlResolver::create(local);
  OUString url = ToOu("uno:pipe,name=" + pipe_ + ";urp;StarOffice.ComponentContext");
  auto end = Clock::now() + std::chrono::seconds(timeoutSeconds);
  std::string last;
  while (Clock::now() < end) {
    int status = 0;
    int r = waitpid(pid_, &status, WNOHANG);
    if (r == pid_) {
      int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
      if (code == kRestartExitCode) {
        Launch();
        continue;
      }
      pid_ = -1;
      throw HostError(HostError::kOfficeFailure,
                      "The office stopped while starting (exit " + std::to_string(code) + "), see " + profile_ + "/office.log");
    }
    try {
      Reference<uno::XComponentContext> remote(resolver->resolve(url), uno::UNO_QUERY_THROW);
      session_ = std::make_shared<HostSession>();
      session_->context = remote;
      session_->desktop = css::frame::Desktop::create(remote);
      // The first office this process drives serves the layer's calls on
      // its own thread.
      if (!NeedsOfficeThread()) SetRemoteOffice(remote);
      return;
    } catch (const uno::Exception& e) {
      last = ToUtf8(e.Message);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  Kill();
  throw HostError(HostError::kOfficeFailure, "The office did not answer in time: " + last);
}

namespace {

// Answers the installer's questions as a user who agreed to install would.
class ApprovingEnvironment
    : public cppu::WeakImplHelper2<css::ucb::XCommandEnvironment, css::task::XInteractionHandler> {
 public:
  Reference<css::task::XInteractionHandler> SAL_CALL getInteractionHandler() override { return this; }
  Reference<css::ucb::XProgressHandler> SAL_CALL getProgressHandler() override { return nullptr; }
  void SAL_CALL handle(const Reference<css::task::XInteractionRequest>& request) override {
    for (const auto& c : request->getContinuations()) {
      Reference<css::task::XInteractionApprove> approve(c, uno::UNO_QUERY);
      if (approve.is()) {
        approve->select();
        return;
      }
    }
  }
};

}  // namespace

void OfficeProcess::InstallExtension(const std::string& path) {
  if (!std::filesystem::exists(path)) throw HostError(HostError::kOfficeFailure, "No extension at " + path);
  Call("Installing the extension", [&] {
    auto manager = css::deployment::ExtensionManager::get(session_->context);
    manager->addExtension(ToOu(FileUrl(path)), uno::Sequence<css::beans::NamedValue>(), "user",
                          Reference<css::task::XAbortChannel>(), new ApprovingEnvironment());
  });
}

void OfficeProcess::InstallWithUnopkg(const std::string& path) {
  if (!std::filesystem::exists(path)) throw HostError(HostError::kOfficeFailure, "No extension at " + path);
  std::string unopkg = OfficeProgramDir() + "/unopkg";
  std::string args = "add --suppress-license '-env:UserInstallation=" + FileUrl(profile_) + "' '" + path + "'";
  std::string program = unopkg;
  if (geteuid() == 0) {
    // As nobody, in a profile that nobody owns; the office itself may go on as root.
    std::string owner = "chown -R 65534:65534 '" + profile_ + "'";
    if (std::system(owner.c_str()) != 0) throw HostError(HostError::kOfficeFailure, "Cannot hand the profile to an ordinary user");
    program = "/usr/bin/env";
    args = "HOME='" + profile_ + "' /usr/bin/setpriv --reuid=65534 --regid=65534 --clear-groups '" + unopkg + "' " + args;
  }
  std::string output;
  int rc = RunProgram(program, args, 120, &output);
  if (rc != 0)
    throw HostError(HostError::kOfficeFailure, "unopkg add failed (" + std::to_string(rc) + "): " + output);
}

Application OfficeProcess::App() const { return Application(session_); }

bool OfficeProcess::Terminate(int waitSeconds) {
  if (pid_ <= 0) return true;
  bool clean = false;
  // Unsaved documents would make the office ask before it ends: they are
  // given up first.
  if (session_) {
    try {
      Call("OfficeProcess.Terminate", [&] {
        auto documents = session_->desktop->getComponents()->createEnumeration();
        while (documents->hasMoreElements()) {
          Reference<css::util::XModifiable> modifiable(documents->nextElement(), uno::UNO_QUERY);
          if (modifiable.is()) modifiable->setModified(false);
        }
      });
    } catch (const HostError&) {
    }
    ForgetRemoteOffice(session_->context);
  }
  if (session_ && session_->desktop.is()) {
    try {
      session_->desktop->terminate();
    } catch (const uno::Exception&) {
      // The bridge goes down with the office; that is the expected answer.
    }
  }
  int rc = WaitFor(pid_, waitSeconds);
  if (rc == -1) {
    Kill();
  } else {
    clean = true;
    pid_ = -1;
  }
  session_.reset();
  return clean;
}

void OfficeProcess::Kill() {
  if (pid_ <= 0) return;
  if (session_) ForgetRemoteOffice(session_->context);
  kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
  pid_ = -1;
}

OfficeProcess::~OfficeProcess() {
  Terminate(10);
  if (ownProfile_) {
    std::error_code ec;
    // NIVAREL_OFFICE_LOG names a file that keeps the office's output.
    if (const char* keep = getenv("NIVAREL_OFFICE_LOG"))
      std::filesystem::copy_file(profile_ + "/office.log", keep, std::filesystem::copy_options::overwrite_existing, ec);
    std::filesystem::remove_all(profile_, ec);
  }
}

}  // namespace nivarel::driver
