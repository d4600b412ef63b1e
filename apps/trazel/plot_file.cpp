#include "apps/trazel/plot_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "apps/trazel/cell_number.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "shell/base/runtime_error.h"

namespace bm::trazel {

namespace {

// Reading stops at the first structural fault with a message for the user.
struct Unreadable {
    std::string message;
};

[[noreturn]] void fail(std::string message) { throw Unreadable{std::move(message)}; }

struct Line {
    int number = 0;    // from 1, as an editor counts
    std::string text;  // trimmed, without the line end
};

using Lines = std::vector<Line>;

Lines splitLines(std::string_view text) {
    if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
    Lines lines;
    int number = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        lines.push_back({++number, trim(text.substr(start, end - start))});
        // trim() takes blanks and tabs; a carriage return of CR/LF files stays
        std::string& t = lines.back().text;
        while (!t.empty() && (t.back() == '\r' || t.back() == ' ' || t.back() == '\t')) t.pop_back();
        start = end + 1;
    }
    return lines;
}

std::string shortened(std::string_view text) {
    constexpr std::size_t kMost = 60;
    if (text.size() <= kMost) return "\"" + std::string(text) + "\"";
    return "\"" + std::string(text.substr(0, kMost)) + "...\"";
}

std::string atLine(const Line& line) { return "Line " + std::to_string(line.number) + ": "; }

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

// A regular table's size must agree with its header: a shorter table is a
// file that was cut short, and plotting it would silently mislead.
void checkAnnounced(const PlotFile& f, std::string_view label, std::size_t found, std::string_view what) {
    const auto n = announced(f, label);
    if (n && *n != static_cast<long long>(found))
        fail("The header announces " + std::to_string(*n) + " " + std::string(what) + " (\"" + std::string(label) +
             ": \") but the table holds " + std::to_string(found) + ". The file seems cut short or damaged.");
}

struct Row {
    const Line* line;
    std::vector<double> values;
};

Row numberRow(const Line& line) {
    auto values = rowNumbers(line.text);
    if (!values) fail(atLine(line) + shortened(line.text) + " is not a row of numbers.");
    return {&line, std::move(*values)};
}

void expectWidth(const Row& row, std::size_t width, std::string_view layout) {
    if (row.values.size() != width)
        fail(atLine(*row.line) + "a row holds " + std::string(layout) + ", that is " + std::to_string(width) +
             " values, but this one holds " + std::to_string(row.values.size()) + ".");
}

std::vector<double> timesAfterLabel(const Line& line) {
    auto times = rowNumbers(std::string_view(line.text).substr(std::string_view("Time:").size()));
    if (!times) fail(atLine(line) + "the times " + shortened(line.text) + " are not all numbers.");
    if (times->empty()) fail(atLine(line) + "the line \"Time:\" lists no times.");
    return *times;
}

// The x and y columns of rows that run over x and, within each x, over y.
void xyGrid(const std::vector<Row>& rows, std::vector<double>& xs, std::vector<double>& ys) {
    xs.clear();
    ys.clear();
    for (const Row& r : rows) {
        if (r.values[0] != rows.front().values[0]) break;
        ys.push_back(r.values[1]);
    }
    const std::size_t ny = ys.size();
    for (std::size_t k = 0; k < rows.size(); k += ny) xs.push_back(rows[k].values[0]);
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const double x = xs[k / ny], y = ys[k % ny];
        const Row& r = rows[k];
        if (r.values[0] != x || r.values[1] != y)
            fail(atLine(*r.line) + "the rows do not form a complete x-y grid: x = " + plainNumber(x) +
                 ", y = " + plainNumber(y) + " was expected here.");
    }
    if (rows.size() % ny != 0)
        fail(atLine(*rows.back().line) + "the table ends inside the y values of x = " + plainNumber(xs.back()) + ".");
    for (std::size_t i = 1; i < xs.size(); ++i)
        if (std::find(xs.begin(), xs.begin() + static_cast<long>(i), xs[i]) != xs.begin() + static_cast<long>(i))
            fail(atLine(*rows[i * ny].line) + "x = " + plainNumber(xs[i]) + " comes twice in the table.");
}

std::vector<Row> rowsUntil(const Lines& lines, std::size_t& i, bool (*stop)(const std::string&)) {
    std::vector<Row> rows;
    for (; i < lines.size(); ++i) {
        if (lines[i].text.empty()) continue;
        if (stop && stop(lines[i].text)) break;
        rows.push_back(numberRow(lines[i]));
    }
    return rows;
}

