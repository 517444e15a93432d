#ifndef JQSCOPE_VIEW_TILE_PYRAMID_H
#define JQSCOPE_VIEW_TILE_PYRAMID_H

#include <QImage>
#include <cstdint>
#include <mutex>
#include <opencv2/core.hpp>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace jqscope {

/// One tile of one level. Level 0 has the mosaic's pixels; a pixel of level n + 1 is the
/// mean of 2 x 2 of level n. Tile (0, 0) of each level begins at the first frame's corner,
/// so that tiles keep their place while the mosaic grows to the left.
struct TileKey {
  int level = 0;
  int x = 0, y = 0;
  bool operator==(const TileKey& o) const { return level == o.level && x == o.x && y == o.y; }
};

struct TileKeyHash {
  std::size_t operator()(const TileKey& key) const {
    const std::uint64_t x = static_cast<std::uint32_t>(key.x);
    const std::uint64_t y = static_cast<std::uint32_t>(key.y);
    return static_cast<std::size_t>((x * 0x9e3779b97f4a7c15U) ^ (y << 20) ^
                                    static_cast<std::uint64_t>(key.level) << 58);
  }
};

/// The mosaic as a view holds it: tiles in reduced levels, made only where pixels change,
/// within a limit of memory whatever the mosaic's size. Where nothing was placed (pure
/// black), tiles are transparent.
///
/// One thread paints, which has the mosaic at hand; any thread may read. Nobody waits
/// longer than a look into the table takes. When the limit is reached, tiles of the finest
/// levels that were not used for longest are let go; a reader who wants one back says so,
/// and shows the next coarser level meanwhile.
class TilePyramid {
 public:
  static constexpr int kSide = 256;   ///< pixels of a tile's side
  static constexpr int kLevels = 12;  ///< the coarsest tile covers 524288 pixels a side

  explicit TilePyramid(std::size_t mostBytes = 300000000);

  /// Takes over the pixels of `changed`, in pixels from the first frame's corner, and all
  /// that is reduced from them. Outside the mosaic nothing is placed.
  /// @param mosaic `CV_8UC3`; @param origin the first frame's corner in it
  void Paint(const cv::Mat& mosaic, cv::Point origin, const cv::Rect& changed);
  /// Makes the tiles that readers want. @return whether there were any
  bool PaintWanted(const cv::Mat& mosaic, cv::Point origin);
  void Clear();

  /// The tile; a null picture where there is none.
  QImage Tile(const TileKey& key);
  /// Whether the tile was there and was let go.
  bool IsLetGo(const TileKey& key) const;
  /// Asks for tiles that were let go; replaces what was asked for before.
  void Want(std::vector<TileKey> keys);

  std::size_t Bytes() const;

 private:
  struct Entry {
    QImage image;
    std::uint64_t used = 0;
  };

  void PaintBlock(const cv::Mat& mosaic, cv::Point origin, const cv::Rect& changed);
  void Store(int level, cv::Point at, const QImage& pixels);
  void StoreReduced(int level, const cv::Rect& changed);
  void Put(const TileKey& key, const QImage& image);
  void LetGo();

  const std::size_t m_mostBytes;
  mutable std::mutex m_mutex;
  std::unordered_map<TileKey, Entry, TileKeyHash> m_tiles;
  std::unordered_set<TileKey, TileKeyHash> m_letGo;
  std::vector<TileKey> m_wanted;
  std::size_t m_perLevel[kLevels] = {};  // tiles held
  std::uint64_t m_clock = 0;
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_TILE_PYRAMID_H
