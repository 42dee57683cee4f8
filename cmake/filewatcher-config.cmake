# find_package(filewatcher): filewatcher::editor is the stand-in editor, for a host to link. filewatcher::module is the module;
# a host loads it from $<TARGET_FILE:filewatcher::module>.
include(CMakeFindDependencyMacro)
find_dependency(Threads)
include(${CMAKE_CURRENT_LIST_DIR}/filewatcher-targets.cmake)
