#include "text/text_parser.h"

#include <simdjson.h>

#include <new>
#include <string>
#include <vector>

namespace gsc::text {

struct TextParser::State {
  simdjson::dom::parser parser;
  codec::TextDocument document{nullptr, nullptr};
  std::vector<size_t> wideIntegers;
  std::string widened;
  TapeBuilder shortTexts;

  State() { Prepare(); }

  void Prepare() {
    if (parser.allocate(simdjson::dom::MINIMAL_DOCUMENT_CAPACITY, kMaxDepth) != simdjson::SUCCESS)
      throw std::bad_alloc();
  }

  // simdjson's own verdict on `text`: SUCCESS with the document's tape in place, or why not.
  simdjson::error_code Run(std::string_view text) {
    simdjson::dom::element element;
    const simdjson::error_code error = parser.parse(text.data(), text.size()).get(element);
    if (error == simdjson::MEMALLOC) throw std::bad_alloc();
    if (error == simdjson::SUCCESS) {
      document.tape = parser.doc.tape.get();
      // The string buffer holds bytes of text.
      // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
      document.strings = reinterpret_cast<const char*>(parser.doc.string_buf.get());
    }
    return error;
  }
};

TextParser::TextParser() : state_(std::make_unique<State>()) {}
TextParser::~TextParser() = default;

const codec::TextDocument* TextParser::Parse(std::string_view text, JsonProblem& problem) {
  if (!state_) state_ = std::make_unique<State>();
  State& state = *state_;
  if (!kParserTrusted || text.size() <= shortTextLimit_) {
    if (!state.shortTexts.Build(text, &problem)) return nullptr;
    return state.shortTexts.document();
  }
  std::string_view body = text;
  // A byte order mark may lead a JSON text; the parser itself does not take one.
  if (body.substr(0, 3) == "\xEF\xBB\xBF") body.remove_prefix(3);
  simdjson::error_code error = state.Run(body);
  if (error != simdjson::SUCCESS) {
    if (!CheckJson(text, &problem, &state.wideIntegers)) return nullptr;
    if (error == simdjson::CAPACITY) {
      problem = JsonProblem{1, 1, "text too large to parse"};
      return nullptr;
    }
    // JSON all the same: integers beyond 64 bits, which JsonCpp reads as reals. Read them so
    // too, written as reals.
    if (state.wideIntegers.empty()) {
      problem = JsonProblem{1, 1, simdjson::error_message(error)};
      return nullptr;
    }
    state.widened.clear();
    size_t from = 0;
    for (const size_t end : state.wideIntegers) {
      state.widened.append(text, from, end - from);
      state.widened += ".0";
      from = end;
    }
    state.widened.append(text, from, std::string_view::npos);
    body = state.widened;
    if (body.substr(0, 3) == "\xEF\xBB\xBF") body.remove_prefix(3);
    error = state.Run(body);
    if (error != simdjson::SUCCESS) {
      problem = JsonProblem{1, 1, simdjson::error_message(error)};
      return nullptr;
    }
  }
  return &state.document;
}

void TextParser::Release() noexcept {
  state_.reset();
}

TextParser& ThreadParser() {
  thread_local TextParser parser;
  return parser;
}

}  // namespace gsc::text
