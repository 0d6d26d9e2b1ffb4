// The text readers against the tree path: for each answer text, parsing it with JsonCpp and
// calling deserialize must leave the same bytes, return value, exception and findings as
// deserialize_json on the text itself, plain and reporting, stopping and skipping.
#include <gtest/gtest.h>

#include <string>

#include "guidescreen_codec/json_text.h"
#include "support/tree_differential.h"

namespace gsc::test {
namespace {

// One programme listing in several spellings of the same facts, and in JsonCpp's odd cases.
const char* const kProgrammeAnswers[] = {
    R"({"infos":{}})",
    R"({"infos":null})",
    R"({})",
    R"(null)",
    R"({"infos":{"b":{"ProgrammeName":"second"},"a":{"ProgrammeName":"first","Enable":true}}})",
    // Keys in byte order, not text order: "10" before "9".
    R"({"infos":{"9":{"ProgrammeID":"nine"},"10":{"ProgrammeID":"ten"},"1":{}}})",
    // More members than room: the rest are named in the report.
    R"({"infos":{"a":{},"b":{},"c":{},"d":{},"e":{}}})",
    // The last of duplicate names wins, in the collection and in an object.
    R"({"infos":{"p":{"ProgrammeName":"one"},"p":{"ProgrammeName":"two","ProgrammeName":"three"}}})",
    // Numbers as JsonCpp reads them into texts and integers.
    R"({"infos":{"p":{"ProgrammeName":1.0,"ProgrammeID":-0,"Enable":1e-400}}})",
    R"({"infos":{"p":{"ProgrammeName":-1e-400,"ProgrammeID":-0.0,"Enable":-4.9e-324}}})",
    R"({"infos":{"p":{"ProgrammeName":123456789012345678901234567890,"ProgrammeID":-0.0}}})",
    R"({"infos":{"p":{"ProgrammeName":18446744073709551615,"ProgrammeID":-9223372036854775808}}})",
    R"({"infos":{"p":{"ProgrammeName":1e300,"ProgrammeID":0.1,"Enable":0.0}}})",
    R"({"infos":{"p":{"ProgrammeName":"a\u0000b","ProgrammeID":"\ud83d\ude00 \u00e9"}}})",
    // Values JsonCpp cannot convert: stop or skip.
    R"({"infos":{"p":{"Enable":"yes"}}})",
    R"({"infos":{"p":{"Enable":[1]},"q":{"Enable":{}}}})",
    R"({"infos":[1,2]})",
    R"({"infos":"text"})",
    R"([])",
    R"(5)",
    R"({"infos":{"p":[]}})",
    R"({"infos":{"p":{"Ordinary":{"Windows":[{"Volume":4294967296}]}}}})",
    R"({"infos":{"p":{"Ordinary":{"Windows":[{"Volume":2147483648.5}]}}}})",
    // Notes on entries that lie 8-byte aligned and on those that do not, a stopped read among
    // them, and a "Note" that is no array.
    R"({"infos":{"p":{"Ordinary":{"Windows":[{"Elements":[
      {"Type":3,"Note":[{"Enable":true},{"NoteRect":[1,2,3,4]}]},
      {"Type":0,"Note":[{"Enable":true},{},{},{},{"Enable":true}]},
      {"Type":2,"Note":[{"NoteInfo":{"LineHeight":2.5}}],"Text":{"LineHeight":0.5}},
      {"Type":4,"Note":{"Enable":true}},
      {"Type":1,"Note":[{"Enable":true},{"Enable":"no"}]}]}]}}}})",
    // A whole programme: windows, element kinds, notes, colours, unknown members.
    R"({"infos":{"p":{"ProgrammeName":"n","Enable":true,"Extra":[1,{"x":1}],"Ordinary":{
      "TempletState":true,"Description":"d","Windows":[
        {"WinID":"w0","BackgroundColor":[1,2,3,4],"Volume":5,"TourPeriod":2,"TourPeriodTime":9,
         "Elements":[
           {"Type":0,"Name":"v","Video":{"Path":"/v","PlayCount":2},"Note":[{"NoteInfo":{}}]},
           {"Type":1,"Picture":{"Path":"/p","EnterStyle":3,"ExitStyle":9,"Diaphaneity":1.5}},
           {"Type":2,"Text":{"Content":"t","FontColor":[1,2,3],"LineHeight":1.25,"FontSize":3}},
           {"Type":3,"Name":"h","FillerState":1,"Unknown":null,"Unknown":2},
           {"Type":4,"DeviceInfo":{"IP":"10.0.0.1","Port":"80","CaptureType":1}},
           {"Type":7},{"Type":"2"},null,5
         ]},
        {"WinID":7,"BackgroundColor":[1,2],"Elements":{}},
        {"Elements":[{"Type":2,"Text":{"LineHeight":true}}]}
      ]}}}})",
};

