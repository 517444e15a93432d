#include "host/record/assembly_map.h"

#include "host/record/html_text.h"

namespace jqhost {
namespace {

std::string Line(const RunRecord& record, const FramePair& pair) {
  const FrameResult& first = record.frames[pair.first];
  const FrameResult& second = record.frames[pair.second];
  const auto end = [&](const FrameResult& frame, const char* number) {
    const cv::Point middle = CornerInPicture(record, frame) + cv::Point(record.workingSize / 2);
    return std::string(" x") + number + "=\"" + std::to_string(middle.x) + "\" y" + number + "=\"" +
           std::to_string(middle.y) + "\"";
  };
  std::string title = std::to_string(first.number) + " and " + std::to_string(second.number) +
                      ": " + PairStateName(pair.state) + ", " + std::to_string(pair.matches) +
                      " matches";
  if (pair.residual) title += ", residual " + HtmlNumber(*pair.residual, 1);
  return "<line" + end(first, "1") + end(second, "2") + "><title>" + Escape(title) +
         "</title></line>\n";
}

}  // namespace

PairLines DrawPairLines(const RunRecord& record) {
  PairLines lines;
  for (const FramePair& pair : record.assembly->pairs) {
    if (!record.frames[pair.first].Placed() || !record.frames[pair.second].Placed()) continue;
    switch (pair.state) {
      case PairState::kUsed:
        lines.used += Line(record, pair);
        break;
      case PairState::kThrownOut:
        lines.thrownOut += Line(record, pair);
        break;
      case PairState::kShiftTooLarge:
      case PairState::kContradicted:
      case PairState::kRepeats:
      case PairState::kUnsupported:
        lines.doubted += Line(record, pair);
        break;
      case PairState::kTooFewMatches:
        break;  // most pairs of frames that do not touch
    }
  }
  return lines;
}

}  // namespace jqhost
