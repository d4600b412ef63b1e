#include "apps/trazel/plot_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <optional>
#include <sstream>
#include <unordered_set>

#include "apps/trazel/cell_number.h"
#include "apps/trazel/grid_collector.h"
#include "files/stopped_run_note.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "shell/base/runtime_error.h"

namespace bm::trazel {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
constexpr const char* kEndsEarly = "the file ends early";
constexpr const char* kRunStopped = "the run was stopped";

// Reading stops at the first structural fault with a message for the user.
struct Unreadable {
    std::string message;
};

[[noreturn]] void fail(std::string message) { throw Unreadable{std::move(message)}; }

std::string shortened(std::string_view text) {
    constexpr std::size_t kMost = 60;
    if (text.size() <= kMost) return "\"" + std::string(text) + "\"";
    return "\"" + std::string(text.substr(0, kMost)) + "...\"";
}

std::string atLine(long long number) { return "Line " + std::to_string(number) + ": "; }
std::string atLine(const Line& line) { return atLine(line.number); }

bool startsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

bool sameWords(std::string_view a, std::string_view b) { return toLower(trim(a)) == toLower(trim(b)); }

HeaderLine headerLine(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == std::string_view::npos) return {"", trim(text)};
    return {trim(text.substr(0, colon)), trim(text.substr(colon + 1))};
}

std::string withoutAmpersands(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
    return text;
}

void takeUnits(PlotFile& f) {
    f.lengthUnit = withoutAmpersands(f.value("Length Units"));
    f.timeUnit = withoutAmpersands(f.value("Time Units"));
    f.concentrationUnit = withoutAmpersands(f.value("Concentration Units"));
}

std::optional<long long> announced(const PlotFile& f, std::string_view label) {
    if (!f.has(label)) return std::nullopt;
    const auto v = cellNumber(f.value(label));
    if (!v) return std::nullopt;
    return std::llround(*v);
}

// A count of the header that can plan the grid: 0 when it is missing or absurd.
std::size_t plannedCount(const PlotFile& f, std::string_view label) {
    const auto n = announced(f, label);
    return n && *n >= 1 && *n <= 100'000'000 ? static_cast<std::size_t>(*n) : 0;
}

void markIncomplete(PlotFile& f, const std::string& why, const std::string& detail) {
    if (f.incomplete.empty()) f.incomplete = why;
    if (!detail.empty()) f.warnings.push_back(detail);
}

// A count of the table compared with its header: more than announced is a
// damaged file; fewer is a file that ends early, plotted as far as it goes.
void compareAnnounced(PlotFile& f, std::string_view label, std::size_t found, std::string_view what) {
    const auto n = announced(f, label);
    if (!n || *n == static_cast<long long>(found)) return;
    const std::string words = "The header announces " + std::to_string(*n) + " " + std::string(what) + " (\"" +
                              std::string(label) + ": \") but the table holds " + std::to_string(found);
    if (*n < static_cast<long long>(found)) fail(words + ". The file seems damaged.");
    markIncomplete(f, kEndsEarly, words + ".");
}

bool isTimeIs(std::string_view text) { return startsWith(text, "Time is"); }
bool isTimeLabel(std::string_view text) { return startsWith(text, "Time:"); }

// The next line that is not empty; false at the end.
bool nextFilled(LineReader& in, Line& line) {
    while (in.next(line))
        if (!line.text.empty()) return true;
    return false;
}

// True when nothing but empty lines follows; the reader is left where it was
// otherwise (the line found is read again).
bool nothingFollows(LineReader& in) {
    Line line;
    if (!nextFilled(in, line)) return true;
    in.unread();
    return false;
}

// One row of numbers of a table.
enum class RowRead { Row, End, Stop, CutShort };

struct RowReader {
    LineReader& in;
    std::vector<double> values;
    Line line;
    std::string copy;  // the row's text for messages after the reader moved on

    // The next row of `width` numbers. Stop: a line that `stop` recognises
    // (read again next). CutShort: a last line that is not a whole row, as a
    // file that was being written when it was copied ends.
    RowRead next(std::size_t width, std::string_view layout, bool (*stop)(std::string_view)) {
        if (!nextFilled(in, line)) return RowRead::End;
        if (stop && stop(line.text)) {
            in.unread();
            return RowRead::Stop;
        }
        const bool numbers = rowNumbersInto(line.text, values);
        if (numbers && values.size() == width) return RowRead::Row;
        copy = std::string(line.text);
        const long long number = line.number;
        const std::size_t got = values.size();
        if (nothingFollows(in)) return RowRead::CutShort;
        if (!numbers) fail(atLine(number) + shortened(copy) + " is not a row of numbers.");
        fail(atLine(number) + "a row holds " + std::string(layout) + ", that is " + std::to_string(width) +
             " values, but this one holds " + std::to_string(got) + ".");
    }
};

