#pragma once
// The files the workbench hands to Trazel, read into one record:
// - regular results ("Ground Water" first): concentrations over x (one
//   dimension, also the unsaturated model), x-y (two dimensions) or x-y-z
//   (three dimensions) for each time, and the time-varying dispersion model's
//   line (x) and point (x-y) sources;
// - a Monte Carlo simulation ("Monte Carlo", "Type: Concentrations"): one
//   concentration per iteration;
// - generated samples ("Monte Carlo", "Type: Generated"): per variant its
//   input and output statistics and its samples;
// - a fit to observations ("Fit to Observations"): the fitted breakthrough
//   curve at each observed place, the observations and their residuals.
//
// A regular result of any size is read in one pass through a small buffer:
// a large grid keeps a sub-grid of every time for the overview (every k-th
// node), and one x-y plane in full for the view shown; readSlice fetches
// another plane later. A file whose values stop early, or that a stopped run
// wrote, is read as far as it goes and says so (`incomplete`).

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "apps/trazel/line_reader.h"
#include "fitting/fit_plot_file.h"

namespace bm::trazel {

enum class PlotKind {
    Profile,     // C(x, t)
    Plane,       // C(x, y, t)
    Volume,      // C(x, y, z, t)
    Simulation,  // one value per Monte Carlo iteration
    Generated,   // samples per variant
    Fit,         // fitted curves over time with the observations and residuals
};

// A "Label: value" line of a header; a line without a colon has an empty label.
struct HeaderLine {
    std::string label;
    std::string value;
};

// Concentrations on the grid of a regular run. Axes a file does not have hold
// a single coordinate 0. A node the file holds no value for is NaN.
struct Grid {
    std::vector<double> x, y, z, t;
    std::vector<double> c;  // at ((it * nx + ix) * ny + iy) * nz + iz

    std::size_t nx() const { return x.size(); }
    std::size_t ny() const { return y.size(); }
    std::size_t nz() const { return z.size(); }
    std::size_t nt() const { return t.size(); }
    std::size_t index(std::size_t ix, std::size_t iy, std::size_t iz, std::size_t it) const {
        return ((it * nx() + ix) * ny() + iy) * nz() + iz;
    }
    double at(std::size_t ix, std::size_t iy, std::size_t iz, std::size_t it) const { return c[index(ix, iy, iz, it)]; }
};

// Every coordinate of a regular result's file (the overview grid may keep fewer).
struct Axes {
    std::vector<double> x, y, z, t;
};

// One x-y plane of one time, as closely as the limits allow: every node of
// the file up to ReadLimits::sliceValues, every k-th beyond.
struct Slice {
    int time = -1, plane = -1;  // indexes into Axes::t and Axes::z
    std::vector<double> x, y;
    std::vector<double> c;  // at ix * y.size() + iy
};

// How much of a large grid is kept.
struct ReadLimits {
    std::size_t displayValues = 6'000'000;  // the overview of all times together
    std::size_t axisNodes = 1024;            // overview nodes along x and y of a contour plot
    std::size_t zNodes = 256;                // and along z
    std::size_t profileNodes = 8192;         // points of a curve
    std::size_t sliceValues = 8'000'000;     // the plane shown
    std::size_t unplannedValues = 24'000'000;  // a file whose header announces no counts is kept whole up to this
};

// Thrown inside the reader when a file without counts outgrows its limit.
struct GridTooLarge {};

struct Variant {
    std::string name;
    std::vector<HeaderLine> inputs;   // "Input Data:" section
    std::vector<HeaderLine> outputs;  // "Output Data:" section
    std::vector<double> samples;
};

struct PlotFile {
    PlotKind kind = PlotKind::Profile;
    // The time-varying model reports concentrations in concentration units;
    // every other model reports the ratio C/Co.
    bool timeVarying = false;
    std::vector<HeaderLine> header;
    std::string model;        // "One Dimensional", "Point Source", "One Dimensional Model" ...
    std::string aquifer;      // the dispersion function for the time-varying model
    std::string contaminant;
    std::string lengthUnit, timeUnit, concentrationUnit;
    Grid grid;
    std::vector<double> samples;    // Simulation
    std::vector<Variant> variants;  // Generated: only those with samples
    FitPlot fit;                    // Fit
    // Oddities that do not stop the plot (counts that disagree with the header).
    std::vector<std::string> warnings;
    // Why some values are missing or not computed ("the run was stopped",
    // "the file ends early"); empty when the file is complete.
    std::string incomplete;

    // Regular results only:
    Axes axes;
    bool reduced = false;             // the overview keeps a sub-grid
    std::shared_ptr<const Slice> focus;  // the plane read in full, when there is one
    std::vector<double> planePeak;    // largest value of each time's z plane, at it * nz + iz (NaN: none)
    double lowest = 0, highest = 0;   // over every value of the file
    std::vector<std::uint64_t> blockStarts;  // byte offset of each time's block, where times come in blocks

    // The value of the first header line with this label (compared without
    // regard to case); empty when there is none.
    std::string value(std::string_view label) const;
    bool has(std::string_view label) const;
};

struct ReadResult {
    bool ok = false;
    bool cancelled = false;
    PlotFile file;
    std::string error;  // why the file cannot be plotted
};

ReadResult parsePlotText(std::string_view text, const ReadLimits& limits = {});
ReadResult readPlotFile(const std::string& path, const ReadLimits& limits = {}, const ReadProgress& progress = {});

struct SliceResult {
    std::shared_ptr<Slice> slice;  // null when cancelled or failed
    bool cancelled = false;
    std::string error;
};

// The x-y plane of a time (and z plane) of a file read before, at the
// resolution of ReadLimits::sliceValues: a file in time blocks is read at
// the block alone, any other once more from the start.
SliceResult readSlice(const std::string& path, const PlotFile& file, int time, int plane,
                      const ReadLimits& limits = {}, const ReadProgress& progress = {});
// The same from a text in memory.
SliceResult sliceOfText(std::string_view text, const PlotFile& file, int time, int plane, const ReadLimits& limits = {});

}  // namespace bm::trazel
