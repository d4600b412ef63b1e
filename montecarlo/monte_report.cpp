#include "montecarlo/monte_report.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "model/number_text.h"
#include "montecarlo/monte_check.h"
#include "montecarlo/monte_generate.h"
#include "shell/error_handler.h"
#include "shell/runtime_error.h"
#include "shell/user_interface.h"

namespace bm {

namespace {

// The variants in use, in row order.
std::vector<int> rowsInUse(const DataSet& data, std::int16_t chemical) {
    std::vector<int> rows;
    const int n = monteRowsInTable(data, chemical);
    for (int r = 1; r <= n; ++r)
        if (data.InputTGData(r, chemical).inUse) rows.push_back(r);
    return rows;
}

// The summary of a row, or an empty one when the result table has no such row.
MonteResultRow resultOf(const DataSet& data, int row, std::int16_t chemical) {
    const auto& table = data.ResultTGData;
    if (row > table.ub(0) || chemical > table.ub(1)) return {};
    return table(row, chemical);
}

// How many samples of a row the file lists: its terms, but never past the samples generated.
int listedSamples(const DataSet& data, const MonteInputRow& input, int row, std::int16_t chemical) {
    const auto& samples = data.MonteSamples;
    if (row > samples.ub(0) || chemical > samples.ub(2)) return 0;
    const double terms = std::floor(textValue(input.terms) + 0.5);
    const double available = samples.ub(1) - 1;
    return static_cast<int>(std::max(0.0, std::min(terms, available)));
}

std::string inputNumber(const std::string& text) { return formatNumber(trim(text)); }

}  // namespace

std::vector<ReportLine> simulationReportLines(const DataSet& data, std::int16_t chemical) {
    std::vector<ReportLine> lines;
    for (int r : rowsInUse(data, chemical)) {
        const MonteInputRow& in = data.InputTGData(r, chemical);
        const MonteResultRow out = resultOf(data, r, chemical);
        lines.push_back({"Variant:", trim(in.variant)});
        lines.push_back({"Input Data:", ""});
        lines.push_back({"Mean:", inputNumber(in.mean)});
        lines.push_back({"Variance:", inputNumber(in.variance)});
        lines.push_back({"Minimum:", inputNumber(in.minimum)});
        lines.push_back({"Maximum:", inputNumber(in.maximum)});
        lines.push_back({"Distribution Type:", trim(in.distribution)});
        lines.push_back({"Number of Monte Carlo Iterations:", inputNumber(in.terms)});
        lines.push_back({"Output Data:", ""});
        lines.push_back({"Arithmetic Mean:", formatNumber(out.arithmeticMean)});
        lines.push_back({"Geometric Mean:", formatNumber(out.geometricMean)});
        lines.push_back({"Median:", formatNumber(out.median)});
        lines.push_back({"Minimum:", formatNumber(out.minimum)});
        lines.push_back({"Maximum:", formatNumber(out.maximum)});
        lines.push_back({"Standard Deviation:", formatNumber(out.standardDeviation)});
        lines.push_back({"", ""});
    }
    return lines;
}

std::string reportLineText(const ReportLine& line) {
    std::string text(kReportFieldColumn - 1, ' ');
    text += line.field;
    if (line.value.empty()) return line.field.empty() ? std::string() : text;
    const std::size_t valueAt = kReportValueColumn - 1;
    text += text.size() < valueAt ? std::string(valueAt - text.size(), ' ') : std::string(" ");
    return text + line.value;
}

bool hasGeneratedOutput(const DataSet& data, std::int16_t chemical) {
    if (data.MonteSamples.empty() || data.MonteSamples.ub(1) < 1) return false;
    for (int r : rowsInUse(data, chemical))
        if (resultOf(data, r, chemical).inUse) return true;
    return false;
}

std::vector<std::string> simulationViewLines(const DataSet& data, std::int16_t chemical) {
    const std::vector<int> rows = rowsInUse(data, chemical);
    std::vector<std::string> lines{"Monte Carlo", "Type: Generated", "Total variants: " + std::to_string(rows.size()),
                                   "Number of Monte Carlo Iterations: " + firstTermsText(data, chemical)};
    for (int r : rows) {
        const MonteInputRow& in = data.InputTGData(r, chemical);
        const MonteResultRow out = resultOf(data, r, chemical);
        lines.push_back("Variant: " + trim(in.variant));
        lines.push_back("Input Data:");
        lines.push_back("Mean: " + inputNumber(in.mean));
        lines.push_back("Variance: " + inputNumber(in.variance));
        lines.push_back("Minimum: " + inputNumber(in.minimum));
        lines.push_back("Maximum: " + inputNumber(in.maximum));
        lines.push_back("Distribution Type: " + trim(in.distribution));
        lines.push_back("Number of Monte Carlo Iterations: " + trim(in.terms));
        lines.push_back("Output Data:");
        lines.push_back("Arithmetic Mean: " + out.arithmeticMean);
        lines.push_back("Geometric Mean: " + out.geometricMean);
        lines.push_back("Median: " + out.median);
        lines.push_back("Minimum: " + out.minimum);
        lines.push_back("Maximum: " + out.maximum);
        lines.push_back("Standard Deviation: " + out.standardDeviation);
        lines.push_back("Simulation Output:");
        const int n = listedSamples(data, in, r, chemical);
        // The samples were drawn in single precision and are written as floats print (7 digits).
        for (int i = 1; i <= n; ++i) lines.push_back(generalText(static_cast<float>(data.MonteSamples(r, i, chemical))));
    }
    lines.push_back("[End File]");
    return lines;
}

bool writeSimulationViewFile(const DataSet& data, std::int16_t chemical, const std::string& path, UserInterface& ui) {
    if (!hasGeneratedOutput(data, chemical)) {
        ui.message(MessageIcon::Information, MessageButtons::Ok, "No output data", "No output data to be viewed.");
        return false;
    }
    try {
        std::string text;
        for (const std::string& line : simulationViewLines(data, chemical)) text += line + "\r\n";
        const std::filesystem::path target(path);
        std::error_code ec;
        if (target.has_parent_path() && !std::filesystem::is_directory(target.parent_path(), ec))
            raiseError(err::PathNotFound);
        std::ofstream file(target, std::ios::binary | std::ios::trunc);
        if (!file) raiseError(err::PathFileAccessError);
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
        file.close();
        if (!file) raiseError(err::DiskFull);
    } catch (const RuntimeError& error) {
        handleError(error, "", path, ui);
        return false;
    }
    return true;
}

}  // namespace bm
