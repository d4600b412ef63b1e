#pragma once
// Notes: the centred note pad for the title, the author or the comments.

#include <QDialog>

#include "shell/screen/notes_pad.h"

class QPlainTextEdit;
class QPushButton;

namespace bm {

class NotesDialog : public QDialog {
    Q_OBJECT
public:
    NotesDialog(NotesPad& pad, QWidget* parent = nullptr);
    QPlainTextEdit* cell() const { return cell_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void reject() override;

private:
    void ok();
    NotesPad& pad_;
    QPlainTextEdit* cell_;
};

}  // namespace bm
