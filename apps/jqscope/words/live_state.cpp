#include "words/live_state.h"

#include <QCoreApplication>

#include "host/verdict/standing.h"

namespace jqscope {
namespace {

QString StateWord(const char* text) {
  return QCoreApplication::translate("LiveState", text);
}

}  // namespace

LiveState LiveStateOf(const jqhost::FrameResult& result) {
  if (result.cause == jqhost::Cause::kShiftTooLarge) return LiveState::kTooFar;
  switch (jqhost::StandingOf(result)) {
    case jqhost::Standing::kPlaced:
      return LiveState::kPlaced;
    case jqhost::Standing::kTracked:
      return LiveState::kTracked;
    case jqhost::Standing::kLost:
      return LiveState::kLost;
    case jqhost::Standing::kUnusable:
      return LiveState::kUnusable;
    case jqhost::Standing::kNotReached:
      break;
  }
  return LiveState::kNone;
}

// Colours that people with any colour vision tell apart, on dark and on light ground.
LiveStyle StyleOf(LiveState state) {
  switch (state) {
    case LiveState::kPlaced:
      return {QColor(0, 158, 115), Qt::SolidLine,
              StateWord(QT_TRANSLATE_NOOP("LiveState", "placed"))};
    case LiveState::kTracked:
      return {QColor(30, 136, 229), Qt::DashLine,
              StateWord(QT_TRANSLATE_NOOP("LiveState", "tracked"))};
    case LiveState::kTooFar:
      return {QColor(230, 159, 0), Qt::DashDotLine,
              StateWord(QT_TRANSLATE_NOOP("LiveState", "too far"))};
    case LiveState::kLost:
      return {QColor(213, 70, 0), Qt::DotLine, StateWord(QT_TRANSLATE_NOOP("LiveState", "lost"))};
    case LiveState::kUnusable:
      return {QColor(150, 60, 140), Qt::DotLine,
              StateWord(QT_TRANSLATE_NOOP("LiveState", "unusable"))};
    case LiveState::kNone:
      break;
  }
  return {QColor(128, 128, 128), Qt::SolidLine,
          StateWord(QT_TRANSLATE_NOOP("LiveState", "live view"))};
}

}  // namespace jqscope
