# Sources of the settings dialogs and small prompts. Built into the add-in's
# library.
set(DIALOGS_SOURCES
  ${CMAKE_SOURCE_DIR}/dialogs/frmBranchLabelPrompt.cpp
)
