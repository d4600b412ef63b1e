// Trazel, the suite's plotting utility: `trazel FILE` shows a plot file of
// the workbench; with an export option it writes the plot and exits.

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>
#include <cstdlib>

#include "apps/common/screen_fit.h"
#include "apps/trazel/widgets/command_line.h"
#include "apps/trazel/widgets/trazel_window.h"

namespace {

bool wantsExport(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (QByteArray(argv[i]).startsWith("--export-")) return true;
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    // Exports need no screen: without a display they draw offscreen.
    if (wantsExport(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
        qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Trazel"));
    QApplication::setApplicationVersion(QStringLiteral("9.1"));
    QGuiApplication::setDesktopFileName(QStringLiteral("brenmoor-trazel"));
    bm::ScreenFit::install(app);

    bm::trazel::CommandLine line;
    QString error;
    QTextStream err(stderr);
    if (!bm::trazel::parseCommandLine(QApplication::arguments(), line, &error)) {
        err << "trazel: " << error << Qt::endl;
        return bm::trazel::ExitUsage;
    }
    if (line.batch()) {
        const int code = bm::trazel::runBatch(line, &error);
        if (code != bm::trazel::ExitOk) err << "trazel: " << error << Qt::endl;
        return code;
    }

    bm::trazel::TrazelWindow window;
    window.show();  // first, so that a long read shows its progress over the window
    if (!line.file.isEmpty()) {
        if (window.openFileOrSay(line.file)) window.setView(line.view);
        else if (!window.readCancelled()) return bm::trazel::ExitUnreadable;
    }
    return QApplication::exec();
}
