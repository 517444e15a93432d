#include "settings/preferences.h"

#include <QCoreApplication>
#include <QSettings>
#include <algorithm>

namespace jqscope {
namespace {

struct PreferenceWords {
  Q_DECLARE_TR_FUNCTIONS(Preferences)
};

int Number(const QSettings& settings, const char* key, int otherwise, int least, int most) {
  bool good = false;
  const int value = settings.value(key, otherwise).toInt(&good);
  return good ? std::clamp(value, least, most) : otherwise;
}

}  // namespace

Preferences Preferences::Load(const QSettings& settings) {
  Preferences p;
  jqhost::StitchSettings& stitch = p.run.stitch;
  stitch.overlapMode = Number(settings, "run/overlapMode", stitch.overlapMode, 0, 1);
  stitch.detectLevel = Number(settings, "run/detectLevel", stitch.detectLevel, 1, 7);
  stitch.cornerBudget = Number(settings, "run/cornerBudget", stitch.cornerBudget, 0, 100);
  p.run.mostMemory = std::max<std::int64_t>(0, settings.value("run/mostMemory", 0).toLongLong());
  p.run.preparation.flat = settings.value("run/flat").toString().toLocal8Bit().toStdString();
  p.run.preparation.dark = settings.value("run/dark").toString().toLocal8Bit().toStdString();
  p.trim = settings.value("save/trim", true).toBool();
  const QColor colour(settings.value("save/background").toString());
  if (colour.isValid()) p.background = colour;
  p.theme = static_cast<Theme>(Number(settings, "window/theme", 0, 0, 2));
  p.source = settings.value("source").toString();
  p.saveFolder = settings.value("save/folder").toString();
  p.findMe = settings.value("run/findMe", true).toBool();
  p.journal = static_cast<JournalKeeping>(Number(settings, "run/journal", 1, 0, 2));
  for (const QString& entry : settings.value("objectives").toStringList()) {
    const int cut = entry.lastIndexOf('=');
    if (cut <= 0) continue;
    p.objectives.append({entry.left(cut), std::max(0.0, entry.mid(cut + 1).toDouble())});
  }
  if (p.objectives.isEmpty()) p.objectives.append({PreferenceWords::tr("Unknown objective"), 0.0});
  p.objective = Number(settings, "objective", 0, 0, static_cast<int>(p.objectives.size()) - 1);
  return p;
}

void Preferences::Save(QSettings& settings) const {
  settings.setValue("run/overlapMode", run.stitch.overlapMode);
  settings.setValue("run/detectLevel", run.stitch.detectLevel);
  settings.setValue("run/cornerBudget", run.stitch.cornerBudget);
  settings.setValue("run/mostMemory", static_cast<qlonglong>(run.mostMemory));
  settings.setValue("run/flat", QString::fromLocal8Bit(run.preparation.flat.c_str()));
  settings.setValue("run/dark", QString::fromLocal8Bit(run.preparation.dark.c_str()));
  settings.setValue("save/trim", trim);
  settings.setValue("save/background", background ? background->name() : QString());
  settings.setValue("window/theme", static_cast<int>(theme));
  settings.setValue("source", source);
  settings.setValue("save/folder", saveFolder);
  settings.setValue("run/findMe", findMe);
  settings.setValue("run/journal", static_cast<int>(journal));
  QStringList entries;
  for (const Objective& o : objectives) entries << o.name + "=" + QString::number(o.micrometres);
  settings.setValue("objectives", entries);
  settings.setValue("objective", objective);
}

}  // namespace jqscope
