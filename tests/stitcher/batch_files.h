#ifndef JQ_TESTS_STITCHER_BATCH_FILES_H
#define JQ_TESTS_STITCHER_BATCH_FILES_H

#include <QMetaObject>
#include <QSignalSpy>
#include <QStringList>
#include <QTemporaryDir>
#include <opencv2/imgcodecs.hpp>
#include <string>
#include <vector>

#include "jqimagestitching.h"

/// Image files of a batch run in a folder of their own.
class BatchFiles {
 public:
  /// `extension` names a lossless format.
  void Add(const cv::Mat& picture, const char* extension = "png") {
    const QString path =
        m_folder.filePath(QString("frame %1.%2").arg(m_paths.size()).arg(extension));
    cv::imwrite(path.toStdString(), picture);
    m_paths.append(path);
  }
  void AddPath(const QString& path) { m_paths.append(path); }

  const QList<QString>& paths() const { return m_paths; }
  std::vector<std::string> localPaths() const {
    std::vector<std::string> local;
    for (const QString& path : m_paths) local.push_back(path.toLocal8Bit().toStdString());
    return local;
  }
  QString filePath(const QString& name) const { return m_folder.filePath(name); }

 private:
  QTemporaryDir m_folder;
  QList<QString> m_paths;
};

/// One batch run through the private slot, and what the signals carried.
class BatchRun {
 public:
  BatchRun(JQImageStitching& stitcher, const QList<QString>& files)
      : m_status(&stitcher, &JQImageStitching::sglMultiImageProcessStatus),
        m_memory(&stitcher, &JQImageStitching::sglSystemMemoryNotEnough) {
    // The context ends the connection, also where the slot throws.
    QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessFinished, &m_context,
                     [this](void* dst) { m_finished.push_back(static_cast<cv::Mat*>(dst)); });
    stitcher.m_fileList = files;
    invoked = QMetaObject::invokeMethod(&stitcher, "slotStartStitching", Qt::DirectConnection);
  }

  std::vector<std::string> texts() const {
    std::vector<std::string> all;
    for (int i = 0; i < m_status.count(); ++i)
      all.push_back(m_status.at(i).at(0).toString().toStdString());
    return all;
  }
  const std::vector<cv::Mat*>& finished() const { return m_finished; }
  int memorySignals() const { return m_memory.count(); }

  bool invoked = false;

 private:
  QSignalSpy m_status;
  QSignalSpy m_memory;
  QObject m_context;
  std::vector<cv::Mat*> m_finished;
};

#endif  // JQ_TESTS_STITCHER_BATCH_FILES_H
