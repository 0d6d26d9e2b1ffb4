#include "listing_batches.h"

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <cstring>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "describe/record_text.h"
#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/json_text.h"

namespace gsc::fields {
namespace {

constexpr size_t kWindows = sizeof(tagNET_ORDINARY_PROGRAMME_INFO::stuWindows) /
                            sizeof(tagNET_ORDINARY_PROGRAMME_INFO::stuWindows[0]);

// One batch array, prepared as a caller prepares its array (element buffers attached), and how
// to bring it back to that state once printed: its records as prepared, and the bytes of each
// element buffer that a read may have written (the entries it counted).
class BatchArray {
 public:
  BatchArray(const Operation& op, uint32_t batch, const Room& room)
      : received_(std::make_unique<Received>()) {
    received_->record = received_->arena.Allocate(op.answer->size);
    Prepare(*op.answer, received_->record, received_->arena, Room{batch, room.elements_buffer});
    tagNET_OUT_GET_ALL_PROGRAMMES out;
    std::memcpy(&out, received_->record, sizeof out);
    infos_ = out.pstuInfos;
    const auto* bytes = reinterpret_cast<const unsigned char*>(infos_);
    prepared_.assign(bytes, bytes + size_t{batch} * sizeof(tagNET_PROGRAMME_INFO));
  }

  tagNET_PROGRAMME_INFO* infos() const { return infos_; }
  unsigned char* record() const { return received_->record; }
  // The record and its memory, for a caller to print as it is.
  std::unique_ptr<Received> Take() { return std::move(received_); }

  // Back to the state before any read, for the first `count` programmes (the others were not
  // read into).
  void Reset(uint32_t count) {
    for (uint32_t i = 0; i < count; ++i) {
      for (const tagNET_PROGRAMME_WINDOW_INFO& window : infos_[i].stuOrdinary.stuWindows)
        ClearEntries(window.pElementsBuf, window.nElementsBufLen, window.nElementsNum);
    }
    std::memcpy(static_cast<void*>(infos_), prepared_.data(),
                size_t{count} * sizeof(tagNET_PROGRAMME_INFO));
  }

 private:
  // The bytes of a record of kind T that a read writes: all before its notes and the notes it
  // counted (a read writes no others, and the rest of the record stays as prepared).
  template <typename T>
  static void ClearRecord(unsigned char* record) {
    uint32_t notes = 0;
    std::memcpy(&notes, record + offsetof(T, nNoteNum), sizeof notes);
    const size_t written = offsetof(T, stuNote) + std::min<uint32_t>(notes, GSC_MAX_NOTES) *
                                                      sizeof(tagNET_GUIDESCREEN_NOTE_INFO);
    std::memset(record, 0, written);
  }

  // The first `count` entries of an element buffer back to zero where a read wrote them: the
  // kind in each header, and what ClearRecord clears of each record.
  static void ClearEntries(unsigned char* buffer, uint32_t length, uint32_t count) {
    uint32_t offset = 0;
    for (uint32_t j = 0; j < count; ++j) {
      const uint32_t at = offset;
      EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
      if (gsc_element_next(buffer, length, &offset, &kind, nullptr, 0) != GSC_STATUS_OK) break;
      unsigned char* record = buffer + at + sizeof(tagNET_ELEMENT_COMMON_INFO);
      switch (kind) {
        case EM_ELEMENT_TYPE_VIDEO:
          ClearRecord<tagNET_VIDEO_ELEMENT_INFO>(record);
          break;
        case EM_ELEMENT_TYPE_PICTURE:
          ClearRecord<tagNET_PICTURE_ELEMENT_INFO>(record);
          break;
        case EM_ELEMENT_TYPE_TEXT:
          ClearRecord<tagNET_TEXT_ELEMENT_INFO>(record);
          break;
        case EM_ELEMENT_TYPE_PLACEHOLDER:
          ClearRecord<tagNET_PLACEHOLDER_ELEMENT_INFO>(record);
          break;
        case EM_ELEMENT_TYPE_CAPTURE:
          ClearRecord<tagNET_CAPTURE_ELEMENT_INFO>(record);
          break;
        default:
          break;
      }
      std::memset(buffer + at, 0, sizeof(EM_ELEMENT_TYPE));
    }
  }

 public:
 private:
  std::unique_ptr<Received> received_;
  tagNET_PROGRAMME_INFO* infos_ = nullptr;
  std::vector<unsigned char> prepared_;
};

// Prints the batches handed to it on a thread of its own, one at a time.
class BatchPrinter {
 public:
  BatchPrinter(std::FILE* out, const RecordTable& table, const ShowOptions& options)
      : printer_(out, table, options), thread_([this] { Run(); }) {}
  ~BatchPrinter() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      closing_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }
  BatchPrinter(const BatchPrinter&) = delete;
  BatchPrinter& operator=(const BatchPrinter&) = delete;

