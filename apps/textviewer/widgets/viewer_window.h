#pragma once
// The text viewer: a file shown read-only in a monospace font without line
// wrapping (tables of results stay in their columns), with Find, Print and a
// PDF copy. The workbench opens its output files and reports here.

#include <QMainWindow>

class QLabel;
class QPlainTextEdit;

namespace bm::textviewer {

class FindBar;

class ViewerWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit ViewerWindow(QWidget* parent = nullptr);

    // Reads and shows a file; on failure keeps what was shown and tells why.
    bool openFile(const QString& path, QString* error);
    // As openFile, with a message box on failure.
    bool openFileOrSay(const QString& path);

    QPlainTextEdit* editor() const { return editor_; }
    FindBar* findBar() const { return findBar_; }
    QString path() const { return path_; }
    bool printToPdf(const QString& pdfPath, QString* error) const;

public slots:
    void chooseFile();
    void reload();
    void print();
    void exportPdf();
    void showFind();
    void setWrapping(bool on);

private:
    void buildMenus();
    void showPosition();
    void setFontSize(double points);

    QPlainTextEdit* editor_;
    FindBar* findBar_;
    QLabel* position_;
    QString path_;
    double fontSize_;
};

// Reads a file for viewing: UTF-8 or Windows-1252 text with LF line ends.
bool readTextFile(const QString& path, QString& text, QString* error);

}  // namespace bm::textviewer
