#include "describe/json_printer.h"

#include <json/writer.h>

#include <cstring>

namespace gsc::fields {
namespace {

// The escape JSON needs for byte `c` of a text, or nullptr: quotes, backslashes and control
// characters; every other byte, UTF-8 included, is written as it is.
const char* Escape(unsigned char c, char (&scratch)[8]) {
  switch (c) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\b':
      return "\\b";
    case '\f':
      return "\\f";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      if (c >= 0x20) return nullptr;
      std::snprintf(scratch, sizeof scratch, "\\u%04x", c);
      return scratch;
  }
}

size_t QuotedLength(const char* text, size_t size) {
  size_t length = 2;
  char scratch[8];
  for (size_t i = 0; i < size; ++i) {
    const char* escape = Escape(static_cast<unsigned char>(text[i]), scratch);
    length += escape ? std::strlen(escape) : 1;
  }
  return length;
}

void AppendScalar(std::string& out, const Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue:
      out += "null";
      return;
    case Json::intValue:
      out += Json::valueToString(value.asLargestInt());
      return;
    case Json::uintValue:
      out += Json::valueToString(value.asLargestUInt());
      return;
    case Json::realValue:
      out += Json::valueToString(value.asDouble());
      return;
    case Json::booleanValue:
      out += value.asBool() ? "true" : "false";
      return;
    case Json::stringValue: {
      const char* begin = nullptr;
      const char* end = nullptr;
      value.getString(&begin, &end);
      AppendQuoted(out, begin, static_cast<size_t>(end - begin));
      return;
    }
    default:
      return;
  }
}

bool IsContainer(const Json::Value& value) {
  return value.isObject() || value.isArray();
}

// The length of `value`'s one-line form, or any number above `budget` once it is longer.
size_t CompactLength(const Json::Value& value, size_t budget) {
  if (!IsContainer(value)) {
    if (value.isString()) {
      const char* begin = nullptr;
      const char* end = nullptr;
      value.getString(&begin, &end);
      // A text longer than the budget cannot fit, whatever its escapes.
      const auto size = static_cast<size_t>(end - begin);
      return size > budget ? budget + 1 : QuotedLength(begin, size);
    }
    std::string text;
    AppendScalar(text, value);
    return text.size();
  }
  size_t length = 2;  // the brackets
  bool first = true;
  for (auto it = value.begin(); it != value.end() && length <= budget; ++it) {
    if (!first) length += 2;
    first = false;
    if (value.isObject()) {
      const char* name_end = nullptr;
      const char* name = it.memberName(&name_end);
      length += QuotedLength(name, static_cast<size_t>(name_end - name)) + 2;
    }
    if (length <= budget) length += CompactLength(*it, budget - length);
  }
  return length;
}

void AppendCompact(std::string& out, const Json::Value& value) {
  if (!IsContainer(value)) return AppendScalar(out, value);
  const bool object = value.isObject();
  out += object ? '{' : '[';
  bool first = true;
  for (auto it = value.begin(); it != value.end(); ++it) {
    if (!first) out += ", ";
    first = false;
    if (object) {
      const char* name_end = nullptr;
      const char* name = it.memberName(&name_end);
      AppendQuoted(out, name, static_cast<size_t>(name_end - name));
      out += ": ";
    }
    AppendCompact(out, *it);
  }
  out += object ? '}' : ']';
}

void AppendIndent(std::string& out, size_t indent) {
  out.append(indent, ' ');
}

void AppendPrinted(std::string& out, const Json::Value& value, size_t indent) {
  if (!IsContainer(value) || value.empty() ||
      (indent <= kLineWidth && CompactLength(value, kLineWidth - indent) <= kLineWidth - indent))
    return AppendCompact(out, value);
  const bool object = value.isObject();
  out += object ? '{' : '[';
  bool first = true;
  for (auto it = value.begin(); it != value.end(); ++it) {
    out += first ? "\n" : ",\n";
    first = false;
    AppendIndent(out, indent + 2);
    if (object) {
      const char* name_end = nullptr;
      const char* name = it.memberName(&name_end);
      AppendQuoted(out, name, static_cast<size_t>(name_end - name));
      out += ": ";
    }
    AppendPrinted(out, *it, indent + 2);
  }
  out += '\n';
  AppendIndent(out, indent);
  out += object ? '}' : ']';
}

}  // namespace

void AppendQuoted(std::string& out, const char* text, size_t size) {
  out += '"';
  char scratch[8];
  // Runs of bytes written as they are go out in one piece.
  size_t run = 0;
  for (size_t i = 0; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x20 && byte != '"' && byte != '\\') continue;
    out.append(text + run, i - run);
    out += Escape(byte, scratch);
    run = i + 1;
  }
  out.append(text + run, size - run);
  out += '"';
}

std::string PrintedJson(const Json::Value& value) {
  std::string text;
  AppendPrinted(text, value, 0);
  text += '\n';
  return text;
}

void PrintJson(std::FILE* out, const Json::Value& value) {
  const std::string text = PrintedJson(value);
  std::fwrite(text.data(), 1, text.size(), out);
}

}  // namespace gsc::fields
