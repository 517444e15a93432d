#ifndef JQHOST_ASSEMBLE_HINTS_H
#define JQHOST_ASSEMBLE_HINTS_H

#include <opencv2/core.hpp>
#include <optional>
#include <string>
#include <vector>

namespace jqhost {

/// The order in which a grid was taken, from its upper left corner.
enum class GridOrder {
  kRow,    ///< row by row, each from the left
  kSnake,  ///< row by row, from the left and from the right by turns
  kColumn  ///< column by column, each from the top
};

struct GridHint {
  int columns = 0;
  int rows = 0;
  GridOrder order = GridOrder::kRow;

  /// Column and row of a frame by its number in the list, from 0.
  cv::Point Cell(std::size_t frame) const;
};

/// What is known of the frames beforehand. It chooses which pairs are compared first, and
/// counts for pairs that would not count by themselves; what pairs show clearly is not
/// overruled by it.
struct AssemblyHints {
  std::optional<GridHint> grid;
  std::optional<double> overlap;  ///< of neighbours in the grid, as a share of the frame
  /// Of each frame in the list, pixels of the file; empty: none. A frame without one is
  /// looked for as if there were no hint.
  std::vector<std::optional<cv::Point2d>> positions;

  bool Any() const { return grid || !positions.empty(); }
};

/// What hints say about two frames of the list.
struct PairExpectation {
  bool neighbours = false;           ///< they are likely to overlap
  std::optional<cv::Point2d> shift;  ///< of the second from the first
  double tolerance = 0.0;            ///< along each axis
};

/// Hints say no more than that about a shift: a tenth of the frame's longer side.
PairExpectation ExpectPair(const AssemblyHints& hints, std::size_t first, std::size_t second,
                           cv::Size frame);

/// Reads lines of "file,x,y" for the frames of these names.
/// @param unit of x and y, in pixels of a frame
/// Raises `InputError` for a file that cannot be read or that names none of the frames.
std::vector<std::optional<cv::Point2d>> ReadPositions(const std::string& path,
                                                      const std::vector<std::string>& names,
                                                      double unit);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_HINTS_H
