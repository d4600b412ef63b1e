#include "montecarlo/pass/calculation_pass.h"

#include <new>
#include <stdexcept>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/spread_iterations.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

// The mode scan: a simulation when an input row holds "Monte" or the inflow
// concentration varies; calculationMode says which.
bool scanForSimulation(DataSet& data, const KindCalculation& kind) {
    data.calculationMode = "Regular";
    bool simulate = false;
    if (kind.inputRows) {
        for (const std::string& text : kind.inputRows(data)) {
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
    return simulate;
}

ProgressOwner progressOwnerOfKind(const DataSet& data, const KindCalculation& kind) {
    if (const ModelKindInfo* row = modelKindInfo(data)) return row->progressOwner;
    return modelKindInfo(kind.kind).progressOwner;
}

}  // namespace

void scaleByBoundarySamples(DataSet& data, IterationResults& results, int iterations) {
    if (data.terms.ub() < 1) return;
    const std::string& first = data.terms(1).concentration;
    if (!contains(first, ":")) return;
    const int row = markerRow(first);
    for (int i = 1; i <= iterations - 1; ++i) results.set(i, results(i) * monteSample(data, row, i));
}

PassResult runCalculationPass(DataSet& data, const KindCalculation& kind, UserInterface& ui) {
    PassResult pass;
    const bool simulate = scanForSimulation(data, kind);
    if (kind.ownPass) return kind.ownPass(data, simulate, ui);

    // A regular run is the same loop run once.
    const int n = simulate ? static_cast<int>(data.monteStore(kind.kind).monteIterations) : 2;
    pass.iterations = n;
    if (kind.layOutGrid) kind.layOutGrid(data, simulate, ui);
    IterationResults results = kindResults(kind, data, 1);
    results.redim(n - 1);

    const ProgressOwner owner = progressOwnerOfKind(data, kind);
    for (int i = 1; i <= n - 1; ++i) {
        if (i == 2 && spreadsIterations(n)) {
            if (!spreadLaterIterations(data, kind, n, results, pass, owner, ui)) {
                pass.ending = PassEnding::Stopped;
                return pass;
            }
            break;
        }
        if (data.stopRequested) {
            data.stopRequested = false;
            pass.ending = PassEnding::Stopped;
            return pass;
        }
        if (i == 1 && simulate && kind.refuses && kind.refuses(data, n, ui)) {
            pass.ending = PassEnding::Refused;
            return pass;
        }
        const std::optional<double> value = kind.iterate(data, simulate, i, ui);
        if (!value) {  // Stop inside the grid
            data.stopRequested = false;
            pass.ending = PassEnding::Stopped;
            return pass;
        }
        results.set(i, *value);
        pass.stored = i;
        pass.lastValue = results(i);
        if (simulate) ui.reportProgress(owner, n, i);
    }

    if (simulate) {
        if (kind.scalesByInflowSamples) scaleByBoundarySamples(data, results, n);
        if (kind.statistics) kind.statistics(data, n, ui);
    }
    return pass;
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

CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui, const KindCalculation& kind,
                                    const std::string& context) {
    CalculationOutcome outcome;
    int errorNumber = 0;
    try {
        data.stopRequested = false;
        data.runStopped = false;
        ui.processEvents();  // paints the run's controls; a Stop may come in here already
        const PassResult pass = runCalculationPass(data, kind, ui);
        data.mcPointChanged[static_cast<std::size_t>(kind.kind)] = false;
        outcome.stopped = pass.ending != PassEnding::Finished;
        outcome.resultLabel = resultLabelAfterRun(data);
        outcome.resultCaption = resultCaptionAfterRun(data);
        outcome.finished = true;
    } catch (const RuntimeError& error) {
        data.stopRequested = false;
        handleError(error, context, "", ui);
        return outcome;
    } catch (const std::bad_alloc&) {
        errorNumber = err::OutOfMemory;
    } catch (const std::length_error&) {
        errorNumber = err::OutOfMemory;
    }
    data.stopRequested = false;
    if (errorNumber != 0) handleError(errorNumber, context, "", ui);
    return outcome;
}

CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui, const std::string& context) {
    const KindCalculation* kind = kindCalculationOf(data);
    if (kind == nullptr) {
        data.stopRequested = false;
        return {};
    }
    return calculateRoutine(data, ui, *kind, context);
}

void parseCoordinates(DataSet& data, int dimension) {
    const ParsedRange x = parseRange(data.xRange);
    data.numXTerms = x.terms;
    data.xConstant = x.constant;
    if (dimension >= 2) {
        const ParsedRange y = parseRange(data.yRange);
        data.numYTerms = y.terms;
        data.yConstant = y.constant;
    }
    if (dimension >= 3) {
        const ParsedRange z = parseRange(data.zRange);
        data.numZTerms = z.terms;
        data.zConstant = z.constant;
    }
    const ParsedRange t = parseRange(data.timeRange);
    data.numTTerms = t.terms;
    data.tConstant = t.constant;
    data.currentConcentration = 0.0;
}

void parseCoordinates(DataSet& data) {
    const KindCalculation* kind = kindCalculationOf(data);
    if (!kind) parseCoordinates(data, 1);
    else if (kind->parsesCoordinates) parseCoordinates(data, modelKindInfo(kind->kind).dimension);
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
