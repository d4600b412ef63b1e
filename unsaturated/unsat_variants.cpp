#include "unsaturated/unsat_variants.h"

namespace bm {

std::vector<MonteVariant> unsaturatedVariants(const DataSet&, bool withHalfLife) {
    std::vector<MonteVariant> list{fieldVariant(kPercolationRateCaption, &DataSet::velocity),
                                   fieldVariant(kUnsatDispersionCaption, &DataSet::dispersionX)};
    if (withHalfLife) list.push_back(fieldVariant(kUnsatHalfLifeCaption, &DataSet::halfLife));
    for (MonteVariant v : {fieldVariant(kBulkDensityCaption, &DataSet::bulkDensity),
                           fieldVariant(kDistributionCoefficientCaption, &DataSet::distributionCoefficient),
                           fieldVariant(kUnsatPorosityCaption, &DataSet::porosity),
                           fieldVariant(kSaturationCaption, &DataSet::saturation)})
        list.push_back(std::move(v));
    return list;
}

}  // namespace bm
