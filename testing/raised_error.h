#pragma once
// The run-time error number a call raises; 0 when it returns normally.
// Header-only, so the fuzz targets can use it without the test library.

#include "shell/runtime_error.h"

namespace bm::testkit {

template <class Call>
int raisedError(Call&& call) {
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

}  // namespace bm::testkit
