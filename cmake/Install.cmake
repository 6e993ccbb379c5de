# What cmake --install puts into place: both libraries, their headers, the CMake package "tqlib" and a
# pkg-config file. The libraries alone are the component "runtime", the rest is "development".
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/tqlib)

install(TARGETS tqplatform tqlib EXPORT tqlibTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

# Headers of internals stay at home, but for those that public headers include.
set(internal_headers
  Button.h CharacterBlock.h ColumnNumber.h ComboBox.h ControlClasses.h CStr.h CStrPool.h
  CStrRecord.h Descriptor.h DibMemory.h EditControl.h EditText.h FileHandle.h FileReplacement.h
  FormatNumber.h InformationBitmap.h LibraryEntry.h Limits.h NumberField.h NumberText.h
  ObjectTable.h Palette.h QuestionDialog.h Resources.h RunLength.h ScanNumber.h SettingsDraft.h
  SettingsFile.h SettingsReader.h SharedResult.h StaticControl.h SystemCalls.h Terminal.h
  TerminalKeys.h TextForm.h TextScreen.h TextView.h TQHpKeywords.h TQHpOperations.h TQHpToken.h
  TQStringStreams.h VersionBlock.h)
foreach(library IN ITEMS tqplatform tqlib)
  set(excluded)
  foreach(header IN LISTS internal_headers)
    list(APPEND excluded PATTERN ${header} EXCLUDE)
  endforeach()
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/${library} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development FILES_MATCHING PATTERN "*.h" ${excluded})
endforeach()

install(EXPORT tqlibTargets NAMESPACE tqlib:: DESTINATION ${package_folder}
  COMPONENT development)
configure_package_config_file(cmake/tqlibConfig.cmake.in tqlibConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(tqlibConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tqlibConfig.cmake ${PROJECT_BINARY_DIR}/tqlibConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

set(TQLIB_PC_OPTIONS)
if(NOT BUILD_SHARED_LIBS)
  set(TQLIB_PC_OPTIONS "-Wl,--undefined=tqlibEntry ")
endif()
configure_file(cmake/tqlib.pc.in tqlib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tqlib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

include(cmake/Packages.cmake)
