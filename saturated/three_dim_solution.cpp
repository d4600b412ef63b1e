#include "saturated/three_dim_solution.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
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
    bool patch() const { return code_ == kPatchSource3D; }

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

// A coordinate as the kernel sees it, as bits (-0 as +0): a point source's
// offset from its centre, or a patch's distances to its two ends.
using ImageKey = std::pair<std::uint64_t, std::uint64_t>;

std::uint64_t bitsOf(double v) { return std::bit_cast<std::uint64_t>(v == 0.0 ? 0.0 : v); }

struct ImageKeyHash {
    std::size_t operator()(const ImageKey& key) const {
        return std::hash<std::uint64_t>()(key.first * 0x9E3779B97F4A7C15ULL ^ key.second);
    }
};

// For each entry of a list (from 1), the entry whose key is the image of its
// own (imageOf), 0 where there is none; keyOf gives nothing for a value the
// kernel could not take (not finite).
template <class KeyOf, class ImageOf>
std::vector<int> imageIndices(const List<double>& values, int n, KeyOf&& keyOf, ImageOf&& imageOf) {
    std::unordered_map<ImageKey, int, ImageKeyHash> byKey;
    for (int k = 1; k <= n; ++k)
        if (const std::optional<ImageKey> key = keyOf(values(k))) byKey.emplace(*key, k);
    std::vector<int> mirror(static_cast<std::size_t>(n) + 1, 0);
    for (int k = 1; k <= n; ++k) {
        const std::optional<ImageKey> key = keyOf(values(k));
        if (!key) continue;
        if (const auto found = byKey.find(imageOf(*key)); found != byKey.end()) mirror[static_cast<std::size_t>(k)] = found->second;
    }
    return mirror;
}

// The point source is the same on both sides of the planes y = Yc and z = Zc
// through it (its kernel sees the offsets only through hypot): the entry
// whose offset from the centre is the negative of its own.
std::vector<int> mirrorIndices(const List<double>& values, int n, double centre) {
    return imageIndices(
        values, n,
        [centre](double v) -> std::optional<ImageKey> {
            const double offset = v - centre;
            if (!std::isfinite(offset)) return std::nullopt;
            return ImageKey{bitsOf(offset), 0};
        },
        [](const ImageKey& key) { return ImageKey{bitsOf(-std::bit_cast<double>(key.first)), 0}; });
}

// The patch source's value at a coordinate depends on its distances to the
// patch's two ends as a set: the entry whose distances are its own swapped.
template <class Ends>
std::vector<int> patchMirrorIndices(const List<double>& values, int n, Ends&& endsOf) {
    return imageIndices(
        values, n,
        [&endsOf](double v) -> std::optional<ImageKey> {
            const PatchEnds e = endsOf(v);
            if (!std::isfinite(e.fromLower) || !std::isfinite(e.toUpper)) return std::nullopt;
            return ImageKey{bitsOf(e.fromLower), bitsOf(e.toUpper)};
        },
        [](const ImageKey& key) { return ImageKey{key.second, key.first}; });
}

// For each entry (from 1), the entry that stands for it: its mirror image when
// that comes first in the list, itself otherwise (and everywhere when there is
// no list of mirrors).
std::vector<int> firstImages(const std::vector<int>& mirror, int n) {
    std::vector<int> first(static_cast<std::size_t>(n) + 1);
    for (int k = 0; k <= n; ++k) {
        const int m = k < static_cast<int>(mirror.size()) ? mirror[static_cast<std::size_t>(k)] : 0;
        first[static_cast<std::size_t>(k)] = m != 0 && m < k ? m : k;
    }
    return first;
}

// A point's value, or word that it is the value of its first image, which
// comes before it in the grid's order (y, then x, then z, then t) and so is
// stored by the time it is.
struct PointValue {
    double value = 0.0;
    bool fromImage = false;
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
    // Points in the order y, then x, then z, then t; each on its own, but
    // where a point source or a patch in an unbounded aquifer has more than
    // one y or z, a point whose mirror image about the source's centre came
    // first takes that image's value.
    const GridCursor<4> order({ny, nx, nz, nt});  // k, i, l, j
    const bool mirrors = (solution.shifted() || solution.patch()) && (ny > 1 || nz > 1);
    const auto mirrorsOf = [&](const List<double>& values, int n, double centre, auto endsOf) {
        if (!mirrors) return std::vector<int>();
        if (solution.patch()) return patchMirrorIndices(values, n, [&](double v) { return endsOf(parameters, v); });
        return mirrorIndices(values, n, centre);
    };
    const std::vector<int> firstY = firstImages(mirrorsOf(data.yValues, ny, parameters.sourceYc, patchEndsY), ny);
    const std::vector<int> firstZ = firstImages(mirrorsOf(data.zValues, nz, parameters.sourceZc, patchEndsZ), nz);
    auto compute = [&data, &solution, &terms, &parameters, &firstY, &firstZ, cursor = order](long long at) mutable {
        const auto [k, i, l, j] = cursor(at);
        if (firstY[static_cast<std::size_t>(k)] != k || firstZ[static_cast<std::size_t>(l)] != l)
            return PointValue{.fromImage = true};
        return PointValue{.value = pointConcentration(solution, terms, data.xValues(i), data.yValues(k),
                                                      data.zValues(l), data.tValues(j), parameters)};
    };
    double c = 0.0;
    GridCursor<4> stored = order;
    const bool finished = runGridPoints<PointValue>(
        data, static_cast<long long>(nx) * ny * nz * nt, monteCarlo, owner, ui, compute,
        [&](long long at, const PointValue& point) {
            const auto [k, i, l, j] = stored(at);
            const double value = point.fromImage ? data.result3D(i, firstY[static_cast<std::size_t>(k)],
                                                                 firstZ[static_cast<std::size_t>(l)], j)
                                                 : point.value;
            data.result3D(i, k, l, j) = value;
            c = value;
        },
        StopFlag::Cleared, ny);
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
