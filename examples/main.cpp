// guidescreen_examples [OPERATION...]: runs the example of each operation named (in any case), or
// of every operation. Each fills the operation's input record, prints the request, reads a
// device's answer and prints what the caller's record received. Exits 1 when an example fails,
// 2 for an operation it does not know.
#include <cstdio>
#include <cstring>
#include <exception>
#include <vector>

#include "guidescreen_codec.h"
#include "operations/operations.h"

namespace {

struct Example {
  const char* operation;
  void (*run)();
};

const Example kExamples[] = {
    {"SET_GUIDESCREEN_CFG", examples::SetGuidescreenCfg},
    {"GET_GUIDESCREEN_CFG_BYID", examples::GetGuidescreenCfgById},
    {"GET_ALL_GUIDESCREEN_CFG", examples::GetAllGuidescreenCfg},
    {"SET_GD_STATUS", examples::SetGdStatus},
    {"GET_PROGRAMME_BYID", examples::GetProgrammeById},
    {"GET_ALL_PROGRAMMES", examples::GetAllProgrammes},
    {"GET_ALL_BRIEFLYPROGRAMMES", examples::GetAllBrieflyProgrammes},
    {"ADD_ONE_PROGRAMME", examples::AddOneProgramme},
    {"MODIFY_ONE_PROGRAMME", examples::ModifyOneProgramme},
    {"DEL_PROGRAMMES", examples::DelProgrammes},
    {"GET_ALL_PROGRAMMEPLANS", examples::GetAllProgrammePlans},
    {"GET_PROGRAMMEPLAN_BYID", examples::GetProgrammePlanById},
    {"ADD_IMME_PROGRAMMEPLAN", examples::AddImmeProgrammePlan},
    {"ADD_TIMER_PROGRAMMEPLAN", examples::AddTimerProgrammePlan},
    {"MODIFY_IMME_PROGRAMMEPLAN", examples::ModifyImmeProgrammePlan},
    {"MODIFY_TIMER_PROGRAMMEPLAN", examples::ModifyTimerProgrammePlan},
    {"DEL_PROGRAMMEPLANS", examples::DelProgrammePlans},
};

// The example of an operation named in any case, as the library's own look-up reads names.
const Example* Find(const char* name) {
  const char* operation = gsc_operation_lookup(name);
  for (const Example& example : kExamples) {
    if (operation != nullptr && std::strcmp(operation, example.operation) == 0) return &example;
  }
  return nullptr;
}

bool Run(const Example& example) {
  std::printf("=== %s\n", example.operation);
  try {
    example.run();
  } catch (const std::exception& failure) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s failed: %s\n", example.operation, failure.what());
    return false;
  }
  std::printf("%s: done\n", example.operation);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<const Example*> chosen;
  for (int i = 1; i < argc; ++i) {
    const Example* example = Find(argv[i]);
    if (example == nullptr) {
      const char* closest = gsc_operation_suggestion(argv[i], 0);
      std::fprintf(stderr, "usage: guidescreen_examples [OPERATION...]\nno operation '%s'",
                   argv[i]);
      if (closest != nullptr) std::fprintf(stderr, "; did you mean %s?", closest);
      std::fprintf(stderr, "\n");
      return 2;
    }
    chosen.push_back(example);
  }
  if (chosen.empty()) {
    // Every operation the library knows has its example here.
    for (size_t i = 0; const char* name = gsc_operation_name(i); ++i) {
      if (Find(name) == nullptr) {
        std::fprintf(stderr, "no example of %s\n", name);
        return 1;
      }
    }
    for (const Example& example : kExamples) chosen.push_back(&example);
  }
  int failed = 0;
  for (const Example* example : chosen) failed += Run(*example) ? 0 : 1;
  return failed == 0 ? 0 : 1;
}
