#include "saturated/calculation_run.h"

#include <new>
#include <stdexcept>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "saturated/one_dim_parameters.h"
#include "saturated/one_dim_solution.h"
#include "saturated/three_dim_pass.h"
#include "unsaturated/unsat_run.h"
#include "saturated/two_dim_pass.h"
#include "shell/error_handler.h"
#include "shell/runtime_error.h"

namespace bm {

namespace {

std::string indexText(std::int16_t value) { return std::to_string(value); }

// Row 2 of the two-dimensional screen holds what its caption says: the width
// for a finite aquifer or a finite line, the standard deviation for a Gaussian
// source, otherwise the injection rate of a point.
const std::string& twoDimSourceValue(const DataSet& data) {
    const std::string aquifer = toLower(trim(data.aquiferType));
    const std::string contaminant = toUpper(data.contaminantType);
    if (aquifer == "finite" || contains(contaminant, "LINE")) return data.sourceWidth;
    if (contains(contaminant, "GAUSS")) return data.sourceStdDev;
    return data.injectionRate;
}

bool finitePatch(const DataSet& data) { return contains(data.contaminantType, "Finite"); }

// Each dimension's own passes join this list: the two- and three-dimensional
// passes (fill + driver of their solutions, twoDimInputRows / threeDimInputRows,
// mcResult2D / mcResult3D, ModelKind::TwoDimensional / ThreeDimensional) are
// registered here or through registerCalculationPass at start-up.
std::vector<CalculationPass> builtInCalculationPasses() {
    // Comparison code accepts the short word "Unsaturated" as well.
    CalculationPass unsaturatedShortWord = unsaturatedPass();
    unsaturatedShortWord.modelType = "Unsaturated";
    return {oneDimensionalPass(), twoDimensionalPass(), threeDimensionalPass(), unsaturatedPass(),
            unsaturatedShortWord};
}

std::vector<CalculationPass>& passRegistry() {
    static std::vector<CalculationPass> passes = builtInCalculationPasses();
    return passes;
}

}  // namespace

std::vector<std::string> oneDimInputRows(const DataSet& d) {
    return {d.velocity, d.dispersionX, d.halfLife, d.xRange, d.timeRange, indexText(d.superpositionIndex),
            d.mcAtX,    d.mcAtT,       d.porosity, d.retardation};
}

std::vector<std::string> twoDimInputRows(const DataSet& d) {
    return {d.xRange,      d.yRange,      twoDimSourceValue(d), d.timeRange, d.velocity, d.dispersionX,
            d.halfLife,    indexText(d.superpositionIndex),     d.dispersionY, d.porosity, d.sourceXc,
            d.sourceYc,    d.mcAtY,       d.mcAtX,              d.mcAtT,     d.netRecharge, d.aquiferThickness,
            d.retardation};
}

std::vector<std::string> threeDimInputRows(const DataSet& d) {
    const bool patch = finitePatch(d);
    return {d.xRange,      d.yRange,      d.zRange,      d.timeRange,  patch ? d.sourceWidth : d.sourceXc,
            d.sourceYc,    d.sourceZc,    patch ? d.sourceHeight : d.injectionRate,    d.velocity,
            indexText(d.superpositionIndex),            d.dispersionX, d.dispersionY, d.dispersionZ,
            d.halfLife,    d.porosity,    d.mcAtT,       d.mcAtX,      d.mcAtY,      d.mcAtZ,
            d.netRecharge, d.aquiferThickness,           d.retardation};
}

CalculationPass oneDimensionalPass() {
    CalculationPass pass;
    pass.modelType = "One Dimensional";
    pass.kind = ModelKind::OneDimensional;
    pass.inputRows = oneDimInputRows;
    pass.runIteration = [](DataSet& data, bool simulate, int iteration, UserInterface& ui) {
        OneDimParameters parameters;
        fillOneDimParameters(data, parameters, simulate, iteration);
        return solveOneDimensional(data, parameters, simulate, ui);
    };
    pass.mcResult = &DataSet::mcResult1D;
    return pass;
}

void registerCalculationPass(CalculationPass pass) {
    auto& passes = passRegistry();
    for (auto& existing : passes) {
        if (existing.modelType == pass.modelType) {
            existing = std::move(pass);
            return;
        }
    }
    passes.push_back(std::move(pass));
}

const CalculationPass* calculationPassFor(std::string_view modelType) {
    for (const auto& pass : passRegistry())
        if (pass.modelType == modelType) return &pass;
    return nullptr;
}

void scaleByBoundarySamples(DataSet& data, List<double>& results, int iterations) {
    if (data.terms.ub() < 1) return;
    const std::string& first = data.terms(1).concentration;
    if (!contains(first, ":")) return;
    const int row = markerRow(first);
    for (int i = 1; i <= iterations - 1; ++i) results(i) *= monteSample(data, row, i);
}

PassEnding runCalculationPass(DataSet& data, const CalculationPass& pass, UserInterface& ui) {
    data.calculationMode = "Regular";
    bool simulate = false;
    if (pass.inputRows) {
        for (const std::string& text : pass.inputRows(data)) {
            if (holdsMonteMarker(text)) {
                simulate = true;
                data.calculationMode = "Monte Carlo";
            }
        }
    }
    if (data.monteCarloModeOn) {
        simulate = true;
        data.calculationMode = "Monte Carlo";
    }

    // A regular run is the same loop run once.
    const int n = simulate ? static_cast<int>(data.monteStore(pass.kind).monteIterations) : 2;
    List<double>& results = data.*pass.mcResult;
    results.redim(n - 1);

    const ProgressOwner owner = pass.progressOwner ? pass.progressOwner(data) : progressOwnerOf(data);
    for (int i = 1; i <= n - 1; ++i) {
        if (data.stopRequested) {
            data.stopRequested = false;
            return PassEnding::Stopped;
        }
        results(i) = pass.runIteration(data, simulate, i, ui);
        if (simulate) ui.reportProgress(owner, n, i);
    }

    if (simulate) {
        scaleByBoundarySamples(data, results, n);
        if (pass.statistics) pass.statistics(data, n, ui);
    }
    return PassEnding::Finished;
}

std::string resultLabelAfterRun(const DataSet& data) {
    if (contains(data.calculationMode, "Monte Carlo")) return "Monte Carlo";
    return formatNumber(data.currentConcentration);
}

std::string resultCaptionAfterRun(const DataSet& data) {
    return contains(data.calculationMode, "Monte Carlo") ? "Monte Carlo Computed at" : "Computed at";
}

std::string resultLabelFromMode(std::string_view calculationMode) {
    if (contains(calculationMode, "R") || contains(calculationMode, "M")) return std::string(calculationMode);
    return formatNumber(calculationMode);
}

CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui, const CalculationPass& pass) {
    CalculationOutcome outcome;
    int errorNumber = 0;
    try {
        data.stopRequested = false;
        data.runStopped = false;
        ui.processEvents();  // paints the run's controls; a Stop may come in here already
        const PassEnding ending = runCalculationPass(data, pass, ui);
        data.mcPointChanged[static_cast<std::size_t>(pass.kind)] = false;
        outcome.stopped = ending == PassEnding::Stopped;
        outcome.resultLabel = resultLabelAfterRun(data);
        outcome.resultCaption = resultCaptionAfterRun(data);
        outcome.finished = true;
    } catch (const RuntimeError& error) {
        data.stopRequested = false;
        handleError(error, "Calculate", "", ui);
        return outcome;
    } catch (const std::bad_alloc&) {
        errorNumber = err::OutOfMemory;
    } catch (const std::length_error&) {
        errorNumber = err::OutOfMemory;
    }
    data.stopRequested = false;
    if (errorNumber != 0) handleError(errorNumber, "Calculate", "", ui);
    return outcome;
}

CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui) {
    const CalculationPass* pass = calculationPassFor(data.modelType);
    if (pass == nullptr) {
        data.stopRequested = false;
        return {};
    }
    return calculateRoutine(data, ui, *pass);
}

void parseCoordinates(DataSet& data) {
    const bool two = data.modelType == "Two Dimensional";
    const bool three = data.modelType == "Three Dimensional";
    const ParsedRange x = parseRange(data.xRange);
    data.numXTerms = x.terms;
    data.xConstant = x.constant;
    if (two || three) {
        const ParsedRange y = parseRange(data.yRange);
        data.numYTerms = y.terms;
        data.yConstant = y.constant;
    }
    if (three) {
        const ParsedRange z = parseRange(data.zRange);
        data.numZTerms = z.terms;
        data.zConstant = z.constant;
    }
    const ParsedRange t = parseRange(data.timeRange);
    data.numTTerms = t.terms;
    data.tConstant = t.constant;
    data.currentConcentration = 0.0;
}

CalculationOutcome runCalculation(DataSet& data, UserInterface& ui) {
    ui.setBusy(true);
    if (data.monteCarloModeOn)
        ui.message(MessageIcon::Information, MessageButtons::Ok, kInitialConcentrationTitle,
                   kInitialConcentrationText);
    CalculationOutcome outcome;
    try {
        parseCoordinates(data);
        outcome = calculateRoutine(data, ui);
    } catch (const RuntimeError& error) {
        handleError(error, "Calculate", "", ui);
    }
    if (outcome.finished && data.dataState == kParametersChanged) data.dataState = kNeedsSaving;
    ui.setBusy(false);
    return outcome;
}

void stopButtonClicked(DataSet& data, UserInterface& ui) {
    const MessageAnswer answer = ui.message(MessageIcon::Question, MessageButtons::YesNo, kStopTitle, kStopText, 1);
    data.stopRequested = answer == MessageAnswer::Yes;
    if (data.stopRequested) data.runStopped = true;
    ui.setBusy(true);
}

}  // namespace bm
