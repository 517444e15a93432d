// The window in a script gives the very file that the command line gives.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <opencv2/imgcodecs.hpp>

#include "host/simulate/slide.h"

class ScriptTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void samePictureAsTheCommandLine();
};

namespace {

int Run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  return process.waitForFinished() ? process.exitCode() : -1;
}

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

void ScriptTest::samePictureAsTheCommandLine() {
  QTemporaryDir folder;
  const QString frames = folder.filePath("frames");
  QVERIFY(QDir().mkpath(frames));
  const cv::Mat slide = jqhost::PaintSlide(cv::Size(1000, 700), 1);
  int number = 100;
  // A turn, frames that are only tracked, and one that is lost.
  for (const cv::Point corner :
       {cv::Point(200, 150), cv::Point(248, 154), cv::Point(256, 154), cv::Point(304, 150),
        cv::Point(300, 198), cv::Point(660, 450), cv::Point(296, 240), cv::Point(250, 238)}) {
    const std::string path = frames.toStdString() + "/" + std::to_string(++number) + ".png";
    QVERIFY(cv::imwrite(path, slide(cv::Rect(corner, cv::Size(320, 240)))));
  }
  const QString ours = folder.filePath("window.png"), theirs = folder.filePath("line.png");
  QCOMPARE(Run(JQSCOPE_PROGRAM, {"--source", frames, "--run", "--save", ours, "--quit"}), 0);
  QCOMPARE(Run(JQSTITCH_PROGRAM, {"live", frames, "-o", theirs}), 3);  // one was left out
  QVERIFY(!Bytes(ours).isEmpty());
  QVERIFY(Bytes(ours) == Bytes(theirs));

  // A journal that was asked for changes nothing, and is gone when all is saved.
  const QString shelf = folder.filePath("journals");
  QVERIFY(QFile::remove(ours));
  QCOMPARE(Run(JQSCOPE_PROGRAM, {frames, "--run", "--save", ours, "--quit", "--journal", shelf}),
           0);
  QVERIFY(Bytes(ours) == Bytes(theirs));
  QVERIFY(QDir(shelf).exists());
  QVERIFY(QDir(shelf).isEmpty());
}

QTEST_MAIN(ScriptTest)
#include "script_test.moc"