// What the regular readers share.
struct Regular {
    PlotFile& f;
    LineReader& in;
    const ReadLimits& limits;
    bool overview = true;  // false: only the close-look plane is wanted
    int focusTime = -1, focusPlane = 0;
    Axes axes;
    std::optional<GridCollector> collector;

    void start(Counts counts) { collector.emplace(limits, counts, overview, focusTime, focusPlane); }
    void put(std::size_t it, std::size_t ix, std::size_t iy, std::size_t iz, double v) {
        collector->put(it, ix, iy, iz, v);
    }
};

std::vector<double> timesAfterLabel(const Line& line) {
    auto times = rowNumbers(line.text.substr(std::string_view("Time:").size()));
    if (!times) fail(atLine(line) + "the times " + shortened(line.text) + " are not all numbers.");
    if (times->empty()) fail(atLine(line) + "the line \"Time:\" lists no times.");
    return *times;
}

// --- one dimension ---------------------------------------------------------

void readProfile(Regular& r, const Line& timeLine) {
    PlotFile& f = r.f;
    r.axes.t = timesAfterLabel(timeLine);
    r.axes.y = {0};
    r.axes.z = {0};
    const std::size_t nt = r.axes.t.size();
    r.start({plannedCount(f, "Number of X Terms"), 1, 1, nt});
    RowReader rows{r.in, {}, {}, {}};
    for (;;) {
        const RowRead got = rows.next(1 + nt, "x and one concentration per time", nullptr);
        if (got == RowRead::CutShort) markIncomplete(f, kEndsEarly, "The last line is cut short: " + shortened(rows.copy) + ".");
        if (got != RowRead::Row) break;
        const std::size_t ix = r.axes.x.size();
        r.axes.x.push_back(rows.values[0]);
        for (std::size_t it = 0; it < nt; ++it) r.put(it, ix, 0, 0, rows.values[it + 1]);
    }
    if (r.axes.x.empty()) fail("The table under \"Time:\" has no rows of concentrations.");
    compareAnnounced(f, "Number of X Terms", r.axes.x.size(), "x values");
    compareAnnounced(f, "Number of Time Terms", nt, "times");
}

// --- x-y tables (two dimensions, and each time of three) ---------------------

// Rows that run over x and, within each x, over y, each with `extra` values.
// The first x block sets the y values; every later row must fall on the grid.
class XyTable {
public:
    XyTable(Regular& r, std::size_t extra, std::string_view layout) : r_(r), extra_(extra), layout_(layout) {}

    // Known axes (a later block of a three-dimensional file, or a second read).
    void knowAxes(const std::vector<double>& xs, const std::vector<double>& ys) {
        xs_ = xs;
        ys_ = ys;
        fixedX_ = true;
    }
    const std::vector<double>& xs() const { return xs_; }
    const std::vector<double>& ys() const { return ys_; }
    std::size_t rows() const { return rows_; }
    bool cutShort() const { return cut_; }

    // Reads the rows up to `stop` or the end. `onRow(ix, iy, values)` gets
    // each row; `ready(ny, tableEnded)` is called once the y values are known,
    // before the first row is handed on (`tableEnded`: the first x block was
    // all there was).
    template <class OnRow, class Ready>
    void read(bool (*stop)(std::string_view), OnRow onRow, Ready ready) {
        RowReader reader{r_.in, {}, {}, {}};
        std::vector<std::vector<double>> first;  // the first x block while the y values are not known
        std::vector<long long> firstLines;
        bool settled = !ys_.empty();
        if (settled) ready(ys_.size(), false);
        for (;;) {
            const RowRead got = reader.next(2 + extra_, layout_, stop);
            if (got == RowRead::CutShort) {
                cut_ = true;
                cutText_ = reader.copy;
            }
            if (got != RowRead::Row) break;
            if (!settled && (first.empty() || reader.values[0] == first.front()[0])) {
                first.push_back(reader.values);
                firstLines.push_back(reader.line.number);
                continue;
            }
            if (!settled) {
                settle(first, firstLines, onRow, ready, false);
                settled = true;
            }
            place(reader.line.number, reader.values, onRow);
        }
        if (!settled && !first.empty()) settle(first, firstLines, onRow, ready, true);
    }

