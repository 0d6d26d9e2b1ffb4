// Values inside a JSON document named by a path in the form the reports write paths: member names
// joined by '.', array elements as [i] ("Timer.Programmes[1].StartTime"). Member names in tests
// hold no '.' or '['.
#ifndef GUIDESCREEN_CODEC_TESTS_SUPPORT_JSON_PATH_H
#define GUIDESCREEN_CODEC_TESTS_SUPPORT_JSON_PATH_H

#include <json/json.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace gsc::test {

// One step of a path: a member name, or an array index when `isIndex`.
struct PathStep {
  bool isIndex;
  std::string name;
  Json::ArrayIndex index;
};

inline std::vector<PathStep> SplitPath(const std::string& path) {
  std::vector<PathStep> steps;
  size_t i = 0;
  while (i < path.size()) {
    if (path[i] == '.') {
      ++i;
    } else if (path[i] == '[') {
      const size_t close = path.find(']', i);
      steps.push_back(
          {true, "",
           static_cast<Json::ArrayIndex>(std::strtoul(path.c_str() + i + 1, nullptr, 10))});
      i = close + 1;
    } else {
      const size_t end = path.find_first_of(".[", i);
      const size_t stop = end == std::string::npos ? path.size() : end;
      steps.push_back({false, path.substr(i, stop - i), 0});
      i = stop;
    }
  }
  return steps;
}

// The value at `path`, or null when the document has none there.
inline const Json::Value* FindPath(const Json::Value& root, const std::string& path) {
  const Json::Value* at = &root;
  for (const PathStep& step : SplitPath(path)) {
    if (step.isIndex) {
      if (!at->isArray() || step.index >= at->size()) return nullptr;
      at = &(*at)[step.index];
    } else {
      if (!at->isObject() || !at->isMember(step.name)) return nullptr;
      at = &(*at)[step.name];
    }
  }
  return at;
}

// The value at `path`, made (with the objects and arrays on the way) when missing.
inline Json::Value& MakePath(Json::Value& root, const std::string& path) {
  Json::Value* at = &root;
  for (const PathStep& step : SplitPath(path))
    at = step.isIndex ? &(*at)[step.index] : &(*at)[step.name];
  return *at;
}

}  // namespace gsc::test

#endif  // GUIDESCREEN_CODEC_TESTS_SUPPORT_JSON_PATH_H
