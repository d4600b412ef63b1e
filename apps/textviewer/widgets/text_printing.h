#pragma once
// Printing the viewed text: monospace, lines too long for the page broken at
// its edge, page numbers at the foot. A PDF file is written whole or not at
// all, so a failure leaves any earlier file of that name as it was.

#include <QFont>
#include <QString>

class QPrinter;

namespace bm::textviewer {

QFont printFont();
void printText(const QString& text, QPrinter& printer);
bool printTextToPdf(const QString& text, const QString& title, const QString& path, QString* error);

}  // namespace bm::textviewer
