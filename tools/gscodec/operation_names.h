// Operation names as people type them: matched regardless of case, with the names close to a
// mistyped one offered instead.
#ifndef GUIDESCREEN_CODEC_TOOLS_GSCODEC_OPERATION_NAMES_H
#define GUIDESCREEN_CODEC_TOOLS_GSCODEC_OPERATION_NAMES_H

#include <string>
#include <vector>

#include "describe/operations_table.h"

namespace gsc::fields {

// The operation whose name is `typed` up to case ("get_all_programmes"), or nullptr.
const Operation* MatchOperation(const std::string& typed);

// Up to three names `typed` was probably meant to be, closest first: those a few edits away
// (GET_ALL_PROGRAMS -> GET_ALL_PROGRAMMES), else those that contain it (PLANS). Empty when none
// is close.
std::vector<std::string> SimilarOperations(const std::string& typed);

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_TOOLS_GSCODEC_OPERATION_NAMES_H
