// The field-named form of a record written as text straight from its bytes: the same JSON that
// ToJson builds, with each record's fields in declaration order, without building a tree. This
// is how decode prints, so that an answer of tens of megabytes costs little more than parsing it.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_RECORD_TEXT_H
#define GUIDESCREEN_CODEC_DESCRIBE_RECORD_TEXT_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "describe/field_table.h"

namespace gsc::fields {

// Writes the record at `record` to `out` as PrintJson lays JSON out (two-space indents, anything
// that fits in a line on one line), followed by a newline.
void PrintRecord(std::FILE* out, const RecordTable& table, const void* record,
                 const ShowOptions& options = {});

// The same text as a string.
std::string RecordText(const RecordTable& table, const void* record,
                       const ShowOptions& options = {});

// Prints a record as PrintRecord does while the records of its one caller array arrive in parts:
// the fields before the array, then the array's records as they are given, then the rest. For a
// record whose array holds at least one record taking more than a line, as every programme does:
// the record and the array are then laid over lines whatever else they hold.
class StreamedRecordPrinter {
 public:
  StreamedRecordPrinter(std::FILE* out, const RecordTable& table, const ShowOptions& options);
  ~StreamedRecordPrinter();
  StreamedRecordPrinter(const StreamedRecordPrinter&) = delete;
  StreamedRecordPrinter& operator=(const StreamedRecordPrinter&) = delete;

  // The fields of `head` before the caller array, and the array's opening bracket.
  void Begin(const void* head);
  // The next `count` records of the array, from `records`.
  void Add(const void* records, uint32_t count);
  // The array's closing bracket, the fields of `head` after it, the record's closing brace and a
  // newline; everything is written out.
  void End(const void* head);
  // Writes out what was printed so far (when the array is not to be finished).
  void Flush();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_RECORD_TEXT_H
