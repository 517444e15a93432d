#ifndef JQSCOPE_WINDOW_HELP_PAGE_H
#define JQSCOPE_WINDOW_HELP_PAGE_H

class QWidget;

namespace jqscope {

/// Opens the short page on how to move, with drawings.
void ShowHelp(QWidget* parent);

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_HELP_PAGE_H
