#include "fitting/model_evaluator.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <tuple>

#include "model/model_kinds.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"

namespace bm {

namespace {

// Full precision, so that the numerical derivatives see the step they made.
std::string exactText(double value) { return significantText(value, 17); }

// Distinct times equally spaced (three or more) make one run over a range.
bool equallySpaced(const std::vector<double>& times) {
    if (times.size() < 3) return false;
    const double step = (times.back() - times.front()) / static_cast<double>(times.size() - 1);
    if (!(step > 0.0)) return false;
    const double tolerance = 1e-9 * (times.back() - times.front());
    for (std::size_t k = 0; k < times.size(); ++k)
        if (std::fabs(times[k] - (times.front() + static_cast<double>(k) * step)) > tolerance) return false;
    return true;
}

}  // namespace

std::string pointRange(const std::string& range, double value) {
    double minimum = 0.0, maximum = 0.0;
    if (range.find(':') != std::string::npos) {
        minimum = rangeMinimum(range);
        maximum = rangeMaximum(range);
    } else {
        maximum = textValue(range);
    }
    return exactText(minimum) + ":" + exactText(maximum) + ":0:" + exactText(value);
}

ModelEvaluator::ModelEvaluator(const DataSet& model, const KindCalculation& kind, const ObservationSet& observations,
                               std::vector<FitParameterInfo> varying)
    : work_(model), kind_(kind), observations_(observations), varying_(std::move(varying)) {
    // A fit runs the model as it stands: every marker stands for its value.
    for (const FitParameterInfo& parameter : fitParametersOf(work_)) {
        std::string& text = fitParameterText(work_, parameter);
        if (holdsMonteMarker(text)) text = valueOfCell(text);
    }
    for (int k = 1; k <= work_.terms.ub(); ++k)
        if (holdsMonteMarker(work_.terms(k).concentration))
            work_.terms(k).concentration = valueOfCell(work_.terms(k).concentration);
    work_.monteCarloModeOn = false;
    work_.calculationMode = "Regular";
    dimension_ = observationDimension(work_);
    singlePrecision_ = kindResults(kind_, work_, 1).singlePrecision();
    plan();
}

void ModelEvaluator::plan() {
    std::map<std::tuple<double, double, double>, std::vector<int>> byPlace;
    for (std::size_t i = 0; i < observations_.points.size(); ++i) {
        const Observation& o = observations_.points[i];
        byPlace[{o.x, dimension_ >= 2 ? o.y : 0.0, dimension_ >= 3 ? o.z : 0.0}].push_back(static_cast<int>(i));
    }
    for (const auto& [where, members] : byPlace) {
        std::vector<double> times;
        for (const int i : members) times.push_back(observations_.points[static_cast<std::size_t>(i)].t);
        std::sort(times.begin(), times.end());
        times.erase(std::unique(times.begin(), times.end()), times.end());
        const auto [x, y, z] = where;
        if (equallySpaced(times)) {
            Place place{x, y, z, {}, {}, members};
            const double step = (times.back() - times.front()) / static_cast<double>(times.size() - 1);
            place.timeRange = exactText(times.front()) + ":" + exactText(times.back()) + ":" + exactText(step) + ":" +
                              exactText(times.front());
            for (const int i : members) {
                const double t = observations_.points[static_cast<std::size_t>(i)].t;
                place.timeIndex.push_back(static_cast<int>(std::lround((t - times.front()) / step)) + 1);
            }
            places_.push_back(std::move(place));
            continue;
        }
        for (const double t : times) {
            Place place{x, y, z, pointRange(work_.timeRange, t), {}, {}};
            for (const int i : members)
                if (observations_.points[static_cast<std::size_t>(i)].t == t) {
                    place.members.push_back(i);
                    place.timeIndex.push_back(1);
                }
            places_.push_back(std::move(place));
        }
    }
}

void ModelEvaluator::writeValues(DataSet& data, const std::vector<double>& values) const {
    for (std::size_t k = 0; k < varying_.size() && k < values.size(); ++k)
        fitParameterText(data, varying_[k]) = exactText(values[k]);
}

double ModelEvaluator::resultAt(int timeIndex) const {
    switch (blockLayoutOf(work_.modelType)) {
    case BlockLayout::TwoDimensional: return work_.result2D(1, 1, timeIndex);
    case BlockLayout::ThreeDimensional: return work_.result3D(1, 1, 1, timeIndex);
    case BlockLayout::Unsaturated: return work_.resultUnsat(1, timeIndex);
    case BlockLayout::TimeVarying: return work_.resultVar(timeIndex);
    default: return work_.result1D(1, timeIndex);
    }
}

double ModelEvaluator::sourceConcentration() const {
    // The time-varying solutions carry the source's magnitude already.
    if (observations_.relative || blockLayoutOf(work_.modelType) == BlockLayout::TimeVarying) return 1.0;
    return work_.terms.ub() >= 1 ? textValue(work_.terms(1).concentration) : 1.0;
}

std::optional<std::vector<double>> ModelEvaluator::evaluate(const std::vector<double>& values, UserInterface& ui) {
    writeValues(work_, values);
    const std::string xRange = work_.xRange, yRange = work_.yRange, zRange = work_.zRange,
                      timeRange = work_.timeRange;
    const int dimension = modelKindInfo(kind_.kind).dimension;
    std::vector<double> modelled(observations_.points.size(), 0.0);
    struct Restore {
        DataSet& d;
        std::string x, y, z, t;
        ~Restore() { d.xRange = x, d.yRange = y, d.zRange = z, d.timeRange = t; }
    } restore{work_, xRange, yRange, zRange, timeRange};

    for (const Place& place : places_) {
        work_.xRange = pointRange(xRange, place.x);
        if (dimension_ >= 2) work_.yRange = pointRange(yRange, place.y);
        if (dimension_ >= 3) work_.zRange = pointRange(zRange, place.z);
        work_.timeRange = place.timeRange;
        work_.stopRequested = false;
        if (kind_.parsesCoordinates) parseCoordinates(work_, dimension);
        if (kind_.layOutGrid) kind_.layOutGrid(work_, false, ui);
        ++runs_;
        if (!kind_.iterate(work_, false, 1, ui)) return std::nullopt;
        const double scale = sourceConcentration();
        for (std::size_t k = 0; k < place.members.size(); ++k)
            modelled[static_cast<std::size_t>(place.members[k])] = scale * resultAt(place.timeIndex[k]);
    }
    return modelled;
}

}  // namespace bm
