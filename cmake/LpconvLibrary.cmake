# lpconv_export_library(<target> <name>): makes <target> one of the installed libraries,
# lpconv::<name> for its users. Its public headers are the .h files of its folder (not those of
# internal/), installed as include/lpconv/<name>/; inside the build tree the repository root is
# the include root, so every include reads <lpconv/<name>/...> in both worlds.
function(lpconv_export_library target name)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  # Users get C++20 from the target itself, whatever their own default is.
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  # Before 1.0 every minor release may change the binary interface of the shared libraries.
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  if(LPCONV_INSTALL)
    install(TARGETS ${target} EXPORT lpconvTargets
      ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
      LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
      RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/lpconv/${name}
      FILES_MATCHING PATTERN "*.h"
      PATTERN "internal" EXCLUDE)
  endif()
endfunction()
