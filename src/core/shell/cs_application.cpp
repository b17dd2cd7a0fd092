#include "core/shell/cs_application.h"

#include <algorithm>
#include <filesystem>

#include "core/platform/maker.h"

namespace ostrel {

CSApplication::CSApplication(const std::string& folder, IniFile& ini, ErrorDisplayer& errors)
    : path_(folder), ini_(ini), errors_(errors) {
    const char sep = static_cast<char>(std::filesystem::path::preferred_separator);
    if (path_.empty() || (path_.back() != sep && path_.back() != '/')) path_.push_back(sep);
    helpFile_ = path_ + maker::kHelpFileName;
}

void CSApplication::ThisFormPosnSave(const std::string& formName, const FormRect& rect) {
    const std::string section = SectionFor(formName);
    ini_.IniPutText(section, "fTop", std::to_string(rect.top));
    ini_.IniPutText(section, "fLeft", std::to_string(rect.left));
    ini_.IniPutText(section, "fWidth", std::to_string(rect.height));
    ini_.IniPutText(section, "fHeight", std::to_string(rect.width));
}

bool CSApplication::HasFormPosn(const std::string& formName) const {
    return !ini_.IniGetText(SectionFor(formName), "fTop").empty();
}

FormRect CSApplication::ThisFormPosnGet(const std::string& formName, bool bMainForm, bool bPosnOnly,
                                        const FormRect& present, ScreenSize screen) const {
    const std::string section = SectionFor(formName);
    FormRect r = present;
    if (!HasFormPosn(formName)) {
        r.left = std::max(0, (screen.width - present.width) / 2);
        r.top = std::max(0, (screen.height - present.height) / 2);
        return r;
    }
    int top = ini_.IniGetInt(section, "fTop");
    int left = ini_.IniGetInt(section, "fLeft");
    int height = ini_.IniGetInt(section, "fWidth");
    int width = ini_.IniGetInt(section, "fHeight");
    top = std::max(0, top);
    left = std::max(0, left);
    const double share = bMainForm ? 0.9 : 0.5;
    if (width > screen.width) width = static_cast<int>(screen.width * share);
    if (height > screen.height) height = static_cast<int>(screen.height * share);
    if (left + width > screen.width) left = screen.width - width;
    if (top + height > screen.height) top = screen.height - height;
    r.left = left;
    r.top = top;
    if (!bPosnOnly) {
        r.width = width;
        r.height = height;
    }
    return r;
}

std::string CSApplication::Copyright() const {
    return maker::kCopyright;
}
std::string CSApplication::Comment() const {
    return maker::kComment;
}
std::string CSApplication::Title() const {
    return maker::kProgramTitle;
}

std::string CSApplication::TitleVer() const {
    return Title() + " " + std::to_string(maker::kVersionMajor) + "." +
           std::to_string(maker::kVersionMinor) + "." + std::to_string(maker::kVersionRevision);
}

std::string CSApplication::TitleVerShort() const {
    return Title() + " " + std::to_string(maker::kVersionMajor) + "." +
           std::to_string(maker::kVersionMinor);
}

std::string CSApplication::Version() const {
    return "Version: " + std::to_string(maker::kVersionMajor) + "." +
           std::to_string(maker::kVersionMinor) + "." + std::to_string(maker::kVersionRevision);
}

}  // namespace ostrel
