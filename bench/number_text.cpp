// Number texts per value: the conversions the writers and readers use, each
// beside the printf/strtod implementation they replaced (Reference), on the
// values a run writes: concentrations over many decades (all 17 digits),
// coordinates like 10, 0.25, 1E-05, and the texts of both as read back.

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "model/number_format.h"
#include "model/number_text.h"
#include "model/table_text.h"
#include "model/tests/number_text_reference.h"

namespace {

std::vector<double> results() {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponent(-12.0, 0.0);
    std::vector<double> v(4096);
    for (double& x : v) x = std::pow(10.0, exponent(random));
    return v;
}

std::vector<double> coordinates() {
    std::vector<double> v(4096);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = 10.0 * static_cast<double>(i % 101) + (i % 7 == 0 ? 0.25 : 0.0);
    return v;
}

std::vector<std::string> texts(const std::vector<double>& values, std::string (*form)(double)) {
    std::vector<std::string> out;
    for (double v : values) out.push_back(form(v));
    return out;
}

// The next value by a compare rather than a remainder: a 64-bit division
// per call would cost a third of what the fastest readers are measured at.
template <class F>
void perValue(benchmark::State& state, const std::vector<double>& values, F f) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f(values[i]));
        if (++i == values.size()) i = 0;
    }
}

template <class F>
void perText(benchmark::State& state, const std::vector<std::string>& values, F f) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f(values[i]));
        if (++i == values.size()) i = 0;
    }
}

const std::vector<double> theResults = results();
const std::vector<double> theCoordinates = coordinates();
std::string general(double v) { return bm::reference::generalText(v); }
std::string formatted(double v) { return bm::reference::formatNumber(v); }
const std::vector<std::string> theGeneralTexts = texts(theResults, general);
const std::vector<std::string> theFormattedTexts = texts(theResults, formatted);