  // Waits until the batch given before is printed; rethrows what printing it threw.
  void Wait() {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [this] { return !busy_; });
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
  }

  // Prints `count` programmes from `infos`, after the record's head first when `head` is set.
  void Give(const unsigned char* head, const tagNET_PROGRAMME_INFO* infos, uint32_t count) {
    Wait();
    {
      std::lock_guard<std::mutex> lock(mutex_);
      job_ = Job{head, infos, count};
      busy_ = true;
    }
    changed_.notify_all();
  }

  // The rest of the record, once every batch is printed.
  void End(const unsigned char* head) {
    Wait();
    printer_.End(head);
  }

  // What was printed, once every batch given is, without finishing the record.
  void Stop() {
    Wait();
    printer_.Flush();
  }

 private:
  struct Job {
    const unsigned char* head;
    const tagNET_PROGRAMME_INFO* infos;
    uint32_t count;
  };

  void Run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return busy_ || closing_; });
      if (!busy_) return;
      const Job job = job_;
      lock.unlock();
      try {
        if (job.head != nullptr) printer_.Begin(job.head);
        printer_.Add(job.infos, job.count);
      } catch (...) {
        lock.lock();
        failure_ = std::current_exception();
        lock.unlock();
      }
      lock.lock();
      busy_ = false;
      changed_.notify_all();
    }
  }

  StreamedRecordPrinter printer_;
  std::mutex mutex_;
  std::condition_variable changed_;
  Job job_{};
  bool busy_ = false;
  bool closing_ = false;
  std::exception_ptr failure_;
  std::thread thread_;  // last: started once everything it uses is
};

}  // namespace

size_t ListingBytes(const Room& room) {
  return size_t{room.capacity} *
         (sizeof(tagNET_PROGRAMME_INFO) + kWindows * size_t{room.elements_buffer});
}

uint32_t ProgrammesPerBatch(const Room& room, size_t bytes) {
  const size_t one = ListingBytes(Room{1, room.elements_buffer});
  return static_cast<uint32_t>(std::clamp<size_t>(bytes / one, 1, std::max(room.capacity, 1U)));
}

BatchedRead ReadProgrammesInBatches(const Operation& op, std::string_view text, const Room& room,
                                    uint32_t batch, std::FILE* out, const ShowOptions& options,
                                    gsc::Report& report) {
  BatchArray arrays[] = {BatchArray(op, batch, room), BatchArray(op, batch, room)};
  tagNET_OUT_GET_ALL_PROGRAMMES record;
  std::memcpy(&record, arrays[0].record(), sizeof record);
  // The head as the one-call read's record shows it: room for them all, and how many it read.
  tagNET_OUT_GET_ALL_PROGRAMMES head = record;
  head.nMaxInfosNum = room.capacity;
  uint32_t filled[2] = {0, 0};
  int current = 0;
  std::unique_ptr<BatchPrinter> printer;
  BatchedRead read;
  const bool completed = gsc::deserialize_json_in_batches(
      text, record, room.capacity, report,
      [&](tagNET_OUT_GET_ALL_PROGRAMMES& batchRecord, const gsc::ProgrammeBatch& part) {
        filled[current] = part.count;
        if (out != nullptr) {
          const unsigned char* begin = nullptr;
          if (!printer) {
            printer = std::make_unique<BatchPrinter>(out, *op.answer, options);
            head.nRetInfosNum = part.total;
            begin = reinterpret_cast<const unsigned char*>(&head);
            read.printed = true;
          }
          printer->Give(begin, batchRecord.pstuInfos, part.count);
        }
        // The other array is printed by now (Give waited for it): ready it for the next batch.
        current = 1 - current;
        arrays[current].Reset(filled[current]);
        filled[current] = 0;
        batchRecord.pstuInfos = arrays[current].infos();
      });
  if (printer) {
    if (completed) {
      printer->End(reinterpret_cast<const unsigned char*>(&head));
    } else {
      printer->Stop();
    }
    return read;
  }
  // No programme was read, so none is shown: the record as the read left it, with the room the
  // one-call read would have had.
  record.nMaxInfosNum = room.capacity;
  std::memcpy(arrays[0].record(), &record, sizeof record);
  read.received = arrays[0].Take();
  return read;
}

}  // namespace gsc::fields
