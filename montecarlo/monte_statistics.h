#pragma once
// The summary of one variant's samples: extremes, median, the two means,
// variance and standard deviation, all in single precision as the samples are.

#include <cstdint>

#include "model/arrays.h"

namespace bm {

// samples is used at 1..n and left unchanged. Every step rounds to float.
// The median is element floor(n/2) of the ascending copy, whose element 0 is 0
// (so for n = 1 it reads 0); the geometric mean is the product of n-th roots;
// the variance divides by n - 1.
// Errors: a negative sample with n > 1 is 5 (a fractional power of a negative),
// n = 1 is 11 (the variance divides by zero), n = 0 is 11 as well, n = 32767 is 6
// (the 16-bit loop counter cannot step past it), a float overflow is 6, and a
// samples array shorter than n is 9.
void ComputeStatistics(std::int16_t n, const List<float>& samples, float& maximum, float& minimum, float& median,
                       float& arithmeticMean, float& geometricMean, float& variance, float& standardDeviation);

}  // namespace bm
