// TIFFs, read back by the image library and by a reader that shares no code with the
// writer.
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

#include "host/output/picture.h"
#include "host/output/save_case.h"

namespace jqhost_test {
namespace {

class TiffFile : public SaveCase {
 protected:
  // What the other reader tells. It unpacks deflate, and then the levels' pixels end up in
  // the folder, but not LZW.
  nlohmann::json Tell(const std::string& name, bool unpack) const {
    const std::string command = std::string(JQ_TIFF_READER) + " '" + Path(name) + "' " +
                                (unpack ? "'" + m_folder.Path() + "'" : "") + " >'" + Path("seen") +
                                "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << "is python3-tifffile installed?";
    return nlohmann::json::parse(jqstitch_test::ReadFile(Path("seen")));
  }

  // As the reader wrote it: red, green, blue.
  cv::Mat Level(int number, cv::Size size, int channels) const {
    const std::string bytes =
        jqstitch_test::ReadFile(Path("level_" + std::to_string(number) + ".raw"));
    cv::Mat level(size, CV_8UC(channels));
    EXPECT_EQ(bytes.size(), level.total() * level.elemSize());
    if (bytes.size() != level.total() * level.elemSize()) return cv::Mat();
    std::memcpy(level.data, bytes.data(), bytes.size());
    return level;
  }

