#include "model/model_kinds.h"

#include "model/data_set.h"
#include "model/number_text.h"
#include "shell/base/help_topics.h"

namespace bm {

// ---------------------------------------------------------------- IterationResults

int IterationResults::upper() const {
    if (const auto* doubles = std::get_if<List<double>*>(&store_)) return (*doubles)->ub();
    if (const auto* floats = std::get_if<List<float>*>(&store_)) return (*floats)->ub();
    return std::get<Row>(store_).table->ub(1);
}

double IterationResults::operator()(int iteration) const {
    if (const auto* doubles = std::get_if<List<double>*>(&store_)) return (**doubles)(iteration);
    if (const auto* floats = std::get_if<List<float>*>(&store_)) return (**floats)(iteration);
    const Row& row = std::get<Row>(store_);
    return (*row.table)(row.chemical, iteration);
}

double IterationResults::valueOr0(int iteration) const {
    if (const auto* row = std::get_if<Row>(&store_)) {
        if (row->chemical < 0 || row->chemical > row->table->ub(0)) return 0.0;
    }
    return iteration >= 0 && iteration <= upper() ? (*this)(iteration) : 0.0;
}

void IterationResults::set(int iteration, double value) {
    if (auto* doubles = std::get_if<List<double>*>(&store_)) {
        (**doubles)(iteration) = value;
    } else if (auto* floats = std::get_if<List<float>*>(&store_)) {
        (**floats)(iteration) = static_cast<float>(value);
    } else {
        Row& row = std::get<Row>(store_);
        (*row.table)(row.chemical, iteration) = value;
    }
}

void IterationResults::redim(int upperBound, int chemicals) {
    if (auto* doubles = std::get_if<List<double>*>(&store_)) (*doubles)->redim(upperBound);
    else if (auto* floats = std::get_if<List<float>*>(&store_)) (*floats)->redim(upperBound);
    else std::get<Row>(store_).table->redim({chemicals, upperBound});
}

// ---------------------------------------------------------------- the table

namespace {

using F = ModelFamily;
using K = ModelKind;
using L = BlockLayout;
using S = ModelScreen;
using P = ProgressOwner;
using N = NewModelDialog;

IterationResults oneDim(DataSet& d, int) { return IterationResults(d.mcResult1D); }
IterationResults twoDim(DataSet& d, int) { return IterationResults(d.mcResult2D); }
IterationResults threeDim(DataSet& d, int) { return IterationResults(d.mcResult3D); }
IterationResults unsaturated(DataSet& d, int) { return IterationResults(d.mcResultUnsat); }
IterationResults timeVarying(DataSet& d, int) { return IterationResults(d.mcResultVar); }
IterationResults chemicalOneDim(DataSet& d, int c) { return {d.chemMcResult1D, c}; }
IterationResults chemicalTwoDim(DataSet& d, int c) { return {d.chemMcResult2D, c}; }
IterationResults chemicalThreeDim(DataSet& d, int c) { return {d.chemMcResult3D, c}; }
IterationResults chemicalUnsaturated(DataSet& d, int c) { return {d.chemMcResultUnsat, c}; }

constexpr int kWide = kWideCellMarkerPadding;
constexpr int kNarrow = kNarrowCellMarkerPadding;

// The first row of each kind carries the word the program writes. The short
// word "Unsaturated", which earlier files and the command line may give, is
// read as the one-dimensional unsaturated model. The two reserved unsaturated
// kinds have no block, no screen of their own and no topic of their own.
const std::vector<ModelKindInfo> kTable = {
    // word, chemicals, kind, family, dimension, extension, marks chemicals, block, marker padding,
    //     screen, progress, new-model dialog, help topic, Monte Carlo results
    {"One Dimensional", false, K::OneDimensional, F::Saturated, 1, ".one", false, L::OneDimensional, kWide,
     S::inputForm, P::InputForm, N::NewFile, help::OneDimensional, oneDim},
    {"Two Dimensional", false, K::TwoDimensional, F::Saturated, 2, ".two", false, L::TwoDimensional, kNarrow,
     S::inputForm, P::InputForm, N::NewFile, help::TwoDimensional, twoDim},
    {"Three Dimensional", false, K::ThreeDimensional, F::Saturated, 3, ".tri", false, L::ThreeDimensional, kNarrow,
     S::inputForm, P::InputForm, N::NewFile, help::ThreeDimensional, threeDim},
    {"Time Varying", false, K::TimeVarying, F::TimeVarying, 2, ".var", false, L::TimeVarying, kWide,
     S::merlaform, P::TimeVaryingForm, N::timeVaryingNewForm, help::TimeVarying, timeVarying},
    {"Unsaturated One Dimensional", false, K::Unsaturated, F::Unsaturated, 1, ".U1D", false, L::Unsaturated, kWide,
     S::unsatForm, P::UnsaturatedForm, N::unsaturatedNewFile, help::Unsaturated, unsaturated},
    {"One Dimensional", true, K::MultiOneDimensional, F::Saturated, 1, ".mc1", true, L::OneDimensional, kWide,
     S::MCInputForm, P::MultiChemicalForm, N::NewFile, help::OneDimensional, chemicalOneDim},
    {"Two Dimensional", true, K::MultiTwoDimensional, F::Saturated, 2, ".mc2", true, L::TwoDimensional, kNarrow,
     S::MCInputForm, P::MultiChemicalForm, N::NewFile, help::TwoDimensional, chemicalTwoDim},
    {"Three Dimensional", true, K::MultiThreeDimensional, F::Saturated, 3, ".mc3", true, L::ThreeDimensional, kNarrow,
     S::MCInputForm, P::MultiChemicalForm, N::NewFile, help::ThreeDimensional, chemicalThreeDim},
    {"Unsaturated One Dimensional", true, K::MultiUnsaturated, F::Unsaturated, 1, ".MCU", true, L::Unsaturated, kWide,
     S::MCUnsatForm, P::MultiUnsaturatedForm, N::unsaturatedNewFile, help::Unsaturated, chemicalUnsaturated},
    {"Unsaturated Two Dimensional", false, K::UnsaturatedTwoDimensional, F::Unsaturated, 2, ".U1D", false, L::None,
     kWide, S::unsatForm, P::UnsaturatedForm, N::unsaturatedNewFile, help::OneDimensional, nullptr},
    {"Unsaturated Three Dimensional", false, K::UnsaturatedThreeDimensional, F::Unsaturated, 3, ".U1D", false,
     L::None, kWide, S::unsatForm, P::UnsaturatedForm, N::unsaturatedNewFile, help::OneDimensional, nullptr},
    // The time-varying model has one chemical whatever the flag says.
    {"Time Varying", true, K::TimeVarying, F::TimeVarying, 2, ".var", false, L::TimeVarying, kWide,
     S::merlaform, P::TimeVaryingForm, N::timeVaryingNewForm, help::TimeVarying, timeVarying},
    // Only the full word has the unsaturated help topic.
    {"Unsaturated", false, K::Unsaturated, F::Unsaturated, 1, ".U1D", false, L::Unsaturated, kWide,
     S::unsatForm, P::UnsaturatedForm, N::unsaturatedNewFile, help::OneDimensional, unsaturated},
    {"Unsaturated", true, K::MultiUnsaturated, F::Unsaturated, 1, ".MCU", true, L::Unsaturated, kWide,
     S::MCUnsatForm, P::MultiUnsaturatedForm, N::unsaturatedNewFile, help::OneDimensional, chemicalUnsaturated},
    {"Unsaturated Two Dimensional", true, K::UnsaturatedTwoDimensional, F::Unsaturated, 2, ".MCU", true, L::None,
     kWide, S::MCUnsatForm, P::MultiUnsaturatedForm, N::unsaturatedNewFile, help::OneDimensional, nullptr},
    {"Unsaturated Three Dimensional", true, K::UnsaturatedThreeDimensional, F::Unsaturated, 3, ".MCU", true,
     L::None, kWide, S::MCUnsatForm, P::MultiUnsaturatedForm, N::unsaturatedNewFile, help::OneDimensional, nullptr},
};

template <class Same>
const ModelKindInfo* findRow(std::string_view modelType, bool multiChemical, Same same) {
    for (const ModelKindInfo& row : kTable)
        if (row.multiChemical == multiChemical && same(row.modelType, modelType)) return &row;
    return nullptr;
}

}  // namespace

const char* modelScreenName(ModelScreen screen) {
    switch (screen) {
    case ModelScreen::inputForm: return "inputForm";
    case ModelScreen::MCInputForm: return "MCInputForm";
    case ModelScreen::unsatForm: return "unsatForm";
    case ModelScreen::MCUnsatForm: return "MCUnsatForm";
    case ModelScreen::merlaform: return "merlaform";
    case ModelScreen::MonteCarloForm: return "MonteCarloForm";
    }
    return "inputForm";
}

const std::vector<ModelKindInfo>& modelKindTable() { return kTable; }

const ModelKindInfo* modelKindInfo(std::string_view modelType, bool multiChemical) {
    return findRow(modelType, multiChemical, [](std::string_view a, std::string_view b) { return a == b; });
}

const ModelKindInfo* modelKindInfoIgnoringCase(std::string_view modelType, bool multiChemical) {
    const std::string word = toLower(trim(modelType));
    return findRow(word, multiChemical, [](std::string_view a, std::string_view b) { return toLower(a) == b; });
}

const ModelKindInfo* modelKindInfo(const DataSet& data) { return modelKindInfo(data.modelType, data.multiChemical); }

const ModelKindInfo& modelKindInfo(ModelKind kind) {
    for (const ModelKindInfo& row : kTable)
        if (row.kind == kind) return row;
    return kTable.front();  // every kind has a row
}

const ModelKindInfo& saturatedKindInfo(int dimension, bool multiChemical) {
    for (const ModelKindInfo& row : kTable)
        if (row.isSaturated() && row.dimension == dimension && row.multiChemical == multiChemical) return row;
    return kTable.front();  // the one-dimensional model stands in for a dimension out of range
}

std::optional<ModelKind> modelKindOf(std::string_view modelType, bool multiChemical) {
    if (const ModelKindInfo* row = modelKindInfo(modelType, multiChemical)) return row->kind;
    return std::nullopt;
}

bool isUnsaturatedType(std::string_view modelType) {
    const ModelKindInfo* row = modelKindInfo(modelType, false);
    return row && row->family == ModelFamily::Unsaturated;
}

int saturatedDimension(std::string_view modelType) {
    const ModelKindInfo* row = modelKindInfo(modelType, false);
    return row ? row->saturatedDimension() : 0;
}

ModelScreen modelScreenFor(std::string_view modelType, bool multiChemical) {
    if (const ModelKindInfo* row = modelKindInfo(modelType, multiChemical)) return row->screen;
    return multiChemical ? ModelScreen::MCInputForm : ModelScreen::inputForm;
}

NewModelDialog newModelDialogFor(std::string_view modelType) {
    const ModelKindInfo* row = modelKindInfo(modelType, false);
    return row ? row->newModelDialog : NewModelDialog::NewFile;
}

BlockLayout blockLayoutOf(std::string_view modelType) {
    const ModelKindInfo* row = modelKindInfo(modelType, false);
    return row ? row->blockLayout : BlockLayout::None;
}

int boundaryMarkerPadding(std::string_view modelType) {
    const ModelKindInfo* row = modelKindInfoIgnoringCase(modelType, false);
    return row ? row->markerPadding : kWideCellMarkerPadding;
}

ProgressOwner progressOwnerOf(ModelFamily family, bool multiChemical) {
    for (const ModelKindInfo& row : kTable)
        if (row.family == family && row.multiChemical == multiChemical) return row.progressOwner;
    return ProgressOwner::InputForm;
}

std::string_view modelTypeOf(ModelKind kind) { return modelKindInfo(kind).modelType; }

std::optional<IterationResults> monteCarloResultsOf(DataSet& data, int chemical) {
    const ModelKindInfo* row = modelKindInfo(data);
    if (!row || !row->monteCarloResults) return std::nullopt;
    return row->monteCarloResults(data, chemical);
}

}  // namespace bm
