#pragma once
// Decimal texts read into the nearest double, as strtod rounds them. One pass
// over the text checks the grammar and gathers the first 19 significant
// digits into a 64-bit integer with their power of ten; the double then comes
// from one exact multiply or divide where both factors are exact doubles,
// else from a 128-bit product with a proven error bound, and only for the
// rare texts too close to a halfway point (or below the normal doubles) from
// std::from_chars and strtod.

#include <string_view>

namespace bm::digits {

// The strict grammar of a number: [sign] digits [. digits] [e|E|d|D [sign]
// digits], at least one digit in the mantissa, nothing else.
bool isStrict(std::string_view text);
// The double nearest to a text of the strict grammar (too large gives an
// infinity, too small 0, like strtod); false, and no value, for any other text.
bool readStrict(std::string_view text, double& value);
// As readStrict, blanks and tabs before and after the number allowed; error
// 13 for any other text, 6 for a number too large for a double.
double readBetweenBlanks(std::string_view text);

// The lenient reading: blanks, tabs and line feeds skipped wherever they
// stand, the longest numeric prefix of what remains (an exponent marker
// without digits is no part of it), "&H" and "&O" constants as 16-bit or
// 32-bit integers; 0 when there is no number.
double readLenient(std::string_view text);

}  // namespace bm::digits
