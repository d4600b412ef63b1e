#pragma once
// Help context numbers: the topic the help key opens for the model in hand,
// and the numbers of the help file's other topics.

#include <string>

#include "shell/base/help_topics.h"

namespace bm {

struct DataSet;


// The help context of the model: by modelType, then by aquifer and contaminant.
int refreshMenuLabels(const DataSet& data);
int helpContextFor(const std::string& modelType, const std::string& aquiferType, const std::string& contaminantType);

}  // namespace bm
