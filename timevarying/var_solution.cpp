#include "timevarying/var_solution.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <utility>

#include "model/number_text.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"
#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/pass/grid_points.h"
#include "timevarying/var_output.h"
#include "timevarying/var_record.h"
#include "timevarying/var_variants.h"
#include "timevarying/var_rows.h"

namespace bm {

namespace {

// A grid past this many values is refused as too large for memory.
constexpr long long kLargestGrid = 100'000'000;

float fdiv(float a, float b) {
    if (b == 0.0f) raiseError(a == 0.0f || std::isnan(a) ? err::Overflow : err::DivisionByZero);
    return fp::checked(a / b);
}

float toFloat(double value) {
    if (std::isnan(value) || std::fabs(value) > FLT_MAX) raiseError(err::Overflow);
    return static_cast<float>(value);
}

// One evaluation at (t, x, y) with the alpha of t.
using Source = std::function<float(float t, float x, float y, float alpha)>;

float solveGrid(DataSet& data, const kernvarRecord& record, bool monteCarlo, bool line, const Source& source,
                UserInterface& ui) {
    List<float>& ts = data.varTValues;
    List<float>& xs = data.varXValues;
    List<float>& ys = data.varYValues;
    if (monteCarlo) {
        xs(1) = toFloat(textValue(data.mcAtX));
        ys(1) = toFloat(textValue(data.mcAtY));
        ts(1) = toFloat(textValue(data.mcAtT));
    } else {
        if (record.xCount == 1) xs(1) = toFloat(data.xConstant);
        if (record.yCount == 1) ys(1) = toFloat(data.yConstant);
        if (record.timeCount == 1) ts(1) = toFloat(data.tConstant);
    }

    // Points in the order y, then x, then t; a line source is one point per
    // (t, x), uniform along y. Each point on its own; the alpha of a time is
    // kept for the points of its time that follow.
    const int nt = record.timeCount, nx = record.xCount, ny = record.yCount;
    const int across = line ? 1 : ny;
    auto compute = [&ts = std::as_const(ts), &xs = std::as_const(xs), &ys = std::as_const(ys), &record, &source, line,
                    nx, across, time = -1, alpha = 0.0f](long long at) mutable {
        const int k = static_cast<int>(at / across / nx) + 1;
        const float t = ts(k);
        if (k != time) {
            alpha = alpha_t(record, t);
            time = k;
        }
        const float x = xs(static_cast<int>(at / across % nx) + 1);
        const float y = line ? 0.0f : ys(static_cast<int>(at % across) + 1);
        return source(t, x, y, alpha);
    };
    const bool finished = runGridPoints<float>(
        data, static_cast<long long>(nt) * nx * across, monteCarlo, ProgressOwner::TimeVaryingForm, ui, compute,
        [&](long long at, float c) {
            const int base = static_cast<int>(at / across) * ny;
            if (line) {
                for (int j = 1; j <= ny; ++j) data.resultVar(base + j) = c;
            } else {
                data.resultVar(base + static_cast<int>(at % across) + 1) = c;
            }
        },
        StopFlag::Kept);
    if (!finished) return 0.0f;

    // The selected point alone.
    if (data.stopRequested) return 0.0f;
    const float keptT = ts(1), keptX = xs(1), keptY = ys(1);
    ts(1) = toFloat(data.tConstant);
    xs(1) = toFloat(data.xConstant);
    ys(1) = toFloat(data.yConstant);
    const float value = source(ts(1), xs(1), line ? 0.0f : ys(1), alpha_t(record, ts(1)));
    ts(1) = keptT;
    xs(1) = keptX;
    ys(1) = keptY;
    data.currentConcentration = value;
    data.varResultText = formatNumber(generalText(value));
    return value;
}

float pointFactor(const kernvarRecord& r) { return fdiv(r.dispersionRatio * r.magnitude, r.retardation * kFourPi); }
float pointInitialFactor(const kernvarRecord& r) { return fp::checked(r.dispersionRatio * r.magnitude / kFourPi); }
float lineFactor(const kernvarRecord& r) { return fdiv(r.magnitude, std::pow(kFourPi, 0.5f) * r.retardation); }

}  // namespace

kernvarRecord& theVarRecord() {
    static kernvarRecord record{};
    return record;
}

float pointInstantaneousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui) {
    const float factor = pointFactor(record);
    return solveGrid(data, record, monteCarlo, false,
                     [&](float t, float x, float y, float alpha) {
                         return point_instan_injection(record, t, x, y, alpha, factor);
                     },
                     ui);
}

float pointContinuousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui) {
    const float factor = pointFactor(record);
    return solveGrid(data, record, monteCarlo, false,
                     [&](float t, float x, float y, float alpha) {
                         return point_contin_injection(record, t, x, y, alpha, factor, t / 100.0f, kVarTimeSteps);
                     },
                     ui);
}

float pointInitialSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui) {
    const float factor = pointInitialFactor(record);
    return solveGrid(data, record, monteCarlo, false,
                     [&](float t, float x, float y, float alpha) {
                         return point_initial_concentration(record, t, x, y, alpha, factor);
                     },
                     ui);
}

float lineInstantaneousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui) {
    const float factor = lineFactor(record);
    return solveGrid(data, record, monteCarlo, true,
                     [&](float t, float x, float, float alpha) {
                         return line_instan_injection(record, t, x, alpha, factor);
                     },
                     ui);
}

float lineContinuousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui) {
    const float factor = lineFactor(record);
    return solveGrid(data, record, monteCarlo, true,
                     [&](float t, float x, float, float alpha) {
                         return line_contin_injection(record, t, x, alpha, factor, t / 100.0f, kVarTimeSteps);
                     },
                     ui);
}

float lineInitialSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui) {
    const float factor = lineFactor(record);
    return solveGrid(data, record, monteCarlo, true,
                     [&](float t, float x, float, float alpha) {
                         return line_initial_concentration(record, t, x, alpha, factor);
                     },
                     ui);
}

namespace {

// The solution of the record's source, 0 for a source the library does not know.
float solveSource(DataSet& data, const kernvarRecord& record, bool simulate, UserInterface& ui) {
    switch (record.contaminantSource) {
    case varsource::PointInstantaneous: return pointInstantaneousSolution(data, record, simulate, ui);
    case varsource::PointContinuous: return pointContinuousSolution(data, record, simulate, ui);
    case varsource::PointInitial: return pointInitialSolution(data, record, simulate, ui);
    case varsource::LineInstantaneous: return lineInstantaneousSolution(data, record, simulate, ui);
    case varsource::LineContinuous: return lineContinuousSolution(data, record, simulate, ui);
    case varsource::LineInitial: return lineInitialSolution(data, record, simulate, ui);
    default: return 0.0f;
    }
}

}  // namespace

void layOutTimeVaryingGrid(DataSet& data, bool simulate, UserInterface& ui) {
    // The regular form of the record gives the counts of the lists.
    kernvarRecord& record = theVarRecord();
    data.varResultText.clear();  // a run stopped before the selected point leaves no value
    copyToDLLStructure(data, record, false, 1, ui);
    const int nt = record.timeCount, nx = record.xCount, ny = record.yCount;
    data.varTValues.redim(std::max(nt, 1));
    data.varXValues.redim(std::max(nx, 1));
    data.varYValues.redim(std::max(ny, 1));
    initialize_t_x_y(record, &data.varTValues(1), &data.varXValues(1), &data.varYValues(1));
    const long long size = nt > 0 && nx > 0 && ny > 0 ? static_cast<long long>(nt) * nx * ny : 0;
    if (size > kLargestGrid) raiseError(err::OutOfMemory);
    data.resultVar.redim(static_cast<int>(std::max(size, 1LL)));
    (void)simulate;
}

std::optional<double> timeVaryingIteration(DataSet& data, bool simulate, int iteration, UserInterface& ui) {
    // An iteration of a simulation fills a record of its own, so that
    // iterations can run side by side; it starts from the regular record, whose
    // codes it keeps when the model's words name none.
    kernvarRecord own = theVarRecord();
    if (simulate) copyToDLLStructure(data, own, true, iteration, ui);
    const float result = solveSource(data, simulate ? own : theVarRecord(), simulate, ui);
    if (data.stopRequested) return std::nullopt;  // Stop inside the grid
    return result;
}

KindCalculation timeVaryingCalculation() {
    KindCalculation k;
    k.kind = ModelKind::TimeVarying;
    k.validate = validateTimeVaryingInputs;
    k.inputRows = timeVaryingInputRows;
    k.parsesCoordinates = false;  // the record counts the lists
    k.layOutGrid = layOutTimeVaryingGrid;
    k.iterate = timeVaryingIteration;
    k.scalesByInflowSamples = false;  // no inflow terms
    k.resultGridBounds = [](const DataSet& d) {
        return std::vector<int>{d.varXValues.ub(), d.varYValues.ub(), d.varTValues.ub()};
    };
    k.regularOutput = timeVaryingOutputText;
    k.simulationOutput = timeVaryingMonteCarloOutputText;
    k.monteVariants = timeVaryingVariants;
    return k;
}

void registerTimeVaryingKind() { registerKindCalculation(timeVaryingCalculation()); }

float solveTimeVarying(DataSet& data, UserInterface& ui) {
    return static_cast<float>(runCalculationPass(data, timeVaryingCalculation(), ui).lastValue);
}

}  // namespace bm
