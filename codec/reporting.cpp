#include "codec/reporting.h"

#include "codec/json_string.h"

namespace gsc::codec {
namespace {

// Bytes that would make a bare name ambiguous in a path.
bool NeedsQuotes(const char* name, size_t length) {
  if (length == 0) return true;
  for (size_t i = 0; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(name[i]);
    if (byte < 0x20 || byte == 0x7F || byte == '.' || byte == '[' || byte == ']' || byte == '"' ||
        byte == '\\' || byte == ' ') {
      return true;
    }
  }
  return false;
}

void AppendQuoted(std::string& out, const char* name, size_t length) {
  static constexpr char kHex[] = "0123456789abcdef";
  out += "[\"";
  for (size_t i = 0; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(name[i]);
    if (byte == '"' || byte == '\\') {
      out += '\\';
      out += static_cast<char>(byte);
    } else if (byte < 0x20 || byte == 0x7F) {
      out += "\\u00";
      out += kHex[byte >> 4U];
      out += kHex[byte & 0xFU];
    } else {
      out += static_cast<char>(byte);
    }
  }
  out += "\"]";
}

void Append(std::string& out, const Segment& segment) {
  if (segment.name == nullptr) {
    out += '[';
    out += std::to_string(segment.index);
    out += ']';
    return;
  }
  if (segment.prefix == nullptr && NeedsQuotes(segment.name, segment.length)) {
    AppendQuoted(out, segment.name, segment.length);
    return;
  }
  if (!out.empty()) out += '.';
  if (segment.prefix != nullptr) out += segment.prefix;
  out.append(segment.name, segment.length);
  out += segment.suffix;
}

}  // namespace

std::string PathName(const char* name, size_t length) {
  std::string out;
  Append(out, Segment::Member(name, static_cast<uint32_t>(length)));
  return out;
}

namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// A quoted name from just after `["` up to its `"]`; `at` moves past it.
bool ParseQuoted(const std::string& path, size_t& at, std::string& name) {
  while (at < path.size()) {
    const char c = path[at++];
    if (c == '"') {
      if (at >= path.size() || path[at] != ']') return false;
      ++at;
      return true;
    }
    if (c != '\\') {
      name += c;
      continue;
    }
    if (at >= path.size()) return false;
    const char escaped = path[at++];
    if (escaped == '"' || escaped == '\\') {
      name += escaped;
    } else if (escaped == 'u' && path.compare(at, 2, "00") == 0 && at + 4 <= path.size() &&
               HexDigit(path[at + 2]) >= 0 && HexDigit(path[at + 3]) >= 0) {
      name += static_cast<char>(HexDigit(path[at + 2]) * 16 + HexDigit(path[at + 3]));
      at += 4;
    } else {
      return false;
    }
  }
  return false;
}

bool ParseIndex(const std::string& path, size_t& at, uint32_t& index) {
  uint64_t value = 0;
  const size_t start = at;
  while (at < path.size() && path[at] >= '0' && path[at] <= '9') {
    value = value * 10 + static_cast<uint64_t>(path[at++] - '0');
    if (value > 0xFFFFFFFFU) return false;
  }
  if (at == start || at >= path.size() || path[at] != ']') return false;
  ++at;
  index = static_cast<uint32_t>(value);
  return true;
}

}  // namespace

bool ParsePath(const std::string& path, std::vector<PathStep>& steps) {
  steps.clear();
  size_t at = 0;
  while (at < path.size()) {
    if (path[at] == '[') {
      PathStep step{false, "", 0};
      ++at;
      if (at < path.size() && path[at] == '"') {
        ++at;
        if (!ParseQuoted(path, at, step.name)) return false;
      } else {
        step.isIndex = true;
        if (!ParseIndex(path, at, step.index)) return false;
      }
      steps.push_back(std::move(step));
      continue;
    }
    if (path[at] == '.') {
      if (steps.empty()) return false;
      ++at;
    } else if (!steps.empty()) {
      return false;
    }
    const size_t end = path.find_first_of(".[", at);
    const size_t stop = end == std::string::npos ? path.size() : end;
    if (stop == at) return false;
    steps.push_back(PathStep{false, path.substr(at, stop - at), 0});
    at = stop;
  }
  return true;
}

const Json::Value* ValueAtPath(const Json::Value& root, const std::string& path) {
  std::vector<PathStep> steps;
  if (!ParsePath(path, steps)) return nullptr;
  const Json::Value* at = &root;
  for (const PathStep& step : steps) {
    if (step.isIndex) {
      if (!at->isArray() || step.index >= at->size()) return nullptr;
      at = &(*at)[step.index];
    } else {
      at = at->isObject() ? at->find(step.name.data(), step.name.data() + step.name.size())
                          : nullptr;
      if (at == nullptr) return nullptr;
    }
  }
  return at;
}

namespace {

// The path's storage, kept between calls on a thread so that a warm reporting call allocates
// nothing until it has a finding to add.
std::vector<Segment>& SparePath() {
  thread_local std::vector<Segment> spare;
  return spare;
}

}  // namespace

Reporting::Reporting(gsc::Report& report)
    : report_(report), skipping_(report.on_failure() == gsc::OnFailure::kSkip) {
  path_.swap(SparePath());
}

Reporting::~Reporting() {
  path_.clear();
  if (path_.capacity() > SparePath().capacity()) path_.swap(SparePath());
}

void Reporting::Add(gsc::FindingKind kind, std::string detail) {
  report_.add(kind, Path(nullptr), std::move(detail));
}

void Reporting::Add(gsc::FindingKind kind, const Segment& last, std::string detail) {
  report_.add(kind, Path(&last), std::move(detail));
}

std::string Reporting::Path(const Segment* last) const {
  std::string out;
  for (const Segment& segment : path_) Append(out, segment);
  if (last != nullptr) Append(out, *last);
  return out;
}

template <typename V>
std::string Describe(const V& value) {
  // Texts are shown whole up to this many bytes, then cut with "...".
  constexpr size_t kTextShown = 40;
  switch (value.type()) {
    case Json::nullValue:
      return "null";
    case Json::booleanValue:
      return value.asBool() ? "true" : "false";
    case Json::intValue:
    case Json::uintValue:
    case Json::realValue:
      return "number " + value.asString();
    case Json::stringValue: {
      const char* begin = nullptr;
      const char* end = nullptr;
      value.getString(&begin, &end);
      const auto length = static_cast<size_t>(end - begin);
      // Cut where a character ends, so that a finding stays valid UTF-8 where the text was.
      std::string text(begin, CutPoint(begin, length, kTextShown, true));
      return "text \"" + text + (length > kTextShown ? "...\"" : "\"");
    }
    case Json::arrayValue:
      return "array of " + std::to_string(value.size());
    case Json::objectValue:
      return "object of " + std::to_string(value.size()) +
             (value.size() == 1 ? " member" : " members");
  }
  return "value";
}

template std::string Describe(const Json::Value&);
template std::string Describe(const TextValue&);

}  // namespace gsc::codec
