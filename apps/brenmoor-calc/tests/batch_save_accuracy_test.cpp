// brenmoor-calc --save on hand-written one-dimensional models: the saved data
// file is complete (the inputs come back as written, the output section and the
// Monte Carlo block follow, "[End File]" closes it), and every grid value of the
// output section, read here from the text, agrees with an independent long
// double evaluation: the pulse-response integral or the closed form with this
// test's own erfc for a semi-infinite aquifer, a converged Chebyshev collocation
// for a finite one, superposed and clamped as the driver does.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "testing/test_paths.h"
#include "testing/transport_green_reference.h"
#include "testing/transport_chebyshev_reference.h"

namespace {

using Real = long double;
using bm::testkit::fixturePath;
using bm::testkit::readFileBytes;
using bm::testkit::TempDir;

// What a hand-written fixture holds, restated here: velocity 0.3, porosity 0.3,
// retardation 2, dispersion 1, so V = 0.5 and D = 0.5 in the kernels; the
// half-life is multiplied by the retardation. X 0:10:1, Time 0:6:1.
struct HandWrittenModel {
    const char* fixture;
    bool finite;
    bool cauchy;
    double halfLife;
    std::vector<std::pair<double, double>> terms;  // (time, concentration)
};

constexpr double kV = 0.3 / 0.3 / 2;
constexpr double kD = 1.0 / 2;
constexpr double kLength = 10;
constexpr double kRetardation = 2;

const std::vector<std::pair<double, double>> kThreeTerms = {{0, 1}, {2, 3}, {4.5, 0.5}};
const std::vector<std::pair<double, double>> kTwoTerms = {{0, 2}, {3, 1}};

const std::vector<HandWrittenModel> kModels = {
    {"finite_dirichlet.one", true, false, 10, kThreeTerms},
    {"finite_cauchy.one", true, true, 10, kThreeTerms},
    {"semi_infinite_dirichlet.one", false, false, 10, kThreeTerms},
    {"semi_infinite_cauchy.one", false, true, 10, kThreeTerms},
    {"finite_cauchy_long_half_life.one", true, true, 1e30, kTwoTerms},
    {"semi_infinite_dirichlet_long_half_life.one", false, false, 1e30, kTwoTerms},
};

int runProgram(const std::string& arguments, const TempDir& dir, std::string& out, std::string& err) {
    const std::string command = "timeout -k 5 120 " + std::string(BRENMOOR_CALC_PROGRAM) + " " + arguments + " >" +
                                dir.file("stdout.txt") + " 2>" + dir.file("stderr.txt");
    const int raw = std::system(command.c_str());
    out = readFileBytes(dir.file("stdout.txt"));
    err = readFileBytes(dir.file("stderr.txt"));
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

// ---------------------------------------------------------------------------
// The output section, read from the saved text.

struct SavedOutput {
    std::string mode;
    std::vector<double> xs, ts;
    std::vector<std::vector<double>> values;              // [x][t]
    std::vector<std::vector<std::string>> valueTexts;     // the numbers as written
    std::string rest;                                      // the text behind "[End Output Data]"
};

std::string takeLine(const std::string& text, std::size_t& at) {
    const std::size_t end = text.find("\r\n", at);
    if (end == std::string::npos) throw std::runtime_error("line without CR LF");
    std::string line = text.substr(at, end - at);
    at = end + 2;
    return line;
}

std::vector<std::string> splitAtCommas(const std::string& line) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (std::size_t comma; (comma = line.find(',', from)) != std::string::npos; from = comma + 1)
        parts.push_back(line.substr(from, comma - from));
    parts.push_back(line.substr(from));
    return parts;
}

double number(const std::string& text) {
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    while (*end == ' ') ++end;
    if (end == text.c_str() || *end != '\0') throw std::runtime_error("not a number: [" + text + "]");
    return v;
}

int countAfter(const std::string& line, const std::string& label) {
    if (line.rfind(label, 0) != 0) throw std::runtime_error("expected " + label + " in [" + line + "]");
    return static_cast<int>(number(line.substr(label.size())));
}

SavedOutput readSavedOutput(const std::string& text) {
    SavedOutput s;
    std::size_t at = text.find("[Begin Output Data]\r\n");
    if (at == std::string::npos) throw std::runtime_error("no output section");
    takeLine(text, at);
    s.mode = takeLine(text, at);
    const int nx = countAfter(takeLine(text, at), "Number of x terms: ");
    const int nt = countAfter(takeLine(text, at), "Number of t terms: ");
    const auto axis = splitAtCommas(takeLine(text, at));
    if (axis.size() != static_cast<std::size_t>(nt) + 1 || !axis[0].empty()) throw std::runtime_error("axis line");
    for (int j = 1; j <= nt; ++j) s.ts.push_back(number(axis[static_cast<std::size_t>(j)]));
    for (int i = 0; i < nx; ++i) {
        std::string line = takeLine(text, at);
        if (i + 1 == nx) {
            // the last row and the end marker share a line
            const std::size_t marker = line.find("[End Output Data]");
            if (marker == std::string::npos || marker + 17 != line.size()) throw std::runtime_error("end marker");
            line.erase(marker);
        }
        const auto cells = splitAtCommas(line);
        if (cells.size() != static_cast<std::size_t>(nt) + 1) throw std::runtime_error("row " + line);
        s.xs.push_back(number(cells[0]));
        s.values.emplace_back();
        s.valueTexts.emplace_back();
        for (int j = 1; j <= nt; ++j) {
            s.values.back().push_back(number(cells[static_cast<std::size_t>(j)]));
            s.valueTexts.back().push_back(cells[static_cast<std::size_t>(j)]);
        }
    }
    s.rest = text.substr(at);
    return s;
}

// Significant digits of a number text such as " 4.05274327773819E-04 ".
int significantDigits(const std::string& text) {
    std::string digits;
    for (char c : text) {
        if (c == 'E' || c == 'e') break;
        if (c >= '0' && c <= '9') digits += c;
    }
    const auto first = digits.find_first_not_of('0');
    if (first == std::string::npos) return 0;
    const auto last = digits.find_last_not_of('0');
    return static_cast<int>(last - first + 1);
}

// ---------------------------------------------------------------------------
// The independent values.

// C/Co of one kernel (no superposition) at the points the grid needs.
class KernelReference {
public:
    KernelReference(const HandWrittenModel& m, const std::vector<double>& xs, const std::vector<double>& times)
        : model_(m), lambda_(std::log(2.0) / (m.halfLife * kRetardation)), xs_(xs) {
        if (!m.finite) return;
        // The Cauchy kernel evaluates the mid-point of the aquifer at 1.001 L/2.
        std::vector<double> at = xs;
        if (m.cauchy)
            for (double& x : at)
                if (x == kLength / 2) x *= 1.001;
        const bm::testkit::SpectralProblem problem{kV, kD, lambda_, m.cauchy, kLength};
        const auto coarse = bm::testkit::spectralSolution(problem, 56, at, times);
        const auto fine = bm::testkit::spectralSolution(problem, 72, at, times);
        for (std::size_t k = 0; k < times.size(); ++k)
            for (std::size_t i = 0; i < xs.size(); ++i) {
                EXPECT_LE(std::fabs(static_cast<double>(fine[k][i] - coarse[k][i])), 1e-13)
                    << "collocation not converged at x " << xs[i] << " t " << times[k];
                table_[{xs[i], times[k]}] = fine[k][i];
            }
    }

