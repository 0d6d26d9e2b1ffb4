// How gscodec prints and finds things: the record text written straight from a record's bytes is
// the JSON ToJson builds, laid out by the line rule; JSON texts are escaped as JSON requires;
// operation names match in any case and mistyped ones find their neighbours; the arena hands out
// separate zeroed blocks, large ones included.
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "describe/arena.h"
#include "describe/json_printer.h"
#include "describe/operations_table.h"
#include "describe/record_text.h"
#include "guidescreen_codec.h"
#include "operation_names.h"
#include "support/fixtures.h"

namespace {

using namespace gsc::fields;
using gsc::test::Compact;
using gsc::test::J;

TEST(RecordText, IsWhatToJsonBuildsForEveryOperationsRecords) {
  for (const Operation& op : Operations()) {
    SCOPED_TRACE(op.name);
    const auto received = Receive(op, J(op.answer_sample), Room{3, 1 << 16});
    Arena arena;
    unsigned char* request = arena.Allocate(op.request->size);
    FromJson(*op.request, J(op.request_sample), request, arena);
    for (const bool secrets : {false, true}) {
      const ShowOptions show{secrets};
      EXPECT_EQ(Compact(J(RecordText(*op.answer, received->record, show))),
                Compact(ToJson(*op.answer, received->record, show)));
      EXPECT_EQ(Compact(J(RecordText(*op.request, request, show))),
                Compact(ToJson(*op.request, request, show)));
    }
  }
}

TEST(RecordText, KeepsWhatFitsInALineOnItAndBreaksTheRest) {
  tagNET_OUT_ADD_PROGRAMMEPLAN added = {sizeof added, "plan-7"};
  EXPECT_EQ(RecordText(*FindOperation("ADD_IMME_PROGRAMMEPLAN")->answer, &added),
            "{\"szProgrammePlanID\": \"plan-7\"}\n");
  const Operation& op = *FindOperation("GET_PROGRAMME_BYID");
  const auto received = Receive(op, J(op.answer_sample), Room{1, 1 << 16});
  std::istringstream lines(RecordText(*op.answer, received->record));
  size_t count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    EXPECT_LE(line.size(), kLineWidth) << line;
    // Two spaces per level: an indent is always even.
    EXPECT_EQ(line.find_first_not_of(' ') % 2, 0U) << line;
  }
  EXPECT_GT(count, 20U);
}

TEST(PrintedJson, EscapesWhatJsonRequiresAndKeepsUtf8) {
  const struct {
    Json::Value value;
    const char* text;
  } cases[] = {
      {Json::Value("quote \" backslash \\ newline \n tab \t bell \x07 caf\xC3\xA9"),
       "\"quote \\\" backslash \\\\ newline \\n tab \\t bell \\u0007 caf\xC3\xA9\"\n"},
      {J("[1, -2, 1.5, true, null]"), "[1, -2, 1.5, true, null]\n"},
      {J(R"({"b": {}, "a": []})"), "{\"a\": [], \"b\": {}}\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(PrintedJson(c.value), c.text);
  // Too long for a line: one member per line, two more spaces per level.
  const std::string long_text(100, 'x');
  EXPECT_EQ(PrintedJson(J(R"({"k": [")" + long_text + R"(", 2]})")),
            "{\n  \"k\": [\n    \"" + long_text + "\",\n    2\n  ]\n}\n");
}

TEST(OperationNames, MatchInAnyCaseAndSuggestNeighboursOfMistypedOnes) {
  ASSERT_NE(MatchOperation("get_all_programmes"), nullptr);
  EXPECT_STREQ(MatchOperation("Get_All_Programmes")->name, "GET_ALL_PROGRAMMES");
  EXPECT_EQ(MatchOperation("GET_ALL_PROGRAMS"), nullptr);
  const struct {
    const char* typed;
    std::vector<std::string> similar;
  } cases[] = {
      {"GET_ALL_PROGRAMS", {"GET_ALL_PROGRAMMES"}},
      {"del_programme", {"DEL_PROGRAMMES"}},
      {"PLANS", {"GET_ALL_PROGRAMMEPLANS", "DEL_PROGRAMMEPLANS"}},
      {"everything", {}},
  };
  for (const auto& c : cases) {
    const std::vector<std::string> similar = SimilarOperations(c.typed);
    ASSERT_FALSE(similar.size() < c.similar.size()) << c.typed;
    EXPECT_EQ(std::vector<std::string>(similar.begin(), similar.begin() + c.similar.size()),
              c.similar)
        << c.typed;
    if (c.similar.empty()) {
      EXPECT_TRUE(similar.empty()) << c.typed;
    }
  }
}

TEST(Arena, HandsOutSeparateZeroedAlignedBlocksSmallAndLarge) {
  Arena arena;
  const size_t sizes[] = {1, 70000, 24, 300000, 0, 64 << 20};
  std::vector<unsigned char*> blocks;
  for (const size_t size : sizes) {
    unsigned char* block = arena.Allocate(size);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 16, 0U) << size;
    for (size_t i = 0; i < size; i += 4096) ASSERT_EQ(block[i], 0) << size;
    blocks.push_back(block);
  }
  for (size_t b = 0; b < blocks.size(); ++b)
    std::memset(blocks[b], static_cast<int>(b + 1), sizes[b]);
  for (size_t b = 0; b < blocks.size(); ++b)
    for (size_t i = 0; i < sizes[b]; i += 997)
      ASSERT_EQ(blocks[b][i], static_cast<unsigned char>(b + 1)) << "block " << b;
}

}  // namespace
