// gsc_serialize_json and gsc_deserialize_json, with and without a report: every operation over
// JSON text.
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "capi/boundary.h"
#include "capi/json_text.h"
#include "capi/operation_table.h"
#include "capi/report_handle.h"
#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/json_text.h"

namespace gsc::capi {
namespace {

// The failed conversion a report ends with, for a message: where, then JsonCpp's reason.
std::string FailedConversion(const gsc::Report& report) {
  const gsc::Finding& failed = report.findings().back();
  return (failed.path.empty() ? std::string("the result") : failed.path) + ": " + failed.detail;
}

int Serialize(const char* name, const void* in, char* json, size_t capacity, size_t* length,
              gsc::Report& report, std::string& detail) {
  if (name == nullptr || (json == nullptr && capacity > 0)) return GSC_STATUS_INVALID_ARGUMENT;
  const Operation* op = FindOperation(name);
  if (op == nullptr) {
    detail = UnknownOperation(name);
    return GSC_STATUS_UNKNOWN_OPERATION;
  }
  if (const int status = CheckRecord(in, op->request->size, op->request->alignment)) return status;
  Json::Value params(Json::objectValue);
  if (!op->serialize(in, params, &report)) {
    detail = FailedConversion(report);
    return GSC_STATUS_CONVERSION_FAILED;
  }
  return WriteText(WriteCompact(params), json, capacity, length);
}

int Deserialize(const char* name, const char* json, size_t length, void* out, unsigned flags,
                gsc::Report& report, std::string& detail) {
  if (name == nullptr || (json == nullptr && length > 0) || (flags & ~GSC_SKIP_FAILURES) != 0)
    return GSC_STATUS_INVALID_ARGUMENT;
  const Operation* op = FindOperation(name);
  if (op == nullptr) {
    detail = UnknownOperation(name);
    return GSC_STATUS_UNKNOWN_OPERATION;
  }
  if (const int status = CheckRecord(out, op->answer->size, op->answer->alignment)) return status;
  const std::string_view text(json == nullptr ? "" : json, length);
  if (op->deserialize_json(text, out, &report)) return GSC_STATUS_OK;
  // A reader that returns false has said why in the report's last finding.
  if (report.empty()) return GSC_STATUS_INTERNAL_ERROR;
  const gsc::Finding& last = report.findings().back();
  if (last.kind == gsc::FindingKind::kJsonMalformed) {
    detail = last.detail;
    return GSC_STATUS_MALFORMED_JSON;
  }
  detail = FailedConversion(report);
  return GSC_STATUS_CONVERSION_FAILED;
}

gsc::OnFailure OnFailureOf(unsigned flags) {
  return (flags & GSC_SKIP_FAILURES) != 0 ? gsc::OnFailure::kSkip : gsc::OnFailure::kStop;
}

}  // namespace
}  // namespace gsc::capi

extern "C" int gsc_serialize_json_report(const char* operation, const void* in_record, char* json,
                                         size_t capacity, size_t* length, gsc_report* report) {
  if (json != nullptr && capacity > 0) json[0] = '\0';
  if (length != nullptr) *length = 0;
  if (report != nullptr) report->report = gsc::Report();
  std::string detail;
  return gsc::capi::Guarded(detail, [&] {
    gsc::Report own;
    return gsc::capi::Serialize(operation, in_record, json, capacity, length,
                                report != nullptr ? report->report : own, detail);
  });
}

extern "C" int gsc_serialize_json(const char* operation, const void* in_record, char* json,
                                  size_t capacity, size_t* length) {
  return gsc_serialize_json_report(operation, in_record, json, capacity, length, nullptr);
}

extern "C" int gsc_deserialize_json_report(const char* operation, const char* json, size_t length,
                                           void* out_record, unsigned flags, gsc_report* report,
                                           char* message, size_t message_capacity) {
  if (report != nullptr) report->report = gsc::Report();
  std::string detail;
  const int status = gsc::capi::Guarded(detail, [&] {
    gsc::Report own(gsc::capi::OnFailureOf(flags));
    gsc::Report& used = report != nullptr ? report->report : own;
    used = gsc::Report(gsc::capi::OnFailureOf(flags));
    return gsc::capi::Deserialize(operation, json, length, out_record, flags, used, detail);
  });
  gsc::capi::WriteMessage(message, message_capacity, status, detail);
  return status;
}

extern "C" int gsc_deserialize_json(const char* operation, const char* json, size_t length,
                                    void* out_record, char* message, size_t message_capacity) {
  return gsc_deserialize_json_report(operation, json, length, out_record, 0, nullptr, message,
                                     message_capacity);
}

extern "C" void gsc_release_json_buffers(void) {
  gsc::release_json_buffers();
}
