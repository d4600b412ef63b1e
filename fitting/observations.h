#pragma once
// Observed concentrations for a fit: a text file of columns, comma- or
// blank-separated, whose first line names them: x, y, z (as the model's
// dimension needs them), t, the concentration (C, in the model's unit, or
// C/Co, relative to the source) and optionally w, each observation's weight.
// Blank lines and lines starting with "#" are passed over; other columns are
// ignored.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/data_set.h"

namespace bm {

struct Observation {
    double x = 0, y = 0, z = 0, t = 0;
    double concentration = 0;
    double weight = 1;
    int line = 0;  // of the file, from 1
};

struct ObservationSet {
    std::vector<Observation> points;
    bool relative = false;  // the column is C/Co
    bool weighted = false;  // the file has a weight column
    std::string fileName;   // as given, for the messages
};

// A reason the observations cannot be used, as the message shows it.
struct ObservationProblem {
    std::string text;
};

// The observations of a file's text for a model of `dimension` axes in space
// (1, 2 or 3); the problem of the first bad line otherwise.
struct ObservationReading {
    std::optional<ObservationSet> set;
    ObservationProblem problem;
};
ObservationReading parseObservations(std::string_view text, std::string_view fileName, int dimension);
// The same from a file (a file that cannot be read is a problem too).
ObservationReading readObservations(const std::string& path, int dimension);

// The observations that the model cannot be asked about: an empty text when
// every point lies inside its domain (times from 0; a column from its inlet,
// a finite column or strip within its walls).
std::string observationsOutsideDomain(const ObservationSet& observations, const DataSet& model);

inline constexpr const char* kFitTitle = "Fit to Observations";

}  // namespace bm

namespace bm {
// The axes in space an observation of the model gives: the kind's dimension,
// but x alone where the model does not use y (a time-varying line source).
int observationDimension(const DataSet& model);
}  // namespace bm
