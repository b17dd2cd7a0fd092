#pragma once
// Small dense matrices indexed from 1, and the in-place inversion used by the linear fits
// and the quadratic fit.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ostrel {

// A rows-by-columns matrix whose elements are reached as m(i, j) with i, j from 1. Up to 100
// elements (the fits' systems) are held in place, larger matrices on the heap.
template <typename T>
class Matrix {
  public:
    Matrix() = default;
    Matrix(int rows, int cols) : rows_(rows), cols_(cols) {
        const std::size_t size = std::size_t(rows) * cols;
        if (size > kInPlace) large_.assign(size, T{});
    }

    T& operator()(int i, int j) { return Data()[std::size_t(i - 1) * cols_ + (j - 1)]; }
    const T& operator()(int i, int j) const { return Data()[std::size_t(i - 1) * cols_ + (j - 1)]; }
    int rows() const { return rows_; }
    int cols() const { return cols_; }

  private:
    static constexpr std::size_t kInPlace = 100;
    T* Data() { return large_.empty() ? small_.data() : large_.data(); }
    const T* Data() const { return large_.empty() ? small_.data() : large_.data(); }

    int rows_ = 0;
    int cols_ = 0;
    std::array<T, kInPlace> small_{};
    std::vector<T> large_;
};

// Why an inversion stopped.
enum class InvertFault {
    None,
    Singular,    // a column was chosen twice (the routine's own failure return)
    ZeroPivot,   // a pivot of exactly zero: the division cannot be done
    Arithmetic,  // an element overflowed during the elimination
};

// Gauss-Jordan inversion in place of the n-by-n matrix a. There is no search for the
// largest pivot: the diagonal is used from a(n,n) up to a(1,1). Returns -1 on success and
// 0 on failure; fault (when given) tells the failures apart. determinant receives a
// running product whose sign changes at every pass; nothing relies on its value.
int16_t MatrixInvert(Matrix<double>& a, double& determinant, int n, InvertFault* fault = nullptr);

}  // namespace ostrel
