#pragma once
// Values of a grid's points kept on one thread for the points that mirror
// them about a source's axis (or plane). Where a kernel gives the same bits
// at a point and at its mirror image (what it sees of the lateral position
// is the same, up to sign), a grid computes each pair once: the values are
// kept by that lateral key within a set of points sharing everything else
// (a line of y at one x and t), and a point looks up the keys of its mirror
// images before it is computed.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace bm {

// Two coordinates, as their bits.
struct LateralKey {
    std::uint64_t first = 0, second = 0;
    LateralKey() = default;
    LateralKey(double a, double b) : first(std::bit_cast<std::uint64_t>(a)), second(std::bit_cast<std::uint64_t>(b)) {}
    bool operator==(const LateralKey&) const = default;
};

class MirroredPoints {
public:
    // The value at the point of `key` in the set (a, b): a mirror image's kept
    // value, or compute() (kept for the points that mirror this one).
    template <class Compute>
    double valueAt(double a, double b, LateralKey key, std::initializer_list<LateralKey> mirrors, Compute&& compute) {
        if (std::bit_cast<std::uint64_t>(a) != a_ || std::bit_cast<std::uint64_t>(b) != b_ || count_ > kMost) {
            a_ = std::bit_cast<std::uint64_t>(a);
            b_ = std::bit_cast<std::uint64_t>(b);
            startOver();
        }
        for (const LateralKey& mirror : mirrors)
            if (const Slot* kept = find(mirror)) return kept->value;
        const double value = compute();
        keep(key, value);
        return value;
    }

private:
    // An open-addressed table whose slots belong to the set of their
    // generation: a new set only moves the generation on, and the table's
    // storage, once grown, serves every later set.
    struct Slot {
        LateralKey key;
        double value = 0.0;
        std::uint64_t generation = 0;
    };
    static std::size_t hash(const LateralKey& k) {
        return static_cast<std::size_t>((k.first * 0x9E3779B97F4A7C15ull ^ k.second) * 0xC2B2AE3D27D4EB4Full >> 32);
    }
    void startOver() {
        ++generation_;
        count_ = 0;
    }
    const Slot* find(const LateralKey& key) const {
        if (slots_.empty()) return nullptr;
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t i = hash(key) & mask; slots_[i].generation == generation_; i = (i + 1) & mask)
            if (slots_[i].key == key) return &slots_[i];
        return nullptr;
    }
    void keep(const LateralKey& key, double value) {
        if (2 * (count_ + 1) > slots_.size()) grow();
        const std::size_t mask = slots_.size() - 1;
        std::size_t i = hash(key) & mask;
        while (slots_[i].generation == generation_ && !(slots_[i].key == key)) i = (i + 1) & mask;
        if (slots_[i].generation != generation_) ++count_;
        slots_[i] = {key, value, generation_};
    }
    void grow() {
        std::vector<Slot> old;
        old.swap(slots_);
        slots_.assign(old.empty() ? 64 : 2 * old.size(), Slot{});
        const std::uint64_t generation = generation_;
        startOver();
        for (const Slot& slot : old)
            if (slot.generation == generation) keep(slot.key, slot.value);
    }

    // A set larger than this starts over (it only costs recomputing).
    static constexpr std::size_t kMost = 1 << 16;
    std::uint64_t a_ = 0, b_ = 0;
    std::vector<Slot> slots_;
    std::uint64_t generation_ = 1;
    std::size_t count_ = 0;
};

}  // namespace bm
