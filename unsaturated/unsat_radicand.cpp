#include "unsaturated/unsat_radicand.h"

#include <cmath>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/checked_math.h"

namespace bm {

namespace {

// The radicand for a first-order rate, on the inputs as typed.
double radicandOf(double percolationRate, double dispersion, double rate, double bulkDensity,
                  double distributionCoefficient, double porosity, double saturation, double sourceDecayRate) {
    const double poreSpace = fp::mul(porosity, saturation);
    const double R = fp::add(fp::div(fp::mul(bulkDensity, distributionCoefficient), poreSpace), 1.0);
    const double V = fp::div(percolationRate, poreSpace);
    return fp::add(fp::mul(fp::sub(rate, fp::mul(R, sourceDecayRate)), fp::mul(4.0, dispersion)), fp::mul(V, V));
}

bool refused(UserInterface& ui) {
    ui.setBusy(false);
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, kUnsatRadicandTitle, kUnsatRadicandText);
    return true;
}

}  // namespace

bool unsatRadicandNegative(double percolationRate, double dispersion, double halfLife, double bulkDensity,
                           double distributionCoefficient, double porosity, double saturation, double sourceDecayRate,
                           UserInterface& ui) {
    const double lambda = fp::div(std::log(2.0), halfLife);
    if (!(radicandOf(percolationRate, dispersion, lambda, bulkDensity, distributionCoefficient, porosity, saturation,
                     sourceDecayRate) < 0.0))
        return false;
    return refused(ui);
}

bool chemicalRadicandNegative(double percolationRate, double dispersion, double bulkDensity,
                              double distributionCoefficient, double porosity, double saturation,
                              double sourceDecayRate, const std::vector<std::string>& decayRates, UserInterface& ui) {
    for (const std::string& rate : decayRates) {
        if (holdsMonteMarker(rate)) continue;
        if (radicandOf(percolationRate, dispersion, textValue(rate), bulkDensity, distributionCoefficient, porosity,
                       saturation, sourceDecayRate) < 0.0)
            return refused(ui);
    }
    return false;
}

}  // namespace bm
