#ifndef JQSCOPE_WINDOW_THEME_H
#define JQSCOPE_WINDOW_THEME_H

#include "settings/preferences.h"

namespace jqscope {

/// Gives the whole application light or dark colours, or those of the system.
void ApplyTheme(Theme theme);

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_THEME_H
