#ifndef JQSCOPE_WINDOW_ICONS_H
#define JQSCOPE_WINDOW_ICONS_H

#include <QColor>
#include <QIcon>
#include <QString>

namespace jqscope {

/// A line drawing by name ("start", "save", ...), in this colour, so that it fits the
/// theme and any resolution.
QIcon DrawIcon(const QString& name, const QColor& colour);

/// The program's own icon.
QIcon ProgramIcon();

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_ICONS_H
