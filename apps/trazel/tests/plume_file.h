#pragma once
// Plot files of a made-up plume, written in the workbench's layout, for tests
// of large and partial files: the plume's centre moves along x with time and
// spreads as it goes; in three dimensions it is centred at z = 5. Its values
// come from the closed form below, so a test knows every node's value without
// asking the reader.

#include <charconv>
#include <cmath>
#include <ostream>
#include <string>
#include <vector>

namespace bm::trazel::testing {

struct PlumeGrid {
    std::vector<double> x, y, z, t;  // z empty: a two-dimensional file
    bool stopped = false;            // the header says the run was stopped
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
    if (g.stopped) out << "Computation Status: Stopped before the end; values not computed are 0" << crlf;
    out << "Data File Name: Input Data Not Saved" << crlf << crlf << crlf;
}

// The whole file, written row by row (a large one never stands whole in memory).
inline void writePlume(std::ostream& out, const PlumeGrid& g) {
    writeHeader(out, g);
    std::string row;
    if (!g.threeD()) {
        row = "Time:";
        for (double t : g.t) {
            row += ", ";
            appendNumber(row, t);
        }
        out << row << "\r\n";
        for (double x : g.x)
            for (double y : g.y) {
                row.clear();
                appendNumber(row, x);
                row += ", ";
                appendNumber(row, y);
                for (std::size_t it = 0; it < g.t.size(); ++it) {
                    row += ", ";
                    appendValue(row, nodeValue(g, x, y, 0, it));
                }
                row += "\r\n";
                out << row;
            }
        return;
    }
    for (std::size_t it = 0; it < g.t.size(); ++it) {
        row = "Time is ";
        appendNumber(row, g.t[it]);
        row += " day\r\nZ Coordinate =>";
        for (double z : g.z) {
            row += ", ";
            appendNumber(row, z);
        }
        out << row << "\r\n";
        for (double x : g.x)
            for (double y : g.y) {
                row.clear();
                appendNumber(row, x);
                row += ", ";
                appendNumber(row, y);
                for (double z : g.z) {
                    row += ", ";
                    appendValue(row, nodeValue(g, x, y, z, it));
                }
                row += "\r\n";
                out << row;
            }
        out << "\r\n\r\n";
    }
}

// Whether a value read back is the node's value as printed (five figures).
inline bool asPrinted(double read, double exact) {
    if (exact < 1e-9) return read == 0;
    return std::fabs(read - exact) <= 5e-5 * exact;
}

}  // namespace bm::trazel::testing
