# What `cmake --install` lays out, with the CMake package "filewatcher" for hosts that are built on the stand-in editor.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# The libraries are loaded by their path or found by a program's own, so they lie in a folder of ours. Windows looks beside the
# program.
set(libraries ${CMAKE_INSTALL_LIBDIR}/filewatcher)
set(headers ${CMAKE_INSTALL_INCLUDEDIR}/filewatcher)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/filewatcher)
if(WIN32)
  set(module ${CMAKE_INSTALL_BINDIR})
  set(documents .)
else()
  set(module ${libraries})
  set(documents ${CMAKE_INSTALL_DOCDIR})
  file(RELATIVE_PATH module_from_program ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/filewatcher)
  target_compile_definitions(txhost PRIVATE FILEWATCHER_MODULE_FOLDER="${module_from_program}")
  set_target_properties(txhost PROPERTIES INSTALL_RPATH "$ORIGIN/${module_from_program}")
endif()

set_target_properties(filewatcher PROPERTIES EXPORT_NAME module)
install(TARGETS txhost)
install(TARGETS filewatcher editor txapi txclasses common EXPORT filewatcher-targets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${module}
  ARCHIVE DESTINATION ${libraries}
  INCLUDES DESTINATION ${headers})

# What a host includes: the services, the stand-in, the contract of the module, what its callbacks hand out; and what these include.
file(GLOB wanted CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR} txapi/*.h txapi/*.def)
list(APPEND wanted editor/Editor.h filewatcher/txDllInit.h filewatcher/RegisteredFunctions.h filewatcher/StatusCodes.h
  common/cmStatusException.h filewatcher/git/commits/GitCommitInfo.h filewatcher/git/graph/GraphRow.h)
set(installed "")
while(wanted)
  list(POP_FRONT wanted header)
  if(NOT header IN_LIST installed)
    list(APPEND installed ${header})
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${header} DESTINATION ${headers}/${folder})
    file(STRINGS ${header} includes REGEX "^#include \"")
    list(TRANSFORM includes REPLACE "^#include \"(.*)\"$" "\\1")
    list(APPEND wanted ${includes})
  endif()
endwhile()

install(FILES README.md CONTRIBUTING.md CHANGELOG.md DESTINATION ${documents})
install(DIRECTORY docs DESTINATION ${documents} PATTERN "*.md" EXCLUDE)

# The pages lead to headers, which lie elsewhere than in the sources.
cmake_path(SET docs NORMALIZE /${documents}/docs)
file(RELATIVE_PATH headers_from_docs ${docs} /${headers})
file(GLOB pages CONFIGURE_DEPENDS docs/*.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${pages})
foreach(page ${pages})
  cmake_path(GET page FILENAME name)
  file(READ ${page} text)
  string(REGEX REPLACE "]\\(\\.\\./([a-z]+/)" "](${headers_from_docs}/\\1" text "${text}")
  file(WRITE ${CMAKE_BINARY_DIR}/docs/${name} "${text}")
  install(FILES ${CMAKE_BINARY_DIR}/docs/${name} DESTINATION ${documents}/docs)
endforeach()

# The manual page is made of the help that the program prints.
if(NOT WIN32)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/txhost.1.gz
    COMMAND ${CMAKE_SOURCE_DIR}/tools/manpage $<TARGET_FILE:txhost> >${CMAKE_BINARY_DIR}/txhost.1
    COMMAND gzip -9nfk ${CMAKE_BINARY_DIR}/txhost.1
    DEPENDS txhost ${CMAKE_SOURCE_DIR}/tools/manpage)
  add_custom_target(manpage ALL DEPENDS ${CMAKE_BINARY_DIR}/txhost.1.gz)
  install(FILES ${CMAKE_BINARY_DIR}/txhost.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES txhost/txhost.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME txhost)
endif()

write_basic_package_version_file(filewatcher-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES cmake/filewatcher-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/filewatcher-config-version.cmake DESTINATION ${package})
install(EXPORT filewatcher-targets NAMESPACE filewatcher:: DESTINATION ${package})
