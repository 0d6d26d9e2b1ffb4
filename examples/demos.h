// The example program's walk-throughs, one per subsystem.
#ifndef GUIDESCREEN_CODEC_EXAMPLES_DEMOS_H
#define GUIDESCREEN_CODEC_EXAMPLES_DEMOS_H

#include <json/value.h>

#include <string>

// Prints a titled JSON value, as the transport layer would send or receive it.
void PrintJson(const std::string& title, const Json::Value& value);
// Parses JSON text written in the examples; aborts on a typo.
Json::Value ParseJson(const char* text);

void RunScreenDemo();
void RunProgrammeDemo();
void RunPlanDemo();

#endif  // GUIDESCREEN_CODEC_EXAMPLES_DEMOS_H
