#ifndef JQ_TESTS_FUZZ_STITCHER_WORLD_H
#define JQ_TESTS_FUZZ_STITCHER_WORLD_H

#include <QString>
#include <opencv2/core.hpp>

#include "fuzz_input.h"
#include "support/host_record.h"

/// What a fuzzed stitcher looks at: one scene, and files of its frames.
class World {
 public:
  /// Once, before the first call of the others.
  static void Create();
  /// A frame of the scene; a corner outside is moved back into it.
  static cv::Mat View(cv::Point corner, cv::Size size);
  /// One of the files: frames that fit each other, one of another size, damaged ones,
  /// and a name behind which there is nothing.
  static QString file(int index);
  /// A path in the folder of the files.
  static QString path(const char* name);
};

/// A frame as a host hands it over, in a buffer of exactly its size.
class WorldRecord {
 public:
  explicit WorldRecord(const cv::Mat& frame);
  /// Padded, with another number of channels or bytes, or with one field that is
  /// wrong, as the input says.
  WorldRecord(const cv::Mat& frame, FuzzInput& in);
  _tagJQIMG* get() { return m_host.get(); }

 private:
  WorldRecord(const cv::Mat& frame, FuzzInput& in, int shape);

  HostRecord m_host;
};

/// `shown` is what the library documents for this host's record and picture.
void RequireRecordOf(const _tagJQIMG& shown, const _tagJQIMG& host, const cv::Mat& picture);

/// Reads every byte that a record points at.
void ReadAll(const _tagJQIMG& record);

#endif  // JQ_TESTS_FUZZ_STITCHER_WORLD_H
