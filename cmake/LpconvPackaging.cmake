# cpack -G DEB: one package with the program, the man page, the headers, the libraries, the
# CMake package and the pkg-config file. Only for lpconv's own build, never inside a consumer's.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(CPACK_PACKAGE_NAME lpconv)
set(CPACK_PACKAGE_VENDOR "the lpconv developers")
set(CPACK_PACKAGE_CONTACT "the lpconv developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
# The headers include <gmp.h> and the libraries need libgmp: users of the library need the
# development package, the program needs only what dpkg-shlibdeps finds.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libgmp-dev")
if(LPCONV_PYTHON)
  # The module is built for one interpreter version; numpy carries the CSR arrays.
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "${CPACK_DEBIAN_PACKAGE_DEPENDS}, python3 (>= ${LPCONV_PYTHON_VERSION}), python3 (<< ${LPCONV_PYTHON_VERSION}.99), python3-numpy")
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS "python3-scipy, python3-gmpy2")
endif()
find_program(LPCONV_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(LPCONV_DPKG_SHLIBDEPS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()
set(CPACK_SOURCE_IGNORE_FILES "/build/" "/\\\\.git")
include(CPack)
