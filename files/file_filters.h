#pragma once
// What the file dialogs offer: the filter lists (in the "Caption|pattern|..."
// form), the filter shown first, and the default extension and name pattern of
// each model. The captions are shown as they stand ("Checmical", "Unsatured").

#include <string>
#include <string_view>

namespace bm {

// dialogPurpose: 0 all model files, 1 single-chemical files, any other value
// multi-chemical files.
std::string dataFileFilter(int dialogPurpose, std::string_view modelType);
// 1-based index of the entry of that list that fits the model.
int dataFileFilterIndex(int dialogPurpose, std::string_view modelType, bool multiChemical);
// ".one", ".mc1", ".two", ".mc2", ".tri", ".mc3", ".var", ".U1D", ".MCU"; empty
// when no model is chosen yet.
std::string defaultDataExtension(std::string_view modelType, bool multiChemical);
// "*.one" and the like; for no model the patterns of the routine's files.
std::string defaultDataPattern(int dialogPurpose, std::string_view modelType, bool multiChemical);

}  // namespace bm
