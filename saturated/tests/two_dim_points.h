#pragma once
// The program's points file for the tests' runs, and the Gauss-Legendre rule
// built independently of that file for calling the libraries directly. Shared
// by the two- and three-dimensional driver tests.

#include <string>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "model/app_state.h"
#include "testing/test_paths.h"

namespace bm::testkit {

// The points file the build wrote into the program folder.
inline std::string builtPointsFile() { return (binaryDir() / "suite" / "brenmoor" / "glq.pts").string(); }

// Points the application state at a points file for one test's scope.
class PointsFileScope {
public:
    explicit PointsFileScope(const std::string& path = builtPointsFile()) : saved_(theAppState().gaussPointsFile) {
        theAppState().gaussPointsFile = path;
    }
    ~PointsFileScope() { theAppState().gaussPointsFile = saved_; }
    PointsFileScope(const PointsFileScope&) = delete;
    PointsFileScope& operator=(const PointsFileScope&) = delete;

private:
    std::string saved_;
};

// The 256-point rule computed here, not read from the file.
struct Rule {
    std::vector<double> nodes, weights;
    Rule() { gaussLegendre(256, nodes, weights); }
};
inline const Rule& rule() {
    static const Rule r;
    return r;
}

}  // namespace bm::testkit
