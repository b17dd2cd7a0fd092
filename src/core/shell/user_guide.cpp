#include "core/shell/user_guide.h"

#include <filesystem>
#include <system_error>

namespace ostrel {

namespace fs = std::filesystem;

std::string UserGuide::PageOf(int formNumber) {
    switch (formNumber) {
        case -1:
            return "list.html";
        case 1:
            return "setup.html";
        case 2:
            return "manage.html";
        case 3:
            return "material.html";
        case 4:
            return "import.html";
        case 5:
            return "backup.html";
        case 6:
            return "archive.html";
        case 7:
            return "melt.html";
        default:
            return "";
    }
}

namespace {

// A file address: "file://" and the absolute path, with the characters a browser would
// misread written as %XX.
std::string FileAddress(const fs::path& file) {
    const std::string path = fs::absolute(file).generic_string();
    std::string out = "file://";
    static const char* hex = "0123456789ABCDEF";
    for (unsigned char c : path) {
        const bool plain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                           (c >= '0' && c <= '9') || c == '/' || c == '-' || c == '_' || c == '.' ||
                           c == '~';
        if (plain) {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

}  // namespace

std::string UserGuide::Address(const std::string& page) const {
    const std::string contents = helpFile_ ? helpFile_() : std::string();
    if (contents.empty()) return "";
    std::error_code ec;
    const fs::path index(contents);
    if (!fs::is_regular_file(index, ec)) return "";
    const fs::path file = page.empty() ? index : index.parent_path() / page;
    if (!fs::is_regular_file(file, ec)) return page.empty() ? "" : Address("");
    return FileAddress(file);
}

bool UserGuide::OpenPage(const std::string& page) {
    const std::string address = Address(page);
    if (address.empty()) {
        dialogs_.MsgBox(kNotFound, MsgButtons::OK, MsgIcon::Information, "User guide");
        return false;
    }
    if (!dialogs_.OpenUrl(address)) {
        dialogs_.MsgBox(kNoBrowser, MsgButtons::OK, MsgIcon::Exclamation, "User guide");
        return false;
    }
    return true;
}

bool UserGuide::Open(int formNumber) {
    return OpenPage(PageOf(formNumber));
}

}  // namespace ostrel
