#ifndef JQ_TESTS_STITCHER_SEEN_RUN_H
#define JQ_TESTS_STITCHER_SEEN_RUN_H

#include "twin_compare.h"
#include "verdict_compare.h"

/// A deep copy of all that a host can see of a live run.
struct SeenRun {
  explicit SeenRun(JQImageStitching& stitcher)
      : view(ViewOf(stitcher)), verdict(stitcher.GetLastVerdict()) {
    view.Clone();
  }

  StitcherView view;
  JQFrameVerdict verdict;
};

/// The image record aside, which a call fills anew: that it shows the run is asked for.
inline void ExpectSameRun(JQImageStitching& stitcher, SeenRun expected) {
  StitcherView actual = ViewOf(stitcher);
  if (actual.hasRecord) {
    EXPECT_TRUE(actual.mosaic.empty() ? actual.showsCurrent : actual.showsMosaic);
    const cv::Mat& shown = actual.mosaic.empty() ? actual.current : actual.mosaic;
    EXPECT_EQ(actual.record.width, shown.cols);
    EXPECT_EQ(actual.record.height, shown.rows);
  }
  for (StitcherView* view : {&actual, &expected.view}) {
    view->record = _tagJQIMG();
    view->showsMosaic = view->showsCurrent = false;
  }
  ExpectSame(actual, expected.view);
  ExpectSame(stitcher.GetLastVerdict(), expected.verdict);
}

#endif  // JQ_TESTS_STITCHER_SEEN_RUN_H
