// The quick index paths (whole powers, sweeps, the linear fits) against the straightforward
// code they replace, written out here as it computed: every power from pow, the Schott form's
// terms checked one by one, the fits' sums kept in maps. Results must agree to the last bit
// on every glass of the real AGF catalogues, under every form code, at wavelengths inside and
// far outside their bands, and on a table of fits that succeed, refuse or fail.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "core/import/import_fixture.h"
#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/matrix_calcs.h"
#include "core/optics/whole_power.h"
#include "support/scripted_dialogs.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

// pow with an exponent the compiler cannot fold (a constant 2 would become x * x).
double Pow(double x, double y) {
    asm volatile("" : "+m"(y));
    return std::pow(x, y);
}

bool SameBits(double a, double b) {
    return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}

// ---- the index as the earlier code gave it --------------------------------------------

// The terms summed in the order given; a term that is not finite is a fault.
struct Terms {
    double sum = 0.0;
    bool fault = false;
    void Add(std::initializer_list<double> terms) {
        for (const double t : terms) {
            if (!std::isfinite(t)) fault = true;
            sum += t;
        }
    }
};

double OldIndex(const PolyCoefBlock& c, float nm, int16_t type, int16_t& ok) {
    ok = 0;
    const double lambda = static_cast<float>(static_cast<double>(nm) * 0.001);
    const double x = std::pow(lambda, 2.0);
    Terms t;
    auto root = [&](double v, bool indexItself, bool belowOne) {
        if (t.fault || !std::isfinite(v) || (belowOne ? v < 1.0 : v <= 0.0)) return 0.0;
        ok = -1;
        return indexItself ? v : std::sqrt(v);
    };
    switch (type) {
        case 4:
            t.Add({c[0], c[1] / x, c[2] / std::pow(x, 2.0)});
            return root(t.sum, false, true);
        case 7:
            if (lambda == 0.0) t.fault = true;
            t.Add({c[0], c[1] / lambda, c[2] / std::pow(lambda, 3.5)});
            return root(t.sum, true, true);
        case 1:
            t.Add({c[0], c[1] * x, c[2] / x, c[3] / std::pow(x, 2.0), c[4] / std::pow(x, 3.0),
                   c[5] / std::pow(x, 4.0)});
            return root(t.sum, false, false);
        case 3:
            for (int k = -5; k <= 4; ++k) {
                const double power = Pow(x, k);
                if (!std::isfinite(power) || (k < 0 && x == 0.0)) t.fault = true;
                t.Add({c[k + 5] * power});
            }
            return root(t.sum, false, false);
        case 2:
        case 6: {
            const int terms = type == 2 ? 3 : 5;
            t.Add({1.0});
            for (int i = 0; i < terms; ++i) {
                const double denom = x - c[terms + i];
                if (denom == 0.0) t.fault = true;
                t.Add({c[i] * x / denom});
            }
            return root(t.sum, false, false);
        }
        case 8: {
            const double denom = x - 0.28;
            if (denom == 0.0) t.fault = true;
            const double l = 1.0 / denom;
            t.Add({c[0], c[1] * l, c[2] * std::pow(l, 2.0), c[3] * x, c[4] * std::pow(x, 2.0),
                   c[5] * std::pow(x, 3.0)});
            return root(t.sum, true, false);
        }
        default:
            return 0.0;
    }
}

struct Glass {
    PolyCoefBlock coef;
    int16_t type;
    float low, high;
};

std::vector<Glass> CatalogueGlasses() {
    std::vector<Glass> out;
    ImportOptions options;
    options.refitOtherFormulas = true;
    options.leaveTransTables = true;
    for (const char* set : {"2020", "newer", "legacy"}) {
        const fs::path dir = kShared / "agf" / set;
        if (!fs::exists(dir)) continue;
        for (const auto& e : fs::directory_iterator(dir)) {
            for (const auto& r : ReadCatalogue(e.path(), options).recs) {
                out.push_back({r.General.PolyCoef, r.General.Polytype,
                               static_cast<float>(r.General.IndexWvMin),
                               static_cast<float>(r.General.IndexWvMax)});
            }
        }
    }
    return out;
}

