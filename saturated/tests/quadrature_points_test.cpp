#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "kernels/kern2d.h"
#include "model/app_state.h"
#include "saturated/quadrature_points.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "testing/test_paths.h"
#include "shell/base/raised_error.h"

using namespace bm;
using bm::testkit::TempDir;

namespace {

// The points file the build wrote into the program folder.
std::string builtPointsFile() { return (testkit::binaryDir() / "suite" / "brenmoor" / "glq.pts").string(); }

int errorNumber(const std::string& path, List<double>& nodes, List<double>& weights) {
    return raisedError([&] { readQuadraturePoints(path, nodes, weights); });
}

// A points file by hand: five header lines, then the given numbers one a line.
std::string handFile(const std::string& lineEnd, int numbers) {
    std::string text;
    for (int i = 0; i < 5; ++i) text += "header line " + std::to_string(i) + lineEnd;
    char buf[40];
    for (int i = 0; i < numbers; ++i) {
        std::snprintf(buf, sizeof buf, "%.17g", i < 128 ? 1.0 - i / 256.0 : 1.0 / 128);
        text += buf + lineEnd;
    }
    return text;
}

long double integrate(const List<double>& x, const List<double>& w, long double (*f)(long double)) {
    long double s = 0;
    for (int i = 1; i <= 256; ++i) s += w(i) * f(x(i));
    return s;
}

}  // namespace

TEST(QuadraturePoints, BuiltFileGivesTheMirroredRule) {
    List<double> x, w;
    ASSERT_TRUE(readQuadraturePoints(builtPointsFile(), x, w));
    ASSERT_EQ(x.ub(), 256);
    ASSERT_EQ(w.ub(), 256);
    for (int i = 1; i < 256; i += 2) {
        EXPECT_GT(x(i), 0.0);
        EXPECT_EQ(x(i + 1), -x(i));
        EXPECT_EQ(w(i + 1), w(i));
        EXPECT_GT(w(i), 0.0);
    }
    // Largest node first; the largest root of P256 lies near cos(pi 0.75 / 256.5).
    EXPECT_NEAR(x(1), std::cos(3.141592653589793 * 0.75 / 256.5), 1e-5);
    EXPECT_GT(x(1), x(3));
}

TEST(QuadraturePoints, BuiltFileIntegratesPolynomialsToDegree511AndSmoothFunctions) {
    List<double> x, w;
    readQuadraturePoints(builtPointsFile(), x, w);
    for (int k = 0; k <= 511; ++k) {
        long double s = 0;
        for (int i = 1; i <= 256; ++i) s += w(i) * std::pow(static_cast<long double>(x(i)), k);
        const double exact = k % 2 ? 0.0 : 2.0 / (k + 1);
        EXPECT_CLOSE(static_cast<double>(s), exact, 1e-14, 1e-15) << "degree " << k;
    }
    EXPECT_CLOSE(static_cast<double>(integrate(x, w, [](long double t) { return std::exp(t); })),
                 std::exp(1.0) - std::exp(-1.0), 1e-14, 0);
    EXPECT_CLOSE(static_cast<double>(integrate(x, w, [](long double t) { return std::cos(10 * t); })),
                 2 * std::sin(10.0) / 10, 1e-14, 1e-15);
    EXPECT_CLOSE(static_cast<double>(integrate(x, w, [](long double t) { return 1 / (1 + 25 * t * t); })),
                 2 * std::atan(5.0) / 5, 1e-14, 0);
    // exp(-x^2) on [-1, 1] is sqrt(pi) erf(1).
    EXPECT_CLOSE(static_cast<double>(integrate(x, w, [](long double t) { return std::exp(-t * t); })),
                 std::sqrt(3.141592653589793) * std::erf(1.0), 1e-14, 0);
}

