// The enumerations of the records, described once: each enumeration's C name and its enumerators
// in order. The codecs take their value counts from here (JsonValues), the field-named form its
// names, so an enumerator added to a record's enumeration is read, written and shown everywhere.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_ENUMERATIONS_H
#define GUIDESCREEN_CODEC_DESCRIBE_ENUMERATIONS_H

#include <algorithm>
#include <cstddef>

#include "guidescreen_codec/field_records.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"

namespace gsc::fields {

// One named value of an enumeration.
struct Enumerator {
  int value;
  const char* name;
};

// The enumerators of one enumeration, in order.
struct Enumerators {
  const Enumerator* first;
  size_t count;
  constexpr const Enumerator* begin() const { return first; }
  constexpr const Enumerator* end() const { return first + count; }
  constexpr size_t size() const { return count; }
  constexpr const Enumerator& operator[](size_t i) const { return first[i]; }
};

// An enumeration type: its name and its enumerators.
struct EnumType {
  template <size_t N>
  constexpr EnumType(const char* type_name, const Enumerator (&enumerators)[N])
      : name(type_name), values{enumerators, N} {}

  const char* name;
  Enumerators values;

  // The JSON values a codec reads and writes: for an enumeration whose first enumerator is 0,
  // "not set", the stored values 1 to N stand for the JSON values 0 to N - 1.
  constexpr int JsonValues() const { return static_cast<int>(values.size()) - 1; }
  // The enumerator named `value`, or nullptr when the value has no name.
  const char* NameOf(int value) const {
    const Enumerator* found = std::find_if(
        values.begin(), values.end(), [value](const Enumerator& e) { return e.value == value; });
    return found != values.end() ? found->name : nullptr;
  }
};

// An enumerator and its value.
#define GSC_ENUMERATOR(name)      \
  ::gsc::fields::Enumerator {     \
    static_cast<int>(name), #name \
  }

inline constexpr Enumerator kScreenStatusValues[] = {GSC_ENUMERATOR(EM_GUIDESCREEN_STATUS_UNKNOWN),
                                                     GSC_ENUMERATOR(EM_GUIDESCREEN_STATUS_JSON_0),
                                                     GSC_ENUMERATOR(EM_GUIDESCREEN_STATUS_JSON_1)};
inline constexpr EnumType kScreenStatusEnum{"EM_GUIDESCREEN_STATUS", kScreenStatusValues};
inline constexpr Enumerator kDateTypeValues[] = {GSC_ENUMERATOR(EM_GUIDESCREEN_DATE_TYPE_UNKNOWN),
                                                 GSC_ENUMERATOR(EM_GUIDESCREEN_DATE_TYPE_JSON_0),
                                                 GSC_ENUMERATOR(EM_GUIDESCREEN_DATE_TYPE_JSON_1),
                                                 GSC_ENUMERATOR(EM_GUIDESCREEN_DATE_TYPE_JSON_2)};
inline constexpr EnumType kDateTypeEnum{"EM_GUIDESCREEN_DATE_TYPE", kDateTypeValues};
inline constexpr Enumerator kHoriAlignValues[] = {
    GSC_ENUMERATOR(EM_TEXT_HORI_ALIGN_UNKNOWN), GSC_ENUMERATOR(EM_TEXT_HORI_ALIGN_JSON_0),
    GSC_ENUMERATOR(EM_TEXT_HORI_ALIGN_JSON_1), GSC_ENUMERATOR(EM_TEXT_HORI_ALIGN_JSON_2)};
inline constexpr EnumType kHoriAlignEnum{"EM_TEXT_HORI_ALIGN", kHoriAlignValues};
inline constexpr Enumerator kVertAlignValues[] = {
    GSC_ENUMERATOR(EM_TEXT_VERT_ALIGN_UNKNOWN), GSC_ENUMERATOR(EM_TEXT_VERT_ALIGN_JSON_0),
    GSC_ENUMERATOR(EM_TEXT_VERT_ALIGN_JSON_1), GSC_ENUMERATOR(EM_TEXT_VERT_ALIGN_JSON_2)};
inline constexpr EnumType kVertAlignEnum{"EM_TEXT_VERT_ALIGN", kVertAlignValues};
inline constexpr Enumerator kEnterStyleValues[] = {
    GSC_ENUMERATOR(EM_ENTER_STYLE_UNKNOWN), GSC_ENUMERATOR(EM_ENTER_STYLE_JSON_0),
    GSC_ENUMERATOR(EM_ENTER_STYLE_JSON_1),  GSC_ENUMERATOR(EM_ENTER_STYLE_JSON_2),
    GSC_ENUMERATOR(EM_ENTER_STYLE_JSON_3),  GSC_ENUMERATOR(EM_ENTER_STYLE_JSON_4)};
inline constexpr EnumType kEnterStyleEnum{"EM_ENTER_STYLE", kEnterStyleValues};
inline constexpr Enumerator kExitStyleValues[] = {
    GSC_ENUMERATOR(EM_EXIT_STYLE_UNKNOWN), GSC_ENUMERATOR(EM_EXIT_STYLE_JSON_0),
    GSC_ENUMERATOR(EM_EXIT_STYLE_JSON_1),  GSC_ENUMERATOR(EM_EXIT_STYLE_JSON_2),
    GSC_ENUMERATOR(EM_EXIT_STYLE_JSON_3),  GSC_ENUMERATOR(EM_EXIT_STYLE_JSON_4)};
inline constexpr EnumType kExitStyleEnum{"EM_EXIT_STYLE", kExitStyleValues};
inline constexpr Enumerator kElementTypeValues[] = {
    GSC_ENUMERATOR(EM_ELEMENT_TYPE_UNKNOWN),     GSC_ENUMERATOR(EM_ELEMENT_TYPE_VIDEO),
    GSC_ENUMERATOR(EM_ELEMENT_TYPE_PICTURE),     GSC_ENUMERATOR(EM_ELEMENT_TYPE_TEXT),
    GSC_ENUMERATOR(EM_ELEMENT_TYPE_PLACEHOLDER), GSC_ENUMERATOR(EM_ELEMENT_TYPE_CAPTURE)};
inline constexpr EnumType kElementTypeEnum{"EM_ELEMENT_TYPE", kElementTypeValues};
inline constexpr Enumerator kCaptureTypeValues[] = {GSC_ENUMERATOR(EM_CAPTURE_TYPE_UNKNOWN),
                                                    GSC_ENUMERATOR(EM_CAPTURE_TYPE_JSON_0),
                                                    GSC_ENUMERATOR(EM_CAPTURE_TYPE_JSON_1)};
inline constexpr EnumType kCaptureTypeEnum{"EM_CAPTURE_TYPE", kCaptureTypeValues};
inline constexpr Enumerator kTourPeriodValues[] = {
    GSC_ENUMERATOR(EM_TOUR_PERIOD_TYPE_UNKNOWN), GSC_ENUMERATOR(EM_TOUR_PERIOD_TYPE_JSON_0),
    GSC_ENUMERATOR(EM_TOUR_PERIOD_TYPE_JSON_1), GSC_ENUMERATOR(EM_TOUR_PERIOD_TYPE_CUSTOM_TIME)};
inline constexpr EnumType kTourPeriodEnum{"EM_TOUR_PERIOD_TYPE", kTourPeriodValues};
inline constexpr Enumerator kProgrammeTypeValues[] = {GSC_ENUMERATOR(EM_PROGRAMME_TYPE_UNKNOWN),
                                                      GSC_ENUMERATOR(EM_PROGRAMME_TYPE_ORDINARY),
                                                      GSC_ENUMERATOR(EM_PROGRAMME_TYPE_JSON_1)};
inline constexpr EnumType kProgrammeTypeEnum{"EM_PROGRAMME_TYPE", kProgrammeTypeValues};
inline constexpr Enumerator kPeriodTypeValues[] = {
    GSC_ENUMERATOR(EM_PLAN_PERIOD_TYPE_UNKNOWN), GSC_ENUMERATOR(EM_PLAN_PERIOD_TYPE_JSON_0),
    GSC_ENUMERATOR(EM_PLAN_PERIOD_TYPE_JSON_1), GSC_ENUMERATOR(EM_PLAN_PERIOD_TYPE_JSON_2),
    GSC_ENUMERATOR(EM_PLAN_PERIOD_TYPE_JSON_3)};
inline constexpr EnumType kPeriodTypeEnum{"EM_PLAN_PERIOD_TYPE", kPeriodTypeValues};
inline constexpr Enumerator kReviewStateValues[] = {GSC_ENUMERATOR(EM_PLAN_REVIEW_STATE_UNKNOWN),
                                                    GSC_ENUMERATOR(EM_PLAN_REVIEW_STATE_JSON_0),
                                                    GSC_ENUMERATOR(EM_PLAN_REVIEW_STATE_JSON_1)};
inline constexpr EnumType kReviewStateEnum{"EM_PLAN_REVIEW_STATE", kReviewStateValues};
inline constexpr Enumerator kGdStatusValues[] = {GSC_ENUMERATOR(EM_GD_STATUS_CODE_100),
                                                 GSC_ENUMERATOR(EM_GD_STATUS_CODE_010),
                                                 GSC_ENUMERATOR(EM_GD_STATUS_CODE_001)};
inline constexpr EnumType kGdStatusEnum{"EM_GD_STATUS", kGdStatusValues};
inline constexpr Enumerator kPlanTypeValues[] = {GSC_ENUMERATOR(EM_PROGRAMMEPLAN_TYPE_UNKNOWN),
                                                 GSC_ENUMERATOR(EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY),
                                                 GSC_ENUMERATOR(EM_PROGRAMMEPLAN_TYPE_TIMER)};
inline constexpr EnumType kPlanTypeEnum{"EM_PROGRAMMEPLAN_TYPE", kPlanTypeValues};

#undef GSC_ENUMERATOR

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_ENUMERATIONS_H
