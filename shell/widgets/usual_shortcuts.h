#pragma once
// The keys a desktop user expects, given to the menu items of a window by
// their control names, without touching their captions: Ctrl+N New, Ctrl+O
// Open, Ctrl+S Save, Ctrl+P Print ("menuFile(10)", "(20)", "(30)", "(50)")
// and F5 Calculate! ("mnuFile(20)" of a model screen). F1 stays with each
// window's own help key. Items a window does not have are passed over.

class QWidget;

namespace bm {

void applyUsualShortcuts(QWidget* window);

}  // namespace bm
