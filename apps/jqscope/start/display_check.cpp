#include "start/display_check.h"

#include <QString>
#include <QtGlobal>
#include <cstdio>
#include <cstdlib>

namespace jqscope {
namespace {

void OnMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs("jqscope: the display cannot be used: no window can be opened\n", stderr);
    std::_Exit(1);
  }
  // What the toolkit has to tell is no help to a person.
  if (text.startsWith("jqscope: ")) std::fprintf(stderr, "%s\n", qPrintable(text));
}

}  // namespace

const char* WhyNoDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
  const bool anyDisplay = qEnvironmentVariableIsSet("DISPLAY") ||
                          qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                          qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
  if (!anyDisplay) {
    return "there is no display to open a window on (for a script, set "
           "QT_QPA_PLATFORM=offscreen)";
  }
#endif
  return nullptr;
}

void ExplainMissingDisplay() {
  qInstallMessageHandler(OnMessage);
}

}  // namespace jqscope
