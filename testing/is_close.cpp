#include "testing/is_close.h"

#include <cmath>
#include <cstdio>

namespace bm::testkit {

bool isClose(double a, double b, double rtol, double atol) {
    if (std::isnan(a) || std::isnan(b)) return false;
    if (std::isinf(a) || std::isinf(b)) return a == b;
    return std::fabs(a - b) <= atol + rtol * std::fabs(b);
}

std::string closeReport(double a, double b, double rtol, double atol) {
    char buf[256];
    std::snprintf(buf, sizeof buf, "got %.17g, expected %.17g (diff %.3g, rtol %.1g, atol %.1g)", a, b, std::fabs(a - b),
                  rtol, atol);
    return buf;
}

}  // namespace bm::testkit
