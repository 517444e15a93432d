#ifndef JQ_PICTURE_LIBRARY_ROUNDING_H
#define JQ_PICTURE_LIBRARY_ROUNDING_H

#include <functional>
#include <opencv2/core.hpp>

namespace jqstitching {

// Our own kernels stand for functions of the image library only where these round as
// the kernels do in this process; builds of the library for other processors need not.
// Small pictures are converted once for each setting of `cv::useOptimized` and
// compared. Where they differ, and where another thread changed the setting meanwhile,
// the way out is the library's own call.

/// Whether `cv::cvtColor` code 7 gives what GreyRow gives.
bool OwnGreyFollows();

/// Whether `cv::resize` to exactly half gives what HalveRows gives.
bool OwnHalvingFollows();

/// Finds out all that can be asked here and in filter_rounding.h, so that no later
/// frame of a run waits for it. Takes about a millisecond, the first time only.
void PrepareRounding();

/// Tests only: as if the kernels could follow nothing, so that every user takes the
/// library's call.
void ForceLibraryCalls(bool forced);
bool LibraryCallsForced();

/// The comparisons themselves: whether `convert` gives what GreyRow (from 8-bit colour)
/// or HalveRows (to half the size) give.
using Conversion = std::function<void(const cv::Mat& from, cv::Mat& to)>;
bool GivesOwnGrey(const Conversion& convert);
bool GivesOwnHalves(const Conversion& convert);

}  // namespace jqstitching

#endif  // JQ_PICTURE_LIBRARY_ROUNDING_H
