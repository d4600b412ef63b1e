#include "saturated/two_dim_solution.h"

#include <string>

#include "model/data_set.h"
#include "model/number_text.h"
#include "model/model_kinds.h"
#include "montecarlo/pass/grid_points.h"
#include "saturated/mirrored_points.h"
#include "saturated/ratio_clamp.h"
#include "saturated/quadrature_points.h"
#include "shell/base/checked_math.h"

namespace bm {

TwoDimSourceTable& twoDimSourceTable() {
    static TwoDimSourceTable table;
    return table;
}

namespace {

// First n characters of a fixed text, lower-cased.
std::string lowerPrefix(const std::string& text, std::size_t n) { return toLower(text.substr(0, n)); }

std::string withoutSlashBlanks(std::string text) {
    for (std::size_t at = text.find("/ "); at != std::string::npos; at = text.find("/ ", at)) text.erase(at, 2);
    return text;
}

// The library function of the chosen case at one point, in the coordinates the
// case uses, with the clamp of a single value. The centre of a continuous point
// source is 1 without a call (and without the clamp).
class TwoDimSolution {
public:
    TwoDimSolution(const TwoDimParameters& parameters, const TwoDimSourceTable& table)
        : parameters_(parameters), code_(table.sourceCode) {
        if (code_ != kFiniteAquiferSource2D && table.quadratureNodes.ub() >= 1 && table.quadratureWeights.ub() >= 1) {
            nodes_ = table.quadratureNodes.data() + 1;
            weights_ = table.quadratureWeights.data() + 1;
        }
    }

    bool shifted() const { return code_ == kContinuousPointSource2D; }
    std::int16_t code() const { return code_; }

