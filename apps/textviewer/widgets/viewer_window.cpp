#include "apps/textviewer/widgets/viewer_window.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

#include "apps/textviewer/text_decoding.h"
#include "apps/textviewer/widgets/fixed_pitch_font.h"
#include "apps/textviewer/widgets/find_bar.h"
#include "apps/textviewer/widgets/text_printing.h"

namespace bm::textviewer {

namespace {

constexpr qint64 kLargestFile = 256LL * 1024 * 1024;  // beyond this the view would crawl

}  // namespace

bool readTextFile(const QString& path, QString& text, QString* error) {
    const QFileInfo info(path);
    auto fail = [&](const QString& why) {
        if (error) *error = why;
        return false;
    };
    if (!info.exists()) return fail(QObject::tr("The file does not exist."));
    if (info.isDir()) return fail(QObject::tr("This is a folder, not a file."));
    if (info.size() > kLargestFile) return fail(QObject::tr("The file is too large to view (%1 MB).").arg(info.size() >> 20));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return fail(QObject::tr("The file cannot be read: %1.").arg(file.errorString()));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) return fail(QObject::tr("The file cannot be read: %1.").arg(file.errorString()));
    text = QString::fromStdString(decodeText(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
    return true;
}

ViewerWindow::ViewerWindow(QWidget* parent) : QMainWindow(parent) {
    setWindowTitle(tr("Text Viewer"));
    editor_ = new QPlainTextEdit;
    editor_->setObjectName("text");
    editor_->setReadOnly(true);
    // Keep a visible cursor for moving and selecting with the keyboard.
    editor_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    editor_->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont font = fixedPitchFont();
    fontSize_ = font.pointSizeF() > 0 ? font.pointSizeF() : 10;
    editor_->setFont(font);
    findBar_ = new FindBar(editor_);
    findBar_->setObjectName("findBar");
    findBar_->hide();

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(editor_, 1);
    layout->addWidget(findBar_);
    setCentralWidget(central);

    position_ = new QLabel;
    statusBar()->addPermanentWidget(position_);
    connect(editor_, &QPlainTextEdit::cursorPositionChanged, this, &ViewerWindow::showPosition);
    buildMenus();
    resize(960, 700);
}

void ViewerWindow::buildMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), QKeySequence::Open, this, &ViewerWindow::chooseFile);
    file->addAction(tr("&Reload"), QKeySequence::Refresh, this, &ViewerWindow::reload);
    file->addSeparator();
    file->addAction(tr("&Print..."), QKeySequence::Print, this, &ViewerWindow::print);
    file->addAction(tr("Export as P&DF..."), this, &ViewerWindow::exportPdf);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, qApp, &QApplication::closeAllWindows);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->addAction(tr("&Copy"), QKeySequence::Copy, editor_, &QPlainTextEdit::copy);
    edit->addAction(tr("Select &All"), QKeySequence::SelectAll, editor_, &QPlainTextEdit::selectAll);
    edit->addSeparator();
    edit->addAction(tr("&Find..."), QKeySequence::Find, this, &ViewerWindow::showFind);
    edit->addAction(tr("Find &Next"), QKeySequence::FindNext, findBar_, &FindBar::findNext);
    edit->addAction(tr("Find Pre&vious"), QKeySequence::FindPrevious, findBar_, &FindBar::findPrevious);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    QAction* wrap = view->addAction(tr("&Wrap Long Lines"));
    wrap->setCheckable(true);
    wrap->setObjectName("wrapAction");
    connect(wrap, &QAction::toggled, this, &ViewerWindow::setWrapping);
    view->addSeparator();
    view->addAction(tr("&Larger Text"), QKeySequence::ZoomIn, this, [this] { setFontSize(fontSize_ + 1); });
    view->addAction(tr("&Smaller Text"), QKeySequence::ZoomOut, this, [this] { setFontSize(fontSize_ - 1); });
    view->addAction(tr("&Normal Size"), QKeySequence(Qt::CTRL | Qt::Key_0), this, [this] {
        const QFont font = fixedPitchFont();
        setFontSize(font.pointSizeF() > 0 ? font.pointSizeF() : 10);
    });
}

