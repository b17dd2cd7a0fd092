#pragma once
// A fixed-width text field as it stands on file: exactly N bytes of Windows-1252,
// blank padded on the right, never terminated. Bytes are kept exactly as read, NUL
// bytes included, so that a record loaded and saved again is unchanged.
#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "core/platform/codepage.h"
#include "core/platform/text.h"

namespace ostrel {

template <size_t N>
class FixedText {
  public:
    static constexpr size_t kSize = N;

    FixedText() { bytes_.fill(' '); }
    explicit FixedText(std::string_view utf8) { Set(utf8); }

    // Sets from UTF-8: converted to the code page, cut to N characters, blank padded.
    void Set(std::string_view utf8) { SetRaw(Utf8ToCp1252(utf8)); }

    // Sets from code-page bytes, cut to N and blank padded.
    void SetRaw(std::string_view bytes) {
        bytes_.fill(' ');
        std::copy_n(bytes.begin(), std::min(bytes.size(), N), bytes_.begin());
    }

    void Blank() { bytes_.fill(' '); }
    void Zero() { bytes_.fill('\0'); }

    // The field trimmed of blanks at both ends, as UTF-8. NUL bytes stay in the text.
    std::string Text() const { return Cp1252ToUtf8(VbTrim(Raw())); }
    // The whole field as UTF-8, padding included.
    std::string Untrimmed() const { return Cp1252ToUtf8(Raw()); }

    std::string_view Raw() const { return {bytes_.data(), N}; }
    char* data() { return bytes_.data(); }
    const char* data() const { return bytes_.data(); }

    bool HasNul() const { return std::find(bytes_.begin(), bytes_.end(), '\0') != bytes_.end(); }
    bool IsBlank() const { return VbTrim(Raw()).empty(); }

    bool operator==(const FixedText&) const = default;

  private:
    std::array<char, N> bytes_;
};

}  // namespace ostrel
