#include "shell/screen/built_in_kinds.h"

#include "saturated/saturated_kinds.h"
#include "species/chain/chain_kinds.h"
#include "timevarying/var_solution.h"
#include "unsaturated/form/unsat_kind_checks.h"
#include "unsaturated/unsat_run.h"

namespace bm {

void registerBuiltInKinds() {
    registerSaturatedKinds();
    registerUnsaturatedKind();
    registerTimeVaryingKind();
    registerChainKinds();  // after the single-species kinds, whose solvers it uses
    registerUnsaturatedChainChecks();
}

}  // namespace bm
