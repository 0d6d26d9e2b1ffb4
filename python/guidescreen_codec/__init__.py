"""The guide screen client's codecs from Python: records in field-named form to and from JSON.

A record is a dict keyed by the C record's field names, as ``gscodec decode`` prints it and
``gscodec encode`` reads it: texts as str, numbers and booleans as they are, an enumeration as
{"value": v, "name": "EM_..."} (read back from that, from the name alone or from the value
alone), nested records as dicts, arrays as lists up to their counts, and a window's element
buffer ("pElementsBuf") as a list of {"emElementType": ..., "record": {...}}.

    import guidescreen_codec as gsc

    print(gsc.operations())                      # ['SET_GUIDESCREEN_CFG', ...]
    with open("listing.json", "rb") as answer:   # a device's answer to GET_ALL_PROGRAMMES
        decoded = gsc.decode("GET_ALL_PROGRAMMES", answer.read(), keep_going=True)
    for programme in decoded.record["pstuInfos"]:
        print(programme["szProgrammeID"], programme["szProgrammeName"])
    for finding in decoded.findings:             # what the record could not take
        print(f"{finding.path}: {finding.kind}: {finding.detail}")

    request = gsc.encode("GET_PROGRAMME_BYID", {"szProgrammeID": "P-1001"})
    try:
        gsc.decode("GET_PROGRAMME_BYID", '{"Programme": ')
    except gsc.CodecError as error:
        print(error.status_name, error.message)  # ... line 1, column 15: ...

Texts are UTF-8: answers must be, and a text cut to fit its field is never cut inside a
character. Only a C record filled by other code may hold bytes that are not UTF-8;
record_to_fields gives each such byte as a lone surrogate (Python's "surrogateescape"), and a
form holding one is refused (CodecError INVALID_FIELDS), since the library reads UTF-8 only.

Every function may be called from any thread. The shared library is loaded on first use: the
one installed with this package, or the one GUIDESCREEN_CODEC_LIBRARY names.
"""

from __future__ import annotations

import ctypes
import enum
import json
from dataclasses import dataclass, field
from typing import Any, Callable, Dict, List, Optional, Tuple, Union

from ._library import library

__all__ = [
    "CodecError",
    "Decoded",
    "Finding",
    "NativeRecord",
    "Status",
    "check",
    "check_request",
    "decode",
    "encode",
    "operations",
    "record_from_fields",
    "record_size",
    "record_to_fields",
    "version",
]

# Values of capi.h.
_SKIP_FAILURES = 1
_HIDE_SECRETS = 2
_ROOM_FOR_ALL = 0xFFFFFFFF
_RECORDS = {"request": 0, "answer": 1}
# Long enough for any message the library writes (a path and JsonCpp's reason); it cuts to fit.
_MESSAGE_CAPACITY = 4096
# Storage the library hands out for caller arrays and element buffers is 16-byte aligned.
_STORAGE_ALIGNMENT = 16


class Status(enum.IntEnum):
    """The statuses of the C interface (GSC_STATUS_...)."""

    OK = 0
    UNKNOWN_OPERATION = 1
    MALFORMED_JSON = 2
    CONVERSION_FAILED = 3
    BUFFER_TOO_SMALL = 4
    WRONG_RECORD_SIZE = 5
    INVALID_ARGUMENT = 6
    OUT_OF_MEMORY = 7
    INTERNAL_ERROR = 8
    INVALID_FIELDS = 9


@dataclass(frozen=True)
class Finding:
    """What an answer held that the record could not take, or a record that a request could not
    send: its kind ("text-cut"), its path ("infos.P-7.Ordinary.Windows[3].Elements[2].Text.Content"
    in an answer, "stuInfo.stuProgrammes[3].szProgrammeName" in a record; empty for the whole) and
    a detail with the figures ("600 bytes received, 511 kept in a field of 512")."""

    kind: str
    path: str
    detail: str


