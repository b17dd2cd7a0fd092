#include "core/optics/index_from_polynomial.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ostrel {
namespace {

PolyCoefBlock Coefs(std::initializer_list<double> values) {
    PolyCoefBlock c{};
    size_t i = 0;
    for (double v : values) c[i++] = v;
    return c;
}

// N-BK7, published Sellmeier coefficients (B first, then C).
const PolyCoefBlock kNbk7 =
    Coefs({1.03961212, 0.231792344, 1.01046945, 0.00600069867, 0.0200179144, 103.560653});

struct IndexCase {
    const char* name;
    int16_t type;
    PolyCoefBlock coef;
    float waveNm;
    double expected;  // 0 with ok 0 when the index cannot be computed
    int16_t ok;
};

class IndexFromPolynomialCases : public ::testing::TestWithParam<IndexCase> {};

TEST_P(IndexFromPolynomialCases, GivesIndexAndFlag) {
    const IndexCase& c = GetParam();
    int16_t ok = 99;
    const double n = IndexFromPolynomial(c.coef, c.waveNm, c.type, ok);
    EXPECT_EQ(ok, c.ok);
    EXPECT_NEAR(n, c.expected, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(
    WorkedValues, IndexFromPolynomialCases,
    ::testing::Values(
        IndexCase{"SchottConstant", 1, Coefs({2.25}), 587.6f, 1.5, -1},
        IndexCase{"SchottPlusConstant", 3, Coefs({0, 0, 0, 0, 0, 2.25}), 1234.5f, 1.5, -1},
        IndexCase{"SchottPlusFirstStoredIsInversePower", 3, Coefs({0.5, 0, 0, 0, 0, 2.0}), 1000.0f,
                  std::sqrt(2.5), -1},
        IndexCase{"SchottBelowOneAccepted", 1, Coefs({0.9}), 500.0f, 0.9486832980505138, -1},
        IndexCase{"CauchyBelowOneRefused", 4, Coefs({0.9}), 500.0f, 0.0, 0},
        IndexCase{"CauchyAtOneMicron", 4, Coefs({2.0, 0.2, 0.05}), 1000.0f, 1.5, -1},
        // n = c0 + c1/lambda + c2/lambda^3.5 at lambda = 2: 1.5 + 0.1 + 0.0353553...
        IndexCase{"InversePowerForm", 7, Coefs({1.5, 0.2, 0.4}), 2000.0f,
                  1.5 + 0.1 + 0.4 / std::pow(2.0, 3.5), -1},
        IndexCase{"InversePowerFormBelowOne", 7, Coefs({0.99}), 2000.0f, 0.0, 0},
        // L = 1 / (1 - 0.28); 1.5 + 0.072 L + 0.01 + 0.001 + 0.0001
        IndexCase{"PoleForm", 8, Coefs({1.5, 0.072, 0.0, 0.01, 0.001, 0.0001}), 1000.0f, 1.6111,
                  -1},
        IndexCase{"PoleFormBetweenZeroAndOne", 8, Coefs({0.5}), 1000.0f, 0.5, -1},
        IndexCase{"PoleFormNegative", 8, Coefs({-0.5}), 1000.0f, 0.0, 0},
        IndexCase{"SellmeierAtPole", 2, Coefs({1.0, 0, 0, 1.0}), 1000.0f, 0.0, 0},
        IndexCase{"SellmeierPlusAtPole", 6, Coefs({1.0, 0, 0, 0, 0, 1.0}), 1000.0f, 0.0, 0},
        IndexCase{"SchottAtZeroWavelength", 1, Coefs({2.25, 0, 0.01}), 0.0f, 0.0, 0},
        IndexCase{"CauchyAtZeroWavelength", 4, Coefs({2.25, 0.01}), 0.0f, 0.0, 0},
        IndexCase{"TypeZero", 0, Coefs({2.25}), 587.6f, 0.0, 0},
        IndexCase{"TypeFive", 5, Coefs({2.25}), 587.6f, 0.0, 0},
        IndexCase{"TypeNegative", -1, Coefs({2.25}), 587.6f, 0.0, 0},
        // Published nd of N-BK7 is 1.51680.
        IndexCase{"Nbk7AtTheDLine", 2, kNbk7, 587.5618f, 1.5168000325870348, -1},
        // With the product kept in 64 bits the result would be 1.5096233057530277.
        IndexCase{"MicrometresAreRoundedToSingle", 4, Coefs({2.25, 0.01}), 587.6f,
                  1.5096233059896742, -1},
        // x^-5 of a vanishing wavelength, and x^4 of its inverse, leave the range of a double.
        IndexCase{"OverflowSchottPlus", 3, Coefs({1.0, 0, 0, 0, 0, 2.25}), 1e-30f, 0.0, 0},
        IndexCase{"OverflowSchott", 1, Coefs({2.25, 0, 0, 0, 0, 1.0}), 1e-40f, 0.0, 0}),
    [](const ::testing::TestParamInfo<IndexCase>& info) { return info.param.name; });

TEST(IndexFromPolynomial, SellmeierPlusWithTwoZeroTermsEqualsSellmeier) {
    PolyCoefBlock plus{};
    for (int i = 0; i < 3; ++i) {
        plus[i] = kNbk7[i];
        plus[5 + i] = kNbk7[3 + i];
    }
    plus[8] = plus[9] = 50.0;  // C4, C5 with B4 = B5 = 0
    int16_t ok3 = 0, ok5 = 0;
    EXPECT_DOUBLE_EQ(IndexFromPolynomial(plus, 1014.0f, 6, ok5),
                     IndexFromPolynomial(kNbk7, 1014.0f, 2, ok3));
    EXPECT_EQ(ok5, -1);
}

TEST(PolyTables, NamesMinimumsAndShortNames) {
    const char* names[] = {"", "Schott", "Sellmeier", "Schott Plus", "Cauchy", "", "Sellmeier Plus",
                           "", "",       ""};
    const int16_t minimum[] = {0, 6, 6, 12, 3, 0, 12, 0, 0, 0};
    for (int16_t t = 0; t <= 9; ++t) {
        EXPECT_EQ(PolyTypeName(t), names[t]) << t;
        EXPECT_EQ(PolyMinPoints(t), minimum[t]) << t;
    }
    EXPECT_EQ(PolyTypeName(-1), "");
    EXPECT_EQ(PolyMinPoints(-3), 0);
    const std::pair<const char*, int16_t> shortNames[] = {
        {"Sch", 1}, {"Sel", 2}, {"Scx", 3}, {"Cau", 4}, {"sch", 0}, {"Sch ", 0}, {"", 0}};
    for (auto [shortName, type] : shortNames) {
        EXPECT_EQ(PolyTypeFromShortName(shortName), type) << shortName;
    }
}

}  // namespace
}  // namespace ostrel
