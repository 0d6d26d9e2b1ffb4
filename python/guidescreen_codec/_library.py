"""Loading the shared library and declaring the C functions the package calls.

The library is looked for, in order: at GUIDESCREEN_CODEC_LIBRARY (a full path; when set, nothing
else is tried, so a test never runs against another copy by accident), beside the package where
CMake installed them together (_library_path, written at build time), and by the dynamic
loader's own search (ctypes.util.find_library).
"""

from __future__ import annotations

import ctypes
import ctypes.util
import os
import threading
from typing import List, Optional

ENVIRONMENT_VARIABLE = "GUIDESCREEN_CODEC_LIBRARY"

_size_p = ctypes.POINTER(ctypes.c_size_t)

# (name, result type, argument types) of every function the package calls.
_PROTOTYPES = (
    ("gsc_status_message", ctypes.c_char_p, [ctypes.c_int]),
    ("gsc_version", ctypes.c_char_p, []),
    ("gsc_operation_count", ctypes.c_size_t, []),
    ("gsc_operation_name", ctypes.c_char_p, [ctypes.c_size_t]),
    ("gsc_operation_lookup", ctypes.c_char_p, [ctypes.c_char_p]),
    ("gsc_operation_suggestion", ctypes.c_char_p, [ctypes.c_char_p, ctypes.c_size_t]),
    ("gsc_request_size", ctypes.c_size_t, [ctypes.c_char_p]),
    ("gsc_answer_size", ctypes.c_size_t, [ctypes.c_char_p]),
    ("gsc_report_new", ctypes.c_void_p, []),
    ("gsc_report_free", None, [ctypes.c_void_p]),
    ("gsc_report_count", ctypes.c_size_t, [ctypes.c_void_p]),
    ("gsc_report_kind", ctypes.c_char_p, [ctypes.c_void_p, ctypes.c_size_t]),
    ("gsc_report_path", ctypes.c_char_p, [ctypes.c_void_p, ctypes.c_size_t]),
    ("gsc_report_detail", ctypes.c_char_p, [ctypes.c_void_p, ctypes.c_size_t]),
    ("gsc_encode_fields", ctypes.c_int,
     [ctypes.c_char_p, ctypes.c_char_p, ctypes.c_size_t, ctypes.c_void_p, ctypes.c_size_t, _size_p,
      ctypes.c_void_p, ctypes.c_void_p, ctypes.c_size_t]),
    ("gsc_decode_fields", ctypes.c_int,
     [ctypes.c_char_p, ctypes.c_char_p, ctypes.c_size_t, ctypes.c_uint32, ctypes.c_uint32,
      ctypes.c_uint, ctypes.c_void_p, ctypes.c_size_t, _size_p, ctypes.c_void_p, ctypes.c_void_p,
      ctypes.c_size_t]),
    ("gsc_record_to_fields", ctypes.c_int,
     [ctypes.c_char_p, ctypes.c_int, ctypes.c_void_p, ctypes.c_uint, ctypes.c_void_p,
      ctypes.c_size_t, _size_p]),
    ("gsc_record_from_fields", ctypes.c_int,
     [ctypes.c_char_p, ctypes.c_int, ctypes.c_char_p, ctypes.c_size_t, ctypes.c_void_p,
      ctypes.c_size_t, ctypes.c_void_p, ctypes.c_size_t, _size_p, ctypes.c_void_p,
      ctypes.c_size_t]),
)

_lock = threading.Lock()
_loaded: Optional[ctypes.CDLL] = None


def _installed_path() -> Optional[str]:
    """The library installed with this package, if CMake installed the package."""
    try:
        from . import _library_path  # type: ignore[attr-defined]
    except ImportError:  # the source tree: nothing was installed
        return None
    return os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)),
                                         _library_path.LIBRARY))


def _load() -> ctypes.CDLL:
    explicit = os.environ.get(ENVIRONMENT_VARIABLE)
    if explicit:
        try:
            return ctypes.CDLL(explicit)
        except OSError as error:
            raise OSError(f"{ENVIRONMENT_VARIABLE}={explicit} cannot be loaded: {error}") from None
    tried: List[str] = []
    installed = _installed_path()
    if installed is not None:
        tried.append(installed)
        if os.path.exists(installed):
            return ctypes.CDLL(installed)
    found = ctypes.util.find_library("guidescreen_codec")
    if found is not None:
        return ctypes.CDLL(found)
    tried.append("the dynamic loader's search for libguidescreen_codec")
    raise OSError("the guidescreen_codec shared library was not found (tried: " +
                  "; ".join(tried) + f"); set {ENVIRONMENT_VARIABLE} to its full path")


def library() -> ctypes.CDLL:
    """The shared library with its functions declared, loaded on first use."""
    global _loaded
    if _loaded is not None:
        return _loaded
    with _lock:
        if _loaded is None:
            lib = _load()
            for name, result, arguments in _PROTOTYPES:
                function = getattr(lib, name)
                function.restype = result
                function.argtypes = arguments
            _loaded = lib
        return _loaded
