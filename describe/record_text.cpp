#include "describe/record_text.h"

#include <json/writer.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>

#include "describe/field_access.h"
#include "describe/json_printer.h"
#include "guidescreen_codec/capi.h"

namespace gsc::fields {
namespace {

constexpr size_t kFlushAt = size_t{1} << 16;
constexpr size_t kUnlimited = std::numeric_limits<size_t>::max();

// Something ToJson would make a JSON value of: a record, one value of a field, the values of an
// array field, a caller array, an element buffer or one of its entries, or null.
struct Node {
  enum class Type { kNull, kValue, kRecord, kValues, kCallerArray, kElements, kEntry };
  Type type;
  const RecordTable* table = nullptr;  // kRecord, kCallerArray: the record; kElements, kEntry:
                                       // the entry header
  const Field* field = nullptr;        // kValue, kValues
  ConstBytes at = nullptr;             // the record, value, first value, array or entry
  uint32_t count = 0;                  // values, records or entries shown
  uint32_t length = 0;                 // kElements: the buffer's length
};

bool IsContainer(const Node& node) {
  return node.type != Node::Type::kNull && node.type != Node::Type::kValue;
}

// One value of field `f` at `at`: a nested record is a record, anything else a value.
Node ValueNode(const Field& f, ConstBytes at) {
  if (f.kind == Kind::kRecord) return {Node::Type::kRecord, f.record, nullptr, at};
  return {Node::Type::kValue, nullptr, &f, at};
}

// Field `f` of the record `bytes` of `table`, as ToJson shows it.
Node FieldNode(const RecordTable& table, ConstBytes bytes, const Field& f) {
  ConstBytes at = bytes + f.offset;
  if (f.kind == Kind::kCallerArray || f.kind == Kind::kElements) {
    const auto pointer = Load<ConstBytes>(at);
    if (pointer == nullptr) return {Node::Type::kNull};
    const uint32_t count = Number(table, bytes, f.count);
    const uint32_t limit = f.limit ? Number(table, bytes, f.limit) : count;
    if (f.kind == Kind::kCallerArray)
      return {Node::Type::kCallerArray, f.record, nullptr, pointer, std::min(count, limit)};
    return {Node::Type::kElements, f.record, nullptr, pointer, count, limit};
  }
  if (f.extent == 1 && !f.count) return ValueNode(f, at);
  const uint32_t n = f.count ? std::min(Number(table, bytes, f.count), f.extent) : f.extent;
  return {Node::Type::kValues, nullptr, &f, at, n};
}

// Calls visit(name, child) for each member (name) or element (nullptr) of a container, in
// order, until it returns false; false then.
template <typename Visit>
bool ForEachChild(const Node& node, Visit visit) {
  switch (node.type) {
    case Node::Type::kRecord:
      for (const Field& f : node.table->fields) {
        if (f.kind == Kind::kHidden || f.kind == Kind::kSize) continue;
        if (!visit(f.name, FieldNode(*node.table, node.at, f))) return false;
      }
      return true;
    case Node::Type::kValues:
      for (uint32_t i = 0; i < node.count; ++i)
        if (!visit(nullptr, ValueNode(*node.field, node.at + size_t{i} * node.field->size)))
          return false;
      return true;
    case Node::Type::kCallerArray:
      for (uint32_t i = 0; i < node.count; ++i)
        if (!visit(nullptr, Node{Node::Type::kRecord, node.table, nullptr,
                                 node.at + size_t{i} * node.table->size}))
          return false;
      return true;
    case Node::Type::kElements: {
      // Walked with the library's entry sizes, up to the count or the first entry that does not
      // lie whole in the buffer.
      uint32_t offset = 0;
      for (uint32_t i = 0; i < node.count; ++i) {
        const uint32_t at = offset;
        EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
        if (gsc_element_next(node.at, node.length, &offset, &kind, nullptr, 0) != GSC_STATUS_OK)
          break;
        if (!visit(nullptr, Node{Node::Type::kEntry, node.table, nullptr, node.at + at}))
          return false;
      }
      return true;
    }
    case Node::Type::kEntry: {
      const RecordTable& header = *node.table;
      for (const Field& f : header.fields) {
        if (f.kind == Kind::kHidden || f.kind == Kind::kSize) continue;
        if (!visit(f.name, FieldNode(header, node.at, f))) return false;
      }
      const RecordTable* record = VariantOf(header, TagOf(header, node.at));
      return record == nullptr ||
             visit("record", Node{Node::Type::kRecord, record, nullptr, node.at + header.size});
    }
    default:
      return true;
  }
}

class Writer {
 public:
  Writer(const ShowOptions& options, std::FILE* out) : options_(options), out_(out) {}

