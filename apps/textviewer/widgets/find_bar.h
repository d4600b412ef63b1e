#pragma once
// The viewer's find bar: searches the text forwards and backwards, with or
// without regard to case, wraps around at either end, and marks every match.
// Enter finds the next match, Shift+Enter the previous, Escape closes the bar.

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace bm::textviewer {

class FindBar : public QWidget {
    Q_OBJECT
public:
    explicit FindBar(QPlainTextEdit* target, QWidget* parent = nullptr);

    void setPattern(const QString& pattern);
    QString pattern() const;
    void setCaseSensitive(bool on);
    bool caseSensitive() const;
    // Shows the bar and puts the focus in its field, with the selection as the pattern.
    void activate();

    // Each selects the match found and returns false when there is none.
    bool findNext();
    bool findPrevious();
    int matchCount() const { return matches_; }
    // "", "Not found" or "Search wrapped around".
    QString status() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool find(bool backward);
    void markAll();

    QPlainTextEdit* target_;
    QLineEdit* field_;
    QCheckBox* caseBox_;
    QLabel* status_;
    int matches_ = 0;
};

}  // namespace bm::textviewer