// Every glass's coefficients under every form code (its own among them), at its band's ends
// and middle, the d line, and a spread from the far ultraviolet to the far infrared, zero and
// a negative wavelength included; single indices, both sweeps and the prepared form alike.
TEST(IndexBits, EveryCatalogueGlassUnderEveryFormMatchesTheFormulasAsWritten) {
    const std::vector<Glass> glasses = CatalogueGlasses();
    if (glasses.empty()) GTEST_SKIP() << "the shared catalogues are not here";
    EXPECT_GT(glasses.size(), 8000u);

    std::vector<float> spread = {0.0f, -500.0f, 587.5618f, 1.0f, 100000.0f};
    for (int i = 0; i < 48; ++i) spread.push_back(150.0f * std::pow(200.0f, i / 47.0f));

    std::vector<float> waves;
    std::vector<SweepWave> prepared;
    std::vector<double> expected, sweepN, preparedN;
    std::vector<int16_t> expectedOk, sweepOk, preparedOk;
    long compared = 0;
    std::string firstMismatch;
    for (const Glass& g : glasses) {
        waves = spread;
        waves.insert(waves.end(), {g.low, g.high, 0.5f * (g.low + g.high)});
        prepared.clear();
        for (const float w : waves) prepared.push_back(PrepareWave(w));
        const size_t n = waves.size();
        expected.resize(n), sweepN.resize(n), preparedN.resize(n);
        expectedOk.resize(n), sweepOk.resize(n), preparedOk.resize(n);
        for (int16_t type = 0; type <= 8; ++type) {
            for (size_t i = 0; i < n; ++i)
                expected[i] = OldIndex(g.coef, waves[i], type, expectedOk[i]);
            IndexSweep(g.coef, type, std::span<const float>(waves), sweepN, sweepOk);
            IndexSweep(g.coef, type, std::span<const SweepWave>(prepared), preparedN, preparedOk);
            for (size_t i = 0; i < n; ++i) {
                int16_t singleOk = 7, atOk = 7;
                // The clauses of a braced list run in order: each index before its flag.
                const std::tuple<const char*, double, int16_t> paths[] = {
                    {"single", IndexFromPolynomial(g.coef, waves[i], type, singleOk), singleOk},
                    {"sweep", sweepN[i], sweepOk[i]},
                    {"prepared sweep", preparedN[i], preparedOk[i]},
                    {"prepared single", IndexAt(g.coef, prepared[i], type, atOk), atOk}};
                for (const auto& [path, n, ok] : paths) {
                    if ((!SameBits(n, expected[i]) || ok != expectedOk[i]) &&
                        firstMismatch.empty()) {
                        firstMismatch = std::string(path) + " type " + std::to_string(type) +
                                        " at " + std::to_string(waves[i]) + " nm, glass type " +
                                        std::to_string(g.type);
                    }
                }
                ++compared;
            }
        }
    }
    EXPECT_EQ(firstMismatch, "") << compared << " compared";
}

