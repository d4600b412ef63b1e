#pragma once
// The one error handler: a table from run-time error numbers to message boxes.

#include <cstdint>
#include <string>

#include "shell/base/runtime_error.h"

namespace bm {

class UserInterface;

inline constexpr std::int16_t kResume = 0;  // go on at the next statement
inline constexpr std::int16_t kLeave = -1;  // leave the routine

// `context` names what was being done and serves as the title of the boxes whose
// title is the caller's (device unavailable); `extra` is a file or chemical name.
// Returns kResume or kLeave. Never raises an error itself.
std::int16_t handleError(const RuntimeError& error, const std::string& context, const std::string& extra,
                         UserInterface& ui);
std::int16_t handleError(int number, const std::string& context, const std::string& extra, UserInterface& ui);

}  // namespace bm
