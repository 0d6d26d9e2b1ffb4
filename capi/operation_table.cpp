#include "capi/operation_table.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iterator>
#include <utility>

#include "guidescreen_codec/json_text.h"
#include "guidescreen_codec/operations.h"

namespace gsc::capi {
namespace {

// Every call of the C interface into a codec passes through these two thunks, to the reporting
// overloads: a conversion JsonCpp refuses, and text that is not JSON, come back as findings
// instead of exceptions. Answers are read from their text where it lies, without a tree.
template <typename In>
bool SerializeFrom(const void* in, Json::Value& params, gsc::Report& report) {
  return serialize(*static_cast<const In*>(in), params, report);
}

template <typename Out>
bool DeserializeTextInto(std::string_view text, void* out, gsc::Report& report) {
  return gsc::deserialize_json(text, *static_cast<Out*>(out), report);
}

// Names compared as the C interface and gscodec take them: in any case.
bool SameName(const char* typed, const char* name) {
  for (; *typed != '\0' && *name != '\0'; ++typed, ++name) {
    if (std::toupper(static_cast<unsigned char>(*typed)) != *name) return false;
  }
  return *typed == *name;
}

std::string Upper(const char* text) {
  std::string upper(text);
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper;
}

// Edits (insertions, deletions, substitutions) that turn `a` into `b`.
size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

template <typename In, typename Out>
constexpr Operation Op(const char* name) {
  return {name,
          sizeof(In),
          alignof(In),
          sizeof(Out),
          alignof(Out),
          &SerializeFrom<In>,
          &DeserializeTextInto<Out>};
}

constexpr Operation kOperations[] = {
    Op<tagNET_IN_SET_GUIDESCREEN_CFG, tagNET_OUT_SET_GUIDESCREEN_CFG>("SET_GUIDESCREEN_CFG"),
    Op<tagNET_IN_GET_GUIDESCREEN_CFG_BYID, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>(
        "GET_GUIDESCREEN_CFG_BYID"),
    Op<tagNET_IN_GET_ALL_GUIDESCREEN_CFG, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>(
        "GET_ALL_GUIDESCREEN_CFG"),
    Op<tagNET_IN_SET_GD_STATUS, tagNET_OUT_SET_GD_STATUS>("SET_GD_STATUS"),
    Op<tagNET_IN_GET_PROGRAMME_BYID, tagNET_OUT_GET_PROGRAMME_BYID>("GET_PROGRAMME_BYID"),
    Op<tagNET_IN_GET_ALL_PROGRAMMES, tagNET_OUT_GET_ALL_PROGRAMMES>("GET_ALL_PROGRAMMES"),
    Op<tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>(
        "GET_ALL_BRIEFLYPROGRAMMES"),
    Op<tagNET_IN_ADD_ONE_PROGRAMME, tagNET_OUT_ADD_ONE_PROGRAMME>("ADD_ONE_PROGRAMME"),
    Op<tagNET_IN_MODIFY_ONE_PROGRAMME, tagNET_OUT_MODIFY_ONE_PROGRAMME>("MODIFY_ONE_PROGRAMME"),
    Op<tagNET_IN_DEL_PROGRAMMES, tagNET_OUT_DEL_PROGRAMMES>("DEL_PROGRAMMES"),
    Op<tagNET_IN_GET_ALL_PROGRAMMEPLANS, tagNET_OUT_GET_ALL_PROGRAMMEPLANS>(
        "GET_ALL_PROGRAMMEPLANS"),
    Op<tagNET_IN_GET_PROGRAMMEPLAN_BYID, tagNET_OUT_GET_PROGRAMMEPLAN_BYID>(
        "GET_PROGRAMMEPLAN_BYID"),
    Op<tagNET_IN_ADD_IMME_PROGRAMMEPLAN, tagNET_OUT_ADD_PROGRAMMEPLAN>("ADD_IMME_PROGRAMMEPLAN"),
    Op<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN, tagNET_OUT_ADD_PROGRAMMEPLAN>("ADD_TIMER_PROGRAMMEPLAN"),
    Op<tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>(
        "MODIFY_IMME_PROGRAMMEPLAN"),
    Op<tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>(
        "MODIFY_TIMER_PROGRAMMEPLAN"),
    Op<tagNET_IN_DEL_PROGRAMMEPLANS, tagNET_OUT_DEL_PROGRAMMEPLANS>("DEL_PROGRAMMEPLANS"),
};

}  // namespace

const Operation* Operations() {
  return kOperations;
}

size_t OperationCount() {
  return sizeof kOperations / sizeof kOperations[0];
}

const Operation* FindOperation(const char* name) {
  if (name == nullptr) return nullptr;
  const auto* found = std::find_if(std::begin(kOperations), std::end(kOperations),
                                   [name](const Operation& op) { return SameName(name, op.name); });
  return found != std::end(kOperations) ? found : nullptr;
}

std::vector<const Operation*> SimilarOperations(const char* name) {
  std::vector<const Operation*> similar;
  if (name == nullptr) return similar;
  const std::string wanted = Upper(name);
  // A third of the name's length in edits, at least two: close enough to be a slip.
  const size_t most = std::max<size_t>(2, wanted.size() / 3);
  std::vector<std::pair<size_t, const Operation*>> close;
  for (const Operation& op : kOperations) {
    const size_t distance = EditDistance(wanted, op.name);
    if (distance <= most) close.emplace_back(distance, &op);
  }
  if (close.empty() && wanted.size() >= 3) {
    for (const Operation& op : kOperations)
      if (std::strstr(op.name, wanted.c_str()) != nullptr) close.emplace_back(0, &op);
  }
  std::stable_sort(close.begin(), close.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (size_t i = 0; i < close.size() && i < 3; ++i) similar.push_back(close[i].second);
  return similar;
}

std::string UnknownOperation(const char* name) {
  std::string message = "'" + std::string(name != nullptr ? name : "") + "'";
  const std::vector<const Operation*> similar = SimilarOperations(name);
  for (size_t i = 0; i < similar.size(); ++i) {
    message += i == 0 ? "; did you mean " : (i + 1 == similar.size() ? " or " : ", ");
    message += similar[i]->name;
  }
  return similar.empty() ? message : message + "?";
}

}  // namespace gsc::capi