    const std::string& cutText() const { return cutText_; }

private:
    template <class OnRow, class Ready>
    void settle(std::vector<std::vector<double>>& first, const std::vector<long long>& lines, OnRow onRow, Ready ready,
                bool tableEnded) {
        for (const std::vector<double>& v : first) ys_.push_back(v[1]);
        ready(ys_.size(), tableEnded);
        for (std::size_t k = 0; k < first.size(); ++k) place(lines[k], first[k], onRow);
        first.clear();
    }

    template <class OnRow>
    void place(long long lineNumber, const std::vector<double>& v, OnRow onRow) {
        const std::size_t ny = ys_.size();
        const std::size_t ix = rows_ / ny, iy = rows_ % ny;
        if (iy == 0 && !fixedX_) {
            if (!seen_.insert(v[0]).second)
                fail(atLine(lineNumber) + "x = " + plainNumber(v[0]) + " comes twice in the table.");
            xs_.push_back(v[0]);
        }
        if (ix >= xs_.size()) fail(atLine(lineNumber) + "the table holds more x values than the grid it began.");
        if (v[0] != xs_[ix] || v[1] != ys_[iy])
            fail(atLine(lineNumber) + "the rows do not form a complete x-y grid: x = " + plainNumber(xs_[ix]) +
                 ", y = " + plainNumber(ys_[iy]) + " was expected here.");
        onRow(ix, iy, v);
        ++rows_;
    }

    Regular& r_;
    std::size_t extra_;
    std::string_view layout_;
    std::vector<double> xs_, ys_;
    std::unordered_set<double> seen_;
    bool fixedX_ = false;
    bool cut_ = false;
    std::string cutText_;
    std::size_t rows_ = 0;
};

// A table that stopped inside the y values of an x, or at a cut line: the
// nodes it does not hold stay missing.
void noteEarlyEnd(PlotFile& f, const XyTable& table) {
    if (table.cutShort()) markIncomplete(f, kEndsEarly, "The last line is cut short: " + shortened(table.cutText()) + ".");
    const std::size_t ny = table.ys().size();
    if (ny > 0 && table.rows() % ny != 0)
        markIncomplete(f, kEndsEarly,
                       "The table ends inside the y values of x = " + plainNumber(table.xs().back()) + ".");
}

void readPlane(Regular& r, const Line& timeLine) {
    PlotFile& f = r.f;
    r.axes.t = timesAfterLabel(timeLine);
    r.axes.z = {0};
    const std::size_t nt = r.axes.t.size();
    XyTable table(r, nt, "x, y and one concentration per time");
    if (!r.overview) table.knowAxes(r.f.axes.x, r.f.axes.y);
    table.read(
        nullptr,
        [&](std::size_t ix, std::size_t iy, const std::vector<double>& v) {
            for (std::size_t it = 0; it < nt; ++it) r.put(it, ix, iy, 0, v[it + 2]);
        },
        [&](std::size_t ny, bool tableEnded) {
            const auto announcedY = announced(f, "Number of Y Terms");
            if (r.overview && announcedY && *announcedY != static_cast<long long>(ny)) {
                if (!tableEnded || *announcedY < static_cast<long long>(ny))
                    fail("The header announces " + std::to_string(*announcedY) +
                         " y values (\"Number of Y Terms: \") but the table holds " + std::to_string(ny) +
                         ". The file seems damaged.");
                compareAnnounced(f, "Number of Y Terms", ny, "y values");
            }
            r.start({plannedCount(f, "Number of X Terms"), ny, 1, nt});
        });
    if (table.rows() == 0) fail("The table under \"Time:\" has no rows of concentrations.");
    r.axes.x = table.xs();
    r.axes.y = table.ys();
    noteEarlyEnd(f, table);
    compareAnnounced(f, "Number of X Terms", r.axes.x.size(), "x values");
    compareAnnounced(f, "Number of Time Terms", nt, "times");
}

// --- three dimensions: a block of rows for each time ---------------------------

// The lines "Time is 50 day" and "Z Coordinate =>, 0, 2.5, 5" of a block.
struct BlockHead {
    double t = 0;
    std::vector<double> z;
};

