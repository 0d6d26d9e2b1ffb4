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

std::ostream& operator<<(std::ostream& out, const Report& report) {
  return out << report.str();
}

}  // namespace gsc
