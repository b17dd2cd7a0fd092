#include "core/optics/whole_power.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#include <immintrin.h>
#endif

#if defined(__GNUC__)
#define OSTREL_INLINE [[gnu::always_inline]] inline
#else
#define OSTREL_INLINE inline
#endif

namespace ostrel {

namespace {

// pow itself, with an exponent the compiler cannot see: a constant 2 would otherwise become
// x * x, which pow does not always equal.
double LibraryPow(double x, double y) {
#if defined(__GNUC__)
    asm("" : "+m"(y));
#endif
    return std::pow(x, y);
}

// A value as head + tail, |tail| at most half an ulp of head. Left unset when declared: the
// tables of powers below are filled only as far as they are used.
struct Pair {
    double hi;
    double lo;
};

OSTREL_INLINE Pair QuickTwoSum(double a, double b) {
    const double s = a + b;
    return {s, b - (s - a)};
}

// The exact product of two doubles, valid far from overflow and underflow: by fused
// multiply-add where the processor has it, else by Dekker's splitting. Both give the same pair.
template <bool Fused>
OSTREL_INLINE Pair TwoProduct(double a, double b) {
    const double p = a * b;
    if constexpr (Fused) {
        return {p, std::fma(a, b, -p)};
    } else {
        constexpr double kSplit = 134217729.0;  // 2^27 + 1
        const double ca = kSplit * a;
        const double ah = ca - (ca - a);
        const double al = a - ah;
        const double cb = kSplit * b;
        const double bh = cb - (cb - b);
        const double bl = b - bh;
        return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
    }
}

template <bool Fused>
OSTREL_INLINE Pair Times(const Pair& a, const Pair& b) {
    Pair p = TwoProduct<Fused>(a.hi, b.hi);
    p.lo += a.hi * b.lo + a.lo * b.hi;
    return QuickTwoSum(p.hi, p.lo);
}

template <bool Fused>
OSTREL_INLINE Pair Reciprocal(const Pair& b) {
    const double r = 1.0 / b.hi;
    const Pair p = TwoProduct<Fused>(r, b.hi);
    const double rest = ((1.0 - p.hi) - p.lo) - r * b.lo;
    return QuickTwoSum(r, r * rest);
}

// Whether pow is certain to give v.hi. pow's result lies within 0.52 ulp of the exact value
// (0.54 without fused multiply-add), and for results between 2^-64 and 2^64 the part of that
// excess over half an ulp is below 0.014 ulp; a value more than 1/64 ulp from every midpoint
// therefore rounds the same in pow as exactly. The error of v itself is near 2^-99 relative.
// (Checked against pow for 760 million powers x^k, |k| <= 10, of wavelengths and their
// squares: the 24 million that lie between 1/64 and 1/32 ulp from a midpoint all agree.)
OSTREL_INLINE bool Settled(const Pair& v) {
    const double a = std::fabs(v.hi);
    if (!(a >= 0x1p-64 && a <= 0x1p64)) return false;
    if (v.lo == 0.0) return true;
    uint64_t bits = 0;
    std::memcpy(&bits, &a, sizeof bits);
    // Just above a power of two the ulp below is half as wide; such values go to pow.
    if ((bits & 0x000FFFFFFFFFFFFFull) == 0) return false;
    const uint64_t ulpBits = (bits & 0x7FF0000000000000ull) - (uint64_t{52} << 52);
    double ulp = 0.0;
    std::memcpy(&ulp, &ulpBits, sizeof ulp);
    return std::fabs(v.lo) <= ulp * (31.0 / 64.0);
}

// Settled in whole-number operations only, for lanes side by side: 1 where pow must be
// asked, else 0. The order of the bit patterns of non-negative doubles is the order of their
// values, and 31/64 of an ulp of a value with exponent field e has the pattern of
// 1.9375 * 2^(e - 1023 - 54). Signed, as vector units compare.
OSTREL_INLINE int64_t UnsettledLane(double hi, double lo) {
    constexpr int64_t kMagnitude = 0x7FFFFFFFFFFFFFFF;
    const int64_t bits = std::bit_cast<int64_t>(hi) & kMagnitude;
    const int64_t loBits = std::bit_cast<int64_t>(lo) & kMagnitude;
    const int64_t field = bits >> 52;
    const int64_t limit = ((field - 54) << 52) | 0x000F000000000000;
    const int64_t inRange = (field >= 1023 - 64) & (field < 1023 + 64);
    const int64_t offPowerOfTwo = (bits & 0x000FFFFFFFFFFFFF) != 0;
    return 1 - (inRange & ((loBits == 0) | (offPowerOfTwo & (loBits <= limit))));
}

bool Usable(double x) {
    return x >= 0x1p-500 && x <= 0x1p500;
}

constexpr int kMostPower = 16;

void AllFromPow(int lowest, std::span<double> out, double powBase, double scale) {
    for (size_t i = 0; i < out.size(); ++i) {
        out[i] = LibraryPow(powBase, scale * static_cast<double>(lowest + static_cast<int>(i)));
    }
}

// out[i] = base^(lowest + i), each settled or taken from pow(powBase, scale * exponent). Each
// power is the product of two lower ones (x^k = x^(k/2) x^(k - k/2)), so that the products
// do not wait on one another in a long chain.
template <bool Fused>
OSTREL_INLINE void PowersOf(const Pair& base, int lowest, std::span<double> out, double powBase,
                            double scale) {
    const int highest = lowest + static_cast<int>(out.size()) - 1;
    if (highest > kMostPower || lowest < -kMostPower) {
        AllFromPow(lowest, out, powBase, scale);
        return;
    }
    Pair up[kMostPower + 1];
    Pair down[kMostPower + 1];
    up[1] = base;
    for (int k = 2; k <= highest; ++k) up[k] = Times<Fused>(up[k / 2], up[k - k / 2]);
    if (lowest <= -1) {
        down[1] = Reciprocal<Fused>(base);
        for (int k = 2; k <= -lowest; ++k) down[k] = Times<Fused>(down[k / 2], down[k - k / 2]);
    }
    for (int k = lowest; k <= highest; ++k) {
        double& o = out[static_cast<size_t>(k - lowest)];
        if (k == 0) {
            o = 1.0;
            continue;
        }
        const Pair& v = k > 0 ? up[k] : down[-k];
        o = Settled(v) ? v.hi : LibraryPow(powBase, scale * static_cast<double>(k));
    }
}

// Many bases at once, in blocks of lanes the compiler can work side by side: out holds one row
// per exponent, row r with the power lowest + r of every base. powBase and scale say what pow
// is asked where a lane is not settled.
constexpr size_t kLanes = 8;

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
// UnsettledLane for the eight lanes at once, one bit a lane, four lanes to a register.
__attribute__((target("avx2"))) inline uint64_t UnsettledMask(const double* hi, const double* lo,
                                                              const int64_t* unusable) {
    const __m256i magnitude = _mm256_set1_epi64x(0x7FFFFFFFFFFFFFFF);
    const __m256i mantissa = _mm256_set1_epi64x(0x000FFFFFFFFFFFFF);
    const __m256i zero = _mm256_setzero_si256();
    uint64_t mask = 0;
    for (size_t h = 0; h < kLanes; h += 4) {
        const __m256i bits =
            _mm256_and_si256(_mm256_castpd_si256(_mm256_loadu_pd(hi + h)), magnitude);
        const __m256i loBits =
            _mm256_and_si256(_mm256_castpd_si256(_mm256_loadu_pd(lo + h)), magnitude);
        const __m256i field = _mm256_srli_epi64(bits, 52);
        const __m256i limit =
            _mm256_or_si256(_mm256_slli_epi64(_mm256_sub_epi64(field, _mm256_set1_epi64x(54)), 52),
                            _mm256_set1_epi64x(0x000F000000000000));
        const __m256i inRange =
            _mm256_and_si256(_mm256_cmpgt_epi64(field, _mm256_set1_epi64x(1023 - 65)),
                             _mm256_cmpgt_epi64(_mm256_set1_epi64x(1023 + 64), field));
        const __m256i powerOfTwo = _mm256_cmpeq_epi64(_mm256_and_si256(bits, mantissa), zero);
        const __m256i beyond = _mm256_cmpgt_epi64(loBits, limit);
        // Settled: in range, and the tail zero or (off a power of two and within the limit).
        const __m256i settled = _mm256_and_si256(
            inRange, _mm256_or_si256(_mm256_cmpeq_epi64(loBits, zero),
                                     _mm256_andnot_si256(_mm256_or_si256(powerOfTwo, beyond),
                                                         _mm256_set1_epi64x(-1))));
        const __m256i unusableLanes = _mm256_cmpgt_epi64(
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(unusable + h)), zero);
        const __m256i ask =
            _mm256_or_si256(_mm256_andnot_si256(settled, _mm256_set1_epi64x(-1)), unusableLanes);
        mask |= static_cast<uint64_t>(_mm256_movemask_pd(_mm256_castsi256_pd(ask))) << h;
    }
    return mask;
}
#else
inline uint64_t UnsettledMask(const double* hi, const double* lo, const int64_t* unusable) {
    uint64_t ask = 0;
    for (size_t j = 0; j < kLanes; ++j) {
        ask |= static_cast<uint64_t>(unusable[j] | UnsettledLane(hi[j], lo[j])) << j;
    }
    return ask;
}
#endif

template <bool Fused>
OSTREL_INLINE void MulLanes(const double* __restrict ah, const double* __restrict al,
                            const double* __restrict bh, const double* __restrict bl,
                            double* __restrict ch, double* __restrict cl) {
    for (size_t j = 0; j < kLanes; ++j) {
        Pair p = TwoProduct<Fused>(ah[j], bh[j]);
        p.lo += ah[j] * bl[j] + al[j] * bh[j];
        const Pair v = QuickTwoSum(p.hi, p.lo);
        ch[j] = v.hi;
        cl[j] = v.lo;
    }
}

template <bool Fused>
OSTREL_INLINE void LanePowers(std::span<const Pair> bases, std::span<const double> powBase,
                              double scale, int lowest, int count, std::span<double> out) {
    const int highest = lowest + count - 1;
    const size_t n = bases.size();
    double uh[kMostPower + 1][kLanes], ul[kMostPower + 1][kLanes];
    double dh[kMostPower + 1][kLanes], dl[kMostPower + 1][kLanes];
    int64_t unusable[kLanes];
    for (size_t start = 0; start < n; start += kLanes) {
        const size_t lanes = std::min(kLanes, n - start);
        for (size_t j = 0; j < kLanes; ++j) {
            const bool usable = j < lanes && Usable(bases[start + j].hi);
            unusable[j] = usable ? 0 : 1;
            uh[1][j] = usable ? bases[start + j].hi : 1.0;
            ul[1][j] = usable ? bases[start + j].lo : 0.0;
        }
        for (int k = 2; k <= highest; ++k) {
            MulLanes<Fused>(uh[k / 2], ul[k / 2], uh[k - k / 2], ul[k - k / 2], uh[k], ul[k]);
        }
        if (lowest <= -1) {
            for (size_t j = 0; j < kLanes; ++j) {
                const Pair r = Reciprocal<Fused>({uh[1][j], ul[1][j]});
                dh[1][j] = r.hi;
                dl[1][j] = r.lo;
            }
            for (int k = 2; k <= -lowest; ++k) {
                MulLanes<Fused>(dh[k / 2], dl[k / 2], dh[k - k / 2], dl[k - k / 2], dh[k], dl[k]);
            }
        }
        for (int k = lowest; k <= highest; ++k) {
            double* row = out.data() + static_cast<size_t>(k - lowest) * n + start;
            if (k == 0) {
                std::fill_n(row, lanes, 1.0);
                continue;
            }
            const double* hi = k > 0 ? uh[k] : dh[-k];
            const double* lo = k > 0 ? ul[k] : dl[-k];
            uint64_t ask = 0;
            if constexpr (Fused) {
                ask = UnsettledMask(hi, lo, unusable);
            } else {
                for (size_t j = 0; j < kLanes; ++j) {
                    ask |= static_cast<uint64_t>(unusable[j] | UnsettledLane(hi[j], lo[j])) << j;
                }
            }
            ask &= (uint64_t{1} << lanes) - 1;
            // A whole block is copied with a fixed count, which stays a few vector moves.
            if (lanes == kLanes) {
                for (size_t j = 0; j < kLanes; ++j) row[j] = hi[j];
            } else {
                for (size_t j = 0; j < lanes; ++j) row[j] = hi[j];
            }
            for (; ask != 0; ask &= ask - 1) {
                const auto j = static_cast<size_t>(std::countr_zero(ask));
                row[j] = LibraryPow(powBase[start + j], scale * double(k));
            }
        }
    }
}

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
__attribute__((target("avx2,fma"))) void LanePowersFused(std::span<const Pair> bases,
                                                         std::span<const double> powBase,
                                                         double scale, int lowest, int count,
                                                         std::span<double> out) {
    LanePowers<true>(bases, powBase, scale, lowest, count, out);
}

__attribute__((target("fma"))) void PowersOfFused(const Pair& base, int lowest,
                                                  std::span<double> out, double powBase,
                                                  double scale) {
    PowersOf<true>(base, lowest, out, powBase, scale);
}

bool HasFused() {
    static const bool fused = __builtin_cpu_supports("fma") && __builtin_cpu_supports("avx2");
    return fused;
}

void Powers(const Pair& base, int lowest, std::span<double> out, double powBase, double scale) {
    if (HasFused()) {
        PowersOfFused(base, lowest, out, powBase, scale);
    } else {
        PowersOf<false>(base, lowest, out, powBase, scale);
    }
}

void ManyPowers(std::span<const Pair> bases, std::span<const double> powBase, double scale,
                int lowest, int count, std::span<double> out) {
    if (HasFused()) {
        LanePowersFused(bases, powBase, scale, lowest, count, out);
    } else {
        LanePowers<false>(bases, powBase, scale, lowest, count, out);
    }
}
#else
void Powers(const Pair& base, int lowest, std::span<double> out, double powBase, double scale) {
    PowersOf<false>(base, lowest, out, powBase, scale);
}

void ManyPowers(std::span<const Pair> bases, std::span<const double> powBase, double scale,
                int lowest, int count, std::span<double> out) {
    LanePowers<false>(bases, powBase, scale, lowest, count, out);
}
#endif

// The many-bases forms take at most this many bases in one go.
constexpr size_t kBatch = 160;

}  // namespace

