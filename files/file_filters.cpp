#include "files/file_filters.h"

#include "model/data_set.h"

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

// 1, 2, 3 for the saturated model types of one to three dimensions, else 0.
int dimensionOf(std::string_view modelType) {
    if (modelType == "One Dimensional") return 1;
    if (modelType == "Two Dimensional") return 2;
    if (modelType == "Three Dimensional") return 3;
    return 0;
}

}  // namespace

std::string dataFileFilter(int purpose, std::string_view modelType) {
    if (modelType == "Time Varying") return kTimeVarying;
    if (isUnsaturatedType(modelType)) return purpose == 0 ? kUnsaturatedAll : purpose == 1 ? kUnsaturatedSingle : kUnsaturatedMulti;
    if (purpose == 0) return std::string(kSingleInAll) + kMultiInAll;
    return purpose == 1 ? kSingle : kMulti;
}

int dataFileFilterIndex(int purpose, std::string_view modelType, bool multiChemical) {
    if (modelType == "Time Varying") return 1;
    if (isUnsaturatedType(modelType)) return purpose == 0 && multiChemical ? 2 : 1;
    const int dimension = dimensionOf(modelType);
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
    if (modelType == "Time Varying") return ".var";
    if (isUnsaturatedType(modelType)) return multiChemical ? ".MCU" : ".U1D";
    switch (dimensionOf(modelType)) {
    case 1: return multiChemical ? ".mc1" : ".one";
    case 2: return multiChemical ? ".mc2" : ".two";
    case 3: return multiChemical ? ".mc3" : ".tri";
    default: return {};
    }
}

std::string defaultDataPattern(int purpose, std::string_view modelType, bool multiChemical) {
    const std::string extension = defaultDataExtension(modelType, multiChemical);
    if (!extension.empty()) return "*" + extension;
    if (purpose == 0) return "*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3";
    return purpose == 1 ? "*.one;*.two;*.tri" : "*.mc1;*.mc2;*.mc3";
}

}  // namespace bm
