#include "sample_models.h"

namespace bm::samples {

namespace {

void skeleton(DataSet& d, const char* model, const char* aquifer, const char* contaminant) {
    d.author = "A. Hydro";
    d.title = "Plume test";
    d.comments = "Hand check";
    d.modelType = model;
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.lengthUnit = "m";
    d.timeUnit = "d";
    d.concentrationUnit = "mg/L";
}

void setList(List<double>& list, std::initializer_list<double> values) {
    list.redim(static_cast<int>(values.size()));
    int i = 1;
    for (double v : values) list(i++) = v;
}

void setList(List<float>& list, std::initializer_list<float> values) {
    list.redim(static_cast<int>(values.size()));
    int i = 1;
    for (float v : values) list(i++) = v;
}

void setStrings(List<std::string>& list, std::initializer_list<const char*> values) {
    list.redim(static_cast<int>(values.size()));
    int i = 1;
    for (const char* v : values) list(i++) = v;
}

void oneTerm(DataSet& d, const std::string& concentration) {
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1) = {"0", concentration};
}

void twoChemicals(DataSet& d) {
    d.multiChemical = true;
    d.numChemicals = 2;
    setStrings(d.chemicalName, {"PCE", "TCE"});
    setStrings(d.decayRate, {"0.1", "0.2"});
    setStrings(d.yieldFactor, {"0", "1"});
    d.chemicalSuperpositionIndex.redim(2);
    d.chemicalSuperpositionIndex(1) = 1;
    d.chemicalSuperpositionIndex(2) = 1;
    setStrings(d.suppositionTime, {"0", "0"});
    setStrings(d.suppositionConcentration, {"1", "0"});
    setStrings(d.resultsInPoint, {"0.5", "0.25"});
    d.halfLife = "999";  // not part of a multi-chemical file
}

}  // namespace

std::string boundaryMarker(int blanks, const std::string& value, int row) {
    const std::string pad(static_cast<std::size_t>(blanks), ' ');
    return pad + "Monte Carlo" + pad + "|" + value + ": " + std::to_string(row);
}

MonteBlock oneVariantBlock() {
    MonteBlock b;
    b.monteRowCount = 1;
    b.monteResultRowCount = 1;
    b.monteIterations = 3;
    b.InputTGData.redim({1, 1});
    b.InputTGData(1, 1) = {"Ground Water Darcy Velocity (V)", "0.1", "0.05", "0.15", "0.001", "3", "Normal", true};
    b.ResultTGData.redim({1, 1});
    b.ResultTGData(1, 1) = {"Ground Water Darcy Velocity (V)", "0.1", "0.06", "0.14", "0.1", "0.1", "0.02", true,
                            "Median"};
    b.MonteSamples.redim({1, 3, 1});
    b.MonteSamples(1, 1, 1) = 0.11;
    b.MonteSamples(1, 2, 1) = 0.09;
    b.MonteSamples(1, 3, 1) = 0.5;
    return b;
}

DataSet oneRegular() {
    DataSet d;
    skeleton(d, "One Dimensional", "Semi-Infinite", "Dirichlet");
    d.xRange = "0:10:10";
    d.timeRange = "1:2:1";
    d.mcAtX = "5";
    d.mcAtT = "2";
    d.velocity = "0.1";
    d.halfLife = "100";
    d.dispersionX = "1.5";
    d.porosity = "0.3";
    d.retardation = "";  // saved as "1"
    d.superpositionIndex = 2;
    d.terms.redim(2);
    d.terms(1) = {"0", "100"};
    d.terms(2) = {"10", "0"};
    d.calculationMode = "Regular";
    setList(d.xValues, {0, 10});
    setList(d.tValues, {1, 2});
    d.result1D.redim({2, 2});
    d.result1D(1, 1) = 0.5;
    d.result1D(1, 2) = 0.25;
    d.result1D(2, 1) = 0.125;
    d.result1D(2, 2) = 0.0625;
    d.monteStore(ModelKind::OneDimensional) = oneVariantBlock();
    return d;
}

DataSet oneMonteCarlo() {
    DataSet d = oneRegular();
    d.retardation = "1";
    d.terms(1).concentration = boundaryMarker(30, "100", 2);
    d.calculationMode = "Monte Carlo";
    setList(d.mcResult1D, {0.2, 0.3});
    return d;
}

