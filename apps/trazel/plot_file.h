#pragma once
// The files the workbench hands to Trazel, read into one record:
// - regular results ("Ground Water" first): concentrations over x (one
//   dimension, also the unsaturated model), x-y (two dimensions) or x-y-z
//   (three dimensions) for each time, and the time-varying dispersion model's
//   line (x) and point (x-y) sources;
// - a Monte Carlo simulation ("Monte Carlo", "Type: Concentrations"): one
//   concentration per iteration;
// - generated samples ("Monte Carlo", "Type: Generated"): per variant its
//   input and output statistics and its samples.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bm::trazel {

enum class PlotKind {
    Profile,     // C(x, t)
    Plane,       // C(x, y, t)
    Volume,      // C(x, y, z, t)
    Simulation,  // one value per Monte Carlo iteration
    Generated,   // samples per variant
};

// A "Label: value" line of a header; a line without a colon has an empty label.
struct HeaderLine {
    std::string label;
    std::string value;
};

// Concentrations on the grid of a regular run. Axes a file does not have hold
// a single coordinate 0.
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
    // Oddities that do not stop the plot (counts that disagree with the header).
    std::vector<std::string> warnings;

    // The value of the first header line with this label (compared without
    // regard to case); empty when there is none.
    std::string value(std::string_view label) const;
    bool has(std::string_view label) const;
};

struct ReadResult {
    bool ok = false;
    PlotFile file;
    std::string error;  // why the file cannot be plotted
};

ReadResult parsePlotText(std::string_view text);
ReadResult readPlotFile(const std::string& path);

}  // namespace bm::trazel
