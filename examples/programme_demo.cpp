#include "demos.h"

void RunProgrammeDemo() {}
