#ifndef JQSCOPE_SETTINGS_PREFERENCES_H
#define JQSCOPE_SETTINGS_PREFERENCES_H

#include <QColor>
#include <QString>
#include <QVector>
#include <optional>

#include "work/run_settings.h"

class QSettings;

namespace jqscope {

/// An objective and the size of a camera pixel seen through it.
struct Objective {
  QString name;
  double micrometres = 0;  ///< of a pixel; 0: not known
};

enum class Theme { kSystem, kLight, kDark };

/// How long the journal of a run is kept.
enum class JournalKeeping {
  kNone,      ///< none is written
  kUntilEnd,  ///< until the run has ended
  kAlways,
};

/// What a person has chosen, kept between starts.
struct Preferences {
  RunSettings run;
  bool trim = true;
  std::optional<QColor> background;
  Theme theme = Theme::kSystem;
  QString source;  ///< as `ChooseSource` reads it
  QString saveFolder;
  QVector<Objective> objectives;
  int objective = 0;  ///< the one in use
  bool findMe = true;
  JournalKeeping journal = JournalKeeping::kUntilEnd;

  double PixelSize() const {
    return objective >= 0 && objective < objectives.size() ? objectives[objective].micrometres : 0;
  }

  static Preferences Load(const QSettings& settings);
  void Save(QSettings& settings) const;
};

}  // namespace jqscope

#endif  // JQSCOPE_SETTINGS_PREFERENCES_H
