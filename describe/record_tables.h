// The field tables of the records that the operations' records are built from.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_RECORD_TABLES_H
#define GUIDESCREEN_CODEC_DESCRIBE_RECORD_TABLES_H

#include "describe/enumerations.h"
#include "describe/field_table.h"

namespace gsc::fields {

extern const RecordTable kScreenTable;          // tagNET_GUIDESCREEN_ATTRIBUTE_INFO
extern const RecordTable kProgrammeTable;       // tagNET_PROGRAMME_INFO
extern const RecordTable kBriefProgrammeTable;  // tagNET_BRIEFLY_PROGRAMME_INFO
extern const RecordTable kImmePlanTable;        // tagNET_IMMEDIATELY_PLAN_INFO
extern const RecordTable kTimerPlanTable;       // tagNET_TIMER_PLAN_INFO

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_RECORD_TABLES_H
