#include "codec/reporting.h"

namespace gsc::codec {
namespace {

// Bytes that would make a bare name ambiguous in a path.
bool NeedsQuotes(const char* name, size_t length) {
  if (length == 0) return true;
  for (size_t i = 0; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(name[i]);
    if (byte < 0x20 || byte == 0x7F || byte == '.' || byte == '[' || byte == ']' || byte == '"' ||
        byte == '\\' || byte == ' ') {
      return true;
    }
  }
  return false;
}

void AppendQuoted(std::string& out, const char* name, size_t length) {
  static constexpr char kHex[] = "0123456789abcdef";
  out += "[\"";
  for (size_t i = 0; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(name[i]);
    if (byte == '"' || byte == '\\') {
      out += '\\';
      out += static_cast<char>(byte);
    } else if (byte < 0x20 || byte == 0x7F) {
      out += "\\u00";
      out += kHex[byte >> 4U];
      out += kHex[byte & 0xFU];
    } else {
      out += static_cast<char>(byte);
    }
  }
  out += "\"]";
}

void Append(std::string& out, const Segment& segment) {
  if (segment.name == nullptr) {
    out += '[';
    out += std::to_string(segment.index);
    out += ']';
    return;
  }
  if (segment.prefix == nullptr && NeedsQuotes(segment.name, segment.length)) {
    AppendQuoted(out, segment.name, segment.length);
    return;
  }
  if (!out.empty()) out += '.';
  if (segment.prefix != nullptr) out += segment.prefix;
  out.append(segment.name, segment.length);
  out += segment.suffix;
}

}  // namespace

std::string PathName(const char* name, size_t length) {
  std::string out;
  Append(out, Segment::Member(name, static_cast<uint32_t>(length)));
  return out;
}

void Reporting::Add(gsc::FindingKind kind, std::string detail) {
  report_.add(kind, Path(nullptr), std::move(detail));
}

void Reporting::Add(gsc::FindingKind kind, const Segment& last, std::string detail) {
  report_.add(kind, Path(&last), std::move(detail));
}

std::string Reporting::Path(const Segment* last) const {
  std::string out;
  for (const Segment& segment : path_) Append(out, segment);
  if (last != nullptr) Append(out, *last);
  return out;
}

std::string Describe(const Json::Value& value) {
  // Texts are shown whole up to this many bytes, then cut with "...".
  constexpr size_t kTextShown = 40;
  switch (value.type()) {
    case Json::nullValue:
      return "null";
    case Json::booleanValue:
      return value.asBool() ? "true" : "false";
    case Json::intValue:
    case Json::uintValue:
    case Json::realValue:
      return "number " + value.asString();
    case Json::stringValue: {
      const char* begin = nullptr;
      const char* end = nullptr;
      value.getString(&begin, &end);
      const auto length = static_cast<size_t>(end - begin);
      std::string text(begin, length < kTextShown ? length : kTextShown);
      return "text \"" + text + (length > kTextShown ? "...\"" : "\"");
    }
    case Json::arrayValue:
      return "array of " + std::to_string(value.size());
    case Json::objectValue:
      return "object of " + std::to_string(value.size()) +
             (value.size() == 1 ? " member" : " members");
  }
  return "value";
}

}  // namespace gsc::codec
