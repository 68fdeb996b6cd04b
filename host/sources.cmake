# Sources of the add-in host: connection, command routing and handlers, the
# components that the office loads, the error log, utilities, settings,
# message boxes and the dialog base. Built into the add-in's library; the
# component registration (AddinComponent.cpp) goes into the shipped module.
set(HOST_SOURCES
  ${CMAKE_SOURCE_DIR}/host/CCommandBarBuilder.cpp
  ${CMAKE_SOURCE_DIR}/host/CControlEvents.cpp
  ${CMAKE_SOURCE_DIR}/host/CEventHandler.cpp
  ${CMAKE_SOURCE_DIR}/host/CommandKeys.cpp
  ${CMAKE_SOURCE_DIR}/host/ExportCommand.cpp
  ${CMAKE_SOURCE_DIR}/host/MErrorHandler.cpp
  ${CMAKE_SOURCE_DIR}/host/MGlobalVariables.cpp
  ${CMAKE_SOURCE_DIR}/host/MShapeRanges.cpp
  ${CMAKE_SOURCE_DIR}/host/MSpecialFolders.cpp
  ${CMAKE_SOURCE_DIR}/host/MUtilities.cpp
  ${CMAKE_SOURCE_DIR}/host/MsgBox.cpp
  ${CMAKE_SOURCE_DIR}/host/OutputCommand.cpp
  ${CMAKE_SOURCE_DIR}/host/ProtocolHandler.cpp
  ${CMAKE_SOURCE_DIR}/host/StartupJob.cpp
  ${CMAKE_SOURCE_DIR}/host/TerminateListener.cpp
  ${CMAKE_SOURCE_DIR}/host/UserDialog.cpp
  ${CMAKE_SOURCE_DIR}/host/UserSettings.cpp
  ${CMAKE_SOURCE_DIR}/host/WizardCommand.cpp
  ${CMAKE_SOURCE_DIR}/host/dsrConnect.cpp
)
