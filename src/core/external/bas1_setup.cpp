#include "core/external/bas1_setup.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "core/platform/text.h"
#include "core/shell/setting_flag.h"

namespace ostrel {

namespace fs = std::filesystem;

namespace {

struct Listing {
    std::vector<std::string> folders;
    std::vector<fs::path> files;
};

// The entries of one folder, sorted by name; an unreadable folder lists nothing. Links to
// folders are not taken as folders.
Listing ListFolder(const fs::path& folder) {
    Listing out;
    std::error_code ec;
    fs::directory_iterator it(folder, ec), end;
    if (ec) return out;
    for (; it != end; it.increment(ec)) {
        if (ec) break;
        std::string name = it->path().filename().string();
        if (std::size_t nul = name.find('\0'); nul != std::string::npos) name.resize(nul);
        if (name.empty() || name == "." || name == "..") continue;
        std::error_code se;
        fs::file_status own = it->symlink_status(se);
        if (se) continue;
        if (fs::is_directory(own)) {
            out.folders.push_back(name);
        } else {
            out.files.push_back(it->path());
        }
    }
    std::sort(out.folders.begin(), out.folders.end());
    std::sort(out.files.begin(), out.files.end());
    return out;
}

bool SameFileName(const fs::path& p, const std::string& file) {
    return UpperAscii(p.filename().string()) == UpperAscii(file);
}

}  // namespace

std::string Bas1Setup::WithSeparator(const std::string& path) {
    if (path.empty() || path.back() == '/') return path;
    return path + "/";
}

bool Bas1Setup::ProgramInFolder(const std::string& path, const std::string& file) {
    if (path.empty() || file.empty()) return false;
    try {
        const fs::path folder(WithSeparator(path));
        std::error_code ec;
        if (fs::is_regular_file(folder / file, ec)) return true;
        fs::directory_iterator it(folder, ec), end;
        if (ec) return false;
        for (; it != end; it.increment(ec)) {
            if (ec) return false;
            std::error_code fe;
            if (SameFileName(it->path(), file) && fs::is_regular_file(it->path(), fe)) return true;
        }
    } catch (...) {
    }
    return false;
}

std::string Bas1Setup::ParentFolder(const std::string& programFolder) {
    std::string p = programFolder;
    while (p.size() > 1 && p.back() == '/') p.pop_back();
    if (p.empty() || p == "/") return "";
    std::size_t slash = p.rfind('/');
    if (slash == std::string::npos) return "";
    return p.substr(0, slash + 1);
}

std::string Bas1Setup::DefaultDrive() {
    std::error_code ec;
    if (const char* prefix = std::getenv("WINEPREFIX"); prefix && *prefix) {
        fs::path c = fs::path(prefix) / "drive_c";
        if (fs::is_directory(c, ec)) return WithSeparator(c.string());
    }
    const char* home = std::getenv("HOME");
    if (!home || !*home) return "";
    fs::path c = fs::path(home) / ".wine" / "drive_c";
    if (fs::is_directory(c, ec)) return WithSeparator(c.string());
    return WithSeparator(home);
}

SearchRoots Bas1Setup::DefaultRoots(const std::string& programFolder) {
    SearchRoots roots{ParentFolder(programFolder), DefaultDrive(), {}};
    for (const char* shared : {"/opt/", "/usr/local/"}) {
        std::error_code ec;
        if (fs::is_directory(shared, ec)) roots.shared.emplace_back(shared);
    }
    return roots;
}

void Bas1Setup::LoadPaths() {
    firstLoad_ = SettingFlag(settings_.GetSetting(kSection, kKeyFirstLoad, "-1"), true);
    if (firstLoad_) return;
    SetPathKelmora(settings_.GetSetting(kSection, kKeyKelmora, ""));
    SetPathLumbrak(settings_.GetSetting(kSection, kKeyLumbrak, ""));
    SetPathSextane(settings_.GetSetting(kSection, kKeySextane, ""));
}

void Bas1Setup::SavePaths() {
    if (kelmoraFound_) settings_.SaveSetting(kSection, kKeyKelmora, pathKelmora_);
    if (lumbrakFound_) settings_.SaveSetting(kSection, kKeyLumbrak, pathLumbrak_);
    if (sextaneFound_) settings_.SaveSetting(kSection, kKeySextane, pathSextane_);
}

void Bas1Setup::StoreFirstLoad() {
    settings_.SaveSetting(kSection, kKeyFirstLoad, FlagText(firstLoad_));
}

bool Bas1Setup::SetPath(const std::string& path, const char* file, std::string& keep, bool& flag) {
    if (ProgramInFolder(path, file)) {
        keep = WithSeparator(path);
        flag = true;
    } else {
        flag = false;
    }
    return flag;
}

bool Bas1Setup::SetPathKelmora(const std::string& path) {
    return SetPath(path, kFileKelmora, pathKelmora_, kelmoraFound_);
}
bool Bas1Setup::SetPathLumbrak(const std::string& path) {
    return SetPath(path, kFileLumbrak, pathLumbrak_, lumbrakFound_);
}
bool Bas1Setup::SetPathSextane(const std::string& path) {
    return SetPath(path, kFileSextane, pathSextane_, sextaneFound_);
}

WalkControl Bas1Setup::NoteControl() {
    WalkControl c;
    c.note = [this](const std::string& text) { dialogs_.HelpNote(text, false); };
    return c;
}

int64_t Bas1Setup::FindFile(const std::string& start, const std::string& file, int& found,
                            int& dirs, std::vector<std::string>& foundList, bool stopAtFirst,
                            int depth) {
    return Walk(start, file, found, dirs, foundList, stopAtFirst, depth, NoteControl());
}

int64_t Bas1Setup::Walk(const std::string& start, const std::string& file, int& found, int& dirs,
                        std::vector<std::string>& foundList, bool stopAtFirst, int depth,
                        const WalkControl& control) {
    if (found > 0 && stopAtFirst) return 0;
    if (start.empty() || control.Stopped()) return 0;
    const std::string folder = WithSeparator(start);
    Listing listing = ListFolder(folder);
    dirs += static_cast<int>(listing.folders.size());
    if (control.folders) ++*control.folders;
    if (depth < 3 && control.note) control.note(kWalkNote + folder);

    int64_t total = 0;
    for (const fs::path& p : listing.files) {
        if (!SameFileName(p, file)) continue;
        std::error_code ec;
        uintmax_t size = fs::file_size(p, ec);
        if (!ec) total += static_cast<int64_t>(size);
        ++found;
        foundList.push_back(folder);
        if (stopAtFirst) return total;
    }
    for (const std::string& sub : listing.folders) {
        if (control.Stopped()) break;
        total += Walk(folder + sub, file, found, dirs, foundList, stopAtFirst, depth + 1, control);
        if (found > 0 && stopAtFirst) break;
    }
    return total;
}

std::string Bas1Setup::Locate(const SearchRoots& roots, const std::string& file,
                              const WalkControl& control) {
    auto first = [&](const std::string& start) {
        int found = 0, dirs = 0;
        std::vector<std::string> list;
        Walk(start, file, found, dirs, list, true, 0, control);
        return list.empty() ? std::string() : list.front();
    };
    // A folder beside the program is taken only when it still holds the program.
    std::string beside = first(roots.parent);
    if (!beside.empty() && ProgramInFolder(beside, file)) return beside;
    std::string any = first(roots.drive);
    for (const std::string& shared : roots.shared) {
        if (!any.empty()) break;
        any = first(shared);
    }
    return any;
}

bool Bas1Setup::SetPathOf(int program, const std::string& path) {
    switch (program) {
        case 0:
            return SetPathKelmora(path);
        case 1:
            return SetPathLumbrak(path);
        default:
            return SetPathSextane(path);
    }
}

bool Bas1Setup::GetFoundOf(int program) const {
    return program == 0 ? kelmoraFound_ : program == 1 ? lumbrakFound_ : sextaneFound_;
}

const std::string& Bas1Setup::GetPathOf(int program) const {
    return program == 0 ? pathKelmora_ : program == 1 ? pathLumbrak_ : pathSextane_;
}

bool Bas1Setup::GetSearchStopped() const {
    return SettingFlag(settings_.GetSetting(kSection, kKeySearchStopped, "0"), false);
}

void Bas1Setup::StoreSearchStopped() {
    settings_.SaveSetting(kSection, kKeySearchStopped, FlagText(true));
}

void Bas1Setup::SearchAll(const SearchRoots& roots) {
    const char* notes[] = {"Searching for Kelmora installation",
                           "Searching for Lumbrak3D installation",
                           "Searching for LumbrakSextane installation"};
    const WalkControl control = NoteControl();
    for (int i = 0; i < 3; ++i) {
        dialogs_.HelpNote(notes[i], false);
        std::string first = Locate(roots, kProgramFiles[i], control);
        if (!first.empty()) SetPathOf(i, first);
    }
}

void Bas1Setup::SearchMissing(const SearchRoots& roots, std::string& pathKelmora,
                              std::string& pathLumbrak, std::string& pathSextane) {
    const char* notes[] = {"Searching for KelmoraTD installation",
                           "Searching for Lumbrak3D installation",
                           "Searching for LumbrakSextane installation"};
    std::string* paths[] = {&pathKelmora, &pathLumbrak, &pathSextane};
    const WalkControl control = NoteControl();
    for (int i = 0; i < 3; ++i) {
        if (GetFoundOf(i)) continue;
        dialogs_.HelpNote(notes[i], false);
        *paths[i] = Locate(roots, kProgramFiles[i], control);
    }
}

}  // namespace ostrel
