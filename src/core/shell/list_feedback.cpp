#include "core/shell/list_feedback.h"

#include "core/platform/text.h"

namespace ostrel {

namespace {

std::string KeyOf(const MaterialRecord& rec) {
    return UpperAscii(rec.General.GlassName.Text()) + "|" + UpperAscii(rec.General.Source.Text());
}

std::string Count(std::size_t n) {
    return std::to_string(n) + (n == 1 ? " material" : " materials") + " in the list";
}

// "N-BK7 added", or "3 materials added".
std::string What(const std::vector<std::string>& names, const char* verb) {
    if (names.size() == 1) return names.front() + " " + verb;
    return std::to_string(names.size()) + " materials " + verb;
}

}  // namespace

void ListFeedback::Reset(const std::vector<MaterialRecord>& list) {
    seen_.clear();
    names_.clear();
    for (const MaterialRecord& rec : list) {
        seen_[KeyOf(rec)] = rec.DateChanged;
        names_[KeyOf(rec)] = rec.General.GlassName.Text();
    }
    started_ = true;
}

std::string ListFeedback::Update(const std::vector<MaterialRecord>& list) {
    if (!started_) {
        Reset(list);
        return "";
    }
    std::vector<std::string> added, changed, deleted;
    std::map<std::string, double> now;
    for (const MaterialRecord& rec : list) {
        const std::string key = KeyOf(rec);
        now[key] = rec.DateChanged;
        auto it = seen_.find(key);
        if (it == seen_.end()) {
            added.push_back(rec.General.GlassName.Text());
        } else if (it->second != rec.DateChanged) {
            changed.push_back(rec.General.GlassName.Text());
        }
    }
    for (const auto& [key, date] : seen_)
        if (!now.count(key)) deleted.push_back(names_[key]);
    Reset(list);
    std::string text;
    auto join = [&text](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (!added.empty()) join(What(added, "added"));
    if (!changed.empty()) join(What(changed, "changed"));
    if (!deleted.empty()) join(What(deleted, "deleted"));
    if (text.empty()) return "";
    return text + ": " + Count(list.size());
}

}  // namespace ostrel
