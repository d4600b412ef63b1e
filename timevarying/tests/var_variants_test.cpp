// The time-varying model's inputs that a simulation may vary, by source and
// dispersion function: the captions of the time-varying screen's rows.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "timevarying/tests/var_test_model.h"
#include "timevarying/var_variants.h"

namespace bm {
namespace {

std::vector<std::string> names(const std::vector<MonteVariant>& list) {
    std::vector<std::string> out;
    for (const MonteVariant& v : list) out.push_back(v.name);
    return out;
}

TEST(VarVariants, APointSourceWithAnAsymptoticFunctionVariesEveryRow) {
    DataSet d = var_test::model("Point (instantaneous)", "Asymptotic");
    const std::vector<MonteVariant> list = timeVaryingVariants(d);
    EXPECT_EQ(names(list), (std::vector<std::string>{"Steady-state Darcy Velocity in X-Direction (u)",
                                                     "Steady-state Darcy Velocity in Y-Direction (v)",
                                                     "Molecular Diffusion (Dm)", "Retardation Coefficient (R)",
                                                     "Dispersion Ratio Coefficient (a)",
                                                     "Maximum Diffusion Coefficient (Do)",
                                                     "First-Order Decay Coefficient (mu)", "Mean Travel Time (k)",
                                                     "Mass Injected at x=0, y=0 and at time t=0 (M)",
                                                     "Aquifer Porosity (n)"}));
    std::vector<std::string> values;
    for (const MonteVariant& v : list) values.push_back(*v.field(d));
    EXPECT_EQ(values, (std::vector<std::string>{"0.3", "0.09", "0.01", "2", "0.2", "5", "0.001", "20", "1000", "0.3"}));
}

TEST(VarVariants, ALineSourceHasNoYVelocityAndAConstantFunctionNoTravelTime) {
    DataSet d = var_test::model("Line (continuous)", "Constant");
    EXPECT_EQ(names(timeVaryingVariants(d)),
              (std::vector<std::string>{"Steady-state Darcy Velocity in X-Direction (u)", "Molecular Diffusion (Dm)",
                                        "Retardation Coefficient (R)", "Dispersion Ratio Coefficient (a)",
                                        "Maximum Diffusion Coefficient (Do)", "First-Order Decay Coefficient (mu)",
                                        "Mass Injection Rate at x=0 (M)", "Aquifer Porosity (n)"}));
}

TEST(VarVariants, TheMassRowIsNamedBySource) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"Point (continuous)", "Mass Injection Rate at x=0, y=0 (M)"},
        {"Point (initial)", "Initial Mass at x=0, y=0 (M)"},
        {"Line (instantaneous)", "Mass Injected at x=0 and at time t=0 (M)"},
        {"Line (initial)", "Initial Mass at x=0 (M)"}};
    for (const auto& [source, caption] : cases) {
        DataSet d = var_test::model(source, "Asymptotic");
        const std::vector<std::string> list = names(timeVaryingVariants(d));
        ASSERT_GE(list.size(), 2u);
        EXPECT_EQ(list[list.size() - 2], caption) << source;
    }
}

}  // namespace
}  // namespace bm
