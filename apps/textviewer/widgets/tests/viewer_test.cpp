// The text viewer: read-only monospace view, Find, printing to PDF (read
// back with pdftotext) and the program's command line.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <gtest/gtest.h>

#include "apps/textviewer/widgets/find_bar.h"
#include "apps/textviewer/widgets/fixed_pitch_font.h"
#include "apps/textviewer/widgets/text_printing.h"
#include "apps/textviewer/widgets/viewer_window.h"
#include "testing/test_paths.h"

namespace bm::textviewer {
namespace {

QString fixture(const char* name) { return QString::fromStdString(testkit::fixturePath("apps/textviewer", name).string()); }

QString pdfText(const QString& pdf) {
    const QString tool = QStandardPaths::findExecutable("pdftotext");
    EXPECT_FALSE(tool.isEmpty()) << "pdftotext (poppler-utils) is needed to read the PDF back";
    QProcess p;
    p.start(tool, {"-layout", pdf, "-"});
    p.waitForFinished(20000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

struct Outcome {
    int code = -1;
    QString errors;
};

Outcome textviewer(const QStringList& arguments) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(TEXTVIEWER_PROGRAM), arguments);
    if (!p.waitForFinished(20000)) {
        p.kill();
        return {};
    }
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2, QString::fromUtf8(p.readAllStandardError())};
}

TEST(Viewer, ShowsTheFileReadOnlyInMonospaceWithoutWrapping) {
    ViewerWindow w;
    QString error;
    ASSERT_TRUE(w.openFile(fixture("report.out"), &error)) << error.toStdString();
    QPlainTextEdit* e = w.editor();
    EXPECT_EQ(e->document()->firstBlock().text(), "Monte Carlo");
    EXPECT_FALSE(e->toPlainText().contains('\r'));  // CR/LF read as line ends
    EXPECT_EQ(e->document()->findBlockByNumber(10).text(), "Retardation Coefficient: 1");
    EXPECT_TRUE(e->isReadOnly());
    // Fixed pitch wherever the machine has any fixed-pitch family at all
    // (the font set differs from desktop to desktop).
    if (anyFixedPitchFamilyInstalled()) {
        EXPECT_TRUE(QFontInfo(e->font()).fixedPitch()) << e->font().toString().toStdString();
        EXPECT_TRUE(QFontInfo(printFont()).fixedPitch()) << printFont().toString().toStdString();
    }
    EXPECT_EQ(e->lineWrapMode(), QPlainTextEdit::NoWrap);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    const QString before = e->toPlainText();
    e->setFocus();
    QTest::keyClicks(e, "typed over");
    QTest::keyClick(e, Qt::Key_Delete);
    QTest::keyClick(e, Qt::Key_Backspace);
    EXPECT_EQ(e->toPlainText(), before);
}

TEST(Viewer, ReadsWindowsCodePageText) {
    ViewerWindow w;
    ASSERT_TRUE(w.openFile(fixture("windows_1252.txt"), nullptr));
    EXPECT_TRUE(w.editor()->document()->findBlockByNumber(2).text().startsWith(QString::fromUtf8("[ Vv \xC2\xB2 + 4 * Dv")));
}

TEST(Viewer, FindsForwardsBackwardsAndWithCase) {
    ViewerWindow w;
    ASSERT_TRUE(w.openFile(fixture("windows_1252.txt"), nullptr));
    FindBar* find = w.findBar();
    QPlainTextEdit* e = w.editor();
    find->setPattern("retardation");
    EXPECT_EQ(find->matchCount(), 2);
    ASSERT_TRUE(find->findNext());
    EXPECT_EQ(e->textCursor().selectedText(), "retardation");
    EXPECT_EQ(e->textCursor().blockNumber(), 3);
    EXPECT_EQ(e->textCursor().selectionStart() - e->textCursor().block().position(), 0);
    ASSERT_TRUE(find->findNext());
    EXPECT_EQ(e->textCursor().selectedText(), "RETARDATION");
    ASSERT_TRUE(find->findNext());  // past the last match: from the top again
    EXPECT_EQ(e->textCursor().selectedText(), "retardation");
    EXPECT_EQ(find->status(), "Search wrapped around");
    ASSERT_TRUE(find->findPrevious());  // before the first: from the end
    EXPECT_EQ(e->textCursor().selectedText(), "RETARDATION");

    find->setCaseSensitive(true);
    EXPECT_EQ(find->matchCount(), 1);
    find->setPattern("RETARDATION");
    ASSERT_TRUE(find->findNext());
    EXPECT_EQ(e->textCursor().selectedText(), "RETARDATION");
    find->setPattern("Retardation");
    const int at = e->textCursor().position();
    EXPECT_FALSE(find->findNext());
    EXPECT_EQ(find->status(), "Not found");
    EXPECT_EQ(e->textCursor().position(), at);  // a failed search leaves the place
}

TEST(Viewer, CtrlFOpensTheFindBar) {
    ViewerWindow w;
    ASSERT_TRUE(w.openFile(fixture("report.out"), nullptr));
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    QApplication::setActiveWindow(&w);
    EXPECT_FALSE(w.findBar()->isVisible());
    QTest::keyClick(w.editor(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(w.findBar()->isVisible());
    QTest::keyClicks(QApplication::focusWidget(), "Halflife");
    EXPECT_EQ(w.editor()->textCursor().selectedText(), "Halflife");  // found while typing
    QTest::keyClick(w.findBar(), Qt::Key_Escape);
    EXPECT_FALSE(w.findBar()->isVisible());
}

TEST(Viewer, PrintsToPdf) {
    ViewerWindow w;
    ASSERT_TRUE(w.openFile(fixture("report.out"), nullptr));
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("report.pdf"));
    QString error;
    ASSERT_TRUE(w.printToPdf(pdf, &error)) << error.toStdString();
    const QString text = pdfText(pdf);
    EXPECT_TRUE(text.contains("Initial Concentration (Co): 100 mg/L")) << text.toStdString();
    EXPECT_TRUE(text.contains("Retardation Coefficient: 1"));
    EXPECT_TRUE(text.contains("0.45512"));
    EXPECT_EQ(QDir(QString::fromStdString(dir.path().string())).entryList(QDir::Files | QDir::Hidden).size(), 1);  // no leftovers
}

TEST(Viewer, APrintedPageKeepsItsMargins) {
    ViewerWindow w;
    ASSERT_TRUE(w.openFile(fixture("report.out"), nullptr));
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("margins.pdf"));
    ASSERT_TRUE(w.printToPdf(pdf, nullptr));
    QProcess p;
    p.start(QStandardPaths::findExecutable("pdftotext"), {"-bbox", pdf, "-"});
    p.waitForFinished(20000);
    const QString xml = QString::fromUtf8(p.readAllStandardOutput());
    const auto page = QRegularExpression(R"re(<page width="([0-9.]+)" height="([0-9.]+)")re").match(xml);
    const double width = page.captured(1).toDouble(), height = page.captured(2).toDouble(), mm = 72 / 25.4;
    ASSERT_GT(width, 500);
    int words = 0;
    auto it = QRegularExpression(R"re(xMin="([0-9.]+)" yMin="([0-9.]+)" xMax="([0-9.]+)" yMax="([0-9.]+)")re").globalMatch(xml);
    while (it.hasNext()) {
        const auto m = it.next();
        ++words;
        EXPECT_GE(m.captured(1).toDouble(), 20 * mm - 0.5);
        EXPECT_GE(m.captured(2).toDouble(), 15 * mm - 0.5);
        EXPECT_LE(m.captured(3).toDouble(), width - 15 * mm + 0.5);
        EXPECT_LE(m.captured(4).toDouble(), height - 15 * mm + 0.5);
    }
    EXPECT_GT(words, 20);
}

TEST(Viewer, SaysWhyAFileCannotBeShown) {
    ViewerWindow w;
    QString shown, detail;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        shown = box->text();
        detail = box->informativeText();
        box->accept();
    });
    EXPECT_FALSE(w.openFileOrSay("/no/such/folder/brenmoor.out"));
    EXPECT_TRUE(shown.contains("/no/such/folder/brenmoor.out")) << shown.toStdString();
    EXPECT_EQ(detail, "The file does not exist.");
}

