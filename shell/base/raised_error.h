#pragma once
// The run-time error number a call raises; 0 when it returns normally.
// Header-only, for the programs that check every error a call may raise (the fuzz targets, the tests).

#include "shell/base/runtime_error.h"

namespace bm {

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
