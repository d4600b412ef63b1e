#pragma once
// Models held in a DataSet, each matching one hand-written golden file of
// files/tests/fixtures (named in the comment).

#include <string>
#include <vector>

#include "model/data_set.h"

namespace bm::samples {

// One variant, one result row, three iterations (samples 1 and 2 go to the
// file; the third is generated but never written).
MonteBlock oneVariantBlock();

DataSet oneRegular();          // one_regular.one
DataSet oneMonteCarlo();       // one_montecarlo.one
DataSet oneNeverCalculated();  // one_never_calculated.one
DataSet twoRegular();          // two_regular.two
DataSet twoMonteCarlo();       // two_montecarlo.two
DataSet threeRegular();        // three_regular.tri
DataSet threeMonteCarlo();     // three_montecarlo.tri
DataSet unsatRegular();        // unsat_regular.u1d
DataSet unsatMonteCarlo();     // unsat_montecarlo.u1d
DataSet varRegular();          // var_regular.var
DataSet varMonteCarlo();       // var_montecarlo.var
DataSet multiRegular1D();      // multi_regular.mc1
DataSet multiMonteCarlo1D();   // multi_montecarlo.mc1
DataSet multiRegular2D();      // multi_regular.mc2
DataSet multiRegular3D();      // multi_regular.mc3
DataSet multiRegularUnsat();   // multi_regular.mcu

struct Golden {
    const char* fixture;
    DataSet (*build)();
};
// Every golden file with its model.
const std::vector<Golden>& goldenFiles();

// 30 blanks + "Monte Carlo" + 30 blanks + "|" + value + ":" + row (20 for two and three dimensions).
std::string boundaryMarker(int blanks, const std::string& value, int row);

}  // namespace bm::samples
