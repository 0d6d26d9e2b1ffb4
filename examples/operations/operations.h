// One example per operation: each fills the operation's input record, sends it, reads a device's
// answer and prints what the caller's record received. They throw ExampleFailure (or what the
// library throws) when an exchange fails.
#ifndef GUIDESCREEN_CODEC_EXAMPLES_OPERATIONS_OPERATIONS_H
#define GUIDESCREEN_CODEC_EXAMPLES_OPERATIONS_OPERATIONS_H

namespace examples {

// screens.cpp
void SetGuidescreenCfg();
void GetGuidescreenCfgById();
void GetAllGuidescreenCfg();
void SetGdStatus();

// programme_reads.cpp
void GetProgrammeById();
void GetAllBrieflyProgrammes();
// programme_listing.cpp
void GetAllProgrammes();
// programme_writes.cpp
void AddOneProgramme();
void ModifyOneProgramme();
void DelProgrammes();

// plan_reads.cpp
void GetAllProgrammePlans();
void GetProgrammePlanById();
// plan_writes.cpp
void AddImmeProgrammePlan();
void AddTimerProgrammePlan();
void ModifyImmeProgrammePlan();
void ModifyTimerProgrammePlan();
void DelProgrammePlans();

}  // namespace examples

#endif  // GUIDESCREEN_CODEC_EXAMPLES_OPERATIONS_OPERATIONS_H