BlockHead readBlockHead(LineReader& in, const Line& head) {
    BlockHead b;
    std::istringstream words{std::string(head.text.substr(std::string_view("Time is").size()))};
    std::string word;
    words >> word;
    const auto t = cellNumber(word);
    if (!t) fail(atLine(head) + "the time in " + shortened(head.text) + " is not a number.");
    b.t = *t;
    const long long headNumber = head.number;
    Line zLine;
    if (!nextFilled(in, zLine) || !startsWith(zLine.text, "Z Coordinate"))
        fail(atLine(zLine.number ? zLine.number : headNumber) + "the block of time " + plainNumber(b.t) +
             " lacks its line \"Z Coordinate =>\".");
    const auto arrow = zLine.text.find("=>");
    auto zs = rowNumbers(arrow == std::string::npos ? std::string_view() : zLine.text.substr(arrow + 2));
    if (!zs || zs->empty()) fail(atLine(zLine) + "the z coordinates " + shortened(zLine.text) + " are not a list of numbers.");
    b.z = *zs;
    return b;
}

// One block; `it` is its place among the times.
void readVolumeBlock(Regular& r, const Line& head, std::size_t it, bool first) {
    PlotFile& f = r.f;
    const long long headNumber = head.number;
    const BlockHead b = readBlockHead(r.in, head);
    if (first && r.overview) r.axes.z = b.z;
    else if (b.z != r.axes.z) fail(atLine(headNumber + 1) + "the z coordinates differ from those of the first block.");
    const std::size_t nz = r.axes.z.size();
    XyTable table(r, nz, "x, y and one concentration per z");
    if (!first || !r.overview) table.knowAxes(r.axes.x, r.axes.y);
    table.read(
        isTimeIs,
        [&](std::size_t ix, std::size_t iy, const std::vector<double>& v) {
            for (std::size_t iz = 0; iz < nz; ++iz) r.put(it, ix, iy, iz, v[iz + 2]);
        },
        [&](std::size_t ny, bool) {
            if (!r.collector) r.start({plannedCount(f, "Number of X Terms"), ny, nz, plannedCount(f, "Number of Time Terms")});
        });
    if (table.rows() == 0 && !table.cutShort())
        fail(atLine(headNumber + 1) + "the block of time " + plainNumber(b.t) + " has no rows of concentrations.");
    const bool atEnd = nothingFollows(r.in);
    if (first && r.overview) {
        r.axes.x = table.xs();
        r.axes.y = table.ys();
        if (!atEnd && table.rows() % std::max<std::size_t>(r.axes.y.size(), 1) != 0)
            fail(atLine(headNumber) + "the table ends inside the y values of x = " + plainNumber(r.axes.x.back()) + ".");
    } else if (table.rows() != r.axes.x.size() * r.axes.y.size() && !atEnd) {
        fail(atLine(headNumber) + "the x-y grid of time " + plainNumber(b.t) + " differs from that of the first block.");
    }
    if (atEnd) {
        noteEarlyEnd(f, table);
        if (!first && table.rows() < r.axes.x.size() * r.axes.y.size() && table.rows() % r.axes.y.size() == 0)
            markIncomplete(f, kEndsEarly, "The block of time " + plainNumber(b.t) + " ends early.");
    }
    r.axes.t.push_back(b.t);
}

void readVolume(Regular& r, const Line& firstHead) {
    PlotFile& f = r.f;
    Line head = firstHead;
    std::size_t it = 0;
    for (;;) {
        if (!isTimeIs(head.text))
            fail(atLine(head) + "a block of the table should begin with \"Time is\", not " + shortened(head.text) + ".");
        f.blockStarts.push_back(head.offset);
        readVolumeBlock(r, head, it, it == 0);
        ++it;
        if (!nextFilled(r.in, head)) break;
    }
    compareAnnounced(f, "Number of X Terms", r.axes.x.size(), "x values");
    compareAnnounced(f, "Number of Y Terms", r.axes.y.size(), "y values");
    compareAnnounced(f, "Number of Z Terms", r.axes.z.size(), "z values");
    compareAnnounced(f, "Number of Time Terms", r.axes.t.size(), "times");
}

// --- time-varying dispersion ------------------------------------------------

// Coordinates of the time-varying model come from its range texts;
// its blocks hold concentrations only.
std::vector<double> rangeAxis(PlotFile& f, std::string_view rangeLabel, std::string_view termsLabel) {
    const std::string spec = f.value(rangeLabel);
    if (!spec.empty() && rangeFormatIsValid(spec)) {
        try {
            const ParsedRange range = parseRange(spec);
            std::vector<double> axis;
            for (int i = 1; i <= range.terms; ++i) axis.push_back(rangeValue(i, range.minimum, range.interval));
            return axis;
        } catch (const RuntimeError&) {
        }
    }
    const auto n = announced(f, termsLabel);
    if (!n || *n < 1 || *n > 100000)
        fail("The file gives neither a usable \"" + std::string(rangeLabel) + ": \" nor \"" + std::string(termsLabel) + ": \".");
    f.warnings.push_back("\"" + std::string(rangeLabel) + ": \" is missing or unreadable; points are numbered 1 to " +
                         std::to_string(*n) + ".");
    std::vector<double> axis;
    for (long long i = 1; i <= *n; ++i) axis.push_back(static_cast<double>(i));
    return axis;
}