@dataclass
class Decoded:
    """An output record in field-named form and the findings of reading it, in the order the codec
    met them."""

    record: Dict[str, Any]
    findings: List[Finding] = field(default_factory=list)


class CodecError(Exception):
    """A call the library refused or could not complete.

    ``status`` is the library's status (a Status where the value is known), ``status_name`` its
    name ("GSC_STATUS_MALFORMED_JSON"), ``message`` the library's message ("malformed JSON: line 1,
    column 15: ...") and ``findings`` what was found before the failure (after a failed
    conversion, the failure is the last one)."""

    def __init__(self, status: int, message: str, findings: Optional[List[Finding]] = None):
        try:
            self.status: int = Status(status)
            self.status_name: str = "GSC_STATUS_" + Status(status).name
        except ValueError:
            self.status = status
            self.status_name = f"GSC_STATUS_{status}"
        self.message: str = message
        self.findings: List[Finding] = list(findings or [])
        super().__init__(message)


def _status_message(status: int) -> str:
    return library().gsc_status_message(status).decode("utf-8")


def _operation(name: str) -> bytes:
    """The operation's name as the library takes it."""
    if not isinstance(name, str):
        raise TypeError(f"an operation is named by a str, not {type(name).__name__}")
    try:
        if "\0" not in name:  # the C side would read the name up to the NUL, another name
            return name.encode("utf-8")
    except UnicodeEncodeError:
        pass
    raise CodecError(Status.UNKNOWN_OPERATION,
                     f"{_status_message(Status.UNKNOWN_OPERATION)}: {name!r}")


def _unknown_operation(name: str) -> CodecError:
    """The error for a name that names no operation, worded as the library words it."""
    lib = library()
    raw = _operation(name)
    similar = []
    while True:
        suggestion = lib.gsc_operation_suggestion(raw, len(similar))
        if suggestion is None:
            break
        similar.append(suggestion.decode("utf-8"))
    message = f"{_status_message(Status.UNKNOWN_OPERATION)}: '{name}'"
    if similar:
        last = similar.pop()
        message += "; did you mean " + (", ".join(similar) + " or " if similar else "") + last + "?"
    return CodecError(Status.UNKNOWN_OPERATION, message)


def _known(name: str) -> bytes:
    raw = _operation(name)
    if library().gsc_operation_lookup(raw) is None:
        raise _unknown_operation(name)
    return raw


def _room(value: Optional[int], what: str) -> int:
    if value is None:
        return _ROOM_FOR_ALL
    # ctypes would wrap a value beyond 32 bits silently into another room.
    if isinstance(value, bool) or not isinstance(value, int) or not 0 <= value < _ROOM_FOR_ALL:
        raise ValueError(f"{what} must be None or a whole number from 0 to {_ROOM_FOR_ALL - 1}")
    return value


def _which(which: str) -> int:
    try:
        return _RECORDS[which]
    except (KeyError, TypeError):
        raise ValueError(f"which must be 'request' or 'answer', not {which!r}") from None


def _text(data: bytes) -> str:
    return data.decode("utf-8", "surrogateescape")


def _not_utf8(value: Any, path: str) -> Optional[str]:
    """The path of the first text in `value` that cannot be written as UTF-8, or None."""
    if isinstance(value, str):
        try:
            value.encode("utf-8")
        except UnicodeEncodeError:
            return path
    elif isinstance(value, dict):
        for name, member in value.items():
            found = _not_utf8(member, f"{path}.{name}" if path else str(name))
            if found is not None:
                return found
    elif isinstance(value, (list, tuple)):
        for index, member in enumerate(value):
            found = _not_utf8(member, f"{path}[{index}]")
            if found is not None:
                return found
    return None


