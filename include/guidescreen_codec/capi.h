/* The C interface: element buffers, the list of operations, and every operation's codecs over
 * JSON text. Valid C99 (and C++), for callers in C and for languages that call C functions
 * (Python's ctypes, C#'s P/Invoke, Go's cgo). It includes the records and their capacities.
 *
 * Conventions:
 *   - Functions that can fail return an int status: GSC_STATUS_OK (0) on success, otherwise one
 *     of the GSC_STATUS_ constants below, which gsc_status_message describes.
 *   - No exception ever leaves these functions, and none of them keeps state that a result
 *     depends on (gsc_deserialize_json keeps its parse buffers per thread, for reuse): they may
 *     be called from any thread, on different records and buffers at the same time.
 *   - Nothing is written past a capacity the caller gives. */
#ifndef GUIDESCREEN_CODEC_CAPI_H
#define GUIDESCREEN_CODEC_CAPI_H

#include <stddef.h>
#include <stdint.h>

#include "guidescreen_codec/capacities.h"
#include "guidescreen_codec/export.h"
#include "guidescreen_codec/field_records.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"
#include "guidescreen_codec/version.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Statuses -------------------------------------------------------------------------------- */

/* Success. */
#define GSC_STATUS_OK 0
/* No operation has that name (gsc_operation_name lists them); the message names it and the
 * closest operation. */
#define GSC_STATUS_UNKNOWN_OPERATION 1
/* The text is not one JSON document; the message gives the line and column. */
#define GSC_STATUS_MALFORMED_JSON 2
/* JsonCpp could not convert a value to the type a field needs; the message says why. */
#define GSC_STATUS_CONVERSION_FAILED 3
/* A buffer cannot take what was to be stored in it. */
#define GSC_STATUS_BUFFER_TOO_SMALL 4
/* The record's dwSize is not the size of the operation's record. */
#define GSC_STATUS_WRONG_RECORD_SIZE 5
/* A pointer that must be given is null or misaligned for its record, or an offset is out. */
#define GSC_STATUS_INVALID_ARGUMENT 6
/* Memory for the JSON tree or text ran out. */
#define GSC_STATUS_OUT_OF_MEMORY 7
/* Anything else that went wrong inside the library. */
#define GSC_STATUS_INTERNAL_ERROR 8
/* A field-named form does not describe the record: an unknown field, a value of the wrong type or
 * out of range, a text longer than its field; the message names the field by its path
 * ("stuInfo.stuProgrammes[0].szFoo"). */
#define GSC_STATUS_INVALID_FIELDS 9

/* A short English description of `status` ("unknown operation"); "unknown status" for a value
 * that is none of the above. The text is static. */
GSC_API const char* gsc_status_message(int status);

/* The version of the library actually loaded, "MAJOR.MINOR.PATCH"; compare it with
 * GSC_VERSION_STRING, the version of the headers compiled against. */
GSC_API const char* gsc_version(void);

/* ---- Operations ------------------------------------------------------------------------------ */

/* The operations by name: gsc_operation_name(i) for i from 0 to gsc_operation_count() - 1 gives
 * the names that `gscodec list` shows ("GET_ALL_PROGRAMMES"), and NULL past the end. */
GSC_API size_t gsc_operation_count(void);
GSC_API const char* gsc_operation_name(size_t index);

/* Wherever a function takes an operation's name, the name may be given in any case
 * ("get_all_programmes"). gsc_operation_lookup gives the operation's own name for such a name, or
 * NULL when it names none; gsc_operation_suggestion(name, i) gives the i-th closest operation
 * (i from 0; at most three, closest first) to a name that names none: a few edits away
 * ("GET_ALL_PROGRAMS"), or else containing it ("PLANS"); NULL past the last. The texts are
 * static. */
GSC_API const char* gsc_operation_lookup(const char* name);
GSC_API const char* gsc_operation_suggestion(const char* name, size_t index);

/* The size in bytes of the operation's input record (tagNET_IN_...) and output record
 * (tagNET_OUT_...), the value their dwSize must hold; 0 for an unknown operation. Callers
 * without the record declarations (Python, C#) can allocate records of the right size. */
