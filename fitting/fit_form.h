#pragma once
// The fit dialog without its widgets: the observation file and what it
// holds, a row per input the model can vary (ticked, bounds, log scale; a
// row under Monte Carlo cannot be ticked), the run with its progress and
// Stop, the report, and Apply, which writes the estimates into the model.

#include <optional>
#include <string>
#include <vector>

#include "fitting/fit_curves.h"
#include "fitting/fitter.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

struct FitInputRow {
    std::string name;   // the data file's label
    std::string start;  // the model's text
    bool vary = false;
    std::string lower, upper;  // bounds as typed; empty for none
    bool logScale = false;
    bool enabled = true;       // false for a row under Monte Carlo
};

class FitForm {
public:
    FitForm(const DataSet& model, UserInterface& ui);

    const DataSet& model() const { return model_; }
    std::vector<FitInputRow> rows;

    // Reads an observation file; on a problem its message is shown and the
    // observations read before stay. True when read.
    bool chooseObservations(const std::string& path);
    const std::string& observationFile() const { return observationFile_; }
    // "24 observations of C/Co at 2 places" or "No observations chosen."
    std::string observationSummary() const;
    bool hasObservations() const { return observations_.has_value(); }

    // Runs the fit of the ticked rows; a refusal or a bad bound is shown as a
    // message. `progress(iteration, sumOfSquares)` after each iteration and
    // `keepGoing()` between model runs may stop it. True when a report came.
    bool run(const std::function<void(int, double)>& progress, const std::function<bool()>& keepGoing);
    bool running() const { return running_; }

    const std::optional<FitReport>& report() const { return report_; }
    std::string reportText() const;
    // The plot's curves at the estimates (empty before a fit).
    std::vector<FitCurve> curves() const;
    // Whether there is a fit to plot (as for Apply, an estimate or not).
    bool canPlot() const { return report_ && report_->fitted(); }
    // Writes the fit's plot file for the plotting utility: true when written.
    // A calculation error is shown as a message; an error writing the file
    // raises (61, 75, 76) for the caller's handler.
    bool writePlot(const std::string& path) const;

    // Whether Apply can write the estimates (a fit that converged, hit its
    // iteration limit or was stopped; not one refused or failed).
    bool canApply() const;
    // The estimates into `target`'s input rows.
    void apply(DataSet& target) const;

private:
    DataSet model_;
    UserInterface& ui_;
    std::string observationFile_;
    std::optional<ObservationSet> observations_;
    std::optional<FitReport> report_;
    bool running_ = false;
};

}  // namespace bm
