#include "view/tile_pyramid.h"

#include <algorithm>
#include <utility>

#include "view/reduce_pixels.h"

namespace jqscope {
namespace {

constexpr std::size_t kTileBytes = 4U * TilePyramid::kSide * TilePyramid::kSide;
// Levels up to this one are reduced from the changed pixels, coarser ones from the tiles of
// the level below, which are always there.
constexpr int kReducedFromPixels = 6;
// Larger changes are taken over in blocks of this side, so that no copy of a whole mosaic
// is made and none is larger than a picture of the toolkit can be.
constexpr int kBlock = 4096;
// Tiles kept whatever happens take at most this share of the limit.
constexpr double kKeptShare = 0.5;

int FloorDivide(int value, int by) {
  return value >= 0 ? value / by : -((-value + by - 1) / by);
}

// The smallest rectangle around `r` whose sides lie on multiples of `step`.
cv::Rect Widen(const cv::Rect& r, int step) {
  const int left = FloorDivide(r.x, step) * step, top = FloorDivide(r.y, step) * step;
  const int right = -FloorDivide(-(r.x + r.width), step) * step;
  const int bottom = -FloorDivide(-(r.y + r.height), step) * step;
  return cv::Rect(left, top, right - left, bottom - top);
}

// The pixels of a rectangle given from the first frame's corner.
QImage CutPixels(const cv::Mat& mosaic, cv::Point origin, const cv::Rect& r) {
  const cv::Rect inMosaic = (r + origin) & cv::Rect(cv::Point(), mosaic.size());
  if (inMosaic.size() == r.size()) return ToTilePixels(mosaic(inMosaic));
  QImage image(r.width, r.height, QImage::Format_ARGB32_Premultiplied);
  image.fill(0);
  if (inMosaic.empty()) return image;
  const cv::Point at = inMosaic.tl() - origin - r.tl();
  CopyPixels(ToTilePixels(mosaic(inMosaic)), QPoint(at.x, at.y), image);
  return image;
}

QImage EmptyTile() {
  QImage image(TilePyramid::kSide, TilePyramid::kSide, QImage::Format_ARGB32_Premultiplied);
  image.fill(0);
  return image;
}

}  // namespace

TilePyramid::TilePyramid(std::size_t mostBytes) : m_mostBytes(mostBytes) {}

void TilePyramid::Paint(const cv::Mat& mosaic, cv::Point origin, const cv::Rect& changed) {
  for (int y = changed.y; y < changed.br().y; y += kBlock) {
    for (int x = changed.x; x < changed.br().x; x += kBlock) {
      PaintBlock(mosaic, origin, cv::Rect(x, y, kBlock, kBlock) & changed);
    }
  }
}

void TilePyramid::PaintBlock(const cv::Mat& mosaic, cv::Point origin, const cv::Rect& changed) {
  const cv::Rect whole = Widen(changed, 1 << kReducedFromPixels);
  QImage pixels = CutPixels(mosaic, origin, whole);
  for (int level = 0; level <= kReducedFromPixels; ++level) {
    if (level > 0) pixels = HalvePixels(pixels);
    Store(level, cv::Point(FloorDivide(whole.x, 1 << level), FloorDivide(whole.y, 1 << level)),
          pixels);
  }
  for (int level = kReducedFromPixels + 1; level < kLevels; ++level) StoreReduced(level, changed);
  LetGo();
}

bool TilePyramid::PaintWanted(const cv::Mat& mosaic, cv::Point origin) {
  std::vector<TileKey> wanted;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    wanted.swap(m_wanted);
  }
  for (const TileKey& key : wanted) {
    if (!IsLetGo(key)) continue;
    const int side = kSide << key.level;
    QImage pixels = CutPixels(mosaic, origin, cv::Rect(key.x * side, key.y * side, side, side));
    for (int level = 0; level < key.level; ++level) pixels = HalvePixels(pixels);
    Put(key, pixels);
  }
  LetGo();
  return !wanted.empty();
}