    double operator()(double t, double px, double py) const {
        double c = 0.0;
        switch (code_) {
            case kFiniteAquiferSource2D:
                cnrml_FL(parameters_, t, px, py, c);
                break;
            case kContinuousPointSource2D:
                if (px == 0.0 && py == 0.0) return 1.0;
                cnrml_IC(parameters_, t, px, py, c, nodes_, weights_);
                break;
            case kFiniteLineSource2D:
                cnrml_IL(parameters_, t, px, py, c, nodes_, weights_);
                break;
            case kGaussianSource2D:
                cnrml_IG(parameters_, t, px, py, c, nodes_, weights_);
                break;
            default:
                break;
        }
        return clampRatio(c);  // the library's status is not read
    }

private:
    const TwoDimParameters& parameters_;
    std::int16_t code_;
    const double* nodes_ = nullptr;
    const double* weights_ = nullptr;
};

// C/Co at one point: the first term, then the later terms superposed; only a
// negative sum is thrown away, so the sum may pass 1.
double shiftedPointConcentration(const TwoDimSolution& solution, const InflowTerms& terms, double px, double py,
                                 double t) {
    double c = solution(t, px, py);
    c = terms.superpose(c, t, [&](double tau) { return solution(tau, px, py); });
    return c < 0.0 ? 0.0 : c;
}

double pointConcentration(const TwoDimSolution& solution, const InflowTerms& terms, double x, double y, double t,
                          const TwoDimParameters& p) {
    const double px = solution.shifted() ? fp::sub(x, p.sourceXc) : x;
    const double py = solution.shifted() ? fp::sub(y, p.sourceYc) : y;
    return shiftedPointConcentration(solution, terms, px, py, t);
}

// The infinite-width sources are the same on both sides of the source's axis
// (kern2d.h: the strip sees y through its offsets from the edges, the
// Gaussian and the point source through the offset from the source, each the
// same bits mirrored): a line of y at one x and t (a grid's inner loop) keeps
// its values by what the kernel sees of y (mirrored_points.h).
// C/Co at a grid point, through the line's kept values where the source is mirrored.
double gridPointConcentration(const TwoDimSolution& solution, const InflowTerms& terms, double x, double y, double t,
                              const TwoDimParameters& p, MirroredPoints& line) {
    switch (solution.code()) {
        case kContinuousPointSource2D: {
            const double px = fp::sub(x, p.sourceXc), py = fp::sub(y, p.sourceYc);
            return line.valueAt(t, px, LateralKey(py, 0.0), {LateralKey(-py, 0.0)},
                                [&] { return shiftedPointConcentration(solution, terms, px, py, t); });
        }
        case kGaussianSource2D: {
            const double offset = gaussianOffset(p, y);
            return line.valueAt(t, x, LateralKey(offset, 0.0), {LateralKey(-offset, 0.0)},
                                [&] { return pointConcentration(solution, terms, x, y, t, p); });
        }
        case kFiniteLineSource2D: {
            const StripOffsets d = stripOffsets(p, y);
            return line.valueAt(t, x, LateralKey(d.d1, d.d2), {LateralKey(-d.d2, -d.d1)},
                                [&] { return pointConcentration(solution, terms, x, y, t, p); });
        }
        default: return pointConcentration(solution, terms, x, y, t, p);
    }
}

}  // namespace

void chooseTwoDimSource(TwoDimParameters& parameters, TwoDimSourceTable& table) {
    table.sourceCode = 0;
    const std::string contaminant = trimLeft(withoutSlashBlanks(fixedText(parameters.contaminantCode)));
    const std::string aquifer = trimLeft(fixedText(parameters.aquiferCode));
    setFixedText(parameters.contaminantCode, contaminant);
    setFixedText(parameters.aquiferCode, aquifer);

    if (lowerPrefix(aquifer, 6) == "finite") {
        table.sourceCode = kFiniteAquiferSource2D;
    } else if (lowerPrefix(contaminant, 8) == "gaussian") {
        table.sourceCode = kGaussianSource2D;
    } else if (lowerPrefix(contaminant, 11) == "finite line") {
        table.sourceCode = kFiniteLineSource2D;
    } else {
        table.sourceCode = kContinuousPointSource2D;
    }
    if (table.sourceCode != kFiniteAquiferSource2D) readQuadraturePoints(table.quadratureNodes, table.quadratureWeights);
}

double solveTwoDimensional(DataSet& data, TwoDimParameters& parameters, bool monteCarlo, int iteration,
                           UserInterface& ui) {
    TwoDimSourceTable& table = twoDimSourceTable();
    if (iteration <= 1 || table.sourceCode == 0) chooseTwoDimSource(parameters, table);

    int nx = 1, ny = 1, nt = 1;
    if (!monteCarlo) {
        nx = gridCount(parameters.xMin, parameters.xMax, parameters.xInterval);
        ny = gridCount(parameters.yMin, parameters.yMax, parameters.yInterval);
        nt = gridCount(parameters.tMin, parameters.tMax, parameters.tInterval);
    }
    data.numXTerms = checkedInt16(nx);
    data.numYTerms = checkedInt16(ny);
    data.numTTerms = checkedInt16(nt);
    data.xValues.redim(nx);
    data.yValues.redim(ny);
    data.tValues.redim(nt);
    data.result2D.redim({nx, ny, nt});

    if (monteCarlo) {
        data.xValues(1) = textValue(data.mcAtX);
        data.yValues(1) = textValue(data.mcAtY);
        data.tValues(1) = textValue(data.mcAtT);
    } else {
        fillGridList(data.xValues, nx, parameters.xMin, parameters.xInterval, data.xConstant);
        fillGridList(data.yValues, ny, parameters.yMin, parameters.yInterval, data.yConstant);
        fillGridList(data.tValues, nt, parameters.tMin, parameters.tInterval, data.tConstant);
    }

    const TwoDimSolution solution(parameters, table);
    const InflowTerms terms(data, monteCarlo, iteration);
    const ProgressOwner owner = progressOwnerOf(ModelFamily::Saturated, data.multiChemical);
    // Points in the order y, then x, then t; each on its own.
    const GridCursor<3> order({ny, nx, nt});  // k, i, j
    auto compute = [&data, &solution, &terms, &parameters, ny, cursor = order,
                    line = MirroredPoints()](long long at) mutable {
        const auto [k, i, j] = cursor(at);
        const double x = data.xValues(i), y = data.yValues(k), t = data.tValues(j);
        if (ny == 1) return pointConcentration(solution, terms, x, y, t, parameters);
        return gridPointConcentration(solution, terms, x, y, t, parameters, line);
    };
    double c = 0.0;
    GridCursor<3> stored = order;
    const bool finished = runGridPoints<double>(
        data, static_cast<long long>(nx) * ny * nt, monteCarlo, owner, ui, compute, [&](long long at, double value) {
            const auto [k, i, j] = stored(at);
            data.result2D(i, k, j) = value;
            c = value;
        },
        StopFlag::Cleared, ny);
    if (!finished) return 0.0;
    const double last = c;

    // The selected point: computed on its own when the grid is more than one point.
    if (nx != 1 || ny != 1 || nt != 1) {
        const double savedX = data.xValues(1), savedY = data.yValues(1), savedT = data.tValues(1);
        data.xValues(1) = data.xConstant;
        data.yValues(1) = data.yConstant;
        data.tValues(1) = data.tConstant;
        data.currentConcentration =
            pointConcentration(solution, terms, data.xValues(1), data.yValues(1), data.tValues(1), parameters);
        data.xValues(1) = savedX;
        data.yValues(1) = savedY;
        data.tValues(1) = savedT;
    } else {
        data.currentConcentration = data.result2D(1, 1, 1);
    }

    if (!contains(data.calculationMode, "Monte Carlo")) data.calculationMode = formatNumber(data.currentConcentration);
    return last;
}

}  // namespace bm
