#!/usr/bin/env python3
"""Calls the shared library from Python through ctypes, as a caller without the C headers does:
records are byte buffers of the sizes the library gives, with dwSize set. Run by the tests with
the library's path; exits 0 when every check holds."""
import ctypes
import json
import struct
import sys

STATUS_OK = 0
STATUS_UNKNOWN_OPERATION = 1
STATUS_MALFORMED_JSON = 2
STATUS_CONVERSION_FAILED = 3
STATUS_BUFFER_TOO_SMALL = 4
STATUS_WRONG_RECORD_SIZE = 5

EM_ELEMENT_TYPE_TEXT = 3

lib = ctypes.CDLL(sys.argv[1])
lib.gsc_version.restype = ctypes.c_char_p
lib.gsc_status_message.restype = ctypes.c_char_p
lib.gsc_status_message.argtypes = [ctypes.c_int]
lib.gsc_operation_count.restype = ctypes.c_size_t
lib.gsc_operation_name.restype = ctypes.c_char_p
lib.gsc_operation_name.argtypes = [ctypes.c_size_t]
lib.gsc_request_size.restype = ctypes.c_size_t
lib.gsc_request_size.argtypes = [ctypes.c_char_p]
lib.gsc_answer_size.restype = ctypes.c_size_t
lib.gsc_answer_size.argtypes = [ctypes.c_char_p]
lib.gsc_serialize_json.argtypes = [ctypes.c_char_p, ctypes.c_void_p, ctypes.c_char_p,
                                   ctypes.c_size_t, ctypes.POINTER(ctypes.c_size_t)]
lib.gsc_deserialize_json.argtypes = [ctypes.c_char_p, ctypes.c_char_p, ctypes.c_size_t,
                                     ctypes.c_void_p, ctypes.c_char_p, ctypes.c_size_t]
lib.gsc_report_new.restype = ctypes.c_void_p
lib.gsc_report_free.argtypes = [ctypes.c_void_p]
lib.gsc_report_count.restype = ctypes.c_size_t
lib.gsc_report_count.argtypes = [ctypes.c_void_p]
for field in ("kind", "path", "detail"):
    getattr(lib, "gsc_report_" + field).restype = ctypes.c_char_p
    getattr(lib, "gsc_report_" + field).argtypes = [ctypes.c_void_p, ctypes.c_size_t]
lib.gsc_report_json.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_size_t,
                                ctypes.POINTER(ctypes.c_size_t)]
lib.gsc_deserialize_json_report.argtypes = [ctypes.c_char_p, ctypes.c_char_p, ctypes.c_size_t,
                                            ctypes.c_void_p, ctypes.c_uint, ctypes.c_void_p,
                                            ctypes.c_char_p, ctypes.c_size_t]
SKIP_FAILURES = 1
lib.gsc_element_entry_size.restype = ctypes.c_uint32
lib.gsc_element_entry_size.argtypes = [ctypes.c_int]
lib.gsc_element_append.argtypes = [ctypes.c_void_p, ctypes.c_uint32,
                                   ctypes.POINTER(ctypes.c_uint32), ctypes.c_int, ctypes.c_void_p]

failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("failed:", what, file=sys.stderr)


def record(size):
    """A zero-filled record of `size` bytes with its dwSize set."""
    buffer = ctypes.create_string_buffer(size)
    struct.pack_into("=I", buffer, 0, size)
    return buffer


def serialize(operation, in_record):
    length = ctypes.c_size_t(0)
    status = lib.gsc_serialize_json(operation, in_record, None, 0, ctypes.byref(length))
    if status != STATUS_BUFFER_TOO_SMALL:
        return status, None
    text = ctypes.create_string_buffer(length.value + 1)
    status = lib.gsc_serialize_json(operation, in_record, text, len(text), ctypes.byref(length))
    return status, text.value.decode("utf-8")


def deserialize(operation, answer, out_record):
    data = json.dumps(answer).encode("utf-8") if not isinstance(answer, bytes) else answer
    message = ctypes.create_string_buffer(256)
    status = lib.gsc_deserialize_json(operation, data, len(data), out_record, message,
                                      len(message))
    return status, message.value.decode("utf-8")


check(lib.gsc_version().decode().count(".") == 2, "version")
names = [lib.gsc_operation_name(i).decode() for i in range(lib.gsc_operation_count())]
check(len(names) == 17 and "GET_ALL_PROGRAMMES" in names, "operation names")
check(lib.gsc_operation_name(len(names)) is None, "no name past the end")

# GET_GUIDESCREEN_CFG_BYID: the request is dwSize and a 64-byte screen identifier.
op = b"GET_GUIDESCREEN_CFG_BYID"
request = record(lib.gsc_request_size(op))
check(len(request) == 68, "request size")
request[4:10] = b"hall-1"
status, text = serialize(op, request)
check(status == STATUS_OK and json.loads(text) == {"ScreenID": "hall-1"}, "serialize: %r" % text)