// --- regular results -------------------------------------------------------

// The times of the line "Time:" and the rows under it: the coordinates and a
// concentration per time.
std::vector<Row> tableUnderTimes(Grid& g, const Lines& lines, std::size_t start, std::size_t coordinates, std::string_view layout) {
    g.t = timesAfterLabel(lines[start]);
    std::size_t i = start + 1;
    std::vector<Row> rows = rowsUntil(lines, i, nullptr);
    if (rows.empty()) fail("The table under \"Time:\" has no rows of concentrations.");
    for (const Row& r : rows) expectWidth(r, coordinates + g.nt(), layout);
    return rows;
}

void readProfile(PlotFile& f, const Lines& lines, std::size_t start) {
    Grid& g = f.grid;
    const std::vector<Row> rows = tableUnderTimes(g, lines, start, 1, "x and one concentration per time");
    checkAnnounced(f, "Number of X Terms", rows.size(), "x values");
    checkAnnounced(f, "Number of Time Terms", g.nt(), "times");
    g.y = {0};
    g.z = {0};
    for (const Row& r : rows) g.x.push_back(r.values[0]);
    g.c.assign(g.nt() * g.nx(), 0);
    for (std::size_t ix = 0; ix < rows.size(); ++ix)
        for (std::size_t it = 0; it < g.nt(); ++it) g.c[g.index(ix, 0, 0, it)] = rows[ix].values[it + 1];
}

void readPlane(PlotFile& f, const Lines& lines, std::size_t start) {
    Grid& g = f.grid;
    const std::vector<Row> rows = tableUnderTimes(g, lines, start, 2, "x, y and one concentration per time");
    xyGrid(rows, g.x, g.y);
    checkAnnounced(f, "Number of X Terms", g.nx(), "x values");
    checkAnnounced(f, "Number of Y Terms", g.ny(), "y values");
    checkAnnounced(f, "Number of Time Terms", g.nt(), "times");
    g.z = {0};
    g.c.assign(g.nt() * g.nx() * g.ny(), 0);
    for (std::size_t k = 0; k < rows.size(); ++k)
        for (std::size_t it = 0; it < g.nt(); ++it) g.c[g.index(k / g.ny(), k % g.ny(), 0, it)] = rows[k].values[it + 2];
}

bool isTimeIs(const std::string& text) { return startsWith(text, "Time is"); }

void readVolume(PlotFile& f, const Lines& lines, std::size_t start) {
    Grid& g = f.grid;
    struct Block {
        double t;
        std::vector<Row> rows;
    };
    std::vector<Block> blocks;
    std::size_t i = start;
    while (i < lines.size()) {
        const Line& head = lines[i];
        if (head.text.empty()) { ++i; continue; }
        if (!isTimeIs(head.text)) fail(atLine(head) + "a block of the table should begin with \"Time is\", not " + shortened(head.text) + ".");
        std::istringstream words(head.text.substr(std::string_view("Time is").size()));
        std::string word;
        words >> word;
        const auto t = cellNumber(word);
        if (!t) fail(atLine(head) + "the time in " + shortened(head.text) + " is not a number.");
        ++i;
        while (i < lines.size() && lines[i].text.empty()) ++i;
        if (i >= lines.size() || !startsWith(lines[i].text, "Z Coordinate"))
            fail(atLine(i < lines.size() ? lines[i] : head) + "the block of time " + plainNumber(*t) + " lacks its line \"Z Coordinate =>\".");
        const Line& zLine = lines[i];
        const auto arrow = zLine.text.find("=>");
        auto zs = rowNumbers(arrow == std::string::npos ? std::string_view() : std::string_view(zLine.text).substr(arrow + 2));
        if (!zs || zs->empty()) fail(atLine(zLine) + "the z coordinates " + shortened(zLine.text) + " are not a list of numbers.");
        if (blocks.empty()) g.z = *zs;
        else if (*zs != g.z) fail(atLine(zLine) + "the z coordinates differ from those of the first block.");
        ++i;
        Block block{*t, rowsUntil(lines, i, isTimeIs)};
        if (block.rows.empty()) fail(atLine(zLine) + "the block of time " + plainNumber(*t) + " has no rows of concentrations.");
        for (const Row& r : block.rows) expectWidth(r, g.nz() + 2, "x, y and one concentration per z");
        std::vector<double> xs, ys;
        xyGrid(block.rows, xs, ys);
        if (blocks.empty()) {
            g.x = xs;
            g.y = ys;
        } else if (xs != g.x || ys != g.y) {
            fail(atLine(head) + "the x-y grid of time " + plainNumber(*t) + " differs from that of the first block.");
        }
        blocks.push_back(std::move(block));
    }
    if (blocks.empty()) fail("The table has no blocks beginning with \"Time is\".");
    checkAnnounced(f, "Number of X Terms", g.nx(), "x values");
    checkAnnounced(f, "Number of Y Terms", g.ny(), "y values");
    checkAnnounced(f, "Number of Z Terms", g.nz(), "z values");
    checkAnnounced(f, "Number of Time Terms", blocks.size(), "times");
    for (const Block& b : blocks) g.t.push_back(b.t);
    g.c.assign(g.nt() * g.nx() * g.ny() * g.nz(), 0);
    for (std::size_t it = 0; it < blocks.size(); ++it)
        for (std::size_t k = 0; k < blocks[it].rows.size(); ++k)
            for (std::size_t iz = 0; iz < g.nz(); ++iz)
                g.c[g.index(k / g.ny(), k % g.ny(), iz, it)] = blocks[it].rows[k].values[iz + 2];
}

