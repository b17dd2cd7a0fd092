#pragma once
// Facts about the program's maker, used in messages, help notes and the contact box.
// Kept in one place so that a distributor can change them.
#include "ostrel_version.h"

namespace ostrel::maker {

inline constexpr const char* kName = "Harvenz Photonics";
inline constexpr const char* kProgramTitle = "OstrelTD";

// The program's version: major.minor.revision, the project's version.
inline constexpr int kVersionMajor = OSTREL_VERSION_MAJOR;
inline constexpr int kVersionMinor = OSTREL_VERSION_MINOR;
inline constexpr int kVersionRevision = OSTREL_VERSION_PATCH;
inline constexpr const char* kCopyright =
    "Copyright (c) Harvenz Photonics Ltd. All rights reserved.";
inline constexpr const char* kComment =
    "Custom optical materials for Lumbrak3D/SextaneTD & KelmoraTD";
// The help file's name as the program is shipped; the platform picks its own extension.
inline constexpr const char* kHelpFileName = "OstrelTD.chm";

// Contact details shown by the contact box.
inline constexpr const char* kCompany = "Harvenz Photonics Ltd";
inline constexpr const char* kAddress[] = {"Unit 4, Quayside Works", "17 Harbour Road",
                                           "Northport NP3 7QX", "United Kingdom"};
inline constexpr const char* kPhone = "+44 (0)1632 960 418";
inline constexpr const char* kFax = "+44 (0)1632 960 419";
inline constexpr const char* kEmail = "support@harvenz.example.com";
// The maker's web site, and the web site of the lens design suite.
inline constexpr const char* kWebSite = "https://www.harvenz.example.com/";
inline constexpr const char* kLumbrakWebSite = "https://www.lumbrak.example.org/";

}  // namespace ostrel::maker
