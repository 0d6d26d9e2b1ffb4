#include "describe/answer_room.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "guidescreen_codec/capi.h"

namespace gsc::fields {
namespace {

// The text readers refuse deeper nesting, so the walk need not go further (nor recurse further).
constexpr int kMaxDepth = 1000;

// What room is made for in a value.
struct Scanned {
  size_t most_elements = 0;  // the longest "Elements" array in it, as a tree would hold it
  bool array = false;
  bool object = false;
  size_t size = 0;  // elements of an array; distinct member names of an object when asked for
};

// A member of the object being walked: its name as written, and the room its value asks for.
struct Member {
  std::string_view name;  // between the quotes, escapes as written
  bool escaped;
  size_t most_elements;  // its value's, or its own length for an "Elements" array
  Scanned value;
};

// A member name unescaped, for comparing names as a parsed tree compares them. Only escapes of
// JSON text occur in text the readers accept; anything else is kept as written.
std::string Unescape(std::string_view raw) {
  std::string name;
  name.reserve(raw.size());
  auto hex4 = [&](size_t at, uint32_t& unit) {
    if (at + 4 > raw.size()) return false;
    unit = 0;
    for (size_t i = at; i < at + 4; ++i) {
      const char c = raw[i];
      const int digit = c >= '0' && c <= '9'   ? c - '0'
                        : c >= 'a' && c <= 'f' ? c - 'a' + 10
                        : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                               : -1;
      if (digit < 0) return false;
      unit = unit * 16 + static_cast<uint32_t>(digit);
    }
    return true;
  };
  for (size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] != '\\' || i + 1 == raw.size()) {
      name += raw[i];
      continue;
    }
    const char kind = raw[++i];
    switch (kind) {
      case 'b':
        name += '\b';
        continue;
      case 'f':
        name += '\f';
        continue;
      case 'n':
        name += '\n';
        continue;
      case 'r':
        name += '\r';
        continue;
      case 't':
        name += '\t';
        continue;
      case 'u':
        break;
      default:
        name += kind;
        continue;
    }
    uint32_t code = 0;
    if (!hex4(i + 1, code)) {
      name += "\\u";
      continue;
    }
    i += 4;
    uint32_t low = 0;
    if (code >= 0xD800 && code <= 0xDBFF && i + 2 < raw.size() && raw[i + 1] == '\\' &&
        raw[i + 2] == 'u' && hex4(i + 3, low) && low >= 0xDC00 && low <= 0xDFFF) {
      code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
      i += 6;
    }
    if (code < 0x80) {
      name += static_cast<char>(code);
    } else if (code < 0x800) {
      name += static_cast<char>(0xC0 | (code >> 6));
      name += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      name += static_cast<char>(0xE0 | (code >> 12));
      name += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      name += static_cast<char>(0x80 | (code & 0x3F));
    } else {
      name += static_cast<char>(0xF0 | (code >> 18));
      name += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
      name += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      name += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return name;
}

bool NameIs(const Member& member, std::string_view wanted) {
  return member.escaped ? Unescape(member.name) == wanted : member.name == wanted;
}

class Walk {
 public:
  explicit Walk(std::string_view text)
      : at_(text.data()), end_(text.data() + text.size()), members_(kMaxDepth + 1) {}

  Room Run() {
    if (end_ - at_ >= 3 && std::string_view(at_, 3) == "\xEF\xBB\xBF") at_ += 3;
    SkipSpace();
    const Scanned root = Value(0, false);
    const size_t most = std::min<size_t>(root.most_elements, UINT32_MAX);
    const size_t buffer = gsc_element_buffer_size(static_cast<uint32_t>(most));
    return {static_cast<uint32_t>(std::min<size_t>(records_, UINT32_MAX)),
            static_cast<uint32_t>(std::min<size_t>(buffer, UINT32_MAX))};
  }

 private:
  bool AtEnd() const { return at_ == end_; }
  Scanned Fail() {
    failed_ = true;
    at_ = end_;
    return {};
  }

  void SkipSpace() {
    while (!AtEnd() && (*at_ == ' ' || *at_ == '\t' || *at_ == '\n' || *at_ == '\r')) ++at_;
  }

  // `count_names`: the object's distinct member names are wanted (the root's "infos").
  Scanned Value(int depth, bool count_names) {
    if (AtEnd()) return Fail();
    switch (*at_) {
      case '{':
        return depth < kMaxDepth ? Object(depth, count_names) : Fail();
      case '[':
        return depth < kMaxDepth ? Array(depth) : Fail();
      case '"': {
        bool escaped = false;
        String(escaped);
        return {};
      }
      default: {
        const char* start = at_;
        while (!AtEnd() && *at_ != ',' && *at_ != ']' && *at_ != '}' && *at_ != ':' &&
               *at_ != ' ' && *at_ != '\t' && *at_ != '\n' && *at_ != '\r' && *at_ != '"')
          ++at_;
        return at_ == start ? Fail() : Scanned{};
      }
    }
  }

