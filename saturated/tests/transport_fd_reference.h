#pragma once
// A finite-difference reference for one-dimensional transport,
//   dC/dt = D C_xx - V C_x - lambda C,  C(x, 0) = 0,
// inlet C(0, t) = 1 (Dirichlet) or V C - D C_x = V (Cauchy), dC/dx = 0 at the far
// end. Central differences on a uniform grid, Crank-Nicolson in time after four
// implicit Euler half steps (which damp the jump at the inlet), and Richardson
// extrapolation over three grids refined in h and dt together. A semi-infinite
// aquifer is a domain long enough that the plume never feels its end.

#include <vector>

namespace bm::testkit {

struct FdProblem {
    double velocity = 1;
    double dispersion = 1;
    double decay = 0;      // lambda
    bool cauchy = false;   // inlet condition
    double length = 10;    // domain length
    int cells = 200;       // cells of the coarsest grid
    double timeStep = 0.01;  // time step of the coarsest grid
};

// C at every (x, t) pair of xs by ts (result[t index][x index]). Each x must be
// a node of the coarsest grid and each t a multiple of the coarsest step of at
// least twice that step.
std::vector<std::vector<double>> fdSolution(const FdProblem& problem, const std::vector<double>& xs,
                                            const std::vector<double>& ts);

}  // namespace bm::testkit