TEST(TextReaders, ReadProgrammeListingsAsTheTreePathDoes) {
  for (const char* text : kProgrammeAnswers) {
    ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMES>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMES>(text, 0x5A);
  }
}

TEST(TextReaders, ReadEveryOtherAnswerAsTheTreePathDoes) {
  const char* const texts[] = {
      R"({})",
      R"(null)",
      R"(true)",
      R"([1])",
      R"({"infos":{"s":{"SplitScreen":[{"ID":"x","Rect":[1,2,3,4]}],"Time":[]}}})",
      // Twelve sun entries are read from an array of any length: past its end they read as null.
      R"({"infos":{"s":{"AutoBright":{"Time":[{"Sunrise":7,"Sunset":17}]}},
                   "t":{"AutoBright":{"Time":[]}},
                   "u":{"AutoBright":{"Time":[1,2,3,4,5,6,7,8,9,10,11,12,13]}}}})",
      R"({"DisplayScreenCfg":{"AutoBright":{"Time":[{"Sunrise":7}]},"Time":[{"PlayDates":[1]}]}})",
      R"({"DisplayScreenCfg":{"Brightness":3,"Volume":"x"},"Programme":{"ProgrammeName":"x"}})",
      R"({"ProgrammePlan":{"PlanType":1,"Timer":{"PlayDates":[1,2],"StartTime":"07:05"}}})",
      R"({"infos":{"a":{"PlanType":0},"b":{"PlanType":1,"Timer":5},"c":{"PlanType":"1"}}})",
      R"({"ProgrammeID":12,"ProgrammePlanID":1.5,"infos":{"a":{"ProgrammeType":1,"Enable":2}}})",
      // Fewer sun entries than the twelve the reader reads: those missing read as null, and
      // nothing after the array is taken for them.
      R"({"DisplayScreenCfg":{"AutoBright":{"Time":[]},"Bright":5}})",
      R"({"infos":{"s":{"AutoBright":{"Time":[{"Sunrise":7}]},"ID":"x"}},"Bright":{}})",
  };
  for (const char* text : texts) {
    ExpectSameAsTree<tagNET_OUT_SET_GUIDESCREEN_CFG>(text);
    ExpectSameAsTree<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>(text);
    ExpectSameAsTree<tagNET_OUT_SET_GD_STATUS>(text);
    ExpectSameAsTree<tagNET_OUT_GET_PROGRAMME_BYID>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>(text);
    ExpectSameAsTree<tagNET_OUT_ADD_ONE_PROGRAMME>(text);
    ExpectSameAsTree<tagNET_OUT_MODIFY_ONE_PROGRAMME>(text);
    ExpectSameAsTree<tagNET_OUT_DEL_PROGRAMMES>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>(text);
    ExpectSameAsTree<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>(text);
    ExpectSameAsTree<tagNET_OUT_ADD_PROGRAMMEPLAN>(text);
    ExpectSameAsTree<tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>(text);
    ExpectSameAsTree<tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>(text);
    ExpectSameAsTree<tagNET_OUT_DEL_PROGRAMMEPLANS>(text);
  }
}

TEST(TextReaders, RefuseTextThatIsNotJsonBeforeTouchingTheRecord) {
  Caller<tagNET_OUT_GET_ALL_PROGRAMMES> caller;
  tagNET_OUT_GET_ALL_PROGRAMMES& out = caller.Reset(0x33);
  const std::string before = caller.Snapshot();
  try {
    deserialize_json("{\"infos\":\n  {\"a\": 01}}", out);
    ADD_FAILURE() << "no JsonError";
  } catch (const JsonError& e) {
    EXPECT_EQ(e.line(), 2U);
    EXPECT_EQ(e.column(), 9U);
    EXPECT_STREQ(e.what(), "line 2, column 9: invalid number: leading zero");
  }
  EXPECT_TRUE(caller.Snapshot() == before);

  Report report(OnFailure::kSkip);
  EXPECT_FALSE(deserialize_json("{\"infos\": {},}", out, report));
  ASSERT_EQ(report.findings().size(), 1U);
  EXPECT_EQ(report.findings()[0].kind, FindingKind::kJsonMalformed);
  EXPECT_EQ(report.findings()[0].path, "");
  EXPECT_EQ(report.findings()[0].detail, "line 1, column 14: a member name was expected");
  EXPECT_TRUE(caller.Snapshot() == before);
  EXPECT_STREQ(to_string(FindingKind::kJsonMalformed), "json-malformed");
}

TEST(TextReaders, ReadAgainAfterTheBuffersAreReleased) {
  tagNET_OUT_ADD_ONE_PROGRAMME out{};
  out.dwSize = sizeof out;
  EXPECT_TRUE(deserialize_json(R"({"ProgrammeID":"first"})", out));
  release_json_buffers();
  release_json_buffers();
  EXPECT_TRUE(deserialize_json(R"({"ProgrammeID":"second"})", out));
  EXPECT_STREQ(out.szProgrammeID, "second");
}

}  // namespace
}  // namespace gsc::test
