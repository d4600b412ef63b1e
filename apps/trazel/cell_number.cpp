#include "apps/trazel/cell_number.h"

#include <charconv>
#include <cmath>

#include "model/number_text.h"

namespace bm::trazel {

std::optional<double> cellNumber(std::string_view text) {
    const std::string t = trim(text);
    if (t == "." || t == "-." || t == "+.") return 0.0;
    if (!isNumeric(t)) return std::nullopt;
    const double v = textValue(t);
    if (!std::isfinite(v)) return std::nullopt;
    return v;
}

std::optional<std::vector<double>> rowNumbers(std::string_view line) {
    std::vector<double> values;
    std::size_t start = 0;
    while (start <= line.size()) {
        std::size_t comma = line.find(',', start);
        if (comma == std::string_view::npos) comma = line.size();
        const std::string_view cell = line.substr(start, comma - start);
        if (!trim(cell).empty()) {
            const auto v = cellNumber(cell);
            if (!v) return std::nullopt;
            values.push_back(*v);
        }
        start = comma + 1;
    }
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
