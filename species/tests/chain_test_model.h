#pragma once
// A decay chain made from a single-species test model: the shared inputs of
// the model, and each chemical's name (C1, C2, ...), rate, yield and source
// (time 0) from the lists given.

#include <cstdio>
#include <string>
#include <vector>

#include "model/data_set.h"

namespace bm::testkit {

inline std::string text15(double v) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15g", v);
    return buffer;
}

struct Chain {
    std::vector<double> rates, yields, sources;
};

inline DataSet chainModel(DataSet d, const Chain& chain) {
    const int n = static_cast<int>(chain.rates.size());
    d.multiChemical = true;
    d.numChemicals = static_cast<std::int16_t>(n);
    for (List<std::string>* list : {&d.chemicalName, &d.decayRate, &d.yieldFactor, &d.suppositionTime,
                                    &d.suppositionConcentration})
        list->redim(n);
    for (int i = 1; i <= n; ++i) {
        d.chemicalName(i) = "C" + std::to_string(i);
        d.decayRate(i) = text15(chain.rates[static_cast<std::size_t>(i - 1)]);
        d.yieldFactor(i) = text15(chain.yields[static_cast<std::size_t>(i - 1)]);
        d.suppositionTime(i) = "0";
        d.suppositionConcentration(i) = text15(chain.sources[static_cast<std::size_t>(i - 1)]);
    }
    d.halfLife.clear();
    return d;
}

}  // namespace bm::testkit
