#include "core/optics/index_from_polynomial.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/optics/whole_power.h"

namespace ostrel {

namespace {

// An arithmetic error (a division by zero, an overflow) makes a term non-finite. The old
// routines let most of these rise to the caller; here every one of them ends as an index
// that cannot be computed, which is what the caller reports anyway.
struct Terms {
    double sum = 0.0;
    bool fault = false;
    void Add(double term) {
        if (!std::isfinite(term)) fault = true;
        sum += term;
    }
};

double Cauchy(const PolyCoefBlock& c, double x, bool& fault) {
    Terms t;
    t.Add(c[0]);
    t.Add(c[1] / x);
    t.Add(c[2] / std::pow(x, 2.0));
    fault = t.fault;
    return t.sum;
}

// x^3 and x^4 as pow gives them, the costly part of the Schott form. The same few wavelengths
// come back again and again (the lines of the derived data, a catalogue's transmission rows),
// so the last powers of a few dozen wavelengths are kept.
void CubeAndFourth(double x, double& cube, double& fourth) {
    struct Entry {
        uint64_t key = 0;
        bool used = false;
        double cube = 0.0, fourth = 0.0;
    };
    thread_local std::array<Entry, 64> entries;
    uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    Entry& e = entries[((bits ^ (bits >> 29)) * 0x9E3779B97F4A7C15ull) >> 58];
    if (!e.used || e.key != bits) {
        e.key = bits;
        e.used = true;
        double powers[2];
        WholePowers(x, 3, powers);
        e.cube = powers[0];
        e.fourth = powers[1];
    }
    cube = e.cube;
    fourth = e.fourth;
}

double Schott(const PolyCoefBlock& c, double x, bool& fault) {
    double cube = 0.0, fourth = 0.0;
    CubeAndFourth(x, cube, fourth);
    Terms t;
    t.Add(c[0]);
    t.Add(c[1] * x);
    t.Add(c[2] / x);
    t.Add(c[3] / std::pow(x, 2.0));
    t.Add(c[4] / cube);
    t.Add(c[5] / fourth);
    fault = t.fault;
    return t.sum;
}

// Stored from the highest inverse power through the constant to the highest power.
double SchottPlus(const PolyCoefBlock& c, double x, bool& fault) {
    Terms t;
    for (int k = -5; k <= 4; ++k) {
        double power = std::pow(x, static_cast<double>(k));
        if (!std::isfinite(power) || (k < 0 && x == 0.0)) t.fault = true;
        t.Add(c[k + 5] * power);
    }
    fault = t.fault;
    return t.sum;
}

// B terms first, then the C terms, in storage.
double Sellmeier(const PolyCoefBlock& c, double x, int terms, bool& fault) {
    Terms t;
    t.Add(1.0);
    for (int i = 0; i < terms; ++i) {
        double denom = x - c[terms + i];
        if (denom == 0.0) t.fault = true;
        t.Add(c[i] * x / denom);
    }
    fault = t.fault;
    return t.sum;
}

// Evaluation-only form with inverse powers of the wavelength, giving the index itself.
double InversePowerIndex(const PolyCoefBlock& c, double lambda, bool& fault) {
    Terms t;
    if (lambda == 0.0) t.fault = true;
    t.Add(c[0]);
    t.Add(c[1] / lambda);
    t.Add(c[2] / std::pow(lambda, 3.5));
    fault = t.fault;
    return t.sum;
}

// Evaluation-only form with a pole near the ultraviolet, giving the index itself.
double PoleIndex(const PolyCoefBlock& c, double x, bool& fault) {
    Terms t;
    double denom = x - 0.28;
    if (denom == 0.0) t.fault = true;
    double l = 1.0 / denom;
    t.Add(c[0]);
    t.Add(c[1] * l);
    t.Add(c[2] * std::pow(l, 2.0));
    t.Add(c[3] * x);
    t.Add(c[4] * std::pow(x, 2.0));
    t.Add(c[5] * std::pow(x, 3.0));
    fault = t.fault;
    return t.sum;
}

// The micrometre value is rounded to a 32-bit float before any formula sees it.
double LambdaOf(float wavelengthNm) {
    return static_cast<float>(static_cast<double>(wavelengthNm) * 0.001);
}

// The Schott and Sellmeier forms as above without the check of every term: a term that is not
// finite (a zero denominator included) leaves the sum not finite, so the sum alone tells.
double SchottSum(const PolyCoefBlock& c, const SweepWave& w) {
    const double x = w.x;
    double sum = 0.0;
    sum += c[0];
    sum += c[1] * x;
    sum += c[2] / x;
    sum += c[3] / std::pow(x, 2.0);
    sum += c[4] / w.cube;
    sum += c[5] / w.fourth;
    return sum;
}

template <int Terms>
double SellmeierSum(const PolyCoefBlock& c, double x) {
    double sum = 0.0;
    sum += 1.0;
    for (int i = 0; i < Terms; ++i) sum += c[i] * x / (x - c[Terms + i]);
    return sum;
}

// The index from n squared, 0 with ok 0 where there is none.
double RootOf(double v, int16_t& ok) {
    if (!std::isfinite(v) || v <= 0.0) {
        ok = 0;
        return 0.0;
    }
    ok = -1;
    return std::sqrt(v);
}

}  // namespace

SweepWave PrepareWave(float wavelengthNm) {
    SweepWave w;
    w.nm = wavelengthNm;
    w.lambda = LambdaOf(wavelengthNm);
    w.x = std::pow(w.lambda, 2.0);
    double powers[2];
    WholePowers(w.x, 3, powers);
    w.cube = powers[0];
    w.fourth = powers[1];
    return w;
}

double IndexAt(const PolyCoefBlock& coef, const SweepWave& wave, int16_t type, int16_t& ok) {
    switch (type) {
        case 1:
            return RootOf(SchottSum(coef, wave), ok);
        case 2:
            return RootOf(SellmeierSum<3>(coef, wave.x), ok);
        case 6:
            return RootOf(SellmeierSum<5>(coef, wave.x), ok);
        default:
            return IndexFromPolynomial(coef, wave.nm, type, ok);
    }
}

void IndexSweep(const PolyCoefBlock& coef, int16_t type, std::span<const SweepWave> waves,
                std::span<double> n, std::span<int16_t> ok) {
    const size_t count = waves.size();
    switch (type) {
        case 1:
            for (size_t i = 0; i < count; ++i) n[i] = RootOf(SchottSum(coef, waves[i]), ok[i]);
            break;
        case 2:
            for (size_t i = 0; i < count; ++i) {
                n[i] = RootOf(SellmeierSum<3>(coef, waves[i].x), ok[i]);
            }
            break;
        default:
            for (size_t i = 0; i < count; ++i) n[i] = IndexAt(coef, waves[i], type, ok[i]);
    }
}

void IndexSweep(const PolyCoefBlock& coef, int16_t type, std::span<const float> wavelengthsNm,
                std::span<double> n, std::span<int16_t> ok) {
    constexpr size_t kBlock = 64;
    SweepWave block[kBlock];
    for (size_t start = 0; start < wavelengthsNm.size(); start += kBlock) {
        const size_t count = std::min(kBlock, wavelengthsNm.size() - start);
        for (size_t i = 0; i < count; ++i) block[i] = PrepareWave(wavelengthsNm[start + i]);
        IndexSweep(coef, type, std::span<const SweepWave>(block, count), n.subspan(start, count),
                   ok.subspan(start, count));
    }
}

double IndexFromPolynomial(const PolyCoefBlock& coef, float wavelengthNm, int16_t type,
                           int16_t& ok) {
    ok = 0;
    const double lambda = LambdaOf(wavelengthNm);
    const double x = std::pow(lambda, 2.0);
    bool fault = false;
    double v = 0.0;

    switch (type) {
        case 4:  // Cauchy: n^2, no index below 1
            v = Cauchy(coef, x, fault);
            if (fault || !std::isfinite(v) || v < 1.0) return 0.0;
            ok = -1;
            return std::sqrt(v);
        case 7:  // index itself, no index below 1
            v = InversePowerIndex(coef, lambda, fault);
            if (fault || !std::isfinite(v) || v < 1.0) return 0.0;
            ok = -1;
            return v;
        case 1:
            v = Schott(coef, x, fault);
            break;
        case 3:
            v = SchottPlus(coef, x, fault);
            break;
        case 2:
            v = Sellmeier(coef, x, 3, fault);
            break;
        case 6:
            v = Sellmeier(coef, x, 5, fault);
            break;
        case 8:  // index itself
            v = PoleIndex(coef, x, fault);
            if (fault || !std::isfinite(v) || v <= 0.0) return 0.0;
            ok = -1;
            return v;
        default:
            return 0.0;
    }
    if (fault || !std::isfinite(v) || v <= 0.0) return 0.0;
    ok = -1;
    return std::sqrt(v);
}

std::string PolyTypeName(int16_t type) {
    switch (type) {
        case 1:
            return "Schott";
        case 2:
            return "Sellmeier";
        case 3:
            return "Schott Plus";
        case 4:
            return "Cauchy";
        case 6:
            return "Sellmeier Plus";
        default:
            return {};
    }
}

int16_t PolyMinPoints(int16_t type) {
    switch (type) {
        case 1:
        case 2:
            return 6;
        case 3:
        case 6:
            return 12;
        case 4:
            return 3;
        default:
            return 0;
    }
}

int16_t PolyTypeFromShortName(const std::string& shortName) {
    if (shortName == "Sch") return 1;
    if (shortName == "Sel") return 2;
    if (shortName == "Scx") return 3;
    if (shortName == "Cau") return 4;
    return 0;
}

}  // namespace ostrel
