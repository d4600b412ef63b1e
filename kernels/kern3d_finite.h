#pragma once
// The aquifer of finite width and height behind cnrml_3FL.
//
// No-flux walls at both ends of the y range and of the z range make each
// transverse direction a cosine series, even about each wall and periodic with
// twice the extent. With the patch [p1, p2] x [q1, q2] (clipped to the aquifer,
// coordinates from the lower walls) the solution is
//
//   C/C0 = sum over m, n >= 0 of A_m cos(m pi y / W) B_n cos(n pi z / H) S(x, t; k_mn),
//   A_0 = (p2 - p1) / W,   A_m = 2 (sin(m pi p2 / W) - sin(m pi p1 / W)) / (m pi),
//   k_mn = lambda' + Dy (m pi / W)^2 + Dz (n pi / H)^2,
//
// S(x, t; k) being the semi-infinite column with decay k under a unit step at
// its inlet (the one-dimensional Dirichlet solution). Each S lies below its
// steady value g(k) = exp(-x (U - v) / (2 Dx)), U = sqrt(v^2 + 4 Dx k), and
// |A_m B_n| below a constant E, so all modes with Dy (m pi/W)^2 + Dz (n pi/H)^2 > K
// together stay under
//
//   E * P(K) * g(lambda' + K) * (K + U_K / x + 2 Dx / x^2),
//   P(K) = pi / (4 sqrt(alpha beta)) + (1/sqrt(alpha) + 1/sqrt(beta)) / sqrt(K) + 1/K,
//
// (alpha = Dy pi^2 / W^2, beta = Dz pi^2 / H^2; the count of lattice points
// inside the ellipse bounded by a linear function of K, summed by parts against
// g). The series takes every mode inside the K that brings this bound below
// 1e-9. Close to the inlet that K holds too many modes, and the kernel takes the
// time integral of the image sources instead: each transverse share is the
// patch and its mirror images (a few erf differences) while the spread is
// narrow against the extent, and the same cosine series in time
// (exp(-Dy (m pi / W)^2 tau), quickly convergent) once it is not.

#include "kernels/kern3d.h"

namespace bm::k3 {

// One transverse direction of the aquifer: walls at lo and lo + width, the
// patch [p1, p2] measured from lo and clipped to [0, width].
struct Strip {
    double lo = 0, width = 0, invWidth = 0;
    double p1 = 0, p2 = 0;
    bool empty = false;  // the patch misses the aquifer: nothing enters
    bool full = false;   // the patch spans the whole extent: no cosine modes
    // Position measured from lo and reflected into [0, width].
    double fold(double y) const;
};

// Walls from a range's minimum and maximum (an extent of 0 spans 0 to the one
// value), the patch from its centre and size. A zero extent is error 11.
Strip makeStrip(double rangeMin, double rangeMax, double centre, double size);

enum class FinitePath { Automatic, Series, Images };

// cnrml_3FL's value for x > 0, t > 0, by the path asked for (Automatic: the
// series where its mode count is affordable, images otherwise; a Series asked
// for where it would need more than 200000 modes, or more than kMostModes in
// one direction, falls back to images). `used` receives the path taken.
double finiteAquiferRatio(const ThreeDimParameters& p, double t, double x, double y, double z, FinitePath path,
                          FinitePath* used = nullptr);

// Most cosine modes in one direction the series may use.
inline constexpr int kMostModes = 4096;

}  // namespace bm::k3
