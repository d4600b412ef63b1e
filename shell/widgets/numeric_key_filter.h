#pragma once
// The key filter of the number and range cells: with Shift not held, a key
// outside "+-.0123456789:Ee" (and the control keys) is refused.

#include <QObject>

namespace bm {

class NumericKeyFilter : public QObject {
    Q_OBJECT
public:
    explicit NumericKeyFilter(QObject* parent = nullptr) : QObject(parent) {}
    // Shared by every cell of the process.
    static NumericKeyFilter* instance();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace bm
