#include "montecarlo/monte_report.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "model/number_text.h"
#include "montecarlo/monte_check.h"
#include "montecarlo/monte_generate.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"

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

// One variant's labelled values in the order both reports list them; the two
// headings carry no value. The printer reads the stored summary texts through
// the number format once more, the file takes them as stored.
std::vector<ReportLine> variantLines(const MonteInputRow& in, const MonteResultRow& out, bool reformatOutput) {
    auto result = [&](const std::string& text) { return reformatOutput ? formatNumber(text) : text; };
    return {{"Variant:", trim(in.variant)},
            {"Input Data:", ""},
            {"Mean:", inputNumber(in.mean)},
            {"Variance:", inputNumber(in.variance)},
            {"Minimum:", inputNumber(in.minimum)},
            {"Maximum:", inputNumber(in.maximum)},
            {"Distribution Type:", trim(in.distribution)},
            {"Number of Monte Carlo Iterations:", inputNumber(in.terms)},
            {"Output Data:", ""},
            {"Arithmetic Mean:", result(out.arithmeticMean)},
            {"Geometric Mean:", result(out.geometricMean)},
            {"Median:", result(out.median)},
            {"Minimum:", result(out.minimum)},
            {"Maximum:", result(out.maximum)},
            {"Standard Deviation:", result(out.standardDeviation)}};
}

bool isHeading(const ReportLine& line) { return line.field == "Input Data:" || line.field == "Output Data:"; }

}  // namespace

std::vector<ReportLine> simulationReportLines(const DataSet& data, std::int16_t chemical) {
    std::vector<ReportLine> lines;
    for (int r : rowsInUse(data, chemical)) {
        for (ReportLine& line : variantLines(data.InputTGData(r, chemical), resultOf(data, r, chemical), true))
            lines.push_back(std::move(line));
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
        for (const ReportLine& line : variantLines(in, out, false))
            lines.push_back(isHeading(line) ? line.field : line.field + " " + line.value);
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
