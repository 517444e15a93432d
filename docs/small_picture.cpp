// small_picture IN OUT LONGEST: a picture at most LONGEST pixels long, as a JPEG for
// the README. Part of make_pictures.sh.
#include <algorithm>
#include <cstdlib>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  cv::Mat picture = cv::imread(argv[1], cv::IMREAD_COLOR);
  if (picture.empty()) return 1;
  const double scale = std::atof(argv[3]) / std::max(picture.cols, picture.rows);
  if (scale < 1) cv::resize(picture, picture, cv::Size(), scale, scale, cv::INTER_AREA);
  return cv::imwrite(argv[2], picture, {cv::IMWRITE_JPEG_QUALITY, 82}) ? 0 : 1;
}
