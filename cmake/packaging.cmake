# Debian packages from the install components (cmake/install.cmake):
#   cmake -S . -B build/package -DBUILD_SHARED_LIBS=ON -DCMAKE_INSTALL_PREFIX=/usr
#   cmake --build build/package && (cd build/package && cpack -G DEB)
# gives libguidescreen-codec<major> (the shared library), libguidescreen-codec-dev (headers, CMake
# package, pkg-config file; depends on the JsonCpp development package), gscodec and
# python3-guidescreen-codec (the Python package). Tools/check-package installs and uses them.
set(CPACK_PACKAGE_NAME guidescreen-codec)
set(CPACK_PACKAGE_VENDOR "the guidescreen-codec authors")
set(CPACK_PACKAGE_CONTACT "the guidescreen-codec authors")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_CURRENT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL ${GSC_COMPONENTS})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# gscodec links the library of this very build, which is in no package yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_CURRENT_BINARY_DIR})

set(gsc_exact "(= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${GSC_PACKAGE_runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# Each description's first line is its package's summary.
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Guide screen client codecs: C records to and from JSON
The shared library: serialize and deserialize for the seventeen operations of the
guide screen client, the record codecs, and a C interface over JSON text.")
# An shlibs file for packages built against this one, and the ldconfig trigger.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME ${GSC_PACKAGE_dev})
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${GSC_PACKAGE_runtime} ${gsc_exact}, libjsoncpp-dev")
set(CPACK_DEBIAN_DEV_DESCRIPTION "Guide screen client codecs: development files
Headers, the CMake package (find_package(guidescreen_codec CONFIG)) and the
pkg-config file (guidescreen_codec).")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ${GSC_PACKAGE_tools})
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${GSC_PACKAGE_runtime} ${gsc_exact}")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "Inspector of guide screen client records and JSON bodies
gscodec shows what a caller's record receives from a device answer and what a
request sends for a record, for every operation of the guide screen client.")

# Architecture-specific although pure Python: it names the library by its multiarch directory.
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME ${GSC_PACKAGE_python})
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${GSC_PACKAGE_runtime} ${gsc_exact}, python3")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "Guide screen client codecs for Python
The Python package guidescreen_codec: the operations' records in field-named
form (dicts) to request JSON and from answer JSON, with the findings, through
ctypes over the shared library.")

include(CPack)
