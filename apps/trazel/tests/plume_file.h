#pragma once
// Plot files of a made-up plume, written in the workbench's layout, for tests
// of large and partial files: the plume's centre moves along x with time and
// spreads as it goes; in three dimensions it is centred at z = 5. Its values
// come from the closed form below, so a test knows every node's value without
// asking the reader.

#include <charconv>
#include <fstream>
#include <cmath>
#include <ostream>
#include <string>
#include <vector>

#include "files/stopped_run_note.h"

namespace bm::trazel::testing {

struct PlumeGrid {
    std::vector<double> x, y, z, t;  // z empty: a two-dimensional file
    bool stopped = false;            // a note beside the file says the run was stopped (see writePlumeFile)
    std::size_t lastTimeWithValues = static_cast<std::size_t>(-1);  // later times hold zeros, as a stopped run leaves them

    bool threeD() const { return !z.empty(); }
};

inline std::vector<double> evenly(double from, double step, std::size_t n) {
    std::vector<double> v(n);
    for (std::size_t i = 0; i < n; ++i) v[i] = from + step * static_cast<double>(i);
    return v;
}

// C/Co at a point.
inline double plume(double x, double y, double z, double t, bool threeD) {
    const double sx = 4 + 0.5 * t, sy = 2 + 0.1 * t;
    double e = (x - 10 - 2 * t) * (x - 10 - 2 * t) / (2 * sx) + y * y / (2 * sy);
    if (threeD) e += (z - 5) * (z - 5) / 8;
    if (e > 30) return 0;
    return std::exp(-e) / std::sqrt(1 + 0.05 * t);
}

// The value of a node as the file holds it.
inline double nodeValue(const PlumeGrid& g, double x, double y, double z, std::size_t it) {
    if (it > g.lastTimeWithValues) return 0;
    return plume(x, y, z, g.t[it], g.threeD());
}

// A value as the workbench prints it: five significant figures, and "." for zero.
inline void appendValue(std::string& out, double v) {
    if (v < 1e-9) {
        out += ".";
        return;
    }
    char buffer[32];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, v, std::chars_format::general, 5);
    out.append(buffer, r.ptr);
}

inline void appendNumber(std::string& out, double v) {
    char buffer[32];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, v);
    out.append(buffer, r.ptr);
}

inline void writeHeader(std::ostream& out, const PlumeGrid& g) {
    const char* crlf = "\r\n";
    out << "Ground Water" << crlf << "Model: " << (g.threeD() ? "Three Dimensional" : "Two Dimensional") << crlf
        << "Aquifer: Infinite" << crlf << "Contaminant:Finite / Line" << crlf << "Length Units: m" << crlf
        << "Time Units: day" << crlf << "Concentration Units: mg/L" << crlf << "Number of X Terms:  " << g.x.size() << " "
        << crlf << "Number of Y Terms:  " << g.y.size() << " " << crlf;
    if (g.threeD()) out << "Number of Z Terms:  " << g.z.size() << " " << crlf;
    out << "Number of Time Terms:  " << g.t.size() << " " << crlf << "Initial Concentration: 1" << crlf;
    out << "Data File Name: Input Data Not Saved" << crlf << crlf << crlf;
}

// A line of numbers: a label, then ", " and each number.
template <class Each>
void appendList(std::string& row, const char* label, std::size_t n, Each number) {
    row += label;
    for (std::size_t k = 0; k < n; ++k) {
        row += ", ";
        appendNumber(row, number(k));
    }
}

// The rows over x and, within x, over y: the coordinates and n values each.
template <class Value>
void writeRows(std::ostream& out, const PlumeGrid& g, std::size_t n, Value value) {
    std::string row;
    for (double x : g.x)
        for (double y : g.y) {
            row.clear();
            appendNumber(row, x);
            row += ", ";
            appendNumber(row, y);
            for (std::size_t k = 0; k < n; ++k) {
                row += ", ";
                appendValue(row, value(x, y, k));
            }
            row += "\r\n";
            out << row;
        }
}

// The whole file, written row by row (a large one never stands whole in memory).
inline void writePlume(std::ostream& out, const PlumeGrid& g) {
    writeHeader(out, g);
    std::string line;
    if (!g.threeD()) {
        appendList(line, "Time:", g.t.size(), [&](std::size_t k) { return g.t[k]; });
        out << line << "\r\n";
        writeRows(out, g, g.t.size(), [&](double x, double y, std::size_t it) { return nodeValue(g, x, y, 0, it); });
        return;
    }
    for (std::size_t it = 0; it < g.t.size(); ++it) {
        line = "Time is ";
        appendNumber(line, g.t[it]);
        line += " day\r\n";
        appendList(line, "Z Coordinate =>", g.z.size(), [&](std::size_t k) { return g.z[k]; });
        out << line << "\r\n";
        writeRows(out, g, g.z.size(), [&](double x, double y, std::size_t iz) { return nodeValue(g, x, y, g.z[iz], it); });
        out << "\r\n\r\n";
    }
}

// Whether a value read back is the node's value as printed (five figures).
inline bool asPrinted(double read, double exact) {
    if (exact < 1e-9) return read == 0;
    return std::fabs(read - exact) <= 5e-5 * exact;
}

// The plume written to path, with the workbench's note of a stopped run beside
// it when the grid says so.
inline void writePlumeFile(const std::string& path, const PlumeGrid& g) {
    {
        std::ofstream out(path, std::ios::binary);
        writePlume(out, g);
    }
    markStoppedRun(path, g.stopped);
}

}  // namespace bm::trazel::testing
