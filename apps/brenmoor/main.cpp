// brenmoor: the ground water workbench. Main reads the suite's settings,
// checks its environment and offers the models.
//
// A data file named on the command line opens as File > Open opens it.
//
// The hidden option --smoke-screenshot=FILE is for the build's smoke tests:
// messages go to standard error instead of boxes, and once Main is up (and a
// model screen, when a file was named) the program saves a picture of the
// window in front to FILE, writes where each window stands on its screen to
// standard error ("window NAME x,y WxH in x,y WxH"), and ends.

#include <QApplication>
#include <QCoreApplication>
#include <QImage>
#include <QScreen>
#include <QTimer>
#include <cstdio>
#include <string>
#include <vector>

#include "apps/common/screen_fit.h"
#include "files/temporary_files.h"
#include "model/app_state.h"
#include "model/data_set.h"
#include "shell/file_commands.h"
#include "shell/screen/built_in_kinds.h"
#include "shell/widgets/main_window.h"
#include "shell/widgets/qt_user_interface.h"
#include "montecarlo/widgets/monte_carlo_form.h"
#include "saturated/widgets/input_form.h"
#include "species/widgets/mc_input_form.h"
#include "timevarying/widgets/merla_form.h"
#include "unsaturated/widgets/mc_unsat_form.h"
#include "unsaturated/widgets/unsat_form.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    bm::removeTemporaryFilesOnTermination();  // a save cut short by SIGTERM or SIGINT leaves nothing behind
    QApplication::setApplicationName(QStringLiteral("brenmoor"));
    QGuiApplication::setDesktopFileName(QStringLiteral("brenmoor"));
    bm::ScreenFit::install(app);

    const std::string shotOption = "--smoke-screenshot=";
    QString screenshot;
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a.rfind(shotOption, 0) == 0)
            screenshot = QString::fromStdString(a.substr(shotOption.size()));
        else
            words.push_back(a);
    }

    bm::QtUserInterface& ui = bm::qtUserInterface();
    if (!screenshot.isEmpty()) ui.logMessagesTo(stderr);
    bm::setUserInterface(&ui);

    // The model kinds the pass calculates, and the screens that show them.
    bm::registerBuiltInKinds();
    bm::registerInputForm();
    bm::registerMCInputForm();
    bm::registerMonteCarloForm();
    bm::registerMerlaForm();
    bm::registerUnsatForm();
    bm::registerMCUnsatForm();

    bm::MainWindow main(bm::theDataSet(), bm::theAppState(), bm::fileCommands());
    ui.setMainWindow(&main);
    main.start(words, QCoreApplication::applicationDirPath().toStdString());
    main.showMaximized();

    int status = 0;
    if (!screenshot.isEmpty()) {
        QTimer::singleShot(2000, &main, [&] {
            QWidget* front = QApplication::activeModalWidget();
            const QImage picture = (front ? front : &main)->grab().toImage();
            if (picture.isNull() || !picture.save(screenshot)) status = 1;
            for (QWidget* w : QApplication::topLevelWidgets()) {
                if (!w->isVisible()) continue;
                const QRect f = w->frameGeometry(), a = w->screen()->availableGeometry();
                std::fprintf(stderr, "window %s %d,%d %dx%d in %d,%d %dx%d\n", qPrintable(w->objectName()), f.x(), f.y(),
                             f.width(), f.height(), a.x(), a.y(), a.width(), a.height());
            }
            QCoreApplication::exit(status);
        });
    }
    const int result = QApplication::exec();
    bm::setUserInterface(nullptr);
    return status ? status : result;
}