// One block "Time: t" and its values.
void readTimeVaryingBlock(Regular& r, const Line& head, std::size_t it) {
    PlotFile& f = r.f;
    const bool point = f.kind == PlotKind::Plane;
    const std::size_t ny = r.axes.y.size(), points = r.axes.x.size() * ny;
    const long long headNumber = head.number;
    if (!isTimeLabel(head.text)) fail(atLine(head) + "a block should begin with \"Time:\", not " + shortened(head.text) + ".");
    auto t = rowNumbers(head.text.substr(5));
    if (t && t->empty()) {  // the time may stand on the next line
        Line next;
        if (nextFilled(r.in, next)) t = rowNumbers(next.text);
    }
    if (!t || t->size() != 1) fail(atLine(headNumber) + "a block should name one time after \"Time:\".");
    std::vector<double> flat, lastOfRows, row;
    std::size_t rows = 0;
    bool rowsWithCoordinates = true;
    const std::size_t coordinates = point ? 2 : 1;
    for (;;) {
        Line line;
        if (!nextFilled(r.in, line)) break;
        if (isTimeLabel(line.text)) {
            r.in.unread();
            break;
        }
        if (!rowNumbersInto(line.text, row)) {
            const std::string copy(line.text);
            const long long number = line.number;
            if (nothingFollows(r.in)) {
                markIncomplete(f, kEndsEarly, "The last line is cut short: " + shortened(copy) + ".");
                break;
            }
            fail(atLine(number) + shortened(copy) + " is not a row of numbers.");
        }
        ++rows;
        rowsWithCoordinates = rowsWithCoordinates && row.size() == coordinates + 1;
        if (rowsWithCoordinates) lastOfRows.push_back(row.back());
        if (flat.size() <= points) flat.insert(flat.end(), row.begin(), row.end());
    }
    const bool last = nothingFollows(r.in);
    std::vector<double> values;
    if (flat.size() == points) values = std::move(flat);  // concentrations alone, over x and within x over y
    else if (rowsWithCoordinates && rows == points && rows > 0) values = std::move(lastOfRows);
    else if (last && flat.size() < points) {
        values = std::move(flat);
        markIncomplete(f, kEndsEarly, "The block of time " + plainNumber(t->front()) + " ends early.");
    } else {
        fail(atLine(headNumber) + "the block of time " + plainNumber(t->front()) + " holds " + std::to_string(flat.size()) +
             " values; the grid has " + std::to_string(points) + " points.");
    }
    for (std::size_t k = 0; k < values.size(); ++k) r.put(it, k / ny, k % ny, 0, values[k]);
    if (r.overview) r.axes.t.push_back(t->front());
}

void readTimeVarying(Regular& r, const Line& firstHead) {
    PlotFile& f = r.f;
    const bool point = f.kind == PlotKind::Plane;
    r.axes.x = rangeAxis(f, "X Range", "Number of X Terms");
    r.axes.y = point ? rangeAxis(f, "Y Range", "Number of Y Terms") : std::vector<double>{0};
    r.axes.z = {0};
    r.start({r.axes.x.size(), r.axes.y.size(), 1, plannedCount(f, "Number of Time Terms")});
    Line head = firstHead;
    std::size_t it = 0;
    for (;;) {
        f.blockStarts.push_back(head.offset);
        readTimeVaryingBlock(r, head, it++);
        if (!nextFilled(r.in, head)) break;
    }
    compareAnnounced(f, "Number of Time Terms", r.axes.t.size(), "times");
}

// --- the header and the choice of layout -------------------------------------

// The header up to the table; the line that begins the table is left in `first`.
bool readRegularHeader(PlotFile& f, LineReader& in, Line& first) {
    while (in.next(first)) {
        if (isTimeLabel(first.text) || isTimeIs(first.text)) return true;
        if (!first.text.empty()) f.header.push_back(headerLine(first.text));
    }
    return false;
}

