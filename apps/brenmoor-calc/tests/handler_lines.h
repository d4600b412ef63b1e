#pragma once
// The error handler's messages as brenmoor-calc writes them on standard error,
// one "TITLE: TEXT" line each (line breaks of the text become blanks).

#include <string>

namespace bm::testkit {

inline std::string improperFileName(const std::string& path) {
    return "Improper File Name: " + path + " is not in one of the recognized formats.   Please open another file.\n";
}
inline const std::string kOverflowLine =
    "Overflow: The input data has resulted in an overflow during analytical computations. Please check the data and "
    "try again.\n";
inline const std::string kDivisionByZeroLine =
    "Division by zero: The input data has resulted in an division by zero during analytical computations. Please "
    "check the data and try again.\n";
inline const std::string kIllegalFunctionCallLine =
    "Illegal Function Call: The input data has resulted in an illegal function call during analytical computations. "
    "Possible reasons could be taking a square root or a lograthim of a negative number etc. Please check the data "
    "and try again.\n";
inline const std::string kTypeMismatchLine =
    "Type Mismatch Error: The input data has resulted in a type mis-match error during analytical computations. "
    "Possible reasons could be improper input e.g. an alphabet or blank instead of a number etc. Please check the "
    "data and try again.\n";
inline const std::string kOutOfMemoryLine =
    "Out Of Memory: Insufficient memory!  Please reduce the number of chemicals selected and/or number of montecarlo "
    "terms.\n";
// An error that the workbench passes over without a box.
inline const std::string kBoundsLine = "Run-time error 9: Subscript out of range\n";

}  // namespace bm::testkit
