#include "cli/arguments.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <ostream>

#include "core/external/demo_installation.h"
#include "core/material/name_check.h"
#include "core/platform/file_io.h"
#include "core/platform/text.h"

namespace ostrel::cli {

bool ParseFiniteNumber(const std::string& text, double& value) {
    std::string_view s = VbTrim(text);
    if (!s.empty() && s.front() == '+') s.remove_prefix(1);
    if (s.empty()) return false;
    const auto res = std::from_chars(s.data(), s.data() + s.size(), value);
    return res.ec == std::errc() && res.ptr == s.data() + s.size() && std::isfinite(value);
}

const CLI::Validator& FiniteNumber() {
    static const CLI::Validator v(
        [](std::string& text) -> std::string {
            double value = 0;
            return ParseFiniteNumber(text, value) ? std::string()
                                                  : "\"" + text + "\" is no finite number";
        },
        "NUMBER", "FiniteNumber");
    return v;
}

const CLI::Validator& PositiveNumber() {
    static const CLI::Validator v(
        [](std::string& text) -> std::string {
            double value = 0;
            if (!ParseFiniteNumber(text, value)) return "\"" + text + "\" is no finite number";
            return value > 0 ? std::string() : text + " is refused: the value must be above 0";
        },
        "NUMBER > 0", "PositiveNumber");
    return v;
}

const CLI::Validator& PolytypeCode() {
    static const CLI::Validator v(
        [](std::string& text) -> std::string {
            double value = 0;
            if (ParseFiniteNumber(text, value)) {
                for (int code : {1, 2, 3, 4, 6, 7, 8}) {
                    if (value == code) return {};
                }
            }
            return "\"" + text +
                   "\" is no dispersion form: 1 Schott, 2 Sellmeier, 3 Schott Plus, 4 Cauchy, "
                   "6 Sellmeier Plus, 7 or 8";
        },
        "1|2|3|4|6|7|8", "PolytypeCode");
    return v;
}

const CLI::Validator& GlassIdOrAll() {
    static const CLI::Validator v(
        [](std::string& text) -> std::string {
            if (text == "ALL" || text == "all") return {};
            double value = 0;
            if (ParseFiniteNumber(text, value) && value >= 1 && value == std::floor(value)) {
                return {};
            }
            return "\"" + text + "\" is no GlassID (a whole number from 1) and not ALL";
        },
        "ID|ALL", "GlassIdOrAll");
    return v;
}

const CLI::Validator& NotAFolder() {
    static const CLI::Validator v(
        [](std::string& text) -> std::string {
            std::error_code ec;
            if (std::filesystem::is_directory(text, ec)) {
                return text + " is a folder, not a file";
            }
            return {};
        },
        "FILE", "NotAFolder");
    return v;
}

const CLI::Validator& StoredName() {
    static const CLI::Validator v(
        [](std::string& text) -> std::string {
            if (VbTrim(text).empty()) return "a name or source cannot be blank";
            const std::string refusal = NameRefusal(text);
            return refusal.empty() ? std::string() : "\"" + text + "\" is refused. " + refusal;
        },
        "TEXT", "StoredName");
    return v;
}

const CLI::Validator& DemoCatalogueFile() {
    static const CLI::Validator v(
        [](std::string& path) -> std::string {
            std::string text;
            FileError error;
            if (!ReadWholeFile(path, text, error)) {
                return "the demo catalogue could not be read: " + error.message;
            }
            std::vector<DemoGlass> glasses;
            std::string message;
            if (!ParseDemoCatalogue(text, glasses, message)) return path + ": " + message;
            if (glasses.empty()) return path + ": the demo catalogue holds no glass";
            return {};
        },
        "FILE", "DemoCatalogueFile");
    return v;
}

bool RangeInOrder(const std::vector<int>& range, std::ostream& err) {
    if (range.empty()) return true;
    const int first = range.front();
    const int last = range.back();
    if (first >= 1 && last >= first) return true;
    err << (first < 1 ? "The range must start at 1 or above: " : "The range is reversed: ") << first
        << " to " << last << '\n';
    return false;
}

bool RangeInside(int first, int last, int count, const std::string& what, const std::string& among,
                 std::ostream& err) {
    if (!RangeInOrder({first, last}, err)) return false;
    if (last <= count) return true;
    err << "No " << what << ' ' << first << " to " << last << ' ' << among << ' ' << count << '\n';
    return false;
}

}  // namespace ostrel::cli
