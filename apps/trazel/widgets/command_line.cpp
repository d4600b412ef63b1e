#include "apps/trazel/widgets/command_line.h"

#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>

#include "apps/trazel/csv_export.h"
#include "apps/trazel/widgets/picture_export.h"

namespace bm::trazel {

namespace {

bool positiveNumber(const QString& text, int& value) {
    bool ok = false;
    value = text.toInt(&ok);
    return ok && value >= 1;
}

}  // namespace

QString joinedPath(const QStringList& words) {
    if (words.size() <= 1) return words.value(0);
    const QString joined = words.join(' ');
    if (QFileInfo::exists(joined) || !QFileInfo::exists(words.first())) return joined;
    return words.first();
}

bool parseCommandLine(const QStringList& arguments, CommandLine& line, QString* error) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Trazel: plots of the workbench's plot files."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The plot file to show."));
    const QCommandLineOption png(QStringLiteral("export-png"), QStringLiteral("Write the plot as a PNG picture and exit."), QStringLiteral("out"));
    const QCommandLineOption svg(QStringLiteral("export-svg"), QStringLiteral("Write the plot as an SVG drawing and exit."), QStringLiteral("out"));
    const QCommandLineOption csv(QStringLiteral("export-csv"), QStringLiteral("Write the plotted numbers as CSV and exit."), QStringLiteral("out"));
    const QCommandLineOption versus(QStringLiteral("versus"), QStringLiteral("One dimension: curves against 'distance' or 'time'."), QStringLiteral("axis"));
    const QCommandLineOption curves(QStringLiteral("curves"), QStringLiteral("One dimension: the curves to draw, as 1,3,5 (a fit: its places)."), QStringLiteral("list"));
    const QCommandLineOption residuals(QStringLiteral("residuals"), QStringLiteral("A fit: its residuals against 'time' or observation 'number'."), QStringLiteral("axis"));
    const QCommandLineOption time(QStringLiteral("time"), QStringLiteral("Contours: the time to show, from 1."), QStringLiteral("n"));
    const QCommandLineOption plane(QStringLiteral("plane"), QStringLiteral("Three dimensions: the z plane to show, from 1."), QStringLiteral("n"));
    const QCommandLineOption variant(QStringLiteral("variant"), QStringLiteral("Generated samples: the variant to show, from 1."), QStringLiteral("n"));
    const QCommandLineOption bins(QStringLiteral("bins"), QStringLiteral("Histograms: the number of bins."), QStringLiteral("n"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Size of exported pictures, as 1200x800."), QStringLiteral("size"));
    parser.addOptions({png, svg, csv, versus, curves, residuals, time, plane, variant, bins, size});
    parser.process(arguments);

    line = CommandLine{};
    line.file = joinedPath(parser.positionalArguments());
    line.png = parser.value(png);
    line.svg = parser.value(svg);
    line.csv = parser.value(csv);
    auto bad = [&](const QString& why) {
        if (error) *error = why;
        return false;
    };
    if (parser.isSet(versus)) {
        const QString v = parser.value(versus).toLower();
        if (v == "distance" || v == "x") line.view.versus = Versus::Distance;
        else if (v == "time" || v == "t") line.view.versus = Versus::Time;
        else return bad(QStringLiteral("--versus takes 'distance' or 'time', not '%1'.").arg(parser.value(versus)));
    }
    if (parser.isSet(residuals)) {
        const QString v = parser.value(residuals).toLower();
        if (v == "time" || v == "t") line.view.residualsByNumber = false;
        else if (v == "number" || v == "n") line.view.residualsByNumber = true;
        else return bad(QStringLiteral("--residuals takes 'time' or 'number', not '%1'.").arg(parser.value(residuals)));
    }
    if (parser.isSet(curves)) {
        line.view.automaticCurves = false;
        for (const QString& part : parser.value(curves).split(',', Qt::SkipEmptyParts)) {
            int n = 0;
            if (!positiveNumber(part.trimmed(), n)) return bad(QStringLiteral("--curves takes numbers from 1, as 1,3,5."));
            line.view.shown.push_back(n - 1);
        }
    }
    struct Index {
        const QCommandLineOption& option;
        int& target;
    };
    for (const Index& i : {Index{time, line.view.time}, Index{plane, line.view.plane}, Index{variant, line.view.variant}}) {
        if (!parser.isSet(i.option)) continue;
        int n = 0;
        if (!positiveNumber(parser.value(i.option), n))
            return bad(QStringLiteral("--%1 takes a number from 1.").arg(i.option.names().first()));
        i.target = n - 1;
    }
    if (parser.isSet(bins)) {
        int n = 0;
        if (!positiveNumber(parser.value(bins), n) || n > 500) return bad(QStringLiteral("--bins takes a number from 1 to 500."));
        line.view.bins = n;
    }
    if (parser.isSet(size)) {
        const QStringList parts = parser.value(size).toLower().split('x');
        int w = 0, h = 0;
        if (parts.size() != 2 || !positiveNumber(parts[0], w) || !positiveNumber(parts[1], h) || w < 200 || h < 150 || w > 10000 || h > 10000)
            return bad(QStringLiteral("--size takes WIDTHxHEIGHT in pixels, from 200x150 to 10000x10000."));
        line.size = QSize(w, h);
    }
    if (line.batch() && line.file.isEmpty()) return bad(QStringLiteral("The export options need a plot file."));
    return true;
}

int runBatch(const CommandLine& line, QString* message) {
    const std::string path = QFile::encodeName(line.file).toStdString();
    ReadResult r = readPlotFile(path);
    if (!r.ok) {
        if (message) *message = QStringLiteral("cannot plot %1: %2").arg(line.file, QString::fromStdString(r.error));
        return ExitUnreadable;
    }
    const ViewState view = clampedView(r.file, line.view);
    if (!planeInFull(r.file, view)) {
        // A large grid: the plane exported is read in full.
        const SliceResult plane = readSlice(path, r.file, view.time, view.plane);
        if (plane.slice) r.file.focus = plane.slice;
    }
    const Scene scene = buildScene(r.file, view);
    // A fit's residuals go under its curves.
    const Scene residuals = r.file.kind == PlotKind::Fit ? buildResidualScene(r.file, view) : Scene{};
    Panels panels{Panel{&scene, fullWindow(scene), 3}};
    if (r.file.kind == PlotKind::Fit) panels.push_back(Panel{&residuals, fullWindow(residuals), 2});
    QString error;
    if (!line.png.isEmpty() && !writePng(panels, line.png, line.size, &error)) {
        if (message) *message = error;
        return ExitUnwritable;
    }
    if (!line.svg.isEmpty() && !writeSvg(panels, line.svg, line.size, &error)) {
        if (message) *message = error;
        return ExitUnwritable;
    }
    if (!line.csv.isEmpty() && !writeText(csvText(r.file, view), line.csv, &error)) {
        if (message) *message = error;
        return ExitUnwritable;
    }
    return ExitOk;
}

}  // namespace bm::trazel
