#include "model/app_state.h"

namespace bm {

AppState& theAppState() {
    static AppState instance;
    return instance;
}

}  // namespace bm
