// The text readers' error and buffers.
#include "guidescreen_codec/json_text.h"
#include "text/read_text.h"
#include "text/text_parser.h"

namespace gsc {

JsonError::JsonError(unsigned line, unsigned column, const std::string& reason)
    : std::runtime_error("line " + std::to_string(line) + ", column " + std::to_string(column) +
                         ": " + reason),
      line_(line),
      column_(column),
      reason_(reason) {}

// Defined here, so that the class's type information has one home: the library.
JsonError::~JsonError() = default;

void release_json_buffers() noexcept {
  text::ThreadParser().Release();
}

}  // namespace gsc

namespace gsc::text {

std::string Where(const JsonProblem& problem) {
  return "line " + std::to_string(problem.line) + ", column " + std::to_string(problem.column) +
         ": " + problem.reason;
}

}  // namespace gsc::text
