#pragma once
// A long text of many items (the rows of a result table) written over the
// calculation threads: the items are cut into contiguous pieces, each piece is
// written into a string of its own, and the strings are joined in item order.
// The text is the one a single loop over the items writes, with any number of
// threads. Each string is reserved from an estimate of the bytes an item
// takes, so that it does not grow by copies: too large an estimate costs only
// address space, as pages never written are never touched.

#include <cstddef>
#include <functional>
#include <string>

namespace bm {

// Appends to `out` what write(first, last, piece) appends to `piece` for the
// items first .. last - 1, over items 0 .. count - 1. `write` must depend on
// nothing but its items (it runs on several threads at once). `itemBytes`
// is about the most an item writes.
void appendTextInPieces(std::string& out, long long count, std::size_t itemBytes,
                        const std::function<void(long long first, long long last, std::string& piece)>& write);

}  // namespace bm
