# What `cpack` makes of an installation: a Debian package, a zip for Windows, an archive elsewhere.
find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
mark_as_advanced(DPKG_SHLIBDEPS)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
elseif(DPKG_SHLIBDEPS)
  set(CPACK_GENERATOR DEB)
else()
  set(CPACK_GENERATOR TGZ)
endif()
set(CPACK_PACKAGE_VENDOR ${PROJECT_NAME})
set(CPACK_PACKAGE_CONTACT ${PROJECT_NAME})
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
  WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION vcs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS git)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS subversion)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"filewatcher does the slow work of the Tamarin text editor (watching files,
asking Git, Subversion and Perforce) on background threads, so that the
editor never waits for a disk, a network or a version-control tool.

txhost is a headless editor that loads the module: it shows on a command
line what the module does. The headers, a stand-in of the editor and a CMake
package are for those who write a host of their own.")
include(CPack)
