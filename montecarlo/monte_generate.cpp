#include "montecarlo/monte_generate.h"

#include <cmath>
#include <cstdint>
#include <new>

#include "files/print_output.h"
#include "kernels/kernmc.h"
#include "model/number_text.h"
#include "montecarlo/monte_statistics.h"
#include "shell/base/checked_math.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace {

// More than this for the sample buffer and MonteSamples together is refused as
// out of memory before anything is allocated: a count that large could never
// reach the statistics anyway (they stop at 32766 samples).
constexpr double kMaximumSampleBytes = 512.0 * 1024 * 1024;

// A text read as a single-precision value, as the record holds it.
float singleOf(const std::string& text) {
    const double v = textValue(text);
    fp::checked(v);
    if (std::fabs(v) > 3.4028234663852886e38) raiseError(err::Overflow);
    return static_cast<float>(v);
}

// The sample buffer: one float array 0..count, shared by all rows of a run.
List<float> sampleBuffer(std::int32_t count) {
    List<float> buffer;
    buffer.redim(count);
    return buffer;
}

std::string statisticText(float value) { return formatNumber(generalText(value)); }

bool anyRowInUse(const DataSet& data, std::int16_t chemical) {
    const int rows = monteRowsInTable(data, chemical);
    for (int r = 1; r <= rows; ++r)
        if (data.InputTGData(r, chemical).inUse) return true;
    return false;
}

// The row loop: generation, statistics and storage of one variant after another.
GenerationOutcome generateRows(DataSet& data, const std::string& terms, std::int16_t chemical, UserInterface& ui) {
    const std::int32_t count = sampleCount(terms);
    const int capacity = data.InputTGData.ub(0);
    const double bytes = (static_cast<double>(capacity) + 2) * (static_cast<double>(count) + 1) * 2 * sizeof(double) +
                         (static_cast<double>(count) + 1) * sizeof(float);
    if (count > 0 && bytes > kMaximumSampleBytes) raiseError(err::OutOfMemory);

    List<float> buffer = sampleBuffer(count);
    data.monteIterations = count;
    shapeMonteSamples(data, capacity, count);

    std::int16_t code = 0;  // an unknown name keeps the code of the row before
    const int rows = monteRowsInTable(data, chemical);
    for (int r = 1; r <= rows; ++r) {
        const MonteInputRow input = data.InputTGData(r, chemical);
        if (!input.inUse) continue;

        const std::int16_t named = distributionCode(input.distribution);
        if (named == 0)
            ui.message(MessageIcon::None, MessageButtons::Ok, "brenmoor", "Error in generate Simulation");
        else
            code = named;

        monteRecord record{};
        record.count = count;
        record.mean = singleOf(input.mean);
        record.variance = singleOf(input.variance);
        record.minimum = singleOf(input.minimum);
        record.maximum = singleOf(input.maximum);
        record.standardDeviation = static_cast<float>(fp::sqrt(record.variance));
        record.distribution = code;

        const std::int16_t status = count > 0 ? monteCarlo(record, buffer(1)) : mcstatus::Ok;
        if (status == mcstatus::UnknownDistribution) continue;  // nothing drawn; its box was shown
        if (status == mcstatus::BadParameters) raiseError(err::InvalidProcedureCall);
        if (status == mcstatus::WindowEmpty) {
            ui.setBusy(false);
            ui.message(MessageIcon::Critical, MessageButtons::Ok, "Improper Input Data",
                       emptyWindowText(trim(input.variant), trim(input.distribution)));
            return GenerationOutcome::Failed;
        }

        float maximum = 0, minimum = 0, median = 0, mean = 0, geometric = 0, variance = 0, deviation = 0;
        ComputeStatistics(checkedInt16(count), buffer, maximum, minimum, median, mean, geometric, variance, deviation);

        MonteResultRow& result = data.ResultTGData(r, chemical);
        result.variant = input.variant;
        result.median = statisticText(median);
        result.minimum = statisticText(minimum);
        result.maximum = statisticText(maximum);
        result.arithmeticMean = statisticText(mean);
        result.geometricMean = statisticText(geometric);
        result.standardDeviation = statisticText(deviation);
        result.inUse = true;

        // Each sample as the data file gives it back, so that a saved model
        // reruns with exactly the values it was run with.
        for (int i = 1; i <= count; ++i) data.MonteSamples(r, i, chemical) = asStreamReal(buffer(i));
        data.monteFreshFlag = true;
    }
    return GenerationOutcome::Generated;
}

}  // namespace

std::string firstTermsText(const DataSet& data, std::int16_t chemical) {
    const int rows = monteRowsInTable(data, chemical);
    for (int r = 1; r <= rows; ++r) {
        const std::string terms = trim(data.InputTGData(r, chemical).terms);
        if (!terms.empty()) return terms;
    }
    return {};
}

std::int32_t sampleCount(const std::string& termsText) {
    if (!isNumeric(termsText)) raiseError(err::TypeMismatch);
    const std::int64_t terms = toInt32(numericValue(termsText));
    const std::int64_t count = terms + 1;
    if (count > INT32_MAX) raiseError(err::Overflow);
    return static_cast<std::int32_t>(count);
}

void shapeMonteSamples(DataSet& data, int capacity, std::int32_t count) {
    Array<double, 3>& samples = data.MonteSamples;
    const Array<double, 3>::Bounds bounds{capacity, count, 1};
    if (samples.ub(0) == capacity && samples.ub(1) == count - 1 && samples.ub(2) == 1)
        samples.redimPreserve(bounds);
    else
        samples.redim(bounds);
}

GenerationOutcome generateSimulation(DataSet& data, const MonteVariantList& variants, std::int16_t chemical,
                                     UserInterface& ui) {
    if (!checkBeforeGeneration(data, variants, chemical, ui)) return GenerationOutcome::Refused;
    return generateSamples(data, chemical, ui);
}

GenerationOutcome generateSamples(DataSet& data, std::int16_t chemical, UserInterface& ui) {
    // With nothing in use there is nothing to count or draw: the notice of the check was the way out.
    if (!anyRowInUse(data, chemical)) return GenerationOutcome::NothingInUse;

    ui.setBusy(true);
    GenerationOutcome outcome = GenerationOutcome::Failed;
    try {
        try {
            outcome = generateRows(data, firstTermsText(data, chemical), chemical, ui);
        } catch (const std::bad_alloc&) {
            raiseError(err::OutOfMemory);
        }
    } catch (const RuntimeError& error) {
        ui.setBusy(false);
        handleError(error, "", "", ui);
        ui.setBusy(false);  // even after the bounds error, whose handler shows the busy pointer
        return GenerationOutcome::Failed;
    }
    ui.setBusy(false);
    return outcome;
}

void markGenerated(DataSet& data, std::string_view monteCarloElasticCaption) {
    if (toLower(trim(monteCarloElasticCaption)) == "monte carlo") data.dataState = kParametersChanged;
}

std::string emptyWindowText(const std::string& variant, const std::string& distribution) {
    return variant + ": the interval from the minimum to the maximum holds almost none of the " + distribution +
           " distribution of this mean and variance, so no samples can be drawn inside it." + "\r\r" +
           "Please widen the bounds or reduce the variance of the variant.";
}

}  // namespace bm
