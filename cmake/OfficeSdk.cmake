# Locates the office and its SDK, generates the C++ headers of the office API
# into the build tree, and offers the imported target office::uno.

set(OFFICE_HOME "/usr/lib/libreoffice" CACHE PATH "Office installation folder")
set(OFFICE_PROGRAM "${OFFICE_HOME}/program")
set(OFFICE_SDK "${OFFICE_HOME}/sdk")

find_program(CPPUMAKER cppumaker PATHS "${OFFICE_SDK}/bin" NO_DEFAULT_PATH)
if(NOT CPPUMAKER)
  message(FATAL_ERROR "cppumaker not found under ${OFFICE_SDK}/bin: install libreoffice-dev")
endif()

set(OFFICE_TYPE_LIBS "${OFFICE_PROGRAM}/types.rdb" "${OFFICE_PROGRAM}/types/offapi.rdb")
set(OFFICE_API_INCLUDE "${CMAKE_BINARY_DIR}/office-api")
set(_stamp "${OFFICE_API_INCLUDE}/.generated")
if(NOT EXISTS "${_stamp}")
  file(MAKE_DIRECTORY "${OFFICE_API_INCLUDE}")
  message(STATUS "Generating office API headers")
  execute_process(
    COMMAND "${CPPUMAKER}" -Gc "-O${OFFICE_API_INCLUDE}" ${OFFICE_TYPE_LIBS}
    RESULT_VARIABLE _rc)
  if(NOT _rc EQUAL 0)
    message(FATAL_ERROR "cppumaker failed (${_rc})")
  endif()
  file(WRITE "${_stamp}" "")
endif()

# office::runtime links the office's runtime libraries; office::uno adds the
# API headers, for office/, driver/, the bench and the components of host/.
add_library(office::runtime INTERFACE IMPORTED)
target_link_directories(office::runtime INTERFACE "${OFFICE_SDK}/lib")
target_link_libraries(office::runtime INTERFACE uno_cppuhelpergcc3 uno_cppu uno_salhelpergcc3 uno_sal)
target_link_options(office::runtime INTERFACE "-Wl,-rpath,${OFFICE_PROGRAM}")

add_library(office::uno INTERFACE IMPORTED)
target_include_directories(office::uno INTERFACE "${OFFICE_API_INCLUDE}" "${OFFICE_SDK}/include")
target_compile_definitions(office::uno INTERFACE LINUX UNX CPPU_ENV=gcc3)
target_link_libraries(office::uno INTERFACE office::runtime)
