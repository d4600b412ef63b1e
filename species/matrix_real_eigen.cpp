// The real general eigenproblem: balancing, Householder reduction to upper
// Hessenberg form, accumulation of the reduction, the QR stage (in
// matrix_hessenberg_qr.cpp), undoing the balancing, normalisation.

#include <cmath>
#include <utility>

#include "shell/base/checked_math.h"
#include "species/matrix_operations.h"
#include "species/matrix_views.h"

namespace bm {

using matrixdetail::SquareView;
using matrixdetail::viewOf;

namespace {

// The unit roundoff of doubles found by halving: 2.220446049250313e-16 on IEEE.
double machineEpsilon() {
    volatile double eps = 0.5;
    volatile double sum = 1.0 + eps;
    while (sum > 1.0) {
        eps = eps / 2.0;
        sum = 1.0 + eps;
    }
    return eps * 2.0;
}

// An infinity would keep the balancing's scaling loops running for ever, and a
// NaN is an indeterminate form: both are the overflow of the calculation.
void requireFinite(const SquareView& a, int n) {
    for (int j = 1; j <= n; ++j)
        for (int i = 1; i <= n; ++i)
            if (!std::isfinite(a(i, j))) raiseError(err::Overflow);
}

}  // namespace

bool realGeneralEigen(bool wantVectors, std::int16_t nm, std::int16_t n, SquareMatrix& a, List<double>& wr,
                      List<double>& wi, SquareMatrix& z, List<double>& fv1, List<double>& fv2, std::int16_t& ierr) {
    if (n > nm) {
        ierr = checkedInt16(10LL * n);
        return false;
    }
    ierr = 0;
    const double eps = machineEpsilon();
    const SquareView h = viewOf(a, n);
    requireFinite(h, n);

    // fv1 holds the balancing's scale and fv2 the reduction's ort until the end.
    std::int16_t low = 0, igh = 0;
    balanceMatrix(nm, n, a, low, igh, fv1);

    // Greatest column sum of the balanced matrix: the yardstick of a zero eigenvalue.
    double norm = 0.0;
    for (int j = 1; j <= n; ++j) {
        double sum = 0.0;
        for (int i = 1; i <= n; ++i) sum += std::fabs(h(i, j));
        sum = fp::checked(sum);
        if (sum > norm) norm = sum;
    }

    reduceToHessenberg(nm, n, low, igh, a, fv2);

    if (wantVectors) {
        accumulateReduction(nm, n, low, igh, a, fv2, z);
        hessenbergEigensystem(nm, n, low, igh, a, wr, wi, z, ierr);
        if (ierr != 0) return false;
        undoBalance(nm, n, low, igh, fv1, n, z);

        // Euclidean length 1; a complex pair (columns i - 1, i) together.
        const SquareView zv = viewOf(z, n);
        const double* im = viewOf(wi, n);
        for (int i = 1; i <= n; ++i) {
            if (im[i] > 0.0) continue;
            double sum = 0.0;
            if (im[i] == 0.0) {
                for (int j = 1; j <= n; ++j) sum += zv(j, i) * zv(j, i);
                const double length = std::sqrt(fp::checked(sum));
                for (int j = 1; j <= n; ++j) zv(j, i) = zv(j, i) / length;
            } else {
                for (int j = 1; j <= n; ++j) sum += zv(j, i - 1) * zv(j, i - 1) + zv(j, i) * zv(j, i);
                const double length = std::sqrt(fp::checked(sum));
                for (int j = 1; j <= n; ++j) {
                    zv(j, i - 1) = zv(j, i - 1) / length;
                    zv(j, i) = zv(j, i) / length;
                }
            }
        }
    } else {
        hessenbergEigenvalues(nm, n, low, igh, a, wr, wi, ierr);
        if (ierr != 0) return false;
    }

    // Clean the eigenvalues against the norm; keep modulus and damping ratio.
    const double threshold = eps * norm;
    double* re = viewOf(wr, n);
    double* im = viewOf(wi, n);
    double* modulus = viewOf(fv1, n);
    double* damping = viewOf(fv2, n);
    for (int i = 1; i <= n; ++i) {
        const double s = std::fabs(re[i]) + std::fabs(im[i]);
        if (s <= threshold) {
            re[i] = 0.0;
            im[i] = 0.0;
            modulus[i] = 0.0;
            damping[i] = 1.0;
        } else {
            const double x = re[i] / s;
            const double y = im[i] / s;
            const double m = std::sqrt(y * y + x * x);
            damping[i] = -x / m;
            modulus[i] = s * m;
            if (std::fabs(im[i]) < threshold) im[i] = 0.0;
        }
    }
    return true;
}

void balanceMatrix(std::int16_t nm, std::int16_t n, SquareMatrix& a, std::int16_t& low, std::int16_t& igh,
                   List<double>& scale) {
    constexpr double radix = 16.0;
    constexpr double radix2 = radix * radix;
    matrixdetail::redimOutput(scale, nm);
    const SquareView h = viewOf(a, n);
    double* sc = viewOf(scale, n);

    int k = 1;
    int l = n;
    // Exchange row and column j with row and column m.
    const auto exchange = [&](int j, int m) {
        sc[m] = j;
        if (j == m) return;
        for (int i = 1; i <= l; ++i) std::swap(h(i, j), h(i, m));
        for (int i = k; i <= n; ++i) std::swap(h(j, i), h(m, i));
    };

    // Rows whose off-diagonal part in the block is zero isolate an eigenvalue:
    // push them to the bottom, searching again after each exchange.
    bool done = false;
    for (bool found = true; found && !done;) {
        found = false;
        for (int j = l; j >= 1; --j) {
            bool isolated = true;
            for (int i = 1; i <= l; ++i)
                if (i != j && h(j, i) != 0.0) {
                    isolated = false;
                    break;
                }
            if (!isolated) continue;
            exchange(j, l);
            if (l == 1) {
                done = true;
            } else {
                --l;
                found = true;
            }
            break;
        }
    }

    if (!done) {
        // Columns likewise, pushed to the left.
        for (bool found = true; found;) {
            found = false;
            for (int j = k; j <= l; ++j) {
                bool isolated = true;
                for (int i = k; i <= l; ++i)
                    if (i != j && h(i, j) != 0.0) {
                        isolated = false;
                        break;
                    }
                if (!isolated) continue;
                exchange(j, k);
                ++k;
                found = true;
                break;
            }
        }

        for (int i = k; i <= l; ++i) sc[i] = 1.0;
        // Scale rows and columns of the block by powers of the radix until a
        // full pass changes nothing. Elements decades apart can push a factor
        // past the range of a double: that is the overflow (or, for a factor
        // that vanished, the division by zero) of the calculation.
        for (bool noconv = true; noconv;) {
            noconv = false;
            for (int i = k; i <= l; ++i) {
                double c = 0.0;
                double r = 0.0;
                for (int j = k; j <= l; ++j) {
                    if (j == i) continue;
                    c += std::fabs(h(j, i));
                    r += std::fabs(h(i, j));
                }
                c = fp::checked(c);
                r = fp::checked(r);
                if (c == 0.0 || r == 0.0) continue;  // also an underflow to 0
                double g = r / radix;
                double f = 1.0;
                const double s = c + r;
                while (c < g) {
                    f = fp::mul(f, radix);
                    c = fp::mul(c, radix2);
                }
                g = fp::mul(r, radix);
                while (c >= g) {
                    f /= radix;
                    c /= radix2;
                }
                if (fp::div(c + r, f) >= 0.95 * s) continue;
                g = fp::div(1.0, f);
                sc[i] = fp::mul(sc[i], f);
                noconv = true;
                for (int j = k; j <= n; ++j) h(i, j) = fp::mul(h(i, j), g);
                for (int j = 1; j <= l; ++j) h(j, i) = fp::mul(h(j, i), f);
            }
        }
    }
    low = checkedInt16(k);
    igh = checkedInt16(l);
}

void reduceToHessenberg(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, SquareMatrix& a,
                        List<double>& ort) {
    matrixdetail::redimOutput(ort, nm);
    const SquareView h = viewOf(a, n);
    double* u = viewOf(ort, n);
    const int la = igh - 1;
    const int kp1 = low + 1;
    for (int m = kp1; m <= la; ++m) {
        double hh = 0.0;
        u[m] = 0.0;
        double scale = 0.0;
        // Scale the column against underflow and overflow.
        for (int i = m; i <= igh; ++i) scale += std::fabs(h(i, m - 1));
        if (scale == 0.0) continue;
        const int mp = checkedInt16(m + igh);
        for (int ii = m; ii <= igh; ++ii) {
            const int i = mp - ii;
            u[i] = h(i, m - 1) / scale;
            hh += u[i] * u[i];
        }
        const double g = -signTransfer(std::sqrt(hh), u[m]);
        hh -= u[m] * g;
        u[m] -= g;
        // (I - u u'/h) A
        for (int j = m; j <= n; ++j) {
            double f = 0.0;
            for (int ii = m; ii <= igh; ++ii) {
                const int i = mp - ii;
                f += u[i] * h(i, j);
            }
            f /= hh;
            for (int i = m; i <= igh; ++i) h(i, j) -= f * u[i];
        }
        // (I - u u'/h) A (I - u u'/h)
        for (int i = 1; i <= igh; ++i) {
            double f = 0.0;
            for (int jj = m; jj <= igh; ++jj) {
                const int j = mp - jj;
                f += u[j] * h(i, j);
            }
            f /= hh;
            for (int j = m; j <= igh; ++j) h(i, j) -= f * u[j];
        }
        u[m] *= scale;
        h(m, m - 1) = scale * g;
    }
}

void accumulateReduction(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, const SquareMatrix& a,
                         List<double>& ort, SquareMatrix& z) {
    matrixdetail::redimOutput(z, nm);
    int stride = 0;
    const double* hp = matrixdetail::constPointer(a, n, stride);
    const auto h = [hp, stride](int i, int j) { return hp[j * stride + i]; };
    const SquareView zv = viewOf(z, n);
    double* u = viewOf(ort, n);

    for (int j = 1; j <= n; ++j) zv(j, j) = 1.0;  // the rest is 0 after the re-dimension
    const int kl = igh - low - 1;
    for (int mm = 1; mm <= kl; ++mm) {
        const int mp = igh - mm;
        if (h(mp, mp - 1) == 0.0) continue;
        for (int i = mp + 1; i <= igh; ++i) u[i] = h(i, mp - 1);
        for (int j = mp; j <= igh; ++j) {
            double g = 0.0;
            for (int i = mp; i <= igh; ++i) g += u[i] * zv(i, j);
            // Two divisions, not one product: the product of the two can underflow.
            g = (g / u[mp]) / h(mp, mp - 1);
            for (int i = mp; i <= igh; ++i) zv(i, j) += g * u[i];
        }
    }
}

void undoBalance(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, const List<double>& scale,
                 std::int16_t m, SquareMatrix& z) {
    if (m == 0) return;
    const SquareView zv = viewOf(z, n > m ? n : m);
    const double* sc = viewOf(scale, n);
    if (igh != low) {
        for (int i = low; i <= igh; ++i) {
            const double s = sc[i];
            for (int j = 1; j <= m; ++j) zv(i, j) *= s;
        }
    }
    for (int ii = 1; ii <= n; ++ii) {
        int i = ii;
        if (i >= low && i <= igh) continue;
        if (i < low) i = low - ii;
        const int k = toInt16(sc[i]);
        if (k == i) continue;
        if (k < 1 || k > n) raiseError(err::SubscriptOutOfRange);
        for (int j = 1; j <= m; ++j) std::swap(zv(i, j), zv(k, j));
    }
}

}  // namespace bm
