#include "host/verdict/frame_result.h"

namespace jqhost {
namespace {

void Set(Cause cause, const std::string& detail, FrameResult& result) {
  result.cause = cause;
  result.detail = detail;
}

}  // namespace

const char* CauseName(Cause cause) {
  switch (cause) {
    case Cause::kPlaced:
      return "placed";
    case Cause::kNoCorners:
      return "no corners found";
    case Cause::kNoReferenceCorners:
      return "no corners in the first frame";
    case Cause::kOverlapTestFailed:
      return "overlap test failed";
    case Cause::kTooFewMatches:
      return "too few matches";
    case Cause::kShiftTooSmall:
      return "shift too small";
    case Cause::kShiftTooLarge:
      return "shift too large";
    case Cause::kSizeDiffers:
      return "size differs";
    case Cause::kUnreadable:
      return "unreadable";
    case Cause::kTakenBack:
      return "taken back";
    case Cause::kNotConnected:
      return "not connected";
    case Cause::kFailed:
      return "failed";
    case Cause::kNotReached:
      return "not reached";
  }
  return "";
}

void SetUnreadable(const std::string& detail, FrameResult& result) {
  Set(Cause::kUnreadable, detail, result);
}

void SetSizeDiffers(cv::Size size, cv::Size expected, FrameResult& result) {
  Set(Cause::kSizeDiffers, std::string(), result);
  result.size = size;
  result.expected = expected;
}

void SetFailed(const std::string& detail, FrameResult& result) {
  Set(Cause::kFailed, detail, result);
}

void SetNotReached(const std::string& detail, FrameResult& result) {
  Set(Cause::kNotReached, detail, result);
}

}  // namespace jqhost
