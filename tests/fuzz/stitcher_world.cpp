#include "stitcher_world.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "require.h"
#include "support/scenes.h"

namespace {

// Never destroyed: fuzzers end without running destructors in order. The folder is
// removed by the script that starts the fuzzer.
struct Things {
  cv::Mat scene;
  QTemporaryDir folder;
  QStringList files;
};
Things* g_things = nullptr;

}  // namespace

void World::Create() {
  RandomSource random(1);
  g_things = new Things;
  g_things->scene = scenes::Quiet(random, 1000, 1200);
  // Dark holes: samples of 0, which the library lifts.
  pictures::BlackHoles(random, g_things->scene);

  const cv::Size size(120, 100);
  for (const int step : {0, 40, 80, 110}) {
    const QString name = path(qPrintable(QString("%1.bmp").arg(step)));
    cv::imwrite(name.toStdString(), View(cv::Point(300 + step, 300 - step), size));
    g_things->files.append(name);
  }
  cv::imwrite(path("wide.bmp").toStdString(), View(cv::Point(300, 300), cv::Size(121, 100)));
  QFile damaged(path("damaged.png"));
  Require(damaged.open(QIODevice::WriteOnly) && damaged.write("\x89PNG and no more") > 0,
          "the folder can be written");
  g_things->files << path("wide.bmp") << path("damaged.png") << path("missing.bmp");
}

cv::Mat World::View(cv::Point corner, cv::Size size) {
  const cv::Mat& scene = g_things->scene;
  const int x = std::clamp(corner.x, 0, scene.cols - size.width);
  const int y = std::clamp(corner.y, 0, scene.rows - size.height);
  return scene(cv::Rect(x, y, size.width, size.height)).clone();
}

QString World::file(int index) {
  return g_things->files[index % g_things->files.size()];
}

QString World::path(const char* name) {
  return g_things->folder.filePath(name);
}

namespace {

cv::Mat InShape(const cv::Mat& frame, int shape) {
  cv::Mat shown = frame;
  if (shape % 8 == 1) cv::cvtColor(frame, shown, cv::COLOR_BGR2GRAY);
  if (shape % 8 == 2) cv::cvtColor(frame, shown, cv::COLOR_BGR2BGRA);
  if (shape % 8 == 3) frame.convertTo(shown, CV_16U, 257);
  return shown;
}

}  // namespace

WorldRecord::WorldRecord(const cv::Mat& frame) : m_host(frame) {}

WorldRecord::WorldRecord(const cv::Mat& frame, FuzzInput& in) : WorldRecord(frame, in, in.u8()) {}

WorldRecord::WorldRecord(const cv::Mat& frame, FuzzInput& in, int shape)
    : m_host(InShape(frame, shape), shape % 8 == 4 ? in.u8() : 0) {
  if (shape % 8 != 5) return;
  _tagJQIMG& record = *m_host.get();
  switch (in.u8() % 6) {
    case 0:
      record.pixels = nullptr;
      break;
    case 1:
      record.width = 0;
      break;
    case 2:
      record.channels = 2;
      break;
    case 3:
      record.bufferSize -= 1;
      break;
    case 4:
      record.bytesPerLine = in.number();
      if (record.bytesPerLine > 0) record.bytesPerLine %= frame.cols * 3;
      break;
    default:
      record.format = 1;
  }
}

void RequireRecordOf(const _tagJQIMG& shown, const _tagJQIMG& host, const cv::Mat& picture) {
  _tagJQIMG expected = host;
  expected.width = static_cast<std::uint16_t>(picture.cols);
  expected.height = static_cast<std::uint16_t>(picture.rows);
  expected.bytesPerLine = expected.width * 3;
  expected.format = 0;
  expected.channels = 3;
  expected.bytesPerChannel = 1;
  expected.bufferSize = std::uint32_t{expected.width} * 3u * expected.height;
  expected.pixels = picture.data;
  Require(std::memcmp(&shown, &expected, sizeof shown) == 0, "the record shows the mosaic");
  ReadAll(shown);
}

void ReadAll(const _tagJQIMG& record) {
  unsigned sum = 0;
  for (std::uint32_t k = 0; k < record.bufferSize; ++k) sum += record.pixels[k];
  // A sum that nobody reads would be optimised away, and the reads with it.
  static volatile unsigned sink;
  sink = sum;
  static_cast<void>(sink);
}
