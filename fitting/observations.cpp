#include "fitting/observations.h"

#include <array>
#include <cmath>
#include <fstream>
#include <iterator>

#include "model/model_kinds.h"
#include "model/number_text.h"
#include "model/ranges.h"

namespace bm {

namespace {

enum Column { X, Y, Z, T, C, W, ColumnCount };

std::vector<std::string> cellsOf(std::string_view line, bool commas) {
    std::vector<std::string> cells;
    if (commas) {
        std::size_t start = 0;
        while (true) {
            const std::size_t comma = line.find(',', start);
            cells.push_back(trim(line.substr(start, comma == std::string_view::npos ? std::string_view::npos : comma - start)));
            if (comma == std::string_view::npos) break;
            start = comma + 1;
        }
        return cells;
    }
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
        const std::size_t start = i;
        while (i < line.size() && line[i] != ' ' && line[i] != '\t') ++i;
        if (i > start) cells.emplace_back(line.substr(start, i - start));
    }
    return cells;
}

int columnOf(const std::string& heading, bool& relative) {
    const std::string h = toLower(trim(heading));
    if (h == "x") return X;
    if (h == "y") return Y;
    if (h == "z") return Z;
    if (h == "t" || h == "time") return T;
    if (h == "c" || h == "concentration") return C;
    if (h == "c/co" || h == "c/c0") {
        relative = true;
        return C;
    }
    if (h == "w" || h == "weight") return W;
    return -1;
}

const char* columnName(int column, bool relative) {
    static const std::array<const char*, ColumnCount> names = {"x", "y", "z", "t", "C", "w"};
    return column == C && relative ? "C/Co" : names[static_cast<std::size_t>(column)];
}

std::string dimensionWords(int dimension) {
    switch (dimension) {
    case 3: return "x, y, z, t and C (or C/Co)";
    case 2: return "x, y, t and C (or C/Co)";
    default: return "x, t and C (or C/Co)";
    }
}

ObservationReading problem(std::string text) { return ObservationReading{std::nullopt, ObservationProblem{std::move(text)}}; }

std::string lineOf(int line, std::string_view fileName) {
    return "Line " + std::to_string(line) + " of " + std::string(fileName) + ": ";
}

}  // namespace

ObservationReading parseObservations(std::string_view text, std::string_view fileName, int dimension) {
    ObservationSet set;
    set.fileName = std::string(fileName);
    std::array<int, ColumnCount> position;
    position.fill(-1);
    bool commas = false;
    bool haveHeader = false;
    std::size_t headingCount = 0;

    int lineNumber = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        std::string_view raw = text.substr(start, end - start);
        start = end + 1;
        ++lineNumber;
        if (!raw.empty() && raw.back() == '\r') raw.remove_suffix(1);
        const std::string line = trim(raw);
        if (line.empty() || line[0] == '#') continue;

        if (!haveHeader) {
            haveHeader = true;
            commas = line.find(',') != std::string::npos;
            const std::vector<std::string> headings = cellsOf(line, commas);
            headingCount = headings.size();
            for (std::size_t k = 0; k < headings.size(); ++k) {
                const int column = columnOf(headings[k], set.relative);
                if (column < 0) continue;
                if (position[static_cast<std::size_t>(column)] >= 0)
                    return problem(lineOf(lineNumber, fileName) + "the column " + columnName(column, set.relative) +
                                   " is named twice.");
                position[static_cast<std::size_t>(column)] = static_cast<int>(k);
            }
            std::vector<int> needed = {X};
            if (dimension >= 2) needed.push_back(Y);
            if (dimension >= 3) needed.push_back(Z);
            needed.push_back(T);
            needed.push_back(C);
            for (const int column : needed)
                if (position[static_cast<std::size_t>(column)] < 0)
                    return problem("The observation file " + std::string(fileName) + " has no column " +
                                   columnName(column, set.relative) + ": its first line must name the columns " +
                                   dimensionWords(dimension) + ", and may name a weight column w.");
            set.weighted = position[W] >= 0;
            continue;
        }

        const std::vector<std::string> cells = cellsOf(line, commas);
        if (cells.size() != headingCount)
            return problem(lineOf(lineNumber, fileName) + std::to_string(cells.size()) + " cells, but the first line names " +
                           std::to_string(headingCount) + " columns.");
        Observation point;
        point.line = lineNumber;
        std::array<double*, ColumnCount> targets = {&point.x, &point.y, &point.z, &point.t, &point.concentration,
                                                    &point.weight};
        for (int column = 0; column < ColumnCount; ++column) {
            const int at = position[static_cast<std::size_t>(column)];
            if (at < 0) continue;
            const std::string& cell = cells[static_cast<std::size_t>(at)];
            if (!isNumeric(cell) || !std::isfinite(textValue(cell)))
                return problem(lineOf(lineNumber, fileName) + "\"" + cell + "\" in column " +
                               columnName(column, set.relative) + " is not a number.");
            *targets[static_cast<std::size_t>(column)] = textValue(cell);
        }
        if (set.weighted && !(point.weight > 0.0))
            return problem(lineOf(lineNumber, fileName) + "the weight must be above zero.");
        set.points.push_back(point);
    }
    if (!haveHeader)
        return problem("The observation file " + std::string(fileName) +
                       " is empty: its first line must name the columns " + dimensionWords(dimension) + ".");
    if (set.points.empty())
        return problem("The observation file " + std::string(fileName) + " holds no observations below its first line.");
    return ObservationReading{std::move(set), {}};
}

ObservationReading readObservations(const std::string& path, int dimension) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return problem("The observation file " + path + " cannot be read.");
    const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return parseObservations(text, path, dimension);
}

namespace {

struct Extent {
    double minimum = 0, maximum = 0;
};

Extent extentOf(const std::string& range) {
    if (range.find(':') == std::string::npos) return {0.0, textValue(range)};
    return {rangeMinimum(range), rangeMaximum(range)};
}

std::string number(double value) { return generalText(value); }

}  // namespace

std::string observationsOutsideDomain(const ObservationSet& observations, const DataSet& model) {
    const ModelKindInfo* row = modelKindInfo(model);
    if (row == nullptr) return {};
    const bool finite = toLower(trim(model.aquiferType)).rfind("finite", 0) == 0;
    const bool column = row->dimension == 1 && row->family != ModelFamily::TimeVarying;
    for (const Observation& o : observations.points) {
        const std::string at = lineOf(o.line, observations.fileName);
        if (o.t < 0.0) return at + "the time " + number(o.t) + " lies before the start of the model (0).";
        if (column && o.x < 0.0) return at + "x = " + number(o.x) + " lies above the inlet of the column (x from 0).";
        if (column && finite) {
            const Extent x = extentOf(model.xRange);
            if (o.x < x.minimum || o.x > x.maximum)
                return at + "x = " + number(o.x) + " lies outside the finite column (" + number(x.minimum) + " to " +
                       number(x.maximum) + ").";
        }
        if (row->isSaturated() && row->dimension >= 2 && finite) {
            const Extent y = extentOf(model.yRange);
            if (o.y < y.minimum || o.y > y.maximum)
                return at + "y = " + number(o.y) + " lies outside the aquifer's width (" + number(y.minimum) + " to " +
                       number(y.maximum) + ").";
        }
    }
    return {};
}

}  // namespace bm

namespace bm {

int observationDimension(const DataSet& model) {
    const ModelKindInfo* row = modelKindInfo(model);
    if (row == nullptr) return 1;
    if (row->family == ModelFamily::TimeVarying && trim(model.yRange) == "Not Used") return 1;
    return row->dimension;
}

}  // namespace bm
