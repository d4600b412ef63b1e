#pragma once
// pictureDest: the progress picture of a run, a bar with the percentage centred on it.

#include <QWidget>

namespace bm {

class ProgressPicture : public QWidget {
    Q_OBJECT
public:
    explicit ProgressPicture(QWidget* parent = nullptr);
    void setProgress(double total, double done);
    double total() const { return total_; }
    double done() const { return done_; }
    QString text() const;
    QSize sizeHint() const override { return {320, 22}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double total_ = 0;
    double done_ = 0;
};

}  // namespace bm
