#include "unsaturated/unsat_solution.h"

#include <cmath>

#include "kernels/kern1d.h"
#include "model/data_set.h"
#include "model/number_text.h"
#include "montecarlo/pass/line_grid.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/checked_math.h"

namespace bm {


namespace {

const double kLn2 = std::log(2.0);

enum class Inlet { Constant, DecayingSource, OldWord };

Inlet inletOf(const std::string& contaminantType) {
    if (contaminantType == kUnsatOldDirichlet) return Inlet::OldWord;
    if (contaminantType == kUnsatDirichlet) return Inlet::Constant;
    return Inlet::DecayingSource;
}

// The retarded coefficients of one call.
struct Coefficients {
    double lambda = 0;  // lambda / R
    double V = 0;       // q / (Sw theta) / R
    double D = 0;       // Dv / R
    double U = 0;
};

Coefficients coefficientsOf(const DataSet& data, UnsatParameters& p) {
    Coefficients k;
    double lambda = fp::div(kLn2, p.halfLife);
    const double R = fp::add(1.0, fp::div(fp::mul(p.distributionCoefficient, p.bulkDensity),
                                          fp::mul(p.saturation, p.porosity)));
    double V = fp::div(p.percolationRate, fp::mul(p.saturation, p.porosity));
    lambda = fp::div(lambda, R);
    p.dispersion = fp::div(p.dispersion, R);
    V = fp::div(V, R);
    k.lambda = lambda;
    k.V = V;
    k.D = p.dispersion;
    if (data.contaminantType == kUnsatDirichlet) {
        k.U = fp::sqrt(fp::add(fp::mul(fp::mul(lambda, 4.0), k.D), fp::mul(V, V)));
    } else {
        // The source's own decay acts in time at the inlet and is not retarded.
        k.U = fp::sqrt(fp::add(fp::mul(fp::sub(lambda, p.sourceDecayRate), fp::mul(4.0, k.D)), fp::mul(V, V)));
    }
    return k;
}

// C/Co of a constant inlet switched on T ago, at depth X below the top of the
// range (T > 0).
double constantInletRatio(const Coefficients& k, double X, double T) {
    const double s = fp::mul(2.0, fp::sqrt(fp::mul(T, k.D)));
    const double h = fp::div(X, fp::mul(2.0, k.D));
    double e1 = 0.0;
    double e2 = 0.0;
    if (k.lambda == 0.0) {
        exerfc(0.0, fp::div(fp::sub(X, fp::mul(k.V, T)), s), e1);
        exerfc(fp::div(fp::mul(X, k.V), k.D), fp::div(fp::add(fp::mul(k.V, T), X), s), e2);
    } else {
        exerfc(fp::mul(k.V - k.U, h), fp::div(fp::sub(X, fp::mul(k.U, T)), s), e1);
        exerfc(fp::mul(k.U + k.V, h), fp::div(fp::add(fp::mul(k.U, T), X), s), e2);
    }
    return fp::add(e1, e2) / 2.0;
}

class PointSolver {
public:
    PointSolver(const DataSet& data, const UnsatParameters& p, bool monteCarlo, const Coefficients& k)
        : data_(data), p_(p), k_(k), inlet_(inletOf(data.contaminantType)), terms_(data, monteCarlo, p.iteration) {}

    // C at (x, t). The old contaminant word computes nothing: its grid keeps
    // the 0 it starts from.
    double operator()(double x, double t) const {
        if (inlet_ == Inlet::OldWord) return 0.0;
        const double X = fp::sub(x, p_.xMin);
        const double T = fp::sub(t, p_.tMin);
        double c = 0.0;
        if (T == 0.0) {
            c = X == 0.0 ? 1.0 : 0.0;
        } else {
            c = constantInletRatio(k_, X, T);
        }
        if (inlet_ == Inlet::Constant) {
            if (c >= 1.0) c = 1.0;
            for (int j = 2; j <= data_.superpositionIndex; ++j) {
                // A later term starts at its own time; its age is not reduced by tMin.
                const double age = fp::sub(t, terms_.time(j));
                if (age <= 0.0) continue;
                double later = constantInletRatio(k_, X, age);
                if (later > 1.0) later = 1.0;
                const double step = fp::sub(terms_.concentration(j), terms_.concentration(j - 1));
                c = fp::add(c, fp::mul(fp::div(step, terms_.concentration(1)), later));
            }
        } else {
            c = fp::mul(c, fp::exp(-fp::mul(p_.sourceDecayRate, T)));
            if (c > 1.0) c = 1.0;
        }
        return c;
    }

private:
    const DataSet& data_;
    const UnsatParameters& p_;
    Coefficients k_;
    Inlet inlet_;
    InflowTermValues terms_;
};

}  // namespace

double solveUnsaturated(DataSet& data, UnsatParameters& parameters, bool monteCarlo, UserInterface& ui) {
    const Coefficients k = coefficientsOf(data, parameters);

    const LineGridCounts counts = lineGridCounts(parameters.xMin, parameters.xMax, parameters.xInterval, parameters.tMin,
                                                 parameters.tMax, parameters.tInterval, monteCarlo);
    const int nx = counts.nx;
    const int nt = counts.nt;
    layOutLineGrid(data, counts, parameters.xMin, parameters.xInterval, parameters.tMin, parameters.tInterval, monteCarlo);
    data.resultUnsat.redim({nx, nt});

    const PointSolver solve(data, parameters, monteCarlo, k);
    const ProgressOwner owner = progressOwnerOf(ModelFamily::Unsaturated, data.multiChemical);
    return runLineGrid(data, data.resultUnsat, monteCarlo, owner, ui, solve);
}

}  // namespace bm
