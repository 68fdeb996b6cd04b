// Starts an office without a display on a throwaway user profile (optionally with an
// extension installed into it), connects to it over a pipe and ends it by its
// process id. The office dies with the process that started it, even when
// that process is killed.
#pragma once

#include <memory>
#include <string>

#include "Application.h"

namespace nivarel::driver {

class OfficeProcess {
 public:
  // How the extension comes into the profile: through the running office's
  // extension manager (then the office starts afresh, or goes on as it is, as
  // when a user adds it in Tools > Extension Manager and restarts later), or
  // with the office's own command-line installer as a user runs it, before
  // the office's first start on the profile or after one start.
  enum class Install {
    kByTheOffice,
    kWithUnopkgBeforeFirstStart,
    kWithUnopkgAfterFirstStart,
    kByTheRunningOffice  // through the extension manager, and the office goes on without a restart
  };
  struct Options {
    std::string extension;    // .oxt to install into the profile; empty for none
    Install install = Install::kByTheOffice;
    std::string profileDir;   // empty: a fresh folder under the temp folder
    int startTimeoutSeconds = 90;
  };

  // Throws HostError when the office cannot be installed into or started.
  static std::unique_ptr<OfficeProcess> Start(const Options& options);
  ~OfficeProcess();

  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;

  // The office's application object.
  office::Application App() const;
  int Pid() const { return pid_; }
  const std::string& ProfileDir() const { return profile_; }

  // Asks the office to terminate and waits for it; kills it after the wait.
  // Returns true when the office ended by itself.
  bool Terminate(int waitSeconds = 20);
  // Ends the office at once.
  void Kill();

  // Runs a program with a deadline; returns its exit code, or -1 on timeout.
  static int RunProgram(const std::string& program, const std::string& args, int timeoutSeconds,
                        std::string* output);

 private:
  OfficeProcess() = default;
  void Launch();
  void InstallExtension(const std::string& path);
  // Runs unopkg on the profile, as an ordinary user when this is root (the
  // installer refuses root for a user's profile).
  void InstallWithUnopkg(const std::string& path);
  void Connect(int timeoutSeconds);

  std::string profile_;
  std::string pipe_;
  bool ownProfile_ = false;
  int pid_ = -1;
  std::shared_ptr<office::HostSession> session_;
};

// Where the office is installed (its "program" folder).
std::string OfficeProgramDir();

}  // namespace nivarel::driver
