#include "core/shell/welcome.h"

#include <filesystem>
#include <system_error>

#include "core/platform/text.h"

namespace ostrel {

namespace fs = std::filesystem;

Welcome::Welcome(ManageForms& forms, Dialogs& dialogs, SettingsStore& settings,
                 std::function<int()> materialCount)
    : forms_(forms),
      dialogs_(dialogs),
      settings_(settings),
      materialCount_(std::move(materialCount)) {
    for (int n = 1; n <= ManageForms::kFormCount; ++n)
        subs_.push_back(forms_.ribTools[n].Observe([this] { Refresh(); }));
    Refresh();
}

void Welcome::Refresh() {
    const bool empty = materialCount_ && materialCount_() == 0;
    // A working form is open exactly while its tool button is down.
    bool formOpen = false;
    for (int n = 1; n <= ManageForms::kFormCount; ++n)
        formOpen = formOpen || forms_.ribTools[n].value;
    pnlWelcome.visible = empty && !formOpen;
    comWelcomeNew.enabled = forms_.ribTools[kFormNew].enabled.get();
    comWelcomeImport.enabled = forms_.ribTools[kFormImport].enabled.get();
    comWelcomeSetup.enabled = forms_.ribTools[kFormSetup].enabled.get();
}

void Welcome::Press(int n) {
    if (!forms_.ribTools[n].enabled) return;
    forms_.RibbonClick(n, true);
}

std::string Welcome::DemoFolder(const std::string& pathLumbrak) {
    if (pathLumbrak.empty()) return "";
    std::error_code ec;
    const fs::path folder = fs::path(pathLumbrak).parent_path();  // drops the trailing "/"
    // The stand-in program files of a demonstration installation are empty; a real
    // program never is.
    const fs::path program = folder / "Lumbrak3D.EXE";
    if (!fs::is_regular_file(program, ec) || fs::file_size(program, ec) != 0 || ec) return "";
    const fs::path root = folder.parent_path();
    if (!fs::is_directory(root / "Kelmora", ec) || !fs::is_directory(root / "Sextane", ec))
        return "";
    return root.string();
}

std::string Welcome::DemoNoticeText(const std::string& folder) {
    return "Ostrel runs on a demonstration installation of Lumbrak3D, SextaneTD and KelmoraTD, "
           "made in\n    " +
           folder +
           "\nwith a small glass catalogue and database, so that every feature can be tried.\n"
           "Once the real programs are installed, point the Setup form at them.";
}

bool Welcome::ShowDemoNotice(const std::string& pathLumbrak) {
    const std::string folder = DemoFolder(pathLumbrak);
    if (folder.empty()) return false;
    if (settings_.GetSetting(kSection, kKeyDemoNotice, "") == folder) return false;
    settings_.SaveSetting(kSection, kKeyDemoNotice, folder);
    dialogs_.MsgBox(DemoNoticeText(folder), MsgButtons::OK, MsgIcon::Information,
                    "Demonstration installation");
    return true;
}

}  // namespace ostrel
