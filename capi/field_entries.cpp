// The field-named form at the C boundary: records as JSON objects keyed by field names, in and out
// of requests, answers and the caller's own records.
#include <json/reader.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "capi/boundary.h"
#include "capi/json_text.h"
#include "capi/operation_table.h"
#include "capi/report_handle.h"
#include "describe/answer_room.h"
#include "describe/operations_table.h"
#include "describe/record_text.h"
#include "guidescreen_codec/capi.h"
#include "text/read_text.h"
#include "text/strict_json.h"

namespace gsc::capi {
namespace {

// Room a decode may ask for: beyond it, records and buffers would take more than a caller meant.
constexpr uint32_t kMostRecords = uint32_t{1} << 20;
constexpr uint32_t kMostBufferBytes = uint32_t{1} << 26;

int Find(const char* name, const Operation*& found, std::string& detail) {
  if (name == nullptr) return GSC_STATUS_INVALID_ARGUMENT;
  found = FindOperation(name);
  if (found == nullptr) {
    detail = UnknownOperation(name);
    return GSC_STATUS_UNKNOWN_OPERATION;
  }
  return GSC_STATUS_OK;
}

// A field-named form's text as a tree: strict JSON, as answers are read, and no name twice, since
// a record has each field once.
int ParseForm(const char* text, size_t length, Json::Value& form, std::string& detail) {
  if (text == nullptr && length > 0) return GSC_STATUS_INVALID_ARGUMENT;
  const std::string_view form_text(text == nullptr ? "" : text, length);
  text::JsonProblem problem;
  if (!text::CheckJson(form_text, &problem, nullptr)) {
    detail = text::Where(problem);
    return GSC_STATUS_MALFORMED_JSON;
  }
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  if (!reader->parse(form_text.data(), form_text.data() + form_text.size(), &form, &errors)) {
    // The text is JSON, so what JsonCpp's strict mode refuses is a name given twice.
    detail = errors;
    while (!detail.empty() && (detail.back() == '\n' || detail.back() == ' ')) detail.pop_back();
    return GSC_STATUS_INVALID_FIELDS;
  }
  return GSC_STATUS_OK;
}

const fields::RecordTable* TableOf(const fields::Operation& op, int which) {
  if (which == GSC_REQUEST_RECORD) return op.request;
  if (which == GSC_ANSWER_RECORD) return op.answer;
  return nullptr;
}

int EncodeFields(const char* name, const char* text, size_t text_length, char* json,
                 size_t capacity, size_t* length, gsc::Report& report, std::string& detail) {
  if (json == nullptr && capacity > 0) return GSC_STATUS_INVALID_ARGUMENT;
  const Operation* found = nullptr;
  if (const int status = Find(name, found, detail)) return status;
  Json::Value form;
  if (const int status = ParseForm(text, text_length, form, detail)) return status;
  fields::Arena arena;
  unsigned char* record = arena.Allocate(found->request->size);
  try {
    fields::FromJson(*found->request, form, record, arena);
  } catch (const fields::FieldError& e) {
    detail = e.what();
    return GSC_STATUS_INVALID_FIELDS;
  }
  Json::Value params(Json::objectValue);
  if (!found->serialize(record, params, &report)) {
    const gsc::Finding& failed = report.findings().back();
    detail = failed.path + ": " + failed.detail;
    return GSC_STATUS_CONVERSION_FAILED;
  }
  return WriteText(WriteCompact(params), json, capacity, length);
}

int DecodeFields(const char* name, const char* answer, size_t answer_length, uint32_t capacity,
                 uint32_t element_buffer, unsigned flags, char* out, size_t out_capacity,
                 size_t* out_length, gsc::Report& report, std::string& detail) {
  if ((answer == nullptr && answer_length > 0) || (out == nullptr && out_capacity > 0) ||
      (flags & ~(GSC_SKIP_FAILURES | GSC_HIDE_SECRETS)) != 0 ||
      (capacity != GSC_ROOM_FOR_ALL && capacity > kMostRecords) ||
      (element_buffer != GSC_ROOM_FOR_ALL && element_buffer > kMostBufferBytes))
    return GSC_STATUS_INVALID_ARGUMENT;
  const Operation* found = nullptr;
  if (const int status = Find(name, found, detail)) return status;
  const std::string_view text(answer == nullptr ? "" : answer, answer_length);
  // A caller array takes no more records than the answer holds, so records beyond those would
  // stay as prepared: only those are made (at least one, so that an array is read as with any
  // room), and the capacity given is shown.
  const fields::Room all = fields::RoomForAnswerText(text);
  const fields::Room room{
      std::min(capacity, std::max<uint32_t>(all.capacity, 1)),
      element_buffer == GSC_ROOM_FOR_ALL ? all.elements_buffer : element_buffer};
  const std::unique_ptr<fields::Received> received =
      fields::ReceiveText(*found, text, room, &report);
  if (capacity != GSC_ROOM_FOR_ALL)
    fields::SetCapacities(*found->answer, received->record, capacity);
  if (!report.empty()) {
    const gsc::Finding& last = report.findings().back();
    if (last.kind == gsc::FindingKind::kJsonMalformed) {
      detail = last.detail;
      return GSC_STATUS_MALFORMED_JSON;
    }
    if (last.kind == gsc::FindingKind::kConversionFailed &&
        report.on_failure() == gsc::OnFailure::kStop) {
      detail = (last.path.empty() ? std::string("the result") : last.path) + ": " + last.detail;
      return GSC_STATUS_CONVERSION_FAILED;
    }
  }
  fields::ShowOptions options;
  options.show_secrets = (flags & GSC_HIDE_SECRETS) == 0;
  return WriteText(fields::RecordText(*found->answer, received->record, options), out, out_capacity,
                   out_length);
}

int RecordToFields(const char* name, int which, const void* record, unsigned flags, char* out,
                   size_t capacity, size_t* length) {
  if ((out == nullptr && capacity > 0) || (flags & ~GSC_HIDE_SECRETS) != 0)
    return GSC_STATUS_INVALID_ARGUMENT;
  std::string detail;
  const Operation* found = nullptr;
  if (const int status = Find(name, found, detail)) return status;
  const fields::RecordTable* table = TableOf(*found, which);
  if (table == nullptr) return GSC_STATUS_INVALID_ARGUMENT;
  if (const int status = CheckRecord(record, table->size, table->alignment)) return status;
  fields::ShowOptions options;
  options.show_secrets = (flags & GSC_HIDE_SECRETS) == 0;
  return WriteText(fields::RecordText(*table, record, options), out, capacity, length);
}

int RecordFromFields(const char* name, int which, const char* text, size_t text_length,
                     void* record, size_t record_size, void* storage, size_t storage_capacity,
                     size_t* storage_used, std::string& detail) {
  if (record == nullptr || (storage == nullptr && storage_capacity > 0) ||
      // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): an address as a number
      reinterpret_cast<uintptr_t>(storage) % 16 != 0)
    return GSC_STATUS_INVALID_ARGUMENT;
  const Operation* found = nullptr;
  if (const int status = Find(name, found, detail)) return status;
  const fields::RecordTable* table = TableOf(*found, which);
  if (table == nullptr || record_size < table->size ||
      // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): an address as a number
      reinterpret_cast<uintptr_t>(record) % table->alignment != 0)
    return GSC_STATUS_INVALID_ARGUMENT;
  Json::Value form;
  if (const int status = ParseForm(text, text_length, form, detail)) return status;
  // Read once into memory of our own to learn what the arrays and buffers take; only a form that
  // is valid and fits reaches the caller's record and storage.
  fields::Arena scratch;
  fields::Arena measured;
  try {
    fields::FromJson(*table, form, scratch.Allocate(table->size), measured);
  } catch (const fields::FieldError& e) {
    detail = e.what();
    return GSC_STATUS_INVALID_FIELDS;
  }
  if (storage_used != nullptr) *storage_used = measured.used();
  if (measured.used() > storage_capacity) return GSC_STATUS_BUFFER_TOO_SMALL;
  std::memset(record, 0, table->size);
  fields::Arena into(static_cast<unsigned char*>(storage), storage_capacity);
  fields::FromJson(*table, form, record, into);
  return GSC_STATUS_OK;
}

}  // namespace
}  // namespace gsc::capi

