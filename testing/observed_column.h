#pragma once
// The column of the fit tests: a semi-infinite Dirichlet column whose
// "observations" are the closed form's values at known inputs (Darcy velocity
// 0.5, porosity 1, retardation 1, dispersion 0.8, half-life 40), and the same
// model started away from them (velocity 0.7, dispersion 0.5, half-life 60).

#include <cmath>
#include <string>

#include "model/data_set.h"
#include "model/number_text.h"
#include "testing/one_dim_test_model.h"

namespace bm::testkit {

inline constexpr double kColumnVelocity = 0.5, kColumnDispersion = 0.8, kColumnHalfLife = 40;

// C/Co of the column at (x, t) from the closed form.
inline double columnRatio(double V, double D, double halfLife, double x, double t) {
    return semiInfiniteDirichletReference(V, D, std::log(2.0) / halfLife, x, t);
}
inline double trueColumnRatio(double x, double t) {
    return columnRatio(kColumnVelocity, kColumnDispersion, kColumnHalfLife, x, t);
}

// The column at the true inputs, with units.
inline DataSet fitColumn() {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.velocity = "0.5";
    d.dispersionX = "0.8";
    d.halfLife = "40";
    d.xRange = "0:20:1";
    d.timeRange = "0:40:1";
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    return d;
}

// The column at its start values.
inline DataSet columnStartedAway() {
    DataSet d = fitColumn();
    d.velocity = "0.7";
    d.dispersionX = "0.5";
    d.halfLife = "60";
    return d;
}

// An observation file's text: "x,t,C/Co" at wells 3 and 8, times 3, 6, ... 36;
// `scatter` adds a fixed wiggle of a few thousandths.
inline std::string columnObservationText(bool scatter = false) {
    std::string text = "x,t,C/Co\n";
    for (const double x : {3.0, 8.0})
        for (int k = 1; k <= 12; ++k) {
            const double t = 3.0 * k;
            const double wiggle = scatter ? 0.004 * std::sin(7.0 * k + x) : 0.0;
            text += generalText(x) + "," + generalText(t) + "," + generalText(trueColumnRatio(x, t) + wiggle) + "\n";
        }
    return text;
}

}  // namespace bm::testkit
