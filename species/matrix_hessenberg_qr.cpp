// Shifted double QR iteration on an upper Hessenberg matrix, with or without
// eigenvectors, and the back-substitution that finds the vectors of the
// resulting quasi-triangular form.
//
// One budget of 30 n QR steps serves all eigenvalues; exceptional shifts after
// 10 and 20 steps on one eigenvalue. A subdiagonal element counts as negligible
// when adding it to its neighbours' size changes nothing, so no machine
// constant enters.

#include <cmath>

#include "shell/base/checked_math.h"
#include "species/matrix_operations.h"
#include "species/matrix_views.h"

namespace bm {

using matrixdetail::SquareView;
using matrixdetail::viewOf;

namespace {

// The QR stage shared by both forms. With z (vectors wanted) the whole of h
// is transformed and the transformations gathered in z; without, only the
// active block. Returns the norm of the upper Hessenberg part; ierr = en when
// the budget ran out.
double qrIterate(int n, int low, int igh, const SquareView& h, double* wr, double* wi, const SquareView* z,
                 std::int16_t& ierr) {
    const bool vectors = z != nullptr;
    ierr = 0;
    double norm = 0.0;
    // Roots isolated by the balancing, and the norm.
    int k = 1;
    for (int i = 1; i <= n; ++i) {
        for (int j = k; j <= n; ++j) norm += std::fabs(h(i, j));
        k = i;
        if (i >= low && i <= igh) continue;
        wr[i] = h(i, i);
        wi[i] = 0.0;
    }

    int en = igh;
    double t = 0.0;
    int itn = checkedInt16(30LL * n);
    while (en >= low) {
        int its = 0;
        const int na = en - 1;
        const int enm2 = na - 1;
        for (;;) {
            // A single small subdiagonal element splits the matrix at l.
            int l = en;
            for (; l > low; --l) {
                double s = std::fabs(h(l - 1, l - 1)) + std::fabs(h(l, l));
                if (s == 0.0) s = norm;
                const double tst1 = s;
                const double tst2 = tst1 + std::fabs(h(l, l - 1));
                if (tst2 == tst1) break;
            }

            double x = h(en, en);
            if (l == en) {  // one root
                if (vectors) h(en, en) = x + t;
                wr[en] = x + t;
                wi[en] = 0.0;
                en = na;
                break;
            }
            double y = h(na, na);
            double w = h(en, na) * h(na, en);
            if (l == na) {  // two roots
                double p = (y - x) / 2.0;
                double q = p * p + w;
                double zz = std::sqrt(std::fabs(q));
                x += t;
                if (vectors) {
                    h(en, en) = x;
                    h(na, na) = y + t;
                }
                if (q >= 0.0) {  // a real pair
                    zz = p + signTransfer(zz, p);
                    wr[na] = x + zz;
                    wr[en] = wr[na];
                    if (zz != 0.0) wr[en] = x - w / zz;
                    wi[na] = 0.0;
                    wi[en] = 0.0;
                    if (vectors) {
                        x = h(en, na);
                        const double s = std::fabs(x) + std::fabs(zz);
                        p = x / s;
                        q = zz / s;
                        const double r = std::sqrt(p * p + q * q);
                        p /= r;
                        q /= r;
                        for (int j = na; j <= n; ++j) {
                            zz = h(na, j);
                            h(na, j) = q * zz + p * h(en, j);
                            h(en, j) = q * h(en, j) - p * zz;
                        }
                        for (int i = 1; i <= en; ++i) {
                            zz = h(i, na);
                            h(i, na) = q * zz + p * h(i, en);
                            h(i, en) = q * h(i, en) - p * zz;
                        }
                        const SquareView& zv = *z;
                        for (int i = low; i <= igh; ++i) {
                            zz = zv(i, na);
                            zv(i, na) = q * zz + p * zv(i, en);
                            zv(i, en) = q * zv(i, en) - p * zz;
                        }
                    }
                } else {  // a complex pair
                    wr[na] = x + p;
                    wr[en] = x + p;
                    wi[na] = zz;
                    wi[en] = -zz;
                }
                en = enm2;
                break;
            }

            if (itn == 0) {
                ierr = checkedInt16(en);
                return norm;
            }
            if (its == 10 || its == 20) {  // exceptional shift
                t += x;
                for (int i = low; i <= en; ++i) h(i, i) -= x;
                const double s = std::fabs(h(en, na)) + std::fabs(h(na, enm2));
                x = 0.75 * s;
                y = x;
                w = -0.4375 * s * s;
            }
            ++its;
            --itn;

            // Two consecutive small subdiagonal elements: start the step at m.
            int m = enm2;
            double p = 0.0, q = 0.0, r = 0.0, zz = 0.0;
            for (; m >= l; --m) {
                zz = h(m, m);
                r = x - zz;
                double s = y - zz;
                p = (r * s - w) / h(m + 1, m) + h(m, m + 1);
                q = h(m + 1, m + 1) - zz - r - s;
                r = h(m + 2, m + 1);
                s = std::fabs(p) + std::fabs(q) + std::fabs(r);
                p /= s;
                q /= s;
                r /= s;
                if (m == l) break;
                const double tst1 = std::fabs(p) * (std::fabs(h(m - 1, m - 1)) + std::fabs(zz) + std::fabs(h(m + 1, m + 1)));
                const double tst2 = tst1 + std::fabs(h(m, m - 1)) * (std::fabs(q) + std::fabs(r));
                if (tst2 == tst1) break;
            }
            for (int i = m + 2; i <= en; ++i) {
                h(i, i - 2) = 0.0;
                if (i != m + 2) h(i, i - 3) = 0.0;
            }

            // Double QR step on rows l..en and columns m..en.
            const int rowEnd = vectors ? n : en;
            for (int kk = m; kk <= na; ++kk) {
                const bool notLast = kk != na;
                if (kk != m) {
                    p = h(kk, kk - 1);
                    q = h(kk + 1, kk - 1);
                    r = notLast ? h(kk + 2, kk - 1) : 0.0;
                    x = std::fabs(p) + std::fabs(q) + std::fabs(r);
                    if (x == 0.0) continue;
                    p /= x;
                    q /= x;
                    r /= x;
                }
                const double s = signTransfer(std::sqrt(p * p + q * q + r * r), p);
                if (kk != m)
                    h(kk, kk - 1) = -s * x;
                else if (l != m)
                    h(kk, kk - 1) = -h(kk, kk - 1);
                p += s;
                x = p / s;
                y = q / s;
                zz = r / s;
                q /= p;
                r /= p;
                const int colEnd = minInteger(static_cast<std::int16_t>(en), checkedInt16(kk + 3));
                const int colStart = vectors ? 1 : l;
                if (!notLast) {
                    for (int j = kk; j <= rowEnd; ++j) {
                        p = h(kk, j) + q * h(kk + 1, j);
                        h(kk, j) -= p * x;
                        h(kk + 1, j) -= p * y;
                    }
                    for (int i = colStart; i <= colEnd; ++i) {
                        p = x * h(i, kk) + y * h(i, kk + 1);
                        h(i, kk) -= p;
                        h(i, kk + 1) -= p * q;
                    }
                    if (vectors) {
                        const SquareView& zv = *z;
                        for (int i = low; i <= igh; ++i) {
                            p = x * zv(i, kk) + y * zv(i, kk + 1);
                            zv(i, kk) -= p;
                            zv(i, kk + 1) -= p * q;
                        }
                    }
                } else {
                    for (int j = kk; j <= rowEnd; ++j) {
                        p = h(kk, j) + q * h(kk + 1, j) + r * h(kk + 2, j);
                        h(kk, j) -= p * x;
                        h(kk + 1, j) -= p * y;
                        h(kk + 2, j) -= p * zz;
                    }
                    for (int i = colStart; i <= colEnd; ++i) {
                        p = x * h(i, kk) + y * h(i, kk + 1) + zz * h(i, kk + 2);
                        h(i, kk) -= p;
                        h(i, kk + 1) -= p * q;
                        h(i, kk + 2) -= p * r;
                    }
                    if (vectors) {
                        const SquareView& zv = *z;
                        for (int i = low; i <= igh; ++i) {
                            p = x * zv(i, kk) + y * zv(i, kk + 1) + zz * zv(i, kk + 2);
                            zv(i, kk) -= p;
                            zv(i, kk + 1) -= p * q;
                            zv(i, kk + 2) -= p * r;
                        }
                    }
                }
            }
        }
    }
    return norm;
}

// Scales elements first..last of column col (and of col2 when given) by 1/t
// when t is so large that 1/t no longer adds to it.
void controlOverflow(const SquareView& h, double t, int first, int last, int col, int col2) {
    if (t == 0.0) return;
    const double tst1 = t;
    const double tst2 = tst1 + 1.0 / tst1;
    if (tst2 > tst1) return;
    for (int j = first; j <= last; ++j) {
        h(j, col) /= t;
        if (col2 > 0) h(j, col2) /= t;
    }
}

// Vectors of the quasi-triangular h by back-substitution, then the vectors of
// the full matrix through the transformations in z.
void backSubstitute(int n, int low, int igh, const SquareView& h, const double* wr, const double* wi,
                    const SquareView& z, double norm) {
    for (int en = n; en >= 1; --en) {
        const double p = wr[en];
        double q = wi[en];
        const int na = en - 1;
        if (q > 0.0) continue;  // the first of a complex pair is done with the second
        double r = 0.0, s = 0.0, t = 0.0, w = 0.0, x = 0.0, y = 0.0, zz = 0.0;
        if (q == 0.0) {  // a real vector
            int m = en;
            h(en, en) = 1.0;
            for (int i = na; i >= 1; --i) {
                w = h(i, i) - p;
                r = 0.0;
                for (int j = m; j <= en; ++j) r += h(i, j) * h(j, en);
                if (wi[i] < 0.0) {
                    zz = w;
                    s = r;
                    continue;
                }
                m = i;
                if (wi[i] == 0.0) {
                    t = w;
                    if (t == 0.0) {  // a small number for a zero denominator
                        const double tst1 = norm;
                        t = tst1;
                        do {
                            t = 0.01 * t;
                        } while (norm + t > tst1);
                    }
                    h(i, en) = -r / t;
                } else {  // a real 2 by 2 system
                    x = h(i, i + 1);
                    y = h(i + 1, i);
                    q = (wr[i] - p) * (wr[i] - p) + wi[i] * wi[i];
                    t = (x * s - zz * r) / q;
                    h(i, en) = t;
                    if (std::fabs(x) > std::fabs(zz))
                        h(i + 1, en) = (-r - w * t) / x;
                    else
                        h(i + 1, en) = (-s - y * t) / zz;
                }
                controlOverflow(h, std::fabs(h(i, en)), i, en, en, 0);
            }
        } else {  // a complex vector, en the second of the pair
            int m = na;
            // The last component imaginary, so that the vector matrix is triangular.
            if (std::fabs(h(en, na)) > std::fabs(h(na, en))) {
                h(na, na) = q / h(en, na);
                h(na, en) = -(h(en, en) - p) / h(en, na);
            } else {
                complexDivide(0.0, -h(na, en), h(na, na) - p, q, h(na, na), h(na, en));
            }
            h(en, na) = 0.0;
            h(en, en) = 1.0;
            for (int i = na - 1; i >= 1; --i) {
                w = h(i, i) - p;
                double ra = 0.0;
                double sa = 0.0;
                for (int j = m; j <= en; ++j) {
                    ra += h(i, j) * h(j, na);
                    sa += h(i, j) * h(j, en);
                }
                if (wi[i] < 0.0) {
                    zz = w;
                    r = ra;
                    s = sa;
                    continue;
                }
                m = i;
                if (wi[i] == 0.0) {
                    complexDivide(-ra, -sa, w, q, h(i, na), h(i, en));
                } else {  // a complex 2 by 2 system
                    x = h(i, i + 1);
                    y = h(i + 1, i);
                    double vr = (wr[i] - p) * (wr[i] - p) + wi[i] * wi[i] - q * q;
                    const double vi = (wr[i] - p) * 2.0 * q;
                    if (vr == 0.0 && vi == 0.0) {
                        const double tst1 =
                            norm * (std::fabs(w) + std::fabs(q) + std::fabs(x) + std::fabs(y) + std::fabs(zz));
                        vr = tst1;
                        do {
                            vr = 0.01 * vr;
                        } while (tst1 + vr > tst1);
                    }
                    complexDivide(x * r - zz * ra + q * sa, x * s - zz * sa - q * ra, vr, vi, h(i, na), h(i, en));
                    if (std::fabs(x) > std::fabs(zz) + std::fabs(q)) {
                        h(i + 1, na) = (-ra - w * h(i, na) + q * h(i, en)) / x;
                        h(i + 1, en) = (-sa - w * h(i, en) - q * h(i, na)) / x;
                    } else {
                        complexDivide(-r - y * h(i, na), -s - y * h(i, en), zz, q, h(i + 1, na), h(i + 1, en));
                    }
                }
                controlOverflow(h, maxReal(std::fabs(h(i, na)), std::fabs(h(i, en))), i, en, na, en);
            }
        }
    }

    // Vectors of the roots isolated by the balancing.
    for (int i = 1; i <= n; ++i) {
        if (i >= low && i <= igh) continue;
        for (int j = i; j <= n; ++j) z(i, j) = h(i, j);
    }
    // Multiply by the transformation to get the vectors of the full matrix.
    for (int j = n; j >= low; --j) {
        const int m = minInteger(static_cast<std::int16_t>(j), static_cast<std::int16_t>(igh));
        for (int i = low; i <= igh; ++i) {
            double zz = 0.0;
            for (int k = low; k <= m; ++k) zz += z(i, k) * h(k, j);
            z(i, j) = zz;
        }
    }
}

}  // namespace

void hessenbergEigenvalues(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, SquareMatrix& h,
                           List<double>& wr, List<double>& wi, std::int16_t& ierr) {
    matrixdetail::redimOutput(wr, nm);
    matrixdetail::redimOutput(wi, nm);
    qrIterate(n, low, igh, viewOf(h, n), viewOf(wr, n), viewOf(wi, n), nullptr, ierr);
}

void hessenbergEigensystem(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, SquareMatrix& h,
                           List<double>& wr, List<double>& wi, SquareMatrix& z, std::int16_t& ierr) {
    matrixdetail::redimOutput(wr, nm);
    matrixdetail::redimOutput(wi, nm);
    const SquareView hv = viewOf(h, n);
    const SquareView zv = viewOf(z, n);
    double* re = viewOf(wr, n);
    double* im = viewOf(wi, n);
    const double norm = qrIterate(n, low, igh, hv, re, im, &zv, ierr);
    if (ierr != 0 || norm == 0.0) return;
    backSubstitute(n, low, igh, hv, re, im, zv, norm);
}

void complexDivide(double ar, double ai, double br, double bi, double& cr, double& ci) {
    double s = std::fabs(br) + std::fabs(bi);
    const double ars = ar / s;
    const double ais = ai / s;
    const double brs = br / s;
    const double bis = bi / s;
    s = brs * brs + bis * bis;
    cr = (ars * brs + ais * bis) / s;
    ci = (ais * brs - ars * bis) / s;
}

}  // namespace bm
