// Two properties of the shared data set that show on writing and reading:
// a superposition index of 0 is written as one term in every model that has
// terms, and a reload gives every text field back byte for byte, except the
// blanks around a value, which the reader trims.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "files/data_file.h"
#include "model/number_text.h"
#include "sample_models.h"

namespace bm {
namespace {

TEST(WritingTerms, IndexOfZeroIsOneTermInEveryModelWithTerms) {
    for (DataSet (*build)() : {samples::oneRegular, samples::twoRegular, samples::threeRegular, samples::unsatRegular,
                               samples::oneMonteCarlo, samples::twoMonteCarlo, samples::threeMonteCarlo}) {
        DataSet d = build();
        SCOPED_TRACE(d.modelType);
        d.superpositionIndex = 0;
        d.terms.redim(0);
        const std::string text = composeDataFile(d);
        EXPECT_NE(text.find("Superposition Index: 1\r\n\r\nT 1: \r\nConcentration: \r\n\r\n"), std::string::npos);
        EXPECT_EQ(text.find("T 2:"), std::string::npos);
        EXPECT_EQ(d.superpositionIndex, 1);  // stored back
        EXPECT_EQ(d.terms.ub(), 1);
        // and reads back as one term
        DataSet back;
        const char* extension = d.modelType == "One Dimensional"   ? "m.one"
                                : d.modelType == "Two Dimensional" ? "m.two"
                                : d.modelType == "Three Dimensional" ? "m.tri"
                                                                     : "m.u1d";
        parseDataFile(back, text, extension);
        EXPECT_EQ(back.superpositionIndex, 1);
        EXPECT_EQ(back.terms.ub(), 1);
    }
}

// The text fields a model of each dimension writes, by name.
struct Field {
    const char* name;
    std::string DataSet::*member;
};

const std::vector<Field> kOneDimensionFields = {
    {"author", &DataSet::author},       {"title", &DataSet::title},         {"comments", &DataSet::comments},
    {"lengthUnit", &DataSet::lengthUnit}, {"timeUnit", &DataSet::timeUnit}, {"concentrationUnit", &DataSet::concentrationUnit},
    {"xRange", &DataSet::xRange},       {"timeRange", &DataSet::timeRange}, {"mcAtX", &DataSet::mcAtX},
    {"mcAtT", &DataSet::mcAtT},         {"velocity", &DataSet::velocity},   {"halfLife", &DataSet::halfLife},
    {"dispersionX", &DataSet::dispersionX}, {"porosity", &DataSet::porosity}, {"retardation", &DataSet::retardation}};

const std::vector<Field> kTwoDimensionFields = {
    {"yRange", &DataSet::yRange},           {"sourceXc", &DataSet::sourceXc},
    {"sourceYc", &DataSet::sourceYc},       {"mcAtY", &DataSet::mcAtY},
    {"dispersionY", &DataSet::dispersionY}, {"netRecharge", &DataSet::netRecharge},
    {"aquiferThickness", &DataSet::aquiferThickness}, {"sourceWidth", &DataSet::sourceWidth},
    {"sourceStdDev", &DataSet::sourceStdDev}, {"injectionRate", &DataSet::injectionRate}};

void expectReloadTrimsOnlyTheEnds(DataSet d, const std::vector<Field>& fields, const char* path) {
    // Blanks around every value, and blanks inside some, which must stay.
    std::vector<std::string> typed;
    int k = 0;
    for (const Field& f : fields) {
        std::string& value = d.*f.member;
        if (value.empty()) value = "1";
        if (k % 3 == 0) value = "  " + value + " ";
        else if (k % 3 == 1) value = value + "   ";
        else value = " " + value.substr(0, 1) + "  " + value.substr(1);  // one in front, two inside that stay
        typed.push_back(value);
        ++k;
    }
    d.terms(1).time = " 0 ";
    d.terms(1).concentration = "   1 ";
    const std::string text = composeDataFile(d);
    DataSet back;
    parseDataFile(back, text, path);
    for (std::size_t i = 0; i < fields.size(); ++i)
        EXPECT_EQ(back.*fields[i].member, trim(typed[i])) << fields[i].name << " typed as [" << typed[i] << "]";
    EXPECT_EQ(back.terms(1).time, "0");
    EXPECT_EQ(back.terms(1).concentration, "1");
    // Written again, the trimmed fields are what stands in the file.
    const std::string again = composeDataFile(back);
    DataSet third;
    parseDataFile(third, again, path);
    for (const Field& f : fields) EXPECT_EQ(third.*f.member, back.*f.member) << f.name;
    EXPECT_EQ(composeDataFile(third), again);
}

TEST(Reload, TextFieldsComeBackExceptTheBlanksAroundThem) {
    expectReloadTrimsOnlyTheEnds(samples::oneRegular(), kOneDimensionFields, "m.one");
    std::vector<Field> two = kOneDimensionFields;
    two.insert(two.end(), kTwoDimensionFields.begin(), kTwoDimensionFields.end());
    expectReloadTrimsOnlyTheEnds(samples::twoRegular(), two, "m.two");
}

TEST(Reload, TextFieldsWithoutEndBlanksComeBackByteForByte) {
    DataSet d = samples::oneRegular();
    d.author = "J. Q. Public, Hydro-Consult";
    d.title = "Site 4: plume  (two blanks) & \xC3\xA9t\xC3\xA9";
    d.comments = "x:y:z; 0.5E-3 |Monte";
    d.xRange = "0:100:1:50";
    d.velocity = "&H10";
    d.halfLife = "1D3";
    d.porosity = ".3";
    const std::string text = composeDataFile(d);
    DataSet back;
    parseDataFile(back, text, "m.one");
    for (const Field& f : kOneDimensionFields) EXPECT_EQ(back.*f.member, d.*f.member) << f.name;
}

}  // namespace
}  // namespace bm