// --- time-varying dispersion ------------------------------------------------

// Coordinates of the time-varying model come from its range texts;
// its blocks hold concentrations only.
std::vector<double> rangeAxis(PlotFile& f, std::string_view rangeLabel, std::string_view termsLabel) {
    const std::string spec = f.value(rangeLabel);
    if (!spec.empty() && rangeFormatIsValid(spec)) {
        try {
            const ParsedRange r = parseRange(spec);
            std::vector<double> axis;
            for (int i = 1; i <= r.terms; ++i) axis.push_back(rangeValue(i, r.minimum, r.interval));
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

bool isTimeLabel(const std::string& text) { return startsWith(text, "Time:"); }

void readTimeVarying(PlotFile& f, const Lines& lines, std::size_t start) {
    Grid& g = f.grid;
    const bool point = f.kind == PlotKind::Plane;
    g.x = rangeAxis(f, "X Range", "Number of X Terms");
    g.y = point ? rangeAxis(f, "Y Range", "Number of Y Terms") : std::vector<double>{0};
    g.z = {0};
    const std::size_t points = g.nx() * g.ny();
    std::size_t i = start;
    while (i < lines.size()) {
        const Line& head = lines[i];
        if (head.text.empty()) { ++i; continue; }
        if (!isTimeLabel(head.text)) fail(atLine(head) + "a block should begin with \"Time:\", not " + shortened(head.text) + ".");
        ++i;
        auto t = rowNumbers(std::string_view(head.text).substr(5));
        if (t && t->empty()) {  // the time may stand on the next line
            while (i < lines.size() && lines[i].text.empty()) ++i;
            if (i < lines.size()) t = rowNumbers(lines[i++].text);
        }
        if (!t || t->size() != 1) fail(atLine(head) + "a block should name one time after \"Time:\".");
        const std::vector<Row> rows = rowsUntil(lines, i, isTimeLabel);
        std::vector<double> flat;
        for (const Row& r : rows) flat.insert(flat.end(), r.values.begin(), r.values.end());
        const std::size_t coordinates = point ? 2 : 1;
        const bool withCoordinates = rows.size() == points && !rows.empty() &&
            std::all_of(rows.begin(), rows.end(), [&](const Row& r) { return r.values.size() == coordinates + 1; });
        if (flat.size() == points) {
            // concentrations alone, over x and within x over y
        } else if (withCoordinates) {
            flat.clear();
            for (const Row& r : rows) flat.push_back(r.values.back());
        } else {
            fail(atLine(head) + "the block of time " + plainNumber(t->front()) + " holds " + std::to_string(flat.size()) +
                 " values; the grid has " + std::to_string(points) + " points.");
        }
        g.t.push_back(t->front());
        g.c.insert(g.c.end(), flat.begin(), flat.end());
    }
    if (g.t.empty()) fail("The file has no blocks beginning with \"Time:\".");
    checkAnnounced(f, "Number of Time Terms", g.nt(), "times");
}

void readRegular(PlotFile& f, const Lines& lines, std::size_t first) {
    std::size_t start = first + 1;
    for (; start < lines.size(); ++start) {
        const std::string& t = lines[start].text;
        if (isTimeLabel(t) || isTimeIs(t)) break;
        if (!t.empty()) f.header.push_back(headerLine(t));
    }
    f.model = f.value("Model");
    f.aquifer = f.value("Aquifer");
    f.contaminant = f.value("Contaminant");
    takeUnits(f);
    const std::string model = toLower(f.model);
    f.timeVarying = contains(model, "point source") || contains(model, "line source") || contains(model, "time varying");
    if (f.timeVarying) f.aquifer = f.value("Dispersion Coefficient");
    if (start >= lines.size())
        fail("The file has no table of results: no line begins with \"Time:\" or \"Time is\".");
    if (f.timeVarying) {
        f.kind = (contains(model, "point") || f.has("Number of Y Terms")) ? PlotKind::Plane : PlotKind::Profile;
        readTimeVarying(f, lines, start);
    } else if (isTimeIs(lines[start].text) || f.has("Number of Z Terms")) {
        f.kind = PlotKind::Volume;
        readVolume(f, lines, start);
    } else if (f.has("Number of Y Terms")) {
        f.kind = PlotKind::Plane;
        readPlane(f, lines, start);
    } else {
        f.kind = PlotKind::Profile;
        readProfile(f, lines, start);
    }
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

void readSimulation(PlotFile& f, const Lines& lines, std::size_t typeLine) {
    f.kind = PlotKind::Simulation;
    for (std::size_t i = typeLine + 1; i < lines.size(); ++i) {
        const Line& line = lines[i];
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

void readGenerated(PlotFile& f, const Lines& lines, std::size_t typeLine) {
    f.kind = PlotKind::Generated;
    enum class Section { Header, Inputs, Outputs, Samples } section = Section::Header;
    std::vector<Variant> all;
    bool ended = false;
    for (std::size_t i = typeLine + 1; i < lines.size() && !ended; ++i) {
        const Line& line = lines[i];
        if (line.text.empty()) continue;
        if (line.text == "[End File]") { ended = true; continue; }
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

void readMonteCarlo(PlotFile& f, const Lines& lines, std::size_t first) {
    std::size_t i = first + 1;
    while (i < lines.size() && lines[i].text.empty()) ++i;
    if (i >= lines.size()) fail("The file ends after \"Monte Carlo\": the line \"Type: \" is missing.");
    const HeaderLine type = headerLine(lines[i].text);
    if (!sameWords(type.label, "Type"))
        fail(atLine(lines[i]) + "\"Type: Concentrations\" or \"Type: Generated\" was expected, not " + shortened(lines[i].text) + ".");
    const std::string word = toLower(type.value);
    if (contains(word, "generated")) readGenerated(f, lines, i);
    else if (contains(word, "concentration")) readSimulation(f, lines, i);
    else fail(atLine(lines[i]) + "the Monte Carlo type " + shortened(type.value) + " is not one Trazel knows.");
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

ReadResult parsePlotText(std::string_view text) {
    ReadResult result;
    try {
        const Lines lines = splitLines(text);
        std::size_t first = 0;
        while (first < lines.size() && lines[first].text.empty()) ++first;
        if (first >= lines.size()) fail("The file is empty.");
        const std::string& opening = lines[first].text;
        if (sameWords(opening, "Ground Water")) readRegular(result.file, lines, first);
        else if (sameWords(opening, "Monte Carlo")) readMonteCarlo(result.file, lines, first);
        else fail("This is not a plot file: its first line should read \"Ground Water\" or \"Monte Carlo\", not " + shortened(opening) + ".");
        result.ok = true;
    } catch (const Unreadable& u) {
        result.error = u.message;
        result.file = PlotFile{};
    }
    return result;
}

ReadResult readPlotFile(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        ReadResult r;
        r.error = "This is a folder, not a plot file.";
        return r;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        ReadResult r;
        r.error = "The file cannot be opened: it does not exist or may not be read.";
        return r;
    }
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (in.bad()) {
        ReadResult r;
        r.error = "The file could not be read to its end.";
        return r;
    }
    return parsePlotText(bytes.str());
}

}  // namespace bm::trazel
