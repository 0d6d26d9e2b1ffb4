# Installed programs find the library they were installed with, wherever the tree was installed
# or moved to: their run path names the library directory relative to the program's own
# ($ORIGIN/../lib/<multiarch> for the usual layout), so no environment variable is needed.
include(GNUInstallDirs)
function(gsc_install_run_path target)
  if(NOT BUILD_SHARED_LIBS OR APPLE OR WIN32)
    return()
  endif()
  file(RELATIVE_PATH to_libdir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libdir}")
endfunction()
