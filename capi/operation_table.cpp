#include "capi/operation_table.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iterator>
#include <utility>

namespace gsc::capi {
namespace {

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

}  // namespace

const Operation* FindOperation(const char* name) {
  if (name == nullptr) return nullptr;
  const auto& operations = fields::Operations();
  const auto found = std::find_if(operations.begin(), operations.end(),
                                  [name](const Operation& op) { return SameName(name, op.name); });
  return found != operations.end() ? &*found : nullptr;
}

std::vector<const Operation*> SimilarOperations(const char* name) {
  std::vector<const Operation*> similar;
  if (name == nullptr) return similar;
  const std::string wanted = Upper(name);
  // A third of the name's length in edits, at least two: close enough to be a slip.
  const size_t most = std::max<size_t>(2, wanted.size() / 3);
  std::vector<std::pair<size_t, const Operation*>> close;
  for (const Operation& op : fields::Operations()) {
    const size_t distance = EditDistance(wanted, op.name);
    if (distance <= most) close.emplace_back(distance, &op);
  }
  if (close.empty() && wanted.size() >= 3) {
    for (const Operation& op : fields::Operations())
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