  // The node laid out over lines, starting at column `indent`.
  void Pretty(const Node& node, size_t indent) {
    const size_t start = text_.size();
    if (!IsContainer(node)) {
      Compact(node, kUnlimited, start);
      return;
    }
    if (indent < kLineWidth && Compact(node, kLineWidth - indent, start)) return;
    text_.resize(start);
    const bool object = node.type == Node::Type::kRecord || node.type == Node::Type::kEntry;
    text_ += object ? '{' : '[';
    bool first = true;
    ForEachChild(node, [&](const char* name, const Node& child) {
      Member(name, child, indent + 2, first);
      first = false;
      return true;
    });
    text_ += '\n';
    text_.append(indent, ' ');
    text_ += object ? '}' : ']';
  }

  void Flush() {
    if (out_ != nullptr) {
      std::fwrite(text_.data(), 1, text_.size(), out_);
      text_.clear();
    }
  }

  std::string& text() { return text_; }

  // One member of an object (or element of an array, without a name) laid over lines at
  // `indent`: its separator, its name and its value. Only here may text go out: no enclosing
  // call can still take it back.
  void Member(const char* name, const Node& value, size_t indent, bool first) {
    text_ += first ? "\n" : ",\n";
    text_.append(indent, ' ');
    if (name != nullptr) Name(name);
    Pretty(value, indent);
    if (text_.size() >= kFlushAt) Flush();
  }

 private:
  // The node on one line; false as soon as the text since `start` is longer than `limit`.
  bool Compact(const Node& node, size_t limit, size_t start) {
    if (!IsContainer(node)) {
      if (node.type == Node::Type::kNull)
        text_ += "null";
      else
        Value(*node.field, node.at);
      return text_.size() - start <= limit;
    }
    const bool object = node.type == Node::Type::kRecord || node.type == Node::Type::kEntry;
    text_ += object ? '{' : '[';
    bool first = true;
    const bool whole = ForEachChild(node, [&](const char* name, const Node& child) {
      if (!first) text_ += ", ";
      first = false;
      if (name != nullptr) Name(name);
      return Compact(child, limit, start);
    });
    text_ += object ? '}' : ']';
    return whole && text_.size() - start <= limit;
  }

  void Name(const char* name) {
    AppendQuoted(text_, name, std::strlen(name));
    text_ += ": ";
  }

  // One value as ToJson's ShowValue makes it.
  void Value(const Field& f, ConstBytes at) {
    switch (f.kind) {
      case Kind::kText:
      case Kind::kSecret: {
        const char* text = reinterpret_cast<const char*>(at);
        const size_t size = strnlen(text, f.size);
        if (f.kind == Kind::kSecret && !options_.show_secrets && size > 0)
          text_ += "\"***\"";
        else
          AppendQuoted(text_, text, size);
        return;
      }
      case Kind::kUnsigned:
        Integer(Load<uint32_t>(at));
        return;
      case Kind::kSigned:
        Integer(Load<int32_t>(at));
        return;
      case Kind::kReal:
        text_ += Json::valueToString(Load<double>(at));
        return;
      case Kind::kBool:
        text_ += *at != 0 ? "true" : "false";
        return;
      case Kind::kEnum: {
        const int32_t v = Load<int32_t>(at);
        text_ += "{\"value\": ";
        Integer(v);
        if (const char* name = f.enumeration->NameOf(v)) {
          text_ += ", \"name\": ";
          AppendQuoted(text_, name, std::strlen(name));
        }
        text_ += '}';
        return;
      }
      default:
        text_ += "null";
        return;
    }
  }

