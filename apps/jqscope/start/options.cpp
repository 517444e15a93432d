#include "start/options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <opencv2/core/version.hpp>

namespace jqscope {
namespace {

struct OptionWords {
  Q_DECLARE_TR_FUNCTIONS(Options)
};

struct Switch {
  const char* name;
  const char* text;
  const char* value;  // its name; null: none
};

constexpr Switch kSwitches[] = {
    {"source",
     QT_TRANSLATE_NOOP("Options",
                       "where frames come from: a folder, pictures' folder, video file, camera "
                       "number, stream address, or 'microscope' for the simulated one"),
     "SOURCE"},
    {"slide", QT_TRANSLATE_NOOP("Options", "a picture for the simulated microscope to look at"),
     "FILE"},
    {"run", QT_TRANSLATE_NOOP("Options", "starts the run at once"), nullptr},
    {"save", QT_TRANSLATE_NOOP("Options", "saves the picture there when the source has ended"),
     "FILE"},
    {"quit", QT_TRANSLATE_NOOP("Options", "closes the window when that is done"), nullptr},
    {"no-trim", QT_TRANSLATE_NOOP("Options", "saves the whole canvas, not the placed frames alone"),
     nullptr},
    {"overlap-mode",
     QT_TRANSLATE_NOOP("Options", "fitness of a frame: 0 by overlap, 1 by little motion"), "0|1"},
    {"detect-level", QT_TRANSLATE_NOOP("Options", "works at 1/N of the size, 1 to 7"), "N"},
    {"corner-budget", QT_TRANSLATE_NOOP("Options", "more corners, slower and surer, 0 to 100"),
     "N"},
    {"theme", QT_TRANSLATE_NOOP("Options", "light, dark or system"), "NAME"},
    {"journal",
     QT_TRANSLATE_NOOP("Options",
                       "keeps the journals of runs, by which they are taken up after a crash, "
                       "there; a script keeps none without this"),
     "FOLDER"},
    {"fresh", QT_TRANSLATE_NOOP("Options", "neither reads nor keeps settings"), nullptr},
};

bool TakeNumber(const QCommandLineParser& parser, const char* name, int least, int most,
                std::optional<int>& number, QString& error) {
  if (!parser.isSet(name)) return true;
  bool good = false;
  const int value = parser.value(name).toInt(&good);
  if (good && value >= least && value <= most) {
    number = value;
    return true;
  }
  error = OptionWords::tr("--%1 takes a number from %2 to %3, not '%4'")
              .arg(QString(name))
              .arg(least)
              .arg(most)
              .arg(parser.value(name));
  return false;
}

bool TakeTheme(const QString& name, std::optional<Theme>& theme, QString& error) {
  if (name.isEmpty()) return true;
  if (name == "light") theme = Theme::kLight;
  if (name == "dark") theme = Theme::kDark;
  if (name == "system") theme = Theme::kSystem;
  if (!theme) error = OptionWords::tr("--theme takes light, dark or system, not '%1'").arg(name);
  return theme.has_value();
}

QString Examples() {
  return OptionWords::tr(
      "Examples:\n"
      "  jqscope                                   the last source, or a simulated "
      "microscope\n"
      "  jqscope --source 0 --run                  the first camera\n"
      "  jqscope --source frames/ --run --save mosaic.png --quit\n"
      "\nWith --run, --save and --quit it does what the buttons do and ends: 0 saved, "
      "1 not saved, 2 wrong usage.\n");
}

}  // namespace

ParsedOptions ParseOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      OptionWords::tr("Shows a mosaic grow while you move the microscope's stage."));
  for (const Switch& s : kSwitches) {
    QCommandLineOption option(s.name, OptionWords::tr(s.text));
    if (s.value != nullptr) option.setValueName(s.value);
    parser.addOption(option);
  }
  parser.addPositionalArgument("SOURCE", OptionWords::tr("the same as --source"), "[SOURCE]");
  const QCommandLineOption help({"h", "help"}, OptionWords::tr("prints this"));
  const QCommandLineOption version({"v", "version"}, OptionWords::tr("prints the version"));
  parser.addOption(help);
  parser.addOption(version);

  ParsedOptions parsed;
  Options& o = parsed.options;
  QString error;
  if (!parser.parse(arguments)) {
    error = parser.errorText();
  } else if (parser.isSet(help)) {
    parsed.out = parser.helpText() + "\n" + Examples();
    return parsed;
  } else if (parser.isSet(version)) {
    parsed.out = QString("jqscope %1 (Qt %2, OpenCV %3)\n")
                     .arg(QCoreApplication::applicationVersion(), qVersion(), CV_VERSION);
    return parsed;
  }
  o.source = parser.value("source");
  const QStringList words = parser.positionalArguments();
  if (error.isEmpty() && words.size() > (o.source.isEmpty() ? 1 : 0)) {
    error = OptionWords::tr("one source can be given, and '%1' is one more").arg(words.last());
  }
  if (o.source.isEmpty() && !words.isEmpty()) o.source = words.first();
  o.run = parser.isSet("run");
  o.save = parser.value("save");
  o.journal = parser.value("journal");
  o.quit = parser.isSet("quit");
  o.microscope.slide = parser.value("slide").toLocal8Bit().toStdString();
  o.noTrim = parser.isSet("no-trim");
  o.fresh = parser.isSet("fresh");
  if (error.isEmpty()) {
    const bool good = TakeNumber(parser, "overlap-mode", 0, 1, o.overlapMode, error) &&
                      TakeNumber(parser, "detect-level", 1, 7, o.detectLevel, error) &&
                      TakeNumber(parser, "corner-budget", 0, 100, o.cornerBudget, error) &&
                      TakeTheme(parser.value("theme"), o.theme, error);
    if (good && o.quit && !o.run) error = OptionWords::tr("--quit waits for a run: add --run");
    if (good && !o.save.isEmpty() && !o.run)
      error = OptionWords::tr("--save needs a run: add --run");
  }
  if (!error.isEmpty()) {
    parsed.err = "jqscope: " + error + "\n" + OptionWords::tr("Try 'jqscope --help'.") + "\n";
    parsed.exitCode = 2;
    return parsed;
  }
  parsed.goOn = true;
  return parsed;
}

}  // namespace jqscope
