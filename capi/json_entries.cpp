// gsc_serialize_json and gsc_deserialize_json: every operation over JSON text.
#include <cstdint>
#include <cstring>
#include <string>

#include "capi/boundary.h"
#include "capi/json_text.h"
#include "capi/operation_table.h"
#include "guidescreen_codec/capi.h"

namespace gsc::capi {
namespace {

// The checks both directions make before touching a record: its address suits its type and its
// leading dwSize names the operation's record.
int CheckRecord(const void* record, size_t size, size_t alignment) {
  if (record == nullptr) return GSC_STATUS_INVALID_ARGUMENT;
  // Alignment is a property of the address as a number.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
  if (reinterpret_cast<uintptr_t>(record) % alignment != 0) return GSC_STATUS_INVALID_ARGUMENT;
  uint32_t dwSize = 0;
  std::memcpy(&dwSize, record, sizeof dwSize);
  return dwSize == size ? GSC_STATUS_OK : GSC_STATUS_WRONG_RECORD_SIZE;
}

int Serialize(const char* name, const void* in, char* json, size_t capacity, size_t* length) {
  if (name == nullptr || (json == nullptr && capacity > 0)) return GSC_STATUS_INVALID_ARGUMENT;
  const Operation* op = FindOperation(name);
  if (op == nullptr) return GSC_STATUS_UNKNOWN_OPERATION;
  if (const int status = CheckRecord(in, op->request_size, op->request_alignment)) return status;
  Json::Value params(Json::objectValue);
  std::string failure;
  if (!op->serialize(in, params, failure)) return GSC_STATUS_CONVERSION_FAILED;
  const std::string text = WriteCompact(params);
  if (length != nullptr) *length = text.size();
  if (text.size() >= capacity) return GSC_STATUS_BUFFER_TOO_SMALL;
  std::memcpy(json, text.data(), text.size());
  json[text.size()] = '\0';
  return GSC_STATUS_OK;
}

int Deserialize(const char* name, const char* json, size_t length, void* out, std::string& detail) {
  if (name == nullptr || (json == nullptr && length > 0)) return GSC_STATUS_INVALID_ARGUMENT;
  const Operation* op = FindOperation(name);
  if (op == nullptr) return GSC_STATUS_UNKNOWN_OPERATION;
  if (const int status = CheckRecord(out, op->answer_size, op->answer_alignment)) return status;
  Json::Value result;
  if (!ParseDocument(json == nullptr ? "" : json, length, result, detail))
    return GSC_STATUS_MALFORMED_JSON;
  return op->deserialize(result, out, detail) ? GSC_STATUS_OK : GSC_STATUS_CONVERSION_FAILED;
}

}  // namespace
}  // namespace gsc::capi

extern "C" int gsc_serialize_json(const char* operation, const void* in_record, char* json,
                                  size_t capacity, size_t* length) {
  if (json != nullptr && capacity > 0) json[0] = '\0';
  if (length != nullptr) *length = 0;
  std::string detail;
  return gsc::capi::Guarded(
      detail, [&] { return gsc::capi::Serialize(operation, in_record, json, capacity, length); });
}

extern "C" int gsc_deserialize_json(const char* operation, const char* json, size_t length,
                                    void* out_record, char* message, size_t message_capacity) {
  std::string detail;
  const int status = gsc::capi::Guarded(
      detail, [&] { return gsc::capi::Deserialize(operation, json, length, out_record, detail); });
  gsc::capi::WriteMessage(message, message_capacity, status, detail);
  return status;
}