// Whole powers against pow itself: a million random bases over twelve decades, every
// exponent from -16 to 16, one at a time and many at once, and the bases pow treats apart.
TEST(IndexBits, WholeAndEvenPowersAreThoseOfPow) {
    std::mt19937_64 random(20240611);
    std::uniform_real_distribution<double> decade(-6.0, 6.0);
    std::vector<double> bases;
    for (int i = 0; i < 40000; ++i) bases.push_back(std::pow(10.0, decade(random)));
    for (double special :
         {0.0, -0.0, -2.5, 1.0, 2.0, 0.5, 0x1p-64, 0x1p64, 0x1p-600, 0x1p600, 4.9e-324,
          std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
          1.0000000000000002, 0.9999999999999999}) {
        bases.push_back(special);
    }
    int wrong = 0;
    std::string first;
    auto check = [&](double got, double want, double base, int k, const char* how) {
        if (SameBits(got, want)) return;
        if (++wrong == 1) {
            first = std::string(how) + " of " + std::to_string(base) + " to " + std::to_string(k);
        }
    };
    using Powers = void (*)(std::span<const double>, int, int, std::span<double>);
    const Powers powers[] = {WholePowers, EvenPowers};
    std::vector<double> rows;
    for (size_t start = 0; start < bases.size(); start += 150) {
        const std::span<const double> block(bases.data() + start,
                                            std::min<size_t>(150, bases.size() - start));
        for (const int lowest : {-16, -10, -4, 1}) {
            const int count = lowest == 1 ? 16 : 1 - 2 * lowest;
            for (const int step : {1, 2}) {  // whole powers, then even powers
                if (step == 2 && lowest == -16) continue;
                rows.assign(block.size() * count, 0.0);
                powers[step - 1](block, lowest, count, rows);
                for (size_t i = 0; i < block.size(); ++i) {
                    for (int r = 0; r < count; ++r) {
                        const int k = step * (lowest + r);
                        check(rows[r * block.size() + i], Pow(block[i], k), block[i], k,
                              step == 1 ? "many" : "even");
                    }
                }
            }
        }
    }
    for (size_t i = 0; i < bases.size(); i += 7) {
        for (int k = -20; k <= 20; ++k)
            check(WholePower(bases[i], k), Pow(bases[i], k), bases[i], k, "one");
    }
    EXPECT_EQ(wrong, 0) << first;
}

// ---- the linear fits as the earlier code computed them --------------------------------

int16_t OldLinearFit(const std::vector<int>& exponents, int16_t& count, int16_t pointCount,
                     PolyCoefBlock& coef, MeasuredData& measured) {
    const int m = static_cast<int>(exponents.size());
    count = static_cast<int16_t>(m);
    if (pointCount < m) return 0;
    const int points = std::min<int>(pointCount, kMaxIndexPoints);
    std::map<int, double> powerSum, rightSum;
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < m; ++j) powerSum[exponents[i] + exponents[j]] = 0.0;
        rightSum[exponents[i]] = 0.0;
    }
    for (int p = 0; p < points; ++p) {
        const double w = measured.IndexWeight[p];
        const double x = std::pow(measured.IndexWaveUm[p], 2.0);
        const double y = measured.IndexSquared[p];
        for (auto& [k, sum] : powerSum) sum += w * Pow(x, k);
        for (auto& [k, sum] : rightSum) sum += w * Pow(x, k) * y;
    }
    Matrix<double> normal(m, m);
    std::vector<double> right(size_t(m) + 1, 0.0);
    for (int i = 1; i <= m; ++i) {
        for (int j = 1; j <= m; ++j) normal(i, j) = powerSum[exponents[i - 1] + exponents[j - 1]];
        right[i] = rightSum[exponents[i - 1]];
    }
    double determinant = 0.0;
    if (MatrixInvert(normal, determinant, m) == 0) return 0;
    std::vector<double> a(size_t(m) + 1, 0.0);
    for (int i = 1; i <= m; ++i) {
        double sum = 0.0;
        for (int j = 1; j <= m; ++j) sum += normal(i, j) * right[j];
        a[i] = sum;
    }
    measured.FitError = 0.0;
    for (int p = 0; p < points; ++p) {
        const double lambda = measured.IndexWaveUm[p];
        double nSquared = 0.0;
        for (int i = 1; i <= m; ++i) nSquared += a[i] * Pow(lambda, 2.0 * exponents[i - 1]);
        if (!std::isfinite(nSquared) || nSquared < 0.0) return 0;
        measured.IndexCalc[p] = std::sqrt(nSquared);
        if (measured.IndexWeight[p] != 0.0f) {
            measured.IndexError[p] = measured.IndexValue[p] - measured.IndexCalc[p];
            measured.FitError += measured.IndexError[p] * measured.IndexError[p];
        }
    }
    if (!std::isfinite(measured.FitError)) return 0;
    StoreCoefficients(coef, a);
    return -1;
}