DataSet oneNeverCalculated() {
    DataSet d;
    skeleton(d, "One Dimensional", "Finite", "Cauchy");
    d.xRange = "0:100:1";
    d.timeRange = "10";
    d.calculationMode = "Regular";
    return d;
}

DataSet twoRegular() {
    DataSet d;
    skeleton(d, "Two Dimensional", "Infinite", "Finite / Line");
    d.xRange = "0:10:10";
    d.yRange = "-5:5:10";
    d.timeRange = "1:2:1";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.mcAtX = "5";
    d.mcAtY = "0";
    d.mcAtT = "2";
    d.velocity = "0.1";
    d.halfLife = "100";
    d.dispersionX = "1.5";
    d.dispersionY = "0.15";
    d.porosity = "0.3";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.sourceWidth = "20";
    d.retardation = "2.5";
    oneTerm(d, "1");
    d.calculationMode = "Regular";
    setList(d.xValues, {0, 10});
    setList(d.yValues, {-5, 5});
    setList(d.tValues, {1, 2});
    d.result2D.redim({2, 2, 2});
    d.result2D(1, 1, 1) = 0.5;
    d.result2D(1, 1, 2) = 0.25;
    d.result2D(1, 2, 1) = 0.75;
    d.result2D(1, 2, 2) = 0.375;
    d.result2D(2, 1, 1) = 0.125;
    d.result2D(2, 1, 2) = 0.0625;
    d.result2D(2, 2, 1) = 0;
    d.result2D(2, 2, 2) = 1e-20;
    return d;
}

DataSet twoMonteCarlo() {
    DataSet d = twoRegular();
    d.terms(1).concentration = boundaryMarker(20, "1", 2);
    d.calculationMode = "Monte Carlo";
    setList(d.mcResult2D, {0.004, 1e-20});
    d.monteStore(ModelKind::TwoDimensional) = oneVariantBlock();
    return d;
}

DataSet threeRegular() {
    DataSet d;
    skeleton(d, "Three Dimensional", "Infinite", "Continuous / Point");
    d.xRange = "0:10:10";
    d.yRange = "0";
    d.zRange = "0:2:2";
    d.timeRange = "1:2:1";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.sourceZc = "1";
    d.mcAtX = "5";
    d.mcAtY = "0";
    d.mcAtZ = "1";
    d.mcAtT = "2";
    d.velocity = "0.1";
    d.halfLife = "100";
    d.dispersionX = "1.5";
    d.dispersionY = "0.15";
    d.dispersionZ = "0.015";
    d.porosity = "0.3";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.injectionRate = "5";
    d.retardation = "1";
    oneTerm(d, "1");
    d.calculationMode = "Regular";
    setList(d.xValues, {0, 10});
    setList(d.yValues, {0});
    setList(d.zValues, {0, 2});
    setList(d.tValues, {1, 2});
    d.result3D.redim({2, 1, 2, 2});
    d.result3D(1, 1, 1, 1) = 0.5;
    d.result3D(1, 1, 2, 1) = 0.25;
    d.result3D(2, 1, 1, 1) = 0.125;
    d.result3D(2, 1, 2, 1) = 0.0625;
    d.result3D(1, 1, 1, 2) = 0.75;
    d.result3D(1, 1, 2, 2) = 0.375;
    d.result3D(2, 1, 1, 2) = 0.1875;
    d.result3D(2, 1, 2, 2) = 0.09375;
    return d;
}

DataSet threeMonteCarlo() {
    DataSet d = threeRegular();
    d.terms(1).concentration = boundaryMarker(20, "1", 1);
    d.calculationMode = "Monte Carlo";
    setList(d.mcResult3D, {0.015, 0.025});
    d.monteStore(ModelKind::ThreeDimensional) = oneVariantBlock();
    return d;
}

