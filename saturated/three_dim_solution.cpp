#include "saturated/three_dim_solution.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "model/data_set.h"
#include "model/number_text.h"
#include "model/model_kinds.h"
#include "montecarlo/pass/grid_points.h"
#include "saturated/ratio_clamp.h"
#include "saturated/quadrature_points.h"
#include "saturated/spatial_grid.h"
#include "shell/base/checked_math.h"

namespace bm {

ThreeDimSourceTable& threeDimSourceTable() {
    static ThreeDimSourceTable table;
    return table;
}

namespace {

bool startsWithFinite(const std::string& text) { return toLower(text.substr(0, 6)) == "finite"; }

// The library function of the chosen case at one point, in the coordinates the
// case uses, with the clamp of a single value. There is no shortcut at the
// point source's centre: the library's value there is above 1.
class ThreeDimSolution {
public:
    ThreeDimSolution(const ThreeDimParameters& parameters, const ThreeDimSourceTable& table)
        : parameters_(parameters), code_(table.sourceCode) {
        if (code_ == kPatchSource3D && table.quadratureNodes.ub() >= 1 && table.quadratureWeights.ub() >= 1) {
            nodes_ = table.quadratureNodes.data() + 1;
            weights_ = table.quadratureWeights.data() + 1;
        }
    }

    bool shifted() const { return code_ == kContinuousPointSource3D; }

    double operator()(double t, double px, double py, double pz) const {
        double c = 0.0;
        switch (code_) {
            case kFiniteAquiferSource3D:
                cnrml_3FL(parameters_, t, px, py, pz, c);
                break;
            case kContinuousPointSource3D:
                cnrml_3IC(parameters_, t, px, py, pz, c);
                break;
            case kPatchSource3D:
                cnrml_3IL(parameters_, t, px, py, pz, c, nodes_, weights_);
                break;
            default:
                break;
        }
        return clampRatio(c);  // the library's status is not read
    }

private:
    const ThreeDimParameters& parameters_;
    std::int16_t code_;
    const double* nodes_ = nullptr;
    const double* weights_ = nullptr;
};

// C/Co at one point: the first term, then the later terms superposed; only a
// negative sum is thrown away, so the sum may pass 1.
double pointConcentration(const ThreeDimSolution& solution, const InflowTerms& terms, double x, double y, double z,
                          double t, const ThreeDimParameters& p) {
    const bool shift = solution.shifted();
    const double px = shift ? fp::sub(x, p.sourceXc) : x;
    const double py = shift ? fp::sub(y, p.sourceYc) : y;
    const double pz = shift ? fp::sub(z, p.sourceZc) : z;
    double c = solution(t, px, py, pz);
    c = terms.superpose(c, t, [&](double tau) { return solution(tau, px, py, pz); });
    return c < 0.0 ? 0.0 : c;
}

// The point source is the same on both sides of the planes y = Yc and z = Zc
// through it (its kernel sees the offsets only through hypot). For each entry
// of a list, the entry (from 1) whose offset from the centre is the negative
// of its own, 0 where there is none.
std::vector<int> mirrorIndices(const List<double>& values, int n, double centre) {
    auto key = [](double offset) { return std::bit_cast<std::uint64_t>(offset == 0.0 ? 0.0 : offset); };
    std::unordered_map<std::uint64_t, int> byOffset;
    for (int k = 1; k <= n; ++k) {
        const double offset = values(k) - centre;
        if (std::isfinite(offset)) byOffset.emplace(key(offset), k);
    }
    std::vector<int> mirror(static_cast<std::size_t>(n) + 1, 0);
    for (int k = 1; k <= n; ++k) {
        const double offset = values(k) - centre;
        if (!std::isfinite(offset)) continue;
        if (const auto found = byOffset.find(key(-offset)); found != byOffset.end()) mirror[static_cast<std::size_t>(k)] = found->second;
    }
    return mirror;
}

// The values of one time's points kept on one thread, by grid position, for
// the points that mirror them: a point takes the value of a mirror image
// computed before it at the same time, or is computed.
class MirroredTime {
public:
    // A time of more points than this keeps none (the store would be too large).
    static constexpr long long kMostPoints = 1 << 22;

    MirroredTime(int nx, int ny, int nz, std::vector<int> mirrorY, std::vector<int> mirrorZ)
        : nx_(nx), ny_(ny), size_(static_cast<std::size_t>(nx) * ny * nz), mirrorY_(std::move(mirrorY)),
          mirrorZ_(std::move(mirrorZ)) {}