GSC_API size_t gsc_request_size(const char* operation);
GSC_API size_t gsc_answer_size(const char* operation);

/* Writes the request parameters of `operation` for the input record `in_record` as compact JSON
 * text into `json`, `capacity` bytes, terminated; the text's length without the terminator goes
 * to `*length` (which may be NULL). When the text and its terminator do not fit, nothing but an
 * empty text is stored, *length still receives the text's length, and GSC_STATUS_BUFFER_TOO_SMALL
 * is returned: call with json NULL and capacity 0 to learn the size.
 *
 * The record's dwSize must be gsc_request_size(operation) (GSC_STATUS_WRONG_RECORD_SIZE
 * otherwise): at this boundary, dwSize is how the library knows the caller's record is the one
 * the operation expects. Texts are written as UTF-8 without escapes beyond those JSON requires.
 * A number that is not finite (a NaN or infinite dbLineHeight) is written as null, since JSON has
 * no text for it. */
GSC_API int gsc_serialize_json(const char* operation, const void* in_record, char* json,
                               size_t capacity, size_t* length);

/* ---- Reports --------------------------------------------------------------------------------- */
/* What an answer held that the record could not take, or what a request could not send: the
 * findings of one call, each with its kind ("text-cut"), its path
 * ("infos.P-7.Ordinary.Windows[3].Elements[2].Text.Content") and a detail ("600 bytes received,
 * 511 kept in a field of 512"), in the order the codec met them. A report is filled by
 * gsc_deserialize_json_report and gsc_serialize_json_report, which clear it first; the kinds and
 * the paths are those of the C++ gsc::Report (guidescreen_codec/report.h).
 *
 * A report is not shared between threads while a call fills it; each thread may have its own. */
typedef struct gsc_report gsc_report;

/* A new, empty report, or NULL when memory ran out. Free it with gsc_report_free. */
GSC_API gsc_report* gsc_report_new(void);
/* Frees `report`; nothing for NULL. */
GSC_API void gsc_report_free(gsc_report* report);

/* The number of findings; 0 for NULL. */
GSC_API size_t gsc_report_count(const gsc_report* report);
/* The kind, path and detail of finding `index` (from 0) as terminated UTF-8 texts owned by the
 * report, valid until it is filled again or freed; NULL past the end or for a NULL report. A
 * path is empty for a finding about the whole answer or request. */
GSC_API const char* gsc_report_kind(const gsc_report* report, size_t index);
GSC_API const char* gsc_report_path(const gsc_report* report, size_t index);
GSC_API const char* gsc_report_detail(const gsc_report* report, size_t index);

/* The findings as a JSON array of objects {"kind": ..., "path": ..., "detail": ...}, in order, in
 * `json` (`capacity` bytes, terminated), its length without the terminator in `*length` (may be
 * NULL), with the size protocol of gsc_serialize_json: GSC_STATUS_BUFFER_TOO_SMALL (and an empty
 * text) when it does not fit, so json NULL and capacity 0 learn the size. A byte that is not part
 * of valid UTF-8 (a device's member name) is written as U+FFFD. A NULL report gives
 * GSC_STATUS_INVALID_ARGUMENT. */
GSC_API int gsc_report_json(const gsc_report* report, char* json, size_t capacity, size_t* length);

/* A flag of gsc_deserialize_json_report: a value that cannot be converted (a text where a number
 * belongs, a number where an object must be looked into) is read as JSON null would be read at
 * that step and noted as a "conversion-failed" finding, and reading goes on to the end
 * (gsc::OnFailure::kSkip). The record then holds exactly what gsc_deserialize_json leaves for the
 * same answer with each value named by such a finding replaced by null. */
#define GSC_SKIP_FAILURES 1u

