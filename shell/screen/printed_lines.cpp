#include "shell/screen/printed_lines.h"

#include <algorithm>
#include <set>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/base/common_services.h"

namespace bm {

std::string reportUnitName(UnitMenu menu, const std::string& word) {
    const int index = unitIndexOfWord(menu, word);
    if (index == 0) return replaceFirst("&", "", word);
    return replaceFirst("&", "", unitMenuCaptions(menu)[static_cast<std::size_t>(index / 10 - 1)]);
}

void appendReportNotes(std::vector<PrintedLine>& lines, const std::string& title, const std::string& author,
                       const std::string& comments) {
    const auto note = [&](const std::string& label, const std::string& field) {
        lines.push_back({{0, label}});
        if (!field.empty()) lines.push_back({{0, "   " + field}});
    };
    note(" Title: ", title);
    note(" Author: ", author);
    note(" Comments: ", comments);
}

void appendReportUnits(std::vector<PrintedLine>& lines, const std::string& lengthWord, const std::string& timeWord,
                       const std::string& concentrationWord) {
    lines.push_back({{0, "Units:"}});
    lines.push_back({{0, "  Length:  "}, {20, reportUnitName(UnitMenu::Length, lengthWord)}});
    lines.push_back({{0, "  Time:  "}, {20, reportUnitName(UnitMenu::Time, timeWord)}});
    lines.push_back({{0, "  Concentration: "}, {20, reportUnitName(UnitMenu::Concentration, concentrationWord)}});
}

void appendReportHead(std::vector<PrintedLine>& lines, const std::string& heading, const DataSet& d) {
    const auto text = [&lines](const std::string& s) { lines.push_back({{0, s}}); };
    const auto blank = [&lines] { lines.push_back({}); };
    blank();
    blank();
    text(heading);
    blank();
    blank();
    appendReportNotes(lines, d.title, d.author, d.comments);
    blank();
    text("Input Data file name: " + d.currentFileName);
    blank();
    lines.push_back({{0, "Model: "}, {20, d.modelType}});
    lines.push_back({{0, "Aquifer: "}, {20, d.aquiferType}});
    lines.push_back({{0, "Contaminant: "}, {20, d.contaminantType}});
    blank();
    appendReportUnits(lines, d.lengthUnit, d.timeUnit, d.concentrationUnit);
    blank();
}

void appendReportTerms(std::vector<PrintedLine>& lines, const DataSet& d) {
    lines.push_back({{0, "Boundary Conditions:"}});
    // A decay chain has a source per chemical, in chain order, in place of the terms.
    if (!d.multiChemical) lines.push_back({{0, "  Superposition Index: " + std::to_string(d.superpositionIndex)}});
    lines.push_back({});
    lines.push_back({{9, "Time (" + reportUnitName(UnitMenu::Time, d.timeUnit) + ")"},
                     {29, "Concentration(" + reportUnitName(UnitMenu::Concentration, d.concentrationUnit) + ")"}});
    if (d.multiChemical) {
        for (int i = 1; i <= d.numChemicals && i <= d.suppositionTime.ub() && i <= d.suppositionConcentration.ub(); ++i)
            lines.push_back({{10, formatCell(d.suppositionTime(i))}, {33, formatCell(d.suppositionConcentration(i))}});
    } else {
        for (int i = 1; i <= d.terms.ub(); ++i)
            lines.push_back({{10, formatCell(d.terms(i).time)}, {33, formatCell(d.terms(i).concentration)}});
    }
    lines.push_back({});
}

void appendChemicalProperties(std::vector<PrintedLine>& lines, const DataSet& d) {
    const std::string name = "Chemical Name ";
    const std::string rate = "Decay rate (1/" + reportUnitName(UnitMenu::Time, d.timeUnit) + ")  ";
    lines.push_back({{0, "Chemical Properties"}});
    lines.push_back({{0, name + rate + "Effective yield factor (M/M)"}});
    const int rateColumn = static_cast<int>(name.size()) + 1;  // Tab columns count from 1
    const int yieldColumn = rateColumn + static_cast<int>(rate.size());
    for (int i = 1; i <= d.numChemicals && i <= d.chemicalName.ub() && i <= d.decayRate.ub() && i <= d.yieldFactor.ub();
         ++i)
        lines.push_back({{0, d.chemicalName(i)},
                         {rateColumn, formatCell(d.decayRate(i))},
                         {yieldColumn, formatCell(d.yieldFactor(i))}});
}

void appendChemicalResults(std::vector<PrintedLine>& lines, const DataSet& d) {
    lines.push_back({});
    lines.push_back({{0, "Chemical"}, {50, "Conc. (" + reportUnitName(UnitMenu::Concentration, d.concentrationUnit) + ")"}});
    for (int i = 1; i <= d.numChemicals && i <= d.chemicalName.ub() && i <= d.resultsInPoint.ub(); ++i) {
        const std::string& result = d.resultsInPoint(i);
        lines.push_back({{0, "  " + d.chemicalName(i)}, {50, result.empty() ? result : resultLabelFromMode(result)}});
    }
}

void appendCoordinateHeadings(std::vector<PrintedLine>& lines) {
    lines.push_back({{0, "Coordinate and Time Data"}});
    lines.push_back({{13, "Minimum"}, {30, "Maximum"}, {45, "Length of Interval"}});
}

PrintedLine coordinateRow(const std::string& name, const std::string& rangeText) {
    return {{0, name},
            {14, formatNumber(rangeMinimum(rangeText))},
            {32, formatNumber(rangeMaximum(rangeText))},
            {50, formatNumber(rangeInterval(rangeText))}};
}

std::string printedLineText(const PrintedLine& line) {
    std::string out;
    std::size_t lineStart = 0;
    for (const PrintedPiece& p : line) {
        if (p.column > 0) {
            const std::size_t target = static_cast<std::size_t>(p.column - 1);
            const std::size_t position = out.size() - lineStart;
            if (position > target) {
                out += '\n';
                lineStart = out.size();
                out.append(target, ' ');
            } else {
                out.append(target - position, ' ');
            }
        }
        out += p.text;
    }
    return out;
}

std::string printedReportText(const std::vector<PrintedLine>& lines) {
    std::string out;
    for (const PrintedLine& l : lines) out += printedLineText(l) + "\n";
    return out;
}

std::vector<int> printedTabColumns(const std::vector<PrintedLine>& lines) {
    std::set<int> columns;
    for (const PrintedLine& l : lines)
        for (const PrintedPiece& p : l)
            if (p.column > 0) columns.insert(p.column);
    return {columns.begin(), columns.end()};
}

std::vector<std::string> tabbedReportLines(const std::vector<PrintedLine>& lines, const std::vector<int>& columns) {
    std::vector<std::string> out;
    for (const PrintedLine& l : lines) {
        std::string s;
        int cell = 0;  // the cell being written; cell k >= 1 starts at stop k - 1
        for (const PrintedPiece& p : l) {
            if (p.column > 0) {
                const auto it = std::find(columns.begin(), columns.end(), p.column);
                const int wanted = static_cast<int>(it - columns.begin()) + 1;
                // A stop that lies behind the line's cell already gives no new cell.
                while (cell < wanted) {
                    s += '\t';
                    ++cell;
                }
            }
            s += p.text;
        }
        out.push_back(s);
    }
    return out;
}

}  // namespace bm
