#include "operation_names.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace gsc::fields {
namespace {

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
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

const Operation* MatchOperation(const std::string& typed) {
  const std::string wanted = Upper(typed);
  for (const Operation& op : Operations())
    if (wanted == op.name) return &op;
  return nullptr;
}

std::vector<std::string> SimilarOperations(const std::string& typed) {
  const std::string wanted = Upper(typed);
  // A third of the name's length in edits, at least two: close enough to be a slip.
  const size_t most = std::max<size_t>(2, wanted.size() / 3);
  std::vector<std::pair<size_t, std::string>> close;
  for (const Operation& op : Operations()) {
    const size_t distance = EditDistance(wanted, op.name);
    if (distance <= most) close.emplace_back(distance, op.name);
  }
  if (close.empty() && wanted.size() >= 3) {
    for (const Operation& op : Operations())
      if (std::string(op.name).find(wanted) != std::string::npos) close.emplace_back(0, op.name);
  }
  std::stable_sort(close.begin(), close.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> names;
  for (size_t i = 0; i < close.size() && i < 3; ++i) names.push_back(close[i].second);
  return names;
}

}  // namespace gsc::fields
