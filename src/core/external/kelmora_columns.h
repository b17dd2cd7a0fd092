#pragma once
// What the glass database's files share: the names of its column groups, the values put
// into a row or a criterion, and the error set on a failure.
#include <cstdint>
#include <string>
#include <utility>

#include "core/platform/database.h"

namespace ostrel::kelmora_columns {

inline constexpr const char* kStatusColumn = "Status";

inline const char* const kOtherNumberColumns[] = {
    "A3070",   "A20300",  "Tg",    "T1013", "T1076", "Cp", "lambda", "EMod",
    "Poisson", "Torsion", "Knoop", "CR",    "FR",    "SR", "AR",     "PR"};
inline const char* const kDerivedColumns[] = {"nd",      "vd",  "nF_NC", "Ne", "Ve",
                                              "nfd_ncd", "PCs", "PdC",   "PgF"};
inline const char* const kDndtColumns[] = {"dndt_lin", "dndt_D0", "dndt_D1",     "dndt_D2",
                                           "dndt_E0",  "dndt_E1", "dndt_LamdaTK"};

inline DbValue Int(int64_t v) {
    return DbValue{v};
}
inline DbValue Str(std::string s) {
    return DbValue{std::move(s)};
}

inline bool Fail(DbError& error, int code, std::string message) {
    error.code = code;
    error.message = std::move(message);
    return false;
}

}  // namespace ostrel::kelmora_columns
