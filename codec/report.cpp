#include "guidescreen_codec/report.h"

#include <ostream>
#include <utility>

namespace gsc {

const char* to_string(FindingKind kind) {
  switch (kind) {
    case FindingKind::kTextCut:
      return "text-cut";
    case FindingKind::kArrayClamped:
      return "array-clamped";
    case FindingKind::kCollectionClamped:
      return "collection-clamped";
    case FindingKind::kElementBufferFull:
      return "element-buffer-full";
    case FindingKind::kEnumOutOfRange:
      return "enum-out-of-range";
    case FindingKind::kUnknownElementType:
      return "unknown-element-type";
    case FindingKind::kUnknownMember:
      return "unknown-member";
    case FindingKind::kValueConverted:
      return "value-converted";
    case FindingKind::kValueMalformed:
      return "value-malformed";
    case FindingKind::kConversionFailed:
      return "conversion-failed";
    case FindingKind::kCountBeyondCapacity:
      return "count-beyond-capacity";
    case FindingKind::kEnumNotSent:
      return "enum-not-sent";
    case FindingKind::kTextUnterminated:
      return "text-unterminated";
    case FindingKind::kElementKindSkipped:
      return "element-kind-skipped";
    case FindingKind::kDisplayUnitWithoutCode:
      return "display-unit-without-code";
    case FindingKind::kJsonMalformed:
      return "json-malformed";
  }
  return "unknown";
}

void Report::add(FindingKind kind, std::string path, std::string detail) {
  findings_.push_back(Finding{kind, std::move(path), std::move(detail)});
}

std::string Report::str() const {
  std::string out;
  for (const Finding& finding : findings_) {
    out += finding.path.empty() ? "(root)" : finding.path;
    out += ": ";
    out += to_string(finding.kind);
    out += ": ";
    out += finding.detail;
    out += '\n';
  }
  return out;
}

namespace {

// The length of the valid UTF-8 sequence at `text` (of `size` bytes), or 0 when it is not one:
// no overlong forms, no surrogates, nothing above U+10FFFF.
size_t Utf8Sequence(const char* bytes, size_t size) {
  const auto byte = [bytes](size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byte(0);
  size_t length = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (size < length || byte(1) < low || byte(1) > high) return 0;
  for (size_t i = 2; i < length; ++i) {
    if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
  }
  return length;
}

void AppendJsonString(std::string& out, const std::string& text) {
  static constexpr char kHex[] = "0123456789abcdef";
  out += '"';
  for (size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte == '"' || byte == '\\') {
      out += '\\';
      out += static_cast<char>(byte);
      ++i;
    } else if (byte < 0x20) {
      out += "\\u00";
      out += kHex[byte >> 4U];
      out += kHex[byte & 0xFU];
      ++i;
    } else if (byte < 0x80) {
      out += static_cast<char>(byte);
      ++i;
    } else if (const size_t length = Utf8Sequence(text.data() + i, text.size() - i)) {
      out.append(text, i, length);
      i += length;
    } else {
      out += "\xEF\xBF\xBD";  // U+FFFD
      ++i;
    }
  }
  out += '"';
}

}  // namespace

std::string Report::json() const {
  std::string out = "[";
  for (const Finding& finding : findings_) {
    if (out.size() > 1) out += ',';
    out += "{\"kind\":\"";
    out += to_string(finding.kind);
    out += "\",\"path\":";
    AppendJsonString(out, finding.path);
    out += ",\"detail\":";
    AppendJsonString(out, finding.detail);
    out += '}';
  }
  out += ']';
  return out;
}

std::ostream& operator<<(std::ostream& out, const Report& report) {
  return out << report.str();
}

}  // namespace gsc
