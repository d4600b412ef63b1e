// The reader of the old format: files whose first line does not hold
// "version". Only the first three lines have fixed places; everything else is
// found by skipping to a line that holds a keyword. Ranges are written
// "label: 0 100 1" there. No results are kept in these files.

#include "files/block_parts.h"
#include "files/data_file_blocks.h"
#include "model/app_state.h"
#include "model/number_text.h"
#include "model/ranges.h"

namespace bm {

using namespace blockparts;

namespace {

// Reads lines until one holds `keyword` and returns it; error 62 at the end.
std::string skipTo(FieldInput& in, std::string_view keyword) {
    while (true) {
        std::string line = in.lineInput();
        if (contains(line, keyword)) return line;
    }
}

// A unit line: the text behind its ":", or the whole trimmed line when it has none.
std::string unitText(const std::string& line) {
    return line.find(':') == std::string::npos ? trim(line) : textAfter(line, ":");
}

std::string beforeFirstColon(const std::string& rangeText) { return rangeText.substr(0, rangeText.find(':')); }

}  // namespace

void readOldFormat(DataSet& d, FieldInput& in) {
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.modelType = labelField(in);
    d.aquiferType = labelField(in);
    d.contaminantType = labelField(in);

    d.description = textAfter(skipTo(in, "Description"), ":");
    // Each line up to the one with "END" goes in front of what was read before.
    d.title.clear();
    for (std::string line = in.lineInput(); !contains(line, "END"); line = in.lineInput())
        d.title = line + " " + d.title;

    skipTo(in, "Units");
    d.lengthUnit = unitText(in.lineInput());
    d.timeUnit = unitText(in.lineInput());
    d.concentrationUnit = unitText(in.lineInput());

    skipTo(in, "Coor");
    const std::string type = toLower(d.modelType);
    const std::string& source = d.contaminantType;
    if (type == "one dimensional") {
        d.xRange = rangeTextOfSpacedLine(in.lineInput());
        d.timeRange = rangeTextOfSpacedLine(in.lineInput());
        d.terms(1).time = beforeFirstColon(d.timeRange);
    } else if (type == "two dimensional") {
        d.xRange = rangeTextOfSpacedLine(in.lineInput());
        d.yRange = rangeTextOfSpacedLine(in.lineInput());
        d.timeRange = rangeTextOfSpacedLine(in.lineInput());
        d.terms(1).time = beforeFirstColon(d.timeRange);
        if (source == "Finite Line" || source == "Finite / Line") {
            d.sourceYc = labelField(in);
            d.sourceWidth = labelField(in);
        } else if (source == "Continuous Point" || source == "Continuous / Point") {
            d.sourceXc = labelField(in);
            d.sourceYc = labelField(in);
        } else if (source == "Gaussian") {
            d.sourceYc = labelField(in);
            d.sourceStdDev = labelField(in);
        }
    } else if (type == "three dimensional") {
        d.xRange = rangeTextOfSpacedLine(in.lineInput());
        d.yRange = rangeTextOfSpacedLine(in.lineInput());
        d.zRange = rangeTextOfSpacedLine(in.lineInput());
        d.timeRange = rangeTextOfSpacedLine(in.lineInput());
        if (!contains(source, "Finite")) {
            d.sourceXc = labelField(in);
            d.sourceYc = labelField(in);
            d.sourceZc = labelField(in);
        } else {
            d.sourceYc = labelField(in);
            d.sourceZc = labelField(in);
            d.sourceWidth = labelField(in);
            d.sourceHeight = labelField(in);
        }
    }

    skipTo(in, "Properties");
    d.terms(1).concentration = labelField(in);
    d.velocity = labelField(in);
    d.halfLife = labelField(in);
    d.dispersionX = labelField(in);
    if (type == "two dimensional" || type == "three dimensional") d.dispersionY = labelField(in);
    if (type == "three dimensional") d.dispersionZ = labelField(in);
    const bool continuousPoint = source == "Continuous Point" || source == "Continuous / Point";
    if ((type == "two dimensional" && continuousPoint) || (type == "three dimensional" && !contains(source, "Finite"))) {
        d.injectionRate = labelField(in);
        d.porosity = labelField(in);
    }

    // Each line of the notes goes in front of what was read before, with a line break.
    skipTo(in, "NOTES");
    d.comments.clear();
    while (!in.atEnd()) d.comments = in.lineInput() + d.comments + theAppState().crlf;
}

}  // namespace bm