void describeRegular(PlotFile& f, bool startsWithTimeIs) {
    f.model = f.value("Model");
    f.aquifer = f.value("Aquifer");
    f.contaminant = f.value("Contaminant");
    takeUnits(f);
    const std::string model = toLower(f.model);
    f.timeVarying = contains(model, "point source") || contains(model, "line source") || contains(model, "time varying");
    if (f.timeVarying) {
        f.aquifer = f.value("Dispersion Coefficient");
        f.kind = (contains(model, "point") || f.has("Number of Y Terms")) ? PlotKind::Plane : PlotKind::Profile;
    } else if (startsWithTimeIs || f.has("Number of Z Terms")) {
        f.kind = PlotKind::Volume;
    } else if (f.has("Number of Y Terms")) {
        f.kind = PlotKind::Plane;
    } else {
        f.kind = PlotKind::Profile;
    }
}

void readRegularTable(Regular& r, const Line& first) {
    PlotFile& f = r.f;
    if (f.timeVarying) readTimeVarying(r, first);
    else if (f.kind == PlotKind::Volume) readVolume(r, first);
    else if (f.kind == PlotKind::Plane) readPlane(r, first);
    else readProfile(r, first);
}

void readRegular(PlotFile& f, LineReader& in, const ReadLimits& limits) {
    Line first;
    const bool table = readRegularHeader(f, in, first);
    describeRegular(f, table && isTimeIs(first.text));
    if (!table) fail("The file has no table of results: no line begins with \"Time:\" or \"Time is\".");
    Regular r{f, in, limits, true, -1, 0, {}, {}};
    // The last time of a large two-dimensional table is kept in full as it
    // passes: it is where a plot opens.
    if (f.kind == PlotKind::Plane && !f.timeVarying) r.focusTime = static_cast<int>(timesAfterLabel(first).size()) - 1;
    readRegularTable(r, first);
    r.collector->finish(r.axes, f);
    if (f.reduced) f.focus = r.collector->takeFocus(r.axes);
}

// --- Monte Carlo --------------------------------------------------------------

// "Aquifer: Finite, Contaminant:  Dirichlet" and the time-varying
// "Dispersion Coefficient: Linear, Contaminant Source: Point (continuous)".
void splitPair(const std::string& text, std::string_view joint, std::string& first, std::string& second) {
    const auto p = text.find(joint);
    if (p == std::string::npos) {
        first = text;
        return;
    }
    first = trim(text.substr(0, p));
    second = trim(text.substr(p + joint.size()));
}

void readSimulation(PlotFile& f, LineReader& in) {
    f.kind = PlotKind::Simulation;
    Line line;
    while (in.next(line)) {
        if (line.text.empty()) continue;
        if (const auto v = cellNumber(line.text)) {
            f.samples.push_back(*v);
        } else if (f.samples.empty()) {
            f.header.push_back(headerLine(line.text));
        } else {
            fail(atLine(line) + shortened(line.text) + " is not a number; each line after the header holds the result of one iteration.");
        }
    }
    if (f.samples.empty()) fail("The file lists no results of iterations.");
    f.model = f.value("Chemical Name");
    splitPair(f.value("Aquifer"), ", Contaminant:", f.aquifer, f.contaminant);
    for (const HeaderLine& h : f.header)
        if (h.label.empty() && contains(toLower(h.value), "time varying")) f.timeVarying = true;
    if (f.has("Dispersion Coefficient") && contains(f.value("Dispersion Coefficient"), "Contaminant Source")) {
        f.timeVarying = true;
        splitPair(f.value("Dispersion Coefficient"), ", Contaminant Source:", f.aquifer, f.contaminant);
    }
    if (f.model.empty() && f.timeVarying) f.model = "Time Varying Dispersion Coefficient";
    takeUnits(f);
    if (const auto n = announced(f, "Number of Terms")) {
        const auto found = static_cast<long long>(f.samples.size());
        if (found != *n && found != *n + 1)
            f.warnings.push_back("The header announces " + std::to_string(*n) + " terms but the file lists " +
                                 std::to_string(found) + " results.");
    }
}

