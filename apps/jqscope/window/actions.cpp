#include "window/actions.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "window/icons.h"

namespace jqscope {
namespace {

struct ActionRow {
  const char* menu;
  const char* name;
  const char* text;
  const char* keys;
  const char* tip;
  const char* icon;
  bool inBar;
  bool checkable;
};

#define T(text) QT_TRANSLATE_NOOP("Actions", text)
// In the order of the menus; a row without a name is a line between.
constexpr ActionRow kRows[] = {
    {T("&Source"), "microscope", T("&Simulated microscope"), "Ctrl+M",
     T("Try everything without a camera: move the stage by the arrow keys"), "scope", true, false},
    {T("&Source"), "camera", T("&Camera…"), "Ctrl+K", T("Take frames from a camera or a stream"),
     "camera", true, false},
    {T("&Source"), "folder", T("&Folder of pictures…"), "Ctrl+O",
     T("Take the pictures of a folder as frames"), "folder", true, false},
    {T("&Source"), "watch", T("&Watched folder…"), "Ctrl+Shift+O",
     T("Take pictures as they appear in a folder"), "watch", false, false},
    {T("&Source"), "video", T("&Video file…"), "Ctrl+D", T("Take the frames of a video"), "video",
     false, false},
    {T("&Source"), "slide", T("Slide of the &microscope…"), "Ctrl+Shift+M",
     T("Let the simulated microscope look at a picture"), "scope", false, false},
    {T("&Source"), "", "", "", "", "", false, false},
    {T("&Source"), "quit", T("&Quit"), "Ctrl+Q", T("End the program"), "quit", false, false},
    {T("&Run"), "start", T("&Start"), "F5", T("Begin a run with the frame under the camera"),
     "start", true, false},
    {T("&Run"), "pause", T("&Pause"), "Space", T("Look around without stitching; again to go on"),
     "pause", true, true},
    {T("&Run"), "stop", T("S&top"), "F6", T("End the run; its picture stays"), "stop", true, false},
    {T("&Run"), "new", T("&New run"), "Ctrl+N", T("Forget the picture and begin again"), "new",
     true, false},
    {T("&Run"), "undo", T("&Undo frame"), "Ctrl+Z",
     T("Take the frame placed last out of the picture, several times if need be"), "undo", true,
     false},
    {T("&Run"), "find", T("&Find me when lost"), "Ctrl+L",
     T("When lost, compare the frame with earlier places and go on where one agrees clearly"),
     "find", false, true},
    {T("&Run"), "", "", "", "", "", false, false},
    {T("&Run"), "settings", T("S&ettings…"), "Ctrl+,",
     T("How frames are judged, objectives and pixel size"), "settings", false, false},
    {T("&Picture"), "save", T("&Save"), "Ctrl+S", T("Save the picture so far; the run goes on"),
     "save", true, false},
    {T("&Picture"), "saveas", T("Save &as…"), "Ctrl+Shift+S",
     T("Save the picture so far under another name"), "saveas", false, false},
    {T("&Picture"), "cancel", T("Cancel sa&ving"), "Esc",
     T("End the saving that goes on; an earlier file stays as it was"), "cancel", false, false},
    {T("&Picture"), "copy", T("&Copy view"), "Ctrl+C",
     T("Copy what the view shows to the clipboard"), "copy", false, false},
    {T("&Picture"), "", "", "", "", "", false, false},
    {T("&Picture"), "trim", T("&Trim to the frames"), "Ctrl+T",
     T("Save the placed frames alone, without the empty canvas around"), "trim", false, true},
    {T("&Picture"), "background", T("&Background colour…"), "Ctrl+B",
     T("The colour where nothing is, in the view and in saved pictures"), "colour", false, false},
    {T("&Picture"), "noBackground", T("Bac&kground black"), "Ctrl+Shift+B",
     T("Leave black where nothing is"), "cancel", false, false},
    {T("&View"), "fit", T("&Fit"), "F", T("Show the whole picture (double click does the same)"),
     "fit", true, false},
    {T("&View"), "one", T("&One to one"), "1", T("One pixel of the picture on one of the screen"),
     "one", true, false},
    {T("&View"), "zoomin", T("Zoom &in"), "+", T("Larger (the mouse wheel does the same)"),
     "zoomin", false, false},
    {T("&View"), "zoomout", T("Zoom o&ut"), "-", T("Smaller (the mouse wheel does the same)"),
     "zoomout", false, false},
    {T("&View"), "follow", T("Follow the &camera"), "C",
     T("Keep the frame under the camera in view"), "follow", true, true},
    {T("&View"), "", "", "", "", "", false, false},
    {T("&View"), "left", T("Pan &left"), "Alt+Left", T("Look further to the left"), "left", false,
     false},
    {T("&View"), "right", T("Pan &right"), "Alt+Right", T("Look further to the right"), "right",
     false, false},
    {T("&View"), "up", T("Pan u&p"), "Alt+Up", T("Look further up"), "up", false, false},
    {T("&View"), "down", T("Pan &down"), "Alt+Down", T("Look further down"), "down", false, false},
    {T("&View"), "", "", "", "", "", false, false},
    {T("&View"), "theme", T("&Theme"), "Ctrl+Shift+T", T("Dark, light, or as the system has it"),
     "theme", false, false},
    {T("&Help"), "help", T("&How to move"), "F1", T("What makes a run succeed, with pictures"),
     "help", true, false},
    {T("&Help"), "about", T("&About"), "Shift+F1", T("The program and its version"), "about", false,
     false},
};
#undef T

QString ActionText(const char* text) {
  return QCoreApplication::translate("Actions", text);
}

}  // namespace

Actions::Actions(QMainWindow& window) {
  QHash<QString, QMenu*> menus;
  auto* bar = new QToolBar(QCoreApplication::translate("Actions", "Tools"), &window);
  bar->setObjectName("tools");
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  bar->setMovable(false);
  const char* lastMenu = "";
  for (const ActionRow& row : kRows) {
    QMenu*& menu = menus[row.menu];
    if (menu == nullptr) menu = window.menuBar()->addMenu(ActionText(row.menu));
    if (*row.name == '\0') {
      menu->addSeparator();
      continue;
    }
    auto* action = new QAction(ActionText(row.text), &window);
    action->setObjectName(row.name);
    action->setShortcut(QKeySequence(row.keys));
    action->setCheckable(row.checkable);
    action->setIconText(action->text().remove('&').remove("…"));
    action->setToolTip(ActionText(row.tip) + " (" +
                       action->shortcut().toString(QKeySequence::NativeText) + ")");
    action->setStatusTip(ActionText(row.tip));
    action->setWhatsThis(ActionText(row.tip));
    action->setProperty("drawing", row.icon);
    menu->addAction(action);
    if (row.inBar) {
      if (*lastMenu != '\0' && qstrcmp(lastMenu, row.menu) != 0) bar->addSeparator();
      lastMenu = row.menu;
      bar->addAction(action);
    }
    m_actions.insert(row.name, action);
  }
  window.addToolBar(bar);
}

void Actions::DrawIcons(const QColor& colour) {
  for (QAction* action : m_actions) {
    action->setIcon(DrawIcon(action->property("drawing").toString(), colour));
  }
}

}  // namespace jqscope
