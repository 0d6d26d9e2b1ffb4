// The field-named form of a record written as text straight from its bytes: the same JSON that
// ToJson builds, with each record's fields in declaration order, without building a tree. This
// is how decode prints, so that an answer of tens of megabytes costs little more than parsing it.
#ifndef GUIDESCREEN_CODEC_TOOLS_GSCODEC_RECORD_TEXT_H
#define GUIDESCREEN_CODEC_TOOLS_GSCODEC_RECORD_TEXT_H

#include <cstdio>
#include <string>

#include "field_table.h"

namespace gsc::fields {

// Writes the record at `record` to `out` as PrintJson lays JSON out (two-space indents, anything
// that fits in a line on one line), followed by a newline.
void PrintRecord(std::FILE* out, const RecordTable& table, const void* record,
                 const ShowOptions& options = {});

// The same text as a string.
std::string RecordText(const RecordTable& table, const void* record,
                       const ShowOptions& options = {});

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_TOOLS_GSCODEC_RECORD_TEXT_H
