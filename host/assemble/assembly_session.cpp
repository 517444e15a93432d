#include "host/assemble/assembly_session.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "host/assemble/conclusion.h"
#include "host/assemble/hold_together.h"
#include "host/assemble/paint_island.h"
#include "host/assemble/pair_comparison.h"
#include "host/assemble/pair_grade.h"
#include "host/source/image_record.h"

namespace jqhost {
namespace {

// A hint tells periods apart by less than half of one, and what is known of a period can be
// twice the true one.
constexpr double kPeriodShare = 0.2;

// The size of most frames; the first of equals.
cv::Size SizeOfMost(const std::vector<SetFrame>& frames) {
  cv::Size size;
  std::ptrdiff_t most = 0;
  for (const SetFrame& frame : frames) {
    if (!frame.why.empty() || frame.size.empty()) continue;
    const auto count = std::count_if(frames.begin(), frames.end(), [&frame](const SetFrame& f) {
      return f.why.empty() && f.size == frame.size;
    });
    if (count <= most) continue;
    most = count;
    size = frame.size;
  }
  return size;
}

// An order of small pictures of one size that only their samples decide; 0 for the same.
int ComparePixels(const cv::Mat& a, const cv::Mat& b) {
  for (int row = 0; row < a.rows; ++row) {
    const int order = std::memcmp(a.ptr(row), b.ptr(row), static_cast<std::size_t>(a.cols));
    if (order != 0) return order;
  }
  return 0;
}

}  // namespace

AssemblySession::AssemblySession(const std::vector<PictureId>& pictures,
                                 const FrameSetSettings& settings, AssemblyHints hints,
                                 const StopToken& stop, Progress progress)
    : m_settings(settings),
      m_hints(std::move(hints)),
      m_stop(stop),
      m_progress(std::move(progress)),
      m_results(pictures.size()) {
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    m_frames.emplace_back();
    m_frames.back().picture = pictures[i];
    m_results[i].name = NameOf(pictures[i]);
    m_results[i].number = static_cast<int>(i) + 1;
    m_assembly.frames.emplace_back();
    m_assembly.frames.back().name = m_results[i].name;
  }
}

bool AssemblySession::Read(FramePreparation& preparation, bool skipBad) {
  std::vector<PictureId> pictures;
  for (const SetFrame& frame : m_frames) pictures.push_back(frame.picture);
  const std::size_t total = pictures.size();
  m_frames = ReadFrameSet(pictures, m_settings, preparation, m_stop,
                          [&](std::size_t done) { m_progress("frames", done, total); });
  FindUnusable();
  const bool anyBad =
      std::any_of(m_results.begin(), m_results.end(),
                  [](const FrameResult& result) { return result.cause != Cause::kNotReached; });
  if (m_size.empty() || (anyBad && !skipBad)) return false;
  SortByPixels();
  return true;
}

void AssemblySession::FindUnusable() {
  m_size = SizeOfMost(m_frames);
  m_workingSize = m_size / m_settings.detectLevel;
  for (std::size_t i = 0; i < m_frames.size(); ++i) {
    const SetFrame& frame = m_frames[i];
    m_results[i].thumbnail = frame.thumbnail;
    m_assembly.frames[i].size = frame.size;
    m_assembly.frames[i].corners = static_cast<int>(frame.features.corners.size());
    if (!frame.why.empty()) {
      SetUnreadable(frame.why, m_results[i]);
    } else if (!frame.size.empty() && frame.size != m_size) {
      SetSizeDiffers(frame.size, m_size, m_results[i]);
    } else if (!frame.size.empty()) {
      m_assembly.frames[i].usable = true;
      m_usable.push_back(i);
    }
  }
}

void AssemblySession::SortByPixels() {
  std::sort(m_usable.begin(), m_usable.end(), [this](std::size_t a, std::size_t b) {
    const int order = ComparePixels(m_frames[a].reduced.grey, m_frames[b].reduced.grey);
    return order != 0 ? order < 0 : m_results[a].name < m_results[b].name;
  });
}

void AssemblySession::Assemble() {
  std::vector<const SetFrame*> frames;
  for (const std::size_t number : m_usable) frames.push_back(&m_frames[number]);
  PairComparison comparison(frames, m_settings);
  std::function<bool(std::size_t, std::size_t)> neighbours;
  if (m_hints.Any()) {
    neighbours = [this](std::size_t a, std::size_t b) { return Expect(a, b).neighbours; };
  }
  PairChoice choice(m_usable, m_workingSize, neighbours);
  std::vector<FramePair> pairs;
  std::vector<Link> links;
  Places places;
  std::vector<PairToCompare> next = choice.First();
  do {
    const std::size_t before = pairs.size(), total = before + next.size();
    const std::vector<FramePair> found = comparison.Compare(
        next, m_stop, [&](std::size_t done) { m_progress("pairs", before + done, total); });
    pairs.insert(pairs.end(), found.begin(), found.end());
    m_assembly.stopped = m_stop.Requested();
    links.clear();
    for (const FramePair& pair : pairs) links.push_back(MakeLink(pair));
    places = HoldTogether(frames.size(), m_workingSize, links,
                          [&](std::size_t a, std::size_t b, cv::Point2d shift) {
                            return comparison.LookAt(a, b, shift);
                          });
    next = choice.Next(places);
  } while (!next.empty() && !m_assembly.stopped);
  Conclude(m_usable, places, links, std::move(pairs), m_workingSize, m_assembly);
  TellResults();
}

