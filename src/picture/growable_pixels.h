#ifndef JQ_PICTURE_GROWABLE_PIXELS_H
#define JQ_PICTURE_GROWABLE_PIXELS_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// A growable matrix is an ordinary continuous one whose pixels can be made more or fewer
/// without copying them, as long as nobody else has a header on them. Copies of its header
/// share the pixels as usual; a deep copy is an ordinary matrix. The pixels outlive the
/// library's objects: whoever has the last header frees them, on any thread.

/// A black growable matrix. Its memory is touched only where it is written. A process whose
/// default allocator is not the image library's own gets its memory from that one, and the
/// matrix is not growable. Raises `cv::Exception` (`StsNoMem`) without memory.
cv::Mat GrowableZeros(int rows, int cols, int type);

/// Whether `picture` is the whole of a growable matrix.
bool IsGrowable(const cv::Mat& picture);

/// Whether it is, and no more than `headers` headers are on its pixels: those that the
/// caller has at hand, `picture` among them. Then nobody notices when the pixels move.
bool IsGrowableAlone(const cv::Mat& picture, int headers);

/// Gives a picture for which `IsGrowableAlone` holds another size of one pixel or more. The
/// bytes keep their order from the first on, without regard to rows; added ones are 0. The
/// pixels may lie elsewhere afterwards, and every other header on them is to be replaced by
/// a copy of `picture`, without a look at its pixels. Returns false, nothing changed, where
/// the memory cannot be had; fewer bytes can always be had.
bool ResizePixels(cv::Mat& picture, int rows, int cols);

}  // namespace jqstitching

#endif  // JQ_PICTURE_GROWABLE_PIXELS_H
