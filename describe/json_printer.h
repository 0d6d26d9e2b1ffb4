// How the field-named form is printed: indented by two spaces, an object or array kept on its line
// when it fits in 96 columns, ", " and ": " between items, texts as UTF-8 with JSON's own escapes.
// Built for answers of tens of megabytes: each value is formatted once, and whether it fits on a
// line is found without formatting more than a line of it.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_JSON_PRINTER_H
#define GUIDESCREEN_CODEC_DESCRIBE_JSON_PRINTER_H

#include <json/value.h>

#include <cstdio>
#include <string>

namespace gsc::fields {

// `value` as text, ending in a newline.
std::string PrintedJson(const Json::Value& value);

// Prints `value` followed by a newline to `out`.
void PrintJson(std::FILE* out, const Json::Value& value);

// Appends `size` bytes of text to `out` as a JSON string: quoted, with quotes, backslashes and
// control characters escaped and every other byte as it is.
void AppendQuoted(std::string& out, const char* text, size_t size);

// The line width within which an object or array stays on one line.
constexpr size_t kLineWidth = 96;

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_JSON_PRINTER_H