/* Reads `length` bytes of JSON text (the answer's result object; no terminator needed) and
 * merges it into the output record `out_record` of `operation`, exactly as deserialize does on
 * the text parsed by JsonCpp: the record is not cleared first, caller arrays and element buffers
 * set in it are filled up to their capacities. The text is read by gsc::deserialize_json
 * (guidescreen_codec/json_text.h) where it lies, without building a tree.
 *
 * The text must be exactly one JSON text of RFC 8259 in UTF-8, white space around it allowed
 * (space, tab, line feed, carriage return) and a leading UTF-8 byte order mark skipped. Anything
 * else is malformed (GSC_STATUS_MALFORMED_JSON), and the record is not touched: text after the
 * value, comments, trailing commas, single quotes, unquoted names, NaN and Infinity, leading
 * zeros ("01"), a lone "-", "+1", ".5", "1.", invalid UTF-8 (overlong forms and encoded
 * surrogates included), raw control characters in a text, escapes of a lone surrogate
 * ("\ud800"), nesting deeper than 1000 levels (a value inside the deepest container counting as
 * a level, as JsonCpp counts) and numbers beyond a double's range ("1e400"; "1e-400" reads as 0,
 * and integers beyond 64 bits as reals). A device sending such text has a fault worth hearing
 * about.
 *
 * On failure a terminated message goes to `message` (`message_capacity` bytes; cut to fit, and
 * nothing when the capacity is 0): the status's description, then for malformed JSON the line,
 * the column (from 1, counted in bytes) and the reason ("malformed JSON: line 1, column 43: ','
 * or '}' was expected"), for a failed conversion the path of the value (as the reports write it,
 * e.g. "DisplayScreenCfg.Bright") and JsonCpp's reason, for an unknown operation its name and the
 * closest one ("unknown operation: 'GET_ALL_PROGRAMS'; did you mean GET_ALL_PROGRAMMES?"). A
 * failed conversion leaves the record partly filled, as far as reading got. On success the
 * message is empty. The record's dwSize must be gsc_answer_size(operation).
 *
 * Each calling thread keeps the parse buffers of the largest text it read, for the next call:
 * a thread that has read an answer of that size reads the next without allocating for the
 * parse (gsc_release_json_buffers gives them back). */
GSC_API int gsc_deserialize_json(const char* operation, const char* json, size_t length,
                                 void* out_record, char* message, size_t message_capacity);

/* gsc_deserialize_json, with findings: `report` (may be NULL) is cleared, then receives what the
 * answer held that the record could not take. Without flags, a value that cannot be converted
 * stops reading as in gsc_deserialize_json (GSC_STATUS_CONVERSION_FAILED), and is the report's
 * last finding; with GSC_SKIP_FAILURES it is read as null and noted, reading goes on, and the
 * status is GSC_STATUS_OK. Text that is not JSON (GSC_STATUS_MALFORMED_JSON, with or without
 * flags) is the report's one finding: kind "json-malformed", an empty path, and the detail
 * "line L, column C: reason" of the message. Other flags give GSC_STATUS_INVALID_ARGUMENT. */
GSC_API int gsc_deserialize_json_report(const char* operation, const char* json, size_t length,
                                        void* out_record, unsigned flags, gsc_report* report,
                                        char* message, size_t message_capacity);

/* Gives back the calling thread's parse buffers; its next gsc_deserialize_json allocates them
 * anew. For a thread that read one very large answer and goes on with small ones. */
GSC_API void gsc_release_json_buffers(void);

/* gsc_serialize_json, with findings: `report` (may be NULL) is cleared, then receives what the
 * record held that the request could not send (a count beyond its array, an enumeration outside
 * its values, a text without terminator). */
GSC_API int gsc_serialize_json_report(const char* operation, const void* in_record, char* json,
                                      size_t capacity, size_t* length, gsc_report* report);

