# Sources of the interactive flowcharting subsystem: the cell text language
# and the run. Built into the add-in's library.
set(FLOWCHARTING_SOURCES
  ${CMAKE_SOURCE_DIR}/flowcharting/CInteractiveFlowcharter.cpp
  ${CMAKE_SOURCE_DIR}/flowcharting/CTextParser.cpp
)
