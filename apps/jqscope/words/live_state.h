#ifndef JQSCOPE_WORDS_LIVE_STATE_H
#define JQSCOPE_WORDS_LIVE_STATE_H

#include <QColor>
#include <QString>
#include <Qt>

#include "host/verdict/frame_result.h"

namespace jqscope {

/// How the frame under the camera stands to the mosaic, as a person needs to know it.
enum class LiveState {
  kNone,  ///< nothing is being stitched
  kPlaced,
  kTracked,   ///< not yet far enough from the frame placed last
  kTooFar,    ///< measured, but too far to be placed
  kLost,      ///< it shows something, but not where it lies
  kUnusable,  ///< no frame of this run
};

LiveState LiveStateOf(const jqhost::FrameResult& result);

/// How a state is shown: never by the colour alone.
struct LiveStyle {
  QColor colour;
  Qt::PenStyle line;
  QString word;
};
LiveStyle StyleOf(LiveState state);

}  // namespace jqscope

#endif  // JQSCOPE_WORDS_LIVE_STATE_H
