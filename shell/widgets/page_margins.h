#pragma once
// The margins every printed page of the suite keeps at least, whatever the
// printer offers: 20 mm on the left (to hold and file the sheet) and 15 mm
// elsewhere, on A4 and Letter alike. Header-only, so that the companion
// programs print alike without the workbench's libraries.

#include <QMarginsF>
#include <QPageLayout>
#include <QPrinter>
#include <algorithm>

namespace bm {

inline void keepLeastMargins(QPrinter& printer) {
    const QMarginsF m = printer.pageLayout().margins(QPageLayout::Millimeter);
    const QMarginsF least(std::max(m.left(), 20.0), std::max(m.top(), 15.0), std::max(m.right(), 15.0),
                          std::max(m.bottom(), 15.0));
    printer.setFullPage(false);
    if (least != m) printer.setPageMargins(least, QPageLayout::Millimeter);
}

}  // namespace bm
