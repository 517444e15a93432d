// Makes the pictures of the documentation: drives the window as a person would and takes
// pictures of it.
//
// usage: scope_screenshots FOLDER [WIDTHxHEIGHT] [light|dark]
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <opencv2/imgcodecs.hpp>

#include "host/simulate/slide.h"
#include "scope/session_driver.h"
#include "window/camera_dialog.h"
#include "window/settings_dialog.h"

namespace {

class Studio {
 public:
  Studio(const QString& folder, QSize size, const QString& theme)
      : m_folder(folder), m_theme(theme) {
    jqscope::Options options = SessionDriver::FreshOptions();
    options.theme = theme == "dark" ? jqscope::Theme::kDark : jqscope::Theme::kLight;
    m_driver = std::make_unique<SessionDriver>(options, cv::Size(640, 480), cv::Size(4000, 3000));
    m_driver->Window().resize(size);
    m_suffix = QString("%1-%2").arg(size.width()).arg(theme);
  }

  bool Take(const QString& name) { return Take(name, m_driver->Window()); }

  bool Take(const QString& name, QWidget& widget) {
    QTest::qWait(60);
    const QString path = m_folder + "/" + name + "-" + m_suffix + ".png";
    const bool saved = widget.grab().save(path);
    std::printf("%s%s\n", qPrintable(path), saved ? "" : ": cannot be written");
    return saved;
  }

  // A row of files with one of another size and one that is no picture.
  bool TakeBatch() {
    const QTemporaryDir files;
    const cv::Mat slide = jqhost::PaintSlide(cv::Size(2400, 1200), 3);
    QStringList paths;
    for (int i = 1; i <= 12; ++i) {
      paths << files.filePath(QString("section %1.png").arg(i));
      const cv::Size size = i == 5 ? cv::Size(600, 400) : cv::Size(640, 480);
      cv::imwrite(paths.last().toStdString(),
                  slide(cv::Rect(cv::Point(100 + 130 * i, 30 * i), size)));
    }
    QFile text(paths[8]);
    if (!text.open(QIODevice::WriteOnly) || text.write("no picture") < 0) return false;
    text.close();
    m_driver->Window().StitchFiles(paths);
    const bool done = QTest::qWaitFor(
        [this] {
          return m_driver->Report().batch && m_driver->Report().phase == jqscope::RunPhase::kEnded;
        },
        60000);
    return Take("batch") && done;
  }

  bool TakeDialogs() {
    jqscope::Preferences preferences;
    preferences.objectives = {{"4×", 1.625}, {"10×", 0.65}};
    jqscope::SettingsDialog settings(preferences, &m_driver->Window());
    settings.show();
    jqscope::CameraDialog camera(QString(), &m_driver->Window());
    QTest::qWait(300);
    camera.Offer({{{0, "Microscope camera", {{cv::Size(2592, 1944), 7.5}}}}, {}});
    camera.show();
    return Take("settings", settings) && Take("camera", camera);
  }

  bool TakeAll() {
    SessionDriver& d = *m_driver;
    bool good = Take("live");
    d.StartRun();
    d.Move(Qt::Key_Right, 18);
    d.Move(Qt::Key_Down, 12);
    d.Move(Qt::Key_Left, 14);
    good = Take("tracked") && good;
    d.Move(Qt::Key_Down, 9);
    d.Move(Qt::Key_Right, 9);
    good = Take("placed") && good;
    // Out of focus while the stage moves on, so that the place is lost and the way is not.
    constexpr int kSteps = 45;
    jqhost::CameraEffects effects;
    effects.blur = 6;
    d.Window().Work().Microscope().SetEffects(effects);
    d.Move(Qt::Key_Right, kSteps);
    d.Window().Work().Microscope().SetEffects({});
    d.WaitForFrame();
    const bool lost =
        QTest::qWaitFor([&d] { return d.Report().state == jqscope::LiveState::kLost; }, 20000);
    good = Take("lost") && lost && good;
    d.Move(Qt::Key_Left, kSteps);
    d.Move(Qt::Key_Right, 5);
    d.Key(Qt::Key_1);
    good = Take("one") && good;
    d.Key(Qt::Key_F);
    d.Key(Qt::Key_Space);
    good = Take("paused") && good;
    return TakeBatch() && TakeDialogs() && good;
  }

 private:
  QString m_folder, m_theme, m_suffix;
  std::unique_ptr<SessionDriver> m_driver;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList words = QApplication::arguments();
  if (words.size() < 2) {
    std::fprintf(stderr, "usage: scope_screenshots FOLDER [WIDTHxHEIGHT] [light|dark]\n");
    return 2;
  }
  const QStringList size = words.value(2, "1366x768").split('x');
  QDir().mkpath(words[1]);
  Studio studio(words[1], QSize(size.value(0).toInt(), size.value(1).toInt()),
                words.value(3, "light"));
  return studio.TakeAll() ? 0 : 1;
}