  // Each level equals the plain mean of the one above.
  void ExpectLevels(const cv::Mat& first, const std::vector<cv::Size>& sizes) const {
    cv::Mat expected = first;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
      if (i > 0) expected = HalfByMean(expected);
      ASSERT_EQ(expected.size(), sizes[i]);
      EXPECT_EQ(Differences(Level(static_cast<int>(i), sizes[i], first.channels()), expected), 0)
          << "level " << i;
    }
  }
};

const cv::Size kSize(1301, 1166);  // odd at two levels; three levels of tiles of 512

TEST_F(TiffFile, OmeTiffIsReadByAnotherReader) {
  const cv::Mat view = MosaicScene(kSize, 11);
  jqhost::SaveOptions options = Options("a.ome.tif");
  options.background = {{255, 250, 10}};
  options.pixelSize = cv::Size2d(0.345e-6, 0.69e-6);
  Save(view, options);
  const cv::Mat expected = jqhost::WithBackground(view, options.background);
  EXPECT_EQ(Differences(Read("a.ome.tif"), expected), 0);

  const nlohmann::json seen = Tell("a.ome.tif", true);
  EXPECT_TRUE(seen["ome"]);
  EXPECT_FALSE(seen["big"]);
  EXPECT_EQ(seen["pages"], 1);
  EXPECT_EQ(seen["subifds"], 2);
  EXPECT_EQ(seen["levels"], (nlohmann::json{{1166, 1301, 3}, {583, 651, 3}, {292, 326, 3}}));
  EXPECT_EQ(seen["tiles"], (nlohmann::json{{512, 512}, {512, 512}, {512, 512}}));
  EXPECT_EQ(seen["compression"], "ADOBE_DEFLATE");
  EXPECT_EQ(seen["unit"], "CENTIMETER");
  EXPECT_NEAR(seen["resolution"][0].get<double>(), 28985.507, 0.05);
  EXPECT_NEAR(seen["resolution"][1].get<double>(), 14492.754, 0.05);
  const nlohmann::json& pixels = seen["pixels"];
  EXPECT_EQ(pixels["SizeX"], "1301");
  EXPECT_EQ(pixels["SizeY"], "1166");
  EXPECT_EQ(pixels["SizeC"], "3");
  EXPECT_EQ(pixels["PhysicalSizeX"], "0.345");
  EXPECT_EQ(pixels["PhysicalSizeXUnit"], "\xc2\xb5m");
  EXPECT_EQ(pixels["PhysicalSizeY"], "0.69");

  cv::Mat rgb;
  cv::cvtColor(expected, rgb, cv::COLOR_BGR2RGB);
  ExpectLevels(rgb, {{1301, 1166}, {651, 583}, {326, 292}});
}

TEST_F(TiffFile, GreyOmeTiffHasOneChannelAndTellsNoSizeUnasked) {
  jqhost::SaveOptions options = Options("a.OME.TIFF");
  options.grey = true;
  options.compression = jqhost::Compression::kNone;
  const cv::Mat view = MosaicScene({700, 530}, 12);
  Save(view, options);
  const nlohmann::json seen = Tell("a.OME.TIFF", true);
  EXPECT_EQ(seen["levels"], (nlohmann::json{{530, 700}, {265, 350}}));
  EXPECT_EQ(seen["compression"], "NONE");
  EXPECT_EQ(seen["pixels"]["SizeC"], "1");
  EXPECT_FALSE(seen["pixels"].contains("PhysicalSizeX"));
  EXPECT_TRUE(seen["resolution"].empty());
  cv::Mat grey;
  cv::extractChannel(view, grey, 0);
  ExpectLevels(grey, {{700, 530}, {350, 265}});
}

TEST_F(TiffFile, EveryCompressionIsWhatItIsCalled) {
  struct Row {
    jqhost::Compression compression;
    const char* name;
  };
  const cv::Mat view = MosaicScene({640, 520}, 13);
  for (const Row& row :
       {Row{jqhost::Compression::kLzw, "LZW"}, Row{jqhost::Compression::kZstd, "ZSTD"}}) {
    jqhost::SaveOptions options = Options(std::string(row.name) + ".ome.tif");
    options.compression = row.compression;
    Save(view, options);
    EXPECT_EQ(Differences(Read(std::string(row.name) + ".ome.tif"), view), 0) << row.name;
  }
  // A smooth picture survives JPEG within a few grey levels; a lower quality is smaller.
  cv::Mat smooth;
  cv::GaussianBlur(view, smooth, {0, 0}, 8);
  jqhost::SaveOptions options = Options("fine.ome.tif");
  options.compression = jqhost::Compression::kJpeg;
  Save(smooth, options);
  EXPECT_LT(cv::norm(Read("fine.ome.tif"), smooth, cv::NORM_L1) / (640 * 520 * 3), 3.0);
  options = Options("coarse.ome.tif");
  options.compression = jqhost::Compression::kJpeg;
  options.quality = 30;
  Save(smooth, options);
  EXPECT_LT(jqstitch_test::ReadFile(options.path).size(),
            jqstitch_test::ReadFile(Path("fine.ome.tif")).size());
}

// The slide reader takes it for a tiled TIFF of no maker's, and sees the picture itself;
// reduced levels in SubIFDs it does not look for.
TEST_F(TiffFile, OmeTiffIsOpenedByASlideReader) {
  jqhost::SaveOptions options = Options("a.ome.tif");
  Save(MosaicScene({1100, 700}, 18), options);
  const std::string command =
      "openslide-show-properties '" + options.path + "' >'" + Path("seen") + "'";
  ASSERT_EQ(std::system(command.c_str()), 0) << "is openslide-tools installed?";
  const std::string seen = jqstitch_test::ReadFile(Path("seen"));
  for (const char* part : {"openslide.vendor: 'generic-tiff'", "level[0].width: '1100'",
                           "level[0].height: '700'", "level[0].tile-width: '512'"}) {
    EXPECT_NE(seen.find(part), std::string::npos) << part << " in " << seen;
  }
}

TEST_F(TiffFile, APlainTiffHasItsResolutionInTags) {
  const cv::Mat view = MosaicScene({333, 222}, 14);
  jqhost::SaveOptions options = Options("a.tif");
  options.pixelSize = cv::Size2d(0.5e-3, 0.25e-3);
  Save(view, options);
  EXPECT_EQ(Differences(Read("a.tif"), view), 0);
  const nlohmann::json seen = Tell("a.tif", false);
  EXPECT_FALSE(seen["ome"]);
  EXPECT_EQ(seen["subifds"], 0);
  EXPECT_EQ(seen["unit"], "CENTIMETER");
  EXPECT_DOUBLE_EQ(seen["resolution"][0].get<double>(), 20.0);
  EXPECT_DOUBLE_EQ(seen["resolution"][1].get<double>(), 40.0);
}

}  // namespace
}  // namespace jqhost_test
