#include "montecarlo/monte_statistics.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

// A result stored into a single-precision variable: too large for a float is an overflow.
float single(double x) {
    fp::checked(x);
    if (std::fabs(x) > static_cast<double>(FLT_MAX)) raiseError(err::Overflow);
    return static_cast<float>(x);
}

}  // namespace

void ComputeStatistics(std::int16_t n, const List<float>& samples, float& maximum, float& minimum, float& median,
                       float& arithmeticMean, float& geometricMean, float& variance, float& standardDeviation) {
    if (n < 0) raiseError(err::SubscriptOutOfRange);  // the copy cannot be dimensioned
    List<float> copy(n);                             // element 0 stays 0

    const float e = single(fp::div(1.0, n));
    float sum = 0.0f;
    float product = 1.0f;
    for (int i = 1; i <= n; ++i) {
        const float x = samples(i);
        copy(i) = x;
        sum = single(static_cast<double>(sum) + x);
        // n-th roots keep the product near the geometric mean: no overflow for large samples
        product = single(static_cast<double>(product) * fp::pow(x, e));
    }
    if (n == 32767) raiseError(err::Overflow);  // the 16-bit loop counter steps past its range

    // Any sort that yields the same ascending copy will do; only the order matters.
    float* first = copy.data() + 1;
    std::sort(first, first + n);

    minimum = copy(1);
    maximum = copy(n);
    median = copy(n / 2);

    arithmeticMean = single(fp::div(sum, n));
    geometricMean = product;

    float squares = 0.0f;
    for (int i = 1; i <= n; ++i) {
        const float d = single(static_cast<double>(copy(i)) - arithmeticMean);
        squares = single(static_cast<double>(squares) + static_cast<double>(d) * d);
    }
    // One sample has no spread: 0 / 0, an overflow of the runtime's arithmetic.
    variance = single(fp::div(squares, n - 1));
    standardDeviation = single(fp::pow(variance, 0.5));
}

}  // namespace bm
