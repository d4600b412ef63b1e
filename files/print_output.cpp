#include "files/print_output.h"

#include <cmath>
#include <cstring>

#include "model/number_text.h"

namespace bm {

namespace {

// Room in front of a number's text for what goes before it (", ", "Time ,").
constexpr std::size_t kBefore = 8;

// `before` and the text form(room) writes, as one piece: the number written
// first, `before` copied in front of it.
template <class Form>
void appendReal(std::string& text, std::string_view before, Form form) {
    char room[kBefore + kPrintFormRoom];
    const std::string_view number = form(room + kBefore);
    if (before.size() > kBefore) {
        text += before;
        text += number;
        return;
    }
    char* start = room + (number.data() - room) - before.size();  // (number's place, writable)
    std::memcpy(start, before.data(), before.size());
    text.append(start, before.size() + number.size());
}

}  // namespace

void PrintOutput::printSignedReal(double value, std::string_view before) {
    appendReal(text_, before, [&](char* room) { return signedTextIn(room, value); });
}

void PrintOutput::printStreamReal(double value, std::string_view before) {
    appendReal(text_, before, [&](char* room) { return streamTextIn(room, value); });
}

void PrintOutput::printStreamReal(float value, std::string_view before) {
    appendReal(text_, before, [&](char* room) { return streamTextIn(room, value); });
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
