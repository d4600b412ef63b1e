#include "saturated/saturated_variants.h"

#include "model/number_text.h"
#include "saturated/input_sheet.h"
#include "saturated/source_captions.h"

namespace bm {

namespace {

using F = RowField;

std::vector<RowField> variantFields(const DataSet& data, int dimension) {
    switch (dimension) {
    case 1: return {F::velocity, F::dispersionX, F::halfLife, F::porosity, F::retardation};
    case 2: {
        std::vector<RowField> fields{F::velocity,    F::dispersionX,      F::dispersionY, F::halfLife,
                                     F::porosity,    F::netRecharge,      F::aquiferThickness, F::sourceYc,
                                     F::twoDimSource};
        // Only a continuous point in an infinite aquifer is placed by its x centre.
        if (toLower(trim(data.aquiferType)) == "infinite" && isContinuousPointSource(data.contaminantType))
            fields.push_back(F::sourceXc);
        fields.push_back(F::retardation);
        return fields;
    }
    case 3:
        return {F::velocity,    F::dispersionX,      F::dispersionY, F::dispersionZ, F::halfLife,
                F::porosity,    F::netRecharge,      F::aquiferThickness, F::sourceYc, F::sourceZc,
                F::threeDimSourceA, F::threeDimSourceB, F::retardation};
    default: return {};
    }
}

}  // namespace

std::vector<MonteVariant> saturatedVariants(const DataSet& data, int dimension, bool withHalfLife) {
    std::vector<FormRow> rows = layoutRows(dimension);
    applySourceCaptions(rows, dimension, data);  // a source the screen does not know leaves its rows unnamed
    std::vector<MonteVariant> list;
    for (RowField field : variantFields(data, dimension)) {
        if (field == F::halfLife && !withHalfLife) continue;
        for (const FormRow& row : rows) {
            if (row.field != field || trim(row.caption).empty()) continue;
            list.push_back({trim(row.caption), [row](DataSet& d) { return rowField(row, d); }, MarkerPlace::FormField});
            break;
        }
    }
    return list;
}

}  // namespace bm
