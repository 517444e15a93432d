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

// The collector of texts knows this name: scripts/translations.sh.
#define T QT_TRANSLATE_NOOP
// In the order of the menus; a row without a name is a line between.
constexpr ActionRow kRows[] = {
    {T("Actions", "&Source"), "microscope", T("Actions", "&Simulated microscope"), "Ctrl+M",
     T("Actions", "Try everything without a camera: move the stage by the arrow keys"), "scope",
     true, false},
    {T("Actions", "&Source"), "camera", T("Actions", "&Camera…"), "Ctrl+K",
     T("Actions", "Take frames from a camera or a stream"), "camera", true, false},
    {T("Actions", "&Source"), "folder", T("Actions", "&Folder of pictures…"), "Ctrl+O",
     T("Actions", "Take the pictures of a folder as frames"), "folder", true, false},
    {T("Actions", "&Source"), "watch", T("Actions", "&Watched folder…"), "Ctrl+Shift+O",
     T("Actions", "Take pictures as they appear in a folder"), "watch", false, false},
    {T("Actions", "&Source"), "video", T("Actions", "&Video file…"), "Ctrl+D",
     T("Actions", "Take the frames of a video"), "video", false, false},
    {T("Actions", "&Source"), "recorded", T("Actions", "Re&corded run…"), "Ctrl+J",
     T("Actions", "Take the frames that the journal of an earlier run holds"), "recorded", false,
     false},
    {T("Actions", "&Source"), "batch", T("Actions", "Stitch &pictures…"), "Ctrl+Shift+D",
     T("Actions", "Stitch picture files as a batch, as dropping them on the window does"), "batch",
     true, false},
    {T("Actions", "&Source"), "slide", T("Actions", "Slide of the &microscope…"), "Ctrl+Shift+M",
     T("Actions", "Let the simulated microscope look at a picture"), "scope", false, false},
    {T("Actions", "&Source"), "hold", T("Actions", "&Hold the light"), "Ctrl+E",
     T("Actions", "Ask the camera to keep exposure and white balance as they are now"), "hold",
     false, true},
    {T("Actions", "&Source"), "", "", "", "", "", false, false},
    {T("Actions", "&Source"), "quit", T("Actions", "&Quit"), "Ctrl+Q",
     T("Actions", "End the program"), "quit", false, false},
    {T("Actions", "&Run"), "start", T("Actions", "&Start"), "F5",
     T("Actions", "Begin a run with the frame under the camera"), "start", true, false},
    {T("Actions", "&Run"), "pause", T("Actions", "&Pause"), "Space",
     T("Actions", "Look around without stitching; again to go on"), "pause", true, true},
    {T("Actions", "&Run"), "stop", T("Actions", "S&top"), "F6",
     T("Actions", "End the run or the batch; its picture stays"), "stop", true, false},
    {T("Actions", "&Run"), "new", T("Actions", "&New run"), "Ctrl+N",
     T("Actions", "Forget the picture and begin again"), "new", true, false},
    {T("Actions", "&Run"), "undo", T("Actions", "&Undo frame"), "Ctrl+Z",
     T("Actions", "Take the frame placed last out of the picture, several times if need be"),
     "undo", true, false},
    {T("Actions", "&Run"), "find", T("Actions", "&Find me when lost"), "Ctrl+L",
     T("Actions",
       "When lost, compare the frame with earlier places and go on where one agrees clearly"),
     "find", false, true},
    {T("Actions", "&Run"), "", "", "", "", "", false, false},
    {T("Actions", "&Run"), "settings", T("Actions", "S&ettings…"), "Ctrl+,",
     T("Actions", "How frames are judged, objectives and pixel size"), "settings", false, false},
    {T("Actions", "&Picture"), "save", T("Actions", "&Save"), "Ctrl+S",
     T("Actions", "Save the picture so far; the run goes on"), "save", true, false},
    {T("Actions", "&Picture"), "saveas", T("Actions", "Save &as…"), "Ctrl+Shift+S",
     T("Actions", "Save the picture so far under another name"), "saveas", false, false},
    {T("Actions", "&Picture"), "cancel", T("Actions", "Cancel sa&ving"), "Esc",
     T("Actions", "End the saving that goes on; an earlier file stays as it was"), "cancel", false,
     false},
    {T("Actions", "&Picture"), "copy", T("Actions", "&Copy view"), "Ctrl+C",
     T("Actions", "Copy what the view shows to the clipboard"), "copy", false, false},
    {T("Actions", "&Picture"), "", "", "", "", "", false, false},
    {T("Actions", "&Picture"), "trim", T("Actions", "&Trim to the frames"), "Ctrl+T",
     T("Actions", "Save the placed frames alone, without the empty canvas around"), "trim", false,
     true},
    {T("Actions", "&Picture"), "background", T("Actions", "&Background colour…"), "Ctrl+B",
     T("Actions", "The colour where nothing is, in the view and in saved pictures"), "colour",
     false, false},
    {T("Actions", "&Picture"), "noBackground", T("Actions", "Bac&kground black"), "Ctrl+Shift+B",
     T("Actions", "Leave black where nothing is"), "cancel", false, false},
    {T("Actions", "&View"), "fit", T("Actions", "&Fit"), "F",
     T("Actions", "Show the whole picture (double click does the same)"), "fit", true, false},
    {T("Actions", "&View"), "one", T("Actions", "&One to one"), "1",
     T("Actions", "One pixel of the picture on one of the screen"), "one", true, false},
    {T("Actions", "&View"), "zoomin", T("Actions", "Zoom &in"), "+",
     T("Actions", "Larger (the mouse wheel does the same)"), "zoomin", false, false},
    {T("Actions", "&View"), "zoomout", T("Actions", "Zoom o&ut"), "-",
     T("Actions", "Smaller (the mouse wheel does the same)"), "zoomout", false, false},
    {T("Actions", "&View"), "follow", T("Actions", "Follow the &camera"), "C",
     T("Actions", "Keep the frame under the camera in view"), "follow", true, true},
    {T("Actions", "&View"), "", "", "", "", "", false, false},
    {T("Actions", "&View"), "left", T("Actions", "Pan &left"), "Alt+Left",
     T("Actions", "Look further to the left"), "left", false, false},
    {T("Actions", "&View"), "right", T("Actions", "Pan &right"), "Alt+Right",
     T("Actions", "Look further to the right"), "right", false, false},
    {T("Actions", "&View"), "up", T("Actions", "Pan u&p"), "Alt+Up",
     T("Actions", "Look further up"), "up", false, false},
    {T("Actions", "&View"), "down", T("Actions", "Pan &down"), "Alt+Down",
     T("Actions", "Look further down"), "down", false, false},
    {T("Actions", "&View"), "", "", "", "", "", false, false},
    {T("Actions", "&View"), "theme", T("Actions", "&Theme"), "Ctrl+Shift+T",
     T("Actions", "Dark, light, or as the system has it"), "theme", false, false},
    {T("Actions", "&Help"), "help", T("Actions", "&How to move"), "F1",
     T("Actions", "What makes a run succeed, with pictures"), "help", true, false},
    {T("Actions", "&Help"), "about", T("Actions", "&About"), "Shift+F1",
     T("Actions", "The program and its version"), "about", false, false},
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
