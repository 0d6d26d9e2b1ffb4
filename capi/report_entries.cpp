// The gsc_report handle: findings read through the C interface.
#include <cstring>
#include <new>
#include <string>

#include "capi/boundary.h"
#include "capi/report_handle.h"

namespace {

const gsc::Finding* At(const gsc_report* report, size_t index) {
  if (report == nullptr || index >= report->report.size()) return nullptr;
  return &report->report.findings()[index];
}

}  // namespace

// The handle belongs to the C caller from gsc_report_new to gsc_report_free.
extern "C" gsc_report* gsc_report_new(void) {
  return new (std::nothrow) gsc_report();  // NOLINT(cppcoreguidelines-owning-memory)
}

extern "C" void gsc_report_free(gsc_report* report) {
  delete report;  // NOLINT(cppcoreguidelines-owning-memory)
}

extern "C" size_t gsc_report_count(const gsc_report* report) {
  return report != nullptr ? report->report.size() : 0;
}

extern "C" const char* gsc_report_kind(const gsc_report* report, size_t index) {
  const gsc::Finding* finding = At(report, index);
  return finding != nullptr ? gsc::to_string(finding->kind) : nullptr;
}

extern "C" const char* gsc_report_path(const gsc_report* report, size_t index) {
  const gsc::Finding* finding = At(report, index);
  return finding != nullptr ? finding->path.c_str() : nullptr;
}

extern "C" const char* gsc_report_detail(const gsc_report* report, size_t index) {
  const gsc::Finding* finding = At(report, index);
  return finding != nullptr ? finding->detail.c_str() : nullptr;
}

extern "C" int gsc_report_json(const gsc_report* report, char* json, size_t capacity,
                               size_t* length) {
  if (json != nullptr && capacity > 0) json[0] = '\0';
  if (length != nullptr) *length = 0;
  std::string detail;
  return gsc::capi::Guarded(detail, [&] {
    if (report == nullptr || (json == nullptr && capacity > 0)) return GSC_STATUS_INVALID_ARGUMENT;
    return gsc::capi::WriteText(report->report.json(), json, capacity, length);
  });
}
