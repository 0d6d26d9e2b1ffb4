// Room for reading answers: element buffers attached from one block of storage, and records made
// ready for the next read, so that a poll reads each answer as a fresh record would.
#include <cstring>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "describe/operations_table.h"
#include "guidescreen_codec.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedArray;
using gsc::test::GuardedBytes;

// A listing as a poller keeps it: an output record, its programmes and their element buffers.
struct Listing {
  Listing(uint32_t capacity, uint32_t entries)
      : programmes(capacity), storage(gsc::element_storage_size(capacity, entries)) {
    out.dwSize = sizeof out;
    out.nMaxInfosNum = capacity;
    out.pstuInfos = programmes.data();
    attached = gsc::attach_element_buffers(programmes.data(), capacity, entries, storage.data(),
                                           storage.size());
  }
  std::string Form() {
    std::vector<char> text(1 << 20);
    size_t length = 0;
    EXPECT_EQ(GSC_STATUS_OK, gsc_record_to_fields("GET_ALL_PROGRAMMES", GSC_ANSWER_RECORD, &out, 0,
                                                  text.data(), text.size(), &length));
    return std::string(text.data(), length);
  }
  tagNET_OUT_GET_ALL_PROGRAMMES out = {};
  GuardedArray<tagNET_PROGRAMME_INFO> programmes;
  GuardedBytes storage;
  bool attached = false;
};

const std::string& RichListing() {
  return gsc::fields::FindOperation("GET_ALL_PROGRAMMES")->answer_sample;
}

// The same programme IDs with fewer members: what a field of the rich listing left behind would
// show up against.
constexpr char kSparseListing[] = R"({"infos": {"P-1001": {"ProgrammeID": "P-1001",
    "Ordinary": {"Windows": [{"WinID": "media", "Elements": [{"Type": 0, "Name": "only"}]}]}}}})";

TEST(ListingRoom, AttachesOneBufferPerWindowEndToEndAndNothingWhenShort) {
  const uint32_t entries = 3;
  const size_t buffer = gsc_element_buffer_size(entries);
  EXPECT_EQ(2 * GSC_MAX_WINDOWS * buffer, gsc_element_storage_size(2, entries));
  EXPECT_EQ(SIZE_MAX, gsc_element_storage_size(UINT32_MAX, UINT32_MAX));

  Listing listing(2, entries);
  ASSERT_TRUE(listing.attached);
  const unsigned char* next = listing.storage.data();
  for (uint32_t i = 0; i < 2; ++i) {
    for (const tagNET_PROGRAMME_WINDOW_INFO& window :
         listing.programmes[i].stuOrdinary.stuWindows) {
      EXPECT_EQ(next, window.pElementsBuf);
      EXPECT_EQ(buffer, window.nElementsBufLen);
      next += buffer;
    }
  }
  EXPECT_EQ(listing.storage.data() + listing.storage.size(), next);

  GuardedArray<tagNET_PROGRAMME_INFO> programmes(2);
  std::vector<unsigned char> storage(gsc_element_storage_size(2, entries) - 1);
  EXPECT_EQ(
      GSC_STATUS_BUFFER_TOO_SMALL,
      gsc_attach_element_buffers(programmes.data(), 2, entries, storage.data(), storage.size()));
  EXPECT_EQ(nullptr, programmes[0].stuOrdinary.stuWindows[0].pElementsBuf);
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT,
            gsc_attach_element_buffers(nullptr, 1, entries, storage.data(), storage.size()));
  EXPECT_EQ(GSC_STATUS_OK, gsc_attach_element_buffers(nullptr, 0, entries, nullptr, 0));
}

// A poll: read, reset, read another answer; the second read must show what a fresh record shows.
TEST(ListingRoom, AResetRecordReadsTheNextAnswerAsAFreshRecordWould) {
  Listing fresh(2, 8);
  ASSERT_TRUE(gsc::deserialize_json(kSparseListing, fresh.out));
  const std::string expected = fresh.Form();

  for (const bool through_c : {false, true}) {
    SCOPED_TRACE(through_c ? "gsc_reset_answer" : "gsc::reset_for_read");
    Listing polled(2, 8);
    ASSERT_TRUE(gsc::deserialize_json(RichListing(), polled.out));
    ASSERT_EQ(2u, polled.out.nRetInfosNum);
    if (through_c) {
      ASSERT_EQ(GSC_STATUS_OK, gsc_reset_answer("get_all_programmes", &polled.out));
    } else {
      gsc::reset_for_read(polled.out);
    }
    EXPECT_EQ(0u, polled.out.nRetInfosNum);
    EXPECT_EQ(2u, polled.out.nMaxInfosNum);
    EXPECT_EQ(polled.programmes.data(), polled.out.pstuInfos);
    const std::vector<unsigned char> zeros(polled.storage.size(), 0);
    EXPECT_EQ(0, std::memcmp(zeros.data(), polled.storage.data(), zeros.size()));
    EXPECT_TRUE(polled.storage.GuardsIntact() && polled.programmes.GuardsIntact());

    ASSERT_TRUE(gsc::deserialize_json(kSparseListing, polled.out));
    EXPECT_EQ(expected, polled.Form());
  }
}

