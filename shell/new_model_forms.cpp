#include "shell/new_model_forms.h"

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "model/number_text.h"

namespace bm {

bool OptionGroup::select(const std::string& caption) {
    for (std::size_t i = 0; i < captions.size(); ++i)
        if (captions[i] == caption) {
            selected = static_cast<int>(i);
            return true;
        }
    return false;
}

void confirmNewModel(DataSet& data) {
    data.numChemicalsSelected = 0;
    data.newModelConfirmed = true;
    data.needsDisplayRefresh = true;
    data.dataState = kDataUnchanged;
    data.monteCarloValueInUse = false;
}

NewFileForm::NewFileForm() { relabelOptions(); }

void NewFileForm::relabelOptions() {
    switch (modelType.selected) {
    case 0:
        aquiferType.captions = {"Finite", "Semi-Infinite"};
        contaminant.captions = {"Dirichlet", "Cauchy"};
        break;
    case 1:
        aquiferType.captions = {"Finite", "Infinite"};
        contaminant.captions = {"Continuous / Point", "Finite / Line", "Gaussian"};
        break;
    default:
        aquiferType.captions = {"Finite", "Infinite"};
        contaminant.captions = {"Continuous / Point", "Finite / Patch"};
        break;
    }
    // An option that is no longer offered gives way to the first one.
    if (aquiferType.selected >= static_cast<int>(aquiferType.captions.size())) aquiferType.selected = 0;
    if (contaminant.selected >= static_cast<int>(contaminant.captions.size())) contaminant.selected = 0;
}

void NewFileForm::selectModelType(int index) {
    if (index < 0 || index >= static_cast<int>(modelType.captions.size())) return;
    modelType.selected = index;
    relabelOptions();
}

void NewFileForm::load(const DataSet& data) {
    modelType.selected = aquiferType.selected = contaminant.selected = chemicals.selected = 0;
    if (!data.modelType.empty() && modelType.select(data.modelType)) {
        relabelOptions();
        aquiferType.select(data.aquiferType);
        contaminant.select(data.contaminantType);
        chemicals.selected = data.multiChemical ? 1 : 0;
    } else {
        modelType.selected = 0;
        relabelOptions();
    }
}

void NewFileForm::ok(DataSet& data) const {
    data.modelType = modelType.selectedCaption();
    data.aquiferType = aquiferType.selectedCaption();
    data.contaminantType = contaminant.selectedCaption();
    data.multiChemical = chemicals.selectedCaption() == "Multiple Chemicals";
    confirmNewModel(data);
}

void UnsaturatedNewFileForm::load(const DataSet& data) {
    chemicals.selected = aquiferType.selected = contaminant.selected = 0;
    if (!data.aquiferType.empty()) aquiferType.select(data.aquiferType);
    if (!data.contaminantType.empty()) contaminant.select(data.contaminantType);
    chemicals.selected = data.multiChemical ? 1 : 0;
}

void UnsaturatedNewFileForm::ok(DataSet& data) const {
    data.modelType = std::string("Unsaturated ") + kDimension;
    data.aquiferType = aquiferType.selectedCaption();
    data.contaminantType = contaminant.selectedCaption();
    data.multiChemical = chemicals.selectedCaption() == "Multiple Chemicals";
    confirmNewModel(data);
}

namespace {
void selectContained(OptionGroup& group, const std::string& lowerText) {
    for (std::size_t i = 0; i < group.captions.size(); ++i)
        if (lowerText.find(toLower(group.captions[i])) != std::string::npos) group.selected = static_cast<int>(i);
}
}  // namespace

void TimeVaryingNewForm::load(const DataSet& data) {
    contaminantSource.selected = sourceType.selected = dispersionFunction.selected = 0;
    const std::string contaminantText = toLower(data.contaminantType);
    const std::string aquiferText = toLower(data.aquiferType);
    selectContained(contaminantSource, contaminantText);
    selectContained(sourceType, contaminantText);
    selectContained(dispersionFunction, aquiferText);
}

void TimeVaryingNewForm::ok(DataSet& data) const {
    data.contaminantType =
        trim(contaminantSource.selectedCaption()) + " (" + toLower(trim(sourceType.selectedCaption())) + ")";
    data.aquiferType = dispersionFunction.selectedCaption();
    data.modelType = modelTypeOf(ModelKind::TimeVarying);
    data.multiChemical = false;
    confirmNewModel(data);
}

}  // namespace bm