/* ---- Records in field-named form ------------------------------------------------------------ */
/* The field-named form of a record is a JSON object keyed by the record's field names, the text
 * `gscodec decode` prints and `gscodec encode` reads: texts as JSON texts, numbers and booleans as
 * they are, an enumeration as {"value": v, "name": "EM_..."} (read back from that object, from the
 * name alone or from the value alone), nested records as objects, fixed arrays and caller arrays as
 * arrays up to their counts, and a window's element buffer ("pElementsBuf") as an array of
 * entries {"emElementType": ..., "record": {...}}. dwSize, reserved bytes and pointers are not
 * shown; capacities and buffer lengths are.
 *
 * Reading a form: fields it leaves out are zero, a count it leaves out beside its array is the
 * array's length, and dwSize is set. Caller arrays and element buffers are laid out by the
 * library, in memory the call owns (gsc_encode_fields) or the caller gives
 * (gsc_record_from_fields). An unknown field, a duplicate name, a value of the wrong type or out of
 * range, or a text longer than its field gives GSC_STATUS_INVALID_FIELDS, its path in the message.
 *
 * Forms are written as UTF-8 JSON, indented by two spaces, an object or array kept on one line
 * when it fits; a text field's bytes are written as they stand (JSON's own escapes aside), so a
 * field holding bytes that are not UTF-8 gives text that is not UTF-8 either, which
 * gsc_encode_fields and gsc_record_from_fields refuse as malformed: such a text does not round
 * trip. */

/* A flag of gsc_decode_fields and gsc_record_to_fields: secret texts (szPassword) are written as
 * "***" (an empty one stays empty). Without it every field is written as stored: the form is the
 * record's data, not a display. */
#define GSC_HIDE_SECRETS 2u

/* Which record of an operation a function reads or writes: the input record (tagNET_IN_...) or the
 * output record (tagNET_OUT_...). */
#define GSC_REQUEST_RECORD 0
#define GSC_ANSWER_RECORD 1

/* gsc_decode_fields' room: as many records per caller array, or as many bytes per element buffer,
 * as the answer needs (the distinct members of its "infos" object; the longest "Elements" array
 * anywhere in it, in entries of the largest kind). */
#define GSC_ROOM_FOR_ALL 0xFFFFFFFFu

/* The request text of `operation` for the input record written in field-named form `fields`
 * (`fields_length` bytes, strict JSON as gsc_deserialize_json takes it): the record is read from
 * the form, its caller arrays and element buffers laid out for the call, and serialize's reporting
 * overload writes the request into `json` as gsc_serialize_json writes it, with its size protocol
 * (`capacity`, `*length`, GSC_STATUS_BUFFER_TOO_SMALL). `report` (may be NULL) is cleared, then
 * receives what the record held that the request could not send. A form that is not JSON gives
 * GSC_STATUS_MALFORMED_JSON, one that does not describe the record GSC_STATUS_INVALID_FIELDS; the
 * message (`message`, `message_capacity` bytes, as gsc_deserialize_json writes it) says where. */
GSC_API int gsc_encode_fields(const char* operation, const char* fields, size_t fields_length,
                              char* json, size_t capacity, size_t* length, gsc_report* report,
                              char* message, size_t message_capacity);

/* The output record of `operation` that the answer `answer` (`answer_length` bytes) gives, in
 * field-named form: a zeroed record with dwSize set, caller arrays of `capacity` records each and
 * element buffers of `element_buffer` bytes each (GSC_ROOM_FOR_ALL: room for everything the answer
 * holds), read by gsc_deserialize_json_report with `flags` (GSC_SKIP_FAILURES, GSC_HIDE_SECRETS),
 * then written into `fields` with the size protocol of gsc_serialize_json (`fields_capacity`,
 * `*fields_length`). The call allocates the record's memory itself and frees it before it returns;
 * a caller array is given only as many records as the answer can fill, since the others would stay
 * as prepared, and shows the capacity asked for.
 * `report` (may be NULL) receives the findings as gsc_deserialize_json_report gives them. Text that
 * is not JSON (GSC_STATUS_MALFORMED_JSON) or a failed conversion that stopped the reading
 * (GSC_STATUS_CONVERSION_FAILED) writes no form, and the message says where. A capacity above
 * 1,048,576 records or an element buffer above 64 MiB (other than GSC_ROOM_FOR_ALL) gives
 * GSC_STATUS_INVALID_ARGUMENT. */
GSC_API int gsc_decode_fields(const char* operation, const char* answer, size_t answer_length,
                              uint32_t capacity, uint32_t element_buffer, unsigned flags,
                              char* fields, size_t fields_capacity, size_t* fields_length,
                              gsc_report* report, char* message, size_t message_capacity);

