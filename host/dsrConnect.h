// The add-in's connection to the office: the one object that the office side
// creates. It sets up the process-wide globals when the office connects, and
// tears everything down exactly once when the office goes. Everything else of
// the add-in is reached from here.
#pragma once

#include <optional>
#include <string>

#include "Application.h"
#include "Workbook.h"

namespace nivarel::host {

class dsrConnect {
 public:
  // Stores the office in ExcelApp, reads ExcelVersion and clears the globals.
  // On failure the connection shuts down at once.
  void AddinInstance_OnConnection(const Application& application);
  // The office has finished starting; commands may now run.
  void AddinInstance_OnStartupComplete();
  // Shuts down unless that has happened already. Never throws.
  void AddinInstance_OnDisconnection();
  // Releases everything the connection holds, ExcelApp last. Runs once per
  // connection (ShutdownDone); never throws.
  void ShutdownApplication();
  // Ends a running flowcharting session because its workbook is being closed,
  // printed or saved.
  void InterruptFlowchartSession();

  bool StartupComplete() const { return m_StartupComplete; }

  // The whole part of the leading number of a version text ("12.0" gives 12);
  // 0 when the text doesn't start with a number.
  static int MajorVersion(const std::string& version);

 private:
  // Command bar name and tag; used on the command bar road only.
  std::string m_BarName;
  std::string m_BarTag;
  // The workbook of the running flowcharting session.
  std::optional<Workbook> CurrentWorkbook;
  bool m_StartupComplete = false;
};

}  // namespace nivarel::host