DataSet unsatRegular() {
    DataSet d;
    skeleton(d, "Unsaturated One Dimensional", "Sandy loam", "Dirichlet/Exp. Decay");
    d.xRange = "0:1:1";
    d.timeRange = "10";
    d.mcAtX = "0.5";
    d.mcAtT = "10";
    d.velocity = "0.2";
    d.dispersionX = "0.05";
    d.halfLife = "365";
    d.bulkDensity = "1.6";
    d.distributionCoefficient = "0.1";
    d.porosity = "0.6";
    d.saturation = "0.35";
    d.sourceDecayRate = "0.01";
    oneTerm(d, "1");
    d.calculationMode = "0.4321";
    setList(d.xValues, {0, 1});
    setList(d.tValues, {10});
    d.resultUnsat.redim({2, 1});
    d.resultUnsat(1, 1) = 1;
    d.resultUnsat(2, 1) = 0.4321;
    return d;
}

DataSet unsatMonteCarlo() {
    DataSet d = unsatRegular();
    d.contaminantType = "Dirichlet";
    d.sourceDecayRate = "0.5";  // no row for it with a Dirichlet inlet
    d.terms(1).concentration = boundaryMarker(30, "1", 1);
    d.calculationMode = "Monte Carlo";
    setList(d.mcResultUnsat, {0.7, 0.65});
    d.monteStore(ModelKind::Unsaturated) = oneVariantBlock();
    return d;
}

DataSet varRegular() {
    DataSet d;
    skeleton(d, "Time Varying", "Linear", "Point (continuous)");
    d.xRange = "10:20:10";
    d.yRange = "0";
    d.timeRange = "5:10:5";
    d.mcAtX = "10";
    d.mcAtY = "0";
    d.mcAtT = "5";
    d.sourceMagnitude = "1000";
    d.retardation = "1";
    d.velocityX = "0.5";
    d.velocityY = "0";
    d.sourceDecayRate = "0";
    d.dispersionRatio = "0.1";
    d.bulkDensity = "10";
    d.saturation = "0";
    d.distributionCoefficient = "50";
    d.porosity = "0.25";
    d.calculationMode = "Regular";
    setList(d.varTValues, {5.0f, 10.0f});
    setList(d.varXValues, {10.0f, 20.0f});
    setList(d.varYValues, {0.0f});
    setList(d.resultVar, {0.5f, 0.25f, 0.125f, 0.1f});
    return d;
}

DataSet varMonteCarlo() {
    DataSet d = varRegular();
    d.calculationMode = "Monte Carlo";
    setList(d.mcResultVar, {0.3f, 0.1234567f});
    d.monteStore(ModelKind::TimeVarying) = oneVariantBlock();
    return d;
}

DataSet multiRegular1D() {
    DataSet d;
    skeleton(d, "One Dimensional", "Semi-Infinite", "Dirichlet");
    d.xRange = "0:10:10";
    d.timeRange = "1";
    d.mcAtX = "5";
    d.mcAtT = "1";
    d.velocity = "0.1";
    d.dispersionX = "1.5";
    d.porosity = "0.3";
    d.retardation = "1.2";
    twoChemicals(d);
    d.calculationMode = "Regular";
    setList(d.xValues, {0, 10});
    setList(d.tValues, {1});
    d.chemResult1D.redim({2, 2, 1});
    d.chemResult1D(1, 1, 1) = 1;
    d.chemResult1D(1, 2, 1) = 0.5;
    d.chemResult1D(2, 1, 1) = 0;
    d.chemResult1D(2, 2, 1) = 0.25;
    return d;
}

DataSet multiMonteCarlo1D() {
    DataSet d = multiRegular1D();
    d.decayRate(1) = std::string(15, ' ') + "Monte Carlo" + std::string(50, ' ') + "|0.1: 1";
    d.calculationMode = "Monte Carlo";
    d.chemMcResult1D.redim({2, 2});
    d.chemMcResult1D(1, 1) = 0.1;
    d.chemMcResult1D(1, 2) = 0.2;
    d.chemMcResult1D(2, 1) = 0.01;
    d.chemMcResult1D(2, 2) = 0.02;
    d.monteStore(ModelKind::MultiOneDimensional) = oneVariantBlock();
    return d;
}

