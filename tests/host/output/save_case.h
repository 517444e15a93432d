#ifndef JQHOST_TESTS_OUTPUT_SAVE_CASE_H
#define JQHOST_TESTS_OUTPUT_SAVE_CASE_H

#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <string>

#include "host/output/mosaic_scene.h"
#include "host/output/save_picture.h"
#include "jqstitch/run_program.h"

namespace jqhost_test {

/// A folder of its own for the outputs of a test.
class SaveCase : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return m_folder / name; }

  /// Saves and expects that it succeeds.
  void Save(const cv::Mat& view, const jqhost::SaveOptions& options) {
    const jqhost::StopToken stop;
    EXPECT_TRUE(jqhost::SavePicture(view, options, jqhost::SaveProgress(), stop)) << options.path;
  }

  jqhost::SaveOptions Options(const std::string& name) const {
    jqhost::SaveOptions options;
    options.path = Path(name);
    return options;
  }

  /// As stored; empty when the image library cannot read it.
  cv::Mat Read(const std::string& name) const {
    return cv::imread(Path(name), cv::IMREAD_UNCHANGED);
  }

  jqstitch_test::TemporaryFolder m_folder;
};

}  // namespace jqhost_test

#endif  // JQHOST_TESTS_OUTPUT_SAVE_CASE_H