// Points of a crown from first to last nm (Sellmeier values, n rounded to six places as
// measured data is), with weights cycling through the given list.
MeasuredData Points(int count, double first, double last, std::vector<float> weights = {1.0f}) {
    MeasuredData m{};
    for (int i = 0; i < count; ++i) {
        const double nm = count == 1 ? first : first + (last - first) * i / (count - 1);
        const double x = nm * nm * 1e-6;
        const double n =
            std::sqrt(1.0 + 1.03961212 * x / (x - 0.00600069867) +
                      0.231792344 * x / (x - 0.0200179144) + 1.01046945 * x / (x - 103.560653));
        m.IndexWave[i] = nm;
        m.IndexWaveUm[i] = nm * 0.001;
        m.IndexValue[i] = std::round(n * 1e6) / 1e6;
        m.IndexSquared[i] = m.IndexValue[i] * m.IndexValue[i];
        m.IndexWeight[i] = weights[static_cast<size_t>(i) % weights.size()];
    }
    return m;
}

// Each linear form at 20 and 150 points (descending and ascending, equal and mixed weights), a
// narrow band, too few points, all points at one wavelength, a point at zero wavelength and
// a form that cannot follow the data: return, coefficients, every calculated index and
// residual, the fit error and the message must be those of the earlier code.
TEST(IndexBits, LinearFitsGiveTheEarlierCoefficientsAndResiduals) {
    using Fit =
        int16_t (*)(int16_t&, int16_t, std::string&, PolyCoefBlock&, MeasuredData&, Dialogs&);
    struct Form {
        const char* name;
        Fit fit;
        std::vector<int> exponents;
    };
    const Form forms[] = {{"Cauchy", &FitCauchy, {0, -1, -2}},
                          {"Schott", &FitSchott, {0, 1, -1, -2, -3, -4}},
                          {"Schott Plus", &FitSchottPlus, {-5, -4, -3, -2, -1, 0, 1, 2, 3, 4}}};
    MeasuredData zeroWave = Points(20, 365.0, 2325.0);
    zeroWave.IndexWaveUm[7] = 0.0;
    MeasuredData wild = Points(20, 365.0, 2325.0);
    for (int i = 0; i < 20; i += 2) wild.IndexSquared[i] = i % 4 ? 40.0 : -30.0;
    struct Case {
        const char* what;
        MeasuredData data;
        int16_t points;
    };
    const Case cases[] = {
        {"20 points", Points(20, 2325.0, 365.0), 20},
        {"150 points", Points(150, 2325.0, 365.0), 150},
        {"150 ascending, mixed weights", Points(150, 365.0, 2325.0, {1.0f, 0.0f, 2.5f, 0.3f}), 150},
        {"20 in a narrow band", Points(20, 546.0, 656.0, {1.0f, 3.0f}), 20},
        {"too few points", Points(2, 400.0, 700.0), 2},
        {"one wavelength", Points(20, 587.56, 587.56), 20},
        {"a zero wavelength", zeroWave, 20},
        {"wild data", wild, 20},
    };
    for (const Form& form : forms) {
        for (const Case& c : cases) {
            SCOPED_TRACE(std::string(form.name) + ", " + c.what);
            MeasuredData got = c.data, want = c.data;
            PolyCoefBlock gotCoef{};
            gotCoef.fill(9.0);
            PolyCoefBlock wantCoef = gotCoef;
            int16_t gotCount = 0, wantCount = 0;
            std::string text;
            ScriptedDialogs dialogs;
            const int16_t gotOk = form.fit(gotCount, c.points, text, gotCoef, got, dialogs);
            const int16_t wantOk =
                OldLinearFit(form.exponents, wantCount, c.points, wantCoef, want);
            ASSERT_EQ(gotOk, wantOk);
            EXPECT_EQ(gotCount, wantCount);
            EXPECT_EQ(dialogs.boxes.size(), wantOk ? 0u : 1u);
            EXPECT_EQ(std::memcmp(&gotCoef, &wantCoef, sizeof gotCoef), 0);
            EXPECT_EQ(std::memcmp(&got.IndexCalc, &want.IndexCalc, sizeof got.IndexCalc), 0);
            EXPECT_EQ(std::memcmp(&got.IndexError, &want.IndexError, sizeof got.IndexError), 0);
            EXPECT_TRUE(SameBits(got.FitError, want.FitError));
        }
    }
}

}  // namespace
}  // namespace ostrel::testing
