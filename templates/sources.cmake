# Sources of the templates: the options of one template and the generator
# that turns them into a saved template workbook. Built into the add-in's
# library.
set(TEMPLATES_SOURCES
  ${CMAKE_SOURCE_DIR}/templates/CTemplateProperties.cpp
  ${CMAKE_SOURCE_DIR}/templates/CTemplateGenerator.cpp
)