bool ViewerWindow::openFile(const QString& path, QString* error) {
    QString text;
    if (!readTextFile(path, text, error)) return false;
    editor_->setPlainText(text);
    path_ = path;
    setWindowTitle(tr("%1 \u2013 Text Viewer").arg(QFileInfo(path).fileName()));
    statusBar()->showMessage(tr("%n line(s)", nullptr, editor_->blockCount()), 4000);
    if (findBar_->isVisible()) findBar_->setPattern(findBar_->pattern());  // mark the matches in the new text
    showPosition();
    return true;
}

bool ViewerWindow::openFileOrSay(const QString& path) {
    QString error;
    if (openFile(path, &error)) return true;
    QMessageBox box(QMessageBox::Warning, tr("Text Viewer"), tr("Unable to open the file\n%1").arg(QDir::toNativeSeparators(path)),
                    QMessageBox::Ok, this);
    box.setInformativeText(error);
    box.exec();
    return false;
}

bool ViewerWindow::printToPdf(const QString& pdfPath, QString* error) const {
    return printTextToPdf(editor_->toPlainText(), QFileInfo(path_).fileName(), pdfPath, error);
}

void ViewerWindow::chooseFile() {
    const QString start = path_.isEmpty() ? QString() : QFileInfo(path_).absolutePath();
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Text File"), start,
                                                      tr("Output (*.out);;Data Files (*.dat);;Plot Files (*.plt);;All Files (*)"));
    if (!path.isEmpty()) openFileOrSay(path);
}

void ViewerWindow::reload() {
    if (path_.isEmpty()) return;
    const int line = editor_->textCursor().blockNumber();
    if (!openFileOrSay(path_)) return;
    QTextCursor c(editor_->document()->findBlockByNumber(std::min(line, editor_->blockCount() - 1)));
    editor_->setTextCursor(c);
}

void ViewerWindow::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QFileInfo(path_).fileName());
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(tr("Print %1").arg(QFileInfo(path_).fileName()));
    if (editor_->textCursor().hasSelection()) dialog.setOption(QAbstractPrintDialog::PrintSelection);
    if (dialog.exec() != QDialog::Accepted) return;
    const QString text = printer.printRange() == QPrinter::Selection
                             ? editor_->textCursor().selection().toPlainText()
                             : editor_->toPlainText();
    printText(text, printer);
}

void ViewerWindow::exportPdf() {
    const QFileInfo info(path_);
    QString target = QFileDialog::getSaveFileName(this, tr("Export as PDF"), info.absolutePath() + "/" + info.completeBaseName() + ".pdf",
                                                  tr("PDF Files (*.pdf)"));
    if (target.isEmpty()) return;
    if (QFileInfo(target).suffix().isEmpty()) target += ".pdf";
    QString error;
    if (printToPdf(target, &error)) statusBar()->showMessage(tr("Written: %1").arg(QDir::toNativeSeparators(target)), 5000);
    else QMessageBox::warning(this, tr("Text Viewer"), error);
}

void ViewerWindow::showFind() { findBar_->activate(); }

void ViewerWindow::setWrapping(bool on) {
    editor_->setLineWrapMode(on ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
}

void ViewerWindow::setFontSize(double points) {
    fontSize_ = std::clamp(points, 6.0, 36.0);
    QFont font = editor_->font();
    font.setPointSizeF(fontSize_);
    editor_->setFont(font);
}

void ViewerWindow::showPosition() {
    const QTextCursor c = editor_->textCursor();
    position_->setText(tr("Line %1, Column %2").arg(c.blockNumber() + 1).arg(c.positionInBlock() + 1));
}

}  // namespace bm::textviewer
