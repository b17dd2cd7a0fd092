#include "core/optics/index_from_polynomial.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "core/optics/crown.h"

namespace ostrel {
namespace {

using testing::kNbk7Coef;
const PolyCoefBlock kNbk7Plus{1.03961212,    0.231792344,  1.01046945, 0,  0,
                              0.00600069867, 0.0200179144, 103.560653, 50, 50};

// Name, type, coefficients, wavelength, index (0 with ok 0 when it cannot be computed), ok.
const std::tuple<const char*, int16_t, PolyCoefBlock, float, double, int16_t> kWorkedValues[] = {
    {"SchottConstant", 1, {2.25}, 587.6f, 1.5, -1},
    {"SchottPlusConstant", 3, {0, 0, 0, 0, 0, 2.25}, 1234.5f, 1.5, -1},
    {"SchottPlusFirstStoredIsInversePower", 3, {0.5, 0, 0, 0, 0, 2.0}, 1000.0f, std::sqrt(2.5), -1},
    {"SchottBelowOneAccepted", 1, {0.9}, 500.0f, 0.9486832980505138, -1},
    {"CauchyBelowOneRefused", 4, {0.9}, 500.0f, 0.0, 0},
    {"CauchyAtOneMicron", 4, {2.0, 0.2, 0.05}, 1000.0f, 1.5, -1},
    // n = c0 + c1/lambda + c2/lambda^3.5 at lambda = 2: 1.5 + 0.1 + 0.0353553...
    {"InversePowerForm", 7, {1.5, 0.2, 0.4}, 2000.0f, 1.5 + 0.1 + 0.4 / std::pow(2.0, 3.5), -1},
    {"InversePowerFormBelowOne", 7, {0.99}, 2000.0f, 0.0, 0},
    // L = 1 / (1 - 0.28); 1.5 + 0.072 L + 0.01 + 0.001 + 0.0001
    {"PoleForm", 8, {1.5, 0.072, 0.0, 0.01, 0.001, 0.0001}, 1000.0f, 1.6111, -1},
    {"PoleFormBetweenZeroAndOne", 8, {0.5}, 1000.0f, 0.5, -1},
    {"PoleFormNegative", 8, {-0.5}, 1000.0f, 0.0, 0},
    {"SellmeierAtPole", 2, {1.0, 0, 0, 1.0}, 1000.0f, 0.0, 0},
    {"SchottAtZeroWavelength", 1, {2.25, 0, 0.01}, 0.0f, 0.0, 0},
    {"CauchyAtZeroWavelength", 4, {2.25, 0.01}, 0.0f, 0.0, 0},
    {"TypeZero", 0, {2.25}, 587.6f, 0.0, 0},
    // Published nd of N-BK7 is 1.51680.
    {"Nbk7AtTheDLine", 2, kNbk7Coef, 587.5618f, 1.5168000325870348, -1},
    // The same glass in the five-term layout (B1..B5, C1..C5), with B4 = B5 = 0.
    {"Nbk7AsSellmeierPlus", 6, kNbk7Plus, 587.5618f, 1.5168000325870348, -1},
    // With the product kept in 64 bits the result would be 1.5096233057530277.
    {"MicrometresAreRoundedToSingle", 4, {2.25, 0.01}, 587.6f, 1.5096233059896742, -1},
    // x^-5 of a vanishing wavelength, and x^4 of its inverse, leave the range of a double.
    {"OverflowSchottPlus", 3, {1.0, 0, 0, 0, 0, 2.25}, 1e-30f, 0.0, 0},
    {"OverflowSchott", 1, {2.25, 0, 0, 0, 0, 1.0}, 1e-40f, 0.0, 0}};

TEST(IndexFromPolynomial, GivesIndexAndFlag) {
    for (const auto& [name, type, coef, waveNm, expected, expectedOk] : kWorkedValues) {
        int16_t ok = 99;
        const double n = IndexFromPolynomial(coef, waveNm, type, ok);
        EXPECT_EQ(ok, expectedOk) << name;
        EXPECT_NEAR(n, expected, 1e-12) << name;
    }
}

// Names and minimums of the types are seen in the messages of the fits.
TEST(PolyTables, ShortNames) {
    const std::pair<const char*, int16_t> shortNames[] = {{"Sch", 1}, {"Sel", 2}, {"Scx", 3},
                                                          {"Cau", 4}, {"sch", 0}, {"Sch ", 0}};
    for (auto [shortName, type] : shortNames) {
        EXPECT_EQ(PolyTypeFromShortName(shortName), type) << shortName;
    }
}

}  // namespace
}  // namespace ostrel
