// The room decode and check give by default, found from an answer's text: a large answer is read
// by the text readers without a tree, and sizing the record must not build one either.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_ANSWER_ROOM_H
#define GUIDESCREEN_CODEC_DESCRIBE_ANSWER_ROOM_H

#include <string_view>

#include "describe/field_table.h"

namespace gsc::fields {

// Room for everything the answer `text` holds, as JsonCpp would see it parsed: as many records
// per caller array as the root's "infos" object has distinct member names, and element buffers
// that take the longest "Elements" array anywhere in it (entries of the largest kind). Of
// duplicate member names only the last counts, and names are compared unescaped.
//
// One pass over the text, allocating only for names that repeat or hold escapes. Text that is
// not JSON gives what was counted up to where the pass noticed: the reader refuses such text
// before it uses the room.
Room RoomForAnswerText(std::string_view text);

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_ANSWER_ROOM_H