PairExpectation AssemblySession::Expect(std::size_t first, std::size_t second) const {
  PairExpectation expectation = ExpectPair(m_hints, m_usable[first], m_usable[second], m_size);
  if (expectation.shift) *expectation.shift *= 1.0 / m_settings.detectLevel;
  expectation.tolerance /= m_settings.detectLevel;
  return expectation;
}

Link AssemblySession::MakeLink(const FramePair& pair) const {
  Link link;
  link.first = pair.first;
  link.second = pair.second;
  link.shift = pair.fineShift;
  link.confidence = pair.Confidence();
  link.matches = pair.matches;
  link.grade = GradePair(pair, m_workingSize);
  if (pair.doubt) link.agreement = pair.doubt->agreement;
  link.difference = pair.difference;
  const PairExpectation expectation = Expect(pair.first, pair.second);
  if (!expectation.shift || !pair.doubt) return link;
  double tolerance = expectation.tolerance;
  if (pair.doubt->reason == DoubtReason::kContradicted) tolerance = 0;
  if (pair.doubt->reason == DoubtReason::kRepeats) {
    tolerance = std::min(tolerance, kPeriodShare * cv::norm(pair.doubt->period));
  }
  const cv::Point2d off = pair.fineShift - *expectation.shift;
  link.expected = std::max(std::abs(off.x), std::abs(off.y)) < tolerance;
  return link;
}

void AssemblySession::TellResults() {
  for (const std::size_t number : m_usable) {
    const AssembledFrame& frame = m_assembly.frames[number];
    FrameResult& result = m_results[number];
    result.cause = Cause::kNotConnected;
    if (frame.island != 1) continue;
    result.cause = Cause::kPlaced;
    result.position = *frame.position;
    if (frame.pairs == 0) continue;
    // What holds it was found to be right; a low figure only says that others had a part in that.
    PlacementDoubt trust;
    trust.confidence = frame.confidence;
    result.doubt = trust;
  }
}

void AssemblySession::CloseResults(const std::string& whyNotReached) {
  for (FrameResult& result : m_results) {
    if (result.cause == Cause::kNotReached) SetNotReached(whyNotReached, result);
  }
}

Picture AssemblySession::Paint(std::size_t island, const FramePreparation& preparation) {
  const std::vector<std::size_t>& members = m_assembly.islands[island].frames;
  std::vector<cv::Point> corners;
  corners.reserve(members.size());
  for (const std::size_t member : members) {
    corners.push_back(*m_assembly.frames[member].position);
  }
  FramePreparation again = preparation;
  const bool stoppedBefore = m_stop.Requested();
  std::size_t painted = members.size();
  Picture picture;
  picture.image = PaintIsland(
      corners, m_workingSize, m_settings.detectLevel,
      [&](std::size_t index) { return ReadAgain(members[index], again); },
      [&](std::size_t done) {
        m_progress("painted", done, members.size());
        if (stoppedBefore || !m_stop.Requested()) return true;
        painted = done;
        return false;
      });
  const std::vector<std::size_t> order = PaintingOrder(corners, m_workingSize);
  for (std::size_t i = painted; i < order.size(); ++i) {
    SetNotReached("stopped before it was painted", m_results[members[order[i]]]);
  }
  picture.origin = m_assembly.islands[island].bounds.tl();
  picture.trimmedBy = "placed frames";
  picture.isFirstFrame = members.size() == 1;
  return picture;
}

// Called by the thread that reads ahead, never by two at once.
cv::Mat AssemblySession::ReadAgain(std::size_t frame, FramePreparation& preparation) {
  std::string why;
  const cv::Mat stored = ReadStored(m_frames[frame].picture, why, m_settings.maxPixels);
  if (why.empty() && stored.size() != m_size) why = "its size has changed";
  if (why.empty()) return AsTakenIn(preparation.Prepare(stored));
  SetUnreadable(why, m_results[frame]);
  return cv::Mat();
}

void AssemblySession::Describe(RunRecord& record) const {
  record.frameSize = m_size;
  record.workingSize = m_workingSize;
  record.assembly = m_assembly;
  if (!m_assembly.islands.empty()) record.firstCorner = -m_assembly.islands[0].bounds.tl();
}

}  // namespace jqhost
