#include "files/file_filters.h"

#include "model/model_kinds.h"

namespace bm {

namespace {

constexpr const char* kTimeVarying = "Time Varying (*.var)|*.var|All Files (*.*)|*.*";
constexpr const char* kUnsaturatedAll =
    "Unsaturated One Dim (*.u1d)|*.u1d|Unsatured Multi-Chemical 1-Dim (*.mcu)|*.mcu|Unsatured Ground Water "
    "(*.u1d;*.mcu)|*.u1d;*.mcu|All Files (*.*)|*.*";
constexpr const char* kUnsaturatedSingle =
    "Unsaturated One Dim (*.u1d)|*.u1d|Unsatured Ground Water (*.u1d)|*.u1d|All Files (*.*)|*.*";
constexpr const char* kUnsaturatedMulti = "Unsaturated Multi-Chemical 1-Dim (*.mcu)|*.mcu|All Files (*.*)|*.*";
constexpr const char* kSingleInAll =
    "One Dim (*.one)|*.one|Two Dim (*.two)|*.two|Three Dim (*.tri)|*.tri|Single Chemical "
    "(*.one;*.two;*.tri)|*.one;*.two;*.tri|";
constexpr const char* kMultiInAll =
    "Multi-Checmical 1-Dim (*.mc1)|*.mc1|Multi-Checmical 2-Dim  (*.mc2)|*.mc2|Multi-Checmical 3-Dim  "
    "(*.mc3)|*.mc3|Multi-Chemical (*.mc1;*.mc2;*.mc3)|*.mc1;*.mc2;*.mc3|Ground Water "
    "(*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3)|*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3|All Files (*.*)|*.*";
constexpr const char* kSingle =
    "One Dim (*.one)|*.one|Two Dim (*.two)|*.two|Three Dim (*.tri)|*.tri|Ground Water "
    "(*.one;*.two;*.tri)|*.one;*.two;*.tri|All Files (*.*)|*.*";
constexpr const char* kMulti =
    "Multi-Checmical 1-Dim (*.mc1)|*.mc1|Multi-Checmical 2-Dim  (*.mc2)|*.mc2|Multi-Checmical 3-Dim  "
    "(*.mc3)|*.mc3|Multi-Chemical (*.mc1;*.mc2;*.mc3)|*.mc1;*.mc2;*.mc3|All Files (*.*)|*.*";

// The family of a word; a word of no model gets the saturated lists.
ModelFamily familyOf(std::string_view modelType) {
    const ModelKindInfo* kind = modelKindInfo(modelType, false);
    return kind ? kind->family : ModelFamily::Saturated;
}

}  // namespace

std::string dataFileFilter(int purpose, std::string_view modelType) {
    switch (familyOf(modelType)) {
    case ModelFamily::TimeVarying: return kTimeVarying;
    case ModelFamily::Unsaturated: return purpose == 0 ? kUnsaturatedAll : purpose == 1 ? kUnsaturatedSingle : kUnsaturatedMulti;
    case ModelFamily::Saturated: break;
    }
    if (purpose == 0) return std::string(kSingleInAll) + kMultiInAll;
    return purpose == 1 ? kSingle : kMulti;
}

int dataFileFilterIndex(int purpose, std::string_view modelType, bool multiChemical) {
    switch (familyOf(modelType)) {
    case ModelFamily::TimeVarying: return 1;
    case ModelFamily::Unsaturated: return purpose == 0 && multiChemical ? 2 : 1;
    case ModelFamily::Saturated: break;
    }
    const int dimension = saturatedDimension(modelType);
    if (purpose == 0) {
        if (dimension == 0) return 9;  // "Ground Water" with all six patterns
        return multiChemical ? 4 + dimension : dimension;
    }
    // In the lists of one kind, a model of the other kind (or none) gets the
    // entry with all three patterns.
    const bool fits = dimension != 0 && (purpose == 1) != multiChemical;
    return fits ? dimension : 4;
}

std::string defaultDataExtension(std::string_view modelType, bool multiChemical) {
    const ModelKindInfo* kind = modelKindInfo(modelType, multiChemical);
    return kind ? std::string(kind->extension) : std::string();
}

std::string defaultDataPattern(int purpose, std::string_view modelType, bool multiChemical) {
    const std::string extension = defaultDataExtension(modelType, multiChemical);
    if (!extension.empty()) return "*" + extension;
    if (purpose == 0) return "*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3";
    return purpose == 1 ? "*.one;*.two;*.tri" : "*.mc1;*.mc2;*.mc3";
}

}  // namespace bm