def _form_text(record: Dict[str, Any]) -> bytes:
    if not isinstance(record, dict):
        raise TypeError(f"a record is a dict in field-named form, not {type(record).__name__}")
    # NaN has no JSON text; refused here rather than as malformed JSON in text the caller never
    # wrote.
    text = json.dumps(record, ensure_ascii=False, allow_nan=False)
    try:
        return text.encode("utf-8")
    except UnicodeEncodeError:
        # A field's path says more than a column in text the caller never saw.
        path = _not_utf8(record, "")
        raise CodecError(Status.INVALID_FIELDS,
                         f"{_status_message(Status.INVALID_FIELDS)}: field '{path}': "
                         "a text that is not UTF-8 (a lone surrogate) cannot be read") from None


def _answer_bytes(answer: Union[str, bytes, bytearray, memoryview]) -> bytes:
    if isinstance(answer, str):
        return answer.encode("utf-8")
    if isinstance(answer, (bytes, bytearray, memoryview)):
        return bytes(answer)
    raise TypeError(f"an answer is JSON text as str or bytes, not {type(answer).__name__}")


class _Report:
    """A gsc_report for the length of a with block."""

    def __enter__(self) -> "_Report":
        self.handle = library().gsc_report_new()
        if not self.handle:
            raise MemoryError("gsc_report_new")
        return self

    def __exit__(self, *exc: object) -> None:
        library().gsc_report_free(self.handle)

    def findings(self) -> List[Finding]:
        lib = library()

        def text(value: Optional[bytes]) -> str:
            # As gsc_report_json writes them: a device's bytes that are not UTF-8 as U+FFFD.
            return (value or b"").decode("utf-8", "replace")

        return [Finding(text(lib.gsc_report_kind(self.handle, i)),
                        text(lib.gsc_report_path(self.handle, i)),
                        text(lib.gsc_report_detail(self.handle, i)))
                for i in range(lib.gsc_report_count(self.handle))]


def _first_guess(input_length: int) -> int:
    """The first output buffer: forms run to a few times their answer's size."""
    return 4096 + 4 * input_length


def _grown(call: Callable[[Optional[ctypes.Array], int, ctypes.c_size_t], int],
           first: int) -> Tuple[int, bytes]:
    """Runs `call(buffer, capacity, length)` with the size protocol of gsc_serialize_json: on
    GSC_STATUS_BUFFER_TOO_SMALL, once more with room for the length it gave and the terminator.
    Returns the status and the text written."""
    capacity = first
    while True:
        buffer = ctypes.create_string_buffer(capacity)
        length = ctypes.c_size_t(0)
        status = call(buffer, capacity, length)
        if status != Status.BUFFER_TOO_SMALL or length.value + 1 <= capacity:
            return status, buffer.raw[:length.value] if status == Status.OK else b""
        capacity = length.value + 1


def _failure(status: int, message: ctypes.Array, findings: Optional[List[Finding]] = None,
             operation: str = "") -> CodecError:
    text = message.value.decode("utf-8", "replace") if message is not None else ""
    if status == Status.UNKNOWN_OPERATION and not text:
        return _unknown_operation(operation)
    return CodecError(status, text or _status_message(status), findings)


def operations() -> List[str]:
    """The names of the operations, in the order ``gscodec list`` shows them."""
    lib = library()
    return [lib.gsc_operation_name(i).decode("utf-8") for i in range(lib.gsc_operation_count())]


def version() -> str:
    """The version of the shared library loaded, "MAJOR.MINOR.PATCH"."""
    return library().gsc_version().decode("utf-8")


def record_size(operation: str, which: str) -> int:
    """The size in bytes of the operation's input record (which="request") or output record
    (which="answer"): the value its dwSize holds. Raises CodecError for an unknown operation."""
    kind = _which(which)
    raw = _known(operation)
    lib = library()
    return lib.gsc_request_size(raw) if kind == 0 else lib.gsc_answer_size(raw)