void readGenerated(PlotFile& f, LineReader& in) {
    f.kind = PlotKind::Generated;
    enum class Section { Header, Inputs, Outputs, Samples } section = Section::Header;
    std::vector<Variant> all;
    bool ended = false;
    Line line;
    while (!ended && in.next(line)) {
        if (line.text.empty()) continue;
        if (line.text == "[End File]") {
            ended = true;
            continue;
        }
        const HeaderLine h = headerLine(line.text);
        if (sameWords(h.label, "Variant")) {
            all.push_back({h.value, {}, {}, {}});
            section = Section::Inputs;
        } else if (section == Section::Header) {
            f.header.push_back(h);
        } else if (sameWords(line.text, "Input Data:")) {
            section = Section::Inputs;
        } else if (sameWords(line.text, "Output Data:")) {
            section = Section::Outputs;
        } else if (sameWords(line.text, "Simulation Output:")) {
            section = Section::Samples;
        } else if (section == Section::Samples) {
            const auto v = cellNumber(line.text);
            if (!v) fail(atLine(line) + shortened(line.text) + " is not a number; the samples of variant \"" + all.back().name + "\" are listed here.");
            all.back().samples.push_back(*v);
        } else {
            (section == Section::Inputs ? all.back().inputs : all.back().outputs).push_back(h);
        }
    }
    if (all.empty()) fail("The file describes no variants (no line begins with \"Variant:\").");
    for (Variant& v : all) {
        if (v.samples.empty()) {
            f.warnings.push_back("Variant \"" + v.name + "\" lists no samples.");
            continue;
        }
        for (const HeaderLine& h : v.inputs)
            if (sameWords(h.label, "Number of Monte Carlo Iterations")) {
                const auto n = cellNumber(h.value);
                if (n && std::llround(*n) != static_cast<long long>(v.samples.size()))
                    f.warnings.push_back("Variant \"" + v.name + "\" announces " + h.value + " iterations but lists " +
                                         std::to_string(v.samples.size()) + " samples.");
            }
        f.variants.push_back(std::move(v));
    }
    if (f.variants.empty()) fail("No variant of the file lists any samples.");
    if (const auto n = announced(f, "Total variants"); n && *n != static_cast<long long>(all.size()))
        f.warnings.push_back("The header announces " + std::to_string(*n) + " variants but the file describes " +
                             std::to_string(all.size()) + ".");
    if (!ended) f.warnings.push_back("The file ends without \"[End File]\"; it may have been cut short.");
    f.model = "Monte Carlo";
}

void readMonteCarlo(PlotFile& f, LineReader& in) {
    Line line;
    if (!nextFilled(in, line)) fail("The file ends after \"Monte Carlo\": the line \"Type: \" is missing.");
    const HeaderLine type = headerLine(line.text);
    if (!sameWords(type.label, "Type"))
        fail(atLine(line) + "\"Type: Concentrations\" or \"Type: Generated\" was expected, not " + shortened(line.text) + ".");
    const std::string word = toLower(type.value);
    if (contains(word, "generated")) readGenerated(f, in);
    else if (contains(word, "concentration")) readSimulation(f, in);
    else fail(atLine(line) + "the Monte Carlo type " + shortened(type.value) + " is not one Trazel knows.");
}

// --- a fit to observations ------------------------------------------------------

// A small file: its lines are gathered again (at their numbers, for the
// messages) and read by the fit's own reader.
void readFit(PlotFile& f, LineReader& in, const Line& first) {
    std::string text(static_cast<std::size_t>(std::max<long long>(first.number - 1, 0)), '\n');
    text += std::string(first.text) + "\n";
    Line line;
    while (in.next(line)) {
        text += line.text;
        text += '\n';
        if (text.size() > 64'000'000) fail("The file is too large for a fit's plot.");
    }
    FitPlotReading reading = parseFitPlot(text);
    if (!reading.plot) fail(reading.problem);
    f.kind = PlotKind::Fit;
    f.fit = std::move(*reading.plot);
    for (const auto& [label, value] : f.fit.header) f.header.push_back({label, value});
    f.model = f.fit.model;
    f.aquifer = f.fit.aquifer;
    f.contaminant = f.fit.contaminant;
    takeUnits(f);
}

ReadResult parse(LineReader& in, const ReadLimits& limits) {
    ReadResult result;
    try {
        Line first;
        if (!nextFilled(in, first)) fail(in.failed() ? "The file could not be read to its end." : "The file is empty.");
        const std::string opening(first.text);
        if (sameWords(opening, "Ground Water")) readRegular(result.file, in, limits);
        else if (sameWords(opening, "Monte Carlo")) readMonteCarlo(result.file, in);
        else if (sameWords(opening, kFitPlotFirstLine)) readFit(result.file, in, first);
        else fail("This is not a plot file: its first line should read \"Ground Water\" or \"Monte Carlo\", not " + shortened(opening) + ".");
        if (in.failed()) fail("The file could not be read to its end.");
        result.ok = true;
    } catch (const Unreadable& u) {
        result.error = u.message;
        result.file = PlotFile{};
    } catch (const GridTooLarge&) {
        result.error = "The file is too large to plot: its header does not announce the size of its grid.";
        result.file = PlotFile{};
    } catch (const ReadCancelled&) {
        result.cancelled = true;
        result.error = "Reading was cancelled.";
        result.file = PlotFile{};
    }
    return result;
}

std::string unopenable(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return "This is a folder, not a plot file.";
    return "The file cannot be opened: it does not exist or may not be read.";
}