extern "C" int gsc_encode_fields(const char* operation, const char* fields, size_t fields_length,
                                 char* json, size_t capacity, size_t* length, gsc_report* report,
                                 char* message, size_t message_capacity) {
  if (json != nullptr && capacity > 0) json[0] = '\0';
  if (length != nullptr) *length = 0;
  if (report != nullptr) report->report = gsc::Report();
  std::string detail;
  const int status = gsc::capi::Guarded(detail, [&] {
    gsc::Report own;
    return gsc::capi::EncodeFields(operation, fields, fields_length, json, capacity, length,
                                   report != nullptr ? report->report : own, detail);
  });
  gsc::capi::WriteMessage(message, message_capacity, status, detail);
  return status;
}

extern "C" int gsc_decode_fields(const char* operation, const char* answer, size_t answer_length,
                                 uint32_t capacity, uint32_t element_buffer, unsigned flags,
                                 char* fields, size_t fields_capacity, size_t* fields_length,
                                 gsc_report* report, char* message, size_t message_capacity) {
  if (fields != nullptr && fields_capacity > 0) fields[0] = '\0';
  if (fields_length != nullptr) *fields_length = 0;
  const gsc::OnFailure on_failure =
      (flags & GSC_SKIP_FAILURES) != 0 ? gsc::OnFailure::kSkip : gsc::OnFailure::kStop;
  if (report != nullptr) report->report = gsc::Report(on_failure);
  std::string detail;
  const int status = gsc::capi::Guarded(detail, [&] {
    gsc::Report own(on_failure);
    return gsc::capi::DecodeFields(operation, answer, answer_length, capacity, element_buffer,
                                   flags, fields, fields_capacity, fields_length,
                                   report != nullptr ? report->report : own, detail);
  });
  gsc::capi::WriteMessage(message, message_capacity, status, detail);
  return status;
}

extern "C" int gsc_record_to_fields(const char* operation, int which, const void* record,
                                    unsigned flags, char* fields, size_t capacity, size_t* length) {
  if (fields != nullptr && capacity > 0) fields[0] = '\0';
  if (length != nullptr) *length = 0;
  std::string detail;
  return gsc::capi::Guarded(detail, [&] {
    return gsc::capi::RecordToFields(operation, which, record, flags, fields, capacity, length);
  });
}

extern "C" int gsc_record_from_fields(const char* operation, int which, const char* fields,
                                      size_t fields_length, void* record, size_t record_size,
                                      void* storage, size_t storage_capacity, size_t* storage_used,
                                      char* message, size_t message_capacity) {
  if (storage_used != nullptr) *storage_used = 0;
  std::string detail;
  const int status = gsc::capi::Guarded(detail, [&] {
    return gsc::capi::RecordFromFields(operation, which, fields, fields_length, record, record_size,
                                       storage, storage_capacity, storage_used, detail);
  });
  gsc::capi::WriteMessage(message, message_capacity, status, detail);
  return status;
}
