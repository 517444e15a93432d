#ifndef JQSCOPE_WINDOW_ACTIONS_H
#define JQSCOPE_WINDOW_ACTIONS_H

#include <QAction>
#include <QHash>
#include <QString>

class QMainWindow;
class QToolBar;

namespace jqscope {

/// All that a person can do, by name: each with a text, a shortcut, an icon, a tool tip
/// and a place in the menu.
class Actions {
 public:
  /// Makes the actions, the menus and the tool bar of the window, which owns them.
  explicit Actions(QMainWindow& window);

  /// @param name as in the table of the source, for example "start"
  QAction* operator[](const QString& name) const { return m_actions.value(name); }
  QList<QAction*> All() const { return m_actions.values(); }
  /// Draws the icons again in the colour of the text.
  void DrawIcons(const QColor& colour);

 private:
  QHash<QString, QAction*> m_actions;
};

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_ACTIONS_H
