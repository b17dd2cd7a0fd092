#include "core/external/update_summary.h"

namespace ostrel {

std::string SummaryPart(const std::string& program, const UpdateCounts& c) {
    if (c.absent) return program + ": not found.";
    if (c.busy) return program + ": in use by another program.";
    std::string body;
    auto add = [&body](int n, const char* what) {
        if (n == 0) return;
        if (!body.empty()) body += ", ";
        body += std::to_string(n) + " " + what;
    };
    if (c.failed) body = "failed";
    add(c.added, "added");
    add(c.replaced, "replaced");
    add(c.kept, "left unchanged");
    add(c.removed, "removed");
    add(c.archived, "archived");
    add(c.restored, "restored");
    if (body.empty()) body = "nothing changed";
    return program + ": " + body + ".";
}

std::string JoinSummary(const std::vector<std::string>& parts) {
    std::string out;
    for (const auto& p : parts) {
        if (p.empty()) continue;
        if (!out.empty()) out += " ";
        out += p;
    }
    return out;
}

}  // namespace ostrel
