# The CMake package (find_package(lpconv CONFIG)), the pkg-config file, the man pages and the
# documents. Each library and program installs itself where it is defined.
include(CMakePackageConfigHelpers)

set(LPCONV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/lpconv)
install(EXPORT lpconvTargets NAMESPACE lpconv:: DESTINATION ${LPCONV_CMAKE_DIR})
configure_package_config_file(cmake/lpconvConfig.cmake.in
  ${PROJECT_BINARY_DIR}/lpconvConfig.cmake
  INSTALL_DESTINATION ${LPCONV_CMAKE_DIR})
# Before 1.0 only a release of the same minor version is compatible.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/lpconvConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
# The config file finds GMP again with the same finder the build used.
install(FILES
  ${PROJECT_BINARY_DIR}/lpconvConfig.cmake
  ${PROJECT_BINARY_DIR}/lpconvConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/FindGMP.cmake
  DESTINATION ${LPCONV_CMAKE_DIR})

# pkg-config: relative to the .pc file's own folder, so the installed tree can be moved (a
# scratch root, a different prefix at packaging time).
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(LPCONV_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(LPCONV_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
  set(LPCONV_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
else()
  file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" up "${up}")
  set(LPCONV_PC_PREFIX "\${pcfiledir}/${up}")
  set(LPCONV_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(LPCONV_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
set(LPCONV_PC_DEFINES "")
if(NOT LPCONV_SHARED_ONE)
  set(LPCONV_PC_DEFINES " -DLPCONV_SHARED_ONE=0")
endif()
configure_file(cmake/lpconv.pc.in ${PROJECT_BINARY_DIR}/lpconv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lpconv.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES man/lpconv.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES README.md CHANGELOG.md LICENSE docs/library.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
