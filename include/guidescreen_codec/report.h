// What an answer held that the records could not take, and what a request could not send: the
// report that the reporting overloads of serialize and deserialize fill.
//
// The plain overloads say nothing, because their exact behaviour is what devices expect. The
// reporting overloads (declared in operations.h, taking a gsc::Report& last) leave exactly the
// same bytes and JSON, and in addition tell what happened, one finding per event, in the order
// the codec met them.
#ifndef GUIDESCREEN_CODEC_REPORT_H
#define GUIDESCREEN_CODEC_REPORT_H

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "guidescreen_codec/export.h"

namespace gsc {

// The kinds of finding. Values are stable: new kinds are only ever added at the end.
enum class FindingKind : int {
  // Reading an answer.
  kTextCut = 1,         // a text longer than its field: bytes received, bytes kept
  kArrayClamped,        // an array longer than the record's: length, capacity
  kCollectionClamped,   // a keyed collection with more members than the caller's array
  kElementBufferFull,   // a window's element buffer could not take the next entry
  kEnumOutOfRange,      // an enumeration outside its values, stored as 0
  kUnknownElementType,  // an element "Type" outside 0..4, stored as a header alone
  kUnknownMember,       // a member no reader or writer of that object uses
  kValueConverted,      // a value of another JSON type converted silently (1.5 read as 1)
  kValueMalformed,      // a value of a shape the reader skips or reads in part
  kConversionFailed,    // JsonCpp could not convert a value: reading stopped there (or, with
                        // OnFailure::kSkip, read it as null and went on)
  // Writing a request.
  kCountBeyondCapacity,     // a count above its array's capacity: the entries past it not sent
  kEnumNotSent,             // an enumeration outside its values, left out of the request
  kTextUnterminated,        // a text field without terminator, sent whole
  kElementKindSkipped,      // an element buffer entry of unknown kind, left a null hole
  kDisplayUnitWithoutCode,  // a display unit state with no code, which ends the "Status" text
  // Reading an answer's text.
  kJsonMalformed,  // the text is not JSON: nothing was read (line, column and reason)
};

// The name of a kind in lower case with hyphens ("text-cut"); "unknown" for other values.
GSC_API const char* to_string(FindingKind kind);

// One event. `path` says where: in an answer, from the result object
// (`infos.P-7.Ordinary.Windows[3].Elements[2].Text.Content`); in a request, from the input
// record (`stuInfo.stuProgrammes[3].szProgrammeName`). Member names are joined by '.', array
// elements are written [i], and a name that is empty or holds '.', '[', ']', '"', '\\', a space
// or a control character is written ["..."] with '"' and '\\' escaped by a backslash. `detail`
// says what happened, with the figures ("600 bytes received, 511 kept").
struct Finding {
  FindingKind kind;
  std::string path;
  std::string detail;
};

// What a reporting deserialize does with a value JsonCpp cannot convert (a text where a number
// belongs, a number where an object or array must be looked into).
enum class OnFailure : int {
  // Stop there, as the plain overload does when it throws: the record is filled up to that
  // value, the failure is the last finding, and the call returns false.
  kStop,
  // Read the value as JSON null would be read at that step, note the failure, and go on to the
  // end; the call returns true. The record then holds exactly the bytes the plain overload leaves
  // for the same answer with every value named by a conversion-failed finding replaced by null:
  // a text where a number belongs reads as a missing number, {"infos": 5} as no records, and the
  // counts are set as for a complete read. Writing never fails this way and is unaffected.
  kSkip,
};

// The findings of one call, in the order they happened. A reporting overload clears the report
// before it starts, so after the call it holds that call's findings only.
class Report {
 public:
  // A report whose deserialize stops at the first value it cannot convert.
  Report() noexcept = default;
  // A report whose deserialize stops at, or skips, values it cannot convert.
  explicit Report(OnFailure on_failure) noexcept : on_failure_(on_failure) {}

  // What a reporting deserialize does with a value it cannot convert.
  OnFailure on_failure() const noexcept { return on_failure_; }

  const std::vector<Finding>& findings() const noexcept { return findings_; }
  bool empty() const noexcept { return findings_.empty(); }
  size_t size() const noexcept { return findings_.size(); }
  void clear() noexcept { findings_.clear(); }

  // Appends a finding; the codecs call this, callers may too.
  GSC_API void add(FindingKind kind, std::string path, std::string detail);

  // One line per finding, "path: kind: detail" ("infos.P-7.Ordinary.Windows: array-clamped: 20
  // elements, capacity 16"), each ended by a newline. Empty when there are none.
  GSC_API std::string str() const;

  // The findings as one line of JSON: an array of {"kind": ..., "path": ..., "detail": ...}
  // objects in order ("[]" when there are none). A byte that is not part of valid UTF-8 (a
  // device's member name may hold any) is written as U+FFFD, so the text is always valid JSON.
  GSC_API std::string json() const;

 private:
  std::vector<Finding> findings_;
  OnFailure on_failure_ = OnFailure::kStop;
};

// Prints `report.str()`.
GSC_API std::ostream& operator<<(std::ostream& out, const Report& report);

}  // namespace gsc

#endif  // GUIDESCREEN_CODEC_REPORT_H