  // The text at `at_` (its opening quote) as written; `at_` moves past its closing quote.
  std::string_view String(bool& escaped) {
    const char* start = ++at_;
    while (!AtEnd()) {
      if (*at_ == '"') return {start, static_cast<size_t>(at_++ - start)};
      if (*at_ == '\\') {
        escaped = true;
        if (end_ - at_ < 2) break;
        ++at_;
      }
      ++at_;
    }
    Fail();
    return {};
  }

  Scanned Array(int depth) {
    Scanned array;
    array.array = true;
    ++at_;
    SkipSpace();
    if (!AtEnd() && *at_ == ']') {
      ++at_;
      return array;
    }
    while (!failed_) {
      const Scanned element = Value(depth + 1, false);
      array.most_elements = std::max(array.most_elements, element.most_elements);
      ++array.size;
      SkipSpace();
      if (AtEnd()) return Fail();
      if (*at_ == ']') {
        ++at_;
        return array;
      }
      if (*at_ != ',') return Fail();
      ++at_;
      SkipSpace();
    }
    return {};
  }

  Scanned Object(int depth, bool count_names) {
    // One list per depth, kept between objects: walking an answer allocates for its widest
    // object at each depth, once.
    std::vector<Member>& members = members_[static_cast<size_t>(depth)];
    members.clear();
    Scanned object;
    object.object = true;
    ++at_;
    SkipSpace();
    if (!AtEnd() && *at_ == '}') {
      ++at_;
      return object;
    }
    while (!failed_) {
      if (AtEnd() || *at_ != '"') return Fail();
      Member member{};
      member.name = String(member.escaped);
      SkipSpace();
      if (AtEnd() || *at_ != ':') return Fail();
      ++at_;
      SkipSpace();
      const bool infos = depth == 0 && NameIs(member, "infos");
      member.value = Value(depth + 1, infos);
      member.most_elements = member.value.most_elements;
      if (member.value.array && NameIs(member, "Elements"))
        member.most_elements = std::max(member.most_elements, member.value.size);
      members.push_back(member);
      SkipSpace();
      if (AtEnd()) return Fail();
      if (*at_ == '}') {
        ++at_;
        break;
      }
      if (*at_ != ',') return Fail();
      ++at_;
      SkipSpace();
    }
    if (failed_) return {};
    Settle(members, count_names, object);
    if (depth == 0) {
      // The root's "infos": the last of that name, as a tree keeps it.
      for (auto it = members.rbegin(); it != members.rend(); ++it) {
        if (NameIs(*it, "infos")) {
          records_ = it->value.object ? it->value.size : 0;
          break;
        }
      }
    }
    return object;
  }

  // What the object holds as a tree holds it, where only the last of duplicate names is kept:
  // the longest "Elements" array, and with `count_names` its distinct names.
  void Settle(const std::vector<Member>& members, bool count_names, Scanned& object) {
    const bool any_room = std::any_of(members.begin(), members.end(),
                                      [](const Member& m) { return m.most_elements > 0; });
    if (!count_names && (!any_room || members.size() == 1)) {
      if (any_room) object.most_elements = members[0].most_elements;
      return;
    }
    // Names with escapes are compared unescaped; the others as written.
    unescaped_.clear();
    for (const Member& member : members)
      if (member.escaped) unescaped_.push_back(Unescape(member.name));
    order_.clear();
    size_t next_unescaped = 0;
    for (size_t i = 0; i < members.size(); ++i) {
      const std::string_view name =
          members[i].escaped ? std::string_view(unescaped_[next_unescaped++]) : members[i].name;
      order_.emplace_back(name, i);
    }
    std::sort(order_.begin(), order_.end());
    for (size_t i = 0; i < order_.size(); ++i) {
      // The last of each name: sorted by name, then by position.
      if (i + 1 < order_.size() && order_[i + 1].first == order_[i].first) continue;
      ++object.size;
      object.most_elements =
          std::max(object.most_elements, members[order_[i].second].most_elements);
    }
  }

  const char* at_;
  const char* end_;
  bool failed_ = false;
  size_t records_ = 0;
  std::vector<std::vector<Member>> members_;  // by depth
  std::vector<std::string> unescaped_;
  std::vector<std::pair<std::string_view, size_t>> order_;
};

}  // namespace

Room RoomForAnswerText(std::string_view text) {
  return Walk(text).Run();
}

}  // namespace gsc::fields
