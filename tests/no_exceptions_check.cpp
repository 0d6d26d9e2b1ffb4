// Built with -fno-exceptions: a caller without exceptions reads an answer of the wrong type
// through the reporting overload, which returns false and names where the conversion failed,
// instead of ending the program.
#include <json/json.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "guidescreen_codec.h"

int main() {
  const std::string text =
      R"({"Programme": {"Ordinary": {"Windows": [{"Elements": [{"Type": 2,
          "Text": {"FontSize": "big"}}]}]}}})";
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value result;
  if (!reader->parse(text.data(), text.data() + text.size(), &result, nullptr)) return 2;

  static unsigned char buffer[20000];
  tagNET_OUT_GET_PROGRAMME_BYID out{};
  out.stuProgramme.stuOrdinary.stuWindows[0].pElementsBuf = buffer;
  out.stuProgramme.stuOrdinary.stuWindows[0].nElementsBufLen = sizeof buffer;
  gsc::Report report;
  if (deserialize(result, out, report)) {
    std::puts("the reporting deserialize read an unconvertible font size to the end");
    return 1;
  }
  const std::string expected =
      "Programme.Ordinary.Windows[0].Elements[0].Text.FontSize: conversion-failed: "
      "Value is not convertible to Int.\n";
  if (report.str() != expected) {
    std::printf("unexpected report:\n%s", report.str().c_str());
    return 1;
  }
  std::puts("a caller without exceptions gets false and the path");
  return 0;
}
