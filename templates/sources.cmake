# Sources of the templates subsystem. Built into the add-in's library.
set(TEMPLATES_SOURCES
  ${CMAKE_SOURCE_DIR}/templates/TemplateFile.cpp
)
