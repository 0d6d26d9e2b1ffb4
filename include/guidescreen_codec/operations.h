// The seventeen operations: one serialize/deserialize pair per operation, overloaded on the
// operation's records.
//
// serialize writes the request parameters from the caller's input record into `params` (normally
// an empty object made by the transport layer); deserialize merges the answer's result into the
// caller's output record. Every one returns true: the exchange's own failures belong to the
// transport layer, and missing or malformed members are skipped or clamped, never reported.
//
// Every operation has a reporting overload as well, taking a gsc::Report& last. It leaves exactly
// the bytes and the JSON that the plain overload leaves, the partly filled record included where
// the plain one throws, and fills the report with what the answer held that the record could not
// take, or what the request could not send (see report.h). It catches Json::Exception, adds it
// as a failed conversion with the path where it was raised, and returns false: true means the
// call ran to its end. No Json::Exception leaves it, so code built without exceptions may call
// it; std::bad_alloc still may.
//
// Guarantees for any JSON a device sends: no byte is written past a caller's array capacity, a
// text field or an element buffer, and a text always ends up terminated within its field. What
// JsonCpp throws for a value of the wrong type (Json::Exception) passes through the plain
// overloads untouched; the output record may then be partly filled. No state is kept: calls on
// different records and JSON values may run concurrently.
#ifndef GUIDESCREEN_CODEC_OPERATIONS_H
#define GUIDESCREEN_CODEC_OPERATIONS_H

#include <json/value.h>

#include "guidescreen_codec/export.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"
#include "guidescreen_codec/report.h"

// Guide screen configuration.
GSC_API bool serialize(const tagNET_IN_SET_GUIDESCREEN_CFG& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_SET_GUIDESCREEN_CFG& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_SET_GUIDESCREEN_CFG& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_SET_GUIDESCREEN_CFG& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_GET_GUIDESCREEN_CFG_BYID& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_GET_GUIDESCREEN_CFG_BYID& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_GET_ALL_GUIDESCREEN_CFG& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_GET_ALL_GUIDESCREEN_CFG& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_SET_GD_STATUS& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_SET_GD_STATUS& in, Json::Value& params, gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_SET_GD_STATUS& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_SET_GD_STATUS& out,
                         gsc::Report& report);

// Programmes.
GSC_API bool serialize(const tagNET_IN_GET_PROGRAMME_BYID& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_GET_PROGRAMME_BYID& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMME_BYID& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMME_BYID& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_GET_ALL_PROGRAMMES& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_GET_ALL_PROGRAMMES& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMES& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMES& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_ADD_ONE_PROGRAMME& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_ADD_ONE_PROGRAMME& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_ADD_ONE_PROGRAMME& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_ADD_ONE_PROGRAMME& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_MODIFY_ONE_PROGRAMME& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_MODIFY_ONE_PROGRAMME& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_MODIFY_ONE_PROGRAMME& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_MODIFY_ONE_PROGRAMME& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_DEL_PROGRAMMES& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_DEL_PROGRAMMES& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_DEL_PROGRAMMES& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_DEL_PROGRAMMES& out,
                         gsc::Report& report);

// Programme plans. Both add operations share the answer record tagNET_OUT_ADD_PROGRAMMEPLAN.
GSC_API bool serialize(const tagNET_IN_GET_ALL_PROGRAMMEPLANS& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_GET_ALL_PROGRAMMEPLANS& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_GET_PROGRAMMEPLAN_BYID& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_GET_PROGRAMMEPLAN_BYID& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_ADD_IMME_PROGRAMMEPLAN& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_ADD_IMME_PROGRAMMEPLAN& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_ADD_TIMER_PROGRAMMEPLAN& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_ADD_TIMER_PROGRAMMEPLAN& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_ADD_PROGRAMMEPLAN& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_ADD_PROGRAMMEPLAN& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& out,
                         gsc::Report& report);
GSC_API bool serialize(const tagNET_IN_DEL_PROGRAMMEPLANS& in, Json::Value& params);
GSC_API bool serialize(const tagNET_IN_DEL_PROGRAMMEPLANS& in, Json::Value& params,
                       gsc::Report& report);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_DEL_PROGRAMMEPLANS& out);
GSC_API bool deserialize(const Json::Value& result, tagNET_OUT_DEL_PROGRAMMEPLANS& out,
                         gsc::Report& report);

#endif  // GUIDESCREEN_CODEC_OPERATIONS_H
