#pragma once
// Whole powers of a double with the very bits the C library's pow gives, at a fraction of its
// cost. The power is worked out exactly enough (a head and a tail, about 100 bits) to know the
// nearest double; pow's result is that nearest double except where the exact value lies
// within a small fraction of an ulp of a rounding midpoint, and only there is pow itself
// called.
#include <span>

namespace ostrel {

// std::pow(x, k) for a whole k.
double WholePower(double x, int k);

// out[i] = std::pow(x, lowest + i) for every i of out.
void WholePowers(double x, int lowest, std::span<double> out);

// out[i] = std::pow(lambda, 2.0 * (lowest + i)): the powers of lambda squared taken exactly,
// not of lambda squared rounded to a double.
void EvenPowers(double lambda, int lowest, std::span<double> out);

// Many bases at once (at most 160; more go to pow one by one): out holds count rows of
// bases.size() entries, row r with std::pow(bases[i], lowest + r) at entry i.
void WholePowers(std::span<const double> bases, int lowest, int count, std::span<double> out);

// The same for the even powers of many lambdas: std::pow(lambdas[i], 2.0 * (lowest + r)).
void EvenPowers(std::span<const double> lambdas, int lowest, int count, std::span<double> out);

}  // namespace ostrel
