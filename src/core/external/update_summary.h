#pragma once
// What a command did to one sibling program, and the one line that tells the user:
// "Lumbrak3D: 3 added, 1 replaced. KelmoraTD: 4 added." Each command that changes a
// sibling ends with such a line (the help line of the windows, stderr of the command line).
#include <string>
#include <vector>

namespace ostrel {

inline constexpr const char* kSummaryLumbrak = "Lumbrak3D";
inline constexpr const char* kSummaryKelmora = "KelmoraTD";

struct UpdateCounts {
    int added = 0;
    int replaced = 0;
    int kept = 0;  // already there and left as it was
    int removed = 0;
    int archived = 0;
    int restored = 0;
    bool failed = false;  // the target reported a failure (its own message said how)
    bool busy = false;    // another program held the database: nothing was tried
    bool absent = false;  // the program is not installed: nothing was tried
};

// "KelmoraTD: 4 added, 1 replaced." Counts of zero are left out; with none at all the
// part reads "nothing changed". A failure reads "failed" before any counts, a database
// held by another program "in use by another program", and an absent program "not found".
std::string SummaryPart(const std::string& program, const UpdateCounts& counts);

// The parts joined by a blank.
std::string JoinSummary(const std::vector<std::string>& parts);

}  // namespace ostrel
