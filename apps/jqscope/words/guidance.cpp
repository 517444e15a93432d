#include "words/guidance.h"

#include <QCoreApplication>
#include <cmath>

#include "words/batch_words.h"

using jqhost::Cause;

namespace jqscope {
namespace {

// Beyond these a frame looks different at its own place.
constexpr double kOtherExposure = 0.08;
constexpr double kOtherFocus = 0.7;

struct GuidanceWords {
  Q_DECLARE_TR_FUNCTIONS(Guidance)
};

int PerCent(double share) {
  return static_cast<int>(std::lround(100 * share));
}

QString OfAppearance(const jqhost::Appearance& beside) {
  if (beside.brightness < 1 - kOtherExposure) {
    return GuidanceWords::tr("Too dark beside the picture so far: give more light or exposure");
  }
  if (beside.brightness > 1 + kOtherExposure) {
    return GuidanceWords::tr("Too bright beside the picture so far: give less light or exposure");
  }
  if (beside.sharpness < kOtherFocus) {
    return GuidanceWords::tr("Out of focus beside the picture so far: focus again");
  }
  return GuidanceWords::tr("Lost: move back to the highlighted place");
}

QString OfFrame(const RunReport& report) {
  const Coaching coaching = CoachingFor(report);
  switch (report.last.cause) {
    case Cause::kPlaced:
      return report.path.size() < 2
                 ? GuidanceWords::tr("The first frame is placed: move on, slowly, in any direction")
                 : GuidanceWords::tr("Placed: move on");
    case Cause::kShiftTooSmall:
      return GuidanceWords::tr("Move on: %1 % of the frame, %2 % needed")
          .arg(PerCent(coaching.shift))
          .arg(PerCent(coaching.least));
    case Cause::kShiftTooLarge:
      return GuidanceWords::tr("Too far: move back towards the outline");
    case Cause::kNoCorners:
      return GuidanceWords::tr("Nothing to hold on to here: too little texture");
    case Cause::kNoReferenceCorners:
      return GuidanceWords::tr(
          "Nothing to hold on to in the frame placed last: start a new run where "
          "there is texture");
    case Cause::kOverlapTestFailed:
      return report.last.appearance ? OfAppearance(*report.last.appearance)
                                    : GuidanceWords::tr("Lost: move back to the highlighted place");
    case Cause::kTooFewMatches:
    case Cause::kTakenBack:
    case Cause::kNotConnected:
      return GuidanceWords::tr("Lost: move back to the highlighted place");
    case Cause::kSizeDiffers:
      return GuidanceWords::tr("This frame has another size than the first one and cannot be used");
    case Cause::kUnreadable:
    case Cause::kFailed:
      return GuidanceWords::tr("This frame cannot be used: %1")
          .arg(QString::fromLocal8Bit(report.last.detail.c_str()));
    case Cause::kNotReached:
      break;
  }
  return QString();
}

}  // namespace

QString GuidanceFor(const RunReport& report) {
  if (report.batch) return BatchSentence(report);
  switch (report.phase) {
    case RunPhase::kIdle:
      return GuidanceWords::tr("Press Start, then move slowly");
    case RunPhase::kPaused:
      return GuidanceWords::tr("Paused: press Space to go on");
    case RunPhase::kStopped:
      return GuidanceWords::tr("Stopped: save the picture, or start a new run");
    case RunPhase::kEnded:
      return report.path.isEmpty()
                 ? GuidanceWords::tr("The source has ended without a frame that could be used")
                 : GuidanceWords::tr("The source has ended: save the picture, or start a new run");
    case RunPhase::kRunning:
    case RunPhase::kBatch:
      break;
  }
  if (report.outOfMemory) {
    return GuidanceWords::tr("The memory is used up: save the picture and start a new run");
  }
  return report.stitched == 0 ? GuidanceWords::tr("Waiting for the first frame") : OfFrame(report);
}

Coaching CoachingFor(const RunReport& report) {
  Coaching coaching;
  // The stitcher compares the shift at the working scale with the full frame.
  coaching.least = (1 - static_cast<double>(JQFrameVerdict::kMostOverlap)) * report.detectLevel;
  coaching.most = (1 - static_cast<double>(JQFrameVerdict::kLeastOverlap)) * report.detectLevel;
  coaching.speed = report.speed;
  if (report.phase != RunPhase::kRunning || report.stitched == 0) return coaching;
  const bool matched = report.last.measured.registered &&
                       report.last.measured.matchCount >= JQFrameVerdict::kMatchesNeeded;
  if (report.last.Placed()) {
    coaching.hasShift = true;
  } else if (matched) {
    coaching.hasShift = true;
    coaching.shift = report.last.shiftShare;
  }
  return coaching;
}

QString CauseWord(Cause cause) {
  switch (cause) {
    case Cause::kPlaced:
      return GuidanceWords::tr("placed");
    case Cause::kNoCorners:
    case Cause::kNoReferenceCorners:
      return GuidanceWords::tr("too little texture");
    case Cause::kOverlapTestFailed:
    case Cause::kTakenBack:
    case Cause::kNotConnected:
      return GuidanceWords::tr("unlike the picture");
    case Cause::kTooFewMatches:
      return GuidanceWords::tr("too few matches");
    case Cause::kShiftTooSmall:
      return GuidanceWords::tr("not yet far enough");
    case Cause::kShiftTooLarge:
      return GuidanceWords::tr("too far");
    case Cause::kSizeDiffers:
      return GuidanceWords::tr("other size");
    case Cause::kUnreadable:
    case Cause::kFailed:
      return GuidanceWords::tr("unreadable");
    case Cause::kNotReached:
      break;
  }
  return GuidanceWords::tr("not reached");
}

}  // namespace jqscope
