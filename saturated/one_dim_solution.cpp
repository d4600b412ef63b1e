#include "saturated/one_dim_solution.h"

#include <memory>
#include <vector>

#include "kernels/kern1d.h"
#include "model/data_set.h"
#include "model/model_kinds.h"
#include "model/number_text.h"
#include "montecarlo/pass/line_grid.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "saturated/one_dim_cauchy_grid.h"
#include "saturated/one_dim_kernels.h"
#include "saturated/ratio_clamp.h"
#include "shell/base/checked_math.h"

namespace bm {

namespace {

// The kernel of one aquifer and inlet, with the eigenvalues it shares between
// all points and superposition terms.
class OneDimKernel {
public:
    OneDimKernel(const OneDimParameters& parameters, bool finite, double length, const Eigenvalues& roots)
        : parameters_(parameters), finite_(finite), length_(length), roots_(roots) {}

    // `store`: the calling thread's own.
    double operator()(double x, double t, CauchyTermStore& store) const {
        double c = 0.0;
        const bool dirichlet = parameters_.boundaryType == kDirichletBoundary;
        if (finite_) {
            if (dirichlet)
                finiteDirichletRatio(parameters_, length_, x, t, roots_, c);
            else
                finiteCauchyRatio(parameters_, length_, x, t, roots_, c, &store);
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
    Eigenvalues roots_;
};

// C/Co at one point: the first inflow term, then each later term k started at
// its own time with the step of its concentration, relative to the first.
double pointConcentration(const DataSet& data, const InflowTermValues& terms, const OneDimKernel& kernel, double x,
                          double t, CauchyTermStore& store) {
    double c = clampRatio(kernel(x, t, store));
    for (int k = 2; k <= data.superpositionIndex; ++k) {
        const double tau = t - terms.time(k);
        if (tau > 0.0) {
            const double c2 = clampRatio(kernel(x, tau, store));
            const double step = terms.concentration(k) - terms.concentration(k - 1);
            c = fp::checked(c + fp::div(step, terms.concentration(1)) * c2);
        }
    }
    // The sum may pass 1; only a negative one is thrown away.
    return c < 0.0 ? 0.0 : c;
}

// The first n values of a list counted from 1.
std::vector<double> valuesOf(const List<double>& list, int n) {
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(n));
    for (int i = 1; i <= n; ++i) values.push_back(list(i));
    return values;
}

}  // namespace

double solveOneDimensional(DataSet& data, OneDimParameters& parameters, bool monteCarlo, UserInterface& ui) {
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
    const double length = finite ? parameters.xMax - parameters.xMin : 0.0;
    // The eigenvalues are found as far as the series reach: a simulation's
    // single point at a late time needs only the first few.
    const bool dirichlet = parameters.boundaryType == kDirichletBoundary;
    const RootSequence roots = !finite ? RootSequence(0.0, 0.0)
                               : dirichlet ? RootSequence(fp::div(V * length, 2.0 * D), 0.0)
                                           : RootSequence(fp::div(V * 0.25 * length, D), fp::div(D, fp::mul(length, V)));
    if (finite && dirichlet && !roots.firstBranchHoldsRoot()) return 0.0;
    // The threads of a grid share the eigenvalues (each found once, by the
    // first thread that needs it) and the Cauchy series' terms of its x and t.
    const Eigenvalues eigenvalues(roots);
    const OneDimKernel kernel(parameters, finite, length, eigenvalues);
    std::unique_ptr<const CauchyGridTerms> gridTerms;
    if (finite && !dirichlet && static_cast<long long>(nx) * nt > 1)
        gridTerms = std::make_unique<const CauchyGridTerms>(parameters, length, eigenvalues, valuesOf(data.xValues, nx),
                                                            valuesOf(data.tValues, nt));

    const InflowTermValues terms(data, monteCarlo, parameters.iteration);
    return runLineGrid(data, data.result1D, monteCarlo, progressOwnerOf(ModelFamily::Saturated, data.multiChemical), ui,
                       [&data, &kernel, terms, store = CauchyTermStore(gridTerms.get())](double x, double t) mutable {
                           return pointConcentration(data, terms, kernel, x, t, store);
                       });
}

}  // namespace bm