/* The record `record` of `operation` (`which`: GSC_REQUEST_RECORD or GSC_ANSWER_RECORD) in
 * field-named form, into `fields` with the size protocol of gsc_serialize_json. Its dwSize must be
 * the record's size (GSC_STATUS_WRONG_RECORD_SIZE). Caller arrays are read up to their counts
 * and capacities, element buffers up to their counts and lengths; a null pointer is written as
 * null. Flags: GSC_HIDE_SECRETS. */
GSC_API int gsc_record_to_fields(const char* operation, int which, const void* record,
                                 unsigned flags, char* fields, size_t capacity, size_t* length);

/* Fills the record `record` (`record_size` bytes, at least the record's size, aligned for it) of
 * `operation` (`which` as above) from its field-named form `fields` (`fields_length` bytes). The
 * record is zeroed first; its caller arrays and element buffers are laid out in `storage`
 * (`storage_capacity` bytes, aligned to 16 bytes, the caller's, as long as the record is used),
 * and the bytes they take go to `*storage_used` (may be NULL). When they do not fit,
 * GSC_STATUS_BUFFER_TOO_SMALL is returned, `*storage_used` holds the bytes needed and neither the
 * record nor the storage is touched: call with storage NULL and capacity 0 to learn the size.
 * Errors in the form as gsc_encode_fields gives them, with the record untouched. */
GSC_API int gsc_record_from_fields(const char* operation, int which, const char* fields,
                                   size_t fields_length, void* record, size_t record_size,
                                   void* storage, size_t storage_capacity, size_t* storage_used,
                                   char* message, size_t message_capacity);

/* ---- Element buffers ------------------------------------------------------------------------- */
/* A window's element buffer holds entries end to end: a tagNET_ELEMENT_COMMON_INFO header (132
 * bytes) naming the kind, then the kind's record; a kind without a record (EM_ELEMENT_TYPE_UNKNOWN
 * or any value outside 1 to 5) is the header alone. Records may therefore sit at addresses that
 * are 4 but not 8 aligned: never access them in place, copy them in and out with these
 * functions. */

/* Any one element record, for copying entries out with gsc_element_next. */
typedef union gsc_element_record {
  tagNET_VIDEO_ELEMENT_INFO stuVideo;
  tagNET_PICTURE_ELEMENT_INFO stuPicture;
  tagNET_TEXT_ELEMENT_INFO stuText;
  tagNET_PLACEHOLDER_ELEMENT_INFO stuPlaceHolder;
  tagNET_CAPTURE_ELEMENT_INFO stuCapture;
} gsc_element_record;

#define GSC_ELEMENT_HEADER_SIZE sizeof(tagNET_ELEMENT_COMMON_INFO)
#define GSC_SIZE_MAX_(a, b) ((a) > (b) ? (a) : (b))
/* The largest entry: the header and the largest record. */
#define GSC_ELEMENT_ENTRY_MAX_SIZE                                                      \
  (GSC_ELEMENT_HEADER_SIZE +                                                            \
   GSC_SIZE_MAX_(GSC_SIZE_MAX_(GSC_SIZE_MAX_(sizeof(tagNET_VIDEO_ELEMENT_INFO),         \
                                             sizeof(tagNET_PICTURE_ELEMENT_INFO)),      \
                               GSC_SIZE_MAX_(sizeof(tagNET_TEXT_ELEMENT_INFO),          \
                                             sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO))), \
                 sizeof(tagNET_CAPTURE_ELEMENT_INFO)))
/* Bytes that hold any `entries` entries, whatever their kinds: a constant expression, for static
 * buffers ("static unsigned char buffer[GSC_ELEMENT_BUFFER_SIZE(8)];"). */
#define GSC_ELEMENT_BUFFER_SIZE(entries) ((size_t)(entries)*GSC_ELEMENT_ENTRY_MAX_SIZE)

/* The bytes one entry of `kind` takes: the header and the kind's record, or the header alone for
 * a kind without a record. */
GSC_API uint32_t gsc_element_entry_size(EM_ELEMENT_TYPE kind);

/* The same as the macros, for callers that cannot use them: the largest entry, and the bytes
 * that hold any `entries` entries (SIZE_MAX when that does not fit a size_t). */
