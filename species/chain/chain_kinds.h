#pragma once
// The multi-chemical kinds (one, two and three dimensional saturated, and
// unsaturated) in the calculation pass. Each solves its chemicals with the
// fill and solver of its single-species kind, found in the registry, so the
// single-species kinds must be registered first.

#include <string>
#include <vector>

#include "montecarlo/pass/kind_calculation.h"

namespace bm {

// The single-species kind's rows without its half-life (a chain has a rate per
// chemical instead), then every chemical's rate, yield, source time and source.
std::vector<std::string> chainInputRows(const DataSet& data, ModelKind chainKind);

// The batch calculator's check: the single-species kind's checks on the shared
// inputs (with a stand-in half-life and one stand-in term), the rows of the
// simulation point they rewrite kept, then the chain's tables.
bool chainInputsAccepted(DataSet& data, ModelKind chainKind, UserInterface& ui);

KindCalculation chainCalculation(ModelKind chainKind);
void registerChainKinds();

}  // namespace bm
