#pragma once
// The Gauss-Legendre points of the two- and three-dimensional solutions, read
// from the points file beside the program (glq.pts).

#include <string>

#include "model/arrays.h"

namespace bm {

// Skips five header lines, then reads the 128 positive nodes of the 256-point
// rule and their 128 weights. `nodes` and `weights` become 1-based lists of 256
// in which each node (odd entry) is followed by its mirror image -x (even
// entry), each weight by itself. Returns true. A missing file is run-time error
// 53, a file that ends early 62, a text where a number should stand 13; on any
// error the lists are left as they were.
bool readQuadraturePoints(const std::string& path, List<double>& nodes, List<double>& weights);

// The same for the program's own points file (the application state's
// gaussPointsFile).
bool readQuadraturePoints(List<double>& nodes, List<double>& weights);

}  // namespace bm
