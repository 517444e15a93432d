#ifndef JQ_TESTS_PLATFORM_JUDGED_FILE_H
#define JQ_TESTS_PLATFORM_JUDGED_FILE_H

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <opencv2/imgcodecs.hpp>
#include <vector>

#include "jqimageconvert.h"
#include "support/outcome.h"

using FileBytes = std::vector<uchar>;

/// Files whose size is judged. The answer for a file is asked beside files of a known
/// size.
class JudgedFile : public ::testing::Test {
 protected:
  QString Write(const QString& name, const FileBytes& bytes) {
    QFile file(m_folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    return file.fileName();
  }
  QString Known(int width, int height) {
    const QString name = QString("known %1 x %2.bmp").arg(width).arg(height);
    FileBytes bytes;
    cv::imencode(".bmp", cv::Mat(height, width, CV_8UC3, cv::Scalar::all(1)), bytes);
    return Write(name, bytes);
  }
  bool Matches(const QString& path, int width, int height) {
    return IsImageSizeMatched({Known(width, height), path}) &&
           IsImageSizeMatched({path, Known(width, height)});
  }
  /// Whether the file counts as what a full decode gives, whatever that is; returns
  /// the decoded size.
  cv::Size ExpectAsDecoded(const FileBytes& bytes) {
    const QString path = Write("judged", bytes);
    cv::Size decoded;
    Ending([&] { decoded = cv::imread(path.toStdString(), 1).size(); });
    bool taken = false;
    const Outcome outcome = Ending([&] { taken = IsImageSizeMatched({path}); });
    EXPECT_EQ(outcome, Outcome::kReturned);
    EXPECT_EQ(taken, !decoded.empty()) << decoded;
    if (!decoded.empty()) {
      EXPECT_TRUE(Matches(path, decoded.width, decoded.height)) << decoded;
    }
    return decoded;
  }

  QTemporaryDir m_folder;
};

#endif  // JQ_TESTS_PLATFORM_JUDGED_FILE_H
