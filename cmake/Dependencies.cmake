# The libraries that we use, as targets: CLI11::CLI11, nlohmann_json::nlohmann_json, pugixml::pugixml, GTest::gtest_main,
# and, for this system only, PkgConfig::GLib.
# Here they are the system's. For another system they are built from Debian's sources, and of /usr/include only the two
# header-only ones may be seen.
if(NOT CMAKE_CROSSCOMPILING)
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  find_package(pugixml REQUIRED)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(GLib REQUIRED IMPORTED_TARGET glib-2.0)
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

if(FILEWATCHER_TESTS)
  set(BUILD_GMOCK OFF)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest parts/googletest EXCLUDE_FROM_ALL)
endif()
