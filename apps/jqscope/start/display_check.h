#ifndef JQSCOPE_START_DISPLAY_CHECK_H
#define JQSCOPE_START_DISPLAY_CHECK_H

namespace jqscope {

/// Why no window can be shown here, in one sentence; null when nothing speaks against it.
const char* WhyNoDisplay();

/// Turns the toolkit's abort at a display that does not answer into a plain sentence and
/// exit code 1.
void ExplainMissingDisplay();

}  // namespace jqscope

#endif  // JQSCOPE_START_DISPLAY_CHECK_H
