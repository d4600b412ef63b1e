#include "apps/textviewer/widgets/find_bar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocument>
#include <QToolButton>

namespace bm::textviewer {

namespace {

constexpr int kMostMarks = 5000;  // marking more only slows the view

}  // namespace

FindBar::FindBar(QPlainTextEdit* target, QWidget* parent) : QWidget(parent), target_(target) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(new QLabel(tr("Find:")));
    field_ = new QLineEdit;
    field_->setObjectName("findField");
    field_->setClearButtonEnabled(true);
    field_->setMinimumWidth(220);
    field_->installEventFilter(this);
    layout->addWidget(field_);
    auto* previous = new QToolButton;
    previous->setText(tr("Previous"));
    previous->setToolTip(tr("Find the previous match (Shift+F3)"));
    auto* next = new QToolButton;
    next->setText(tr("Next"));
    next->setToolTip(tr("Find the next match (F3)"));
    layout->addWidget(previous);
    layout->addWidget(next);
    caseBox_ = new QCheckBox(tr("Match case"));
    caseBox_->setObjectName("matchCase");
    layout->addWidget(caseBox_);
    status_ = new QLabel;
    status_->setObjectName("findStatus");
    layout->addWidget(status_, 1);
    auto* close = new QToolButton;
    close->setText(QStringLiteral("\u2715"));
    close->setToolTip(tr("Close the find bar (Escape)"));
    layout->addWidget(close);

    connect(next, &QToolButton::clicked, this, &FindBar::findNext);
    connect(previous, &QToolButton::clicked, this, &FindBar::findPrevious);
    connect(close, &QToolButton::clicked, this, [this] {
        hide();
        target_->setFocus();
    });
    connect(caseBox_, &QCheckBox::toggled, this, [this] {
        markAll();
        find(false);
    });
    // Typing searches as it goes, from where the current match begins.
    connect(field_, &QLineEdit::textEdited, this, [this] {
        QTextCursor c = target_->textCursor();
        c.setPosition(c.selectionStart());
        target_->setTextCursor(c);
        markAll();
        if (!field_->text().isEmpty()) find(false);
        else status_->clear();
    });
}

void FindBar::setPattern(const QString& pattern) {
    field_->setText(pattern);
    markAll();
}

QString FindBar::pattern() const { return field_->text(); }

void FindBar::setCaseSensitive(bool on) { caseBox_->setChecked(on); }

bool FindBar::caseSensitive() const { return caseBox_->isChecked(); }

QString FindBar::status() const { return status_->text(); }

void FindBar::activate() {
    const QString selected = target_->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) field_->setText(selected);
    show();
    field_->setFocus();
    field_->selectAll();
    markAll();
}

bool FindBar::findNext() { return find(false); }

bool FindBar::findPrevious() { return find(true); }

bool FindBar::find(bool backward) {
    const QString what = field_->text();
    status_->clear();
    field_->setStyleSheet(QString());
    if (what.isEmpty()) return false;
    QTextDocument::FindFlags flags;
    if (backward) flags |= QTextDocument::FindBackward;
    if (caseBox_->isChecked()) flags |= QTextDocument::FindCaseSensitively;
    if (target_->find(what, flags)) return true;
    // Wrap around: start again from the other end.
    const QTextCursor before = target_->textCursor();
    QTextCursor from(target_->document());
    from.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
    target_->setTextCursor(from);
    if (target_->find(what, flags)) {
        status_->setText(tr("Search wrapped around"));
        return true;
    }
    target_->setTextCursor(before);
    status_->setText(tr("Not found"));
    field_->setStyleSheet(QStringLiteral("QLineEdit { background: #f8d7d7; }"));
    return false;
}

void FindBar::markAll() {
    QList<QTextEdit::ExtraSelection> marks;
    matches_ = 0;
    const QString what = field_->text();
    if (!what.isEmpty()) {
        QTextCharFormat mark;
        mark.setBackground(QColor(255, 236, 140));
        const QTextDocument::FindFlags flags = caseBox_->isChecked() ? QTextDocument::FindCaseSensitively : QTextDocument::FindFlags();
        QTextCursor c = target_->document()->find(what, 0, flags);
        while (!c.isNull()) {
            ++matches_;
            if (marks.size() < kMostMarks) marks.append({c, mark});
            c = target_->document()->find(what, c, flags);
        }
    }
    target_->setExtraSelections(marks);
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        hide();
        target_->setExtraSelections({});
        target_->setFocus();
        return;
    }
    QWidget::keyPressEvent(event);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            find(key->modifiers() & Qt::ShiftModifier);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace bm::textviewer
