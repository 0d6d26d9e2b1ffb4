// The element buffer functions of the C interface: entry sizes, appending entries and walking a
// buffer, against what the programme codecs lay down and read. Buffers start 4 but not 8 bytes
// aligned, as records behind a header do, and end in guard bytes.
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "guidescreen_codec/capi.h"
#include "programme/element_buffer.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedBytes;
using gsc::test::J;
using gsc::test::SetText;

constexpr unsigned char kFill = 0xEE;

// Entry sizes from the records, so that the tests hold on every ABI (the x86_64 figures are
// pinned by the record layout tests).
constexpr uint32_t kHeader = GSC_ELEMENT_HEADER_SIZE;
constexpr uint32_t kVideoEntry = kHeader + sizeof(tagNET_VIDEO_ELEMENT_INFO);
constexpr uint32_t kTextEntry = kHeader + sizeof(tagNET_TEXT_ELEMENT_INFO);

TEST(ElementSizes, EveryKindTakesItsHeaderAndRecordAndOtherKindsTheHeaderAlone) {
  const struct {
    int32_t kind;
    uint32_t entry;
  } cases[] = {{EM_ELEMENT_TYPE_VIDEO, kVideoEntry},
               {EM_ELEMENT_TYPE_PICTURE, kHeader + sizeof(tagNET_PICTURE_ELEMENT_INFO)},
               {EM_ELEMENT_TYPE_TEXT, kTextEntry},
               {EM_ELEMENT_TYPE_PLACEHOLDER, kHeader + sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO)},
               {EM_ELEMENT_TYPE_CAPTURE, kHeader + sizeof(tagNET_CAPTURE_ELEMENT_INFO)},
               {EM_ELEMENT_TYPE_UNKNOWN, kHeader},
               {6, kHeader},
               {-1, kHeader},
               {INT32_MIN, kHeader},
               {INT32_MAX, kHeader}};
  for (const auto& c : cases)
    EXPECT_EQ(gsc_element_entry_size(static_cast<EM_ELEMENT_TYPE>(c.kind)), c.entry) << c.kind;
  EXPECT_EQ(GSC_ELEMENT_HEADER_SIZE, 132U);
  // The text element is the largest kind.
  EXPECT_EQ(gsc_element_max_entry_size(), kTextEntry);
  EXPECT_EQ(GSC_ELEMENT_ENTRY_MAX_SIZE, kTextEntry);
  EXPECT_EQ(gsc_element_buffer_size(0), 0U);
  EXPECT_EQ(gsc_element_buffer_size(64), GSC_ELEMENT_BUFFER_SIZE(64));
  // SIZE_MAX when the bytes do not fit a size_t (on 32-bit ABIs).
  const uint64_t most = uint64_t{UINT32_MAX} * kTextEntry;
  EXPECT_EQ(gsc_element_buffer_size(UINT32_MAX), most > SIZE_MAX ? SIZE_MAX : most);
  EXPECT_GE(sizeof(gsc_element_record), sizeof(tagNET_TEXT_ELEMENT_INFO));
}

// A video, an entry of unknown kind and a text element, appended.
struct ThreeEntries {
  tagNET_VIDEO_ELEMENT_INFO video = {};
  tagNET_TEXT_ELEMENT_INFO text = {};
  uint32_t size = kVideoEntry + kHeader + kTextEntry;
  ThreeEntries() {
    SetText(video.szName, "clip");
    SetText(video.szPath, "/v.mp4");
    SetText(text.szName, "news");
    SetText(text.stuText.szContent, "Tonight");
  }
  // Appends the three entries; the status of each.
  std::vector<int> AppendTo(unsigned char* buffer, uint32_t length, uint32_t& used) const {
    return {gsc_element_append(buffer, length, &used, EM_ELEMENT_TYPE_VIDEO, &video),
            gsc_element_append(buffer, length, &used, static_cast<EM_ELEMENT_TYPE>(9), nullptr),
            gsc_element_append(buffer, length, &used, EM_ELEMENT_TYPE_TEXT, &text)};
  }
};

TEST(ElementAppend, LaysEntriesTheWriterReadsWithZeroReservedBytes) {
  const ThreeEntries entries;
  GuardedBytes buffer(entries.size, 4, kFill);
  uint32_t used = 0;
  EXPECT_EQ(entries.AppendTo(buffer.data(), entries.size, used), std::vector<int>(3, 0));
  EXPECT_EQ(used, entries.size);
  EXPECT_TRUE(buffer.GuardsIntact());
  for (const size_t header : {0U, kVideoEntry, kVideoEntry + kHeader})
    for (size_t i = 4; i < kHeader; ++i) ASSERT_EQ(buffer.data()[header + i], 0) << header + i;

  Json::Value elements;
  gsc::programme::WriteElementList(buffer.data(), 3, elements);
  ASSERT_EQ(elements.size(), 3U);
  EXPECT_EQ(elements[0]["Video"]["Path"], Json::Value("/v.mp4"));
  EXPECT_TRUE(elements[1].isNull()) << "unknown kind is a hole";
  EXPECT_EQ(elements[2]["Text"]["Content"], Json::Value("Tonight"));
}

