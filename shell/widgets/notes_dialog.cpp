#include "shell/widgets/notes_dialog.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace bm {

NotesDialog::NotesDialog(NotesPad& pad, QWidget* parent) : QDialog(parent), pad_(pad) {
    setObjectName(QStringLiteral("Notes"));
    setWindowTitle(QString::fromStdString(pad.caption()));
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    cell_ = new QPlainTextEdit(this);
    cell_->setObjectName(QStringLiteral("NotesText"));
    cell_->setPlainText(QString::fromStdString(pad.text));
    cell_->installEventFilter(this);
    layout->addWidget(cell_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* okButton = new QPushButton(QStringLiteral("&OK"), this);
    okButton->setObjectName(QStringLiteral("okCB"));
    auto* cancelButton = new QPushButton(QStringLiteral("&Cancel"), this);
    cancelButton->setObjectName(QStringLiteral("cancelCB"));
    buttons->addWidget(okButton);
    buttons->addWidget(cancelButton);
    layout->addLayout(buttons);
    connect(okButton, &QPushButton::clicked, this, [this] { ok(); });
    connect(cancelButton, &QPushButton::clicked, this, [this] { reject(); });
    resize(460, 260);
    if (parent) move(parent->geometry().center() - rect().center());
}

void NotesDialog::ok() {
    pad_.text = cell_->toPlainText().toStdString();
    pad_.ok();
    cell_->clear();
    accept();
}

void NotesDialog::reject() {
    pad_.cancel();
    QDialog::reject();
}

bool NotesDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == cell_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {  // Enter is taken as OK
            ok();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace bm
