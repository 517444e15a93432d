// Saves that are stopped, that find the disk too small, or that fill it: what stood there
// stays, and nothing is left over.
#include <sys/mount.h>

#include <atomic>
#include <filesystem>
#include <fstream>

#include "host/input_error.h"
#include "host/output/disk_space.h"
#include "host/output/pyramid/pyramid.h"
#include "host/output/save_case.h"
#include "host/output/tiff_file.h"

namespace jqhost_test {
namespace {

using Names = std::vector<std::string>;

// Noise, which cannot be packed, and how much of it was asked for. Smooth where the size
// is estimated from, if it is to mislead.
class Noise : public jqhost::PixelSource {
 public:
  Noise(cv::Size size, bool misleads) : m_size(size), m_misleads(misleads) {}
  cv::Size Size() const override { return m_size; }
  int Channels() const override { return 3; }
  void Read(const cv::Rect& area, cv::Mat& pixels) const override {
    const long long before = m_read.fetch_add(area.area());
    if (m_misleads && before < 64 * 128 * 128) {
      pixels.setTo(cv::Scalar::all(7));
      return;
    }
    cv::RNG random(static_cast<std::uint64_t>(area.y) * 65536 + static_cast<unsigned>(area.x) + 1);
    random.fill(pixels, cv::RNG::UNIFORM, 0, 256);
  }
  long long Read() const { return m_read; }

 private:
  cv::Size m_size;
  bool m_misleads;
  mutable std::atomic<long long> m_read{0};
};

class Disk : public SaveCase {
 protected:
  void TearDown() override {
    if (m_mounted) {
      EXPECT_EQ(umount(m_folder.Path().c_str()), 0);
    }
  }
  bool MountSmallDisk() {
    m_mounted = mount("tmpfs", m_folder.Path().c_str(), "tmpfs", 0, "size=3m,nr_inodes=500") == 0;
    return m_mounted;
  }
  // What stands there before, for each format.
  void WriteOld() {
    std::ofstream(Path("a.png")) << "old png";
    std::ofstream(Path("a.ome.tif")) << "old tiff";
    std::ofstream(Path("a.dzi")) << "old dzi";
    std::filesystem::create_directories(Path("a_files/0"));
    std::ofstream(Path("a_files/0/0_0.png")) << "old tile";
  }
  void ExpectOld() {
    EXPECT_EQ(jqstitch_test::ReadFile(Path("a.png")), "old png");
    EXPECT_EQ(jqstitch_test::ReadFile(Path("a.ome.tif")), "old tiff");
    EXPECT_EQ(jqstitch_test::ReadFile(Path("a.dzi")), "old dzi");
    EXPECT_EQ(jqstitch_test::ReadFile(Path("a_files/0/0_0.png")), "old tile");
    EXPECT_EQ(jqstitch_test::ListFolder(Path("a_files")), (Names{"0"}));
    EXPECT_EQ(jqstitch_test::ListFolder(m_folder.Path()),
              (Names{"a.dzi", "a.ome.tif", "a.png", "a_files"}));
  }
  static Names Formats() {
    return jqhost::HasLibvips() ? Names{"a.png", "a.ome.tif", "a.dzi"}
                                : Names{"a.png", "a.ome.tif"};
  }

  bool m_mounted = false;
};

TEST_F(Disk, AStoppedSaveChangesNothing) {
  WriteOld();
  for (const std::string& name : Formats()) {
    const Noise noise({1500, 1400}, false);
    jqhost::StopToken stop;
    double told = 0.0;
    const auto progress = [&](double share) {
      told = share;
      if (share > 0.3) stop.Request();
    };
    EXPECT_FALSE(jqhost::SavePixels(noise, Options(name), progress, stop)) << name;
    EXPECT_GT(told, 0.0) << name;
    EXPECT_LT(told, 1.0) << name;
    ExpectOld();
  }
}

TEST_F(Disk, ProgressGrowsToItsEnd) {
  for (const std::string& name : Formats()) {
    const Noise noise({1500, 1400}, false);
    const jqhost::StopToken stop;
    double last = 0.0;
    bool grows = true;
    const auto progress = [&](double share) {
      grows = grows && share >= last;
      last = share;
    };
    EXPECT_TRUE(jqhost::SavePixels(noise, Options(name), progress, stop)) << name;
    EXPECT_TRUE(grows) << name;
    EXPECT_GT(last, 0.95) << name;
    EXPECT_LE(last, 1.0) << name;
  }
}

// 2100 x 2000 x 3 of noise are 12.6 MB, four times the disk.
TEST_F(Disk, TooSmallIsFoundBeforeTheWork) {
  if (!MountSmallDisk()) GTEST_SKIP() << "mounting a small disk is not permitted here";
  WriteOld();
  for (const std::string& name : Formats()) {
    const Noise noise({2100, 2000}, false);
    try {
      jqhost::SavePixels(noise, Options(name), jqhost::SaveProgress(), jqhost::StopToken());
      ADD_FAILURE() << name << " was saved";
    } catch (const jqhost::InputError& error) {
      EXPECT_NE(std::string(error.what()).find("it needs about 1"), std::string::npos)
          << error.what();
    }
    EXPECT_LE(noise.Read(), 64 * 128 * 128) << "more was read than a sample";
    ExpectOld();
  }
}

TEST_F(Disk, AFullDiskLeavesWhatStoodThere) {
  if (!MountSmallDisk()) GTEST_SKIP() << "mounting a small disk is not permitted here";
  WriteOld();
  for (const std::string& name : Formats()) {
    const Noise noise({2100, 2000}, true);
    try {
      jqhost::SavePixels(noise, Options(name), jqhost::SaveProgress(), jqhost::StopToken());
      ADD_FAILURE() << name << " was saved";
    } catch (const jqhost::InputError& error) {
      EXPECT_NE(std::string(error.what()).find("free some space"), std::string::npos)
          << error.what();
    }
    EXPECT_GT(noise.Read(), 64 * 128 * 128) << "the estimate did not mislead";
    ExpectOld();
  }
}

// Noise cannot be packed: 3 bytes a pixel, and a third more for the reduced levels.
TEST(DiskSpace, EstimatesWithinATenth) {
  const Noise noise({3000, 2000}, false);
  jqhost::SaveOptions options;
  options.path = "a.png";
  EXPECT_NEAR(jqhost::EstimateBytes(noise, options), 18e6, 1.8e6);
  options.path = "a.ome.tif";
  EXPECT_NEAR(jqhost::EstimateBytes(noise, options), 24e6, 2.4e6);
  options.compression = jqhost::Compression::kNone;
  EXPECT_DOUBLE_EQ(jqhost::EstimateBytes(noise, options), 24e6);
}

// 30000 x 30000 x 3 with its levels is 3.6 GB, 34000 x 34000 x 3 4.6 GB.
TEST(BigTiff, IsTakenWhereItMayBeNeeded) {
  EXPECT_FALSE(jqhost::NeedsBigTiff({30000, 30000}, 3));
  EXPECT_TRUE(jqhost::NeedsBigTiff({34000, 34000}, 3));
  EXPECT_FALSE(jqhost::NeedsBigTiff({34000, 34000}, 1));
  EXPECT_TRUE(jqhost::NeedsBigTiff({65000, 50000}, 1));
}

}  // namespace
}  // namespace jqhost_test
