// Writes the inputs that the fuzzers start from: make_corpus FOLDER makes a folder for
// each of them. Everything comes from one fixed seed, so that it is the same each time.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <string>
#include <vector>

#include "support/pictures.h"

namespace {

using Bytes = std::vector<unsigned char>;

void Write(const std::filesystem::path& folder, const std::string& name, const Bytes& bytes) {
  std::filesystem::create_directories(folder);
  std::ofstream file(folder / name, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) {
    std::fprintf(stderr, "cannot write %s\n", (folder / name).c_str());
    std::exit(1);
  }
}

void WritePictures(const std::filesystem::path& folder, RandomSource& random) {
  const cv::Mat colour = pictures::Texture(random, 13, 17, CV_8UC3);
  const cv::Mat grey = pictures::Texture(random, 9, 11, CV_8UC1);
  const cv::Mat alpha = pictures::Texture(random, 5, 6, CV_8UC4);
  cv::Mat deep;
  colour.convertTo(deep, CV_16U, 257);
  const auto add = [&](const char* format, const char* name, const cv::Mat& picture,
                       const std::vector<int>& options = {}) {
    Bytes bytes;
    cv::imencode(format, picture, bytes, options);
    Write(folder, std::string(name) + format, bytes);
  };
  for (const char* format : {".png", ".jpg", ".bmp", ".tif", ".webp", ".ppm"})
    add(format, "colour", colour);
  for (const char* format : {".png", ".jpg", ".bmp", ".tif", ".pgm"}) add(format, "grey", grey);
  // JPEG 2000 halves its pictures five times.
  add(".jp2", "colour", pictures::Texture(random, 40, 40, CV_8UC3));
  add(".png", "alpha", alpha);
  add(".png", "deep", deep);
  add(".tif", "deep", deep);
  add(".jpg", "progressive", colour, {cv::IMWRITE_JPEG_PROGRESSIVE, 1});
  add(".jpg", "restarts", colour, {cv::IMWRITE_JPEG_RST_INTERVAL, 1});
  add(".png", "bilevel", grey, {cv::IMWRITE_PNG_BILEVEL, 1});
}

// Records as convert_fuzzer.cpp reads them: of every supported kind, with numbers that
// fit together.
void WriteRecords(const std::filesystem::path& folder) {
  for (const int channels : {1, 3, 4}) {
    for (const int bytes : {1, 2}) {
      for (const int output : {0, 1, 3}) {
        const auto u8 = [](int value) { return static_cast<unsigned char>(value); };
        Bytes record{3, 7, 0, 5, 0, 0, u8(channels), u8(bytes)};
        record.insert(record.end(), 8, 0);  // line and buffer follow from the size
        record.push_back(u8(output));
        record.insert(record.end(), {1, 1, 9, 0, 200, 255, 17});  // no padding; samples
        Write(folder,
              std::to_string(channels) + "x" + std::to_string(bytes) + "-" + std::to_string(output),
              record);
      }
    }
  }
}

// Any bytes are a run of calls.
void WriteCalls(const std::filesystem::path& folder, RandomSource& random) {
  for (int n = 0; n < 40; ++n) {
    Bytes calls(static_cast<std::size_t>(random.Int(40, 400)));
    for (unsigned char& byte : calls) byte = static_cast<unsigned char>(random.Int(0, 255));
    Write(folder, "calls-" + std::to_string(n), calls);
  }
}

// Live runs as stitcher_fuzzer.cpp reads them: frames of 200 x 170 pixels, of which
// most get placed, in every direction and both modes.
void WriteRuns(const std::filesystem::path& folder) {
  for (const unsigned char mode : {0, 1}) {
    for (const unsigned char across : {20, 50, 85}) {
      for (const unsigned char down : {12, 42, 72}) {
        Bytes run{mode};
        if (mode != 0) run.insert(run.end(), {0, 101});  // the number 1
        // Level 1, the usual budget, the size.
        run.insert(run.end(), {1, 0, 1, 110, 80});
        for (int frame = 0; frame < 7; ++frame) run.insert(run.end(), {12, across, down, 0});
        Write(folder,
              "run-" + std::to_string(mode) + "-" + std::to_string(across) + "-" +
                  std::to_string(down),
              run);
      }
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  const std::filesystem::path root = argv[1];
  RandomSource random(1);
  WriteRecords(root / "convert");
  WritePictures(root / "image_size", random);
  WriteCalls(root / "stitcher", random);
  WriteRuns(root / "stitcher");
  WriteCalls(root / "engine", random);
  return 0;
}