def _encode(operation: str, record: Dict[str, Any], text_wanted: bool) -> Tuple[str, List[Finding]]:
    raw = _operation(operation)
    form = _form_text(record)
    lib = library()
    message = ctypes.create_string_buffer(_MESSAGE_CAPACITY)
    with _Report() as report:
        if text_wanted:
            status, text = _grown(
                lambda buffer, capacity, length: lib.gsc_encode_fields(
                    raw, form, len(form), buffer, capacity, ctypes.byref(length), report.handle,
                    message, len(message)), _first_guess(len(form)))
        else:
            # Without room for the text the call still fills the report.
            status, text = lib.gsc_encode_fields(raw, form, len(form), None, 0, None,
                                                 report.handle, message, len(message)), b""
            if status == Status.BUFFER_TOO_SMALL:
                status = Status.OK
        findings = report.findings()
    if status != Status.OK:
        raise _failure(status, message, findings, operation)
    return _text(text), findings


def encode(operation: str, record: Dict[str, Any]) -> str:
    """The request text (compact JSON) that `operation` sends for the input record `record`, in
    field-named form; fields it leaves out are zero.

    Raises CodecError: UNKNOWN_OPERATION, INVALID_FIELDS (an unknown field, a value of the wrong
    type or out of range, a text longer than its field; the message names its path). A record
    that JSON cannot hold (NaN, an object that is not JSON) raises ValueError or TypeError."""
    return _encode(operation, record, True)[0]


def check_request(operation: str, record: Dict[str, Any]) -> List[Finding]:
    """What the request for the input record `record` could not send (a count beyond its array,
    an enumeration outside its values, a text without terminator), as ``gscodec check
    --request`` lists it. Raises CodecError as encode does."""
    return _encode(operation, record, False)[1]


def _decode(operation: str, answer: Union[str, bytes], capacity: Optional[int],
            element_buffer: Optional[int], flags: int, form_wanted: bool) -> Decoded:
    raw = _operation(operation)
    data = _answer_bytes(answer)
    records = _room(capacity, "capacity")
    buffer_bytes = _room(element_buffer, "element_buffer")
    lib = library()
    message = ctypes.create_string_buffer(_MESSAGE_CAPACITY)
    with _Report() as report:
        if form_wanted:
            status, text = _grown(
                lambda buffer, room, length: lib.gsc_decode_fields(
                    raw, data, len(data), records, buffer_bytes, flags, buffer, room,
                    ctypes.byref(length), report.handle, message, len(message)),
                _first_guess(len(data)))
        else:
            status, text = lib.gsc_decode_fields(raw, data, len(data), records, buffer_bytes, flags,
                                                 None, 0, None, report.handle, message,
                                                 len(message)), b""
            if status == Status.BUFFER_TOO_SMALL:
                status = Status.OK
        findings = report.findings()
    if status != Status.OK:
        raise _failure(status, message, findings, operation)
    return Decoded(json.loads(_text(text)) if form_wanted else {}, findings)


def decode(operation: str, answer: Union[str, bytes], capacity: Optional[int] = None,
           element_buffer: Optional[int] = None, keep_going: bool = False,
           hide_secrets: bool = False) -> Decoded:
    """The output record that the device's answer `answer` (the result object's JSON text; a str
    is taken as UTF-8) gives `operation`, in field-named form, with the findings.

    The record starts zeroed, with `capacity` records in each caller array and `element_buffer`
    bytes in each window's element buffer; None gives room for everything the answer holds, so
    that only a caller with less room would lose anything. With `keep_going`, a value that cannot
    be converted is read as null and noted as a "conversion-failed" finding; without it, it stops
    the reading with CodecError CONVERSION_FAILED. `hide_secrets` writes passwords as "***".

    Raises CodecError: UNKNOWN_OPERATION, MALFORMED_JSON (the message gives the line and column),
    CONVERSION_FAILED (the message gives the value's path), INVALID_ARGUMENT (a capacity above
    1,048,576 records or an element buffer above 64 MiB)."""
    flags = (_SKIP_FAILURES if keep_going else 0) | (_HIDE_SECRETS if hide_secrets else 0)
    return _decode(operation, answer, capacity, element_buffer, flags, True)


