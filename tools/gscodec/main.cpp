// gscodec: shows what deserialize puts into a caller's record for a device answer, and what
// serialize sends for an input record written in field-named JSON.
#include <json/json.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "capi/report_handle.h"
#include "describe/answer_room.h"
#include "describe/json_printer.h"
#include "describe/operations_table.h"
#include "describe/record_text.h"
#include "guidescreen_codec.h"
#include "listing_batches.h"
#include "operation_names.h"

namespace {

using gsc::fields::Operation;

constexpr char kUsage[] =
    "usage: gscodec list\n"
    "       gscodec decode OPERATION [FILE|-] [--capacity N] [--elements-buffer BYTES]\n"
    "                                         [--keep-going] [--show-secrets]\n"
    "       gscodec encode OPERATION [FILE|-] [--show-secrets]\n"
    "       gscodec check OPERATION [FILE|-] [--capacity N] [--elements-buffer BYTES]\n"
    "                                        [--format text|json]\n"
    "       gscodec check --request OPERATION [FILE|-] [--format text|json]\n"
    "       gscodec sample decode|encode OPERATION\n"
    "       gscodec --version | --help\n"
    "\n"
    "decode  reads a device answer (the result object deserialize receives) and prints what the\n"
    "        caller's output record received, keyed by the record's field names. Caller arrays\n"
    "        have room for every record the answer holds, or for --capacity N; each window's\n"
    "        element buffer for the most elements any window of the answer holds, or\n"
    "        --elements-buffer BYTES. A value that cannot be converted stops it (exit status\n"
    "        1), unless --keep-going reads it as null, goes on and prints the record. A listing\n"
    "        too large to hold at once is printed as it is read: a stop leaves it unfinished.\n"
    "encode  reads an input record in that field-named form and prints the request parameters\n"
    "        serialize writes.\n"
    "check   reads a device answer (or with --request an input record) as decode (encode)\n"
    "        does, going on past values that cannot be converted, and prints every finding:\n"
    "        what the record could not take (or the request could not send), one per line as\n"
    "        'path: kind: detail', or with --format json as a JSON array of {kind, path,\n"
    "        detail}. Exit status 0 with no findings, 1 with any, 2 for bad usage or input\n"
    "        that cannot be read as JSON.\n"
    "decode and encode print their findings on standard error.\n"
    "Input is FILE, or standard input for '-' or when no FILE is given and standard input is\n"
    "not a terminal ('gscodec sample decode OPERATION | gscodec check OPERATION' checks the\n"
    "embedded sample). Answers and records must be strict JSON (RFC 8259, UTF-8): comments,\n"
    "trailing commas and the like are refused with the line and column where the text stops\n"
    "being JSON. Operation names may be given in any case. Passwords are shown as \"***\"\n"
    "unless --show-secrets is given. Exit status of decode and encode: 0 success, 1 bad input,\n"
    "2 bad usage.\n";

struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
struct InputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Arguments {
  std::vector<std::string> words;
  // Given by --capacity and --elements-buffer; otherwise room for everything the answer holds.
  std::optional<uint32_t> capacity;
  std::optional<uint32_t> elements_buffer;
  gsc::fields::ShowOptions show;
  bool request = false;     // check: the input is a request record
  bool keep_going = false;  // decode: skip values that cannot be converted
  bool json = false;        // check: findings as a JSON array
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
    } else if (word == "--capacity" || word == "--elements-buffer" || word == "--format") {
      if (value.empty()) {
        if (i + 1 == argc) throw UsageError(word + " needs a value");
        value = argv[++i];
      }
      if (word == "--capacity") {
        args.capacity = ParseCount(word, value, 1u << 20);
      } else if (word == "--elements-buffer") {
        args.elements_buffer = ParseCount(word, value, 1u << 26);
      } else if (value == "json" || value == "text") {
        args.json = value == "json";
      } else {
        throw UsageError("--format takes text or json");
      }
    } else if (word == "--request") {
      args.request = true;
    } else if (word == "--keep-going") {
      args.keep_going = true;
    } else if (word == "--help" || word == "-h") {
      args.words = {"help"};
      return args;
    } else if (word == "--version") {
      args.words = {"version"};
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
  if (const Operation* op = gsc::fields::MatchOperation(name)) return *op;
  const std::vector<std::string> similar = gsc::fields::SimilarOperations(name);
  std::string message = "unknown operation '" + name + "'";
  if (!similar.empty()) {
    message += "; did you mean " + similar[0];
    for (size_t i = 1; i < similar.size(); ++i)
      message += (i + 1 == similar.size() ? " or " : ", ") + similar[i];
    throw UsageError(message + "? ('gscodec list' shows them all)");
  }
  message += "; the operations are:";
  for (const Operation& op : gsc::fields::Operations()) message += std::string("\n  ") + op.name;
  throw UsageError(message);
}

// All of `stream`; `what` names it in an error. A regular file is read in one piece.
std::string ReadAll(std::FILE* stream, const std::string& what) {
  std::string text;
  struct stat status {};
  if (fstat(fileno(stream), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
    text.resize(static_cast<size_t>(status.st_size));
    text.resize(std::fread(&text[0], 1, text.size(), stream));
  }
  char chunk[1 << 16];
  size_t n = 0;
  while ((n = std::fread(chunk, 1, sizeof chunk, stream)) > 0) text.append(chunk, n);
  if (std::ferror(stream)) throw InputError("cannot read " + what + ": " + std::strerror(errno));
  return text;
}

std::string ReadFile(const std::string& file) {
  std::FILE* stream = std::fopen(file.c_str(), "rb");
  if (stream == nullptr) throw InputError("cannot read " + file + ": " + std::strerror(errno));
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> closer(stream, &std::fclose);
  return ReadAll(stream, file);
}

struct Input {
  std::string source;
  std::string text;
};

// The JSON text of FILE; of standard input for "-", or without FILE when standard input is not
// a terminal. From a terminal without FILE there is nothing to read: the usage error says how to
// feed the embedded sample instead. `sample` names the sample that fits ("decode" or "encode").
Input ReadInput(const std::vector<std::string>& words, const std::string& invocation,
                const char* sample) {
  if (words.size() > 3) throw UsageError("too many arguments");
  const bool from_stdin = words.size() == 3 ? words[2] == "-" : isatty(STDIN_FILENO) == 0;
  if (words.size() < 3 && !from_stdin) {
    throw UsageError(words[0] + " reads FILE, or standard input when it is not a terminal; " +
                     "give FILE or '-', or feed it the embedded sample: 'gscodec sample " + sample +
                     " " + words[1] + " | gscodec " + invocation + "'");
  }
  Input input = from_stdin ? Input{"standard input", ReadAll(stdin, "standard input")}
                           : Input{words[2], ReadFile(words[2])};
  if (input.text.find_first_not_of(" \t\r\n") == std::string::npos) {
    std::string hint;
    if (words.size() < 3)
      hint = " (no FILE was given and standard input is not a terminal; 'gscodec sample " +
             std::string(sample) + " " + words[1] + "' prints the embedded sample)";
    throw InputError(input.source + " is empty: expected a JSON document" + hint);
  }
  return input;
}

// Parses JSON text: exactly one document, with white space only after it. A syntax error names
// the source with its line and column, written as the library's messages write them.
Json::Value ParseJson(const std::string& source, const std::string& text, bool strict) {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["failIfExtra"] = true;
  if (strict) builder["rejectDupKeys"] = true;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  bool parsed = false;
  try {
    parsed = reader->parse(text.data(), text.data() + text.size(), &value, &errors);
  } catch (const Json::Exception& e) {  // nesting deeper than the reader takes
    errors = e.what();
  }
  if (parsed) return value;
  // JsonCpp reports "* Line L, Column C\n  message\n" per error; the first one is enough.
  std::string message = errors.substr(errors.rfind("* ", 0) == 0 ? 2 : 0);
  const size_t newline = message.find('\n');
  if (newline != std::string::npos) {
    const size_t start = message.find_first_not_of(' ', newline + 1);
    const size_t end = message.find('\n', newline + 1);
    std::string where = message.substr(0, newline);
    for (char& c : where) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    message = where + ": " + message.substr(start, end == std::string::npos ? end : end - start);
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

// A report handle of the C interface, freed on every way out.
using ReportHandle = std::unique_ptr<gsc_report, void (*)(gsc_report*)>;
ReportHandle NewReport() {
  ReportHandle handle(gsc_report_new(), &gsc_report_free);
  if (!handle) throw std::bad_alloc();
  return handle;
}

// The detail of a C interface message: what follows the status's own description.
std::string Detail(int status, const char* message) {
  const std::string prefix = std::string(gsc_status_message(status)) + ": ";
  const std::string text = message;
  return text.rfind(prefix, 0) == 0 ? text.substr(prefix.size()) : text;
}

// Text a C entry point handed out. The bytes are left uninitialised: a generous guess costs
// address space, not memory, since only the pages the text reaches are ever touched.
struct HandedOut {
  std::unique_ptr<char[]> bytes;
  size_t length = 0;
  std::string_view view() const { return {bytes.get(), length}; }
};

// Runs `call(buffer, capacity, &length)`, a C entry point that hands out text by the size
// protocol, with a buffer of `guess` bytes, and once more when the text turns out longer.
template <typename Call>
int TextFrom(Call call, size_t guess, HandedOut& text) {
  size_t capacity = guess;
  text.bytes.reset(new char[capacity]);
  int status = call(text.bytes.get(), capacity, &text.length);
  if (status == GSC_STATUS_BUFFER_TOO_SMALL && text.length >= capacity) {
    capacity = text.length + 1;
    text.bytes.reset(new char[capacity]);
    status = call(text.bytes.get(), capacity, &text.length);
  }
  if (status != GSC_STATUS_OK) text.length = 0;
  return status;
}

// A programme listing whose records would take more than this is read and printed a batch of
// about kListingBatchBytes at a time (two batches in memory), not all at once.
constexpr size_t kListingBytesAtOnce = size_t{64} << 20;
constexpr size_t kListingBatchBytes = size_t{4} << 20;

// What the process's exit reclaims: the records read from a large answer hold many blocks, and
// freeing them one by one takes longer than reading them did.
struct LeftToExit {
  std::unique_ptr<gsc::fields::Received> received;
};
LeftToExit& KeptUntilExit() {
  static auto* kept = new LeftToExit;  // never deleted, on purpose
  return *kept;
}

// The room a caller gives the output record for the answer `text`: what the options say, and
// where they say nothing, room for every record and element the answer holds, so that only what
// a caller with that room would lose is reported.
gsc::fields::Room RoomFor(const std::string& text, const Arguments& args) {
  if (args.capacity && args.elements_buffer) return {*args.capacity, *args.elements_buffer};
  const gsc::fields::Room all = gsc::fields::RoomForAnswerText(text);
  return {args.capacity.value_or(all.capacity), args.elements_buffer.value_or(all.elements_buffer)};
}

// Reads the answer's text into the caller's record through the reporting deserialize_json, and
// prints the record when `print` is set. Text that is not JSON is an input error with its line
// and column, and so is a failed conversion that stopped the reading, naming its path. No tree of
// the answer is built: the text is read where it lies, let go once read, and the record is
// printed straight from its bytes.
void Decode(const Operation& op, Input input, const Arguments& args, bool print,
            gsc::Report& report) {
  std::unique_ptr<gsc::fields::Received>& received = KeptUntilExit().received;
  bool printed = false;
  HandedOut form;  // the record as decode prints it, when not printed batch by batch
  const bool listing = std::string(op.name) == "GET_ALL_PROGRAMMES";
  const gsc::fields::Room room = listing ? RoomFor(input.text, args) : gsc::fields::Room{};
  if (listing && gsc::fields::ListingBytes(room) > kListingBytesAtOnce) {
    gsc::fields::BatchedRead read = gsc::fields::ReadProgrammesInBatches(
        op, input.text, room, gsc::fields::ProgrammesPerBatch(room, kListingBatchBytes),
        print ? stdout : nullptr, args.show, report);
    printed = read.printed;
    received = std::move(read.received);
  } else {
    // The C interface's field-named decode, which the Python package uses too.
    const ReportHandle handle = NewReport();
    unsigned flags = args.show.show_secrets ? 0 : GSC_HIDE_SECRETS;
    if (report.on_failure() == gsc::OnFailure::kSkip) flags |= GSC_SKIP_FAILURES;
    char message[1024];
    const auto call = [&](char* fields, size_t capacity, size_t* length) {
      return gsc_decode_fields(op.name, input.text.data(), input.text.size(),
                               args.capacity.value_or(GSC_ROOM_FOR_ALL),
                               args.elements_buffer.value_or(GSC_ROOM_FOR_ALL), flags, fields,
                               capacity, length, handle.get(), message, sizeof message);
    };
    // check prints findings alone: the form is not asked for.
    size_t unused = 0;
    const int status =
        print ? TextFrom(call, 8 * input.text.size() + 4096, form) : call(nullptr, 0, &unused);
    report = handle->report;
    if (status != GSC_STATUS_OK && status != GSC_STATUS_MALFORMED_JSON &&
        status != GSC_STATUS_CONVERSION_FAILED && (print || status != GSC_STATUS_BUFFER_TOO_SMALL))
      throw std::runtime_error(message);
  }
  std::string().swap(input.text);
  gsc::release_json_buffers();
  if (!report.empty() && report.findings().back().kind == gsc::FindingKind::kJsonMalformed)
    throw InputError("malformed JSON in " + input.source + ": " + report.findings().back().detail);
  if (!print) return;
  if (report.on_failure() == gsc::OnFailure::kStop && !report.empty() &&
      report.findings().back().kind == gsc::FindingKind::kConversionFailed) {
    const gsc::Finding& failure = report.findings().back();
    // What was found before the failure goes to standard error, the failure itself into the
    // error message.
    gsc::Report before;
    for (size_t i = 0; i + 1 < report.size(); ++i) {
      const gsc::Finding& f = report.findings()[i];
      before.add(f.kind, f.path, f.detail);
    }
    std::fputs(before.str().c_str(), stderr);
    throw InputError("deserialize raised Json::Exception at " +
                     (failure.path.empty() ? std::string("the result") : failure.path) + ": " +
                     failure.detail + " (--keep-going reads such values as null and goes on)");
  }
  if (printed) return;
  if (received) {
    gsc::fields::PrintRecord(stdout, *op.answer, received->record, args.show);
  } else {
    std::fwrite(form.bytes.get(), 1, form.length, stdout);
  }
}

// The request the C interface's field-named encode writes for the input record written in
// `input`, as a tree to print, its findings into `report`. A form that is not strict JSON, or
// that does not describe the record, is an input error saying where.
Json::Value Encode(const Operation& op, const Input& input, gsc::Report& report) {
  const ReportHandle handle = NewReport();
  char message[1024];
  HandedOut request;
  const int status = TextFrom(
      [&](char* json, size_t capacity, size_t* length) {
        return gsc_encode_fields(op.name, input.text.data(), input.text.size(), json, capacity,
                                 length, handle.get(), message, sizeof message);
      },
      4 * input.text.size() + 4096, request);
  report = handle->report;
  if (status == GSC_STATUS_MALFORMED_JSON)
    throw InputError("malformed JSON in " + input.source + ": " + Detail(status, message));
  if (status == GSC_STATUS_INVALID_FIELDS) throw InputError(Detail(status, message));
  if (status != GSC_STATUS_OK) throw std::runtime_error(message);
  return ParseJson("the request", std::string(request.view()), false);
}

int Run(const Arguments& args) {
  const std::vector<std::string>& words = args.words;
  if (words.empty()) throw UsageError("no command given");
  const std::string& command = words[0];
  if (command == "help") {
    std::fputs(kUsage, stdout);
    return 0;
  }
  if (command == "version") {
    std::printf("gscodec %s (library %s)\n", GSC_VERSION_STRING, gsc_version());
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
    gsc::fields::PrintJson(
        stdout, ParseJson("the embedded sample",
                          words[1] == "decode" ? op.answer_sample : op.request_sample, false));
    return 0;
  }
  if (command != "decode" && command != "encode" && command != "check")
    throw UsageError("unknown command " + command);
  if (args.request && command != "check") throw UsageError("--request goes with check");
  if (args.keep_going && command != "decode") throw UsageError("--keep-going goes with decode");
  if (args.json && command != "check") throw UsageError("--format goes with check");
  if (words.size() < 2) throw UsageError(command + " needs an operation");
  const Operation& op = FindOperation(words[1]);
  // check lists every finding, so it goes past a failed conversion as decode --keep-going does.
  gsc::Report report(command == "check" || args.keep_going ? gsc::OnFailure::kSkip
                                                           : gsc::OnFailure::kStop);
  const bool reads = command == "decode" || (command == "check" && !args.request);
  const std::string invocation = command + (args.request ? " --request " : " ") + words[1];
  const Input input = ReadInput(words, invocation, reads ? "decode" : "encode");
  if (reads) {
    Decode(op, input, args, command == "decode", report);
  } else {
    Json::Value params = Encode(op, input, report);
    if (!args.show.show_secrets) MaskPasswords(params);
    if (command == "encode") gsc::fields::PrintJson(stdout, params);
  }
  if (command == "check") {
    std::fputs(args.json ? (report.json() + "\n").c_str() : report.str().c_str(), stdout);
    return report.empty() ? 0 : 1;
  }
  std::fputs(report.str().c_str(), stderr);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  // check follows grep: 1 says "found something", so trouble with the input is 2.
  bool checking = false;
  try {
    if (argc == 1) {
      std::fputs(kUsage, stderr);
      return 2;
    }
    const Arguments args = ParseArguments(argc, argv);
    checking = !args.words.empty() && args.words[0] == "check";
    return Run(args);
  } catch (const UsageError& e) {
    std::cerr << "gscodec: " << e.what() << "\n(gscodec --help shows the usage)\n";
    return 2;
  } catch (const std::exception& e) {
    std::cerr << "gscodec: " << e.what() << "\n";
    return checking ? 2 : 1;
  }
}
