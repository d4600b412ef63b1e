#include "kernels/kept_nodes.h"

#include <atomic>

namespace bm {

namespace {
thread_local unsigned long long theLastNodeSet = 0;
// Starts at 1, so that a rule never checked (generation 0) is checked.
std::atomic<unsigned long long> theRuleArraysGeneration{1};
}  // namespace

unsigned long long nextNodeSet() { return ++theLastNodeSet; }

void ruleArraysChanged() { theRuleArraysGeneration.fetch_add(1); }

unsigned long long ruleArraysGeneration() { return theRuleArraysGeneration.load(std::memory_order_relaxed); }

}  // namespace bm
