// Deep Zoom, read back tile by tile.
#include <fstream>
#include <set>

#include "host/input_error.h"
#include "host/output/picture.h"
#include "host/output/save_case.h"

namespace jqhost_test {
namespace {

class DeepZoom : public SaveCase {};

// Tiles of 254 with 1 pixel of each neighbour around; level N is the picture itself.
TEST_F(DeepZoom, IsRightTileByTile) {
  const cv::Mat view = MosaicScene({601, 515}, 15);
  jqhost::SaveOptions options = Options("a.dzi");
  options.background = {{9, 250, 10}};
  Save(view, options);
  EXPECT_EQ(jqstitch_test::ListFolder(m_folder.Path()),
            (std::vector<std::string>{"a.dzi", "a_files"}));
  const std::string text = jqstitch_test::ReadFile(Path("a.dzi"));
  for (const char* part :
       {"TileSize=\"254\"", "Overlap=\"1\"", "Format=\"png\"", "Width=\"601\"", "Height=\"515\""}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
  }
  cv::Mat expected = jqhost::WithBackground(view, options.background);
  // 601 needs ten halvings to become 1.
  for (int level = 10; level >= 0; --level) {
    const std::string folder = "a_files/" + std::to_string(level);
    std::set<std::string> names;
    for (int ty = 0; ty * 254 < expected.rows; ++ty) {
      for (int tx = 0; tx * 254 < expected.cols; ++tx) {
        const std::string name = std::to_string(tx) + "_" + std::to_string(ty) + ".png";
        names.insert(name);
        const cv::Rect tile =
            cv::Rect(tx * 254 - 1, ty * 254 - 1, 256, 256) & cv::Rect(cv::Point(), expected.size());
        EXPECT_EQ(Differences(Read(folder + "/" + name), expected(tile)), 0)
            << level << " " << name;
      }
    }
    const std::vector<std::string> there = jqstitch_test::ListFolder(Path(folder));
    EXPECT_EQ(std::set<std::string>(there.begin(), there.end()), names) << level;
    expected = HalfByMean(expected);
  }
  EXPECT_EQ(jqstitch_test::ListFolder(Path("a_files")).size(), 11u);
}

TEST_F(DeepZoom, ReplacesItsOwnTilesAndNothingElse) {
  Save(MosaicScene({601, 515}, 16), Options("a.dzi"));
  jqhost::SaveOptions options = Options("a.dzi");
  options.compression = jqhost::Compression::kJpeg;
  Save(MosaicScene({100, 80}, 17), options);
  EXPECT_EQ(jqstitch_test::ListFolder(Path("a_files")).size(), 8u);  // 100 to 1
  EXPECT_EQ(jqstitch_test::ListFolder(Path("a_files/7")), (std::vector<std::string>{"0_0.jpg"}));
  EXPECT_EQ(jqstitch_test::ListFolder(m_folder.Path()),
            (std::vector<std::string>{"a.dzi", "a_files"}));

  std::ofstream(Path("a_files/notes.txt")) << "mine";
  EXPECT_THROW(Save(MosaicScene({100, 80}, 17), options), jqhost::InputError);
  EXPECT_EQ(jqstitch_test::ReadFile(Path("a_files/notes.txt")), "mine");
}

}  // namespace
}  // namespace jqhost_test