// The plane of a time read again: a block alone where the file has blocks,
// the whole table otherwise.
SliceResult sliceFrom(LineReader& in, const PlotFile& file, int time, int plane, const ReadLimits& limits) {
    SliceResult result;
    if (time < 0 || time >= static_cast<int>(file.axes.t.size()) || plane < 0 ||
        plane >= static_cast<int>(std::max<std::size_t>(file.axes.z.size(), 1))) {
        result.error = "There is no such time or plane in the file.";
        return result;
    }
    PlotFile copy;
    copy.kind = file.kind;
    copy.timeVarying = file.timeVarying;
    copy.axes = file.axes;
    Regular r{copy, in, limits, false, time, plane, file.axes, {}};
    try {
        const bool blocks = static_cast<std::size_t>(time) < file.blockStarts.size();
        if (blocks) {
            Line head;
            if (!nextFilled(in, head)) fail("The file ended before the block of the time.");
            r.start({file.axes.x.size(), file.axes.y.size(), std::max<std::size_t>(file.axes.z.size(), 1), file.axes.t.size()});
            if (file.timeVarying) readTimeVaryingBlock(r, head, static_cast<std::size_t>(time));
            else readVolumeBlock(r, head, static_cast<std::size_t>(time), false);
        } else {
            Line first;
            if (!nextFilled(in, first) || !readRegularHeader(copy, in, first)) fail("The file has no table any more.");
            readRegularTable(r, first);
        }
        result.slice = r.collector->takeFocus(file.axes);
        if (!result.slice) result.error = "The file holds no values for that plane.";
    } catch (const Unreadable& u) {
        result.error = u.message;
    } catch (const GridTooLarge&) {
        result.error = "The plane is too large.";
    } catch (const ReadCancelled&) {
        result.cancelled = true;
    }
    return result;
}

}  // namespace

std::string PlotFile::value(std::string_view label) const {
    for (const HeaderLine& h : header)
        if (sameWords(h.label, label)) return h.value;
    return {};
}

bool PlotFile::has(std::string_view label) const {
    return std::any_of(header.begin(), header.end(), [&](const HeaderLine& h) { return sameWords(h.label, label); });
}

ReadResult parsePlotText(std::string_view text, const ReadLimits& limits) {
    LineReader in(text);
    return parse(in, limits);
}

// The workbench leaves a note beside the plot file of a run that Stop ended
// early; a note older than the file belongs to an earlier run.
static bool stoppedRunNoted(const std::string& path) {
    std::error_code error;
    const auto note = std::filesystem::last_write_time(path + kStoppedRunNoteSuffix, error);
    if (error) return false;
    const auto file = std::filesystem::last_write_time(path, error);
    return !error && note >= file;
}

ReadResult readPlotFile(const std::string& path, const ReadLimits& limits, const ReadProgress& progress) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        ReadResult r;
        r.error = unopenable(path);
        return r;
    }
    LineReader in(path);
    if (!in.isOpen()) {
        ReadResult r;
        r.error = unopenable(path);
        return r;
    }
    in.setProgress(progress);
    ReadResult r = parse(in, limits);
    if (r.ok && stoppedRunNoted(path)) {
        if (r.file.kind == PlotKind::Simulation)
            markIncomplete(r.file, kRunStopped, "The simulation that wrote this file was stopped: the iterations it did not reach are 0.");
        else
            markIncomplete(r.file, kRunStopped, "The run that wrote this file was stopped: the values it did not reach are 0.");
    }
    return r;
}

SliceResult readSlice(const std::string& path, const PlotFile& file, int time, int plane, const ReadLimits& limits,
                      const ReadProgress& progress) {
    const bool blocks = time >= 0 && static_cast<std::size_t>(time) < file.blockStarts.size();
    LineReader in(path, blocks ? file.blockStarts[static_cast<std::size_t>(time)] : 0);
    if (!in.isOpen()) {
        SliceResult r;
        r.error = unopenable(path);
        return r;
    }
    in.setProgress(progress);
    return sliceFrom(in, file, time, plane, limits);
}

SliceResult sliceOfText(std::string_view text, const PlotFile& file, int time, int plane, const ReadLimits& limits) {
    const bool blocks = time >= 0 && static_cast<std::size_t>(time) < file.blockStarts.size();
    LineReader in(blocks ? text.substr(std::min<std::size_t>(file.blockStarts[static_cast<std::size_t>(time)], text.size())) : text);
    return sliceFrom(in, file, time, plane, limits);
}

}  // namespace bm::trazel