    Real operator()(double x, double t) const {
        if (t == 0) return x == 0 ? 1 : 0;  // the inlet alone
        if (model_.finite) return table_.at({x, t});
        if (model_.cauchy) return bm::testkit::semiInfiniteCauchyByQuadrature(kV, kD, lambda_, x, t);
        return bm::testkit::semiInfiniteDirichletClosedForm(kV, kD, lambda_, x, t);
    }

private:
    HandWrittenModel model_;
    double lambda_;
    std::vector<double> xs_;
    std::map<std::pair<double, double>, Real> table_;
};

Real clamped(Real c) { return c < 0 || c > 1 ? 0 : c; }

// The grid value: the first term's ratio, plus each later term's step relative
// to the first concentration times the ratio since its start; never below 0.
Real superposed(const HandWrittenModel& m, const KernelReference& kernel, double x, double t) {
    Real c = clamped(kernel(x, t));
    for (std::size_t k = 1; k < m.terms.size(); ++k) {
        const double tau = t - m.terms[k].first;
        if (tau > 0)
            c += (Real(m.terms[k].second) - m.terms[k - 1].second) / m.terms[0].second * clamped(kernel(x, tau));
    }
    return c < 0 ? 0 : c;
}

// The times at which the kernel is needed: every grid time and every time
// since the start of a later term.
std::vector<double> neededTimes(const HandWrittenModel& m, const std::vector<double>& ts) {
    std::vector<double> times;
    auto add = [&](double t) {
        if (t > 0 && std::find(times.begin(), times.end(), t) == times.end()) times.push_back(t);
    };
    for (double t : ts) {
        add(t);
        for (std::size_t k = 1; k < m.terms.size(); ++k) add(t - m.terms[k].first);
    }
    return times;
}

void PrintTo(const HandWrittenModel& m, std::ostream* os) { *os << m.fixture; }

class BatchSaveAccuracy : public ::testing::TestWithParam<HandWrittenModel> {};

TEST_P(BatchSaveAccuracy, SavedGridAgreesWithTheIndependentValues) {
    const HandWrittenModel& m = GetParam();
    TempDir dir;
    const std::string input = fixturePath("apps/brenmoor-calc", m.fixture).string();
    const std::string saved = dir.file("out.one");
    std::string out, err;
    ASSERT_EQ(runProgram("--save " + saved + " " + input, dir, out, err), 0) << err;
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "");
    const std::string text = readFileBytes(saved);
    const std::string original = readFileBytes(input);

