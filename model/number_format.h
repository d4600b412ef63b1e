#pragma once
// The results' number format (formatNumber of model/number_text.h) written
// straight into a buffer: the writers of the output and plot files call it
// once for every value of their tables. The 15 rounded digits stay a whole
// number, the row's rounding is done on that number, and the text is written
// in place, with no string made on the way.

namespace bm {

// Room a text needs at the place it is written (the text itself is at most 22
// characters; the digits are stored as whole words).
inline constexpr int kNumberTextRoom = 40;

// Writes formatNumber(value) at out (kNumberTextRoom free); returns its end.
char* writeNumber(char* out, double value);
// The same for a single-precision result: formatNumber(generalText(value)).
char* writeNumber(char* out, float value);

}  // namespace bm