DataSet multiRegular2D() {
    DataSet d;
    skeleton(d, "Two Dimensional", "Infinite", "Gaussian");
    d.xRange = "0";
    d.yRange = "-1:1:2";
    d.timeRange = "1";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.mcAtX = "0";
    d.mcAtY = "0";
    d.mcAtT = "1";
    d.velocity = "0.1";
    d.dispersionX = "1.5";
    d.dispersionY = "0.15";
    d.porosity = "0.3";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.sourceStdDev = "5";
    d.retardation = "1";
    twoChemicals(d);
    d.calculationMode = "Regular";
    setList(d.xValues, {0});
    setList(d.yValues, {-1, 1});
    setList(d.tValues, {1});
    d.chemResult2D.redim({2, 1, 2, 1});
    d.chemResult2D(1, 1, 1, 1) = 0.5;
    d.chemResult2D(1, 1, 2, 1) = 0.5;
    d.chemResult2D(2, 1, 1, 1) = 0.25;
    d.chemResult2D(2, 1, 2, 1) = 0.25;
    return d;
}

DataSet multiRegular3D() {
    DataSet d;
    skeleton(d, "Three Dimensional", "Infinite", "Finite / Patch");
    d.xRange = "5";
    d.yRange = "0";
    d.zRange = "0";
    d.timeRange = "1:2:1";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.sourceZc = "0";
    d.mcAtX = "5";
    d.mcAtY = "0";
    d.mcAtZ = "0";
    d.mcAtT = "1";
    d.velocity = "0.1";
    d.dispersionX = "1.5";
    d.dispersionY = "0.15";
    d.dispersionZ = "0.015";
    d.porosity = "0.3";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.sourceWidth = "4";
    d.sourceHeight = "2";
    d.retardation = "1";
    twoChemicals(d);
    d.calculationMode = "Regular";
    setList(d.xValues, {5});
    setList(d.yValues, {0});
    setList(d.zValues, {0});
    setList(d.tValues, {1, 2});
    d.chemResult3D.redim({2, 1, 1, 1, 2});
    d.chemResult3D(1, 1, 1, 1, 1) = 0.5;
    d.chemResult3D(1, 1, 1, 1, 2) = 0.4;
    d.chemResult3D(2, 1, 1, 1, 1) = 0.1;
    d.chemResult3D(2, 1, 1, 1, 2) = 0.2;
    return d;
}

DataSet multiRegularUnsat() {
    DataSet d;
    skeleton(d, "Unsaturated One Dimensional", "Sandy loam", "Dirichlet/Exp. Decay");
    d.xRange = "0:1:1";
    d.timeRange = "10";
    d.mcAtX = "0.5";
    d.mcAtT = "10";
    d.velocity = "0.2";
    d.dispersionX = "0.05";
    d.bulkDensity = "1.6";
    d.distributionCoefficient = "0.1";
    d.porosity = "0.6";
    d.saturation = "0.35";
    d.sourceDecayRate = "0.01";
    twoChemicals(d);
    d.calculationMode = "Regular";
    setList(d.xValues, {0, 1});
    setList(d.tValues, {10});
    d.chemResultUnsat.redim({2, 2, 1});
    d.chemResultUnsat(1, 1, 1) = 1;
    d.chemResultUnsat(1, 2, 1) = 0.5;
    d.chemResultUnsat(2, 1, 1) = 0;
    d.chemResultUnsat(2, 2, 1) = 0.125;
    return d;
}

const std::vector<Golden>& goldenFiles() {
    static const std::vector<Golden> files = {
        {"one_regular.one", oneRegular},
        {"one_montecarlo.one", oneMonteCarlo},
        {"one_never_calculated.one", oneNeverCalculated},
        {"two_regular.two", twoRegular},
        {"two_montecarlo.two", twoMonteCarlo},
        {"three_regular.tri", threeRegular},
        {"three_montecarlo.tri", threeMonteCarlo},
        {"unsat_regular.u1d", unsatRegular},
        {"unsat_montecarlo.u1d", unsatMonteCarlo},
        {"var_regular.var", varRegular},
        {"var_montecarlo.var", varMonteCarlo},
        {"multi_regular.mc1", multiRegular1D},
        {"multi_montecarlo.mc1", multiMonteCarlo1D},
        {"multi_regular.mc2", multiRegular2D},
        {"multi_regular.mc3", multiRegular3D},
        {"multi_regular.mcu", multiRegularUnsat},
    };
    return files;
}

}  // namespace bm::samples