double WholePower(double x, int k) {
    double v = 0.0;
    WholePowers(x, k, {&v, 1});
    return v;
}

void WholePowers(double x, int lowest, std::span<double> out) {
    if (!Usable(x)) {
        AllFromPow(lowest, out, x, 1.0);
        return;
    }
    Powers({x, 0.0}, lowest, out, x, 1.0);
}

void EvenPowers(double lambda, int lowest, std::span<double> out) {
    if (!Usable(lambda)) {
        AllFromPow(lowest, out, lambda, 2.0);
        return;
    }
    const Pair square = TwoProduct<false>(lambda, lambda);
    Powers(square, lowest, out, lambda, 2.0);
}

}  // namespace ostrel

namespace ostrel {

void WholePowers(std::span<const double> bases, int lowest, int count, std::span<double> out) {
    const int highest = lowest + count - 1;
    const size_t n = bases.size();
    if (n > kBatch || highest > kMostPower || lowest < -kMostPower) {
        for (size_t i = 0; i < n; ++i) {
            for (int r = 0; r < count; ++r) {
                out[static_cast<size_t>(r) * n + i] =
                    LibraryPow(bases[i], static_cast<double>(lowest + r));
            }
        }
        return;
    }
    Pair pairs[kBatch];
    for (size_t i = 0; i < n; ++i) pairs[i] = {bases[i], 0.0};
    ManyPowers({pairs, n}, bases, 1.0, lowest, count, out);
}

void EvenPowers(std::span<const double> lambdas, int lowest, int count, std::span<double> out) {
    const int highest = lowest + count - 1;
    const size_t n = lambdas.size();
    if (n > kBatch || highest > kMostPower || lowest < -kMostPower) {
        for (size_t i = 0; i < n; ++i) {
            for (int r = 0; r < count; ++r) {
                out[static_cast<size_t>(r) * n + i] =
                    LibraryPow(lambdas[i], 2.0 * static_cast<double>(lowest + r));
            }
        }
        return;
    }
    Pair pairs[kBatch];
    for (size_t i = 0; i < n; ++i) {
        // A lane whose lambda is out of range is sent to pow by its square's range as well.
        pairs[i] = Usable(lambdas[i]) ? TwoProduct<false>(lambdas[i], lambdas[i])
                                      : Pair{std::nan(""), 0.0};
    }
    ManyPowers({pairs, n}, lambdas, 2.0, lowest, count, out);
}

}  // namespace ostrel