TEST(ElementAppend, AnEntryThatDoesNotFitChangesNeitherBufferNorUsed) {
  const ThreeEntries entries;
  for (const uint32_t length : {entries.size - 1, kVideoEntry + kHeader, 0U}) {
    GuardedBytes buffer(length, 4, kFill);
    const std::vector<unsigned char> before(buffer.data(), buffer.data() + length);
    uint32_t used = 0;
    const std::vector<int> statuses = entries.AppendTo(buffer.data(), length, used);
    EXPECT_EQ(statuses.back(), GSC_STATUS_BUFFER_TOO_SMALL) << length;
    const uint32_t kept = length >= kVideoEntry + kHeader ? kVideoEntry + kHeader
                          : length >= kVideoEntry         ? kVideoEntry
                                                          : 0;
    EXPECT_EQ(used, kept) << length;
    EXPECT_TRUE(std::equal(before.begin() + kept, before.end(), buffer.data() + kept)) << length;
    EXPECT_TRUE(buffer.GuardsIntact()) << length;
  }
}

TEST(ElementAppend, RefusesWhatIsMissingOrOutOfRange) {
  GuardedBytes buffer(8000, 4);
  const tagNET_PLACEHOLDER_ELEMENT_INFO record = {};
  uint32_t used = 0, beyond = 8001;
  EXPECT_EQ(gsc_element_append(nullptr, 8000, &used, EM_ELEMENT_TYPE_PLACEHOLDER, &record),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(gsc_element_append(buffer.data(), 8000, nullptr, EM_ELEMENT_TYPE_PLACEHOLDER, &record),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(gsc_element_append(buffer.data(), 8000, &used, EM_ELEMENT_TYPE_PLACEHOLDER, nullptr),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(gsc_element_append(buffer.data(), 8000, &beyond, EM_ELEMENT_TYPE_PLACEHOLDER, &record),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(used, 0U);
  EXPECT_EQ(beyond, 8001U);
  EXPECT_TRUE(buffer.GuardsIntact());
}

// Walks `count` entries; the kinds met, and the names of the records copied out.
std::vector<std::string> Walk(const unsigned char* buffer, uint32_t length, uint32_t count,
                              uint32_t& offset) {
  std::vector<std::string> seen;
  for (uint32_t j = 0; j < count; ++j) {
    EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
    gsc_element_record record;
    std::memset(&record, kFill, sizeof record);
    const int status = gsc_element_next(buffer, length, &offset, &kind, &record, sizeof record);
    if (status != GSC_STATUS_OK) {
      seen.push_back("status " + std::to_string(status));
      break;
    }
    // Every record kind starts with szName.
    seen.push_back(std::to_string(kind) + (kind == EM_ELEMENT_TYPE_UNKNOWN
                                               ? std::string()
                                               : " " + std::string(record.stuVideo.szName)));
  }
  return seen;
}

TEST(ElementNext, WalksWhatTheReaderLaidDownAndStopsAtTheEnd) {
  constexpr uint32_t kLength = kVideoEntry + kHeader + kTextEntry;
  GuardedBytes buffer(kLength, 4);
  const uint32_t stored = gsc::programme::ReadElementList(
      J(R"([{"Type": 0, "Name": "clip"}, {"Type": 7}, {"Type": 2, "Name": "news"}])"),
      buffer.data(), kLength);
  ASSERT_EQ(stored, 3U);
  uint32_t offset = 0;
  EXPECT_EQ(Walk(buffer.data(), kLength, 4, offset),
            (std::vector<std::string>{"1 clip", "0", "3 news",
                                      "status " + std::to_string(GSC_STATUS_BUFFER_TOO_SMALL)}));
  EXPECT_EQ(offset, kLength);
}

TEST(ElementNext, RefusesAnEntryCutByTheLengthOrTooLargeForTheRecordAndKeepsTheOffset) {
  const ThreeEntries entries;
  GuardedBytes buffer(entries.size, 4);
  uint32_t used = 0;
  entries.AppendTo(buffer.data(), entries.size, used);
  EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
  uint32_t offset = kVideoEntry + kHeader;
  GuardedBytes record(sizeof(tagNET_TEXT_ELEMENT_INFO) - 1, 0, kFill);
  EXPECT_EQ(gsc_element_next(buffer.data(), entries.size - 1, &offset, &kind, nullptr, 0),
            GSC_STATUS_BUFFER_TOO_SMALL);
  EXPECT_EQ(
      gsc_element_next(buffer.data(), entries.size, &offset, &kind, record.data(), record.size()),
      GSC_STATUS_BUFFER_TOO_SMALL);
  EXPECT_EQ(offset, kVideoEntry + kHeader);
  EXPECT_EQ(kind, EM_ELEMENT_TYPE_UNKNOWN);
  EXPECT_EQ(record.data()[0], kFill);
  EXPECT_TRUE(record.GuardsIntact());
  // Without a record only the kind is read.
  EXPECT_EQ(gsc_element_next(buffer.data(), entries.size, &offset, &kind, nullptr, 0),
            GSC_STATUS_OK);
  EXPECT_EQ(kind, EM_ELEMENT_TYPE_TEXT);
  EXPECT_EQ(offset, entries.size);
  uint32_t beyond = entries.size + 1;
  EXPECT_EQ(gsc_element_next(buffer.data(), entries.size, &beyond, &kind, nullptr, 0),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(gsc_element_next(nullptr, 0, &offset, &kind, nullptr, 0), GSC_STATUS_INVALID_ARGUMENT);
}

}  // namespace
