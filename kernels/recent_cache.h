#pragma once
// A few recently used entries kept per thread: the kernels' node values that
// depend on a point's x and t but not on y or z, which a grid's inner loop
// asks for again and again. Each entry is a pure function of its key, so a
// result never depends on what was computed before it (nor on the thread).

namespace bm {

template <class Key, class Value, int Entries>
class RecentCache {
public:
    // The entry of `key`, or null.
    Value* find(const Key& key) {
        for (int i = 0; i < Entries; ++i)
            if (used_[i] && keys_[i] == key) return &values_[i];
        return nullptr;
    }
    // An entry for `key`, replacing the oldest but `keep` (an entry the
    // caller still holds); the caller fills it.
    Value& claim(const Key& key, const Value* keep = nullptr) {
        if (&values_[next_] == keep) next_ = (next_ + 1) % Entries;
        const int i = next_;
        next_ = (next_ + 1) % Entries;
        keys_[i] = key;
        used_[i] = true;
        return values_[i];
    }

private:
    Key keys_[Entries]{};
    Value values_[Entries];
    bool used_[Entries] = {};
    int next_ = 0;
};

}  // namespace bm