TEST(ListingRoom, AResetTouchesNothingBeyondTheCapacities) {
  Listing listing(2, 2);
  ASSERT_TRUE(gsc::deserialize_json(RichListing(), listing.out));
  listing.out.nMaxInfosNum = 1;
  tagNET_PROGRAMME_WINDOW_INFO& window = listing.programmes[0].stuOrdinary.stuWindows[1];
  const uint32_t length = window.nElementsBufLen;
  window.nElementsBufLen = 16;
  std::memset(window.pElementsBuf, 0x77, length);
  const std::vector<unsigned char> second(reinterpret_cast<unsigned char*>(&listing.programmes[1]),
                                          reinterpret_cast<unsigned char*>(&listing.programmes[2]));
  gsc::reset_for_read(listing.out);
  EXPECT_EQ(0, std::memcmp(second.data(), &listing.programmes[1], second.size()));
  EXPECT_EQ(0, window.pElementsBuf[15]);
  EXPECT_EQ(0x77, window.pElementsBuf[16]);
  EXPECT_EQ(16u, window.nElementsBufLen);
}

TEST(ListingRoom, ResetNeedsTheOperationsRecord) {
  tagNET_OUT_GET_ALL_PROGRAMMES out = {};
  EXPECT_EQ(GSC_STATUS_WRONG_RECORD_SIZE, gsc_reset_answer("GET_ALL_PROGRAMMES", &out));
  out.dwSize = sizeof out;
  EXPECT_EQ(GSC_STATUS_UNKNOWN_OPERATION, gsc_reset_answer("GET_ALL_PROGRAMS", &out));
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT, gsc_reset_answer(nullptr, &out));
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT, gsc_reset_answer("GET_ALL_PROGRAMMES", nullptr));
}

// Every output record: its sample read in, then reset, is a zeroed record of its size again (none
// has arrays attached here, so every byte the read wrote must go).
template <typename Out>
void ExpectResetToFresh(const char* operation, std::set<std::string>& covered) {
  SCOPED_TRACE(operation);
  covered.insert(gsc::fields::FindOperation(operation)->answer->name);
  Out out = {};
  out.dwSize = sizeof out;
  ASSERT_TRUE(gsc::deserialize_json(gsc::fields::FindOperation(operation)->answer_sample, out));
  gsc::reset_for_read(out);
  Out fresh = {};
  fresh.dwSize = sizeof fresh;
  EXPECT_EQ(0, std::memcmp(&fresh, &out, sizeof out));
}

TEST(ListingRoom, EveryOutputRecordResetsToAFreshOne) {
  std::set<std::string> covered;
  ExpectResetToFresh<tagNET_OUT_SET_GUIDESCREEN_CFG>("SET_GUIDESCREEN_CFG", covered);
  ExpectResetToFresh<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>("GET_GUIDESCREEN_CFG_BYID", covered);
  ExpectResetToFresh<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>("GET_ALL_GUIDESCREEN_CFG", covered);
  ExpectResetToFresh<tagNET_OUT_SET_GD_STATUS>("SET_GD_STATUS", covered);
  ExpectResetToFresh<tagNET_OUT_GET_PROGRAMME_BYID>("GET_PROGRAMME_BYID", covered);
  ExpectResetToFresh<tagNET_OUT_GET_ALL_PROGRAMMES>("GET_ALL_PROGRAMMES", covered);
  ExpectResetToFresh<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>("GET_ALL_BRIEFLYPROGRAMMES", covered);
  ExpectResetToFresh<tagNET_OUT_ADD_ONE_PROGRAMME>("ADD_ONE_PROGRAMME", covered);
  ExpectResetToFresh<tagNET_OUT_MODIFY_ONE_PROGRAMME>("MODIFY_ONE_PROGRAMME", covered);
  ExpectResetToFresh<tagNET_OUT_DEL_PROGRAMMES>("DEL_PROGRAMMES", covered);
  ExpectResetToFresh<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>("GET_ALL_PROGRAMMEPLANS", covered);
  ExpectResetToFresh<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>("GET_PROGRAMMEPLAN_BYID", covered);
  ExpectResetToFresh<tagNET_OUT_ADD_PROGRAMMEPLAN>("ADD_IMME_PROGRAMMEPLAN", covered);
  ExpectResetToFresh<tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>("MODIFY_IMME_PROGRAMMEPLAN", covered);
  ExpectResetToFresh<tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>("MODIFY_TIMER_PROGRAMMEPLAN", covered);
  ExpectResetToFresh<tagNET_OUT_DEL_PROGRAMMEPLANS>("DEL_PROGRAMMEPLANS", covered);
  // A new operation's output record needs its overload, and its line here.
  std::set<std::string> answers;
  for (const gsc::fields::Operation& op : gsc::fields::Operations())
    answers.insert(op.answer->name);
  EXPECT_EQ(answers, covered);
}

}  // namespace
