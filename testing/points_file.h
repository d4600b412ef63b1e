#pragma once
// The Gauss-Legendre points file that the build writes beside the programs,
// for the tests that run the two- and three-dimensional drivers.

#include <string>

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

}  // namespace bm::testkit
