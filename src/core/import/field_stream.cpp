#include "core/import/field_stream.h"

#include <cmath>
#include <limits>

#include "core/import/import_text.h"

namespace ostrel {

bool FieldStream::Fail(std::string what) {
    error_ = std::move(what);
    return false;
}

bool FieldStream::ReadLine(std::string_view& line) {
    rest_ = {};
    inLine_ = false;
    if (next_ >= lines_.size()) return Fail("unexpected end of file");
    line = lines_[next_++];
    return true;
}

bool FieldStream::Field(std::string& text) {
    // Find a line with something left on it.
    for (;;) {
        size_t i = 0;
        while (i < rest_.size() && (rest_[i] == ' ' || rest_[i] == '\t')) ++i;
        rest_.remove_prefix(i);
        if (!rest_.empty()) break;
        if (next_ >= lines_.size()) return Fail("unexpected end of file");
        rest_ = lines_[next_++];
        inLine_ = true;
    }
    if (rest_[0] == '"') {
        const size_t close = rest_.find('"', 1);
        if (close == std::string_view::npos) {
            text.assign(rest_.substr(1));
            rest_ = {};
            return true;
        }
        text.assign(rest_.substr(1, close - 1));
        rest_.remove_prefix(close + 1);
        // Anything up to the next comma belongs to no field.
        const size_t comma = rest_.find(',');
        rest_ = comma == std::string_view::npos ? std::string_view{} : rest_.substr(comma + 1);
        return true;
    }
    const size_t comma = rest_.find(',');
    std::string_view item = comma == std::string_view::npos ? rest_ : rest_.substr(0, comma);
    rest_ = comma == std::string_view::npos ? std::string_view{} : rest_.substr(comma + 1);
    while (!item.empty() && (item.back() == ' ' || item.back() == '\t')) item.remove_suffix(1);
    text.assign(item);
    return true;
}

bool FieldStream::Number(double& value) {
    std::string text;
    if (!Field(text)) return false;
    if (text.find_first_not_of(" \t") == std::string::npos) {
        value = 0;
        return true;
    }
    if (!ParseNumber(text, value)) return Fail(NoNumberReason(text));
    return true;
}

bool FieldStream::Single(float& value) {
    double v = 0;
    if (!Number(v)) return false;
    if (std::fabs(v) > std::numeric_limits<float>::max()) return Fail("number out of range");
    value = static_cast<float>(v);
    return true;
}

bool FieldStream::Integer(int16_t& value) {
    double v = 0;
    if (!Number(v)) return false;
    if (!ToInt16(v, value)) return Fail("number out of range");
    return true;
}

bool FieldStream::Long(int32_t& value) {
    double v = 0;
    if (!Number(v)) return false;
    if (!ToInt32(v, value)) return Fail("number out of range");
    return true;
}

}  // namespace ostrel
