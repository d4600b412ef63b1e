// brenmoor: the ground water workbench. Main reads the suite's settings,
// checks its environment and offers the models.
//
// The hidden option --smoke-screenshot=FILE is for the build's smoke test:
// messages go to standard error instead of boxes, and once Main is up the
// program saves a picture of its window to FILE and ends.

#include <QApplication>
#include <QCoreApplication>
#include <QImage>
#include <QTimer>
#include <cstdio>
#include <string>
#include <vector>

#include "model/app_state.h"
#include "model/data_set.h"
#include "shell/file_commands.h"
#include "shell/screen/built_in_kinds.h"
#include "shell/widgets/main_window.h"
#include "shell/widgets/qt_user_interface.h"
#include "saturated/widgets/input_form.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("brenmoor"));

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

    bm::MainWindow main(bm::theDataSet(), bm::theAppState(), bm::fileCommands());
    ui.setMainWindow(&main);
    main.start(words, QCoreApplication::applicationDirPath().toStdString());
    main.showMaximized();

    int status = 0;
    if (!screenshot.isEmpty()) {
        QTimer::singleShot(1500, &main, [&] {
            const QImage picture = main.grab().toImage();
            if (picture.isNull() || !picture.save(screenshot)) status = 1;
            QCoreApplication::exit(status);
        });
    }
    const int result = QApplication::exec();
    bm::setUserInterface(nullptr);
    return status ? status : result;
}
