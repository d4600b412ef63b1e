#pragma once
// 10^k for |k| <= 350 as F * 2^B with a 64-bit F (top bit set), F within half
// a unit of its last place: 2^-64 relative. Built once in __float128; the
// writers round digits with it, the readers scale digits with it.

#include <cstdint>
#include <cstring>

namespace bm::digits {

__extension__ using Wide = unsigned __int128;

// 10^0 .. 10^17 as whole numbers.
inline constexpr std::uint64_t kTenTo[] = {1ull,
                                           10ull,
                                           100ull,
                                           1000ull,
                                           10000ull,
                                           100000ull,
                                           1000000ull,
                                           10000000ull,
                                           100000000ull,
                                           1000000000ull,
                                           10000000000ull,
                                           100000000000ull,
                                           1000000000000ull,
                                           10000000000000ull,
                                           100000000000000ull,
                                           1000000000000000ull,
                                           10000000000000000ull,
                                           100000000000000000ull};

class PowersOfTen {
public:
    static constexpr int kMost = 350;
    PowersOfTen() {
        __float128 up = 1, down = 1;
        for (int k = 0; k <= kMost; ++k) {
            set(k, up);
            set(-k, down);
            up *= 10;
            down /= 10;
        }
    }
    std::uint64_t significand(int k) const { return significand_[kMost + k]; }
    int exponent(int k) const { return exponent_[kMost + k]; }

private:
    void set(int k, __float128 value) {
        std::uint64_t word[2];
        std::memcpy(word, &value, sizeof word);  // binary128: 112 fraction bits, then 15 exponent bits
        const int biased = static_cast<int>((word[1] >> 48) & 0x7fff);
        const Wide full = (static_cast<Wide>((word[1] & 0xffffffffffffull) | (1ull << 48)) << 64) | word[0];
        const Wide top = (full + (static_cast<Wide>(1) << 48)) >> 49;  // 64 bits, rounded
        const bool carried = (top >> 64) != 0;
        significand_[kMost + k] = carried ? (1ull << 63) : static_cast<std::uint64_t>(top);
        exponent_[kMost + k] = biased - 16383 - 112 + 49 + (carried ? 1 : 0);
    }
    std::uint64_t significand_[2 * kMost + 1];
    int exponent_[2 * kMost + 1];
};

inline const PowersOfTen& powersOfTen() {
    static const PowersOfTen powers;
    return powers;
}

}  // namespace bm::digits
