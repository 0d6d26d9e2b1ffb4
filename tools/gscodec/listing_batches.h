// Reading a programme listing a batch of programmes at a time: an answer of tens of megabytes
// holds hundreds of programmes whose records and element buffers would take many times its size
// at once. Two batch arrays are read into in turn while the other one is printed.
#ifndef GUIDESCREEN_CODEC_TOOLS_GSCODEC_LISTING_BATCHES_H
#define GUIDESCREEN_CODEC_TOOLS_GSCODEC_LISTING_BATCHES_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

#include "describe/operations_table.h"
#include "guidescreen_codec/report.h"

namespace gsc::fields {

// Programmes per batch that keep a batch array near `bytes`, for element buffers of `room`.
uint32_t ProgrammesPerBatch(const Room& room, size_t bytes);

// Bytes the records of a programme listing take with `room`: programmes and element buffers.
size_t ListingBytes(const Room& room);

// What a batched read leaves for the caller to print: nothing when it printed the record itself.
struct BatchedRead {
  bool printed = false;                // the record went out, or part of it before a failure
  std::unique_ptr<Received> received;  // the record as the one-call read leaves it otherwise
};

// Reads the GET_ALL_PROGRAMMES answer `text` with `room` as ReceiveText does (same findings,
// same record), but `batch` programmes at a time. When `out` is set, the record is printed to
// it as PrintRecord prints it once a first programme has been read: the head, then each batch
// as the next one is read (on a second thread), then the rest once the read has ended. When the
// reading stops on a failed conversion, what was printed stands and the record is left
// unfinished. With no programme read, nothing is printed and `received` holds the record.
BatchedRead ReadProgrammesInBatches(const Operation& op, std::string_view text, const Room& room,
                                    uint32_t batch, std::FILE* out, const ShowOptions& options,
                                    gsc::Report& report);

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_TOOLS_GSCODEC_LISTING_BATCHES_H
