# Sources of the settings dialogs and small prompts. Built into the add-in's
# library.
set(DIALOGS_SOURCES
  ${CMAKE_SOURCE_DIR}/dialogs/CheckList.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/FlowLineSides.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/PickCell.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/PictureChoices.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/PictureGrid.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/SpacingBox.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/SymbolList.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmInsertTree.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmAbout.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmBranchLabelPrompt.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmFlowLineInsert.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmFlowLinePrompt.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmFlowchartWizard.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmFont.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmLineStyles.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmOpenWalkthrough.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmRestart.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmStart.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmStyleWizard.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmStyles.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmTemplateGenerator.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmTemplates.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmTerminator.cpp
  ${CMAKE_SOURCE_DIR}/dialogs/frmTextBox.cpp
)
