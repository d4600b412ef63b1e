#include "shell/widgets/numeric_key_filter.h"

#include <QKeyEvent>
#include <QWidget>

#include "shell/base/common_services.h"

namespace bm {

NumericKeyFilter* NumericKeyFilter::instance() {
    static NumericKeyFilter* filter = new NumericKeyFilter;
    return filter;
}

bool NumericKeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    // The key-down of a numeric cell notes the Shift key for the key filter.
    shiftHeld = key->modifiers().testFlag(Qt::ShiftModifier);
    const QString text = key->text();
    if (text.size() != 1) return false;  // arrows, function keys: no character
    const int code = text.at(0).unicode();
    if (code < 33) return false;  // control keys and the blank pass
    if (code > 126) return true;  // outside the printable set nothing is a number
    return filterNumericKey(code) == 0;
}

}  // namespace bm
