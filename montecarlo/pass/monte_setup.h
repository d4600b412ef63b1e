#pragma once
// The Monte Carlo set-up of the open model through its kind's registration:
// the variant list the simulation screen shows, the selections applied back
// to the model's fields after the screen, and a generation from the model's
// stored variant table without a screen (the batch calculator's --generate).

#include <optional>
#include <vector>

#include "model/data_set.h"
#include "montecarlo/monte_apply.h"
#include "montecarlo/monte_generate.h"
#include "montecarlo/monte_variants.h"
#include "shell/base/user_interface.h"

namespace bm {

// Every variant of the open model in list order: the kind's own, the inflow
// concentration where the model has one term, the chemicals' values.
std::vector<MonteVariant> monteVariantsOf(DataSet& data);

// The set-up of the simulation screen for the open model (buildMonteCarloSetup
// with the kind's variants); nothing for a model whose kind is not registered.
std::optional<MonteCarloSetup> monteCarloSetup(DataSet& data);

// After the screen: the model's block applied to its variants' fields
// (applySelections). Samples drawn during the visit leave the results stale.
SelectionOutcome applyMonteCarloSelections(DataSet& data);

// New samples for the variant table the model's block holds, with the checks
// and messages of the screen's Generate, then the block updated and the
// selections applied to the fields. Nothing for an unregistered kind.
std::optional<GenerationOutcome> generateStoredVariants(DataSet& data, UserInterface& ui);

}  // namespace bm
