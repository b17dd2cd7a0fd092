#pragma once
// Reading a text file of the program's own family two ways at once: whole lines (for
// headings) and comma-separated fields that run on over line ends (quoted texts and bare
// numbers), the way the GLZ, GLA and GLS files are written.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

class FieldStream {
  public:
    explicit FieldStream(std::vector<std::string_view> lines) : lines_(std::move(lines)) {}

    // True when no line is left to read (the rest of the current line aside).
    bool AtEnd() const { return next_ >= lines_.size() && rest_.empty(); }
    // True when the line last read was the file's last line.
    bool OnLastLine() const { return next_ >= lines_.size(); }
    // 1-based number of the line last read (0 before the first).
    size_t LineNumber() const { return next_; }
    size_t LineCount() const { return lines_.size(); }

    // The next whole line; what was left of the current line is passed over. False at end.
    bool ReadLine(std::string_view& line);
    // Drops the rest of the current line.
    void EndLine() { rest_ = {}; }

    // The next field: a quoted text (without its quotes) or a bare item trimmed of blanks.
    // Empty lines are passed over. False at end of file.
    bool Field(std::string& text);
    // The next field as text (code-page bytes).
    bool Text(std::string& text) { return Field(text); }
    // The next field as a number; an empty field reads 0, anything else that is no number
    // fails.
    bool Number(double& value);
    bool Single(float& value);
    bool Integer(int16_t& value);
    bool Long(int32_t& value);

    // What went wrong at the last failure, for messages.
    const std::string& error() const { return error_; }

  private:
    bool Fail(std::string what);

    std::vector<std::string_view> lines_;
    size_t next_ = 0;
    std::string_view rest_;
    bool inLine_ = false;
    std::string error_;
};

}  // namespace ostrel
