// Room for reading answers: element buffers attached from one block of storage, and output records
// made ready for the next read, in C and in C++.
#include "guidescreen_codec/listing_room.h"

#include <cstdint>
#include <stdexcept>
#include <string>

#include "capi/boundary.h"
#include "capi/operation_table.h"
#include "describe/field_table.h"
#include "describe/operations_table.h"
#include "guidescreen_codec/capi.h"

namespace {

// The table of the output record called `name`: the operations' own.
const gsc::fields::RecordTable& AnswerTable(const char* name) {
  for (const gsc::fields::Operation& op : gsc::fields::Operations()) {
    if (std::string(op.answer->name) == name) return *op.answer;
  }
  throw std::logic_error(std::string("no operation answers with ") + name);
}

}  // namespace

extern "C" size_t gsc_element_storage_size(uint32_t programmes, uint32_t entries_per_window) {
  const size_t buffer = gsc_element_buffer_size(entries_per_window);
  const size_t windows = size_t{programmes} * GSC_MAX_WINDOWS;
  if (buffer == SIZE_MAX || (windows != 0 && buffer > SIZE_MAX / windows)) return SIZE_MAX;
  return windows * buffer;
}

extern "C" int gsc_attach_element_buffers(tagNET_PROGRAMME_INFO* programmes, uint32_t count,
                                          uint32_t entries_per_window, unsigned char* storage,
                                          size_t storage_size) {
  const size_t buffer = gsc_element_buffer_size(entries_per_window);
  if (buffer > UINT32_MAX - 1 || (programmes == nullptr && count > 0) ||
      (storage == nullptr && count > 0 && buffer > 0))
    return GSC_STATUS_INVALID_ARGUMENT;
  const size_t needed = gsc_element_storage_size(count, entries_per_window);
  if (needed == SIZE_MAX || needed > storage_size) return GSC_STATUS_BUFFER_TOO_SMALL;
  unsigned char* next = storage;
  for (uint32_t i = 0; i < count; ++i) {
    for (tagNET_PROGRAMME_WINDOW_INFO& window : programmes[i].stuOrdinary.stuWindows) {
      window.pElementsBuf = buffer > 0 ? next : nullptr;
      window.nElementsBufLen = static_cast<uint32_t>(buffer);
      window.nElementsNum = 0;
      if (buffer > 0) next += buffer;
    }
  }
  return GSC_STATUS_OK;
}

extern "C" int gsc_reset_answer(const char* operation, void* out_record) {
  std::string detail;
  return gsc::capi::Guarded(detail, [&] {
    const gsc::capi::Operation* op = gsc::capi::FindOperation(operation);
    if (op == nullptr)
      return operation == nullptr ? GSC_STATUS_INVALID_ARGUMENT : GSC_STATUS_UNKNOWN_OPERATION;
    if (const int status =
            gsc::capi::CheckRecord(out_record, op->answer->size, op->answer->alignment))
      return status;
    gsc::fields::ResetForRead(*op->answer, out_record);
    return GSC_STATUS_OK;
  });
}

namespace gsc {

size_t element_storage_size(uint32_t programmes, uint32_t entries_per_window) noexcept {
  return gsc_element_storage_size(programmes, entries_per_window);
}

bool attach_element_buffers(tagNET_PROGRAMME_INFO* programmes, uint32_t count,
                            uint32_t entries_per_window, unsigned char* storage,
                            size_t storage_size) noexcept {
  return gsc_attach_element_buffers(programmes, count, entries_per_window, storage, storage_size) ==
         GSC_STATUS_OK;
}

// Each record type's reset runs on the table the operations describe it with. (`Record` is a
// type: parenthesised, it would not parse.)
// NOLINTBEGIN(bugprone-macro-parentheses)
#define GSC_RESET_FOR_READ(Record)                    \
  void reset_for_read(Record& out) {                  \
    fields::ResetForRead(AnswerTable(#Record), &out); \
  }
// NOLINTEND(bugprone-macro-parentheses)
GSC_RESET_FOR_READ(tagNET_OUT_SET_GUIDESCREEN_CFG)
GSC_RESET_FOR_READ(tagNET_OUT_GET_GUIDESCREEN_CFG_BYID)
GSC_RESET_FOR_READ(tagNET_OUT_GET_ALL_GUIDESCREEN_CFG)
GSC_RESET_FOR_READ(tagNET_OUT_SET_GD_STATUS)
GSC_RESET_FOR_READ(tagNET_OUT_GET_PROGRAMME_BYID)
GSC_RESET_FOR_READ(tagNET_OUT_GET_ALL_PROGRAMMES)
GSC_RESET_FOR_READ(tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES)
GSC_RESET_FOR_READ(tagNET_OUT_ADD_ONE_PROGRAMME)
GSC_RESET_FOR_READ(tagNET_OUT_MODIFY_ONE_PROGRAMME)
GSC_RESET_FOR_READ(tagNET_OUT_DEL_PROGRAMMES)
GSC_RESET_FOR_READ(tagNET_OUT_GET_ALL_PROGRAMMEPLANS)
GSC_RESET_FOR_READ(tagNET_OUT_GET_PROGRAMMEPLAN_BYID)
GSC_RESET_FOR_READ(tagNET_OUT_ADD_PROGRAMMEPLAN)
GSC_RESET_FOR_READ(tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN)
GSC_RESET_FOR_READ(tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN)
GSC_RESET_FOR_READ(tagNET_OUT_DEL_PROGRAMMEPLANS)
#undef GSC_RESET_FOR_READ

}  // namespace gsc
