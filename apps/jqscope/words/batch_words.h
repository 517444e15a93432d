#ifndef JQSCOPE_WORDS_BATCH_WORDS_H
#define JQSCOPE_WORDS_BATCH_WORDS_H

#include <QString>

#include "work/run_report.h"

namespace jqscope {

/// How far a batch is, or what it came to, in one sentence.
QString BatchSentence(const RunReport& report);

/// The name of the file without its folder; "stack.tif page 3" for a page.
QString FileName(const jqhost::FrameResult& result);

/// A file that is not in the picture, and why: "b.png: other size (320 × 240 instead of
/// 640 × 480)".
QString LeftOutText(const jqhost::FrameResult& result);

}  // namespace jqscope

#endif  // JQSCOPE_WORDS_BATCH_WORDS_H
