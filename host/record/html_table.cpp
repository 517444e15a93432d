#include "host/record/html_table.h"

#include "host/record/html_cells.h"
#include "host/record/html_text.h"

namespace jqhost {
namespace {

std::string Verdict(const RunRecord& record, const FrameResult& frame, const Words& words) {
  if (frame.Placed()) {
    const std::string note = words.Note(frame);
    return "placed" + (note.empty() ? note : " (" + Escape(note) + ")");
  }
  const std::string standing = StandingName(StandingOf(frame));
  const std::string advice = words.Advice(record, frame);
  std::string text = (record.live ? standing : std::string("left out")) + ": " +
                     Escape(words.Reason(record, frame));
  if (!advice.empty()) text += "<br><span class=\"advice\">" + Escape(advice) + "</span>";
  return text;
}

const char* RowClass(const RunRecord& record, const FrameResult& frame) {
  switch (StandingOf(frame)) {
    case Standing::kPlaced:
      return frame.Doubtful() ? " class=\"doubt\"" : "";
    case Standing::kTracked:
      return record.live ? " class=\"tracked\"" : " class=\"out\"";
    default:
      return " class=\"out\"";
  }
}

std::string Row(const RunRecord& record, const FrameResult& frame, const std::string& name,
                const PositionError* error, const Words& words) {
  const bool placed = frame.Placed();
  const cv::Point corner = placed ? CornerInPicture(record, frame) : cv::Point();
  std::string row = std::string("<tr") + RowClass(record, frame) + ">" +
                    HtmlNumberCell(std::to_string(frame.number));
  row += HtmlThumbnailCell(frame.thumbnail);
  row += HtmlCell(Escape(name)) + HtmlCell(Verdict(record, frame, words));
  row += HtmlNumberCell(placed ? std::to_string(corner.x) : "") +
         HtmlNumberCell(placed ? std::to_string(corner.y) : "");
  const bool measured = frame.measured.registered;
  row += HtmlNumberCell(measured ? HtmlNumber(100 * frame.shiftShare, 1) : "") +
         HtmlNumberCell(measured ? std::to_string(frame.measured.matchCount) : "") +
         HtmlNumberCell(measured ? HtmlNumber(100 * frame.AgreeingShare(), 0) : "") +
         HtmlNumberCell(frame.doubt ? HtmlNumber(frame.doubt->confidence, 2) : "");
  if (record.truth) {
    const bool hasNeighbour = error != nullptr && error->neighbour >= 0;
    row += HtmlNumberCell(hasNeighbour ? HtmlNumber(error->neighbour, 2) : "") +
           HtmlNumberCell(error != nullptr ? HtmlNumber(error->absolute, 2) : "");
  }
  return row + "</tr>\n";
}

}  // namespace

std::string HtmlTable(const RunRecord& record, const std::vector<std::string>& names,
                      const Words& words) {
  std::string table = "<table><thead><tr>" + HtmlNumberHead("No.") +
                      "<th></th><th>Frame</th><th>What became of it</th>" + HtmlNumberHead("x") +
                      HtmlNumberHead("y") + HtmlNumberHead("Shift %") + HtmlNumberHead("Matches") +
                      HtmlNumberHead("Agreeing %") + HtmlNumberHead("Confidence");
  if (record.truth)
    table += HtmlNumberHead("Error to neighbour") + HtmlNumberHead("Error to first");
  table += "</tr></thead><tbody>\n";
  std::vector<const PositionError*> errors(names.size(), nullptr);
  if (record.truth) {
    for (const PositionError& error : record.truth->errors) errors[error.frame] = &error;
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    table += Row(record, record.frames[i], names[i], errors[i], words);
  }
  return table + "</tbody></table>\n";
}

}  // namespace jqhost
