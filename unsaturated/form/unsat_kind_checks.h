#pragma once
// The multi-chemical unsaturated kind's checks before a run for the batch
// calculator: the screen's rows with the chemicals' tables in place of the
// terms. The chain kinds register without them (the chain layer does not see
// the unsaturated rows); this puts them in after.

namespace bm {

void registerUnsaturatedChainChecks();

}  // namespace bm
