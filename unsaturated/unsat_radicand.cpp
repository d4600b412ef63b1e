#include "unsaturated/unsat_radicand.h"

#include <cmath>

#include "shell/base/checked_math.h"

namespace bm {

bool unsatRadicandNegative(double percolationRate, double dispersion, double halfLife, double bulkDensity,
                           double distributionCoefficient, double porosity, double saturation, double sourceDecayRate,
                           UserInterface& ui) {
    const double poreSpace = fp::mul(porosity, saturation);
    const double R = fp::add(fp::div(fp::mul(bulkDensity, distributionCoefficient), poreSpace), 1.0);
    const double V = fp::div(percolationRate, poreSpace);
    const double lambda = fp::div(std::log(2.0), halfLife);
    const double radicand =
        fp::add(fp::mul(fp::sub(lambda, fp::mul(R, sourceDecayRate)), fp::mul(4.0, dispersion)), fp::mul(V, V));
    if (!(radicand < 0.0)) return false;
    ui.setBusy(false);
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, kUnsatRadicandTitle, kUnsatRadicandText);
    return true;
}

}  // namespace bm