    // A complete data file: the inputs as written, then the new output, then
    // the Monte Carlo block and the end.
    const std::string inputPart = original.substr(0, original.find("[Begin Output Data]"));
    EXPECT_EQ(text.substr(0, inputPart.size()), inputPart);
    SavedOutput s;
    try {
        s = readSavedOutput(text);
    } catch (const std::exception& e) {
        FAIL() << e.what() << "\n" << text;
    }
    EXPECT_EQ(s.rest, original.substr(original.find("\r\n[Begin Monte Carlo Data]") + 2).insert(0, "\r\n"));
    EXPECT_EQ(text.substr(text.size() - 12), "[End File]\r\n");

    ASSERT_EQ(s.xs.size(), 11u);
    ASSERT_EQ(s.ts.size(), 7u);
    for (int i = 0; i <= 10; ++i) EXPECT_EQ(s.xs[static_cast<std::size_t>(i)], i);
    for (int j = 0; j <= 6; ++j) EXPECT_EQ(s.ts[static_cast<std::size_t>(j)], j);

    const KernelReference kernel(m, s.xs, neededTimes(m, s.ts));
    double worstAbsolute = 0, worstRelative = 0;
    int mostDigits = 0;
    for (std::size_t i = 0; i < s.xs.size(); ++i)
        for (std::size_t j = 0; j < s.ts.size(); ++j) {
            const double expected = static_cast<double>(superposed(m, kernel, s.xs[i], s.ts[j]));
            const double value = s.values[i][j];
            const double difference = std::fabs(value - expected);
            // The file holds 15 significant digits; the finite series' own
            // double rounding (their sum is scaled by exp(a x - G) and cancels
            // against the steady part) leaves a few 1e-14 beside them.
            EXPECT_LE(difference, 5e-15 * std::fabs(expected) + 5e-14)
                << m.fixture << " x " << s.xs[i] << " t " << s.ts[j] << " file [" << s.valueTexts[i][j]
                << "] reference " << expected;
            worstAbsolute = std::max(worstAbsolute, difference);
            if (expected > 1e-3) worstRelative = std::max(worstRelative, difference / expected);
            // The number form: at most 15 significant digits, shortest form of the double they stand for.
            const int digits = significantDigits(s.valueTexts[i][j]);
            EXPECT_LE(digits, 15) << s.valueTexts[i][j];
            mostDigits = std::max(mostDigits, digits);
        }
    EXPECT_EQ(mostDigits, 15) << "the values are not written to their full precision";
    std::printf("[ accuracy ] %-44s 77 values, max abs %.2e, max rel %.2e\n", m.fixture, worstAbsolute, worstRelative);

    // The mode line holds the selected point (xConstant 10, tConstant 6) as
    // number text of a few digits: it must round the independent value.
    const double selected = static_cast<double>(superposed(m, kernel, 10, 6));
    const std::size_t point = s.mode.find('.');
    ASSERT_NE(point, std::string::npos) << s.mode;
    const std::size_t exponent = s.mode.find_first_of("eE");
    if (exponent == std::string::npos) {
        const int decimals = static_cast<int>(s.mode.size() - point - 1);
        EXPECT_LE(std::fabs(number(s.mode) - selected), 0.5000001 * std::pow(10.0, -decimals))
            << s.mode << " vs " << selected;
    } else {
        const int decimals = static_cast<int>(exponent - point - 1);
        EXPECT_LE(std::fabs(number(s.mode) - selected), 0.5000001 * std::pow(10.0, -decimals) * std::fabs(selected))
            << s.mode << " vs " << selected;
    }
}

INSTANTIATE_TEST_SUITE_P(HandWritten, BatchSaveAccuracy, ::testing::ValuesIn(kModels),
                         [](const ::testing::TestParamInfo<HandWrittenModel>& parameter) {
                             std::string name = parameter.param.fixture;
                             name = name.substr(0, name.find('.'));
                             std::string out;
                             bool upper = true;
                             for (char c : name) {
                                 if (c == '_') {
                                     upper = true;
                                     continue;
                                 }
                                 out += upper ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
                                 upper = false;
                             }
                             return out;
                         });

}  // namespace
