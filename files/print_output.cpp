#include "files/print_output.h"

#include <cmath>

#include "model/number_text.h"

namespace bm {

void PrintOutput::printSignedReal(double value, std::string_view before) {
    char room[kPrintFormRoom];
    text_ += before;
    text_ += signedTextIn(room, value);
}

void PrintOutput::printStreamReal(double value, std::string_view before) {
    char room[kPrintFormRoom];
    text_ += before;
    text_ += streamTextIn(room, value);
}

void PrintOutput::printStreamReal(float value, std::string_view before) {
    char room[kPrintFormRoom];
    text_ += before;
    text_ += streamTextIn(room, value);
}

std::string plainInteger(long long value) { return std::to_string(value); }
std::string signedFieldInteger(long long value) { return signedText(value); }
std::string signedFieldReal(double value) { return signedText(value); }
std::string streamReal(double value) { return streamText(value); }
std::string streamReal(float value) { return streamText(value); }
std::string printFormInteger(long long value) { return printForm(value); }

double asStreamReal(double value) {
    if (!std::isfinite(value)) return value;
    return numericValue(trim(streamText(value)));
}

}  // namespace bm
