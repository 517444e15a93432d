#ifndef JQ_BLEND_KERNELS_BORDERS_H
#define JQ_BLEND_KERNELS_BORDERS_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// Rows above and below a picture, and columns on its left and right.
struct Borders {
  int top = 0, bottom = 0, left = 0, right = 0;
};

/// The size of a picture with these borders. Raises `cv::Exception` where it leaves 32 bits.
cv::Size SizeWith(const Borders& borders, cv::Size size);

/// Gives `picture` black borders, as the image library's `copyMakeBorder` does with a
/// constant 0: a view takes what its matrix has around it instead of black, and with no
/// borders nothing is done.
///
/// A whole growable matrix (`picture/growable_pixels.h`) stays growable. Where no header
/// but the `headers` that the caller has at hand is on its pixels, `picture` among them,
/// it grows in place: the rows are moved within its memory, which is made longer, and only
/// new memory that gets pixels is touched. The other headers are to be replaced then, see
/// `ResizePixels`. Everything else is copied into new memory, and the old pixels stay.
///
/// Returns whether it grew in place: its pixels may lie elsewhere then. Raises `cv::Exception`,
/// nothing changed, where the memory cannot be had (`StsNoMem`), the size leaves 32 bits or a
/// border is negative.
bool AddBorders(cv::Mat& picture, const Borders& borders, int headers);

/// Takes the borders away again, whatever they hold, and leaves at least one pixel. In
/// place where `AddBorders` would grow in place: no memory is needed then, nothing is
/// raised, what is left over goes back to the system, and the pixels may lie elsewhere.
/// Else the rest is copied into new memory, growable where `picture` is.
///
/// To undo the growth of a mosaic: the position in the mosaic has moved by `left` and
/// `top` as the frame was placed, the rest of the change in size is `right` and `bottom`.
bool RemoveBorders(cv::Mat& picture, const Borders& borders, int headers);

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_BORDERS_H
