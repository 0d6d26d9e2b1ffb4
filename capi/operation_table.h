// The operations by name for the C interface: names in any case, and the names close to a
// mistyped one.
#ifndef GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H
#define GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "describe/operations_table.h"

namespace gsc::capi {

// The operations are the library's one list of them (describe/operations_table.h).
using Operation = fields::Operation;

// The operation `name` names in any case, or nullptr (also for a null name).
const Operation* FindOperation(const char* name);

// Up to three operations `name` (which names none) was probably meant to be, closest first: a few
// edits away, else those containing it. Empty when none is close.
std::vector<const Operation*> SimilarOperations(const char* name);

// "unknown operation: '<name>'" and the closest operations, for a message.
std::string UnknownOperation(const char* name);

}  // namespace gsc::capi

#endif  // GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H
