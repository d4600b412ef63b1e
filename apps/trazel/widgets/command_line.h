#pragma once
// Trazel's command line. The workbench starts it as the program's path, a
// blank and the plot file, without quotes, so a path with blanks arrives as
// several words; they are joined back. The export options write the plot
// without opening a window and end the program:
//   trazel FILE [--export-png OUT] [--export-svg OUT] [--export-csv OUT]
//               [--versus distance|time] [--curves 1,3,5] [--residuals time|number] [--time N]
//               [--plane N] [--variant N] [--bins N] [--size WIDTHxHEIGHT]
// Numbers of times, planes, variants and curves count from 1.

#include <QSize>
#include <QString>
#include <QStringList>

#include "apps/trazel/plot_scene.h"

namespace bm::trazel {

struct CommandLine {
    QString file;
    QString png, svg, csv;
    ViewState view;
    QSize size{1200, 800};
    bool batch() const { return !png.isEmpty() || !svg.isEmpty() || !csv.isEmpty(); }
};

enum ExitCode { ExitOk = 0, ExitUsage = 1, ExitUnreadable = 2, ExitUnwritable = 3 };

// False with a message for a command line that makes no sense. `arguments`
// includes the program name first, as QCoreApplication::arguments() gives it.
// Help and version requests print and exit inside, as is the custom.
bool parseCommandLine(const QStringList& arguments, CommandLine& line, QString* error);

// The plot file named by the words of the command line.
QString joinedPath(const QStringList& words);

// Reads the file and writes the exports; the exit code, with the reason on failure.
int runBatch(const CommandLine& line, QString* message);

}  // namespace bm::trazel