void TilePyramid::Clear() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_tiles.clear();
  m_letGo.clear();
  m_wanted.clear();
  std::fill(std::begin(m_perLevel), std::end(m_perLevel), std::size_t{0});
}

QImage TilePyramid::Tile(const TileKey& key) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = m_tiles.find(key);
  if (found == m_tiles.end()) return QImage();
  found->second.used = ++m_clock;
  return found->second.image;
}

bool TilePyramid::IsLetGo(const TileKey& key) const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_letGo.count(key) > 0;
}

void TilePyramid::Want(std::vector<TileKey> keys) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_wanted = std::move(keys);
}

std::size_t TilePyramid::Bytes() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_tiles.size() * kTileBytes;
}

// Copies pixels of one level, which begin at `at`, into its tiles.
void TilePyramid::Store(int level, cv::Point at, const QImage& pixels) {
  const int right = FloorDivide(at.x + pixels.width() - 1, kSide);
  const int bottom = FloorDivide(at.y + pixels.height() - 1, kSide);
  for (int y = FloorDivide(at.y, kSide); y <= bottom; ++y) {
    for (int x = FloorDivide(at.x, kSide); x <= right; ++x) {
      const TileKey key{level, x, y};
      // Made whole when somebody wants it.
      if (IsLetGo(key)) continue;
      // A second header on the tile: writing makes a copy, so that a reader who is
      // drawing the tile at the moment is not disturbed.
      QImage tile = Tile(key);
      if (tile.isNull()) tile = EmptyTile();
      CopyPixels(pixels, QPoint(at.x - x * kSide, at.y - y * kSide), tile);
      Put(key, tile);
    }
  }
}

// Makes the tiles of a level over the changed pixels from those of the level below.
void TilePyramid::StoreReduced(int level, const cv::Rect& changed) {
  const int side = (kSide / 2) << level;  // of a tile of the level below
  const int right = FloorDivide(changed.x + changed.width - 1, side);
  const int bottom = FloorDivide(changed.y + changed.height - 1, side);
  for (int y = FloorDivide(changed.y, side); y <= bottom; ++y) {
    for (int x = FloorDivide(changed.x, side); x <= right; ++x) {
      const QImage below = Tile({level - 1, x, y});
      if (below.isNull()) continue;
      const QImage half = HalvePixels(below);
      Store(level, cv::Point(x * kSide / 2, y * kSide / 2), half);
    }
  }
}

void TilePyramid::Put(const TileKey& key, const QImage& image) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  Entry& entry = m_tiles[key];
  if (entry.image.isNull()) ++m_perLevel[key.level];
  entry.image = image;
  entry.used = ++m_clock;
  m_letGo.erase(key);
}

void TilePyramid::LetGo() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const std::size_t most = std::max<std::size_t>(1, m_mostBytes / kTileBytes);
  if (m_tiles.size() <= most) return;
  // The finest level from which on all tiles fit into their share. Coarser tiles than
  // those reduced from pixels are needed to make others and are few.
  int firstKept = kReducedFromPixels;
  std::size_t kept = 0;
  for (int level = kReducedFromPixels; level < kLevels; ++level) kept += m_perLevel[level];
  while (firstKept > 0 &&
         static_cast<double>(kept + m_perLevel[firstKept - 1]) < kKeptShare * most) {
    kept += m_perLevel[--firstKept];
  }
  std::vector<std::pair<std::uint64_t, TileKey>> dispensable;
  for (const auto& [key, entry] : m_tiles) {
    if (key.level < firstKept) dispensable.emplace_back(entry.used, key);
  }
  // A tenth more than needed, so that this is not done again for every tile.
  const std::size_t excess = std::min(dispensable.size(), m_tiles.size() - most + most / 10);
  std::nth_element(dispensable.begin(), dispensable.begin() + static_cast<std::ptrdiff_t>(excess),
                   dispensable.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < excess; ++i) {
    const TileKey key = dispensable[i].second;
    m_tiles.erase(key);
    m_letGo.insert(key);
    --m_perLevel[key.level];
  }
}

}  // namespace jqscope
