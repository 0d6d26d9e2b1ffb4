// Reading answers straight from their JSON text: the same records as parsing the text with JsonCpp
// and calling deserialize on the tree (operations.h), at the speed of the fastest parsers.
//
// For every text these functions accept, the record's bytes, the return value, what is thrown and
// its message, and every finding are those of the tree path on the same text. They accept exactly
// the JSON texts of RFC 8259 in UTF-8 and refuse everything else, where JsonCpp's lenient reader
// takes comments, trailing commas, leading zeros, a lone "-" or invalid UTF-8: a device sending
// such text has a fault worth hearing about. A reader may set limits, and these are those set:
// values nest at most 1000 deep, each value inside its containers counting as a level (as JsonCpp
// counts), and a number beyond a double's range is refused (as JsonCpp refuses it). A leading UTF-8
// byte order mark is skipped. Duplicate member names are read as JsonCpp reads them, the last one
// winning. One difference is known: a number written with some 100,000 digits or more and an
// exponent far below zero may read as another value than JsonCpp's.
//
// The plain overloads throw what the tree path throws for a value they cannot convert
// (Json::Exception, same message), and a gsc::JsonError for text that is not JSON, before the
// record is touched. The reporting overloads throw nothing but std::bad_alloc: text that is not
// JSON gives one json-malformed finding (empty path, "line L, column C: reason") and false, with
// the record untouched.
//
// Each thread keeps one parser, whose buffers grow to the largest text read on that thread and
// are reused, so a warm thread reads without allocating; release_json_buffers gives them back.
// Calls on different threads may run concurrently.
#ifndef GUIDESCREEN_CODEC_JSON_TEXT_H
#define GUIDESCREEN_CODEC_JSON_TEXT_H

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "guidescreen_codec/export.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"
#include "guidescreen_codec/report.h"

namespace gsc {

// A text that is not JSON: where it stops being JSON (line and column from 1, the column counted
// in bytes) and why. what() is "line L, column C: reason".
class GSC_API JsonError : public std::runtime_error {
 public:
  JsonError(unsigned line, unsigned column, const std::string& reason);
  ~JsonError() override;
  JsonError(const JsonError&) = default;
  JsonError& operator=(const JsonError&) = default;
  JsonError(JsonError&&) = default;
  JsonError& operator=(JsonError&&) = default;
  unsigned line() const noexcept { return line_; }
  unsigned column() const noexcept { return column_; }
  const std::string& reason() const noexcept { return reason_; }

 private:
  unsigned line_;
  unsigned column_;
  std::string reason_;
};

// Guide screen configuration.
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_SET_GUIDESCREEN_CFG& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_SET_GUIDESCREEN_CFG& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_SET_GD_STATUS& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_SET_GD_STATUS& out, Report& report);

// Programmes.
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMME_BYID& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMME_BYID& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMES& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMES& out,
                              Report& report);
// Where a batch of a programme listing lies in the whole: programmes first .. first + count of
// the total that the read fills.
struct ProgrammeBatch {
  uint32_t first;
  uint32_t count;
  uint32_t total;
};

// Called after each batch with the record holding it (out.pstuInfos[0 .. count)). It may point
// out.pstuInfos at another array with the same room for the next batch, and prepares that array
// as it wants: the next batch is read over what it holds.
using ProgrammeBatchSink =
    std::function<void(tagNET_OUT_GET_ALL_PROGRAMMES& out, const ProgrammeBatch& batch)>;

// Reads a programme listing a batch at a time, for answers whose records would not fit in memory
// at once: programmes are read as deserialize_json(text, out, report) reads them into an array of
// `capacity` records, but out.nMaxInfosNum at a time into out.pstuInfos (element buffers attached),
// each batch handed to `sink` before the next is read. The findings and the return value are
// those of that one-call read, the clamped collection named with `capacity`. When it returns,
// out.nMaxInfosNum is as the caller left it and out.nRetInfosNum is the number of programmes read
// over all batches (unchanged when a failed conversion stopped the read). With no array or a batch
// room of 0 it reads as the one-call read with no room, handing nothing over. What `sink` throws
// ends the read and reaches the caller unchanged.
GSC_API bool deserialize_json_in_batches(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMES& out,
                                         uint32_t capacity, Report& report,
                                         const ProgrammeBatchSink& sink);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_ADD_ONE_PROGRAMME& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_ADD_ONE_PROGRAMME& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_MODIFY_ONE_PROGRAMME& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_MODIFY_ONE_PROGRAMME& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMES& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMES& out,
                              Report& report);

// Programme plans.
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_ADD_PROGRAMMEPLAN& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_ADD_PROGRAMMEPLAN& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& out,
                              Report& report);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMEPLANS& out);
GSC_API bool deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMEPLANS& out,
                              Report& report);

// Gives back the calling thread's parse buffers (the next text read on it allocates them anew).
GSC_API void release_json_buffers() noexcept;

}  // namespace gsc

#endif  // GUIDESCREEN_CODEC_JSON_TEXT_H