# The answer: dwSize, then the screen record (its own dwSize, then a 64-byte ID, then emStatus).
answer = record(lib.gsc_answer_size(op))
status, message = deserialize(op, {"DisplayScreenCfg": {"ID": "hall-1", "Status": 1}}, answer)
check(status == STATUS_OK and message == "", "deserialize: %s" % message)
check(answer.raw[8:15] == b"hall-1\0", "szID")
check(struct.unpack_from("=i", answer, 72)[0] == 2, "emStatus stored as the JSON value plus one")

# Failures come back as statuses with their messages.
status, message = deserialize(op, b'{"DisplayScreenCfg": ', answer)
check(status == STATUS_MALFORMED_JSON and message.startswith("malformed JSON: line 1, column 22"),
      "malformed: %s" % message)
status, message = deserialize(op, {"DisplayScreenCfg": {"Bright": [1]}}, answer)
check(status == STATUS_CONVERSION_FAILED and message.startswith("failed conversion: "),
      "conversion: %s" % message)
status, message = deserialize(b"GET_SCREEN", {}, answer)
check(status == STATUS_UNKNOWN_OPERATION and message.startswith("unknown operation: 'GET_SCREEN'"),
      "unknown operation: %s" % message)
status, message = deserialize(op, {}, record(lib.gsc_answer_size(op) - 4))
check(status == STATUS_WRONG_RECORD_SIZE, "wrong record size")
check(lib.gsc_status_message(STATUS_WRONG_RECORD_SIZE).decode() in message, "status message")

# Findings through the report handle: with GSC_SKIP_FAILURES, a value that cannot be converted is
# read as null and reading goes on.
report = lib.gsc_report_new()
data = json.dumps({"DisplayScreenCfg": {"ID": "hall-2", "Bright": "high", "Extra": 1}}).encode()
status = lib.gsc_deserialize_json_report(b"get_guidescreen_cfg_byid", data, len(data), answer,
                                         SKIP_FAILURES, report, None, 0)
check(status == STATUS_OK and answer.raw[8:15] == b"hall-2\0", "skip mode: %d" % status)
findings = [tuple(getattr(lib, "gsc_report_" + field)(report, i).decode()
                  for field in ("kind", "path", "detail"))
            for i in range(lib.gsc_report_count(report))]
check(findings == [("unknown-member", "DisplayScreenCfg.Extra",
                    "unknown member, ignored: number 1"),
                   ("conversion-failed", "DisplayScreenCfg.Bright",
                    "Value is not convertible to Int.")], "findings: %r" % findings)
length = ctypes.c_size_t(0)
check(lib.gsc_report_json(report, None, 0, ctypes.byref(length)) == STATUS_BUFFER_TOO_SMALL,
      "report JSON size")
text = ctypes.create_string_buffer(length.value + 1)
check(lib.gsc_report_json(report, text, len(text), ctypes.byref(length)) == STATUS_OK and
      [tuple(f.values()) for f in json.loads(text.value)] == findings, "report JSON")
# Text that is not strict JSON is refused before anything is read, and is the report's one
# finding.
data = b'{"DisplayScreenCfg": {"ID": "hall-3",}}'
message = ctypes.create_string_buffer(128)
status = lib.gsc_deserialize_json_report(op, data, len(data), answer, SKIP_FAILURES, report,
                                         message, len(message))
check(status == STATUS_MALFORMED_JSON and
      message.value == b"malformed JSON: line 1, column 38: a member name was expected" and
      answer.raw[8:15] == b"hall-2\0", "malformed: %d %r" % (status, message.value))
check(lib.gsc_report_count(report) == 1 and
      lib.gsc_report_kind(report, 0) == b"json-malformed" and lib.gsc_report_path(report, 0) == b""
      and lib.gsc_report_detail(report, 0) == b"line 1, column 38: a member name was expected",
      "malformed JSON finding")
lib.gsc_report_free(report)

# An element buffer laid out from Python: one text element of the size the library gives.
entry = lib.gsc_element_entry_size(EM_ELEMENT_TYPE_TEXT)
text_record = ctypes.create_string_buffer(entry - 132)
text_record[0:4] = b"news"
buffer = ctypes.create_string_buffer(entry)
used = ctypes.c_uint32(0)
check(lib.gsc_element_append(buffer, entry, ctypes.byref(used), EM_ELEMENT_TYPE_TEXT,
                             text_record) == STATUS_OK and used.value == entry, "append")
check(lib.gsc_element_append(buffer, entry, ctypes.byref(used), EM_ELEMENT_TYPE_TEXT,
                             text_record) == STATUS_BUFFER_TOO_SMALL and used.value == entry,
      "append beyond the buffer")
check(struct.unpack_from("=i", buffer, 0)[0] == EM_ELEMENT_TYPE_TEXT and
      buffer.raw[132:137] == b"news\0", "entry layout")

print("Python caller: %d failed" % len(failures))
sys.exit(1 if failures else 0)
