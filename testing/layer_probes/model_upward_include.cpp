// Compiled against the model layer's view by the test layer_view_upward_include,
// which expects it not to build: the data files are a layer above the model.
#include "files/data_file.h"
#include "model/data_set.h"

int main() { return 0; }
