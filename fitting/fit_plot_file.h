#pragma once
// The plot file of a fit, for the plotting utility: at each observed place the
// fitted model's breakthrough curve (concentration against time), and the
// observations made there with the model's value and the residual of each.
// A labelled text like the other plot files, with its own first line:
//
//   Fit to Observations
//   Model: One Dimensional
//   ...                                (more "Label: value" lines)
//   Concentration: C/Co                ("C" in the model's unit)
//   Dimension: 1                       (the axes of a place: x; x, y; x, y, z)
//   Estimate: Velocity = 0.5012        (one line per input fitted)
//   Number of Places: 2
//   Number of Observations: 24
//
//   Place: x = 3
//   Fitted Curve: t, C
//   0.36, 0.0012
//   ...
//   Observations: n, t, C, fitted, residual
//   1, 2, 0.41, 0.4077, 0.0023
//   ...
//
// n numbers the observations in the order of the observation file; the
// residual is observed - fitted. Numbers carry 15 significant digits; lines
// end in CR LF like the other output files (a reader takes LF alone too).

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fitting/fitter.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

inline constexpr const char* kFitPlotFirstLine = "Fit to Observations";
// Beside the workbench's own plot file, in the same folder.
inline constexpr const char* kFitPlotFileName = "brenmoor_fit.plt";

struct FitPlotObservation {
    int number = 0;  // from 1, in the order of the observation file
    double t = 0, observed = 0, fitted = 0, residual = 0;
    bool operator==(const FitPlotObservation&) const = default;
};

struct FitPlotPlace {
    double x = 0, y = 0, z = 0;  // 0 on an axis the model lacks
    std::vector<double> times, values;  // the fitted curve
    std::vector<FitPlotObservation> observations;
    bool operator==(const FitPlotPlace&) const = default;
};

struct FitPlotEstimate {
    std::string name;  // as the data file labels the input
    double value = 0;
    bool operator==(const FitPlotEstimate&) const = default;
};

struct FitPlot {
    std::string model, aquifer, contaminant;
    std::string lengthUnit, timeUnit, concentrationUnit;
    bool relative = true;  // C/Co; else C in the concentration unit
    int dimension = 1;
    std::string dataFile, observationFile;
    std::vector<FitPlotEstimate> estimates;
    std::optional<double> rmse, rSquared;
    std::vector<FitPlotPlace> places;
    // Every "Label: value" line of the header as read (the reader fills it;
    // the writer writes the fields above).
    std::vector<std::pair<std::string, std::string>> header;

    std::size_t observationCount() const;
};

// The plot of a finished fit: every observed place with its curve at
// `points` times up to the last observed time, the estimates in the model's
// rows. Nothing when Stop ended the model runs; run-time errors of the
// calculation propagate.
std::optional<FitPlot> fitPlotOf(const DataSet& model, const FitReport& report, UserInterface& ui, int points = 101);

std::string fitPlotText(const FitPlot& plot);

// The plot of a file's text, or why it cannot be read ("Line 14: ...").
struct FitPlotReading {
    std::optional<FitPlot> plot;
    std::string problem;
};
FitPlotReading parseFitPlot(std::string_view text);

// Writes the file whole or not at all (run-time errors 61, 75, 76 as any save).
void writeFitPlot(const std::string& path, const FitPlot& plot);

}  // namespace bm