TEST(QuadraturePoints, ListsPassToTheKernelsFromEntryOne) {
    // A strip far wider than the plume: on its centre line the two-dimensional
    // solution is the one-dimensional one, 1/2 erfc((x - vt) / (2 sqrt(Dt))) + ...
    List<double> x, w;
    readQuadraturePoints(builtPointsFile(), x, w);
    TwoDimParameters p;
    p.effectiveVelocity = 1;
    p.effectiveDispersionX = 0.5;
    p.effectiveDispersionY = 0.1;
    p.effectiveHalfLife = 1e300;
    p.sourceWidth = 1000;
    double c = -1;
    cnrml_IL(p, 10, 8, 0, c, x.data() + 1, w.data() + 1);
    const double s = 2 * std::sqrt(0.5 * 10);
    const double expected = 0.5 * (std::erfc((8 - 10) / s) + std::exp(1 * 8 / 0.5) * std::erfc((8 + 10) / s));
    EXPECT_CLOSE(c, expected, 1e-10, 1e-12);
}

TEST(QuadraturePoints, AcceptsEveryLineEndAndCommas) {
    TempDir dir;
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        testkit::writeFileBytes(dir.file("p.pts"), handFile(end, 256));
        List<double> x, w;
        ASSERT_TRUE(readQuadraturePoints(dir.file("p.pts"), x, w)) << "line end " << end.size();
        EXPECT_EQ(x(1), 1.0);
        EXPECT_EQ(x(2), -1.0);
        EXPECT_EQ(x(255), 1.0 - 127 / 256.0);
        EXPECT_EQ(w(256), 1.0 / 128);
    }
    std::string text = "a\nb\nc\nd\ne\n";
    for (int i = 0; i < 128; ++i) text += "0.5, ";
    for (int i = 0; i < 128; ++i) text += " 0.25\t";
    testkit::writeFileBytes(dir.file("c.pts"), text);
    List<double> x, w;
    ASSERT_TRUE(readQuadraturePoints(dir.file("c.pts"), x, w));
    EXPECT_EQ(x(256), -0.5);
    EXPECT_EQ(w(256), 0.25);
}

TEST(QuadraturePoints, MissingFileIsFileNotFound) {
    TempDir dir;
    List<double> x(3), w(3);
    x(1) = 7;
    EXPECT_EQ(errorNumber(dir.file("absent.pts"), x, w), 53);
    EXPECT_EQ(errorNumber(dir.path().string(), x, w), 53);
    EXPECT_EQ(x.ub(), 3);
    EXPECT_EQ(x(1), 7);
}

TEST(QuadraturePoints, ShortFileIsInputPastEndAndLeavesTheListsAlone) {
    TempDir dir;
    List<double> x(3), w(3);
    x(1) = 7;
    testkit::writeFileBytes(dir.file("short.pts"), handFile("\r\n", 255));
    EXPECT_EQ(errorNumber(dir.file("short.pts"), x, w), 62);
    testkit::writeFileBytes(dir.file("header.pts"), "one\r\ntwo\r\nthree\r\n");
    EXPECT_EQ(errorNumber(dir.file("header.pts"), x, w), 62);
    testkit::writeFileBytes(dir.file("empty.pts"), "");
    EXPECT_EQ(errorNumber(dir.file("empty.pts"), x, w), 62);
    EXPECT_EQ(x.ub(), 3);
    EXPECT_EQ(x(1), 7);
}

TEST(QuadraturePoints, TextInPlaceOfANumberIsTypeMismatch) {
    TempDir dir;
    std::string text = handFile("\r\n", 256);
    const auto at = text.find("0.99609375");
    ASSERT_NE(at, std::string::npos);
    text.replace(at, 10, "0.99x09375");
    testkit::writeFileBytes(dir.file("bad.pts"), text);
    List<double> x, w;
    EXPECT_EQ(errorNumber(dir.file("bad.pts"), x, w), 13);
    EXPECT_TRUE(x.empty());
}

TEST(QuadraturePoints, ProgramOverloadReadsTheApplicationsPointsFile) {
    const std::string saved = theAppState().gaussPointsFile;
    theAppState().gaussPointsFile = builtPointsFile();
    List<double> x, w;
    EXPECT_TRUE(readQuadraturePoints(x, w));
    EXPECT_EQ(x.ub(), 256);
    TempDir dir;
    theAppState().gaussPointsFile = dir.file("glq.pts");
    EXPECT_EQ(errorNumber(theAppState().gaussPointsFile, x, w), 53);
    theAppState().gaussPointsFile = saved;
}
