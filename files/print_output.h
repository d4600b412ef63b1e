#pragma once
// The text of a data file as it is being written, with the number forms of the
// format. Lines end in CR LF. The text is UTF-8 here; the whole file is turned
// into the file's code page when it is saved.

#include <cstdint>
#include <string>
#include <string_view>

namespace bm {

class PrintOutput {
public:
    // Text with no line end (the next print goes on the same line).
    void print(std::string_view text) { text_ += text; }
    // Text and a line end.
    void printLine(std::string_view text = {}) {
        text_ += text;
        text_ += "\r\n";
    }
    // A real after `before` (", " or nothing), written straight into the text:
    // the forms of signedFieldReal and streamReal below.
    void printSignedReal(double value, std::string_view before = {});
    void printStreamReal(double value, std::string_view before = {});
    void printStreamReal(float value, std::string_view before = {});
    // Room for this many more characters, so that a long grid's text does not
    // grow by copies.
    void reserveMore(std::size_t characters) { text_.reserve(text_.size() + characters); }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

// Number forms of the format.
// "3": decimal digits, no leading blank ("Superposition Index: 3").
std::string plainInteger(long long value);
// " 101": a blank in the sign's place ("Number of x terms:  101", "T 1: ").
std::string signedFieldInteger(long long value);
// " .5", "-.25", " 1E-20": a blank in the sign's place, no zero before the point.
std::string signedFieldReal(double value);
// " 0.5 ": a blank in the sign's place, the zero before the point, a trailing blank.
std::string streamReal(double value);
std::string streamReal(float value);
// The value that a real written in stream form reads back as: kept in memory,
// a value is the same before its file is saved and after it is reopened.
double asStreamReal(double value);
// " 3 ", "-1 ": a number as a print statement writes it.
std::string printFormInteger(long long value);

}  // namespace bm
