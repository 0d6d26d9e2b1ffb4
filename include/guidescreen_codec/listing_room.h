// Room for reading answers, in C++: element buffers sized and attached to a listing's programmes
// from one block of the caller's storage, and output records made ready for the next read without
// losing what is attached. The same as the C interface's gsc_element_storage_size,
// gsc_attach_element_buffers and gsc_reset_answer (capi.h), typed.
#ifndef GUIDESCREEN_CODEC_LISTING_ROOM_H
#define GUIDESCREEN_CODEC_LISTING_ROOM_H

#include <cstddef>
#include <cstdint>

#include "guidescreen_codec/export.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"

namespace gsc {

// Bytes of storage that give `programmes` programmes an element buffer of `entries_per_window`
// entries of any kind in each of their windows; SIZE_MAX when that does not fit a size_t.
GSC_API size_t element_storage_size(uint32_t programmes, uint32_t entries_per_window) noexcept;

// Gives every window of the `count` programmes at `programmes` the next element buffer of
// `entries_per_window` entries from `storage` (pElementsBuf, nElementsBufLen, and nElementsNum 0),
// changing nothing else. False, with nothing attached, when `storage_size` is below
// element_storage_size(count, entries_per_window) or a pointer is null where buffers are due.
GSC_API bool attach_element_buffers(tagNET_PROGRAMME_INFO* programmes, uint32_t count,
                                    uint32_t entries_per_window, unsigned char* storage,
                                    size_t storage_size) noexcept;

// Makes `out` ready for the next read, as a zero-filled record its caller prepared would be:
// every field zero but the dwSize fields (the caller's, which no read touches), the pointers to
// caller arrays and element buffers, and the capacities and lengths that bound them. The records of
// its caller arrays are made ready the same way up to their capacities, and its element buffers are
// zeroed over their lengths, since a read merges into what an element buffer holds. Throws nothing
// but std::bad_alloc.
GSC_API void reset_for_read(tagNET_OUT_SET_GUIDESCREEN_CFG& out);
GSC_API void reset_for_read(tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out);
GSC_API void reset_for_read(tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out);
GSC_API void reset_for_read(tagNET_OUT_SET_GD_STATUS& out);
GSC_API void reset_for_read(tagNET_OUT_GET_PROGRAMME_BYID& out);
GSC_API void reset_for_read(tagNET_OUT_GET_ALL_PROGRAMMES& out);
GSC_API void reset_for_read(tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out);
GSC_API void reset_for_read(tagNET_OUT_ADD_ONE_PROGRAMME& out);
GSC_API void reset_for_read(tagNET_OUT_MODIFY_ONE_PROGRAMME& out);
GSC_API void reset_for_read(tagNET_OUT_DEL_PROGRAMMES& out);
GSC_API void reset_for_read(tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out);
GSC_API void reset_for_read(tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out);
GSC_API void reset_for_read(tagNET_OUT_ADD_PROGRAMMEPLAN& out);
GSC_API void reset_for_read(tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& out);
GSC_API void reset_for_read(tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& out);
GSC_API void reset_for_read(tagNET_OUT_DEL_PROGRAMMEPLANS& out);

}  // namespace gsc

#endif  // GUIDESCREEN_CODEC_LISTING_ROOM_H
