#include "kernels/kept_nodes.h"

namespace bm {

namespace {
thread_local unsigned long long theLastNodeSet = 0;
}  // namespace

unsigned long long nextNodeSet() { return ++theLastNodeSet; }

}  // namespace bm
