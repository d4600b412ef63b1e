#include "shell/screen/built_in_kinds.h"

#include "saturated/saturated_kinds.h"
#include "timevarying/var_solution.h"
#include "unsaturated/unsat_run.h"

namespace bm {

void registerBuiltInKinds() {
    registerSaturatedKinds();
    registerUnsaturatedKind();
    registerTimeVaryingKind();
}

}  // namespace bm
