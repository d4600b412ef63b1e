#include "saturated/one_dim_solution.h"

#include "kernels/kern1d.h"
#include "model/data_set.h"
#include "model/number_text.h"
#include "saturated/line_grid.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "saturated/one_dim_kernels.h"
#include "shell/checked_math.h"

namespace bm {

ProgressOwner progressOwnerOf(const DataSet& data) {
    return data.multiChemical ? ProgressOwner::MultiChemicalForm : ProgressOwner::InputForm;
}

double clampRatio(double ratio) { return ratio < 0.0 || ratio > 1.0 ? 0.0 : ratio; }

namespace {

// The kernel of one aquifer and inlet, with the eigenvalues it shares between
// all points and superposition terms.
class OneDimKernel {
public:
    OneDimKernel(const OneDimParameters& parameters, bool finite, double length, const List<double>& roots)
        : parameters_(parameters), finite_(finite), length_(length), roots_(roots) {}

    double operator()(double x, double t) const {
        double c = 0.0;
        const bool dirichlet = parameters_.boundaryType == kDirichletBoundary;
        if (finite_) {
            if (dirichlet)
                finiteDirichletRatio(parameters_, length_, x, t, roots_, c);
            else
                finiteCauchyRatio(parameters_, length_, x, t, roots_, c);
        } else {
            if (dirichlet)
                semiInfiniteDirichletRatio(parameters_, x, t, c);
            else
                semiInfiniteCauchyRatio(parameters_, x, t, c);
        }
        return c;  // the convergence flag is not acted on: an unconverged sum is used as it stands
    }

private:
    const OneDimParameters& parameters_;
    bool finite_;
    double length_;
    const List<double>& roots_;
};

// C/Co at one point: the first inflow term, then each later term k started at
// its own time with the step of its concentration, relative to the first.
double pointConcentration(const DataSet& data, const OneDimParameters& parameters, bool monteCarlo,
                          const OneDimKernel& kernel, double x, double t) {
    double c = clampRatio(kernel(x, t));
    for (int k = 2; k <= data.superpositionIndex; ++k) {
        const double tau = t - textValue(data.terms(k).time);
        if (tau > 0.0) {
            const double c2 = clampRatio(kernel(x, tau));
            const double step = fieldValue(data, data.terms(k).concentration, monteCarlo, parameters.iteration) -
                                fieldValue(data, data.terms(k - 1).concentration, monteCarlo, parameters.iteration);
            const double first = fieldValue(data, data.terms(1).concentration, monteCarlo, parameters.iteration);
            c = fp::checked(c + fp::div(step, first) * c2);
        }
    }
    // The sum may pass 1; only a negative one is thrown away.
    return c < 0.0 ? 0.0 : c;
}


}  // namespace

double solveOneDimensional(DataSet& data, OneDimParameters& parameters, bool monteCarlo, UserInterface& ui) {
    List<double> rootTable(kRootCount);

    const LineGridCounts counts = lineGridCounts(parameters.xMin, parameters.xMax, parameters.xInterval, parameters.tMin,
                                                 parameters.tMax, parameters.tInterval, monteCarlo);
    const int nx = counts.nx;
    const int nt = counts.nt;
    layOutLineGrid(data, counts, parameters.xMin, parameters.xInterval, parameters.tMin, parameters.tInterval, monteCarlo);
    data.result1D.redim({nx, nt});

    // The aquifer's length is the extent of the x range; it needs no input of its own.
    parameters.aquiferCode = parameters.aquiferCode.substr(0, 6);
    const bool finite = toUpper(parameters.aquiferCode) == "FINITE";
    const double V = parameters.effectiveVelocity;
    const double D = parameters.effectiveDispersion;
    double length = 0.0;
    if (finite) {
        length = parameters.xMax - parameters.xMin;
        if (parameters.boundaryType == kDirichletBoundary) {
            if (root1(fp::div(V * length, 2.0 * D), rootTable(1)) == 0) return 0.0;
        } else {
            root3(fp::div(V * 0.25 * length, D), fp::div(D, fp::mul(length, V)), rootTable(1));
        }
    }
    const OneDimKernel kernel(parameters, finite, length, rootTable);

    const ProgressOwner owner = progressOwnerOf(data);
    const double totalPoints = static_cast<double>(nx) * static_cast<double>(nt);
    double done = 0.0;
    double c = 0.0;
    for (int j = 1; j <= nt; ++j) {
        for (int i = 1; i <= nx; ++i) {
            if (data.stopRequested) {
                data.stopRequested = false;
                return 0.0;
            }
            c = pointConcentration(data, parameters, monteCarlo, kernel, data.xValues(i), data.tValues(j));
            data.result1D(i, j) = c;
            done += 1.0;
            if (!monteCarlo) ui.reportProgress(owner, totalPoints, done);
        }
    }
    const double last = c;

    // The selected point: computed on its own when the grid is more than one point.
    if (nx != 1 || nt != 1) {
        const double savedX = data.xValues(1);
        const double savedT = data.tValues(1);
        data.xValues(1) = data.xConstant;
        data.tValues(1) = data.tConstant;
        data.currentConcentration =
            pointConcentration(data, parameters, monteCarlo, kernel, data.xValues(1), data.tValues(1));
        data.xValues(1) = savedX;
        data.tValues(1) = savedT;
    } else {
        data.currentConcentration = data.result1D(1, 1);
    }

    if (!contains(data.calculationMode, "Monte Carlo")) data.calculationMode = formatNumber(data.currentConcentration);
    return last;
}

}  // namespace bm
