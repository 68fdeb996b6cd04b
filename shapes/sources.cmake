# Sources of the shape engine: creating, sizing, formatting and styling the
# symbols, their flow lines and their alignment. Built into the add-in's
# library.
set(SHAPES_SOURCES
  ${CMAKE_SOURCE_DIR}/shapes/CShapeFormatter.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CShapeDimensions.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CPageLayout.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CShapeAdder.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CShapeWizard.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CFlowLineFormatter.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CFlowLineAdder.cpp
  ${CMAKE_SOURCE_DIR}/shapes/MBranchLabels.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CDecisionLabelAdder.cpp
  ${CMAKE_SOURCE_DIR}/shapes/CShapeAlignment.cpp
  ${CMAKE_SOURCE_DIR}/shapes/GroupBox.cpp
)
