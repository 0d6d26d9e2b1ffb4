#include "demos.h"

void RunPlanDemo() {}
