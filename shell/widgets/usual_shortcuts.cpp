#include "shell/widgets/usual_shortcuts.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QWidget>

namespace bm {

void applyUsualShortcuts(QWidget* window) {
    const struct {
        const char* item;
        QKeySequence keys;
    } shortcuts[] = {
        {"menuFile(10)", QKeySequence::New},   {"menuFile(20)", QKeySequence::Open},
        {"menuFile(30)", QKeySequence::Save},  {"menuFile(50)", QKeySequence::Print},
        {"mnuFile(20)", QKeySequence(Qt::Key_F5)},
    };
    for (const auto& s : shortcuts)
        for (QAction* a : window->findChildren<QAction*>(QString::fromLatin1(s.item)))
            if (!a->menu()) a->setShortcut(s.keys);
}

}  // namespace bm
