#include <QApplication>
#include <QLocale>
#include <QSettings>
#include <QTranslator>
#include <clocale>
#include <cstdio>
#include <exception>
#include <opencv2/core/utils/logger.hpp>

#include "start/display_check.h"
#include "start/options.h"
#include "window/main_window.h"

namespace {

void NameProgram() {
  QCoreApplication::setApplicationName("jqscope");
  QCoreApplication::setApplicationVersion(JQSCOPE_VERSION);
  QCoreApplication::setOrganizationName("jqscope");
}

jqscope::ParsedOptions ReadCommandLine(int argc, char** argv) {
  // Help and errors need no display, so they are told before one is looked for.
  int count = argc;
  const QCoreApplication application(count, argv);
  return jqscope::ParseOptions(QCoreApplication::arguments());
}

int Run(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "");
  // The logs of the image library and of its video decoder would be a second voice.
  qputenv("OPENCV_FFMPEG_LOGLEVEL", "-8");
  cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
  NameProgram();
  const jqscope::ParsedOptions parsed = ReadCommandLine(argc, argv);
  std::fputs(qPrintable(parsed.out), stdout);
  std::fputs(qPrintable(parsed.err), stderr);
  if (!parsed.goOn) return parsed.exitCode;
  if (const char* why = jqscope::WhyNoDisplay()) {
    std::fprintf(stderr, "jqscope: %s\n", why);
    return 1;
  }
  jqscope::ExplainMissingDisplay();
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
  QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
  QApplication application(argc, argv);
  // Texts stay English where there is no translation.
  QTranslator translator;
  if (translator.load(QLocale(), "jqscope", "_",
                      QApplication::applicationDirPath() + "/../share/jqscope/translations")) {
    QApplication::installTranslator(&translator);
  }
  QSettings settings;
  jqscope::MainWindow window(parsed.options, parsed.options.fresh ? nullptr : &settings);
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "jqscope: %s\n", error.what());
    return 1;
  }
}
