#include "apps/textviewer/widgets/text_printing.h"

#include <QFileInfo>
#include <QPrinter>
#include <QTemporaryFile>
#include <QTextDocument>
#include <filesystem>

#include "apps/textviewer/widgets/fixed_pitch_font.h"
#include "shell/widgets/page_margins.h"

namespace bm::textviewer {

QFont printFont() {
    QFont font = fixedPitchFont();
    font.setPointSizeF(9);
    return font;
}

void printText(const QString& text, QPrinter& printer) {
    keepLeastMargins(printer);
    QTextDocument document;
    document.setDefaultFont(printFont());
    document.setPlainText(text);
    document.print(&printer);
}

bool printTextToPdf(const QString& text, const QString& title, const QString& path, QString* error) {
    const QFileInfo target(path);
    QTemporaryFile part(target.absolutePath() + "/.textviewer-XXXXXX.pdf");
    if (!part.open()) {
        if (error) *error = QStringLiteral("Cannot write %1: %2").arg(path, part.errorString());
        return false;
    }
    part.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther);
    part.close();
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(part.fileName());
    printer.setDocName(title);
    printer.setCreator(QStringLiteral("Text Viewer"));
    printText(text, printer);
    if (printer.printerState() == QPrinter::Error || QFileInfo(part.fileName()).size() == 0) {
        if (error) *error = QStringLiteral("The PDF file could not be written.");
        return false;
    }
    std::error_code failed;
    std::filesystem::rename(QFile::encodeName(part.fileName()).toStdString(), QFile::encodeName(path).toStdString(), failed);
    if (failed) {
        if (error) *error = QStringLiteral("Cannot write %1: %2").arg(path, QString::fromStdString(failed.message()));
        return false;
    }
    part.setAutoRemove(false);  // it is the PDF now
    return true;
}

}  // namespace bm::textviewer
