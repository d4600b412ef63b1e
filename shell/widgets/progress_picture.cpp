#include "shell/widgets/progress_picture.h"

#include <QPainter>

#include "shell/screen/screen_model.h"

namespace bm {

ProgressPicture::ProgressPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("pictureDest"));
    setMinimumSize(200, 20);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressPicture::setProgress(double total, double done) {
    // Repaint only when the picture changes (the bar's width or the percentage):
    // a run reports every point, and painting each one would dominate a long run.
    const int oldWidth = static_cast<int>(progressFraction(total_, done_) * width());
    const QString oldText = text();
    total_ = total;
    done_ = done;
    if (static_cast<int>(progressFraction(total_, done_) * width()) != oldWidth || text() != oldText) update();
}

QString ProgressPicture::text() const { return QString::fromStdString(progressPercentText(total_, done_)); }

void ProgressPicture::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QRect frame = rect().adjusted(0, 0, -1, -1);
    p.fillRect(frame, palette().base());
    const int filled = static_cast<int>(progressFraction(total_, done_) * frame.width());
    p.fillRect(QRect(frame.left(), frame.top(), filled, frame.height()), QColor(0, 0, 160));
    p.setPen(palette().color(QPalette::WindowText));
    p.drawRect(frame);
    // The percentage reads in both halves: white over the bar, dark beside it.
    const QString label = text();
    p.setClipRect(QRect(frame.left(), frame.top(), filled, frame.height()));
    p.setPen(Qt::white);
    p.drawText(frame, Qt::AlignCenter, label);
    p.setClipRect(QRect(frame.left() + filled, frame.top(), frame.width() - filled + 1, frame.height()));
    p.setPen(palette().color(QPalette::WindowText));
    p.drawText(frame, Qt::AlignCenter, label);
}

}  // namespace bm
