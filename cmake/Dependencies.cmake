# The libraries that we use, as targets: CLI11::CLI11, nlohmann_json::nlohmann_json, pugixml::pugixml, PkgConfig::Utf8proc,
# GTest::gtest_main, and, for this system only, PkgConfig::GLib and PkgConfig::Ncurses.
# Here they are the system's. For another system they are built from Debian's sources, and of /usr/include only the two
# header-only ones may be seen.
if(NOT CMAKE_CROSSCOMPILING)
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  find_package(pugixml REQUIRED)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(Utf8proc REQUIRED IMPORTED_TARGET libutf8proc)
  if(NOT WIN32)
    pkg_check_modules(GLib REQUIRED IMPORTED_TARGET glib-2.0)
    pkg_check_modules(Ncurses REQUIRED IMPORTED_TARGET ncursesw)
  endif()
  if(FILEWATCHER_TESTS)
    find_package(GTest REQUIRED)
  endif()
  return()
endif()

set(headers ${CMAKE_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${headers})
foreach(library CLI nlohmann)
  file(CREATE_LINK /usr/include/${library} ${headers}/${library} SYMBOLIC)
endforeach()
foreach(target CLI11::CLI11 nlohmann_json::nlohmann_json)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${headers})
endforeach()

set(pugixml_source ${CMAKE_SOURCE_DIR}/build/sources/pugixml/src)
add_library(pugixml STATIC ${pugixml_source}/pugixml.cpp)
target_include_directories(pugixml SYSTEM PUBLIC ${pugixml_source})
add_library(pugixml::pugixml ALIAS pugixml)

enable_language(C)
set(utf8proc_source ${CMAKE_SOURCE_DIR}/build/sources/utf8proc)
add_library(utf8proc STATIC ${utf8proc_source}/utf8proc.c)
target_include_directories(utf8proc SYSTEM PUBLIC ${utf8proc_source})
target_compile_definitions(utf8proc PUBLIC UTF8PROC_STATIC)
set_target_properties(utf8proc PROPERTIES COMPILE_OPTIONS -w)  # not our options for C++
add_library(PkgConfig::Utf8proc ALIAS utf8proc)

if(FILEWATCHER_TESTS)
  set(BUILD_GMOCK OFF)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest parts/googletest EXCLUDE_FROM_ALL)
endif()
