#include "fitting/fit_curves.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "fitting/fit_parameters.h"
#include "fitting/model_evaluator.h"
#include "model/number_text.h"
#include "montecarlo/pass/kind_calculation.h"

namespace bm {

std::string placeText(double x, double y, double z, int dimension) {
    std::string text = "x = " + generalText(x);
    if (dimension >= 2) text += ", y = " + generalText(y);
    if (dimension >= 3) text += ", z = " + generalText(z);
    return text;
}

std::vector<FitCurve> fittedCurves(const DataSet& model, const FitReport& report, UserInterface& ui, int points,
                                   int places) {
    const KindCalculation* kind = kindCalculationOf(model);
    if (kind == nullptr || !report.fitted() || report.observed.points.empty()) return {};
    const int dimension = report.dimension;
    std::map<std::tuple<double, double, double>, FitCurve> byPlace;
    double lastTime = 0.0;
    for (const Observation& o : report.observed.points) lastTime = std::max(lastTime, o.t);
    for (std::size_t i = 0; i < report.observed.points.size(); ++i) {
        const Observation& o = report.observed.points[i];
        const auto key = std::make_tuple(o.x, dimension >= 2 ? o.y : 0.0, dimension >= 3 ? o.z : 0.0);
        if (!byPlace.count(key) && static_cast<int>(byPlace.size()) >= places) continue;
        FitCurve& curve = byPlace[key];
        if (curve.place.empty()) {
            std::tie(curve.x, curve.y, curve.z) = key;
            curve.place = placeText(o.x, o.y, o.z, dimension);
        }
        curve.observedTimes.push_back(o.t);
        curve.observedValues.push_back(o.concentration);
        curve.members.push_back(static_cast<int>(i));
    }
    // The curves' points as observations of one set: one run per place.
    ObservationSet grid;
    grid.relative = report.relative;
    for (const auto& [where, curve] : byPlace)
        for (int k = 0; k < points; ++k) {
            Observation o;
            std::tie(o.x, o.y, o.z) = where;
            o.t = lastTime * (k + 1) / points;  // from just after 0, where some solutions have no value
            grid.points.push_back(o);
        }
    DataSet fitted = model;
    applyEstimates(fitted, report);
    ModelEvaluator evaluator(fitted, *kind, grid, {});
    const auto values = evaluator.evaluate({}, ui);
    if (!values) return {};
    std::vector<FitCurve> curves;
    std::size_t at = 0;
    for (auto& [where, curve] : byPlace) {
        for (int k = 0; k < points; ++k, ++at) {
            curve.times.push_back(grid.points[at].t);
            curve.values.push_back((*values)[at]);
        }
        curves.push_back(std::move(curve));
    }
    return curves;
}

}  // namespace bm
