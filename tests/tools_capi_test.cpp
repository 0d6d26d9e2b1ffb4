// gscodec and the C interface side by side: the inspector's operations are the library's, in the
// same order with the same records, and every operation called by name over JSON text gives
// exactly what its C++ overload gives, on each operation's samples.
#include <string>

#include "describe/operations_table.h"
#include "guidescreen_codec.h"
#include "support/fixtures.h"

namespace {

using namespace gsc::fields;
using gsc::test::Compact;
using gsc::test::J;

TEST(CInterfaceByName, NamesAndRecordsAreTheInspectorsInItsOrder) {
  ASSERT_EQ(gsc_operation_count(), Operations().size());
  for (size_t i = 0; i < Operations().size(); ++i) {
    const Operation& op = Operations()[i];
    EXPECT_STREQ(gsc_operation_name(i), op.name);
    EXPECT_EQ(gsc_request_size(op.name), op.request->size) << op.name;
    EXPECT_EQ(gsc_answer_size(op.name), op.answer->size) << op.name;
  }
}

TEST(CInterfaceByName, EveryOperationGivesWhatItsOverloadGives) {
  for (const Operation& op : Operations()) {
    SCOPED_TRACE(op.name);
    Arena arena;
    unsigned char* in = arena.Allocate(op.request->size);
    FromJson(*op.request, J(op.request_sample), in, arena);
    Json::Value params(Json::objectValue);
    op.serialize(in, params, nullptr);
    size_t length = 0;
    std::string text(1 << 16, '\0');
    ASSERT_EQ(gsc_serialize_json(op.name, in, &text[0], text.size(), &length), GSC_STATUS_OK);
    text.resize(length);
    EXPECT_EQ(Compact(J(text)), Compact(params));

    const Room room{4, gsc_element_max_entry_size() * 8};
    unsigned char* by_name = arena.Allocate(op.answer->size);
    unsigned char* by_overload = arena.Allocate(op.answer->size);
    Prepare(*op.answer, by_name, arena, room);
    Prepare(*op.answer, by_overload, arena, room);
    char message[128] = "unchanged";
    ASSERT_EQ(gsc_deserialize_json(op.name, op.answer_sample.data(), op.answer_sample.size(),
                                   by_name, message, sizeof message),
              GSC_STATUS_OK)
        << message;
    op.deserialize(J(op.answer_sample), by_overload, nullptr);
    EXPECT_EQ(Compact(ToJson(*op.answer, by_name, {true})),
              Compact(ToJson(*op.answer, by_overload, {true})));
  }
}

}  // namespace
