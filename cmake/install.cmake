# Installation, split into the components the Debian packages are made of:
#   runtime  the shared library (libguidescreen_codec.so.<major>);
#   dev      headers, the link-time library name, the CMake package and the pkg-config file;
#   tools    gscodec and its manual page (tools/gscodec/CMakeLists.txt);
#   python   the Python package over the shared library (a shared build only).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(GSC_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/guidescreen_codec)
# Debian's names: the runtime package carries the SONAME's major version.
set(GSC_PACKAGE_runtime libguidescreen-codec${PROJECT_VERSION_MAJOR})
set(GSC_PACKAGE_dev libguidescreen-codec-dev)
set(GSC_PACKAGE_tools gscodec)
set(GSC_PACKAGE_python python3-guidescreen-codec)
set(GSC_COMPONENTS runtime dev tools)

# A static library's users also link its private parser. The pkg-config file then requires it
# outright: the installed library is the static one alone, so every user links it, with or
# without --static.
if(BUILD_SHARED_LIBS)
  set(GSC_STATIC_LIBRARY OFF)
  set(GSC_PC_CFLAGS "")
  set(GSC_PC_REQUIRES "jsoncpp")
else()
  set(GSC_STATIC_LIBRARY ON)
  set(GSC_PC_CFLAGS " -DGSC_STATIC")
  set(GSC_PC_REQUIRES "jsoncpp simdjson")
endif()

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(FILES ${GSC_GENERATED_INCLUDE}/guidescreen_codec/version.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/guidescreen_codec COMPONENT dev)
install(TARGETS guidescreen_codec EXPORT guidescreen_codecTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(EXPORT guidescreen_codecTargets NAMESPACE guidescreen_codec:: DESTINATION ${GSC_CMAKE_DIR}
        COMPONENT dev)
configure_package_config_file(cmake/guidescreen_codecConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/guidescreen_codecConfig.cmake INSTALL_DESTINATION ${GSC_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/guidescreen_codecConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/guidescreen_codecConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/guidescreen_codecConfigVersion.cmake
        DESTINATION ${GSC_CMAKE_DIR} COMPONENT dev)

# The .pc file finds its prefix from where it lies, so an installed tree may be moved. A static
# library's users compile with GSC_STATIC, as the CMake target's users do.
file(RELATIVE_PATH GSC_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/guidescreen_codec.pc.in ${CMAKE_CURRENT_BINARY_DIR}/guidescreen_codec.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/guidescreen_codec.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

# The Python package loads the shared library through ctypes; a static library has nothing for it
# to load. It finds the library installed with it through the path from its own directory to
# the library, written at build time, so a moved tree keeps working.
if(BUILD_SHARED_LIBS)
  include(cmake/python.cmake)
  list(APPEND GSC_COMPONENTS python)
  set(gsc_python_package ${GSC_PYTHON_DIR}/guidescreen_codec)
  if(IS_ABSOLUTE ${gsc_python_package})
    set(gsc_python_full ${gsc_python_package})
  else()
    set(gsc_python_full ${CMAKE_INSTALL_PREFIX}/${gsc_python_package})
  endif()
  file(RELATIVE_PATH GSC_PYTHON_TO_LIBDIR ${gsc_python_full} ${CMAKE_INSTALL_FULL_LIBDIR})
  string(REGEX REPLACE "/$" "" GSC_PYTHON_TO_LIBDIR "${GSC_PYTHON_TO_LIBDIR}")
  if(GSC_PYTHON_TO_LIBDIR STREQUAL "")
    set(GSC_PYTHON_TO_LIBDIR .)
  endif()
  configure_file(python/guidescreen_codec/_library_path.py.in
                 ${CMAKE_CURRENT_BINARY_DIR}/python/_library_path.py.in @ONLY)
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/python/_library_path.py
       INPUT ${CMAKE_CURRENT_BINARY_DIR}/python/_library_path.py.in)
  install(FILES python/guidescreen_codec/__init__.py python/guidescreen_codec/_library.py
                python/guidescreen_codec/py.typed
                ${CMAKE_CURRENT_BINARY_DIR}/python/_library_path.py
          DESTINATION ${gsc_python_package} COMPONENT python)
endif()

# Every package carries the licence, where Debian keeps it.
foreach(component ${GSC_COMPONENTS})
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${GSC_PACKAGE_${component}}
          RENAME copyright COMPONENT ${component})
endforeach()
