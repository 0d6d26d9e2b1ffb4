#include "example_support.h"

#include <json/writer.h>

namespace examples {

void Fail(const char* call, const gsc::Report& report) {
  std::string why = report.str();
  if (!why.empty() && why.back() == '\n') why.pop_back();
  throw ExampleFailure(std::string(call) + " failed: " + why);
}

void PrintFindings(const gsc::Report& report) {
  for (const gsc::Finding& finding : report.findings()) {
    std::printf("  finding: %s: %s: %s\n", finding.path.c_str(), gsc::to_string(finding.kind),
                finding.detail.c_str());
  }
}

void PrintRequest(const Json::Value& params) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  std::printf("  request: %s\n", Json::writeString(builder, params).c_str());
}

std::string TimeText(const tagNET_TIME_OF_DAY& time) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d", time.nHour, time.nMinute);
  return text;
}

std::string DateText(const tagNET_DATE_INFO& date) {
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.nYear, date.nMonth, date.nDay);
  return text;
}

}  // namespace examples