TEST(Program, PrintsAFileToPdfAndExits) {
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("note.pdf"));
    const Outcome run = textviewer({fixture("windows_1252.txt"), "--print-pdf", pdf});
    ASSERT_EQ(run.code, 0) << run.errors.toStdString();
    const QString text = pdfText(pdf);
    EXPECT_TRUE(text.contains(QString::fromUtf8("[ Vv \xC2\xB2 + 4 * Dv"))) << text.toStdString();
    EXPECT_TRUE(text.contains("Improper input data"));
}

TEST(Program, LongLinesAreNotLostOnPaper) {
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("wide.pdf"));
    ASSERT_EQ(textviewer({fixture("long_lines.txt"), "--print-pdf", pdf}).code, 0);
    const QString text = pdfText(pdf);
    EXPECT_TRUE(text.contains("0.01667")) << text.toStdString();  // 1/60, the end of the 541-character line
    EXPECT_TRUE(text.contains("THE END OF A VERY WIDE TABLE"));
}

TEST(Program, AMissingFileIsNamed) {
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("never.pdf"));
    const Outcome run = textviewer({QString::fromStdString(dir.file("absent.out")), "--print-pdf", pdf});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.errors.contains("absent.out")) << run.errors.toStdString();
    EXPECT_TRUE(run.errors.contains("The file does not exist."));
    EXPECT_FALSE(QFile::exists(pdf));
    EXPECT_EQ(textviewer({fixture("report.out"), "--print-pdf", QString::fromStdString(dir.file("no/folder/x.pdf"))}).code, 3);
}

TEST(Program, APathWithBlanksArrivesInPieces) {
    testkit::TempDir dir;
    QDir(QString::fromStdString(dir.path().string())).mkdir("model output");
    const QString file = QString::fromStdString(dir.file("model output/brenmoor.out"));
    ASSERT_TRUE(QFile::copy(fixture("report.out"), file));
    const QString pdf = QString::fromStdString(dir.file("out.pdf"));
    const QStringList pieces = file.split(' ');
    ASSERT_EQ(pieces.size(), 2);
    const Outcome run = textviewer({pieces[0], pieces[1], "--print-pdf", pdf});
    ASSERT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(pdfText(pdf).contains("Monte Carlo"));
}

}  // namespace
}  // namespace bm::textviewer
