#include "timevarying/var_variants.h"

#include "model/number_text.h"
#include "timevarying/var_record.h"

namespace bm {

std::string massRowCaption(std::string_view contaminantType) {
    switch (varSourceCode(contaminantType)) {
    case varsource::PointInstantaneous: return " Mass Injected at x=0, y=0 and at time t=0 (M)";
    case varsource::PointContinuous: return " Mass Injection Rate at x=0, y=0 (M)";
    case varsource::PointInitial: return " Initial Mass at x=0, y=0 (M)";
    case varsource::LineInstantaneous: return " Mass Injected at x=0 and at time t=0 (M)";
    case varsource::LineContinuous: return " Mass Injection Rate at x=0 (M)";
    case varsource::LineInitial: return " Initial Mass at x=0 (M)";
    default: return {};
    }
}

std::vector<MonteVariant> timeVaryingVariants(const DataSet& data) {
    std::vector<MonteVariant> list{fieldVariant(kVelocityXCaption, &DataSet::velocityX)};
    if (contains(toLower(data.contaminantType), "point")) list.push_back(fieldVariant(kVelocityYCaption, &DataSet::velocityY));
    for (MonteVariant v : {fieldVariant(kMolecularDiffusionCaption, &DataSet::saturation),
                           fieldVariant(kVarRetardationCaption, &DataSet::retardation),
                           fieldVariant(kDispersionRatioCaption, &DataSet::dispersionRatio),
                           fieldVariant(kMaximumDiffusionCaption, &DataSet::bulkDensity),
                           fieldVariant(kDecayCoefficientCaption, &DataSet::sourceDecayRate)})
        list.push_back(std::move(v));
    if (!contains(toLower(data.aquiferType), "constant"))
        list.push_back(fieldVariant(kMeanTravelTimeCaption, &DataSet::distributionCoefficient));
    if (const std::string mass = massRowCaption(data.contaminantType); !mass.empty())
        list.push_back(fieldVariant(mass, &DataSet::sourceMagnitude));
    list.push_back(fieldVariant(kVarPorosityCaption, &DataSet::porosity));
    return list;
}

}  // namespace bm
