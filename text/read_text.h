// The frame of the text readers: parse, then run a reader on the parsed value, silently or with a
// report, as codec::RunSilent and codec::RunReporting run it on a tree.
#ifndef GUIDESCREEN_CODEC_TEXT_READ_TEXT_H
#define GUIDESCREEN_CODEC_TEXT_READ_TEXT_H

#include <string>
#include <string_view>

#include "codec/reporting.h"
#include "codec/text_value.h"
#include "guidescreen_codec/json_text.h"
#include "guidescreen_codec/report.h"
#include "text/text_parser.h"

namespace gsc::text {

// "line L, column C: reason".
std::string Where(const JsonProblem& problem);

// Parses `text` and runs body(root, context) silently; a text that is not JSON throws JsonError.
template <typename Body>
bool ReadTextSilently(std::string_view text, Body body) {
  JsonProblem problem;
  const codec::TextDocument* document = ThreadParser().Parse(text, problem);
  if (document == nullptr) throw gsc::JsonError(problem.line, problem.column, problem.reason);
  codec::Silent context{};
  body(codec::TextValue::Root(document), context);
  return true;
}

// Parses `text` and runs body(root, context) with `report`; a text that is not JSON is one
// json-malformed finding at the root, and false.
template <typename Body>
bool ReadTextReporting(std::string_view text, gsc::Report& report, Body body) {
  report.clear();
  JsonProblem problem;
  const codec::TextDocument* document = ThreadParser().Parse(text, problem);
  if (document == nullptr) {
    report.add(gsc::FindingKind::kJsonMalformed, "", Where(problem));
    return false;
  }
  const codec::TextValue root = codec::TextValue::Root(document);
  return codec::RunReporting(report, [&](codec::Reporting& context) { body(root, context); });
}

}  // namespace gsc::text

#endif  // GUIDESCREEN_CODEC_TEXT_READ_TEXT_H
