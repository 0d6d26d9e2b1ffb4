// What our own writers write, read back by the matching reader, gives no finding: the samples of
// every operation that carries a record both ways.
#include <string>

#include "describe/operations_table.h"
#include "support/fixtures.h"

namespace {

using gsc::fields::FindOperation;
using gsc::test::J;

TEST(ReportRoundTrip, WrittenRecordsReadBackWithoutFindings) {
  struct Case {
    const char* writer;
    const char* request_member;  // the record's object in the request
    const char* reader;
    const char* result_member;  // where the reader expects it
  };
  const Case cases[] = {
      {"SET_GUIDESCREEN_CFG", "infos", "GET_ALL_GUIDESCREEN_CFG", "infos"},
      {"ADD_ONE_PROGRAMME", "info", "GET_PROGRAMME_BYID", "Programme"},
      {"MODIFY_ONE_PROGRAMME", "Programme", "GET_PROGRAMME_BYID", "Programme"},
      {"ADD_IMME_PROGRAMMEPLAN", "info", "GET_PROGRAMMEPLAN_BYID", "ProgrammePlan"},
      {"ADD_TIMER_PROGRAMMEPLAN", "info", "GET_PROGRAMMEPLAN_BYID", "ProgrammePlan"},
      {"MODIFY_TIMER_PROGRAMMEPLAN", "ProgrammePlan", "GET_PROGRAMMEPLAN_BYID", "ProgrammePlan"},
  };
  for (const Case& c : cases) {
    const gsc::fields::Operation& writer = *FindOperation(c.writer);
    gsc::Report written;
    const Json::Value params = gsc::fields::Encode(writer, J(writer.request_sample), &written);
    EXPECT_TRUE(written.empty()) << c.writer << ":\n" << written;
    Json::Value result(Json::objectValue);
    result[c.result_member] = params[c.request_member];
    gsc::Report read;
    gsc::fields::Decode(*FindOperation(c.reader), result, gsc::fields::Room{32, 1U << 20}, {},
                        &read);
    EXPECT_TRUE(read.empty()) << c.writer << " read back:\n" << read;
  }
}

}  // namespace
