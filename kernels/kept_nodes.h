#pragma once
// What the node caches of the quadrature kernels share (transit_nodes.h,
// kern3d_nodes.h): each kept set of nodes carries a number that differs for
// every set made on the thread (so that values kept beside it, such as the
// tails in edge_tails.h, know which set they belong to), and the rule it was
// made with, for the caller's arrays may be refilled with another rule.

#include <cstring>

#include "kernels/gauss_legendre.h"
#include "kernels/recent_cache.h"

namespace bm {

// A number that differs for every set of nodes made on this thread.
unsigned long long nextNodeSet();

// How many times callers have said their rule arrays changed
// (ruleArraysChanged, gauss_legendre.h; both kept in gauss_legendre.cpp): a kept set of nodes compares its
// rule with the caller's arrays once, and then trusts the same arrays (but
// for a few entries it still compares) until they are said to change.
unsigned long long ruleArraysGeneration();

template <int Points>
struct KeptRule {
    double nodes[Points], weights[Points];
    const double* checkedNodes = nullptr;
    const double* checkedWeights = nullptr;
    unsigned long long checkedIn = 0;

    bool holds(const double* n, const double* w) {
        const unsigned long long generation = ruleArraysGeneration();
        if (n == checkedNodes && w == checkedWeights && checkedIn == generation && sampleMatches(n, w)) return true;
        if (std::memcmp(nodes, n, sizeof nodes) != 0 || std::memcmp(weights, w, sizeof weights) != 0) return false;
        checked(n, w, generation);
        return true;
    }
    void keep(const double* n, const double* w) {
        std::memcpy(nodes, n, sizeof nodes);
        std::memcpy(weights, w, sizeof weights);
        checked(n, w, ruleArraysGeneration());
    }

private:
    // A few entries compared even then: arrays refilled with another rule
    // without a word (a test's vectors at an address used before) show at
    // once where a rule's order or its points differ.
    bool sampleMatches(const double* n, const double* w) const {
        for (int i : {0, 1, Points / 2, Points - 1})
            if (n[i] != nodes[i] || w[i] != weights[i]) return false;
        return true;
    }
    void checked(const double* n, const double* w, unsigned long long generation) {
        checkedNodes = n;
        checkedWeights = w;
        checkedIn = generation;
    }
};

// The entry of `key` made with this rule, or one filled by fill(entry) (an
// Entry has `rule`, a KeptRule, which this keeps).
template <class Key, class Entry, int Entries, class Fill>
Entry& keptNodes(RecentCache<Key, Entry, Entries>& cache, const Key& key, const double* nodes, const double* weights,
                 Fill&& fill) {
    Entry* entry = cache.find(key);
    // The built-in rule never changes: an entry made from its arrays (the key
    // carries the arrays' addresses) holds it.
    const bool builtin = isBuiltinRule(nodes, weights);
    if (entry != nullptr && (builtin || entry->rule.holds(nodes, weights))) return *entry;
    if (entry == nullptr) entry = &cache.claim(key);
    if (!builtin) entry->rule.keep(nodes, weights);
    fill(*entry);
    return *entry;
}

}  // namespace bm
