// How gscodec prints JSON: indented by two spaces, an object or array kept on its line when it
// fits in 96 columns, ", " and ": " between items, texts as UTF-8 with JSON's own escapes. Built
// for answers of tens of megabytes: each value is formatted once, and whether it fits on a line
// is found without formatting more than a line of it.
#ifndef GUIDESCREEN_CODEC_TOOLS_GSCODEC_JSON_PRINTER_H
#define GUIDESCREEN_CODEC_TOOLS_GSCODEC_JSON_PRINTER_H

#include <json/value.h>

#include <cstdio>
#include <string>

#include "field_table.h"

namespace gsc::fields {

// `value` as text, ending in a newline.
std::string PrintedJson(const Json::Value& value);

// Prints `value` followed by a newline to `out`.
void PrintJson(std::FILE* out, const Json::Value& value);

// Prints the field-named form of a record without holding its whole tree: the record's own fields
// in declaration order, one per line, each value as PrintJson prints it, and a caller array's
// records formatted and written one at a time.
class RecordPrinter : public FieldSink {
 public:
  explicit RecordPrinter(std::FILE* out) : out_(out) {}
  RecordPrinter(const RecordPrinter&) = delete;
  RecordPrinter& operator=(const RecordPrinter&) = delete;
  ~RecordPrinter() override;

  void Field(const char* name, Json::Value value) override;
  void BeginArray(const char* name) override;
  void Element(Json::Value record) override;
  void EndArray() override;
  // Closes the record's object; nothing is written after it.
  void Finish();

 private:
  void Member(const char* name);
  void Flush();

  std::FILE* out_;
  std::string text_;
  bool first_member_ = true;
  bool first_element_ = true;
  bool finished_ = false;
};

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_TOOLS_GSCODEC_JSON_PRINTER_H