    template <class Compute>
    double valueAt(int i, int k, int l, int j, Compute&& compute) {
        if (stamps_.empty()) {  // made on first use: the copies for the threads start empty
            stamps_.assign(size_, 0);
            values_.assign(size_, 0.0);
        }
        const int mk = mirrorY_[static_cast<std::size_t>(k)], ml = mirrorZ_[static_cast<std::size_t>(l)];
        for (const auto& [kk, ll] : {std::pair{mk, l}, std::pair{k, ml}, std::pair{mk, ml}}) {
            if (kk == 0 || ll == 0) continue;
            const std::size_t at = position(i, kk, ll);
            if (stamps_[at] == j) return values_[at];
        }
        const double value = compute();
        const std::size_t at = position(i, k, l);
        stamps_[at] = j;
        values_[at] = value;
        return value;
    }

private:
    std::size_t position(int i, int k, int l) const {
        return (static_cast<std::size_t>(l - 1) * nx_ + static_cast<std::size_t>(i - 1)) * ny_ + static_cast<std::size_t>(k - 1);
    }
    std::size_t nx_, ny_, size_;
    std::vector<int> mirrorY_, mirrorZ_;
    std::vector<int> stamps_;  // the time (from 1) each value was computed at, 0 for none
    std::vector<double> values_;
};

}  // namespace

void chooseThreeDimSource(ThreeDimParameters& parameters, ThreeDimSourceTable& table) {
    table.sourceCode = 0;
    const std::string aquifer = trimLeft(fixedText(parameters.aquiferCode));
    setFixedText(parameters.aquiferCode, aquifer);
    if (startsWithFinite(aquifer)) {
        table.sourceCode = kFiniteAquiferSource3D;
    } else {
        const std::string contaminant = trimLeft(fixedText(parameters.contaminantCode));
        setFixedText(parameters.contaminantCode, contaminant);
        table.sourceCode = startsWithFinite(contaminant) ? kPatchSource3D : kContinuousPointSource3D;
    }
    if (table.sourceCode == kPatchSource3D) readQuadraturePoints(table.quadratureNodes, table.quadratureWeights);
}

double solveThreeDimensional(DataSet& data, ThreeDimParameters& parameters, bool monteCarlo, int iteration,
                             UserInterface& ui) {
    ThreeDimSourceTable& table = threeDimSourceTable();
    if (iteration <= 1 || table.sourceCode == 0) chooseThreeDimSource(parameters, table);

    int nx = 1, ny = 1, nz = 1, nt = 1;
    if (!monteCarlo) {
        nx = gridCount(parameters.xMin, parameters.xMax, parameters.xInterval);
        ny = gridCount(parameters.yMin, parameters.yMax, parameters.yInterval);
        nz = gridCount(parameters.zMin, parameters.zMax, parameters.zInterval);
        nt = gridCount(parameters.tMin, parameters.tMax, parameters.tInterval);
    }
    data.numXTerms = checkedInt16(nx);
    data.numYTerms = checkedInt16(ny);
    data.numZTerms = checkedInt16(nz);
    data.numTTerms = checkedInt16(nt);
    data.xValues.redim(nx);
    data.yValues.redim(ny);
    data.zValues.redim(nz);
    data.tValues.redim(nt);
    data.result3D.redim({nx, ny, nz, nt});

    if (monteCarlo) {
        data.xValues(1) = textValue(data.mcAtX);
        data.yValues(1) = textValue(data.mcAtY);
        data.zValues(1) = textValue(data.mcAtZ);
        data.tValues(1) = textValue(data.mcAtT);
    } else {
        fillGridList(data.xValues, nx, parameters.xMin, parameters.xInterval, data.xConstant);
        fillGridList(data.yValues, ny, parameters.yMin, parameters.yInterval, data.yConstant);
        fillGridList(data.zValues, nz, parameters.zMin, parameters.zInterval, data.zConstant);
        fillGridList(data.tValues, nt, parameters.tMin, parameters.tInterval, data.tConstant);
    }

    const ThreeDimSolution solution(parameters, table);
    const InflowTerms terms(data, monteCarlo, iteration);
    const ProgressOwner owner = progressOwnerOf(ModelFamily::Saturated, data.multiChemical);
    // Points in the order y, then x, then z, then t; each on its own.
    const GridCursor<4> order({ny, nx, nz, nt});  // k, i, l, j
    // Mirror images only where a point source has more than one y or z.
    const bool mirrors = solution.shifted() && (ny > 1 || nz > 1) &&
                         static_cast<long long>(nx) * ny * nz <= MirroredTime::kMostPoints;
    MirroredTime mirroredTime(nx, ny, nz,
                              mirrors ? mirrorIndices(data.yValues, ny, parameters.sourceYc) : std::vector<int>(),
                              mirrors ? mirrorIndices(data.zValues, nz, parameters.sourceZc) : std::vector<int>());
    auto compute = [&data, &solution, &terms, &parameters, mirrors, cursor = order,
                    mirrored = std::move(mirroredTime)](long long at) mutable {
        const auto [k, i, l, j] = cursor(at);
        const double x = data.xValues(i), y = data.yValues(k), z = data.zValues(l), t = data.tValues(j);
        if (!mirrors) return pointConcentration(solution, terms, x, y, z, t, parameters);
        return mirrored.valueAt(i, k, l, j, [&] { return pointConcentration(solution, terms, x, y, z, t, parameters); });
    };
    double c = 0.0;
    GridCursor<4> stored = order;
    const bool finished = runGridPoints<double>(data, static_cast<long long>(nx) * ny * nz * nt, monteCarlo, owner,
                                                ui, compute, [&](long long at, double value) {
                                                    const auto [k, i, l, j] = stored(at);
                                                    data.result3D(i, k, l, j) = value;
                                                    c = value;
                                                });
    if (!finished) return 0.0;
    const double last = c;

    // The selected point: computed on its own when the grid is more than one point.
    if (nx != 1 || ny != 1 || nz != 1 || nt != 1) {
        const double savedX = data.xValues(1), savedY = data.yValues(1), savedZ = data.zValues(1),
                     savedT = data.tValues(1);
        data.xValues(1) = data.xConstant;
        data.yValues(1) = data.yConstant;
        data.zValues(1) = data.zConstant;
        data.tValues(1) = data.tConstant;
        data.currentConcentration = pointConcentration(solution, terms, data.xValues(1), data.yValues(1),
                                                       data.zValues(1), data.tValues(1), parameters);
        data.xValues(1) = savedX;
        data.yValues(1) = savedY;
        data.zValues(1) = savedZ;
        data.tValues(1) = savedT;
    } else {
        data.currentConcentration = data.result3D(1, 1, 1, 1);
    }

    if (!contains(data.calculationMode, "Monte Carlo")) data.calculationMode = formatNumber(data.currentConcentration);
    return last;
}

}  // namespace bm
