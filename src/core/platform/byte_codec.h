#pragma once
// Little-endian field access at fixed offsets of a file image. Records are never cast to
// bytes: every field is read and written explicitly at its offset.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "core/platform/fixed_text.h"

namespace ostrel {

static_assert(std::endian::native == std::endian::little,
              "file images are little endian; add byte swapping for this host");

class ByteWriter {
  public:
    ByteWriter(unsigned char* image, size_t size) : image_(image), size_(size) {}

    template <typename T>
    requires std::is_arithmetic_v<T>
    void Put(size_t offset, T value) { std::memcpy(image_ + offset, &value, sizeof(T)); }
    template <typename T, size_t K>
    void PutArray(size_t offset, const T (&values)[K]) {
        for (size_t i = 0; i < K; ++i) Put(offset + i * sizeof(T), values[i]);
    }
    template <size_t N>
    void PutText(size_t offset, const FixedText<N>& text) {
        std::memcpy(image_ + offset, text.data(), N);
    }
    void PutBytes(size_t offset, const unsigned char* bytes, size_t count) {
        std::memcpy(image_ + offset, bytes, count);
    }
    size_t size() const { return size_; }

  private:
    unsigned char* image_;
    size_t size_;
};

class ByteReader {
  public:
    ByteReader(const unsigned char* image, size_t size) : image_(image), size_(size) {}

    template <typename T>
    requires std::is_arithmetic_v<T>
    void Get(size_t offset, T& value) const { std::memcpy(&value, image_ + offset, sizeof(T)); }
    template <typename T, size_t K>
    void GetArray(size_t offset, T (&values)[K]) const {
        for (size_t i = 0; i < K; ++i) Get(offset + i * sizeof(T), values[i]);
    }
    template <size_t N>
    void GetText(size_t offset, FixedText<N>& text) const {
        std::memcpy(text.data(), image_ + offset, N);
    }
    void GetBytes(size_t offset, unsigned char* bytes, size_t count) const {
        std::memcpy(bytes, image_ + offset, count);
    }
    size_t size() const { return size_; }

  private:
    const unsigned char* image_;
    size_t size_;
};

}  // namespace ostrel
