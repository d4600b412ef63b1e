// The output section of a model block: the last results, Regular (the grid) or
// Monte Carlo (the concentrations of the iterations at the simulation point).
//
// The writer takes the counts from the upper bounds of the axis lists. A result
// cell that the result array does not hold (a run stopped before the array was
// made) is written as 0, so that the file always has as many values as its
// counts say and reads back.

#include <algorithm>
#include <climits>

#include "files/block_parts.h"
#include "files/data_file_blocks.h"
#include "model/number_text.h"
#include "shell/base/checked_math.h"

namespace bm {

using namespace blockparts;

namespace {

template <class T, int N, class... I>
T cellOr0(const Array<T, N>& a, I... i) {
    const std::array<int, N> idx{static_cast<int>(i)...};
    for (int k = 0; k < N; ++k)
        if (idx[static_cast<std::size_t>(k)] < 0 || idx[static_cast<std::size_t>(k)] > a.ub(k)) return T{};
    return a(i...);
}

template <class T>
T elementOr0(const List<T>& list, int i) {
    return i >= 0 && i <= list.ub() ? list(i) : T{};
}

long long nonNegative(long long v) { return v < 0 ? 0 : v; }

// About the most bytes `rows` rows of `fields` reals take (the 15-digit
// general text, its blanks and ", "), for reserving the text: 0 (no reserve)
// for a count past any text that can be written.
std::size_t gridBytes(long long rows, int fields) {
    const long double bytes = static_cast<long double>(nonNegative(rows)) * (nonNegative(fields) * 24.0L + 2);
    return bytes > static_cast<long double>(1ll << 40) ? 0 : static_cast<std::size_t>(bytes);
}

// Values to read, for the room test; saturates instead of overflowing.
long long valuesToRead(long double count) {
    return count > static_cast<long double>(LLONG_MAX / 2) ? LLONG_MAX / 2 : static_cast<long long>(count);
}

void endOutput(PrintOutput& out) {
    out.printLine("[End Output Data]");
    out.printLine();
}

// The rest of the last line (or "[End Output Data]") and the empty line.
void skipEndOutput(FieldInput& in) {
    in.lineInput();
    in.lineInput();
}

// A list of stream values on a line of its own. With no values the reader
// takes the empty line whole.
template <class T>
void readLineOfValues(FieldInput& in, List<T>& list, int count) {
    if (count <= 0) {
        in.lineInput();
        return;
    }
    for (int i = 1; i <= count; ++i) list(i) = static_cast<T>(in.numberField());
}

// The kind whose Monte Carlo part a block holds: the model word's, with the
// chemical flag of the block.
const ModelKindInfo& kindOf(const DataSet& d, bool multi) { return *modelKindInfo(d.modelType, multi); }

// The counts of a grid's axes; y and z only where the layout has them.
struct Counts {
    int x = 0, y = 0, z = 0, t = 0;
};

void writeCounts(PrintOutput& out, const Counts& n, bool withY, bool withZ) {
    out.printLine("Number of x terms: " + signedFieldInteger(n.x));
    if (withY) out.printLine("Number of y terms: " + signedFieldInteger(n.y));
    if (withZ) out.printLine("Number of z terms: " + signedFieldInteger(n.z));
    out.printLine("Number of t terms: " + signedFieldInteger(n.t));
}

// Reads the count lines and keeps them in the DataSet's term counters.
Counts readCounts(DataSet& d, FieldInput& in, bool withY, bool withZ) {
    Counts n;
    n.x = countFrom(labelField(in));
    if (withY) n.y = countFrom(labelField(in));
    if (withZ) n.z = countFrom(labelField(in));
    n.t = countFrom(labelField(in));
    d.numXTerms = static_cast<std::int16_t>(n.x);
    if (withY) d.numYTerms = static_cast<std::int16_t>(n.y);
    if (withZ) d.numZTerms = static_cast<std::int16_t>(n.z);
    d.numTTerms = static_cast<std::int16_t>(n.t);
    return n;
}

// ---- one dimension and unsaturated -------------------------------------------------

void writeGrid1D(const DataSet& d, PrintOutput& out, BlockLayout layout, bool multi) {
    const int nx = countOfBound(d.xValues.ub());
    const int nt = countOfBound(d.tValues.ub());
    const bool unsat = layout == BlockLayout::Unsaturated;
    writeCounts(out, {nx, 0, 0, nt}, false, false);
    for (int t = 1; t <= nt; ++t) out.printSignedReal(d.tValues(t), ", ");
    const int chemicals = multi ? d.numChemicals : 1;
    out.reserveMore(gridBytes(static_cast<long long>(chemicals) * nx, nt));
    for (int c = 1; c <= chemicals; ++c) {
        for (int x = 1; x <= nx; ++x) {
            out.printLine();
            out.printSignedReal(d.xValues(x));
            for (int t = 1; t <= nt; ++t) {
                const double v = multi ? cellOr0(unsat ? d.chemResultUnsat : d.chemResult1D, c, x, t)
                                       : cellOr0(unsat ? d.resultUnsat : d.result1D, x, t);
                out.printStreamReal(v, ", ");
            }
        }
    }
    endOutput(out);  // on the line of the last row
}

void readGrid1D(DataSet& d, FieldInput& in, BlockLayout layout, bool multi) {
    const Counts n = readCounts(d, in, false, false);
    const int nx = n.x, nt = n.t;
    const int chemicals = multi ? d.numChemicals : 1;
    const long double X = nonNegative(nx), T = nonNegative(nt), C = nonNegative(chemicals);
    in.requireRoomFor(valuesToRead(T + C * X * (1 + T)));
    requireMemoryFor((X + 1) * (T + 1) * (multi ? C + 1 : 1));
    const bool unsat = layout == BlockLayout::Unsaturated;
    Array<double, 2>& single = unsat ? d.resultUnsat : d.result1D;
    Array<double, 3>& chem = unsat ? d.chemResultUnsat : d.chemResult1D;
    d.xValues.redim(nx);
    d.tValues.redim(nt);
    if (multi) chem.redim({chemicals, nx, nt});
    else single.redim({nx, nt});
    // The empty text in front of the axis line's first comma; with neither times
    // nor rows the writer left nothing before "[End Output Data]".
    if (nt > 0 || (chemicals > 0 && nx > 0)) in.textField();
    for (int t = 1; t <= nt; ++t) d.tValues(t) = in.numberField();
    for (int c = 1; c <= chemicals; ++c) {
        for (int x = 1; x <= nx; ++x) {
            d.xValues(x) = in.numberField();
            for (int t = 1; t <= nt; ++t) {
                const double v = in.numberField();
                if (multi) chem(c, x, t) = v;
                else single(x, t) = v;
            }
        }
    }
    skipEndOutput(in);
}

// ---- two dimensions -----------------------------------------------------------------

void writeGrid2D(const DataSet& d, PrintOutput& out, bool multi) {
    const int nx = countOfBound(d.xValues.ub());
    const int ny = countOfBound(d.yValues.ub());
    const int nt = countOfBound(d.tValues.ub());
    writeCounts(out, {nx, ny, 0, nt}, true, false);
    out.printLine();
    for (int t = 1; t <= nt; ++t) out.printSignedReal(d.tValues(t), ", ");
    out.printLine();
    const int chemicals = multi ? d.numChemicals : 1;
    out.reserveMore(gridBytes(static_cast<long long>(chemicals) * nx * ny, nt + 2));
    for (int c = 1; c <= chemicals; ++c) {
        for (int x = 1; x <= nx; ++x) {
            for (int y = 1; y <= ny; ++y) {
                out.printSignedReal(d.xValues(x));
                out.printSignedReal(d.yValues(y), ", ");
                out.print(", ");
                for (int t = 1; t <= nt; ++t)
                    out.printSignedReal(multi ? cellOr0(d.chemResult2D, c, x, y, t) : cellOr0(d.result2D, x, y, t));
                out.printLine();
            }
        }
    }
    endOutput(out);
}

void readGrid2D(DataSet& d, FieldInput& in, bool multi) {
    const Counts n = readCounts(d, in, true, false);
    const int nx = n.x, ny = n.y, nt = n.t;
    in.lineInput();  // empty line
    const int chemicals = multi ? d.numChemicals : 1;
    const long double X = nonNegative(nx), Y = nonNegative(ny), T = nonNegative(nt), C = nonNegative(chemicals);
    in.requireRoomFor(valuesToRead(T + C * X * Y * (2 + T)));
    requireMemoryFor((X + 1) * (Y + 1) * (T + 1) * (multi ? C + 1 : 1));
    d.xValues.redim(nx);
    d.yValues.redim(ny);
    d.tValues.redim(nt);
    if (multi) d.chemResult2D.redim({chemicals, nx, ny, nt});
    else d.result2D.redim({nx, ny, nt});
    in.textField();  // the empty text in front of the axis line's first comma
    for (int t = 1; t <= nt; ++t) d.tValues(t) = in.numberField();
    for (int c = 1; c <= chemicals; ++c) {
        for (int x = 1; x <= nx; ++x) {
            for (int y = 1; y <= ny; ++y) {
                d.xValues(x) = in.numberField();
                d.yValues(y) = in.numberField();
                if (nt <= 0) in.lineInput();  // a row with no values: " x,  y, "
                for (int t = 1; t <= nt; ++t) {
                    const double v = in.numberField();
                    if (multi) d.chemResult2D(c, x, y, t) = v;
                    else d.result2D(x, y, t) = v;
                }
            }
        }
    }
    skipEndOutput(in);
}

// ---- three dimensions ---------------------------------------------------------------

void writeGrid3D(const DataSet& d, PrintOutput& out, bool multi) {
    const int nx = countOfBound(d.xValues.ub());
    const int ny = countOfBound(d.yValues.ub());
    const int nz = countOfBound(d.zValues.ub());
    const int nt = countOfBound(d.tValues.ub());
    writeCounts(out, {nx, ny, nz, nt}, true, true);
    out.printLine();
    const int chemicals = multi ? d.numChemicals : 1;
    out.reserveMore(gridBytes(static_cast<long long>(chemicals) * nt * (static_cast<long long>(nx) * ny + 1), nz + 2));
    for (int c = 1; c <= chemicals; ++c) {
        for (int t = 1; t <= nt; ++t) {
            out.printStreamReal(d.tValues(t), "Time ,");
            out.printLine();
            out.print("ZCoordinate ");
            for (int z = 1; z <= nz; ++z) out.printStreamReal(d.zValues(z), ", ");
            out.printLine();
            for (int x = 1; x <= nx; ++x) {
                for (int y = 1; y <= ny; ++y) {
                    out.printSignedReal(d.xValues(x));
                    out.printSignedReal(d.yValues(y), ", ");
                    for (int z = 1; z <= nz; ++z)
                        out.printSignedReal(multi ? cellOr0(d.chemResult3D, c, x, y, z, t) : cellOr0(d.result3D, x, y, z, t),
                                            ", ");
                    out.printLine();
                }
            }
            out.printLine();
            out.printLine();
        }
    }
    endOutput(out);
}

void readGrid3D(DataSet& d, FieldInput& in, bool multi) {
    const Counts n = readCounts(d, in, true, true);
    const int nx = n.x, ny = n.y, nz = n.z, nt = n.t;
    in.lineInput();  // empty line
    const int chemicals = multi ? d.numChemicals : 1;
    const long double X = nonNegative(nx), Y = nonNegative(ny), Z = nonNegative(nz), T = nonNegative(nt),
                      C = nonNegative(chemicals);
    in.requireRoomFor(valuesToRead(C * T * (1 + Z + X * Y * (2 + Z))));
    requireMemoryFor((X + 1) * (Y + 1) * (Z + 1) * (T + 1) * (multi ? C + 1 : 1));
    d.xValues.redim(nx);
    d.yValues.redim(ny);
    d.zValues.redim(nz);
    d.tValues.redim(nt);
    if (multi) d.chemResult3D.redim({chemicals, nx, ny, nz, nt});
    else d.result3D.redim({nx, ny, nz, nt});
    for (int c = 1; c <= chemicals; ++c) {
        for (int t = 1; t <= nt; ++t) {
            in.textField();  // "Time "
            d.tValues(t) = in.numberField();
            in.textField();  // "ZCoordinate "
            for (int z = 1; z <= nz; ++z) d.zValues(z) = in.numberField();
            for (int x = 1; x <= nx; ++x) {
                for (int y = 1; y <= ny; ++y) {
                    d.xValues(x) = in.numberField();
                    d.yValues(y) = in.numberField();
                    for (int z = 1; z <= nz; ++z) {
                        const double v = in.numberField();
                        if (multi) d.chemResult3D(c, x, y, z, t) = v;
                        else d.result3D(x, y, z, t) = v;
                    }
                }
            }
            in.lineInput();
            in.lineInput();
        }
    }
    skipEndOutput(in);
}

// ---- time-varying ---------------------------------------------------------------------

void writeGridTimeVarying(const DataSet& d, PrintOutput& out) {
    const int nx = countOfBound(d.varXValues.ub());
    const int ny = countOfBound(d.varYValues.ub());
    const int nt = countOfBound(d.varTValues.ub());
    writeCounts(out, {nx, ny, 0, nt}, true, false);
    out.printLine();
    for (int i = 1; i <= nt; ++i) out.printStreamReal(d.varTValues(i));
    out.printLine();
    for (int i = 1; i <= nx; ++i) out.printStreamReal(d.varXValues(i));
    out.printLine();
    for (int i = 1; i <= ny; ++i) out.printStreamReal(d.varYValues(i));
    out.printLine();
    const long long n = static_cast<long long>(nx) * ny * nt;
    out.reserveMore(gridBytes(n, 1));
    for (long long k = 1; k <= n; ++k) out.printStreamReal(elementOr0(d.resultVar, static_cast<int>(k)));
    endOutput(out);
}

void readGridTimeVarying(DataSet& d, FieldInput& in) {
    const Counts n = readCounts(d, in, true, false);
    const int nx = n.x, ny = n.y, nt = n.t;
    in.lineInput();  // empty line
    const long double X = nonNegative(nx), Y = nonNegative(ny), T = nonNegative(nt);
    const long double cells = X * Y * T;
    in.requireRoomFor(valuesToRead(X + Y + T + cells));
    requireMemoryFor(cells + 1);
    d.varXValues.redim(nx);
    d.varYValues.redim(ny);
    d.varTValues.redim(nt);
    const int concentrations = static_cast<int>(cells);
    d.resultVar.redim(concentrations);
    readLineOfValues(in, d.varTValues, nt);
    readLineOfValues(in, d.varXValues, nx);
    readLineOfValues(in, d.varYValues, ny);
    for (int k = 1; k <= concentrations; ++k) d.resultVar(k) = static_cast<float>(in.numberField());
    skipEndOutput(in);
}

}  // namespace

void writeRegularOutput(const DataSet& d, PrintOutput& out, BlockLayout layout, bool multi) {
    switch (layout) {
    case BlockLayout::OneDimensional:
    case BlockLayout::Unsaturated: writeGrid1D(d, out, layout, multi); break;
    case BlockLayout::TwoDimensional: writeGrid2D(d, out, multi); break;
    case BlockLayout::ThreeDimensional: writeGrid3D(d, out, multi); break;
    case BlockLayout::TimeVarying: writeGridTimeVarying(d, out); break;
    case BlockLayout::None: break;
    }
}

void readRegularOutput(DataSet& d, FieldInput& in, BlockLayout layout, bool multi) {
    switch (layout) {
    case BlockLayout::OneDimensional:
    case BlockLayout::Unsaturated: readGrid1D(d, in, layout, multi); break;
    case BlockLayout::TwoDimensional: readGrid2D(d, in, multi); break;
    case BlockLayout::ThreeDimensional: readGrid3D(d, in, multi); break;
    case BlockLayout::TimeVarying: readGridTimeVarying(d, in); break;
    case BlockLayout::None: break;
    }
}

void writeMonteCarloOutput(const DataSet& d, PrintOutput& out, BlockLayout layout, bool multi) {
    if (layout == BlockLayout::None) return;
    const ModelKindInfo& kind = kindOf(d, multi);
    const long long n = d.monteStore(kind.kind).monteIterations;
    out.printLine("Number of Monte Carlo Iterations: " + signedFieldInteger(n));
    const auto printValue = [&](const IterationResults& results, long long i) {
        const double v = results.valueOr0(static_cast<int>(i));
        if (results.singlePrecision()) out.printStreamReal(static_cast<float>(v));
        else out.printStreamReal(v);
    };
    out.reserveMore(gridBytes((multi ? d.numChemicals : 1) * std::max(n, 0LL), 1));
    if (!multi) {
        const IterationResults results = kind.monteCarloResults(const_cast<DataSet&>(d), 1);  // read only
        for (long long i = 1; i <= n - 1; ++i) printValue(results, i);
        endOutput(out);  // on the line of the values
        return;
    }
    for (int c = 1; c <= d.numChemicals; ++c) {
        out.printLine("Chemical " + signedFieldInteger(c));
        const IterationResults results = kind.monteCarloResults(const_cast<DataSet&>(d), c);  // read only
        for (long long i = 1; i <= n - 1; ++i) printValue(results, i);
        out.printLine();
    }
    endOutput(out);
}

void readMonteCarloOutput(DataSet& d, FieldInput& in, BlockLayout layout, bool multi) {
    if (layout == BlockLayout::None) return;
    const ModelKindInfo& kind = kindOf(d, multi);
    const std::int32_t n = toInt32(textValue(labelField(in)));
    d.monteStore(kind.kind).monteIterations = n;
    const int values = n > 1 ? n - 1 : 0;
    if (!multi) {
        in.requireRoomFor(values);
        IterationResults results = kind.monteCarloResults(d, 1);
        results.redim(values);
        for (int i = 1; i <= values; ++i) results.set(i, in.numberField());
        skipEndOutput(in);
        return;
    }
    const int chemicals = d.numChemicals;
    const long double C = nonNegative(chemicals);
    in.requireRoomFor(valuesToRead(C * values));
    requireMemoryFor((C + 1) * (static_cast<long double>(values) + 1));
    kind.monteCarloResults(d, 1).redim(values, chemicals);
    for (int c = 1; c <= chemicals; ++c) {
        in.lineInput();  // "Chemical  c"
        if (values == 0) in.lineInput();  // the chemical's empty line of values
        IterationResults results = kind.monteCarloResults(d, c);
        for (int i = 1; i <= values; ++i) results.set(i, in.numberField());
    }
    skipEndOutput(in);
}

void writeOutputSection(const DataSet& d, PrintOutput& out, BlockLayout layout, bool multi) {
    out.printLine();
    out.printLine("[Begin Output Data]");
    out.printLine(d.calculationMode);
    if (d.calculationMode == "Monte Carlo") writeMonteCarloOutput(d, out, layout, multi);
    else writeRegularOutput(d, out, layout, multi);
}

void readOutputSection(DataSet& d, FieldInput& in, BlockLayout layout, bool multi) {
    in.lineInput();  // empty line
    in.lineInput();  // "[Begin Output Data]"
    d.calculationMode = in.textField();
    if (d.calculationMode == "Monte Carlo") readMonteCarloOutput(d, in, layout, multi);
    else readRegularOutput(d, in, layout, multi);
    // The unsaturated screens keep the point's concentration in the mode's text.
    if (layout == BlockLayout::Unsaturated && !contains(d.calculationMode, "Monte Carlo"))
        d.currentConcentration = textValue(d.calculationMode);
}

}  // namespace bm