// Output files and reports: formatNumber of results and coordinates.
void BM_FormatNumberResult(benchmark::State& s) { perValue(s, theResults, [](double v) { return bm::formatNumber(v); }); }
void BM_FormatNumberResultReference(benchmark::State& s) {
    perValue(s, theResults, [](double v) { return bm::reference::formatNumber(v); });
}
void BM_FormatNumberCoordinate(benchmark::State& s) { perValue(s, theCoordinates, [](double v) { return bm::formatNumber(v); }); }
void BM_FormatNumberCoordinateReference(benchmark::State& s) {
    perValue(s, theCoordinates, [](double v) { return bm::reference::formatNumber(v); });
}
// The same format written in place, as the output files' tables write it:
// into a buffer, and as fields of a table's text.
void BM_WriteNumberResult(benchmark::State& s) {
    char text[bm::kNumberTextRoom];
    perValue(s, theResults, [&](double v) { return bm::writeNumber(text, v) - text; });
}
void BM_WriteNumberCoordinate(benchmark::State& s) {
    char text[bm::kNumberTextRoom];
    perValue(s, theCoordinates, [&](double v) { return bm::writeNumber(text, v) - text; });
}
void BM_WriteNumberFloatResult(benchmark::State& s) {
    char text[bm::kNumberTextRoom];
    perValue(s, theResults, [&](double v) { return bm::writeNumber(text, static_cast<float>(v)) - text; });
}
// A table of 4096 fields a round, the string kept from round to round.
void BM_TableTextField(benchmark::State& s) {
    std::string out;
    for (auto _ : s) {
        out.clear();
        bm::TableText table(out);
        for (double v : theResults) table.field(v);
        table.flush();
        benchmark::DoNotOptimize(out.data());
    }
    s.SetItemsProcessed(s.iterations() * static_cast<long long>(theResults.size()));
}
// The same table with formatNumber's strings, as the writers appended them before.
void BM_FormatNumberField(benchmark::State& s) {
    std::string out;
    for (auto _ : s) {
        out.clear();
        for (double v : theResults) {
            out += ", ";
            out += bm::formatNumber(v);
        }
        benchmark::DoNotOptimize(out.data());
    }
    s.SetItemsProcessed(s.iterations() * static_cast<long long>(theResults.size()));
}
// Data files: the signed-field and stream forms of the 15-digit general text.
void BM_SignedText(benchmark::State& s) { perValue(s, theResults, [](double v) { return bm::signedText(v); }); }
void BM_SignedTextReference(benchmark::State& s) {
    perValue(s, theResults, [](double v) { return bm::reference::signedText(v); });
}
void BM_StreamText(benchmark::State& s) { perValue(s, theResults, [](double v) { return bm::streamText(v); }); }
void BM_StreamTextReference(benchmark::State& s) {
    perValue(s, theResults, [](double v) { return bm::reference::streamText(v); });
}
void BM_GeneralText(benchmark::State& s) { perValue(s, theResults, [](double v) { return bm::generalText(v); }); }
void BM_GeneralTextReference(benchmark::State& s) {
    perValue(s, theResults, [](double v) { return bm::reference::generalText(v); });
}
// A text of a number formatted (the results grid's cells, the reports).
void BM_FormatNumberText(benchmark::State& s) {
    perText(s, theGeneralTexts, [](const std::string& t) { return bm::formatNumber(std::string_view(t)); });
}
void BM_FormatNumberTextReference(benchmark::State& s) {
    perText(s, theGeneralTexts, [](const std::string& t) { return bm::reference::formatNumber(std::string_view(t)); });
}
// The loop alone, to subtract: a text's length instead of its value.
void BM_TextLoop(benchmark::State& s) {
    perText(s, theGeneralTexts, [](const std::string& t) { return static_cast<double>(t.size()); });
}
// Readers: the lenient and the strict conversion of written texts.
void BM_TextValue(benchmark::State& s) { perText(s, theGeneralTexts, [](const std::string& t) { return bm::textValue(t); }); }
void BM_TextValueReference(benchmark::State& s) {
    perText(s, theGeneralTexts, [](const std::string& t) { return bm::reference::textValue(t); });
}
void BM_NumericValue(benchmark::State& s) {
    perText(s, theGeneralTexts, [](const std::string& t) { return bm::numericValue(t); });
}
void BM_NumericValueReference(benchmark::State& s) {
    perText(s, theGeneralTexts, [](const std::string& t) { return bm::reference::numericValue(t); });
}
void BM_IsNumeric(benchmark::State& s) { perText(s, theFormattedTexts, [](const std::string& t) { return bm::isNumeric(t); }); }
void BM_IsNumericReference(benchmark::State& s) {
    perText(s, theFormattedTexts, [](const std::string& t) { return bm::reference::isNumeric(t); });
}

BENCHMARK(BM_FormatNumberResult);
BENCHMARK(BM_FormatNumberResultReference);
BENCHMARK(BM_FormatNumberCoordinate);
BENCHMARK(BM_FormatNumberCoordinateReference);
BENCHMARK(BM_WriteNumberResult);
BENCHMARK(BM_WriteNumberCoordinate);
BENCHMARK(BM_WriteNumberFloatResult);
BENCHMARK(BM_TableTextField);
BENCHMARK(BM_FormatNumberField);
BENCHMARK(BM_SignedText);
BENCHMARK(BM_SignedTextReference);
BENCHMARK(BM_StreamText);
BENCHMARK(BM_StreamTextReference);
BENCHMARK(BM_GeneralText);
BENCHMARK(BM_GeneralTextReference);
BENCHMARK(BM_FormatNumberText);
BENCHMARK(BM_FormatNumberTextReference);
BENCHMARK(BM_TextLoop);
BENCHMARK(BM_TextValue);
BENCHMARK(BM_TextValueReference);
BENCHMARK(BM_NumericValue);
BENCHMARK(BM_NumericValueReference);
BENCHMARK(BM_IsNumeric);
BENCHMARK(BM_IsNumericReference);

}  // namespace