  template <typename Int>
  void Integer(Int value) {
    char digits[16];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
    text_.append(digits, end.ptr);
  }

  const ShowOptions& options_;
  std::FILE* out_;
  std::string text_;
};

}  // namespace

class StreamedRecordPrinter::Impl {
 public:
  Impl(std::FILE* out, const RecordTable& table, const ShowOptions& options)
      : table_(table), writer_(options, out) {}

  void Begin(const void* head) {
    writer_.text() += '{';
    Fields(head, true);
  }

  void Add(const void* records, uint32_t count) {
    const auto* at = static_cast<ConstBytes>(records);
    for (uint32_t i = 0; i < count; ++i) {
      writer_.Member(nullptr, Node{Node::Type::kRecord, array_->record, nullptr, at}, 4,
                     first_record_);
      first_record_ = false;
      at += array_->record->size;
    }
  }

  void End(const void* head) {
    writer_.text() += "\n  ]";
    Fields(head, false);
    writer_.text() += "\n}\n";
    writer_.Flush();
  }

  void Flush() { writer_.Flush(); }

 private:
  // The shown fields before the caller array (ending with its name and '['), or after it.
  void Fields(const void* head, bool before) {
    const auto* bytes = static_cast<ConstBytes>(head);
    bool past = false;
    for (const Field& f : table_.fields) {
      if (f.kind == Kind::kHidden || f.kind == Kind::kSize) continue;
      if (f.kind == Kind::kCallerArray) {
        past = true;
        array_ = &f;
        if (before) {
          writer_.text() += first_field_ ? "\n  " : ",\n  ";
          AppendQuoted(writer_.text(), f.name, std::strlen(f.name));
          writer_.text() += ": [";
          first_field_ = false;
        }
        continue;
      }
      if (past == before) continue;
      writer_.Member(f.name, FieldNode(table_, bytes, f), 2, first_field_);
      first_field_ = false;
    }
  }

  const RecordTable& table_;
  Writer writer_;
  const Field* array_ = nullptr;
  bool first_field_ = true;
  bool first_record_ = true;
};

StreamedRecordPrinter::StreamedRecordPrinter(std::FILE* out, const RecordTable& table,
                                             const ShowOptions& options)
    : impl_(std::make_unique<Impl>(out, table, options)) {}
StreamedRecordPrinter::~StreamedRecordPrinter() = default;
void StreamedRecordPrinter::Begin(const void* head) {
  impl_->Begin(head);
}
void StreamedRecordPrinter::Add(const void* records, uint32_t count) {
  impl_->Add(records, count);
}
void StreamedRecordPrinter::End(const void* head) {
  impl_->End(head);
}
void StreamedRecordPrinter::Flush() {
  impl_->Flush();
}

void PrintRecord(std::FILE* out, const RecordTable& table, const void* record,
                 const ShowOptions& options) {
  Writer writer(options, out);
  writer.Pretty({Node::Type::kRecord, &table, nullptr, static_cast<ConstBytes>(record)}, 0);
  writer.text() += '\n';
  writer.Flush();
}

std::string RecordText(const RecordTable& table, const void* record, const ShowOptions& options) {
  Writer writer(options, nullptr);
  writer.Pretty({Node::Type::kRecord, &table, nullptr, static_cast<ConstBytes>(record)}, 0);
  writer.text() += '\n';
  return std::move(writer.text());
}

}  // namespace gsc::fields
