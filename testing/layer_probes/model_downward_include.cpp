// Compiled against the model layer's view by the test layer_view_downward_include,
// which expects it to build: the base is below the model.
#include "model/data_set.h"
#include "shell/base/runtime_error.h"

int main() { return 0; }
