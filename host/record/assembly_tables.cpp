#include "host/record/assembly_tables.h"

#include <algorithm>

#include "host/record/html_cells.h"
#include "host/record/html_text.h"

namespace jqhost {
namespace {

std::string Counted(std::size_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string Paragraph(const std::string& text) {
  return "<p>" + text + "</p>\n";
}

std::string NumberOf(const RunRecord& record, std::size_t frame) {
  return std::to_string(record.frames[frame].number);
}

std::size_t PairsThatAre(const Assembly& assembly, PairState state) {
  return static_cast<std::size_t>(
      std::count_if(assembly.pairs.begin(), assembly.pairs.end(),
                    [state](const FramePair& pair) { return pair.state == state; }));
}

std::string IslandText(const RunRecord& record, std::size_t index) {
  const Island& island = record.assembly->islands[index];
  std::string numbers;
  for (const std::size_t frame : island.frames) {
    numbers += (numbers.empty() ? "" : ", ") + NumberOf(record, frame);
  }
  return "Island " + std::to_string(index + 1) +
         ", which nothing connects with the picture: " + Counted(island.frames.size(), "frame") +
         " (" + numbers + "), " + std::to_string(island.bounds.width) + " x " +
         std::to_string(island.bounds.height) + " pixels.";
}

std::string WhatBecameOf(const RunRecord& record, std::size_t index, const Words& words) {
  const FrameResult& frame = record.frames[index];
  if (frame.Placed()) return "placed";
  std::string text = "left out: " + Escape(words.Reason(record, frame));
  const std::string advice = words.Advice(record, frame);
  if (!advice.empty()) text += "<br><span class=\"advice\">" + Escape(advice) + "</span>";
  return text;
}

std::string FrameRow(const RunRecord& record, std::size_t index, const std::string& name,
                     const PositionError* error, const Words& words) {
  const FrameResult& frame = record.frames[index];
  const AssembledFrame& assembled = record.assembly->frames[index];
  const bool placed = frame.Placed();
  const bool held = assembled.pairs > 0;
  const cv::Point corner = placed ? CornerInPicture(record, frame) : cv::Point();
  std::string row = placed ? "<tr>" : "<tr class=\"out\">";
  row += HtmlNumberCell(std::to_string(frame.number)) + HtmlThumbnailCell(frame.thumbnail) +
         HtmlCell(Escape(name)) + HtmlCell(WhatBecameOf(record, index, words)) +
         HtmlNumberCell(placed ? std::to_string(corner.x) : "") +
         HtmlNumberCell(placed ? std::to_string(corner.y) : "") +
         HtmlNumberCell(assembled.island > 0 ? std::to_string(assembled.island) : "") +
         HtmlNumberCell(std::to_string(assembled.pairs)) +
         HtmlNumberCell(held ? HtmlNumber(assembled.residual, 2) : "") +
         HtmlNumberCell(held ? HtmlNumber(assembled.confidence, 2) : "");
  if (record.truth) row += HtmlNumberCell(error != nullptr ? HtmlNumber(error->absolute, 2) : "");
  return row + "</tr>\n";
}

std::string PairRow(const RunRecord& record, const FramePair& pair) {
  return std::string(pair.state == PairState::kUsed ? "<tr>" : "<tr class=\"out\">") +
         HtmlNumberCell(NumberOf(record, pair.first)) +
         HtmlNumberCell(NumberOf(record, pair.second)) + HtmlCell(PairStateName(pair.state)) +
         HtmlNumberCell(HtmlPair(pair.shift)) + HtmlNumberCell(std::to_string(pair.matches)) +
         HtmlNumberCell(std::to_string(pair.matched)) +
         HtmlNumberCell(pair.doubt ? HtmlNumber(pair.doubt->confidence, 2) : "") +
         HtmlNumberCell(pair.residual ? HtmlNumber(*pair.residual, 2) : "") + "</tr>\n";
}

std::string PairsText(const Assembly& assembly) {
  std::string text = Counted(assembly.pairs.size(), "pair") + " compared, " +
                     std::to_string(PairsThatAre(assembly, PairState::kUsed)) + " used, " +
                     std::to_string(PairsThatAre(assembly, PairState::kThrownOut)) +
                     " thrown out because they break loops. ";
  if (assembly.stopped) text += "Stopped before all pairs were compared. ";
  if (assembly.loops.loops == 0) {
    return text + "No loop of three or four pairs confirms the positions.";
  }
  return text + Counted(assembly.loops.loops, "loop") + " of three and four pairs: open by " +
         HtmlNumber(assembly.loops.median, 1) + " pixels in the median, by " +
         HtmlNumber(assembly.loops.largest, 1) + " at most.";
}

}  // namespace

std::string HtmlIslands(const RunRecord& record) {
  std::string islands;
  for (std::size_t i = 1; i < record.assembly->islands.size(); ++i) {
    islands += Paragraph(IslandText(record, i));
  }
  return islands;
}

std::string HtmlAssembledFrames(const RunRecord& record, const std::vector<std::string>& names,
                                const Words& words) {
  std::string table = "<table><thead><tr>" + HtmlNumberHead("No.") +
                      "<th></th><th>Frame</th><th>What became of it</th>" + HtmlNumberHead("x") +
                      HtmlNumberHead("y") + HtmlNumberHead("Island") + HtmlNumberHead("Pairs") +
                      HtmlNumberHead("Residual") + HtmlNumberHead("Confidence");
  if (record.truth) table += HtmlNumberHead("Error to first");
  table += "</tr></thead><tbody>\n";
  std::vector<const PositionError*> errors(names.size(), nullptr);
  if (record.truth) {
    for (const PositionError& error : record.truth->errors) errors[error.frame] = &error;
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    table += FrameRow(record, i, names[i], errors[i], words);
  }
  return table + "</tbody></table>\n";
}

std::string HtmlPairs(const RunRecord& record) {
  const Assembly& assembly = *record.assembly;
  std::string table =
      Paragraph(PairsText(assembly)) + "<table><thead><tr>" + HtmlNumberHead("First") +
      HtmlNumberHead("Second") + "<th>What became of it</th>" + HtmlNumberHead("Shift") +
      HtmlNumberHead("Matches") + HtmlNumberHead("Matched") + HtmlNumberHead("Confidence") +
      HtmlNumberHead("Residual") + "</tr></thead><tbody>\n";
  for (const FramePair& pair : assembly.pairs) {
    if (pair.state != PairState::kTooFewMatches) table += PairRow(record, pair);
  }
  table += "</tbody></table>\n";
  const std::size_t few = PairsThatAre(assembly, PairState::kTooFewMatches);
  return few == 0 ? table
                  : table + Paragraph(Counted(few, "other pair") + " with too few matches.");
}

}  // namespace jqhost
