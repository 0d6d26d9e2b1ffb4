// gscodec: shows what deserialize puts into a caller's record for a device answer, and what
// serialize sends for an input record written in field-named JSON.
#include <json/json.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "guidescreen_codec.h"
#include "operations_table.h"

namespace {

using gsc::fields::Operation;

constexpr char kUsage[] =
    "usage: gscodec list\n"
    "       gscodec decode OPERATION [FILE|-] [--capacity N] [--elements-buffer BYTES]\n"
    "                                         [--show-secrets]\n"
    "       gscodec encode OPERATION [FILE|-] [--show-secrets]\n"
    "       gscodec check OPERATION [FILE|-] [--capacity N] [--elements-buffer BYTES]\n"
    "       gscodec check --request OPERATION [FILE|-]\n"
    "       gscodec sample decode|encode OPERATION\n"
    "\n"
    "decode  reads a device answer (the result object deserialize receives) and prints what the\n"
    "        caller's output record received, keyed by the record's field names. Caller arrays\n"
    "        hold --capacity records (default 32); each window's element buffer holds\n"
    "        --elements-buffer bytes (default: room for 64 entries of the largest kind).\n"
    "encode  reads an input record in that field-named form and prints the request parameters\n"
    "        serialize writes.\n"
    "check   reads a device answer (or with --request an input record) like decode (encode)\n"
    "        and prints, one per line as 'path: kind: what', what the record could not take\n"
    "        (or the request could not send). Exit status 0 with no findings, 1 with any.\n"
    "decode and encode print their findings on standard error.\n"
    "Without FILE the operation's embedded sample is used; '-' reads standard input.\n"
    "Passwords are shown as \"***\" unless --show-secrets is given.\n";

// Room for 64 entries of the largest kind: a 132-byte header and a text element each.
constexpr uint32_t kDefaultElementsBuffer =
    64 * (sizeof(tagNET_ELEMENT_COMMON_INFO) + sizeof(tagNET_TEXT_ELEMENT_INFO));

struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
struct InputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Arguments {
  std::vector<std::string> words;
  gsc::fields::Room room{32, kDefaultElementsBuffer};
  gsc::fields::ShowOptions show;
  bool request = false;  // check: the input is a request record
};

uint32_t ParseCount(const std::string& option, const std::string& text, uint32_t most) {
  size_t used = 0;
  unsigned long value = 0;
  try {
    value = std::stoul(text, &used);
  } catch (const std::exception&) {
    used = 0;
  }
  if (used == 0 || used != text.size() || text[0] == '-' || value > most)
    throw UsageError(option + " takes a whole number from 0 to " + std::to_string(most));
  return static_cast<uint32_t>(value);
}

Arguments ParseArguments(int argc, char** argv) {
  Arguments args;
  for (int i = 1; i < argc; ++i) {
    std::string word = argv[i];
    std::string value;
    const size_t equals = word.find('=');
    if (word.rfind("--", 0) == 0 && equals != std::string::npos) {
      value = word.substr(equals + 1);
      word.resize(equals);
    }
    if (word == "--show-secrets") {
      args.show.show_secrets = true;
    } else if (word == "--capacity" || word == "--elements-buffer") {
      if (value.empty()) {
        if (i + 1 == argc) throw UsageError(word + " needs a value");
        value = argv[++i];
      }
      if (word == "--capacity")
        args.room.capacity = ParseCount(word, value, 4096);
      else
        args.room.elements_buffer = ParseCount(word, value, 1u << 26);
    } else if (word == "--request") {
      args.request = true;
    } else if (word == "--help" || word == "-h") {
      args.words = {"help"};
      return args;
    } else if (word.size() > 1 && word[0] == '-') {
      throw UsageError("unknown option " + word);
    } else {
      args.words.push_back(word);
    }
  }
  return args;
}

const Operation& FindOperation(const std::string& name) {
  if (const Operation* op = gsc::fields::FindOperation(name)) return *op;
  std::string names;
  for (const Operation& op : gsc::fields::Operations()) names += std::string("\n  ") + op.name;
  throw UsageError("unknown operation '" + name + "'; the operations are:" + names);
}

// The JSON text of FILE, of standard input for "-", or the embedded sample.
std::pair<std::string, std::string> ReadInput(const std::vector<std::string>& words,
                                              const std::string& sample) {
  if (words.size() < 3) return {"(embedded sample)", sample};
  if (words.size() > 3) throw UsageError("too many arguments");
  const std::string& file = words[2];
  if (file == "-")
    return {"(standard input)", std::string(std::istreambuf_iterator<char>(std::cin), {})};
  std::ifstream in(file, std::ios::binary);
  if (!in) throw InputError("cannot read " + file);
  std::ostringstream text;
  text << in.rdbuf();
  return {file, text.str()};
}

// Parses JSON text; a syntax error names the source with its line and column.
Json::Value ParseJson(const std::string& source, const std::string& text, bool strict) {
  Json::CharReaderBuilder builder;
  if (strict) builder["rejectDupKeys"] = true;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  if (reader->parse(text.data(), text.data() + text.size(), &value, &errors)) return value;
  // JsonCpp reports "* Line L, Column C\n  message\n" per error; the first one is enough.
  std::string message = errors.substr(errors.rfind("* ", 0) == 0 ? 2 : 0);
  const size_t newline = message.find('\n');
  if (newline != std::string::npos) {
    const size_t start = message.find_first_not_of(' ', newline + 1);
    const size_t end = message.find('\n', newline + 1);
    message = message.substr(0, newline) + ": " +
              message.substr(start, end == std::string::npos ? end : end - start);
  }
  throw InputError("malformed JSON in " + source + ": " + message);
}

// Replaces the text of every "Password" member with "***" (request parameters).
void MaskPasswords(Json::Value& value) {
  if (value.isArray()) {
    for (Json::Value& element : value) MaskPasswords(element);
  } else if (value.isObject()) {
    for (const std::string& name : value.getMemberNames()) {
      Json::Value& member = value[name];
      if (name == "Password" && member.isString() && !member.asString().empty())
        member = "***";
      else
        MaskPasswords(member);
    }
  }
}

// One-line JSON with a space after each colon and comma.
std::string Compact(const Json::Value& value) {
  if (!value.isObject() && !value.isArray()) {
    Json::StreamWriterBuilder builder;
    builder["emitUTF8"] = true;
    return Json::writeString(builder, value);
  }
  std::string text;
  for (auto it = value.begin(); it != value.end(); ++it) {
    if (!text.empty()) text += ", ";
    if (value.isObject()) text += Compact(it.name()) + ": ";
    text += Compact(*it);
  }
  return value.isObject() ? "{" + text + "}" : "[" + text + "]";
}

// Indented JSON; an object or array that fits on its line stays on it.
void Write(std::ostream& out, const Json::Value& value, const std::string& indent) {
  const std::string compact = Compact(value);
  if (indent.size() + compact.size() <= 96 || !(value.isObject() || value.isArray()) ||
      value.empty()) {
    out << compact;
    return;
  }
  const std::string inner = indent + "  ";
  const bool object = value.isObject();
  out << (object ? "{" : "[");
  const char* separator = "\n";
  for (auto it = value.begin(); it != value.end(); ++it) {
    out << separator << inner;
    if (object) out << Compact(it.name()) << ": ";
    Write(out, *it, inner);
    separator = ",\n";
  }
  out << "\n" << indent << (object ? "}" : "]");
}

void Print(const Json::Value& value) {
  Write(std::cout, value, "");
  std::cout << "\n";
}

int Run(const Arguments& args) {
  const std::vector<std::string>& words = args.words;
  const std::string command = words.empty() ? "help" : words[0];
  if (command == "help") {
    std::cout << kUsage;
    return 0;
  }
  if (command == "list") {
    if (words.size() > 1) throw UsageError("list takes no arguments");
    std::printf("%-28s %-32s %s\n", "OPERATION", "REQUEST KEYS", "ANSWER KEYS");
    for (const Operation& op : gsc::fields::Operations())
      std::printf("%-28s %-32s %s\n", op.name, op.request_keys, op.answer_keys);
    return 0;
  }
  if (command == "sample") {
    if (words.size() != 3 || (words[1] != "decode" && words[1] != "encode"))
      throw UsageError("sample takes decode or encode and an operation");
    const Operation& op = FindOperation(words[2]);
    Print(ParseJson("the embedded sample",
                    words[1] == "decode" ? op.answer_sample : op.request_sample, false));
    return 0;
  }
  if (command != "decode" && command != "encode" && command != "check")
    throw UsageError("unknown command " + command);
  if (args.request && command != "check") throw UsageError("--request goes with check");
  if (words.size() < 2) throw UsageError(command + " needs an operation");
  const Operation& op = FindOperation(words[1]);
  gsc::Report report;
  const bool decode = command == "decode" || (command == "check" && !args.request);
  if (decode) {
    const auto [source, text] = ReadInput(words, op.answer_sample);
    const Json::Value record =
        gsc::fields::Decode(op, ParseJson(source, text, false), args.room, args.show, &report);
    if (command == "decode") {
      const bool failed =
          !report.empty() && report.findings().back().kind == gsc::FindingKind::kConversionFailed;
      if (failed) {
        const gsc::Finding& failure = report.findings().back();
        throw InputError("deserialize raised Json::Exception at " +
                         (failure.path.empty() ? std::string("the result") : failure.path) + ": " +
                         failure.detail);
      }
      Print(record);
    }
  } else {
    const auto [source, text] = ReadInput(words, op.request_sample);
    Json::Value params = gsc::fields::Encode(op, ParseJson(source, text, true), &report);
    if (!args.show.show_secrets) MaskPasswords(params);
    if (command == "encode") Print(params);
  }
  if (command == "check") {
    std::cout << report.str();
    return report.empty() ? 0 : 1;
  }
  std::cerr << report.str();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(ParseArguments(argc, argv));
  } catch (const UsageError& e) {
    std::cerr << "gscodec: " << e.what() << "\n(gscodec --help shows the usage)\n";
    return 2;
  } catch (const std::exception& e) {
    std::cerr << "gscodec: " << e.what() << "\n";
    return 1;
  }
}