def check(operation: str, answer: Union[str, bytes], capacity: Optional[int] = None,
          element_buffer: Optional[int] = None) -> List[Finding]:
    """Everything the answer held that the output record could not take, reading on past values
    that cannot be converted, as ``gscodec check`` lists it; empty when the record took it all.
    Raises CodecError as decode does (except for a failed conversion, which is a finding)."""
    return _decode(operation, answer, capacity, element_buffer, _SKIP_FAILURES, False).findings


class NativeRecord:
    """A C record of an operation in memory Python owns, laid out by the library: the record
    (``address``, ``size``; ``bytes()`` copies it) and the storage its caller arrays and element
    buffers point into, kept together for as long as this object lives. Pass ``address`` (or
    ``pointer``) to C functions that take the record."""

    def __init__(self, operation: str, which: str, size: int, storage_size: int):
        self.operation: str = operation
        self.which: str = which
        self.size: int = size
        # Over-allocated so that both may start at an aligned address.
        self._record = ctypes.create_string_buffer(size + _STORAGE_ALIGNMENT)
        self._storage = ctypes.create_string_buffer(storage_size + _STORAGE_ALIGNMENT)
        self.address: int = _aligned(self._record)
        self.storage_address: int = _aligned(self._storage)
        self.storage_size: int = storage_size

    @property
    def pointer(self) -> ctypes.c_void_p:
        """The record's address as a ctypes pointer."""
        return ctypes.c_void_p(self.address)

    def bytes(self) -> bytes:
        """A copy of the record's bytes (its pointers point into this object's storage)."""
        return ctypes.string_at(self.address, self.size)


def _aligned(buffer: ctypes.Array) -> int:
    address = ctypes.addressof(buffer)
    return address + (-address) % _STORAGE_ALIGNMENT


def record_from_fields(operation: str, which: str, record: Dict[str, Any]) -> NativeRecord:
    """The C record of `operation` (which="request" or "answer") that the field-named form
    `record` describes, with dwSize set and its caller arrays and element buffers laid out in
    storage of its own. Raises CodecError as encode does."""
    kind = _which(which)
    raw = _known(operation)
    form = _form_text(record)
    lib = library()
    size = record_size(operation, which)
    message = ctypes.create_string_buffer(_MESSAGE_CAPACITY)
    storage = 0
    while True:
        native = NativeRecord(operation, which, size, storage)
        used = ctypes.c_size_t(0)
        status = lib.gsc_record_from_fields(
            raw, kind, form, len(form), native.address, size,
            native.storage_address if storage > 0 else None, storage, ctypes.byref(used), message,
            len(message))
        if status == Status.OK:
            return native
        if status != Status.BUFFER_TOO_SMALL or used.value <= storage:
            raise _failure(status, message, operation=operation)
        storage = used.value


def record_to_fields(operation: str, which: str, record: Union[NativeRecord, int, ctypes.Array],
                     hide_secrets: bool = False) -> Dict[str, Any]:
    """The field-named form of the C record `record` of `operation` (which="request" or
    "answer"): a NativeRecord, a ctypes object holding the record, or its address. Its dwSize must
    be the record's size (CodecError WRONG_RECORD_SIZE otherwise); caller arrays are read up to
    their counts and capacities. `hide_secrets` writes passwords as "***"."""
    kind = _which(which)
    raw = _known(operation)
    if isinstance(record, NativeRecord):
        address = record.address
    elif isinstance(record, int):
        address = record
    else:
        address = ctypes.addressof(record)
    flags = _HIDE_SECRETS if hide_secrets else 0
    lib = library()
    status, text = _grown(
        lambda buffer, capacity, length: lib.gsc_record_to_fields(
            raw, kind, address, flags, buffer, capacity, ctypes.byref(length)),
        _first_guess(record_size(operation, which)))
    if status != Status.OK:
        raise CodecError(status, _status_message(status))
    return json.loads(_text(text))
