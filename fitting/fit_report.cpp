// The fit's report as text.

#include <cstdio>

#include "fitting/fit_parameters.h"
#include "fitting/fitter.h"
#include "model/number_text.h"

namespace bm {

namespace {

std::string g(double value) { return significantText(value, 6); }

std::string padded(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text + " ";
}

std::string boundsText(const FitEstimate& e) {
    if (!e.lowerBound && !e.upperBound) return "none";
    return (e.lowerBound ? g(*e.lowerBound) : std::string("-inf")) + " to " +
           (e.upperBound ? g(*e.upperBound) : std::string("+inf"));
}

}  // namespace

std::string fitReportText(const FitReport& report, const DataSet& model) {
    std::string out;
    const auto line = [&](const std::string& text) { out += text + "\n"; };
    line("Fit to Observations");
    line("Model: " + model.modelType + ", " + model.aquiferType + ", " + model.contaminantType);
    if (!report.problem.empty()) {
        line("");
        line(report.problem);
        return out;
    }
    line("Observations: " + std::to_string(report.observations) + " (" +
         (report.relative ? std::string("C/Co") : "C in " + (model.concentrationUnit.empty() ? std::string("the model's unit") : model.concentrationUnit)) +
         "), degrees of freedom: " + std::to_string(report.degreesOfFreedom));
    line(report.stopReason);
    line("");
    std::size_t width = 9;
    for (const FitEstimate& e : report.estimates) width = std::max(width, e.name.size());
    line(padded("Input", width) + padded("Start", 12) + padded("Estimate", 12) + padded("Std. error", 12) +
         padded("95% interval", 27) + "Bounds");
    for (const FitEstimate& e : report.estimates) {
        const bool known = !report.covariance.empty();
        line(padded(e.name, width) + padded(g(e.start), 12) + padded(g(e.value), 12) +
             padded(known ? g(e.standardError) : "-", 12) +
             padded(known ? g(e.lower95) + " to " + g(e.upper95) : "-", 27) + boundsText(e) +
             (e.logScale ? " (log scale)" : "") + (e.onBound ? " ON BOUND" : ""));
    }
    if (!report.correlation.empty() && report.estimates.size() > 1) {
        line("");
        line("Correlation matrix");
        for (std::size_t a = 0; a < report.estimates.size(); ++a) {
            std::string row = padded(report.estimates[a].name, width);
            for (std::size_t b = 0; b < report.estimates.size(); ++b) {
                char buffer[16];
                std::snprintf(buffer, sizeof buffer, "%7.3f", report.correlation[a][b]);
                row += buffer;
            }
            line(row);
        }
    }
    line("");
    line("RMSE: " + g(report.rmse) + "   R-squared: " + g(report.rSquared) + "   Weighted sum of squares: " +
         g(report.weightedSumOfSquares) + "   Residual standard error: " + g(report.residualStandardError));
    line("Student's t (95%, " + std::to_string(report.degreesOfFreedom) + " d.f.): " + g(report.tQuantile) +
         "   Model runs: " + std::to_string(report.modelRuns));
    if (!report.warnings.empty()) {
        line("");
        line("Warnings");
        for (const std::string& w : report.warnings) line("  " + w);
    }
    line("");
    line("Residuals (observed - model)");
    std::string heading = padded("Line", 6) + padded("x", 12);
    if (report.dimension >= 2) heading += padded("y", 12);
    if (report.dimension >= 3) heading += padded("z", 12);
    line(heading + padded("t", 12) + padded("Observed", 14) + padded("Model", 14) + "Residual");
    for (std::size_t i = 0; i < report.residuals.size() && i < report.observed.points.size(); ++i) {
        const Observation& o = report.observed.points[i];
        std::string row = padded(std::to_string(o.line), 6) + padded(g(o.x), 12);
        if (report.dimension >= 2) row += padded(g(o.y), 12);
        if (report.dimension >= 3) row += padded(g(o.z), 12);
        line(row + padded(g(o.t), 12) + padded(g(o.concentration), 14) + padded(g(report.modelled[i]), 14) +
             g(report.residuals[i]));
    }
    return out;
}

}  // namespace bm
