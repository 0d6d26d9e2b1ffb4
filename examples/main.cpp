// Walks through the operations as the transport layer drives them: fill an input record, print
// the request parameters serialize writes, feed a sample device answer to deserialize, and print
// what the caller's output record received.
#include <json/json.h>

#include <cstdlib>
#include <iostream>
#include <memory>

#include "demos.h"

void PrintJson(const std::string& title, const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  std::cout << "--- " << title << "\n" << Json::writeString(builder, value) << "\n";
}

Json::Value ParseJson(const char* text) {
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  const char* end = text + std::char_traits<char>::length(text);
  if (!reader->parse(text, end, &value, &errors)) {
    std::cerr << "bad sample JSON: " << errors << "\n";
    std::abort();
  }
  return value;
}

int main() {
  RunScreenDemo();
  RunProgrammeDemo();
  RunPlanDemo();
  return 0;
}
