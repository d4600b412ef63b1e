#pragma once
// Sequential input from the text of a data file, the way the readers take it:
// whole lines, and fields.
//
// - A line ends at CR LF or at a lone LF; the line end is dropped. A CR that is
//   not followed by LF belongs to the line.
// - Field input skips leading blanks and tabs. A numeric field ends at a blank,
//   a comma, the line end or a "[" (the end marker that can follow an axis
//   line at once); an unquoted text field ends at a comma or the line
//   end (its text is kept as it stands up to there); a quoted one runs to its
//   closing quote and the quotes are dropped. After a field, blanks are skipped
//   and one comma or one line end behind them is consumed.
// - Reading when nothing is left is error 62. A numeric field that is not a
//   number is error 13; an empty one is 0; one too large for a double is 6.

#include <cstddef>
#include <string>
#include <string_view>

namespace bm {

class FieldInput {
public:
    explicit FieldInput(std::string text);

    std::string lineInput();
    std::string textField();
    double numberField();

    bool atEnd() const { return pos_ >= text_.size(); }
    // Characters not read yet.
    std::size_t remaining() const { return text_.size() - pos_; }
    // Error 62 when `values` numbers cannot all stand in what is left: each takes
    // at least one character and one delimiter.
    void requireRoomFor(long long values) const;

private:
    bool atLineEnd() const;
    void skipLineEnd();
    void skipBlanks();
    void finishField();

    std::string text_;
    std::size_t pos_ = 0;
};

}  // namespace bm
