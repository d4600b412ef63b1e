#pragma once
// The results' number format (formatNumber of model/number_text.h) written
// straight into a buffer: the writers of the output and plot files call it
// once for every value of their tables. The 15 rounded digits stay a whole
// number, the row's rounding is done on that number, and the text is written
// in place, with no string made on the way.

#include <string>

namespace bm {

// Room a text needs at the place it is written (the text itself is at most 22
// characters; the digits are stored as whole words).
inline constexpr int kNumberTextRoom = 40;

// Writes formatNumber(value) at out (kNumberTextRoom free); returns its end.
char* writeNumber(char* out, double value);
// The same for a single-precision result: formatNumber(generalText(value)).
char* writeNumber(char* out, float value);

inline void appendNumber(std::string& out, double value) {
    char text[kNumberTextRoom];
    out.append(text, writeNumber(text, value));
}

inline void appendNumber(std::string& out, float value) {
    char text[kNumberTextRoom];
    out.append(text, writeNumber(text, value));
}

// ", " and the number: a field after the first of a row.
template <class Real>
void appendNumberField(std::string& out, Real value) {
    char text[kNumberTextRoom + 2];
    text[0] = ',';
    text[1] = ' ';
    out.append(text, writeNumber(text + 2, value));
}

}  // namespace bm
