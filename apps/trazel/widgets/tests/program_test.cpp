// The trazel program driven by its command line, as the workbench and
// scripts use it.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include "apps/trazel/widgets/tests/picture_check.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

struct Outcome {
    int code = -1;
    QString errors;
};

Outcome trazel(const QStringList& arguments) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(TRAZEL_PROGRAM), arguments);
    if (!p.waitForFinished(20000)) {
        p.kill();
        return {};
    }
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2, QString::fromUtf8(p.readAllStandardError())};
}

QString fixture(const char* name) { return QString::fromStdString(testkit::fixturePath("apps/trazel", name).string()); }

QString fitFixture(const char* name) { return QString::fromStdString(testkit::fixturePath("fitting", name).string()); }

QString readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

TEST(Program, ExportsPngSvgAndCsvInOneRun) {
    testkit::TempDir dir;
    const QString png = QString::fromStdString(dir.file("plot.png"));
    const QString svg = QString::fromStdString(dir.file("plot.svg"));
    const QString csv = QString::fromStdString(dir.file("plot.csv"));
    const Outcome run = trazel({fixture("profile_1d.plt"), "--export-png", png, "--export-svg", svg, "--export-csv", csv});
    ASSERT_EQ(run.code, 0) << run.errors.toStdString();

    const QImage image(png);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(1200, 800));
    EXPECT_GT(testing::inkShare(image), 0.04);

    QFile svgFile(svg);
    ASSERT_TRUE(svgFile.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&svgFile);
    QString root;
    int paths = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement) {
            if (root.isEmpty()) root = xml.name().toString();
            paths += xml.name() == QLatin1String("path") || xml.name() == QLatin1String("polyline");
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(root, "svg");
    EXPECT_GT(paths, 4);

    const QStringList rows = readAll(csv).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(rows.size(), 12);
    EXPECT_EQ(rows[5], "40,0.002204,0.11158,0.59441,0.8593");
}

TEST(Program, ViewOptionsChooseWhatIsExported) {
    testkit::TempDir dir;
    const QString csv = QString::fromStdString(dir.file("slice.csv"));
    ASSERT_EQ(trazel({fixture("volume_3d.plt"), "--plane", "2", "--time", "1", "--export-csv", csv}).code, 0);
    EXPECT_TRUE(readAll(csv).contains("\n10,0,0.21456\n"));
    const QString bins = QString::fromStdString(dir.file("bins.csv"));
    ASSERT_EQ(trazel({fixture("monte_carlo_1d.plt"), "--bins", "5", "--export-csv", bins}).code, 0);
    EXPECT_TRUE(readAll(bins).contains("\n0.3,0.4,15,0.375,0.65\n"));
}

TEST(Program, MalformedAndMissingFilesEndWithAReason) {
    testkit::TempDir dir;
    const QString png = QString::fromStdString(dir.file("never.png"));
    const Outcome bad = trazel({fixture("bad_number_1d.plt"), "--export-png", png});
    EXPECT_EQ(bad.code, 2);
    EXPECT_TRUE(bad.errors.contains("Line 24: \"40, abc, 0.11158, 0.59441, 0.8593\" is not a row of numbers.")) << bad.errors.toStdString();
    EXPECT_FALSE(QFile::exists(png));
    const Outcome missing = trazel({QString::fromStdString(dir.file("absent.plt")), "--export-png", png});
    EXPECT_EQ(missing.code, 2);
    EXPECT_TRUE(missing.errors.contains("cannot be opened")) << missing.errors.toStdString();
}

TEST(Program, AnUnwritableExportLeavesTheOldFile) {
    testkit::TempDir dir;
    const Outcome run = trazel({fixture("profile_1d.plt"), "--export-png", QString::fromStdString(dir.file("no/such/folder/p.png"))});
    EXPECT_EQ(run.code, 3);
    EXPECT_TRUE(run.errors.contains("Cannot write")) << run.errors.toStdString();
}

TEST(Program, RefusesNonsenseOptions) {
    EXPECT_EQ(trazel({fixture("profile_1d.plt"), "--versus", "sideways", "--export-csv", "/dev/null"}).code, 1);
    EXPECT_EQ(trazel({fixture("profile_1d.plt"), "--time", "0", "--export-csv", "/dev/null"}).code, 1);
    EXPECT_EQ(trazel({fixture("profile_1d.plt"), "--size", "12", "--export-png", "/dev/null"}).code, 1);
}

TEST(Program, APathWithBlanksArrivesInPieces) {
    // The workbench starts the utility with the plot file unquoted.
    testkit::TempDir dir;
    QDir(QString::fromStdString(dir.path().string())).mkdir("my plots");
    const QString plot = QString::fromStdString(dir.file("my plots/brenmoor.plt"));
    ASSERT_TRUE(QFile::copy(fixture("profile_1d.plt"), plot));
    const QString csv = QString::fromStdString(dir.file("out.csv"));
    const QStringList pieces = plot.split(' ');
    ASSERT_EQ(pieces.size(), 2);
    const Outcome run = trazel({pieces[0], pieces[1], "--export-csv", csv});
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(readAll(csv).startsWith("x (m),"));
}

TEST(Program, ExportsAFitWithItsResidualsAndRefusesABadFitFile) {
    testkit::TempDir dir;
    const QString png = QString::fromStdString(dir.file("fit.png"));
    const Outcome run = trazel({fitFixture("fit_plot_several_places.plt"), "--export-png", png, "--residuals", "number"});
    ASSERT_EQ(run.code, 0) << run.errors.toStdString();
    const QImage image(png);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(1200, 800));
    // The curves above, and below them the residuals with their dashed line at zero.
    EXPECT_GT(testing::inkShare(image, QRect(0, 0, 1200, 440)), 0.03);
    const QImage lower = image.copy(0, 480, 1200, 320).convertToFormat(QImage::Format_RGB32);
    int zeroLine = 0;
    for (int y = 0; y < lower.height(); ++y)
        for (int x = 0; x < lower.width(); ++x) {
            const QColor c = lower.pixelColor(x, y);
            zeroLine += std::abs(c.red() - 30) + std::abs(c.green() - 60) + std::abs(c.blue() - 160) < 40;
        }
    EXPECT_GT(zeroLine, 150);

    const Outcome bad = trazel({fitFixture("fit_plot_bad_row.plt"), "--export-png", png});
    EXPECT_EQ(bad.code, 2);
    EXPECT_TRUE(bad.errors.contains("Line 22: a row of the fitted curve (t, C) holds 2 values, but this one holds 3."))
        << bad.errors.toStdString();
    EXPECT_EQ(trazel({fitFixture("fit_plot_one_place.plt"), "--residuals", "sideways", "--export-png", png}).code, 1);
}

}  // namespace
}  // namespace bm::trazel