GSC_API uint32_t gsc_element_max_entry_size(void);
GSC_API size_t gsc_element_buffer_size(uint32_t entries);

/* Appends an entry of `kind` to the buffer of `length` bytes whose first `*used` bytes hold
 * entries already: a header (the kind, reserved bytes zero) and a copy of `*record`, the kind's
 * record (ignored, and may be NULL, for a kind without a record). On success `*used` grows by
 * the entry's size. When the entry would not fit, GSC_STATUS_BUFFER_TOO_SMALL is returned and
 * neither the buffer nor `*used` changes. A null buffer (with any length), `used` or needed
 * `record`, or a `*used` beyond `length`, gives GSC_STATUS_INVALID_ARGUMENT.
 *
 * Count the entries appended into the window's nElementsNum and give `*used` (or the whole
 * length) as nElementsBufLen. */
GSC_API int gsc_element_append(unsigned char* buffer, uint32_t length, uint32_t* used,
                               EM_ELEMENT_TYPE kind, const void* record);

/* Reads the entry that starts `*offset` bytes into the buffer of `length` bytes: stores its kind
 * in `*kind`, copies its record into `record` (`record_capacity` bytes; a gsc_element_record
 * holds any) unless `record` is NULL, and advances `*offset` past the entry. An entry that does
 * not lie whole within `length`, or a record larger than `record_capacity`, gives
 * GSC_STATUS_BUFFER_TOO_SMALL with nothing stored and `*offset` unchanged.
 *
 * To walk a window the codecs filled, start at offset 0 and call it nElementsNum times. */
GSC_API int gsc_element_next(const unsigned char* buffer, uint32_t length, uint32_t* offset,
                             EM_ELEMENT_TYPE* kind, void* record, size_t record_capacity);

/* ---- Room for answers ------------------------------------------------------------------------ */
/* A listing's programmes each need an element buffer in every window before a read: these size
 * and attach them from one block of the caller's storage, and make a record ready for the next
 * read without losing what is attached. */

/* Bytes of storage that give `programmes` programmes an element buffer of `entries_per_window`
 * entries (gsc_element_buffer_size(entries_per_window) bytes) in each of their GSC_MAX_WINDOWS
 * windows; SIZE_MAX when that does not fit a size_t. */
GSC_API size_t gsc_element_storage_size(uint32_t programmes, uint32_t entries_per_window);

/* Attaches an element buffer to every window of the `count` programmes at `programmes`: each
 * window in turn gets the next gsc_element_buffer_size(entries_per_window) bytes of `storage` as
 * pElementsBuf, that size as nElementsBufLen, and an nElementsNum of 0; nothing else of the
 * records changes, and the storage is not written. Storage of fewer than
 * gsc_element_storage_size(count, entries_per_window) bytes gives GSC_STATUS_BUFFER_TOO_SMALL with
 * nothing attached. A null `programmes` (with a count above 0) or `storage` (with buffers to
 * give), or buffers of 4 GiB or more each, give GSC_STATUS_INVALID_ARGUMENT. For
 * GET_PROGRAMME_BYID, pass &out.stuProgramme and a count of 1. */
GSC_API int gsc_attach_element_buffers(tagNET_PROGRAMME_INFO* programmes, uint32_t count,
                                       uint32_t entries_per_window, unsigned char* storage,
                                       size_t storage_size);

/* Makes the output record `out_record` of `operation` ready for the next read, as a zero-filled
 * record prepared by its caller would be: every field zero but the dwSize fields, the pointers to
 * caller arrays and element buffers, and the capacities and lengths that bound them (nMaxInfosNum,
 * nMaxPlanNum, nElementsBufLen). The records of its caller arrays are made ready the same way up
 * to their capacities, and its element buffers are zeroed over their lengths, since a read merges
 * into what an element buffer holds. Its dwSize must be gsc_answer_size(operation)
 * (GSC_STATUS_WRONG_RECORD_SIZE otherwise). */
GSC_API int gsc_reset_answer(const char* operation, void* out_record);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* GUIDESCREEN_CODEC_CAPI_H */
