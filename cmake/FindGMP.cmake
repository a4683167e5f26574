# Finds the GMP integer library (C interface) and defines the imported target GMP::GMP.
find_package(PkgConfig QUIET)
if(PKG_CONFIG_FOUND)
  pkg_check_modules(PC_GMP QUIET gmp)
endif()
find_path(GMP_INCLUDE_DIR gmp.h HINTS ${PC_GMP_INCLUDE_DIRS})
find_library(GMP_LIBRARY gmp HINTS ${PC_GMP_LIBRARY_DIRS})

# The version from gmp.h, for find_package(GMP 6.2): lpconv needs every fresh integer limbless.
if(GMP_INCLUDE_DIR AND EXISTS "${GMP_INCLUDE_DIR}/gmp.h")
  file(STRINGS "${GMP_INCLUDE_DIR}/gmp.h" GMP_VERSION_LINES
    REGEX "^#define __GNU_MP_VERSION(_MINOR|_PATCHLEVEL)? +[0-9]+")
  foreach(part "" _MINOR _PATCHLEVEL)
    string(REGEX REPLACE ".*#define __GNU_MP_VERSION${part} +([0-9]+).*" "\\1" GMP_PART${part}
      "${GMP_VERSION_LINES}")
  endforeach()
  set(GMP_VERSION "${GMP_PART}.${GMP_PART_MINOR}.${GMP_PART_PATCHLEVEL}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GMP
  REQUIRED_VARS GMP_LIBRARY GMP_INCLUDE_DIR
  VERSION_VAR GMP_VERSION
  REASON_FAILURE_MESSAGE "GMP was not found: install the Debian package libgmp-dev (apt-get install -y libgmp-dev).")

if(GMP_FOUND AND NOT TARGET GMP::GMP)
  add_library(GMP::GMP UNKNOWN IMPORTED)
  set_target_properties(GMP::GMP PROPERTIES
    IMPORTED_LOCATION "${GMP_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${GMP_INCLUDE_DIR}")
endif()
mark_as_advanced(GMP_INCLUDE_DIR GMP_LIBRARY)
