#pragma once
// Facts about the program's maker, used in messages, help notes and the contact box.
// Kept in one place so that a distributor can change them.
namespace ostrel::maker {

inline constexpr const char* kName = "Ostrel Software";
inline constexpr const char* kProgramTitle = "OstrelTD";

}  // namespace ostrel::maker
