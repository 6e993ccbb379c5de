# What cpack makes: a Debian package with the libraries, and one with what is needed to compile.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tqlib)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "the tqlib developers <tqlib@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libtqlib${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
  "Strings, dates and times, paths, files and programs, settings, a trace
log, record files, a calculator, bitmaps and dialogs, for programs that
work with numbers. These are the libraries that such programs need at run
time.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "Strings, dates and times, paths, files and programs, settings, a trace
log, record files, a calculator, bitmaps and dialogs, for programs that
work with numbers. These are the headers, and what CMake and pkg-config
need to find the libraries.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtqlib-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libtqlib${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
include(CPack)
