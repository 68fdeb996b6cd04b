# Sources of the templates: the options of one template, the generator that
# turns them into a saved template workbook, and the reader of what a template
# file says about itself. Built into the add-in's library.
set(TEMPLATES_SOURCES
  ${CMAKE_SOURCE_DIR}/templates/CTemplateProperties.cpp
  ${CMAKE_SOURCE_DIR}/templates/CTemplateGenerator.cpp
  ${CMAKE_SOURCE_DIR}/templates/TemplateFile.cpp
)
