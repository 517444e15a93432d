#include "spoiled_state.h"

void SpoilState(FuzzInput& in, JQStitchingState& state) {
  JQStitchingMoment& moment = state.undo.empty() || in.oneIn(2)
                                  ? state.now
                                  : state.undo[in.u8() % state.undo.size()].before;
  const auto picture = [&] {
    return cv::Mat(in.range(0, 90), in.range(0, 90), in.oneIn(4) ? CV_8UC1 : CV_8UC3,
                   cv::Scalar::all(7));
  };
  switch (in.u8() % 14) {
    case 0:
      state.started = !state.started;
      break;
    case 1:
      state.mosaic = picture();
      break;
    case 2:
      moment.reference = picture();
      break;
    case 3:
      moment.current = picture();
      break;
    case 4:
      moment.contentMin = cv::Point(in.number(), in.number());
      break;
    case 5:
      moment.placedBounds = cv::Rect(in.number(), in.number(), in.number(), in.number());
      break;
    case 6:
      moment.record.positionX = in.number();
      moment.record.positionY = in.number();
      break;
    case 7:
      moment.record.offsetX = in.number();
      moment.record.offsetY = in.number();
      break;
    case 8:
      moment.frameCount = in.number();
      break;
    case 9:
      state.detectLevel = in.number();
      state.cornerBudget = in.number();
      break;
    case 10:
      state.frameSize = cv::Size(in.number(), in.number());
      break;
    case 11:
      state.undoDepth = in.number();
      break;
    case 12:
      if (!state.undo.empty()) state.undo.back().covered = cv::Rect(in.number(), in.number(), 9, 9);
      break;
    default:
      if (!state.undo.empty()) state.undo.back().moved = cv::Point(in.number(), in.number());
  }
}
