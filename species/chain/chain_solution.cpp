#include "species/chain/chain_solution.h"

#include <cmath>
#include <numbers>

#include "model/model_kinds.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "species/matrix_operations.h"

namespace bm {

namespace {

enum class Shape { OneDim, TwoDim, ThreeDim, Unsat };

Shape shapeOf(ModelKind chainKind) {
    switch (chainKind) {
    case ModelKind::MultiTwoDimensional: return Shape::TwoDim;
    case ModelKind::MultiThreeDimensional: return Shape::ThreeDim;
    case ModelKind::MultiUnsaturated: return Shape::Unsat;
    default: return Shape::OneDim;
    }
}

struct GridCounts {
    int nx = 1, ny = 1, nz = 1, nt = 1;
};

GridCounts countsOf(const DataSet& d, Shape shape) {
    GridCounts c;
    c.nx = d.numXTerms;
    c.nt = d.numTTerms;
    if (shape == Shape::TwoDim || shape == Shape::ThreeDim) c.ny = d.numYTerms;
    if (shape == Shape::ThreeDim) c.nz = d.numZTerms;
    return c;
}

double& chemicalCell(DataSet& d, Shape shape, int i, int x, int y, int z, int t) {
    switch (shape) {
    case Shape::TwoDim: return d.chemResult2D(i, x, y, t);
    case Shape::ThreeDim: return d.chemResult3D(i, x, y, z, t);
    case Shape::Unsat: return d.chemResultUnsat(i, x, t);
    default: return d.chemResult1D(i, x, t);
    }
}

double singleCell(const DataSet& d, Shape shape, int x, int y, int z, int t) {
    switch (shape) {
    case Shape::TwoDim: return d.result2D(x, y, t);
    case Shape::ThreeDim: return d.result3D(x, y, z, t);
    case Shape::Unsat: return d.resultUnsat(x, t);
    default: return d.result1D(x, t);
    }
}

// Every grid point, time outermost.
template <class F>
void forEachPoint(const DataSet& d, Shape shape, F f) {
    const GridCounts c = countsOf(d, shape);
    for (int t = 1; t <= c.nt; ++t)
        for (int z = 1; z <= c.nz; ++z)
            for (int y = 1; y <= c.ny; ++y)
                for (int x = 1; x <= c.nx; ++x) f(x, y, z, t);
}

// The value of a chemical's text: its number, or, in iteration m, the sample
// of the row its marker names.
double valueOrSample(const DataSet& d, const std::string& text, int iteration) {
    if (!holdsMonteMarker(text)) return textValue(text);
    return monteSample(d, markerRow(text), iteration);
}

template <class Read>
void fillChainMatrix(const DataSet& d, SquareMatrix& matrix, Read read) {
    const int n = d.numChemicals;
    matrix.redim(n);
    for (int i = 1; i <= n; ++i) {
        matrix(i, i) = -read(d.decayRate(i));
        if (i > 1) matrix(i, i - 1) = read(d.yieldFactor(i)) * read(d.decayRate(i - 1));
    }
}

bool decompose(const DataSet& d, ChainTransform& tr, UserInterface& ui) {
    const auto n = static_cast<std::int16_t>(d.numChemicals);
    if (!eigenDecompose(n, tr.chainMatrix, tr.eigenValues, tr.eigenVectors)) {
        ui.message(MessageIcon::Critical, MessageButtons::Ok, kChainErrorTitle, kComplexEigenvaluesText);
        return false;
    }
    if (!invertEigenMatrix(n, tr.eigenVectors, tr.eigenVectorsInverse)) {
        ui.message(MessageIcon::Critical, MessageButtons::Ok, kChainErrorTitle, kNoInverseText);
        return false;
    }
    return true;
}

// w = Z v for the n chemicals.
List<double> coupled(int n, const List<double>& eigenVectors, const List<double>& v) {
    List<double> w;
    const auto order = static_cast<std::int16_t>(n);
    matrixProduct(order, order, 1, eigenVectors, v, w);
    return w;
}

const KindCalculation& singleCalculation(ModelKind chainKind) {
    const KindCalculation* single = kindCalculationFor(singleSpeciesKind(chainKind));
    if (single == nullptr) raiseError(err::InvalidProcedureCall);
    return *single;
}

void restoreTermsToSources(DataSet& d) {
    // The index is the term's: the first chemicals' sources go into the terms.
    for (int j = 1; j <= d.terms.ub() && j <= d.numChemicals; ++j) d.terms(j).concentration = d.suppositionConcentration(j);
}

// superpositionIndex from the chemical (0 counts 1) and every term alike.
void setChemicalTerms(DataSet& d, int chemical, const std::string& concentration) {
    std::int16_t index = d.chemicalSuperpositionIndex(chemical);
    if (index == 0) index = 1;
    d.superpositionIndex = index;
    d.terms.redim(index);
    for (int j = 1; j <= index; ++j) d.terms(j) = Term{d.suppositionTime(chemical), concentration};
}

std::string halfLifeOfRate(const std::string& rate) {
    return generalText(std::numbers::ln2 / numericValue(rate));
}

bool stopAfterChemical(DataSet& d, const std::optional<double>& value) {
    // The solvers end a grid early on Stop and clear its flag; the Stop
    // button's answer stays in runStopped.
    if (value && !d.stopRequestedMulti && !d.stopRequested && !d.runStopped) return false;
    d.stopRequestedMulti = false;
    d.stopRequested = false;
    d.runStopped = true;
    return true;
}

ProgressOwner ownerOf(ModelKind chainKind) { return modelKindInfo(chainKind).progressOwner; }

}  // namespace

ChainTransform& chainTransform() {
    static ChainTransform transform;
    return transform;
}

void buildChainMatrix(const DataSet& data, SquareMatrix& matrix) {
    fillChainMatrix(data, matrix, [](const std::string& text) { return textValue(text); });
}

bool chainRatesSampled(const DataSet& data) {
    for (int i = 1; i <= data.numChemicals; ++i)
        if (holdsMonteMarker(data.decayRate(i)) || holdsMonteMarker(data.yieldFactor(i))) return true;
    return false;
}

bool sourceConcentrationsSampled(const DataSet& data) {
    for (int i = 1; i <= data.numChemicals; ++i)
        if (holdsMonteMarker(data.suppositionConcentration(i))) return true;
    return false;
}

bool decomposeChain(DataSet& data, ChainTransform& transform, UserInterface& ui) {
    buildChainMatrix(data, transform.chainMatrix);
    if (!decompose(data, transform, ui)) return false;
    return transformConcentrations(static_cast<std::int16_t>(data.numChemicals), transform.eigenVectorsInverse,
                                   data.suppositionConcentration, data.chemicalTermConcentration);
}

void prepareChemicals(DataSet& data, ChainTransform& transform, bool simulate, UserInterface& ui) {
    const int n = data.numChemicals;
    for (List<std::string>* list : {&data.chemicalName, &data.decayRate, &data.yieldFactor, &data.suppositionTime,
                                    &data.suppositionConcentration})
        list->redimPreserve(n);
    data.chemicalSuperpositionIndex.redim(n);
    for (int i = 1; i <= n; ++i) data.chemicalSuperpositionIndex(i) = data.superpositionIndex;
    // Chemicals whose terms come from an earlier decomposition keep them.
    data.chemicalTermConcentration.redimPreserve(n);
    if (simulate) return;  // a sampled chain is decomposed in each iteration
    decomposeChain(data, transform, ui);
}

ModelKind singleSpeciesKind(ModelKind chainKind) {
    switch (chainKind) {
    case ModelKind::MultiTwoDimensional: return ModelKind::TwoDimensional;
    case ModelKind::MultiThreeDimensional: return ModelKind::ThreeDimensional;
    case ModelKind::MultiUnsaturated: return ModelKind::Unsaturated;
    default: return ModelKind::OneDimensional;
    }
}

Array<double, 2>& chemicalMonteCarloResults(DataSet& data, ModelKind chainKind) {
    switch (shapeOf(chainKind)) {
    case Shape::TwoDim: return data.chemMcResult2D;
    case Shape::ThreeDim: return data.chemMcResult3D;
    case Shape::Unsat: return data.chemMcResultUnsat;
    default: return data.chemMcResult1D;
    }
}

void allocateChemicalResults(DataSet& data, ModelKind chainKind, int iterations) {
    const Shape shape = shapeOf(chainKind);
    const GridCounts c = countsOf(data, shape);
    const int n = data.numChemicals;
    switch (shape) {
    case Shape::TwoDim: data.chemResult2D.redim({n, c.nx, c.ny, c.nt}); break;
    case Shape::ThreeDim: data.chemResult3D.redim({n, c.nx, c.ny, c.nz, c.nt}); break;
    case Shape::Unsat: data.chemResultUnsat.redim({n, c.nx, c.nt}); break;
    default: data.chemResult1D.redim({n, c.nx, c.nt}); break;
    }
    const int stored = iterations - 1 < 1 ? 1 : iterations - 1;
    chemicalMonteCarloResults(data, chainKind).redim({n, stored});
}

void storeChemicalResult(DataSet& data, ModelKind chainKind, int chemical) {
    const Shape shape = shapeOf(chainKind);
    const double b = textValue(data.chemicalTermConcentration(chemical));
    forEachPoint(data, shape, [&](int x, int y, int z, int t) {
        chemicalCell(data, shape, chemical, x, y, z, t) = b * singleCell(data, shape, x, y, z, t);
    });
}

void backTransformResults(DataSet& data, ModelKind chainKind, const List<double>& eigenVectors) {
    const Shape shape = shapeOf(chainKind);
    const int n = data.numChemicals;
    List<double> v;
    v.redim(n);
    forEachPoint(data, shape, [&](int x, int y, int z, int t) {
        for (int i = 1; i <= n; ++i) v(i) = chemicalCell(data, shape, i, x, y, z, t);
        const List<double> w = coupled(n, eigenVectors, v);
        for (int i = 1; i <= n; ++i) chemicalCell(data, shape, i, x, y, z, t) = w(i) < 0.0 ? 0.0 : w(i);
    });
    for (int i = 1; i <= n; ++i) {
        const std::string& text = data.resultsInPoint(i);
        v(i) = isNumeric(text) ? numericValue(text) : 0.0;
    }
    const List<double> w = coupled(n, eigenVectors, v);
    for (int i = 1; i <= n; ++i) data.resultsInPoint(i) = generalText(w(i) < 0.0 ? 0.0 : w(i));
}

PassResult runChemicalsRegular(DataSet& data, ModelKind chainKind, bool simulate, UserInterface& ui) {
    if (simulate) return runChemicalsMonteCarlo(data, chainKind, ui);
    PassResult pass;
    pass.iterations = 2;
    const KindCalculation& single = singleCalculation(chainKind);
    const bool unsaturated = shapeOf(chainKind) == Shape::Unsat;
    const std::int16_t shownChemical = data.selectedChemical;
    const int n = data.numChemicals;
    data.stopRequestedMulti = false;
    data.resultsInPoint.redimPreserve(n);
    data.chemicalTermConcentration.redimPreserve(n);
    for (int i = 1; i <= n; ++i) {
        if (unsaturated) data.selectedChemical = static_cast<std::int16_t>(i);
        data.halfLife = halfLifeOfRate(data.decayRate(i));
        setChemicalTerms(data, i, data.chemicalTermConcentration(i));
        if (single.layOutGrid) single.layOutGrid(data, false, ui);
        const std::optional<double> value = single.iterate(data, false, 1, ui);
        if (stopAfterChemical(data, value)) {
            data.selectedChemical = shownChemical;
            pass.ending = PassEnding::Stopped;
            return pass;
        }
        if (i == 1) allocateChemicalResults(data, chainKind, data.monteStore(chainKind).monteIterations);
        for (int j = 1; j <= data.terms.ub(); ++j) data.terms(j).concentration = data.suppositionConcentration(i);
        storeChemicalResult(data, chainKind, i);
        const double b = textValue(data.chemicalTermConcentration(i));
        if (unsaturated && !isNumeric(data.calculationMode)) data.resultsInPoint(i) = data.calculationMode;
        else data.resultsInPoint(i) = generalText(b * textValue(data.calculationMode));
        pass.stored = 1;
        pass.lastValue = *value;
    }
    // The unsaturated solver reads the chemical it solves; the one shown comes back.
    if (unsaturated) data.selectedChemical = shownChemical;
    restoreTermsToSources(data);
    backTransformResults(data, chainKind, chainTransform().eigenVectors);
    return pass;
}

PassResult runChemicalsMonteCarlo(DataSet& data, ModelKind chainKind, UserInterface& ui) {
    PassResult pass;
    const KindCalculation& single = singleCalculation(chainKind);
    const bool unsaturated = shapeOf(chainKind) == Shape::Unsat;
    const std::int16_t shownChemical = data.selectedChemical;
    const int n = data.numChemicals;
    const int iterations = static_cast<int>(data.monteStore(chainKind).monteIterations);
    pass.iterations = iterations;
    data.stopRequestedMulti = false;
    data.resultsInPoint.redimPreserve(n);
    Array<double, 2>& chemMc = chemicalMonteCarloResults(data, chainKind);
    for (int i = 1; i <= n; ++i) {
        if (unsaturated) data.selectedChemical = static_cast<std::int16_t>(i);
        // A sampled rate goes to the solver as its marker, where the sample
        // stands for a half-life; the chain matrix reads the same sample as a rate.
        const std::string& rate = data.decayRate(i);
        data.halfLife = holdsMonteMarker(rate) ? rate : halfLifeOfRate(rate);
        setChemicalTerms(data, i, "1");
        if (single.layOutGrid) single.layOutGrid(data, true, ui);
        if (single.refuses && single.refuses(data, iterations, ui)) {
            data.selectedChemical = shownChemical;
            pass.ending = PassEnding::Refused;
            return pass;
        }
        if (i == 1) allocateChemicalResults(data, chainKind, iterations);
        for (int m = 1; m <= iterations - 1; ++m) {
            const std::optional<double> value = single.iterate(data, true, m, ui);
            if (!value) {
                stopAfterChemical(data, value);
                data.selectedChemical = shownChemical;
                pass.ending = PassEnding::Stopped;
                return pass;
            }
            chemMc(i, m) = *value;
            pass.stored = m;
            ui.reportProgress(ownerOf(chainKind), iterations, m);
        }
        for (int j = 1; j <= data.terms.ub(); ++j) data.terms(j).concentration = data.suppositionConcentration(i);
        data.resultsInPoint(i) = data.calculationMode;
        if (stopAfterChemical(data, std::optional<double>(0.0))) {
            data.selectedChemical = shownChemical;
            pass.ending = PassEnding::Stopped;
            return pass;
        }
    }
    if (unsaturated) data.selectedChemical = shownChemical;
    restoreTermsToSources(data);
    finishChemicalMonteCarlo(data, chainKind, chainTransform(), ui);
    return pass;
}

bool sampledConcentrations(const DataSet& data, int iteration, const List<double>& inverse, List<double>& b) {
    const int n = data.numChemicals;
    List<double> c;
    c.redim(n);
    for (int i = 1; i <= n; ++i) c(i) = valueOrSample(data, data.suppositionConcentration(i), iteration);
    const auto order = static_cast<std::int16_t>(n);
    matrixProduct(order, order, 1, inverse, c, b);
    return true;
}

void sampledChainMatrix(const DataSet& data, int iteration, SquareMatrix& matrix) {
    fillChainMatrix(data, matrix,
                    [&](const std::string& text) { return valueOrSample(data, text, iteration); });
}

void backTransformIteration(Array<double, 2>& chemMc, int n, int iteration, const List<double>& eigenVectors) {
    List<double> v;
    v.redim(n);
    for (int i = 1; i <= n; ++i) v(i) = chemMc(i, iteration);
    const List<double> w = coupled(n, eigenVectors, v);
    for (int i = 1; i <= n; ++i) chemMc(i, iteration) = w(i);
}

void finishChemicalMonteCarlo(DataSet& data, ModelKind chainKind, ChainTransform& tr, UserInterface& ui) {
    const int n = data.numChemicals;
    const int last = static_cast<int>(data.monteStore(chainKind).monteIterations) - 1;
    Array<double, 2>& chemMc = chemicalMonteCarloResults(data, chainKind);
    List<double> b;
    if (!chainRatesSampled(data)) {
        buildChainMatrix(data, tr.chainMatrix);
        if (!decompose(data, tr, ui)) return;
        if (sourceConcentrationsSampled(data)) {
            for (int m = 1; m <= last; ++m) {
                sampledConcentrations(data, m, tr.eigenVectorsInverse, b);
                for (int i = 1; i <= n; ++i) chemMc(i, m) = b(i) * chemMc(i, m);
            }
        } else {
            transformConcentrations(static_cast<std::int16_t>(n), tr.eigenVectorsInverse,
                                    data.suppositionConcentration, data.chemicalTermConcentration);
            for (int i = 1; i <= n; ++i) {
                const double term = textValue(data.chemicalTermConcentration(i));
                for (int m = 1; m <= last; ++m) chemMc(i, m) = term * chemMc(i, m);
            }
        }
        for (int m = 1; m <= last; ++m) backTransformIteration(chemMc, n, m, tr.eigenVectors);
        return;
    }
    for (int m = 1; m <= last; ++m) {
        sampledChainMatrix(data, m, tr.chainMatrix);
        if (!decompose(data, tr, ui)) return;
        sampledConcentrations(data, m, tr.eigenVectorsInverse, b);
        for (int i = 1; i <= n; ++i) chemMc(i, m) = b(i) * chemMc(i, m);
        backTransformIteration(chemMc, n, m, tr.eigenVectors);
    }
}

}  // namespace bm
