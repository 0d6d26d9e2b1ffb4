// Values inside a JSON document named by a path as the reports write paths: member names joined
// by '.', array elements as [i] ("Timer.Programmes[1].StartTime"), read by the library's own
// path reader.
#ifndef GUIDESCREEN_CODEC_TESTS_SUPPORT_JSON_PATH_H
#define GUIDESCREEN_CODEC_TESTS_SUPPORT_JSON_PATH_H

#include <gtest/gtest.h>
#include <json/json.h>

#include <string>
#include <vector>

#include "codec/reporting.h"

namespace gsc::test {

inline std::vector<codec::PathStep> SplitPath(const std::string& path) {
  std::vector<codec::PathStep> steps;
  EXPECT_TRUE(codec::ParsePath(path, steps)) << "not a path: " << path;
  return steps;
}

// The value at `path`, or null when the document has none there.
inline const Json::Value* FindPath(const Json::Value& root, const std::string& path) {
  return codec::ValueAtPath(root, path);
}

// The value at `path`, made (with the objects and arrays on the way) when missing.
inline Json::Value& MakePath(Json::Value& root, const std::string& path) {
  Json::Value* at = &root;
  for (const codec::PathStep& step : SplitPath(path))
    at = step.isIndex ? &(*at)[step.index] : &(*at)[step.name];
  return *at;
}

}  // namespace gsc::test

#endif  // GUIDESCREEN_CODEC_TESTS_SUPPORT_JSON_PATH_H
