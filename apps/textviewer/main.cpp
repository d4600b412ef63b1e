// The suite's text viewer: `textviewer FILE` shows a text file read-only;
// `--print-pdf OUT` prints it to a PDF file and exits. The workbench starts it
// as the program's path, a blank and the file, unquoted, so a path with
// blanks arrives in pieces and is joined back.

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

#include "apps/common/screen_fit.h"
#include "apps/textviewer/widgets/text_printing.h"
#include "apps/textviewer/widgets/viewer_window.h"

namespace {

enum ExitCode { ExitOk = 0, ExitUsage = 1, ExitUnreadable = 2, ExitUnwritable = 3 };

QString fileFromWords(const QStringList& words) {
    const QString whole = words.join(' ');
    if (words.size() > 1 && !QFileInfo::exists(whole) && QFileInfo::exists(words.first())) return words.first();
    return whole;
}

}  // namespace

int main(int argc, char** argv) {
    bool printing = false;
    for (int i = 1; i < argc; ++i) printing |= QByteArray(argv[i]).startsWith("--print-pdf");
    if (printing && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Text Viewer"));
    QApplication::setApplicationVersion(QStringLiteral("9.1"));
    QGuiApplication::setDesktopFileName(QStringLiteral("brenmoor-textviewer"));
    bm::ScreenFit::install(app);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows a text file read-only."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The file to show."));
    const QCommandLineOption pdf(QStringLiteral("print-pdf"), QStringLiteral("Print the file to a PDF file and exit."), QStringLiteral("out"));
    parser.addOption(pdf);
    parser.process(app);
    const QString file = fileFromWords(parser.positionalArguments());
    QTextStream err(stderr);

    if (parser.isSet(pdf)) {
        if (file.isEmpty()) {
            err << "textviewer: --print-pdf needs a file to print" << Qt::endl;
            return ExitUsage;
        }
        QString text, error;
        if (!bm::textviewer::readTextFile(file, text, &error)) {
            err << "textviewer: unable to open " << file << ": " << error << Qt::endl;
            return ExitUnreadable;
        }
        if (!bm::textviewer::printTextToPdf(text, QFileInfo(file).fileName(), parser.value(pdf), &error)) {
            err << "textviewer: " << error << Qt::endl;
            return ExitUnwritable;
        }
        return ExitOk;
    }

    bm::textviewer::ViewerWindow window;
    if (!file.isEmpty() && !window.openFileOrSay(file)) return ExitUnreadable;
    window.show();
    return QApplication::exec();
}
