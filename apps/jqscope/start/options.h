#ifndef JQSCOPE_START_OPTIONS_H
#define JQSCOPE_START_OPTIONS_H

#include <QString>
#include <QStringList>
#include <optional>

#include "settings/preferences.h"
#include "source/simulated_microscope.h"

namespace jqscope {

/// What the command line asks for.
struct Options {
  QString source;     ///< empty: the one of the last start
  bool run = false;   ///< starts a run at once
  QString save;       ///< saves there when the source ends
  bool quit = false;  ///< and closes the window then
  std::optional<Theme> theme;
  std::optional<int> overlapMode, detectLevel, cornerBudget;
  bool noTrim = false;
  MicroscopeOptions microscope;
  QString journal;     ///< the shelf of the runs' journals; empty: as the settings have it
  bool fresh = false;  ///< reads and writes no settings

  /// A script that wants the same from every start, whatever a person has set.
  bool IsScript() const { return run && quit; }
};

/// What reading the command line came to.
struct ParsedOptions {
  Options options;
  bool goOn = false;  ///< else the program ends with `exitCode`
  int exitCode = 0;
  QString out, err;  ///< to be printed first
};

/// Needs an application object, no display.
ParsedOptions ParseOptions(const QStringList& arguments);

}  // namespace jqscope

#endif  // JQSCOPE_START_OPTIONS_H
