#include "apps/trazel/cell_number.h"

#include <charconv>
#include <cmath>

#include "model/number_text.h"

namespace bm::trazel {

namespace {

std::string_view withoutBlanks(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
    return s;
}

// The common forms ("0.47439", "5.3402e-05", "1.e+5", ".5", "-.25") read
// directly; anything else goes the long way through the program's lenient
// number rules.
std::optional<double> quickNumber(std::string_view t) {
    if (t.empty() || t.front() == '+') return std::nullopt;
    double v = 0;
    const auto [end, error] = std::from_chars(t.data(), t.data() + t.size(), v);
    if (error != std::errc() || end != t.data() + t.size() || !std::isfinite(v)) return std::nullopt;
    return v;
}

}  // namespace

std::optional<double> cellNumber(std::string_view text) {
    const std::string_view t = withoutBlanks(text);
    if (t == "." || t == "-." || t == "+.") return 0.0;
    if (const auto v = quickNumber(t)) return v;
    if (!isNumeric(t)) return std::nullopt;
    const double v = textValue(t);
    if (!std::isfinite(v)) return std::nullopt;
    return v;
}

bool rowNumbersInto(std::string_view line, std::vector<double>& values) {
    values.clear();
    std::size_t start = 0;
    while (start <= line.size()) {
        std::size_t comma = line.find(',', start);
        if (comma == std::string_view::npos) comma = line.size();
        const std::string_view cell = withoutBlanks(line.substr(start, comma - start));
        if (!cell.empty()) {
            const auto v = cellNumber(cell);
            if (!v) return false;
            values.push_back(*v);
        }
        start = comma + 1;
    }
    return true;
}

std::optional<std::vector<double>> rowNumbers(std::string_view line) {
    std::vector<double> values;
    if (!rowNumbersInto(line, values)) return std::nullopt;
    return values;
}

std::string plainNumber(double value) {
    if (value == 0) return "0";  // also folds -0
    // Plain decimals where they stay short, the exponent form elsewhere.
    char buffer[400];
    const double size = std::fabs(value);
    const auto result = size >= 1e-4 && size < 1e15 ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
                                                    : std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

}  // namespace bm::trazel
