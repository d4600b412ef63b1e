#include "timevarying/var_record.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

// A number into a 4-byte field: beyond the float range is an overflow.
float toFloat(double value) {
    if (std::isnan(value) || std::fabs(value) > FLT_MAX) raiseError(err::Overflow);
    return static_cast<float>(value);
}

struct Axis {
    float minimum = 0, maximum = 0, interval = 0;
    double constant = 0;
};

Axis parseAxis(const std::string& text) {
    double minimum, maximum, interval = 0, constant;
    if (text.find(':') != std::string::npos) {
        minimum = rangeMinimum(text);
        maximum = rangeMaximum(text);
        interval = rangeInterval(text);
        constant = rangeConstant(text);
    } else {
        minimum = maximum = constant = textValue(text);
    }
    return Axis{toFloat(minimum), toFloat(maximum), toFloat(interval), constant};
}

// A single point at 0 moves off the origin (x and t only).
void keepOffTheOrigin(Axis& axis) {
    if (axis.minimum == 0.0f && axis.maximum == 0.0f) {
        axis.minimum = axis.maximum = kSmallestCoordinate;
        if (axis.constant == 0.0) axis.constant = kSmallestCoordinate;
    }
}

void storeAxis(const Axis& axis, float& minimum, float& maximum, float& interval, std::int16_t& count) {
    minimum = axis.minimum;
    maximum = axis.maximum;
    interval = axis.interval;
    count = varTermCount(axis.minimum, axis.maximum, axis.interval);
}

void showNotIdentified(UserInterface& ui, const char* text) {
    ui.message(MessageIcon::None, MessageButtons::Ok, "brenmoor", text);
}

}  // namespace

std::int16_t varSourceCode(std::string_view text) {
    if (text == "Point (instantaneous)") return varsource::PointInstantaneous;
    if (text == "Point (continuous)") return varsource::PointContinuous;
    if (text == "Point (initial)" || text == "Point (with initial distribution)") return varsource::PointInitial;
    if (text == "Line (instantaneous)") return varsource::LineInstantaneous;
    if (text == "Line (continuous)") return varsource::LineContinuous;
    if (text == "Line (initial)" || text == "Line (with initial distribution)") return varsource::LineInitial;
    return 0;
}

std::int16_t varFunctionCode(std::string_view text) {
    if (text == "Constant") return varfunction::Constant;
    if (text == "Linear") return varfunction::Linear;
    if (text == "Asymptotic") return varfunction::Asymptotic;
    if (text == "Exponential") return varfunction::Exponential;
    return 0;
}

bool isLineSourceCode(std::int16_t code) {
    return code == varsource::LineInstantaneous || code == varsource::LineContinuous ||
           code == varsource::LineInitial;
}

std::int16_t varTermCount(float minimum, float maximum, float interval) {
    if (interval == 0.0f) return 1;
    const float quotient = (maximum - minimum) / interval;
    if (std::isnan(quotient) || std::fabs(quotient) > 1e9f) raiseError(err::Overflow);
    float whole = std::floor(quotient);
    if (whole + 1.0f - quotient <= 4.0f * FLT_EPSILON * std::max(1.0f, std::fabs(quotient))) whole += 1.0f;
    return checkedInt16(static_cast<long long>(whole) + 1);
}

std::int16_t varRangeCount(const std::string& rangeText) {
    if (trim(rangeText) == "Not Used") return 1;
    const Axis axis = parseAxis(rangeText);
    return varTermCount(axis.minimum, axis.maximum, axis.interval);
}

void copyToDLLStructure(DataSet& data, kernvarRecord& record, bool monteCarlo, int iteration, UserInterface& ui) {
    // 1. The two codes.
    if (const std::int16_t source = varSourceCode(data.contaminantType); source != 0)
        record.contaminantSource = source;
    else
        showNotIdentified(ui, "Contaminant Source not identified, copyToDLLStructure ");
    if (const std::int16_t function = varFunctionCode(data.aquiferType); function != 0)
        record.dispersionFunction = function;
    else
        showNotIdentified(ui, "Dispersion Coefficient not identified, copyToDLLStructure ");

    // 2-4. The ranges and their counts.
    Axis x = parseAxis(data.xRange), t = parseAxis(data.timeRange), y;
    keepOffTheOrigin(x);
    keepOffTheOrigin(t);
    if (trim(data.yRange) != "Not Used") y = parseAxis(data.yRange);
    storeAxis(x, record.xMinimum, record.xMaximum, record.xInterval, record.xCount);
    storeAxis(y, record.yMinimum, record.yMaximum, record.yInterval, record.yCount);
    storeAxis(t, record.timeMinimum, record.timeMaximum, record.timeInterval, record.timeCount);
    data.xConstant = x.constant;
    data.yConstant = y.constant;
    data.tConstant = t.constant;

    // 5. A simulation runs at its one point.
    if (monteCarlo) {
        record.xCount = record.yCount = record.timeCount = 1;
        record.xMinimum = toFloat(textValue(data.mcAtX));
        record.yMinimum = toFloat(textValue(data.mcAtY));
        record.timeMinimum = toFloat(textValue(data.mcAtT));
        data.xConstant = record.xMinimum;
        data.yConstant = record.yMinimum;
        data.tConstant = record.timeMinimum;
    }
    data.numXTerms = record.xCount;
    data.numYTerms = record.yCount;
    data.numTTerms = record.timeCount;

    // 6. The physical fields; velocities become seepage velocities.
    // A MonteMarker stands for its row's sample of this iteration, in either form
    // (the regular form only needs values that do not fault).
    const auto field = [&](const std::string& text) { return fieldValue(data, text, true, iteration); };
    record.magnitude = toFloat(field(data.sourceMagnitude));
    record.retardation = toFloat(field(data.retardation));
    record.decay = toFloat(field(data.sourceDecayRate));
    record.dispersionRatio = toFloat(field(data.dispersionRatio));
    record.maximumDispersivity = toFloat(field(data.bulkDensity));
    record.molecularDiffusion = toFloat(field(data.saturation));
    record.meanTravelTime = toFloat(field(data.distributionCoefficient));
    const double porosity = field(data.porosity);
    record.velocityX = toFloat(fp::div(field(data.velocityX), porosity));
    record.velocityY = isLineSourceCode(record.contaminantSource)
                           ? 0.0f
                           : toFloat(fp::div(field(data.velocityY), porosity));
}

std::vector<std::string> timeVaryingInputRows(const DataSet& d) {
    return {d.xRange,        d.timeRange,          d.velocityX,   d.yRange,
            d.velocityY,     d.saturation,         d.retardation, d.dispersionRatio,
            d.bulkDensity,   d.sourceDecayRate,    d.distributionCoefficient,
            d.sourceMagnitude, d.mcAtX,            d.mcAtY,       d.mcAtT,
            d.porosity};
}

bool scanTimeVaryingMode(DataSet& data) {
    bool simulate = data.monteCarloModeOn;
    for (const std::string& text : timeVaryingInputRows(data))
        if (contains(text, "Monte")) simulate = true;
    data.calculationMode = simulate ? "Monte Carlo" : "Regular";
    return simulate;
}

}  // namespace bm
