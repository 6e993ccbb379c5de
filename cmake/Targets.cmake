# What all targets of the project have in common.

# tq_compile(TARGET): language and warnings of our own sources.
function(tq_compile target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  # Large files and late dates, for 32-bit builds, too. No public header depends on these.
  target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
  # Functions of one library call each other directly.
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(TQLIB_STRICT)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# tq_library(NAME ALIAS SOURCES... LINKS...): the shared library NAME, made of an object library
# NAME_objects that the tests of internals link instead.
function(tq_library name alias)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name}_objects OBJECT ${arg_SOURCES})
  tq_compile(${name}_objects)
  target_include_directories(${name}_objects PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

  add_library(${name} $<TARGET_OBJECTS:${name}_objects>)
  add_library(tqlib::${alias} ALIAS ${name})
  set_target_properties(${name} PROPERTIES
    EXPORT_NAME ${alias}
    LINKER_LANGUAGE CXX
    INSTALL_RPATH "$ORIGIN"
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  get_target_property(kind ${name} TYPE)
  if(kind STREQUAL SHARED_LIBRARY)
    target_link_options(${name} PRIVATE
      -Wl,--no-undefined -Wl,-Bsymbolic-functions
      -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
  endif()
  foreach(library IN LISTS arg_LINKS)
    target_link_libraries(${name} PUBLIC ${library})
  endforeach()
endfunction()
