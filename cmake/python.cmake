# The Python package (python/guidescreen_codec, ctypes over the shared library): the interpreter
# its tests run with, and where it is installed.
include(GNUInstallDirs)

# Debian's python3 first: the package is installed where it searches, and the tests must import
# it as users do. An interpreter earlier in PATH (pyenv's, a virtual environment's) has other
# search paths; it is the fallback on systems without /usr/bin/python3.
find_program(GSC_PYTHON3 python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_program(GSC_PYTHON3 python3)

# Debian's python3 searches /usr/lib/python3/dist-packages (distribution packages, any 3.X) and
# /usr/local/lib/python3.X/dist-packages (local installs), but not
# /usr/local/lib/python3/dist-packages: no one directory serves both prefixes. So the prefix /usr
# (the Debian package) gets lib/python3/dist-packages, and any other prefix the versioned
# directory of the python3 found here, which is right for /usr/local; elsewhere PYTHONPATH names
# it, whichever it is. Chosen anew when the prefix changes, unless given.
set(GSC_PYTHON_INSTALL_DIR "" CACHE STRING
    "Where the Python package is installed, relative to the prefix (empty: from the prefix)")
set(GSC_PYTHON_DIR ${GSC_PYTHON_INSTALL_DIR})
if(NOT GSC_PYTHON_DIR AND GSC_PYTHON3 AND NOT CMAKE_INSTALL_PREFIX MATCHES "^/usr/?$")
  execute_process(COMMAND ${GSC_PYTHON3} -c "import sys; print('%d.%d' % sys.version_info[:2])"
                  OUTPUT_VARIABLE gsc_python_version OUTPUT_STRIP_TRAILING_WHITESPACE
                  RESULT_VARIABLE gsc_python_failed)
  if(NOT gsc_python_failed AND gsc_python_version)
    set(GSC_PYTHON_DIR lib/python${gsc_python_version}/dist-packages)
  endif()
endif()
if(NOT GSC_PYTHON_DIR)
  set(GSC_PYTHON_DIR lib/python3/dist-packages)
endif()
