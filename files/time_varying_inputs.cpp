// Inputs of the time-varying block. The model shares fields with the
// unsaturated one: bulkDensity holds the maximum dispersivity, saturation the
// molecular diffusion, distributionCoefficient the mean travel time.

#include "files/block_parts.h"
#include "files/data_file_blocks.h"
#include "model/number_text.h"

namespace bm {

using namespace blockparts;

void writeTimeVaryingInputs(DataSet& d, PrintOutput& out) {
    out.printLine("Coor Data");
    out.printLine("X: " + d.xRange);
    out.printLine("Y: " + d.yRange);
    out.printLine("Time: " + d.timeRange);
    out.printLine("Monte Carlo simulation at x: " + d.mcAtX);
    out.printLine("Monte Carlo simulation at y: " + d.mcAtY);
    out.printLine("Monte Carlo simulation at t: " + d.mcAtT);
    out.printLine();
    out.printLine("Properties:");
    out.printLine("Magnitude of Source: " + d.sourceMagnitude);
    out.printLine("Retardation Coefficient: " + d.retardation);
    out.printLine("Steady State Velocity in X direction: " + d.velocityX);
    out.printLine("Steady State Velocity in Y direction: " + d.velocityY);
    out.printLine("First Order Decay Coefficient: " + d.sourceDecayRate);
    out.printLine("Dispersion Ratio Coefficient: " + d.dispersionRatio);
    out.printLine("Maximum Dispersivity: " + d.bulkDensity);
    out.printLine("Molecular Diffusion: " + d.saturation);
    out.printLine("Mean Travel Time: " + d.distributionCoefficient);
    out.printLine("Aquifer Porosity: " + d.porosity);
    out.printLine("[End Input Data]");  // no empty line in front of it
}

void readTimeVaryingInputs(DataSet& d, FieldInput& in) {
    in.lineInput();  // "Coor Data"
    d.xRange = labelField(in);
    d.yRange = labelField(in);
    d.timeRange = labelField(in);
    d.mcAtX = labelField(in);
    d.mcAtY = labelField(in);
    d.mcAtT = labelField(in);
    in.lineInput();  // empty line
    in.lineInput();  // "Properties:"
    d.sourceMagnitude = labelField(in);
    d.retardation = labelField(in);
    d.velocityX = labelField(in);
    d.velocityY = labelField(in);
    d.sourceDecayRate = labelField(in);
    d.dispersionRatio = labelField(in);
    d.bulkDensity = labelField(in);
    d.saturation = labelField(in);
    d.distributionCoefficient = labelField(in);
    // Earlier files end the inputs here, without a porosity row.
    if (const std::string line = in.lineInput(); contains(toLower(line), "porosity")) {
        d.porosity = textAfter(line, ":");
        in.lineInput();  // "[End Input Data]"
    } else {
        d.porosity = std::string("1");  // (a string object: GCC 12 misreads the literal assignment)
    }
}

}  // namespace bm
