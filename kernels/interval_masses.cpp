#include "kernels/interval_masses.h"

#include <initializer_list>

#include "kernels/vector_math.h"

namespace bm {

namespace {

constexpr int kChunk = 256;

// Arguments gathered for one vector pass of a function, and where each
// result goes: out[at] += factor * f(argument).
struct Pass {
    int count = 0;
    int at[2 * kChunk];
    double argument[2 * kChunk], factor[2 * kChunk];

    void add(int i, double x, double f) {
        at[count] = i;
        argument[count] = x;
        factor[count++] = f;
    }
    void addTo(double* out, void (*function)(const double*, double*, int)) {
        function(argument, argument, count);
        for (int j = 0; j < count; ++j) out[at[j]] += factor[j] * argument[j];
        count = 0;
    }
};

}  // namespace

void intervalMasses(const double* p, const double* q, double* out, int n, double reach) {
    // Pairs on one side of 0: the near tail less the far one,
    // (erfc(near) - erfc(far)) / 2. Pairs about 0: (erf(p) + erf(-q)) / 2,
    // each erf its series when small, 1 - erfc otherwise. A tail beyond the
    // reach is 0 (an erf there 1) without a call.
    Pass tails, smalls;
    for (int from = 0; from < n; from += kChunk) {
        const int to = from + kChunk < n ? from + kChunk : n;
        for (int i = from; i < to; ++i) {
            const double pi = p[i], qi = q[i];
            out[i] = 0.0;
            if (qi >= 0.0 || pi <= 0.0) {
                const double near = qi >= 0.0 ? qi : -pi, far = qi >= 0.0 ? pi : -qi;
                if (near >= reach) continue;
                tails.add(i, near, 0.5);
                if (far < reach) tails.add(i, far, -0.5);
                continue;
            }
            for (const double a : {pi, -qi}) {
                if (a < kSmallErf) {
                    smalls.add(i, a, 0.5);
                } else {
                    out[i] += 0.5;
                    if (a < reach) tails.add(i, a, -0.5);
                }
            }
        }
        tails.addTo(out, vmath::erfcTail);
        smalls.addTo(out, vmath::erfSmall);
    }
}

}  // namespace bm
