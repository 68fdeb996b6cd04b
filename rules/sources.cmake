# Sources of the rules subsystem: the ini engine, the settings and the symbol
# rules. Built into the add-in's library.
set(RULES_SOURCES
  ${CMAKE_SOURCE_DIR}/rules/CIniFileHandler.cpp
  ${CMAKE_SOURCE_DIR}/rules/TextEncoding.cpp
  ${CMAKE_SOURCE_DIR}/rules/Text.cpp
  ${CMAKE_SOURCE_DIR}/rules/TextConvert.cpp
  ${CMAKE_SOURCE_DIR}/rules/CConfig.cpp
  ${CMAKE_SOURCE_DIR}/rules/CIniDataAccess.cpp
  ${CMAKE_SOURCE_DIR}/rules/CSymbolData.cpp
  ${CMAKE_SOURCE_DIR}/rules/CIniSymbolDataAccess.cpp
)
