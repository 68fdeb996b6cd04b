# Sources of the flowchart tools that work on the shapes already on a sheet.
# Built into the add-in's library.
set(TOOLS_SOURCES
  ${CMAKE_SOURCE_DIR}/tools/BranchInserter.cpp
  ${CMAKE_SOURCE_DIR}/tools/CMermaidExport.cpp
  ${CMAKE_SOURCE_DIR}/tools/CMermaidImport.cpp
  ${CMAKE_SOURCE_DIR}/tools/CStyleWizard.cpp
  ${CMAKE_SOURCE_DIR}/tools/FlowchartWizard.cpp
  ${CMAKE_SOURCE_DIR}/tools/MermaidChart.cpp
  ${CMAKE_SOURCE_DIR}/tools/MermaidFile.cpp
  ${CMAKE_SOURCE_DIR}/tools/MermaidLayout.cpp
  ${CMAKE_SOURCE_DIR}/tools/MermaidReader.cpp
  ${CMAKE_SOURCE_DIR}/tools/MermaidShapes.cpp
  ${CMAKE_SOURCE_DIR}/tools/MermaidWriter.cpp
)
