#pragma once
// Values of a grid's points kept on one thread for the points that mirror
// them about a source's axis (or plane). Where a kernel gives the same bits
// at a point and at its mirror image (what it sees of the lateral position
// is the same, up to sign), a grid computes each pair once: the values are
// kept by that lateral key within a set of points sharing everything else
// (a line of y at one x and t), and a point looks up the keys of its mirror
// images before it is computed.

#include <bit>
#include <cstdint>
#include <initializer_list>
#include <unordered_map>

namespace bm {

// Two coordinates, as their bits.
struct LateralKey {
    std::uint64_t first = 0, second = 0;
    LateralKey(double a, double b) : first(std::bit_cast<std::uint64_t>(a)), second(std::bit_cast<std::uint64_t>(b)) {}
    bool operator==(const LateralKey&) const = default;
};

class MirroredPoints {
public:
    // The value at the point of `key` in the set (a, b): a mirror image's kept
    // value, or compute() (kept for the points that mirror this one).
    template <class Compute>
    double valueAt(double a, double b, LateralKey key, std::initializer_list<LateralKey> mirrors, Compute&& compute) {
        if (std::bit_cast<std::uint64_t>(a) != a_ || std::bit_cast<std::uint64_t>(b) != b_ || values_.size() > kMost) {
            a_ = std::bit_cast<std::uint64_t>(a);
            b_ = std::bit_cast<std::uint64_t>(b);
            values_.clear();
        }
        for (const LateralKey& mirror : mirrors)
            if (const auto kept = values_.find(mirror); kept != values_.end()) return kept->second;
        const double value = compute();
        values_.emplace(key, value);
        return value;
    }

private:
    struct Hash {
        std::size_t operator()(const LateralKey& k) const {
            return std::hash<std::uint64_t>()(k.first * 0x9E3779B97F4A7C15ull ^ k.second);
        }
    };
    // A set larger than this starts over (it only costs recomputing).
    static constexpr std::size_t kMost = 1 << 16;
    std::uint64_t a_ = 0, b_ = 0;
    std::unordered_map<LateralKey, double, Hash> values_;
};

}  // namespace bm
