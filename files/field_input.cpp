#include "files/field_input.h"

#include <limits>

#include "model/number_text.h"
#include "shell/base/runtime_error.h"

namespace bm {

FieldInput::FieldInput(std::string text) : text_(std::move(text)) {}

bool FieldInput::atLineEnd() const {
    if (pos_ >= text_.size()) return true;
    if (text_[pos_] == '\n') return true;
    return text_[pos_] == '\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n';
}

void FieldInput::skipLineEnd() {
    if (pos_ < text_.size() && text_[pos_] == '\r') ++pos_;
    if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
}

void FieldInput::skipBlanks() {
    while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
}

void FieldInput::finishField() {
    skipBlanks();
    if (pos_ < text_.size() && text_[pos_] == ',') ++pos_;
    else if (atLineEnd()) skipLineEnd();
}

std::string FieldInput::lineInput() {
    if (atEnd()) raiseError(err::InputPastEndOfFile);
    const std::size_t start = pos_;
    const std::size_t feed = text_.find('\n', start);
    const std::size_t next = feed == std::string::npos ? text_.size() : feed + 1;
    std::size_t end = feed == std::string::npos ? text_.size() : feed;
    if (end > start && feed != std::string::npos && text_[end - 1] == '\r') --end;
    pos_ = next;
    return text_.substr(start, end - start);
}

std::string FieldInput::textField() {
    if (atEnd()) raiseError(err::InputPastEndOfFile);
    skipBlanks();
    if (pos_ < text_.size() && text_[pos_] == '"') {
        const std::size_t start = ++pos_;
        while (pos_ < text_.size() && text_[pos_] != '"' && !atLineEnd()) ++pos_;
        std::string field = text_.substr(start, pos_ - start);
        if (pos_ < text_.size() && text_[pos_] == '"') ++pos_;
        // Anything between the closing quote and the delimiter is passed over.
        while (pos_ < text_.size() && text_[pos_] != ',' && !atLineEnd()) ++pos_;
        finishField();
        return field;
    }
    const std::size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != ',' && !atLineEnd()) ++pos_;
    std::string field = text_.substr(start, pos_ - start);
    finishField();
    return field;
}

double FieldInput::numberField() {
    if (atEnd()) raiseError(err::InputPastEndOfFile);
    skipBlanks();
    const std::size_t start = pos_;
    // A "[" ends a number too: an axis line with no rows behind it is followed
    // at once by "[End Output Data]".
    while (pos_ < text_.size() && text_[pos_] != ' ' && text_[pos_] != '\t' && text_[pos_] != ',' &&
           text_[pos_] != '[' && !atLineEnd())
        ++pos_;
    const std::string token = text_.substr(start, pos_ - start);
    finishField();
    if (token.empty()) return 0.0;
    // The writer's own text of values the solvers could not give a number for.
    if (token == "NaN") return std::numeric_limits<double>::quiet_NaN();
    if (token == "Infinity") return std::numeric_limits<double>::infinity();
    if (token == "-Infinity") return -std::numeric_limits<double>::infinity();
    return numericValue(token);  // 13 for a non-number, 6 when too large
}

void FieldInput::requireRoomFor(long long values) const {
    if (values <= 0) return;
    if (static_cast<unsigned long long>(values) > remaining() / 2 + 1) raiseError(err::InputPastEndOfFile);
}

}  // namespace bm
