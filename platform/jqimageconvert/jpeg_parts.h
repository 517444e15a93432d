#ifndef JQ_JPEG_PARTS_H
#define JQ_JPEG_PARTS_H

#include <array>
#include <cstddef>
#include <opencv2/core/types.hpp>

// The segments of a JPEG file that decide whether a decoder makes a picture of it
// and how large. Every function is given a segment's bytes behind its length.
namespace jqheader {

struct Bytes {
  const unsigned char* data;
  std::size_t size;

  unsigned char operator[](std::size_t i) const { return data[i]; }
};

/// What the segments so far have defined.
struct JpegParts {
  struct Component {
    int id;
    int quantisation;
  };
  cv::Size size;  // 0 x 0 before the frame header
  int components = 0;
  std::array<Component, 3> component{};
  std::array<bool, 4> quantisation{};
  std::array<std::array<bool, 4>, 2> huffman{};  // [direct or alternating][slot]
};

/// Each adds to `parts`; false for anything damaged or unusual.
bool addQuantisation(Bytes segment, JpegParts& parts);
bool addHuffman(Bytes segment, JpegParts& parts);
/// Precision 8, one grey or three colour components.
bool addFrame(Bytes segment, JpegParts& parts);

/// Whether this scan holds the whole picture and all that it uses is defined.
bool isWholeScan(Bytes segment, const JpegParts& parts);

/// Whether a tag block (APP1, behind its six bytes of name) may swap width and
/// height: orientations 5 to 8, or anything written oddly.
bool maySwapSides(Bytes tags);

}  // namespace jqheader

#endif  // JQ_JPEG_PARTS_H
